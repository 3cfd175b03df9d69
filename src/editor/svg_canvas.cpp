// Writing SVG: one element a call, coordinates in whole units.
#include "editor/svg_canvas.h"

#include "platform/response.h"
#include "platform/text_measures.h"
#include "platform/xml_text.h"

namespace velora {

namespace {

// The text is set in a font of fixed pitch, whose glyphs are 0.6 em wide.
constexpr const char *kFontFamily = "'Courier New','Liberation Mono','DejaVu Sans Mono',monospace";

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
  if (pen.style == PenStyle::dashed)
    text += " stroke-dasharray=\"6 3\"";
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
  body_ += xml_text(text) + "</text>\n";
}

int SvgCanvas::text_width(std::string_view text, const Font &font) {
  return measured_width(text, font);
}

int SvgCanvas::text_height(const Font &font) {
  return measured_height(font);
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
  text += xml_text(title) + "</title>\n";
  text += format_text("<rect x=\"%d\" y=\"%d\" width=\"%d\" height=\"%d\" fill=\"#ffffff\"/>\n",
                      extent.left, extent.top, extent.width(), extent.height());
  text += format_text("<g font-family=\"%s\" xml:space=\"preserve\">\n", kFontFamily);
  text += body_;
  if (clipped_)
    text += "</g>\n";
  return text + "</g>\n</svg>\n";
}

} // namespace velora
