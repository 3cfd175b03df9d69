// Images and descriptions of pictures.
#include "shell/qt/q_pictures.h"

#include <QPainter>

#include <algorithm>

#include "editor/outline.h"
#include "shell/picture_windows.h"
#include "shell/qt/q_pane.h"
#include "shell/qt/q_picture.h"
#include "shell/qt/q_text.h"
#include "shell/qt/q_windows.h"

namespace velora::qt {

namespace {

constexpr int kMostSide = 16'000;

} // namespace

Rect whole_picture(const PictureArea &view) {
  const Rect all = view.extent();
  if (all.width() > 0 && all.height() > 0)
    return all;
  return {0, 0, std::max(view.viewport()->width(), 1), std::max(view.viewport()->height(), 1)};
}

QImage image_of(const Window &window, double factor) {
  if (window.pane != nullptr)
    return window.pane->viewport()->grab().toImage();
  const Rect all = whole_picture(*window.view);
  const double scale =
      std::min(factor, static_cast<double>(kMostSide) / std::max({all.width(), all.height(), 1}));
  QImage image(std::max(1, static_cast<int>(all.width() * scale)),
               std::max(1, static_cast<int>(all.height() * scale)), QImage::Format_RGB32);
  image.fill(Qt::white);
  QPainter painter(&image);
  painter.scale(scale, scale);
  painter.translate(-all.left, -all.top);
  window.view->draw(painter);
  return image;
}

void describe_picture(PictureArea &view) {
  const WinInfo *wi = picture_of(view.id());
  view.setAccessibleDescription(wi == nullptr ? QString() : wide(picture_outline(wi)));
}

} // namespace velora::qt
