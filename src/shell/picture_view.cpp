// Zooming and moving the view. The desktop keeps the view of a window within what there is to show.
#include "shell/picture_view.h"

#include <algorithm>
#include <iterator>

#include "editor/draw.h"
#include "editor/needs.h"
#include "platform/desktop.h"

namespace velora {

namespace {

constexpr int kPercents[] = {25, 33, 50, 67, 80, 100, 125, 150, 200, 300, 400};
constexpr int kFitMargin = 16;

int stepped_percent(int percent, int steps) {
  for (; steps > 0; --steps) {
    const int *above = std::upper_bound(std::begin(kPercents), std::end(kPercents), percent);
    percent = above != std::end(kPercents) ? *above : percent;
  }
  for (; steps < 0; ++steps) {
    const int *from = std::lower_bound(std::begin(kPercents), std::end(kPercents), percent);
    percent = from != std::begin(kPercents) ? *(from - 1) : percent;
  }
  return percent;
}

// Shows the picture in another size; the point `at` stays where it is in the window.
void show_at(const WinInfo *wi, int percent, Point at) {
  PictureView view = gDesktop->view_of(wi->win);
  const auto kept = [&](int fixed, int origin) {
    return fixed - (fixed - origin) * view.percent / percent;
  };
  view.origin = {kept(at.x, view.origin.x), kept(at.y, view.origin.y)};
  view.percent = percent;
  gDesktop->set_view(wi->win, view);
}

Point middle_of(const WinInfo *wi) {
  const PictureView view = gDesktop->view_of(wi->win);
  const Rect inside = gDesktop->client_rect(wi->win);
  return {view.origin.x + inside.width() * 50 / view.percent,
          view.origin.y + inside.height() * 50 / view.percent};
}

} // namespace

int zoom_by(const WinInfo *wi, int steps) {
  if (wi == nullptr)
    return 0;
  show_at(wi, stepped_percent(gDesktop->view_of(wi->win).percent, steps), middle_of(wi));
  return 1;
}

int zoom_to(const WinInfo *wi, int percent) {
  if (wi == nullptr)
    return 0;
  show_at(wi, percent, middle_of(wi));
  return 1;
}

int zoom_to_fit(const WinInfo *wi) {
  if (wi == nullptr)
    return 0;
  const Rect extent = layout_extent(lay_out_picture(wi));
  const Rect inside = gDesktop->client_rect(wi->win);
  const int across = inside.width() * 100 / std::max(1, extent.width() + 2 * kFitMargin);
  const int down = inside.height() * 100 / std::max(1, extent.height() + 2 * kFitMargin);
  const int percent = std::clamp(std::min(across, down), kPercents[0], 100);
  gDesktop->set_view(wi->win, {{extent.left - kFitMargin, extent.top - kFitMargin}, percent});
  return 1;
}

void pan_view(const WinInfo *wi, int dx, int dy) {
  PictureView view = gDesktop->view_of(wi->win);
  view.origin = {view.origin.x + dx, view.origin.y + dy};
  gDesktop->set_view(wi->win, view);
}

// Turning the wheel away from the user enlarges.
void zoom_view(const WinInfo *wi, Point at, int notches) {
  show_at(wi, stepped_percent(gDesktop->view_of(wi->win).percent, -notches), at);
}

} // namespace velora
