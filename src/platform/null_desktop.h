// The desktop of programs without windows: every call is accepted and does nothing.
#pragma once

#include "platform/desktop.h"

namespace velora {

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
  void prepend_text(WindowId, std::string_view) override {}
  std::size_t columns(WindowId) override { return 0; }
  EditState edit_state(WindowId) override { return {}; }
  void edit(WindowId, EditCommand) override {}
  TextRange selection(WindowId) override { return {}; }
  void select_text(WindowId, TextRange) override {}
  void show_menu_bar(MenuBar) override {}
  MenuBar menu_bar() override { return MenuBar::main; }
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
  void set_extent(WindowId, const Rect &) override {}
  PictureView view_of(WindowId) override { return {}; }
  void set_view(WindowId, const PictureView &) override {}
  void show_database(const std::string &, bool) override {}
  void show_hint(const std::string &) override {}
  void mark_faults(WindowId, const std::vector<TextMark> &) override {}
  int ask(const std::string &, const std::vector<std::string> &) override { return 5; }
  bool ask_text(const std::string &, std::string &) override { return false; }
  void message_box(const std::string &, const std::string &) override {}
  std::string clipboard_text() override { return {}; }
  void set_clipboard_text(const std::string &) override {}
  void pump(int) override {}
  void beep() override {}
  bool save_bitmap(WindowId, const std::string &) override { return false; }
  Rect screen() override { return {0, 0, 1024, 768}; }
  Rect work_area() override { return screen(); }
  void quit() override {}

private:
  WindowId last_ = 0;
};

} // namespace velora
