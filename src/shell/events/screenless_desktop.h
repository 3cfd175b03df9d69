// A desktop without a screen: windows, texts and menus are kept as records, dialogs are answered by
// a script. What scripts do goes straight to the program's entries. Used by `velora --events`.
#pragma once

#include <map>
#include <set>

#include "platform/desktop.h"
#include "shell/events/pane_text.h"
#include "shell/events/script_hands.h"

namespace velora {

class ScreenlessDesktop : public Desktop, public ScriptHands {
public:
  WindowId create_window(WindowKind kind, const std::string &title, const Rect &place) override;
  void close_window(WindowId win) override;
  void set_title(WindowId win, const std::string &title) override;
  void place_window(WindowId win, const Rect &place) override;
  void show_window(WindowId) override {}
  void focus_window(WindowId win) override;
  void invalidate(WindowId win) override { to_paint_.insert(win); }
  Rect client_rect(WindowId win) override;
  void set_cursor(CursorShape shape) override { cursor_ = shape; }
  int text_width(WindowId win, std::string_view text, const Font &font) override;
  int text_height(WindowId win, const Font &font) override;
  void set_extent(WindowId, const Rect &) override {}
  PictureView view_of(WindowId win) override;
  void set_view(WindowId win, const PictureView &view) override;
  bool save_bitmap(WindowId win, const std::string &file) override;
  Rect screen() override { return {0, 0, 1024, 768}; }
  Rect work_area() override { return {0, 40, 1024, 768}; }
  void show_database(const std::string &, bool) override {}
  void show_hint(const std::string &) override {}

  std::string text_of(WindowId win) override;
  void set_text(WindowId win, std::string_view text) override;
  void append_text(WindowId win, std::string_view text,
                   const std::vector<TextRange> &standing_out) override;
  std::string typed_text(WindowId win) override;
  void set_typed_text(WindowId win, std::string_view text) override;
  std::size_t drop_front(WindowId win, std::size_t keep) override;
  void prepend_text(WindowId win, std::string_view text) override;
  std::size_t columns(WindowId) override { return 0; }
  EditState edit_state(WindowId win) override;
  void edit(WindowId win, EditCommand command) override;
  TextRange selection(WindowId win) override;
  void select_text(WindowId win, TextRange range) override;
  void mark_faults(WindowId, const std::vector<TextMark> &) override {}

  void show_menu_bar(MenuBar bar) override { bar_ = bar; }
  MenuBar menu_bar() override { return bar_; }
  void enable_item(int, bool) override {}
  void enable_menu(MenuBar, const std::string &, bool) override {}
  void enable_menus(bool) override {}
  void set_user_menu(MenuBar bar, const std::string &header, const std::vector<std::string> &names,
                     int first_command) override;
  std::string menu_label(MenuBar bar, int command) override;

  int ask(const std::string &message, const std::vector<std::string> &buttons) override;
  bool ask_text(const std::string &prompt, std::string &answer) override;
  void message_box(const std::string &title, const std::string &text) override;
  std::optional<std::string> choose_file(bool for_saving, const std::string &title,
                                         const std::string &pattern) override;

  std::string clipboard_text() override { return gPaneClipboard; }
  void set_clipboard_text(const std::string &text) override { gPaneClipboard = text; }
  void pump(int milliseconds) override;
  void beep() override {}
  void quit() override {}

  void mouse(WindowId win, const MouseEvent &event) override;
  void key(WindowId win, const KeyEvent &event) override;
  std::string title_of(WindowId win) override;
  CursorShape cursor() override { return cursor_; }
  void settle() override;

private:
  struct Window {
    WindowKind kind = kControlWindow;
    std::string title;
    Rect place;
    PaneText pane;
    PictureView view;
  };
  Window *find(WindowId win);
  void text_key(WindowId win, const KeyEvent &event);
  bool console_key(const KeyEvent &event);

  std::map<WindowId, Window> windows_;
  std::map<int, std::string> labels_; // of the items of user menus, by command number
  std::set<WindowId> to_paint_;
  MenuBar bar_ = MenuBar::main;
  CursorShape cursor_ = CursorShape::arrow;
  WindowId last_ = 0;
};

} // namespace velora
