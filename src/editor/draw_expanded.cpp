// The expanded drawing of a box that the type check found fault with: a dotted stub with number and
// declared type for each input that is missing, and the declared result where nothing takes it.
#include <string>

#include "editor/draw_layout.h"
#include "editor/picture_walk.h"
#include "front/type_names.h"
#include "platform/text_measures.h"

namespace velora {

namespace {

constexpr Colour kStubColour{128, 128, 128};
constexpr Pen kStubPen{kStubColour, 1, PenStyle::dotted};

constexpr int kStubLength = 10;
constexpr int kBesideBox = 6;
constexpr Brush kPaper{{255, 255, 255}, true};

// The stub of input `i` of `count` on the upper side of a box. Its number and type stand beside the
// box, clear of the heads of the arrows that arrive above; a line each, in order.
void draw_stub(const NodePlace &node, int i, int count, const std::string &type, const Font &font,
               Canvas &canvas) {
  const int x = node.box.left + (i + 1) * node.box.width() / (count + 1);
  canvas.line({x, node.box.top - kStubLength}, {x, node.box.top}, kStubPen);
  const std::string text = std::to_string(i + 1) + " " + type;
  const int line = measured_height(font) + 1;
  const Point at{node.box.right + kBesideBox, node.box.top - line * (count - i)};
  // On paper of its own, since arrows to other boxes may run there.
  canvas.rectangle({at.x - 1, at.y, at.x + measured_width(text, font) + 1, at.y + line},
                   Pen{{}, 1, PenStyle::none}, kPaper);
  canvas.text(at, text, font, kStubColour);
}

} // namespace

void draw_expanded(const NodePlace &node, Canvas &canvas) {
  TypeNames types;
  std::string result;
  const std::string name(label_of(node.seg));
  if (get_intypes_of(name, types, 1) == 0 || get_outtype_of(name, result) == 0)
    return;
  const Font font = number_font(node.font);
  const int count = static_cast<int>(types.size());
  for (int i = static_cast<int>(node.seg->segb_ptr.size()); i < count; ++i)
    draw_stub(node, i, count, types[static_cast<std::size_t>(i)], font, canvas);
  if (!node.seg->segf_ptr.empty())
    return;
  const Point from{node.box.centre().x, node.box.bottom};
  const Point to{from.x, from.y + measured_height(font)};
  canvas.line(from, to, kStubPen);
  canvas.text(to, result, font, kStubColour);
}

} // namespace velora
