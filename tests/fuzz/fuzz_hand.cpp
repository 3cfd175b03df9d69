// Takes arbitrary bytes as events of the mouse, the keys and the tools in a picture. Whatever
// comes, the invariants of the segments hold, and taking every step back gives the first picture.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "editor/draw.h"
#include "editor/edit.h"
#include "editor/hand/hand.h"
#include "editor/hand/tools.h"
#include "editor/model/vel_segs.h"
#include "editor/model/wininfo.h"
#include "editor/svg_canvas.h"
#include "kit/start.h"
#include "platform/desktop.h"
#include "platform/null_desktop.h"

using namespace velora;

namespace {

void require(bool holds, const char *what) {
  if (holds)
    return;
  std::fprintf(stderr, "%s\n", what);
  std::abort();
}

// Reads the input as small numbers; zeros when it has ended.
class Bytes {
public:
  Bytes(const std::uint8_t *data, std::size_t size) : data_(data), size_(size) {}
  bool more() const { return at_ < size_; }
  int next() { return more() ? data_[at_++] : 0; }
  int below(int limit) { return next() % limit; }

private:
  const std::uint8_t *data_;
  std::size_t size_;
  std::size_t at_ = 0;
};

constexpr int kModes[] = {4, 6, 7, 9, 10, 11, 12, 13, 31, 16, 17, 32};

Modifiers modifiers(int bits) {
  return {(bits & 1) != 0, (bits & 2) != 0, (bits & 4) != 0};
}

void mouse_from(Bytes &bytes, WinInfo *wi) {
  MouseEvent event;
  event.kind = static_cast<MouseKind>(bytes.below(6));
  event.at = {2 * bytes.next() - 20, 2 * bytes.next() - 20};
  event.button = static_cast<MouseButton>(bytes.below(4));
  event.held = modifiers(bytes.next());
  event.notches = bytes.below(3) - 1;
  hand_mouse(wi, event);
}

void key_from(Bytes &bytes, WinInfo *wi) {
  KeyEvent event;
  event.key = static_cast<Key>(bytes.below(17));
  event.number = 1 + bytes.below(12);
  const int c = bytes.next();
  if (event.key == Key::text || event.key == Key::letter)
    event.text = std::string(1, static_cast<char>(c));
  event.held = modifiers(bytes.next());
  hand_key(wi, event);
}

void command_from(Bytes &bytes, WinInfo *wi) {
  switch (bytes.below(7)) {
  case 0:
    settle_hand();
    undo_step(wi);
    break;
  case 1:
    settle_hand();
    redo_step(wi);
    break;
  case 2:
    begin_join(wi);
    break;
  case 3:
    edit_picture_name(wi);
    break;
  case 4:
    settle_hand();
    edit_picture(wi, "Duplicate", [&] { duplicate_selected(wi); });
    break;
  default:
    choose_tool(wi, kModes[bytes.below(std::size(kModes))]);
  }
}

void require_sound(const WinInfo *wi) {
  for (int slot = 1; slot <= wi->seg_ct; ++slot) {
    const Segm *seg = wi->seg_ments[slot];
    if (seg == nullptr)
      continue;
    require(seg->segnum == slot, "a segment does not know its slot");
    if (is_arc(seg))
      require(arc_start(seg) != nullptr && arc_end(seg) != nullptr, "an arc without two ends");
    for (const Segm *arc : is_node(seg) ? seg->segf_ptr : std::vector<Segm *>{})
      require(wi->seg_ments[arc->segnum] == arc && arc_start(arc) == seg, "a link that is none");
  }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  static kit::FuzzConsole console;
  static bool started = false;
  if (!started)
    kit::start_fuzzing(console, "velora_fuzz_hand");
  started = true;
  console.polls = 0;
  Bytes bytes(data, std::min<std::size_t>(size, 2000));
  WinInfo *wi = NewWindow(1 + bytes.below(3));
  while (bytes.more()) {
    const int kind = bytes.below(8);
    kind < 4 ? mouse_from(bytes, wi) : kind < 7 ? key_from(bytes, wi) : command_from(bytes, wi);
    // Pictures grow slowly, but pasting doubles them.
    if (wi->seg_ct > 400)
      break;
  }
  require_sound(wi);
  SvgCanvas canvas;
  draw_hand(wi, lay_out_picture(wi), canvas);
  escape_hand();
  while (!step_to_undo(wi).empty())
    require(undo_step(wi) == 1, "a step cannot be taken back");
  require(wi->seg_ct == 0 && wi->saved == 1 && wi->clean == 1 && wi->name.empty(),
          "taking all steps back does not give the first picture");
  require_sound(wi);
  forget_hand(wi);
  FreeAllPictures();
  return 0;
}
