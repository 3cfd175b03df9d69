// Texts edited in a picture: labels in place, the picture's name, and names that become nodes.
#include <algorithm>

#include "editor/draw.h"
#include "editor/edit.h"
#include "editor/hand/gesture_parts.h"
#include "editor/hand/tools.h"
#include "editor/model/seg_file.h"
#include "editor/model/vel_segs.h"
#include "editor/needs.h"
#include "platform/desktop.h"
#include "platform/response.h"
#include "platform/text_measures.h"

namespace velora {

namespace {

constexpr int kEditorPadding = 4;
constexpr int kLeastEditorWidth = 60;

// What is wrong with a text as a label; empty when nothing is.
std::string label_fault(const std::string &text) {
  if (text.size() > kLongestLabel)
    return format_text("longer than %zu characters", kLongestLabel);
  if (text.find('~') != std::string::npos)
    return "a label holds no \"~\"";
  return text.starts_with("$$$$") ? "a label does not begin with \"$$$$\"" : "";
}

std::string name_fault(const WinInfo *wi, const std::string &text) {
  if (text.find(' ') != std::string::npos && wi->wtype == kFunctionPicture)
    return "a name holds no blanks";
  return label_fault(text);
}

void repaint(const WinInfo *wi) {
  if (wi->win != 0)
    gDesktop->invalidate(wi->win);
}

Rect box_of(const WinInfo *wi, int slot) {
  const PictureLayout layout = lay_out_picture(wi);
  for (const NodePlace &node : layout.nodes)
    if (node.seg->segnum == slot)
      return node.box;
  return {};
}

// The part of the picture that its window shows.
Rect seen_part(const WinInfo *wi) {
  const Rect area = picture_area(wi);
  if (wi->win == 0)
    return area;
  const PictureView view = gDesktop->view_of(wi->win);
  const int percent = std::max(1, view.percent);
  return {view.origin.x, view.origin.y, view.origin.x + area.width() * 100 / percent,
          view.origin.y + area.height() * 100 / percent};
}

void look_names_up(const WinInfo *wi) {
  gHand.matches = names_for(wi, gHand.text.text());
  gHand.chosen = 0;
}

// Takes the chosen row: a node is placed or an input joined, as one step.
void accept_name(WinInfo *wi) {
  if (gHand.matches.empty()) {
    gHand.state = HandState::idle;
    return;
  }
  const KnownName name = gHand.matches[gHand.chosen];
  const Insertion where = gHand.insertion;
  const std::string fault = label_fault(name.name);
  if (!fault.empty()) {
    gHand.complaint = fault;
    return;
  }
  gHand.state = HandState::idle;
  gHand.stub = -1;
  run_gesture([=] { edit_picture(wi, "Add " + name.name, [&] { insert_name(wi, name, where); }); });
}

// The chosen row goes up or down the list.
void step_chosen(int by) {
  const auto count = static_cast<int>(gHand.matches.size());
  if (count > 0)
    gHand.chosen = static_cast<std::size_t>((static_cast<int>(gHand.chosen) + by + count) % count);
}

} // namespace

std::string fresh_merge() {
  static int count = 0;
  return format_text("place %d", ++count);
}

void edit_label(WinInfo *wi, int slot, const std::string &merge) {
  const Segm *seg = wi->seg_ments[slot];
  if (seg == nullptr || !is_node(seg))
    return;
  settle_hand();
  gHand.wi = wi;
  gHand.state = HandState::labelling;
  gHand.edited = EditedText::label;
  gHand.labelled = slot;
  gHand.label_merge = merge;
  gHand.complaint.clear();
  gHand.text.begin(seg->label.find_first_not_of(' ') == std::string::npos ? "" : seg->label);
  repaint(wi);
}

void edit_picture_name(WinInfo *wi) {
  if (wi->wtype == kNetworkPicture)
    return;
  settle_hand();
  gHand.wi = wi;
  gHand.state = HandState::labelling;
  gHand.edited = EditedText::picture_name;
  gHand.labelled = 0;
  gHand.label_merge.clear();
  gHand.complaint.clear();
  gHand.text.begin(wi->name);
  repaint(wi);
}

bool accept_label(WinInfo *wi) {
  const std::string text = gHand.text.text();
  const bool name = gHand.edited == EditedText::picture_name;
  gHand.complaint = name ? name_fault(wi, text) : label_fault(text);
  if (!gHand.complaint.empty()) {
    gDesktop->beep();
    return false;
  }
  gHand.state = HandState::idle;
  const int slot = gHand.labelled;
  const std::string merge = gHand.label_merge;
  run_gesture([=] {
    if (name) {
      // A picture under another name is no longer the stored component that it was.
      edit_picture(wi, "Name Picture", [&] {
        if (wi->name == text)
          return;
        set_up_fresh(wi);
        wi->name = text;
        wi->cmpnt = -1;
      });
      return;
    }
    edit_picture(wi, "Label",
                 [&] {
                   Segm *seg = wi->seg_ments[slot];
                   if (seg != nullptr)
                     seg->label = text.empty() && seg->type == kJunction ? " " : text;
                 },
                 {.merge = merge});
  });
  return true;
}

void labelling_mouse(WinInfo *wi, const MouseEvent &event) {
  if (event.kind != MouseKind::down && event.kind != MouseKind::double_click)
    return;
  const Rect box = editor_box(wi);
  if (!box.contains(event.at)) {
    // The click only ends the editing; what lies under it is not chosen.
    accept_label(wi);
    return;
  }
  const int cell = std::max(1, measured_width("x", picture_font(wi)));
  const int cells = (event.at.x - box.left - kEditorPadding + cell / 2) / cell;
  gHand.text.set_caret(static_cast<std::size_t>(std::max(0, cells)), event.held.shift);
}

bool labelling_key(WinInfo *wi, const KeyEvent &event) {
  if (event.key == Key::enter || event.key == Key::tab)
    accept_label(wi);
  else if (event.key == Key::escape)
    gHand.state = HandState::idle;
  else if (gHand.text.take(event))
    gHand.complaint.clear();
  else if (event.key != Key::up && event.key != Key::down)
    return false;
  return true;
}

void begin_naming(WinInfo *wi, const Insertion &where, const std::string &typed) {
  settle_hand();
  gHand.wi = wi;
  gHand.state = HandState::naming;
  gHand.insertion = where;
  gHand.complaint.clear();
  gHand.text.continue_with(typed);
  look_names_up(wi);
  repaint(wi);
}

void naming_mouse(WinInfo *wi, const MouseEvent &event) {
  if (event.kind != MouseKind::down && event.kind != MouseKind::double_click)
    return;
  const Rect rows = names_box(wi);
  if (!rows.contains(event.at)) {
    gHand.state = HandState::idle;
    return;
  }
  const auto [first, last, row_height] = shown_names();
  const int row = (event.at.y - rows.top) / std::max(1, row_height);
  if (first + static_cast<std::size_t>(row) < last) {
    gHand.chosen = first + static_cast<std::size_t>(row);
    accept_name(wi);
  }
}

bool naming_key(WinInfo *wi, const KeyEvent &event) {
  const bool blank = event.key == Key::space || (event.key == Key::text && event.text == " ");
  if (event.key == Key::enter || event.key == Key::tab ||
      (blank && is_whole_name(wi, gHand.text.text()))) {
    accept_name(wi);
    return true;
  }
  if (event.key == Key::escape) {
    gHand.state = HandState::idle;
  } else if (event.key == Key::up || event.key == Key::down) {
    step_chosen(event.key == Key::up ? -1 : 1);
  } else if (blank && gHand.text.text().empty()) {
    return true; // a blank between names
  } else if (gHand.text.take(event)) {
    gHand.complaint.clear();
    look_names_up(wi);
    if (gHand.text.text().empty() && event.key == Key::backspace)
      gHand.state = HandState::idle;
  } else {
    return false;
  }
  return true;
}

Rect editor_box(const WinInfo *wi) {
  const Font font = picture_font(wi);
  const int width = std::max(kLeastEditorWidth, measured_width(gHand.text.text(), font) +
                                                    2 * kEditorPadding + measured_width("x", font));
  const int height = measured_height(font) + 2 * kEditorPadding;
  Point at = gHand.insertion.at;
  if (gHand.state == HandState::labelling) {
    // The name stands at the top of the picture, before what is drawn.
    at = gHand.edited == EditedText::picture_name ? Point{10 + width / 2, 10 + height / 2}
                                                  : box_of(wi, gHand.labelled).centre();
  } else if (!gHand.insertion.placed && gHand.insertion.into != 0) {
    at.y -= height;
  }
  // Within what the window shows, as far as it fits.
  const Rect seen = seen_part(wi);
  const int left = std::clamp(at.x - width / 2, seen.left, std::max(seen.left, seen.right - width));
  const int top = std::clamp(at.y - height / 2, seen.top, std::max(seen.top, seen.bottom - height));
  return {left, top, left + width, top + height};
}

ShownNames shown_names() {
  constexpr std::size_t kShownRows = 8;
  const std::size_t first = gHand.chosen >= kShownRows ? gHand.chosen - kShownRows + 1 : 0;
  return {first, std::min(gHand.matches.size(), first + kShownRows), measured_height(Font{}) + 2};
}

Rect names_box(const WinInfo *wi) {
  const Rect editor = editor_box(wi);
  int widest = editor.width();
  const auto [first, last, row_height] = shown_names();
  for (std::size_t i = first; i < last; ++i)
    widest = std::max(widest,
                      measured_width(gHand.matches[i].name + "  " + gHand.matches[i].type, Font{}) +
                          3 * kEditorPadding);
  const int height = static_cast<int>(last - first) * row_height;
  const Rect seen = seen_part(wi);
  const int left = std::max(seen.left, std::min(editor.left, seen.right - widest));
  // Above the text where there is no room below.
  const bool above = editor.bottom + height > seen.bottom && editor.top - height >= seen.top;
  const int top = above ? editor.top - height : editor.bottom;
  return {left, top, left + widest, top + height};
}

} // namespace velora
