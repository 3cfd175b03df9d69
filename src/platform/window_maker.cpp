// The looks of windows and the making of them.
#include "platform/window_maker.h"

#include <algorithm>
#include <iterator>

#include "platform/desktop.h"

namespace velora {

namespace {

constexpr Rect placed(int x, int y, int width, int height) {
  return {x, y, x + width, y + height};
}

// The place of the console stands for one that is made again; the first one depends on the screen.
const WindowLook kLooks[] = {
    {kFunctionWindow, "Functions", MenuBar::functions, true, placed(100, 100, 450, 360)},
    {kDataWindow, "Constructors", MenuBar::datatype, true, placed(100, 100, 450, 360)},
    {kNetworkWindow, "Function Network", MenuBar::network, true, placed(100, 100, 450, 360)},
    {kControlWindow, "CONTROL", MenuBar::main, true, placed(50, 50, 430, 280)},
    {kOrvekWindow, "ORVEK", MenuBar::orvek, true, placed(10, 50, 350, 400)},
    {kGraphicsWindow, "GRAPHICS", MenuBar::main, false, placed(100, 50, 350, 400)},
    {kNarrativeWindow, "narrative", MenuBar::main, true, placed(10, 50, 350, 400)},
    {kAnnotationWindow, "Annotation", MenuBar::main, true, placed(60, 60, 350, 400)},
};
static_assert(std::size(kLooks) == kAnnotationWindow);

// Pictures step further, and begin again sooner.
constexpr int kPictureStep = 40;
constexpr int kPictureSteps = 5;
// Screens that are lower hold the usual windows and CONTROL only one above the other.
constexpr int kUsualScreen = 700;
constexpr int kLeastHeight = 160;

} // namespace

const WindowLook &look_of(WindowKind kind) {
  return kLooks[kind - 1];
}

Rect first_place(WindowKind kind, int others) {
  const Rect &usual = look_of(kind).place;
  const int by = kPictureStep * (others % kPictureSteps);
  Rect place = shows_picture(kind)
                   ? placed(usual.left + by, usual.top + by, usual.width(), usual.height())
                   : stepped(usual, others);
  const int screen = gDesktop->screen().height();
  if (kind != kControlWindow && screen < kUsualScreen)
    place.bottom = std::clamp(screen / 2, place.top + kLeastHeight,
                              std::max(place.bottom, place.top + kLeastHeight));
  return place;
}

WindowId make_window(WindowKind kind, int others, const Rect *size) {
  Rect place = first_place(kind, others);
  if (size != nullptr)
    place = placed(place.left, place.top, size->width(), size->height());
  const WindowId win = gDesktop->create_window(kind, look_of(kind).title, place);
  if (win != 0)
    gDesktop->show_window(win);
  return win;
}

} // namespace velora
