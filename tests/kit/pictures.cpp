// Pictures for tests.
#include "kit/pictures.h"

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <sstream>

#include "editor/model/seg_file.h"
#include "editor/model/vel_segs.h"
#include "editor/model/wininfo.h"
#include "platform/response.h"
#include "platform/safe_file.h"

namespace velora::kit {

namespace fs = std::filesystem;

WinInfo *picture(const std::string &name, int cmpnt, int wtype) {
  WinInfo *wi = nullptr;
  NewWinInfo(0, wtype, &wi);
  wi->name = name;
  wi->cmpnt = cmpnt;
  return wi;
}

int place_node(WinInfo *wi, int type, int style, const std::string &label, const Rect &box) {
  Segm *seg = extra_segment(wi);
  seg->type = type;
  seg->style = style;
  seg->segnum = wi->seg_ct;
  seg->label = label;
  seg->lx = box.left;
  seg->ly = box.top;
  seg->ux = box.right;
  seg->uy = box.bottom;
  return wi->seg_ct;
}

int tool_node(WinInfo *wi, int tool, const std::string &label, int x, int y) {
  const int slot = add_node(wi, tool, x, y);
  wi->seg_ments[slot]->label = label;
  return slot;
}

int join(WinInfo *wi, int from, int to) {
  return put_arc_between(wi, from, to, kArc);
}

namespace {

int below(std::mt19937 &random, int limit) {
  return static_cast<int>(random() % static_cast<unsigned>(limit));
}

std::string random_label(std::mt19937 &random) {
  static const char *const labels[] = {"f",     "map",         "list ?0", " ",  "~=", "<&>",
                                       "\"str", "caf\xC3\xA9", "a b c",   "#1", "$$", "B3F4"};
  std::string label = labels[below(random, 12)];
  // The form writes "~" for a blank, so a label with "~" would not come back.
  std::replace(label.begin(), label.end(), '~', '=');
  if (below(random, 20) == 0)
    label = std::string(static_cast<std::size_t>(1 + below(random, 80)), 'x');
  return label;
}

std::string random_annotation(std::mt19937 &random) {
  static const char *const texts[] = {"",     "",       "",         "note\n",       "two\nlines\n",
                                      "\n\n", "$$$$\n", "~~~~~~\n", "f 0 3 1 12\n", "<b>\n"};
  return texts[below(random, 10)];
}

} // namespace

WinInfo *random_picture(std::mt19937 &random, const std::string &name, int cmpnt) {
  WinInfo *wi = picture(name, cmpnt, 1 + below(random, 3));
  wi->txtsze = 8 + below(random, 15);
  wi->annot = random_annotation(random);
  constexpr int kinds[] = {kHexagon, kBox, kJunction, kHoldValue};
  const int nodes = 1 + below(random, 12);
  for (int i = 0; i < nodes; ++i) {
    const int x = below(random, 500);
    const int y = below(random, 400);
    const int slot = place_node(wi, kinds[below(random, 4)], below(random, 3), random_label(random),
                                {x, y, x + 4 + below(random, 60), y + 4 + below(random, 30)});
    wi->seg_ments[slot]->annot = random_annotation(random);
  }
  const int arcs = below(random, 2 * nodes);
  for (int i = 0; i < arcs; ++i)
    wi->seg_ments[join(wi, 1 + below(random, nodes), 1 + below(random, nodes))]->label = " ";
  for (int i = below(random, 3); i > 0; --i)
    remove_segment(2 + below(random, wi->seg_ct), wi);
  return wi;
}

std::string invariant_faults(const WinInfo *wi) {
  std::ostringstream faults;
  const auto count = [](const std::vector<Segm *> &list, const Segm *seg) {
    return std::count(list.begin(), list.end(), seg);
  };
  for (int slot = 1; slot <= wi->seg_ct; ++slot) {
    const Segm *seg = wi->seg_ments[slot];
    if (seg == nullptr)
      continue;
    if (seg->segnum != slot)
      faults << slot << " is numbered " << seg->segnum << "\n";
    for (const std::vector<Segm *> &list : {seg->segb_ptr, seg->segf_ptr})
      for (const Segm *linked : list)
        if (wi->seg_ments[linked->segnum] != linked || is_arc(linked) == is_arc(seg))
          faults << slot << " links to what it should not\n";
    if (is_arc(seg) &&
        (seg->segb_ptr.size() != 1 || seg->segf_ptr.size() != 1 ||
         count(arc_start(seg)->segf_ptr, seg) != 1 || count(arc_end(seg)->segb_ptr, seg) != 1))
      faults << slot << " has not its two ends\n";
    for (const Segm *leaving : seg->segf_ptr)
      if (!is_arc(seg) && arc_start(leaving) != seg)
        faults << slot << " lists a strange arc\n";
    for (const Segm *entering : seg->segb_ptr)
      if (!is_arc(seg) && arc_end(entering) != seg)
        faults << slot << " lists a strange arc\n";
  }
  return faults.str();
}

std::string picture_text(const WinInfo *wi) {
  std::ostringstream text;
  text << kit::quoted(wi->name) << ' ' << wi->cmpnt << " kind " << wi->wtype << " size "
       << wi->txtsze << ' ' << kit::quoted(wi->annot) << '\n';
  for (int slot = 1; slot <= wi->seg_ct; ++slot) {
    const Segm *seg = wi->seg_ments[slot];
    text << ' ' << slot << ": ";
    if (seg == nullptr) {
      text << "empty\n";
      continue;
    }
    text << seg->type << '/' << seg->style << ' ' << kit::quoted(seg->label) << ' '
         << kit::quoted(seg->annot) << " (" << seg->lx << ',' << seg->ly << ' ' << seg->ux << ','
         << seg->uy << ")";
    for (const Segm *back : seg->segb_ptr)
      text << " <" << back->segnum;
    for (const Segm *forward : seg->segf_ptr)
      text << " >" << forward->segnum;
    text << '\n';
  }
  return text.str();
}

std::string all_pictures_text() {
  std::string text;
  for (const WinInfo *wi = gWinInfo; wi != nullptr; wi = wi->next)
    text += picture_text(wi);
  return text;
}

void expect_golden(const std::string &file, const std::string &text) {
  const std::string name = std::string(VELORA_SOURCE_DIR) + "/tests/golden/" + file;
  if (std::getenv("VELORA_UPDATE_GOLDEN") != nullptr) {
    fs::create_directories(fs::path(name).parent_path());
    std::ofstream(name, std::ios::binary) << text;
    return;
  }
  std::string golden;
  EXPECT_TRUE(read_whole_file(name, golden)) << name << " is missing";
  EXPECT_EQ(golden, text) << "differs from " << name;
}

PictureTest::PictureTest()
    : folder_(fs::temp_directory_path() / ("velora_pictures_" + std::to_string(getpid()))) {
  fs::remove_all(folder_);
  fs::create_directories(folder_);
  FreeAllPictures();
  forget_segment_files();
  gSyncFiles = 0;
  gProgressDots = 1; // a language that was started before has put them out
}

PictureTest::~PictureTest() {
  FreeAllPictures();
  forget_segment_files();
  gSyncFiles = 1;
  gProgressDots = 0;
  fs::remove_all(folder_);
}

void PictureTest::put(const std::string &file, const std::string &text) const {
  std::ofstream(path(file), std::ios::binary) << text;
}

std::string PictureTest::get(const std::string &file) const {
  std::string text;
  return read_whole_file(path(file), text) ? text : "(none)";
}

} // namespace velora::kit
