// What the program asks of a desktop: windows, menus, file choosing, cursors. A window is an
// opaque number (0 is none). Implemented by the Win32 shell and by the recorder of the tests;
// NullDesktop is the one of programs without windows.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

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

enum class MenuBar { main, functions, datatype, network, orvek };

// What the Edit menu asks of the text window that has the focus.
enum class EditCommand { undo, cut, copy, paste, clear };

struct EditState {
  bool can_undo = false;
  bool can_paste = false;
  bool selected = false;
};

// A stretch of a window's text, in bytes of what text_of answers.
struct TextRange {
  std::size_t start = 0;
  std::size_t end = 0;
  friend bool operator==(const TextRange &, const TextRange &) = default;
};

// In a text that is appended: a line end for showing only, which copying leaves out.
inline constexpr char kSoftBreak = '\r';

class Desktop {
public:
  virtual ~Desktop() = default;
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
  virtual Rect client_rect(WindowId win) = 0;
  // The text of a text window (console, ORVEK, narrative, annotation), without soft breaks.
  virtual std::string text_of(WindowId win) = 0;
  virtual void set_text(WindowId win, std::string_view text) = 0;
  // Appends a text that may hold soft breaks; the stretches `standing_out` of it, in order, are
  // messages that beeped and are shown so.
  virtual void append_text(WindowId win, std::string_view text,
                           const std::vector<TextRange> &standing_out) = 0;
  // The console's text has two parts: what was appended, and behind it what the user typed since.
  // These read and replace the typed part; set_text and append_text leave it standing behind.
  virtual std::string typed_text(WindowId win) = 0;
  virtual void set_typed_text(WindowId win, std::string_view text) = 0;
  // Takes lines away from the front of the appended text, as many as leave `keep` characters or
  // more, soft breaks not counted; answers how many characters went, soft breaks among them.
  virtual std::size_t drop_front(WindowId win, std::size_t keep) = 0;
  virtual EditState edit_state(WindowId win) = 0;
  virtual void edit(WindowId win, EditCommand command) = 0;
  virtual TextRange selection(WindowId win) = 0;
  // Selects a stretch of text and scrolls it into view.
  virtual void select_text(WindowId win, TextRange range) = 0;
  virtual void show_menu_bar(MenuBar bar) = 0;
  virtual void enable_item(int command, bool on) = 0;
  // Greys a menu of a bar, with all that is in it, or gives it back.
  virtual void enable_menu(MenuBar bar, const std::string &label, bool on) = 0;
  // Greys all menus or gives them back, as they were each by itself.
  virtual void enable_menus(bool on) = 0;
  // Replaces a user menu: the names shown get the command numbers from `first_command` on.
  virtual void set_user_menu(MenuBar bar, const std::string &header,
                             const std::vector<std::string> &names, int first_command) = 0;
  // The label of an item of a bar's user menu, at most 79 characters of it; empty for none.
  virtual std::string menu_label(MenuBar bar, int command) = 0;
  // Lets the user choose a file; none when cancelled. `pattern` is like "*.ddb".
  virtual std::optional<std::string> choose_file(bool for_saving, const std::string &title,
                                                 const std::string &pattern) = 0;
  // Stays until another is set: `busy` shows over all windows, the others over pictures only.
  virtual void set_cursor(CursorShape shape) = 0;
  virtual int text_width(WindowId win, std::string_view text, const Font &font) = 0;
  virtual int text_height(WindowId win, const Font &font) = 0;
  // The size of what a picture or graphics window shows; the window scrolls over it. Points given
  // to the program and the canvas count from the top left of that extent.
  virtual void set_extent(WindowId win, int width, int height) = 0;
  // Dialogs, as Console::ask and Console::ask_text, and a box with a message and one button.
  virtual int ask(const std::string &message, const std::vector<std::string> &buttons) = 0;
  virtual bool ask_text(const std::string &prompt, std::string &answer) = 0;
  virtual void message_box(const std::string &title, const std::string &text) = 0;
  // Services painting and the interrupt keys, waiting up to `milliseconds` for something to do.
  virtual void pump(int milliseconds) = 0;
  virtual void beep() = 0;
  // Saves a picture of the window's inside as a bitmap file; answers false on failure.
  virtual bool save_bitmap(WindowId win, const std::string &file) = 0;
  // Size of the screen, for first placements.
  virtual Rect screen() = 0;
  // The place inside the main frame where windows are arranged, in screen coordinates.
  virtual Rect work_area() = 0;
  virtual void quit() = 0;
};

class NullDesktop : public Desktop {
public:
  WindowId create_window(WindowKind, const std::string &, const Rect &) override { return ++last_; }
  void close_window(WindowId) override {}
  void set_title(WindowId, const std::string &) override {}
  void place_window(WindowId, const Rect &) override {}
  void show_window(WindowId) override {}
  void focus_window(WindowId) override {}
  void invalidate(WindowId) override {}
  Rect client_rect(WindowId) override { return {0, 0, 450, 360}; }
  std::string text_of(WindowId) override { return {}; }
  void set_text(WindowId, std::string_view) override {}
  void append_text(WindowId, std::string_view, const std::vector<TextRange> &) override {}
  std::string typed_text(WindowId) override { return {}; }
  void set_typed_text(WindowId, std::string_view) override {}
  std::size_t drop_front(WindowId, std::size_t) override { return 0; }
  EditState edit_state(WindowId) override { return {}; }
  void edit(WindowId, EditCommand) override {}
  TextRange selection(WindowId) override { return {}; }
  void select_text(WindowId, TextRange) override {}
  void show_menu_bar(MenuBar) override {}
  void enable_item(int, bool) override {}
  void enable_menu(MenuBar, const std::string &, bool) override {}
  void enable_menus(bool) override {}
  void set_user_menu(MenuBar, const std::string &, const std::vector<std::string> &, int) override {
  }
  std::optional<std::string> choose_file(bool, const std::string &, const std::string &) override {
    return std::nullopt;
  }
  std::string menu_label(MenuBar, int) override { return {}; }
  void set_cursor(CursorShape) override {}
  int text_width(WindowId, std::string_view text, const Font &font) override {
    return static_cast<int>(text.size()) * (font.size * 6 / 10);
  }
  int text_height(WindowId, const Font &font) override { return font.size * 4 / 3; }
  void set_extent(WindowId, int, int) override {}
  int ask(const std::string &, const std::vector<std::string> &) override { return 5; }
  bool ask_text(const std::string &, std::string &) override { return false; }
  void message_box(const std::string &, const std::string &) override {}
  void pump(int) override {}
  void beep() override {}
  bool save_bitmap(WindowId, const std::string &) override { return false; }
  Rect screen() override { return {0, 0, 1024, 768}; }
  Rect work_area() override { return screen(); }
  void quit() override {}

private:
  WindowId last_ = 0;
};

// The desktop in use; never null.
extern Desktop *gDesktop;

} // namespace velora
