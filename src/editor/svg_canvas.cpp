// Writing SVG: one element a call, coordinates in whole units.
#include "editor/svg_canvas.h"

#include "platform/response.h"
#include "platform/utf8.h"

namespace velora {

namespace {

// The text is set in a font of fixed pitch. In a text size s a character cell is 2s/3 wide and
// 4s/3 high, which is 8 by 16 in the size 12; the glyphs of such fonts are 0.6 em wide.
constexpr const char *kFontFamily = "'Courier New','Liberation Mono','DejaVu Sans Mono',monospace";

int cells_width(int cells, int size) {
  return (cells * size * 2 + 2) / 3;
}

// Length in bytes of the UTF-8 sequence at the start of `text`, 0 when it is none.
std::size_t sequence_length(std::string_view text) {
  const auto lead = static_cast<unsigned char>(text.front());
  std::size_t length = 1;
  if (lead >= 0x80)
    length = lead >= 0xF0 && lead <= 0xF4 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC2 ? 2 : 0;
  if (lead > 0xF4 || length > text.size())
    return 0;
  for (std::size_t i = 1; i < length; ++i)
    if (!continues_character(text[i]))
      return 0;
  // Neither overlong forms nor surrogates are characters of a document.
  const auto second = length > 1 ? static_cast<unsigned char>(text[1]) : 0;
  if ((lead == 0xE0 && second < 0xA0) || (lead == 0xED && second > 0x9F) ||
      (lead == 0xF0 && second < 0x90) || (lead == 0xF4 && second > 0x8F))
    return 0;
  return length;
}

// Characters of a text as it is shown; a byte that begins no character shows as one.
int count_cells(std::string_view text) {
  int cells = 0;
  while (!text.empty()) {
    text.remove_prefix(std::max<std::size_t>(1, sequence_length(text)));
    ++cells;
  }
  return cells;
}

// The text with what a document may not hold replaced.
std::string escaped(std::string_view text) {
  std::string out;
  while (!text.empty()) {
    const std::size_t length = sequence_length(text);
    const char c = text.front();
    if (length == 0 || (length == 1 && static_cast<unsigned char>(c) < ' ') || c == 0x7F)
      out += "\xEF\xBF\xBD"; // the replacement character
    else if (c == '<')
      out += "&lt;";
    else if (c == '>')
      out += "&gt;";
    else if (c == '&')
      out += "&amp;";
    else if (c == '"')
      out += "&quot;";
    else
      out += text.substr(0, length);
    text.remove_prefix(std::max<std::size_t>(1, length));
  }
  return out;
}

std::string colour_text(Colour colour) {
  return format_text("#%02x%02x%02x", colour.red, colour.green, colour.blue);
}

std::string stroke(const Pen &pen) {
  if (pen.style == PenStyle::none)
    return " stroke=\"none\"";
  std::string text = format_text(" stroke=\"%s\"", colour_text(pen.colour).c_str());
  if (pen.width != 1)
    text += format_text(" stroke-width=\"%d\"", pen.width);
  if (pen.style == PenStyle::dotted)
    text += " stroke-dasharray=\"2 2\"";
  return text;
}

} // namespace

void SvgCanvas::shape(const std::string &element, const Pen &pen, const Brush &brush) {
  const std::string fill = brush.filled ? colour_text(brush.colour) : "none";
  body_ += format_text("<%s fill=\"%s\"%s/>\n", element.c_str(), fill.c_str(), stroke(pen).c_str());
}

void SvgCanvas::line(Point from, Point to, const Pen &pen) {
  body_ += format_text("<line x1=\"%d\" y1=\"%d\" x2=\"%d\" y2=\"%d\"%s/>\n", from.x, from.y, to.x,
                       to.y, stroke(pen).c_str());
}

void SvgCanvas::polygon(std::span<const Point> corners, const Pen &pen, const Brush &brush) {
  std::string points;
  for (const Point corner : corners)
    points += format_text("%s%d,%d", points.empty() ? "" : " ", corner.x, corner.y);
  shape("polygon points=\"" + points + "\"", pen, brush);
}

void SvgCanvas::rectangle(const Rect &box, const Pen &pen, const Brush &brush) {
  const Rect r = box.normalised();
  shape(format_text("rect x=\"%d\" y=\"%d\" width=\"%d\" height=\"%d\"", r.left, r.top, r.width(),
                    r.height()),
        pen, brush);
}

void SvgCanvas::ellipse(const Rect &box, const Pen &pen, const Brush &brush) {
  const Rect r = box.normalised();
  shape(format_text("ellipse cx=\"%g\" cy=\"%g\" rx=\"%g\" ry=\"%g\"", (r.left + r.right) / 2.0,
                    (r.top + r.bottom) / 2.0, r.width() / 2.0, r.height() / 2.0),
        pen, brush);
}

void SvgCanvas::text(Point at, std::string_view text, const Font &font, Colour colour) {
  std::string face;
  if (font.italic)
    face += " font-style=\"italic\"";
  if (font.bold)
    face += " font-weight=\"bold\"";
  // The base line puts capitals in the middle of the line.
  const double base = at.y + text_height(font) * 0.8;
  body_ += format_text("<text x=\"%d\" y=\"%g\" font-size=\"%g\" textLength=\"%d\"%s fill=\"%s\">",
                       at.x, base, font.size / 0.9, text_width(text, font), face.c_str(),
                       colour_text(colour).c_str());
  body_ += escaped(text) + "</text>\n";
}

int SvgCanvas::text_width(std::string_view text, const Font &font) {
  return cells_width(count_cells(text), font.size);
}

int SvgCanvas::text_height(const Font &font) {
  return font.size * 4 / 3;
}

void SvgCanvas::set_clip(const Rect &box) {
  clear_clip();
  ++clips_;
  body_ += format_text("<clipPath id=\"clip%d\"><rect x=\"%d\" y=\"%d\" width=\"%d\" "
                       "height=\"%d\"/></clipPath>\n<g clip-path=\"url(#clip%d)\">\n",
                       clips_, box.left, box.top, box.width(), box.height(), clips_);
  clipped_ = true;
}

void SvgCanvas::clear_clip() {
  if (clipped_)
    body_ += "</g>\n";
  clipped_ = false;
}

std::string SvgCanvas::document(const Rect &extent, std::string_view title) const {
  std::string text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
  text += format_text("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"%d\" height=\"%d\" "
                      "viewBox=\"%d %d %d %d\">\n<title>",
                      extent.width(), extent.height(), extent.left, extent.top, extent.width(),
                      extent.height());
  text += escaped(title) + "</title>\n";
  text += format_text("<rect x=\"%d\" y=\"%d\" width=\"%d\" height=\"%d\" fill=\"#ffffff\"/>\n",
                      extent.left, extent.top, extent.width(), extent.height());
  text += format_text("<g font-family=\"%s\" xml:space=\"preserve\">\n", kFontFamily);
  text += body_;
  if (clipped_)
    text += "</g>\n";
  return text + "</g>\n</svg>\n";
}

} // namespace velora
