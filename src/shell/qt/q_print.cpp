// Printing, documents and images of windows. A picture is fitted to the page, a text flows over
// pages.
#include "shell/qt/q_print.h"

#include <QBuffer>
#include <QPainter>
#include <QPdfWriter>
#include <QPrintDialog>
#include <QPrinter>
#include <QTextDocument>

#include <algorithm>

#include "platform/safe_file.h"
#include "shell/qt/q_frame.h"
#include "shell/qt/q_pane.h"
#include "shell/qt/q_picture.h"
#include "shell/qt/q_pictures.h"
#include "shell/qt/q_text.h"
#include "shell/qt/q_windows.h"
#include "shell/window_desktop.h"

namespace velora::qt {

namespace {

constexpr double kPngScale = 2;   // dots a unit
constexpr double kPdfMargin = 10; // millimetres

// The picture in the middle of the page, not larger than it is on the screen.
void print_picture(const Window &window, QPagedPaintDevice &printer) {
  const Rect all = whole_picture(*window.view);
  QPainter painter(&printer);
  const int resolution = printer.logicalDpiX();
  const QRectF page = printer.pageLayout().paintRectPixels(resolution);
  const double natural = resolution / 96.0;
  const double scale = std::min({natural, page.width() / std::max(all.width(), 1),
                                 page.height() / std::max(all.height(), 1)});
  painter.translate((page.width() - all.width() * scale) / 2, 0);
  painter.scale(scale, scale);
  painter.translate(-all.left, -all.top);
  window.view->draw(painter);
}

void print_onto(const Window &window, QPagedPaintDevice &printer) {
  if (window.view != nullptr) {
    const Rect all = whole_picture(*window.view);
    if (all.width() > all.height())
      printer.setPageOrientation(QPageLayout::Landscape);
    print_picture(window, printer);
  } else {
    const QTextDocument &shown = *window.pane->document();
    QTextDocument document(wide(window.pane->text()));
    document.setDefaultFont(shown.defaultFont());
    document.print(&printer);
  }
}

std::string pdf_of(const Window &window) {
  QBuffer bytes;
  bytes.open(QIODevice::WriteOnly);
  QPdfWriter writer(&bytes);
  writer.setTitle(window.sub->windowTitle());
  writer.setPageMargins({kPdfMargin, kPdfMargin, kPdfMargin, kPdfMargin}, QPageLayout::Millimeter);
  print_onto(window, writer);
  return bytes.data().toStdString();
}

std::string image_file(const QImage &image, const char *format) {
  QBuffer bytes;
  bytes.open(QIODevice::WriteOnly);
  return image.save(&bytes, format) ? bytes.data().toStdString() : std::string();
}

} // namespace

bool save_window(const Window &window, const std::string &file) {
  const bool png = has_ending(file, ".png");
  const std::string content =
      has_ending(file, ".pdf")
          ? pdf_of(window)
          : image_file(image_of(window, png ? kPngScale : 1), png ? "PNG" : "BMP");
  return !content.empty() && write_or_tell(file, content);
}

void print_window(const Window &window) {
  QPrinter printer(QPrinter::HighResolution);
  QPrintDialog dialog(&printer, &frame());
  dialog.setObjectName(QStringLiteral("print"));
  printer.setDocName(window.sub->windowTitle());
  if (dialog.exec() == QDialog::Accepted)
    print_onto(window, printer);
}

} // namespace velora::qt
