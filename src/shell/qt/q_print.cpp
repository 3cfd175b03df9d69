// Printing, documents, images and drawings of windows. A picture is fitted to the page, a text
// flows over pages.
#include "shell/qt/q_print.h"

#include <QBuffer>
#include <QFile>
#include <QPainter>
#include <QPdfWriter>
#include <QPrintDialog>
#include <QPrinter>
#include <QTextDocument>

#include <algorithm>

#include "editor/svg_canvas.h"
#include "platform/response.h"
#include "platform/safe_file.h"
#include "shell/desk_events.h"
#include "shell/qt/q_dialogs.h"
#include "shell/qt/q_frame.h"
#include "shell/qt/q_pane.h"
#include "shell/qt/q_picture.h"
#include "shell/qt/q_pictures.h"
#include "shell/qt/q_text.h"
#include "shell/qt/q_windows.h"

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

std::string svg_of(const Window &window) {
  SvgCanvas canvas;
  paint_window(window.id, canvas);
  return canvas.document(whole_picture(*window.view), narrow(window.sub->windowTitle()));
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

const char *pattern_of(FileKind kind) {
  switch (kind) {
  case FileKind::pdf:
    return "*.pdf";
  case FileKind::png:
    return "*.png";
  default:
    return "*.svg";
  }
}

} // namespace

bool save_image(const QImage &image, const char *format, const std::string &file) {
  QBuffer bytes;
  bytes.open(QIODevice::WriteOnly);
  return image.save(&bytes, format) && write_or_tell(file, bytes.data().toStdString());
}

bool save_window(const Window &window, FileKind kind, const QString &file) {
  const std::string name = QFile::encodeName(file).toStdString();
  switch (kind) {
  case FileKind::png:
    return save_image(image_of(window, kPngScale), "PNG", name);
  case FileKind::svg:
    return window.view != nullptr && write_or_tell(name, svg_of(window));
  default:
    return write_or_tell(name, pdf_of(window));
  }
}

void save_window_as(const Window &window, FileKind kind) {
  run_entry([&window, kind] {
    const auto chosen = gDesktop->choose_file(true, "Save Window", pattern_of(kind));
    if (!chosen)
      return 0;
    if (!save_window(window, kind, QFile::decodeName(chosen->c_str()))) {
      orvek_errorf("Can't write to %s\n", chosen->c_str());
      return 0;
    }
    DisplayResponsef("Window saved in file %s\n", chosen->c_str());
    return 1;
  });
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
