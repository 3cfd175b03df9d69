// The list of graphics windows and the drawing of one. Pure data: no window of the desktop is
// touched here, and nothing is evaluated.
#include "eval/graphics_model.h"

#include <algorithm>

namespace velora {

std::unique_ptr<BgrWinInfo> gBgrWinInfo;
BgrWinInfo *gBgrWind = nullptr;

namespace {

constexpr int kLetterTenths = 6; // width of a letter in tenths of the font's size

// Roughly where a text comes to stand, for the extent; the canvas knows its width exactly.
Rect text_box(const PrimInfo &prim) {
  const int width = static_cast<int>(prim.text.size()) * prim.font.size * kLetterTenths / 10;
  const int left = prim.align == TextAlign::left     ? prim.at[0].x
                   : prim.align == TextAlign::centre ? prim.at[0].x - width / 2
                                                     : prim.at[0].x - width;
  return {left, prim.at[0].y, left + width, prim.at[0].y + prim.font.size * 4 / 3};
}

Rect around(const Rect &box, Point p) {
  return {std::min(box.left, p.x), std::min(box.top, p.y), std::max(box.right, p.x),
          std::max(box.bottom, p.y)};
}

Rect prim_box(const PrimInfo &prim) {
  if (prim.code == kPrimText)
    return text_box(prim);
  Rect box = around({prim.at[0].x, prim.at[0].y, prim.at[0].x, prim.at[0].y}, prim.at[1]);
  if (prim.code == kPrimFrameTri || prim.code == kPrimFillTri)
    box = around(box, prim.at[2]);
  return box;
}

void draw_text(const PrimInfo &prim, Point at, Canvas &canvas) {
  if (prim.align != TextAlign::left) {
    const int width = canvas.text_width(prim.text, prim.font);
    at.x -= prim.align == TextAlign::centre ? width / 2 : width;
  }
  canvas.text(at, prim.text, prim.font, prim.colour);
}

void draw_prim(const PrimInfo &prim, Point origin, Canvas &canvas) {
  std::array<Point, 3> at = prim.at;
  for (Point &p : at)
    p = {p.x + origin.x, p.y + origin.y};
  const Rect box = Rect{at[0].x, at[0].y, at[1].x, at[1].y}.normalised();
  const Pen pen{prim.colour, prim.width,
                prim.code == kPrimDottedLine ? PenStyle::dotted : PenStyle::solid};
  const bool filled =
      prim.code == kPrimFillRect || prim.code == kPrimFillOval || prim.code == kPrimFillTri;
  const Brush brush{prim.colour, filled};
  switch (prim.code) {
  case kPrimLine:
  case kPrimDottedLine:
    canvas.line(at[0], at[1], pen);
    break;
  case kPrimFrameRect:
  case kPrimFillRect:
    canvas.rectangle(box, pen, brush);
    break;
  case kPrimFrameOval:
  case kPrimFillOval:
    canvas.ellipse(box, pen, brush);
    break;
  case kPrimFrameTri:
  case kPrimFillTri:
    canvas.polygon(at, pen, brush);
    break;
  case kPrimText:
    draw_text(prim, at[0], canvas);
    break;
  default: // a delay leaves no trace
    break;
  }
}

} // namespace

BgrWinInfo *NewGraphicWinInfo(int width, int height) {
  std::unique_ptr<BgrWinInfo> *end = &gBgrWinInfo;
  int highest = 0;
  for (; *end != nullptr; end = &(*end)->next)
    highest = std::max(highest, (*end)->window_id);
  *end = std::make_unique<BgrWinInfo>();
  BgrWinInfo *info = end->get();
  info->window_id = highest + 1;
  info->width = width;
  info->height = height;
  gBgrWind = info;
  return info;
}

BgrWinInfo *find_graphics(int window_id) {
  BgrWinInfo *info = gBgrWinInfo.get();
  while (info != nullptr && info->window_id != window_id)
    info = info->next.get();
  return info;
}

BgrWinInfo *FindGraphicWinInfo(WindowId win) {
  BgrWinInfo *info = gBgrWinInfo.get();
  while (info != nullptr && info->win != win)
    info = info->next.get();
  return info;
}

void RemoveGraphicWinInfo(BgrWinInfo *info) {
  BgrWinInfo *newest = nullptr;
  for (std::unique_ptr<BgrWinInfo> *place = &gBgrWinInfo; *place != nullptr;) {
    if (place->get() == info) {
      std::unique_ptr<BgrWinInfo> rest = std::move(info->next);
      *place = std::move(rest);
      continue;
    }
    newest = place->get();
    place = &(*place)->next;
  }
  if (gBgrWind == info)
    gBgrWind = newest;
}

int count_graphics() {
  int count = 0;
  for (const BgrWinInfo *info = gBgrWinInfo.get(); info != nullptr; info = info->next.get())
    ++count;
  return count;
}

std::string graphics_title(const BgrWinInfo &info) {
  int place = 1;
  for (const BgrWinInfo *i = gBgrWinInfo.get(); i != nullptr && i != &info; i = i->next.get())
    ++place;
  return "Graphics [" + std::to_string(place) + " of " + std::to_string(count_graphics()) + "]";
}

void clear_graphics(BgrWinInfo &info) {
  info.winPrims.clear();
  info.pen = {};
  info.fore = kPalette[kBlack];
  info.paper = kPalette[kWhite];
  info.map = {};
  info.plot = false;
}

Rect drawn_extent(const BgrWinInfo &info) {
  Rect all{0, 0, 0, 0};
  for (const PrimInfo &prim : info.winPrims) {
    if (prim.code == kPrimDelay)
      continue;
    const Rect box = prim_box(prim);
    all = around(around(all, {box.left + info.OrigX, box.top + info.OrigY}),
                 {box.right + info.OrigX, box.bottom + info.OrigY});
  }
  return all;
}

Rect graphics_extent(const BgrWinInfo &info) {
  return around(drawn_extent(info), {info.width, info.height});
}

void draw_graphics(const BgrWinInfo &info, Canvas &canvas) {
  canvas.rectangle(graphics_extent(info), Pen{info.paper, 1, PenStyle::none},
                   Brush{info.paper, true});
  for (const PrimInfo &prim : info.winPrims)
    draw_prim(prim, {info.OrigX, info.OrigY}, canvas);
}

} // namespace velora
