// The desktop of a program with real windows. Declared once here; a program has the one that the
// folder of its window system defines.
#pragma once

#include <algorithm>
#include <cctype>

#include "platform/desktop.h"
#include "platform/text_measures.h"
#include "platform/window_maker.h"

namespace velora {

// Whether the size of a new window is that of its inside: a drawing that asks for one means that.
inline bool means_inside(WindowKind kind, const Rect &place) {
  const Rect &usual = look_of(kind).place;
  return kind == kGraphicsWindow &&
         (place.width() != usual.width() || place.height() != usual.height());
}

// Whether a file's name has that ending, which is in lower case, in whatever case.
inline bool has_ending(std::string_view file, std::string_view ending) {
  if (file.size() < ending.size())
    return false;
  file.remove_prefix(file.size() - ending.size());
  return std::equal(file.begin(), file.end(), ending.begin(),
                    [](unsigned char c, char wanted) { return std::tolower(c) == wanted; });
}

// Holds nothing: the windows stand in the tables of its folder.
class WindowDesktop : public Desktop {
public:
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
  std::size_t columns(WindowId win) override;
  EditState edit_state(WindowId win) override;
  void edit(WindowId win, EditCommand command) override;
  TextRange selection(WindowId win) override;
  void select_text(WindowId win, TextRange range) override;
  void show_menu_bar(MenuBar bar) override;
  MenuBar menu_bar() override;
  void enable_item(int command, bool on) override;
  void enable_menu(MenuBar bar, const std::string &label, bool on) override;
  void enable_menus(bool on) override;
  void set_user_menu(MenuBar bar, const std::string &header, const std::vector<std::string> &names,
                     int first_command) override;
  std::string menu_label(MenuBar bar, int command) override;
  std::optional<std::string> choose_file(bool for_saving, const std::string &title,
                                         const std::string &pattern) override;
  void set_cursor(CursorShape shape) override;
  int text_width(WindowId, std::string_view text, const Font &font) override {
    return measured_width(text, font);
  }
  int text_height(WindowId, const Font &font) override { return measured_height(font); }
  void set_extent(WindowId win, const Rect &extent) override;
  PictureView view_of(WindowId win) override;
  void set_view(WindowId win, const PictureView &view) override;
  void show_database(const std::string &name, bool unsaved) override;
  void show_hint(const std::string &hint) override;
  void mark_faults(WindowId win, const std::vector<TextMark> &marks) override;
  int ask(const std::string &message, const std::vector<std::string> &buttons) override;
  bool ask_text(const std::string &prompt, std::string &answer) override;
  void message_box(const std::string &title, const std::string &text) override;
  std::string clipboard_text() override;
  void set_clipboard_text(const std::string &text) override;
  void pump(int milliseconds) override;
  void beep() override;
  bool save_bitmap(WindowId win, const std::string &file) override;
  Rect screen() override;
  Rect work_area() override;
  void quit() override;
};

} // namespace velora
