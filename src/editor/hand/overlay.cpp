// What is drawn over a picture: the band of the arguments, missing inputs, the gesture under way,
// the editors of texts, the list of names, a value in its bubble.
#include <algorithm>
#include <optional>

#include "editor/draw.h"
#include "editor/draw_layout.h"
#include "editor/edit.h"
#include "editor/hand/faults.h"
#include "editor/hand/gesture_parts.h"
#include "editor/hand/hand.h"
#include "editor/hand/stubs.h"
#include "editor/hand/tools.h"
#include "editor/model/vel_segs.h"
#include "platform/response.h"
#include "platform/text_measures.h"

namespace velora {

namespace {

constexpr Colour kFaint{160, 160, 160};
constexpr Colour kGesture{0, 90, 200};
constexpr Colour kPaper{255, 255, 255};
constexpr Colour kRowFill{215, 230, 250};
constexpr Colour kSelectedText{180, 210, 250};
constexpr Colour kComplaint{190, 0, 0};
constexpr Colour kBubbleFill{255, 250, 215};
constexpr Pen kNoPen{{}, 1, PenStyle::none};
constexpr Brush kHollow{{}, false};
constexpr std::size_t kLongestShown = 60;

Font small_font() {
  return stub_font();
}

void draw_line_box(const Rect &box, Colour colour, Canvas &canvas) {
  canvas.rectangle(box, Pen{colour, 1, PenStyle::dotted}, kHollow);
}

std::string shortened(const std::string &text) {
  return text.size() <= kLongestShown ? text : text.substr(0, kLongestShown - 3) + "...";
}

// The line under which nothing is an argument, as wide as the picture is.
void draw_band(const WinInfo *wi, const PictureLayout &layout, Canvas &canvas) {
  if (wi->wtype != kFunctionPicture)
    return;
  const Rect area = picture_area(wi);
  const Rect extent = layout_extent(layout);
  const int y = NodeHeight(wi);
  // It goes behind the nodes, so that it strikes no label out.
  std::vector<std::pair<int, int>> covered;
  for (const NodePlace &node : layout.nodes)
    if (node.box.top <= y && y <= node.box.bottom)
      covered.emplace_back(node.box.left, node.box.right);
  std::sort(covered.begin(), covered.end());
  const int end = std::max(area.width(), extent.right);
  covered.emplace_back(end, end);
  int x = std::min(0, extent.left);
  for (const auto &[left, right] : covered) {
    if (left > x)
      canvas.line({x, y}, {left, y}, Pen{kFaint, 1, PenStyle::dotted});
    x = std::max(x, right);
  }
}

const NodePlace *place_of(const PictureLayout &layout, int slot) {
  for (const NodePlace &node : layout.nodes)
    if (node.seg->segnum == slot)
      return &node;
  return nullptr;
}

// The missing inputs of a box, and at the chosen box their types.
void draw_stubs(const WinInfo *wi, const PictureLayout &layout, const NodePlace &node,
                Canvas &canvas) {
  const std::vector<Stub> stubs = stubs_of(wi, layout, node);
  if (stubs.empty())
    return;
  const bool selected = (node.seg->status & kSelected) != 0;
  const auto is_chosen = [&](int input) {
    return (selected && gHand.stub == input && gHand.wi == wi) ||
           (gHand.state == HandState::joining && gHand.wi == wi &&
            gHand.target == node.seg->segnum && gHand.stub == input);
  };
  int end = node.box.right;
  for (const Stub &stub : stubs) {
    const bool chosen = is_chosen(stub.input);
    const Colour colour = chosen ? kGesture : kFaint;
    const Point tip = stub.tip;
    canvas.line(stub.root, tip, Pen{colour, chosen ? 2 : 1, PenStyle::solid});
    canvas.ellipse({tip.x - 2, tip.y - 4, tip.x + 2, tip.y}, Pen{colour, 1, PenStyle::solid},
                   Brush{kPaper, true});
    canvas.text({tip.x + 3, tip.y - 6}, std::to_string(stub.input + 1), stub_font(), colour);
    end = std::max(end, stub.ink.right);
  }
  // A box that is drawn expanded shows the types already.
  if (!selected || (node.seg->status & kExpanded) != 0)
    return;
  // They stand one above the other, so that none covers another, and beside what arrives from
  // above.
  const std::vector<std::string> types = wanted_inputs(wi, node.seg);
  const auto count = static_cast<int>(types.size());
  const int rows = count * (measured_height(stub_font()) + 1);
  for (const ArcPlace &arc : layout.arcs)
    if (arc_end(arc.seg) == node.seg && arc.path.back().y == node.box.top)
      end = std::max(end, arrow_end_box(arc, picture_font(wi), rows).right);
  for (const Stub &stub : stubs) {
    const std::string text =
        std::to_string(stub.input + 1) + ": " + types[static_cast<std::size_t>(stub.input)];
    const Point at{end + 6,
                   node.box.top - (count - stub.input) * (measured_height(stub_font()) + 1)};
    canvas.text(at, text, stub_font(), is_chosen(stub.input) ? kGesture : Colour{90, 90, 90});
  }
}

void draw_all_stubs(const WinInfo *wi, const PictureLayout &layout, Canvas &canvas) {
  for (const NodePlace &node : layout.nodes)
    draw_stubs(wi, layout, node, canvas);
}

// Shadows of what is moved, with the arrows that come along, and the lines it snapped to.
void draw_moving(const PictureLayout &layout, Canvas &canvas) {
  const auto shifted = [](Point at, const Segm *seg) {
    const bool moves = seg != nullptr && (seg->status & kSelected) != 0;
    return moves ? Point{at.x + gHand.moved.x, at.y + gHand.moved.y} : at;
  };
  for (const Rect &guide : gHand.guides)
    canvas.line({guide.left, guide.top}, {guide.right, guide.bottom},
                Pen{kGesture, 1, PenStyle::dotted});
  for (const ArcPlace &arc : layout.arcs) {
    const Segm *start = arc_start(arc.seg);
    const Segm *end = arc_end(arc.seg);
    if (((start->status | end->status) & kSelected) == 0)
      continue;
    canvas.line(shifted(arc.path.front(), start), shifted(arc.path.back(), end),
                Pen{kGesture, 1, PenStyle::solid});
  }
  for (const NodePlace &node : layout.nodes) {
    if ((node.seg->status & kSelected) == 0)
      continue;
    const Point corner = shifted({node.box.left, node.box.top}, node.seg);
    const Rect box{corner.x, corner.y, corner.x + node.box.width(), corner.y + node.box.height()};
    canvas.rectangle(box, Pen{kGesture, 1, PenStyle::solid}, Brush{kRowFill, true});
    canvas.text({box.centre().x - measured_width(node.seg->label, node.font) / 2,
                 box.centre().y - measured_height(node.font) / 2},
                node.seg->label, node.font, kPalette[kBlack]);
  }
}

// The arrow being drawn, with the number that it would have where it would end.
void draw_joining(const WinInfo *wi, const PictureLayout &layout, Canvas &canvas) {
  const Segm *rejoined = wi->seg_ments[gHand.rejoined];
  const int from = rejoined != nullptr && arc_start(rejoined) != nullptr
                       ? arc_start(rejoined)->segnum
                       : gHand.start;
  const NodePlace *start = place_of(layout, from);
  const NodePlace *end = place_of(layout, gHand.target);
  if (start == nullptr)
    return;
  const bool by_keys = gHand.state == HandState::keyjoin;
  const Point to = by_keys && end != nullptr ? Point{end->box.centre().x, end->box.top} : gHand.at;
  canvas.rectangle(start->box, Pen{kGesture, 2, PenStyle::solid}, kHollow);
  if (!by_keys || end != nullptr)
    canvas.line({start->box.centre().x, start->box.bottom}, to, Pen{kGesture, 2, PenStyle::solid});
  if (end == nullptr)
    return;
  canvas.rectangle(end->box, Pen{kGesture, 2, PenStyle::solid}, kHollow);
  if (end->seg->type != kBox || wi->wtype == kNetworkPicture)
    return;
  const int number = 1 + (gHand.stub >= 0       ? gHand.stub
                          : rejoined != nullptr ? input_under(wi, gHand.target, to, gHand.rejoined)
                                                : natural_input(wi, from, gHand.target, 0));
  const std::string text = std::to_string(number);
  const Font font{12, false, true};
  const Point at{to.x + 10, to.y - measured_height(font) - 14};
  canvas.rectangle(
      {at.x - 4, at.y - 2, at.x + measured_width(text, font) + 4, at.y + measured_height(font) + 2},
      Pen{kGesture, 1, PenStyle::solid}, Brush{kPaper, true});
  canvas.text(at, text, font, kGesture);
}

// What a tool would place, at the pointer.
void draw_tool(const WinInfo *wi, const PictureLayout &layout, Canvas &canvas) {
  const NodePlace *start = greqMode == kModeJoin ? place_of(layout, greqNext) : nullptr;
  if (start != nullptr && gHand.over) {
    canvas.rectangle(start->box, Pen{kGesture, 2, PenStyle::solid}, kHollow);
    canvas.line({start->box.centre().x, start->box.bottom}, gHand.at,
                Pen{kGesture, 2, PenStyle::solid});
  }
  if (!places_nodes(greqMode) || !gHand.over || gHand.wi != wi)
    return;
  Segm node;
  initialise_segment(wi, &node, 0, greqMode, gHand.at.x, gHand.at.y);
  const Rect box = node.box();
  if (node.type == kBox)
    draw_line_box(box, kGesture, canvas);
  else
    canvas.ellipse(box, Pen{kGesture, 1, PenStyle::dotted}, kHollow);
}

void draw_editor(const WinInfo *wi, Canvas &canvas) {
  const Font font = picture_font(wi);
  const Rect box = editor_box(wi);
  canvas.rectangle(box, Pen{kGesture, 1, PenStyle::solid}, Brush{kPaper, true});
  const std::string &text = gHand.text.text();
  const auto x_of = [&](std::size_t place) {
    return box.left + 4 + measured_width(std::string_view(text).substr(0, place), font);
  };
  const int top = box.top + 4;
  const int bottom = box.bottom - 4;
  if (gHand.text.selection_start() != gHand.text.selection_end())
    canvas.rectangle(
        {x_of(gHand.text.selection_start()), top, x_of(gHand.text.selection_end()), bottom}, kNoPen,
        Brush{kSelectedText, true});
  canvas.text({box.left + 4, top}, text, font, kPalette[kBlack]);
  const int caret = x_of(gHand.text.caret());
  canvas.line({caret, top}, {caret, bottom}, Pen{kPalette[kBlack], 1, PenStyle::solid});
  if (gHand.edited == EditedText::picture_name && gHand.state == HandState::labelling)
    canvas.text({box.right + 6, top}, "name of the picture", small_font(), kFaint);
  if (!gHand.complaint.empty())
    canvas.text({box.left, box.bottom + 2}, gHand.complaint, small_font(), kComplaint);
}

void draw_names(const WinInfo *wi, Canvas &canvas) {
  if (gHand.matches.empty())
    return;
  const Rect box = names_box(wi);
  const auto [first, last, row_height] = shown_names();
  canvas.rectangle(box, Pen{kGesture, 1, PenStyle::solid}, Brush{kPaper, true});
  int y = box.top;
  for (std::size_t i = first; i < last; ++i, y += row_height) {
    const KnownName &row = gHand.matches[i];
    if (i == gHand.chosen)
      canvas.rectangle({box.left + 1, y + 1, box.right - 1, y + row_height - 1}, kNoPen,
                       Brush{kRowFill, true});
    canvas.text({box.left + 4, y + 1}, row.name, Font{}, kPalette[kBlack]);
    canvas.text({box.left + 4 + measured_width(row.name + "  ", Font{}), y + 1}, row.type, Font{},
                Colour{110, 110, 110});
  }
}

// Where the bubble points: the right side of a node, the middle of an arrow.
std::optional<Point> bubble_tip(const PictureLayout &layout) {
  if (const NodePlace *node = place_of(layout, gHand.bubble_slot); node != nullptr)
    return Point{node->box.right, node->box.centre().y};
  for (const ArcPlace &arc : layout.arcs)
    if (arc.seg->segnum == gHand.bubble_slot) {
      const Point from = arc.path[(arc.path.size() - 1) / 2];
      const Point to = arc.path[(arc.path.size() - 1) / 2 + 1];
      return Point{(from.x + to.x) / 2, (from.y + to.y) / 2};
    }
  return std::nullopt;
}

void draw_bubble(const PictureLayout &layout, Canvas &canvas) {
  const std::optional<Point> pointed = bubble_tip(layout);
  if (gHand.bubble.empty() || !pointed)
    return;
  const std::string text = shortened(gHand.bubble);
  const int width = measured_width(text, Font{}) + 12;
  const int height = measured_height(Font{}) + 8;
  const Point tip = *pointed;
  const Rect box{tip.x + 12, tip.y - height / 2, tip.x + 12 + width, tip.y + height / 2};
  const Pen pen{kFaint, 1, PenStyle::solid};
  const Point corners[] = {tip, {box.left, tip.y - 4}, {box.left, tip.y + 4}};
  canvas.rectangle(box, pen, Brush{kBubbleFill, true});
  canvas.polygon(corners, pen, Brush{kBubbleFill, true});
  canvas.text({box.left + 6, box.top + 4}, text, Font{}, kPalette[kBlack]);
}

// In grey, that the type of the result has no label yet.
void draw_hints(const WinInfo *wi, const PictureLayout &layout, Canvas &canvas) {
  if (layout.nodes.empty())
    return;
  const NodePlace &first = layout.nodes.front();
  const bool blank = first.seg->label.find_first_not_of(' ') == std::string::npos;
  if (wi->wtype != kNetworkPicture && first.seg->segnum == 1 && blank)
    canvas.text({first.box.right + 8, first.box.centre().y - measured_height(small_font()) / 2},
                wi->wtype == kFunctionPicture ? "the type of the result" : "the type", small_font(),
                kFaint);
}

// Faulty segments stand in a red frame; the message of the one that is shown beside it.
void draw_faults(const WinInfo *wi, const PictureLayout &layout, Canvas &canvas) {
  const std::vector<PictureFault> faults = faults_of(wi);
  for (std::size_t i = 0; i < faults.size(); ++i) {
    Rect box{};
    if (const NodePlace *node = place_of(layout, faults[i].slot); node != nullptr)
      box = node->box;
    for (const ArcPlace &arc : layout.arcs)
      if (arc.seg->segnum == faults[i].slot)
        box = Rect{arc.path.front().x, arc.path.front().y, arc.path.back().x, arc.path.back().y}
                  .normalised();
    canvas.rectangle({box.left - 3, box.top - 3, box.right + 3, box.bottom + 3},
                     Pen{kComplaint, 2, PenStyle::solid}, kHollow);
    if (i != shown_fault())
      continue;
    std::string text = faults[i].message;
    while (!text.empty() && text.back() == '\n')
      text.pop_back();
    const Point at{box.right + 8, box.centre().y - measured_height(small_font()) / 2};
    const int width = measured_width(shortened(text), small_font());
    canvas.rectangle(
        {at.x - 2, at.y - 1, at.x + width + 2, at.y + measured_height(small_font()) + 1}, kNoPen,
        Brush{kPaper, true});
    canvas.text(at, shortened(text), small_font(), kComplaint);
  }
}

void draw_gesture(const WinInfo *wi, const PictureLayout &layout, Canvas &canvas) {
  switch (gHand.state) {
  case HandState::moving:
    draw_moving(layout, canvas);
    break;
  case HandState::joining:
  case HandState::keyjoin:
    draw_joining(wi, layout, canvas);
    break;
  case HandState::banding:
  case HandState::lasso:
    draw_line_box(Rect{gHand.from.x, gHand.from.y, gHand.at.x, gHand.at.y}.normalised(), kGesture,
                  canvas);
    break;
  case HandState::labelling:
    draw_editor(wi, canvas);
    break;
  case HandState::naming:
    draw_editor(wi, canvas);
    draw_names(wi, canvas);
    break;
  default:
    draw_tool(wi, layout, canvas);
  }
}

} // namespace

void draw_hand(const WinInfo *wi, const PictureLayout &layout, Canvas &canvas) {
  if (!layout.nodes.empty())
    draw_band(wi, layout, canvas);
  draw_hints(wi, layout, canvas);
  draw_all_stubs(wi, layout, canvas);
  draw_faults(wi, layout, canvas);
  if (gHand.wi != wi)
    return;
  draw_gesture(wi, layout, canvas);
  draw_bubble(layout, canvas);
}

} // namespace velora
