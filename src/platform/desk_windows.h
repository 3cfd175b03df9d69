// The windows of a desktop: making, placing, drawing and saving of them. A window is an opaque
// number (0 is none). One of the four roles that make up a Desktop.
#pragma once

#include <string>
#include <string_view>

#include "platform/canvas.h"
#include "platform/geometry.h"

namespace velora {

using WindowId = int;

// The numbers of the window kinds: 1 to 3 are picture windows, 4 to 8 text and graphics windows.
enum WindowKind {
  kFunctionWindow = 1,
  kDataWindow = 2,
  kNetworkWindow = 3,
  kControlWindow = 4,
  kOrvekWindow = 5,
  kGraphicsWindow = 6,
  kNarrativeWindow = 7,
  kAnnotationWindow = 8
};
constexpr bool shows_picture(int kind) {
  return kind >= kFunctionWindow && kind <= kNetworkWindow;
}
constexpr bool holds_text(int kind) {
  return kind == kControlWindow || kind == kOrvekWindow || kind == kNarrativeWindow ||
         kind == kAnnotationWindow;
}

// How far arranged windows stand apart.
inline constexpr int kWindowStep = 26;
// Where a further window of a kind stands when `others` are open: a step to the right and down for
// each, so that none hides another.
constexpr Rect stepped(const Rect &place, int others) {
  constexpr int kStepsAcross = 6;
  const int by = kWindowStep * (others % kStepsAcross);
  return {place.left + by, place.top + by, place.right + by, place.bottom + by};
}

enum class CursorShape {
  arrow,
  busy,
  box,
  bold_box,
  double_box,
  hexagon,
  bold_hexagon,
  double_hexagon,
  junction,
  hand,
  finger,
  start_join,
  end_join,
  ibeam,
  cross
};

// `origin` is the point of the picture at the window's upper left corner; `percent` how large it is
// shown, in hundredths of its natural size.
struct PictureView {
  Point origin;
  int percent = 100;
  friend bool operator==(const PictureView &, const PictureView &) = default;
};

class DeskWindows {
public:
  virtual ~DeskWindows() = default;
  // Creates a window of `kind`, not yet shown; answers 0 on failure.
  virtual WindowId create_window(WindowKind kind, const std::string &title, const Rect &place) = 0;
  virtual void close_window(WindowId win) = 0;
  virtual void set_title(WindowId win, const std::string &title) = 0;
  // Moves a window and puts it on top of the others; the focus stays where it is.
  virtual void place_window(WindowId win, const Rect &place) = 0;
  // Shows a window on top of the others; the focus stays where it is.
  virtual void show_window(WindowId win) = 0;
  virtual void focus_window(WindowId win) = 0;
  virtual void invalidate(WindowId win) = 0;
  // The inside of a window at the natural size of pictures, the corner at 0, 0.
  virtual Rect client_rect(WindowId win) = 0;
  // Stays until another is set: `busy` shows over all windows, the others over pictures only.
  virtual void set_cursor(CursorShape shape) = 0;
  virtual int text_width(WindowId win, std::string_view text, const Font &font) = 0;
  virtual int text_height(WindowId win, const Font &font) = 0;
  // What a picture or graphics window scrolls over, in its own units; the corner may lie left of
  // and above the origin. Points given to the program and to the canvas are in the same units.
  virtual void set_extent(WindowId win, const Rect &extent) = 0;
  // Which part of a picture is shown and how large. A view that would show more than the extent is
  // moved to what there is to show.
  virtual PictureView view_of(WindowId win) = 0;
  virtual void set_view(WindowId win, const PictureView &view) = 0;
  // Saves a picture of the window's inside: as a bitmap, or as PNG under a name that ends in .png;
  // answers false on failure.
  virtual bool save_bitmap(WindowId win, const std::string &file) = 0;
  // Size of the screen, for first placements.
  virtual Rect screen() = 0;
  // The place inside the main frame where windows are arranged, in screen coordinates.
  virtual Rect work_area() = 0;
  // Behind the title of the frame: the database that is open (empty for none) and whether it has
  // changes that are not saved.
  virtual void show_database(const std::string &name, bool unsaved) = 0;
  // A line of advice in the frame, where it has a place for one; empty to take it away.
  virtual void show_hint(const std::string &hint) = 0;
};

} // namespace velora
