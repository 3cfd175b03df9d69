// Stand-ins for the places the program talks to. Each call becomes a line of a log, and questions
// are answered from a script, so that a test reads like what a user saw. Used by every unit test
// that prints, asks or opens windows.
#pragma once

#include <deque>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "platform/console.h"
#include "platform/desktop.h"

namespace velora::kit {

// Takes every text and question of the program. `text` is the plain console text and `log` every
// call in order, a line each: "write Hello\n" is logged as `write "Hello\n"`.
class RecorderConsole : public Console {
public:
  std::string text;              // what was written to the console
  std::string story;             // what was written to the narrative window
  std::string messages;          // what beeped, each as it came
  std::string notes;             // the lines of help
  std::vector<std::string> log;  // every call
  std::deque<int> choices;       // answers to ask(), 5 ("Cancel") when there are no more
  std::deque<std::string> typed; // answers to ask_text(), cancelled when there are no more
  std::deque<int> characters;    // what read_char() gives
  int interrupt_after = -1;      // polls until interrupted() says yes once; -1 is never

  // Forgets what was recorded; the scripts stay.
  void clear();
  // The log joined by line ends.
  std::string log_text() const;

  void write(std::string_view text) override;
  void narrative(std::string_view text) override;
  void warn(std::string_view text, int level) override;
  void note(std::string_view text) override;
  int ask(const std::string &message, std::span<const std::string> buttons) override;
  bool ask_text(const std::string &prompt, std::string &answer) override;
  int read_char() override;
  bool interrupted() override;
  void busy(bool on) override;
  void beep() override;
};

// Keeps the windows of a program as records and logs each call.
class RecorderDesktop : public Desktop {
public:
  struct Window {
    WindowKind kind;
    std::string title;
    Rect place;
    bool shown = false;
    std::string text;
    std::string typed{};   // what the user typed behind the text
    TextRange selection{}; // of the text
    Rect extent{};
    PictureView view{};
    std::vector<TextMark> marks{}; // of faults
  };
  std::map<WindowId, Window> windows;
  std::vector<std::string> log;
  std::map<int, bool> items;         // the last state of each menu item that was set
  std::map<int, std::string> labels; // of the items of user menus, by command number
  std::deque<int> choices;           // answers to ask(), 5 ("Cancel") when there are no more
  std::deque<std::string> answers;   // answers to ask_text(), cancelled when there are no more
  EditState edit_now;                // what edit_state() answers
  std::function<void()> on_pump;     // what the user does while a command runs
  std::deque<std::string> files;     // answers to choose_file(); an empty one is "cancelled"
  WindowId focus = 0;
  MenuBar bar = MenuBar::main;
  CursorShape cursor = CursorShape::arrow;
  bool has_quit = false;
  std::string database; // behind the title of the frame, with its mark
  std::string hint;
  std::string clipboard;

  std::string log_text() const;

  WindowId create_window(WindowKind kind, const std::string &title, const Rect &place) override;
  void close_window(WindowId win) override;
  void set_title(WindowId win, const std::string &title) override;
  void place_window(WindowId win, const Rect &place) override;
  void show_window(WindowId win) override;
  void focus_window(WindowId win) override;
  void invalidate(WindowId win) override;
  Rect client_rect(WindowId win) override;
  std::string text_of(WindowId win) override;
  void set_text(WindowId win, std::string_view text) override;
  void append_text(WindowId win, std::string_view text,
                   const std::vector<TextRange> &standing_out) override;
  std::string typed_text(WindowId win) override;
  void set_typed_text(WindowId win, std::string_view text) override;
  std::size_t drop_front(WindowId win, std::size_t keep) override;
  void prepend_text(WindowId win, std::string_view text) override;
  std::size_t columns(WindowId) override { return columns_in_sight; }
  std::size_t columns_in_sight = 0;
  EditState edit_state(WindowId) override { return edit_now; }
  void edit(WindowId win, EditCommand command) override;
  TextRange selection(WindowId win) override;
  void select_text(WindowId win, TextRange range) override;
  void show_menu_bar(MenuBar shown) override;
  MenuBar menu_bar() override { return bar; }
  void enable_item(int command, bool on) override;
  void enable_menu(MenuBar of, const std::string &label, bool on) override;
  void enable_menus(bool on) override;
  void set_user_menu(MenuBar of, const std::string &header, const std::vector<std::string> &names,
                     int first_command) override;
  std::optional<std::string> choose_file(bool for_saving, const std::string &title,
                                         const std::string &pattern) override;
  std::string menu_label(MenuBar of, int command) override;
  void set_cursor(CursorShape shape) override;
  int text_width(WindowId win, std::string_view text, const Font &font) override;
  int text_height(WindowId win, const Font &font) override;
  void set_extent(WindowId win, const Rect &extent) override;
  PictureView view_of(WindowId win) override { return windows[win].view; }
  void set_view(WindowId win, const PictureView &view) override;
  void show_database(const std::string &name, bool unsaved) override;
  void show_hint(const std::string &text) override { hint = text; }
  void mark_faults(WindowId win, const std::vector<TextMark> &marks) override;
  int ask(const std::string &message, const std::vector<std::string> &buttons) override;
  bool ask_text(const std::string &prompt, std::string &answer) override;
  void message_box(const std::string &title, const std::string &text) override;
  std::string clipboard_text() override { return clipboard; }
  void set_clipboard_text(const std::string &text) override { clipboard = text; }
  void pump(int milliseconds) override;
  void beep() override;
  bool save_bitmap(WindowId win, const std::string &file) override;
  Rect screen() override { return {0, 0, 1024, 768}; }
  Rect work_area() override { return {0, 40, 1024, 768}; }
  void quit() override;

private:
  void note_call(const char *format, ...) __attribute__((format(printf, 2, 3)));
  WindowId last_ = 0;
};

// Puts a recorder in place of the console and the desktop while in scope.
class Recording {
public:
  Recording();
  ~Recording();
  Recording(const Recording &) = delete;
  Recording &operator=(const Recording &) = delete;
  RecorderConsole console;
  RecorderDesktop desktop;

private:
  Console *old_console_;
  Desktop *old_desktop_;
};

// A text in double quotes with line ends, tabs, quotes and other bytes made visible.
std::string quoted(std::string_view text);

} // namespace velora::kit
