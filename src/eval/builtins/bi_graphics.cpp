// Line and shape graphics in graphics windows. Every gr_ built-in draws in the current window, the
// one opened or chosen last; with none open it leaves the expression as it is. Points are counted
// in dots from the upper left corner, x to the right, y down. Called by the dispatcher.
#include "eval/builtins/bi_graphics.h"

#include <algorithm>

#include "eval/bi_support.h"
#include "eval/builtins/families.h"
#include "eval/graphics_windows.h"
#include "eval/needs.h"
#include "platform/desktop.h"

namespace velora {

namespace {

constexpr int kFarthest = 100000;

constexpr Colour kColourOf[] = {kPalette[kBlack],   kPalette[kWhite], kPalette[kRed],
                                kPalette[kGreen],   kPalette[kBlue],  kPalette[kCyan],
                                kPalette[kMagenta], kPalette[kYellow]};

int add_prim(node *target, PrimInfo prim) {
  prim.colour = gBgrWind->fore;
  gBgrWind->winPrims.push_back(std::move(prim));
  redraw_current();
  return set_bool(target, true);
}

// A line from the pen to the point given, where the pen then stands.
int line_to(node **stack, int code) {
  int at[2];
  if (gBgrWind == nullptr || !force_coordinates(stack, 1, 2, at))
    return 0;
  const Point from = gBgrWind->pen;
  gBgrWind->pen = {at[0], at[1]};
  return add_prim(stack[2], {.code = code, .at = {from, gBgrWind->pen}});
}

// A shape in the box whose left, top, right and bottom are given.
int box_shape(node **stack, int code) {
  int at[4];
  if (gBgrWind == nullptr || !force_coordinates(stack, 1, 4, at))
    return 0;
  return add_prim(stack[4], {.code = code, .at = {Point{at[0], at[1]}, Point{at[2], at[3]}}});
}

int triangle(node **stack, int code) {
  int at[6];
  if (gBgrWind == nullptr || !force_coordinates(stack, 1, 6, at))
    return 0;
  return add_prim(
      stack[6],
      {.code = code, .at = {Point{at[0], at[1]}, Point{at[2], at[3]}, Point{at[4], at[5]}}});
}

// A text, or another plain value as it prints without its mark.
std::optional<std::string> plain_text(const node *n) {
  switch (n->type) {
  case kString:
    return std::string(text_of(n));
  case kInteger:
  case kReal:
    return leaf_text(n).substr(n->type == kReal ? 2 : 1);
  case kCharacter:
    return std::string(1, n->val.c);
  case kConstructorNode:
    return std::string(n->val.cs->name);
  default:
    return std::nullopt;
  }
}

} // namespace

bool force_coordinates(node **stack, int first, int n, int *out) {
  for (int i = 0; i < n; ++i) {
    const node *number = force_arg(stack, first + i, kInteger);
    if (number == nullptr)
      return false;
    out[i] = std::clamp(number->val.i, -kFarthest, kFarthest);
  }
  return true;
}

std::optional<Colour> force_colour(node **stack, int i) {
  const node *colour = force_arg(stack, i, kConstructorNode);
  if (colour != nullptr)
    for (int row = kConsBlack; row <= kConsYellow; ++row)
      if (is_cons_node(colour, static_cast<ConsRow>(row)))
        return kColourOf[row - kConsBlack];
  return std::nullopt;
}

void redraw_current() {
  if (gBgrWind != nullptr)
    gDesktop->invalidate(gBgrWind->win);
}

int bi_gr_open(node **stack, int) {
  return set_bool(stack[0], open_graphics() != nullptr);
}

int bi_gr_close(node **stack, int) {
  if (gBgrWind == nullptr)
    return set_bool(stack[0], false);
  close_graphics(gBgrWind);
  return set_bool(stack[0], true);
}

int bi_gr_setcurrwin(node **stack, int) {
  const node *number = force_arg(stack, 1, kInteger);
  if (number == nullptr)
    return 0;
  BgrWinInfo *info = find_graphics(number->val.i);
  if (info != nullptr) {
    gBgrWind = info;
    gDesktop->show_window(info->win);
  }
  return set_bool(stack[1], info != nullptr);
}

int bi_gr_clear(node **stack, int) {
  if (gBgrWind == nullptr)
    return 0;
  clear_graphics(*gBgrWind);
  redraw_current();
  return set_bool(stack[0], true);
}

int bi_gr_moveto(node **stack, int) {
  int at[2];
  if (gBgrWind == nullptr || !force_coordinates(stack, 1, 2, at))
    return 0;
  gBgrWind->pen = {at[0], at[1]};
  return set_bool(stack[2], true);
}

int bi_gr_lineto(node **stack, int) {
  return line_to(stack, kPrimLine);
}
int bi_gr_dlineto(node **stack, int) {
  return line_to(stack, kPrimDottedLine);
}
int bi_gr_framerect(node **stack, int) {
  return box_shape(stack, kPrimFrameRect);
}
int bi_gr_frameoval(node **stack, int) {
  return box_shape(stack, kPrimFrameOval);
}
int bi_gr_fillrect(node **stack, int) {
  return box_shape(stack, kPrimFillRect);
}
int bi_gr_filloval(node **stack, int) {
  return box_shape(stack, kPrimFillOval);
}
int bi_gr_frametri(node **stack, int) {
  return triangle(stack, kPrimFrameTri);
}
int bi_gr_filltri(node **stack, int) {
  return triangle(stack, kPrimFillTri);
}

// The colour of what is drawn from now on.
int bi_gr_forecolor(node **stack, int) {
  const std::optional<Colour> colour = force_colour(stack, 1);
  if (gBgrWind == nullptr || !colour)
    return 0;
  gBgrWind->fore = *colour;
  return set_bool(stack[1], true);
}

// The colour of the paper under everything.
int bi_gr_backcolor(node **stack, int) {
  const std::optional<Colour> colour = force_colour(stack, 1);
  if (gBgrWind == nullptr || !colour)
    return 0;
  gBgrWind->paper = *colour;
  redraw_current();
  return set_bool(stack[1], true);
}

// A text whose upper left corner is the pen, which stays there.
int bi_gr_text(node **stack, int) {
  if (gBgrWind == nullptr)
    return 0;
  if (bi_arg(stack, 1)->type != kString)
    evaluate(bi_arg(stack, 1));
  const std::optional<std::string> text = plain_text(bi_arg(stack, 1));
  if (!text)
    return 0;
  return add_prim(stack[1], {.code = kPrimText, .at = {gBgrWind->pen}, .text = *text});
}

// Kept: a delay is only noted among the primitives; it takes no time itself.
int bi_gr_delay(node **stack, int) {
  const node *length = force_arg(stack, 1, kInteger);
  if (length == nullptr || gBgrWind == nullptr)
    return 0;
  return add_prim(stack[1], {.code = kPrimDelay, .number = length->val.i});
}

int bi_gr_displaypict(node **stack, int) {
  const node *name = force_arg(stack, 1, kString);
  if (name == nullptr)
    return 0;
  return set_bool(stack[1], show_picture(std::string(text_of(name)).c_str()) != 0);
}

} // namespace velora
