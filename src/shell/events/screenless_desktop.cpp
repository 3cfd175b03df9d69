// Windows that are records. The focus comes and goes as on a desktop with a screen, so the program
// hears of it through the same entries.
#include "shell/events/screenless_desktop.h"

#include <algorithm>
#include <utility>

#include "editor/svg_canvas.h"
#include "platform/safe_file.h"
#include "shell/desk_events.h"
#include "shell/events/event_answers.h"
#include "shell/vel_wins.h"
#include "shell/x_menus.h"

namespace velora {

ScreenlessDesktop::Window *ScreenlessDesktop::find(WindowId win) {
  const auto found = windows_.find(win);
  return found == windows_.end() ? nullptr : &found->second;
}

// --- windows -----------------------------------------------------------------------------------

WindowId ScreenlessDesktop::create_window(WindowKind kind, const std::string &title,
                                          const Rect &place) {
  windows_[++last_] = Window{kind, title, place, PaneText(kind == kControlWindow), {}};
  to_paint_.insert(last_);
  enter_window(last_, kind);
  return last_;
}

void ScreenlessDesktop::close_window(WindowId win) {
  leave_window(win);
  windows_.erase(win);
  to_paint_.erase(win);
}

void ScreenlessDesktop::set_title(WindowId win, const std::string &title) {
  if (Window *window = find(win))
    window->title = title;
}

void ScreenlessDesktop::place_window(WindowId win, const Rect &place) {
  if (Window *window = find(win))
    window->place = place;
}

void ScreenlessDesktop::focus_window(WindowId win) {
  if (find(win) != nullptr)
    window_activated(win);
}

Rect ScreenlessDesktop::client_rect(WindowId win) {
  const Window *window = find(win);
  return window == nullptr ? Rect{} : Rect{0, 0, window->place.width(), window->place.height()};
}

int ScreenlessDesktop::text_width(WindowId, std::string_view text, const Font &font) {
  return SvgCanvas().text_width(text, font);
}

int ScreenlessDesktop::text_height(WindowId, const Font &font) {
  return SvgCanvas().text_height(font);
}

PictureView ScreenlessDesktop::view_of(WindowId win) {
  const Window *window = find(win);
  return window == nullptr ? PictureView{} : window->view;
}

void ScreenlessDesktop::set_view(WindowId win, const PictureView &view) {
  if (Window *window = find(win))
    window->view = view;
}

// There is no screen to take a picture of: what is drawn is saved as a drawing.
bool ScreenlessDesktop::save_bitmap(WindowId win, const std::string &file) {
  const Window *window = find(win);
  if (window == nullptr)
    return false;
  SvgCanvas canvas;
  paint_window(win, canvas);
  return write_or_tell(file, canvas.document(client_rect(win), window->title));
}

// --- texts -------------------------------------------------------------------------------------

std::string ScreenlessDesktop::text_of(WindowId win) {
  const Window *window = find(win);
  return window == nullptr ? std::string() : window->pane.all();
}

void ScreenlessDesktop::set_text(WindowId win, std::string_view text) {
  if (Window *window = find(win))
    window->pane.write(text);
}

void ScreenlessDesktop::append_text(WindowId win, std::string_view text,
                                    const std::vector<TextRange> &) {
  std::string plain(text);
  std::erase(plain, kSoftBreak);
  if (Window *window = find(win))
    window->pane.append(plain);
}

std::string ScreenlessDesktop::typed_text(WindowId win) {
  const Window *window = find(win);
  return window == nullptr ? std::string() : window->pane.typed();
}

void ScreenlessDesktop::set_typed_text(WindowId win, std::string_view text) {
  if (Window *window = find(win))
    window->pane.set_typed(text);
}

std::size_t ScreenlessDesktop::drop_front(WindowId win, std::size_t keep) {
  Window *window = find(win);
  return window == nullptr ? 0 : window->pane.drop_front(keep);
}

void ScreenlessDesktop::prepend_text(WindowId win, std::string_view text) {
  if (Window *window = find(win))
    window->pane.prepend(text);
}

EditState ScreenlessDesktop::edit_state(WindowId win) {
  const Window *window = find(win);
  return window == nullptr ? EditState{} : window->pane.state();
}

void ScreenlessDesktop::edit(WindowId win, EditCommand command) {
  if (Window *window = find(win); window != nullptr && window->pane.edit(command))
    text_changed(win);
}

TextRange ScreenlessDesktop::selection(WindowId win) {
  const Window *window = find(win);
  return window == nullptr ? TextRange{} : window->pane.selection();
}

void ScreenlessDesktop::select_text(WindowId win, TextRange range) {
  if (Window *window = find(win))
    window->pane.select(range);
}

// --- menus and dialogs -------------------------------------------------------------------------

void ScreenlessDesktop::set_user_menu(MenuBar, const std::string &,
                                      const std::vector<std::string> &names, int first_command) {
  constexpr int kNumbersOfAMenu = 990;
  for (int i = 0; i < kNumbersOfAMenu; ++i)
    labels_.erase(first_command + i);
  for (const std::string &name : names)
    labels_[first_command++] = name;
}

std::string ScreenlessDesktop::menu_label(MenuBar, int command) {
  constexpr std::size_t kMost = 79;
  const auto found = labels_.find(command);
  return found == labels_.end() ? std::string() : found->second.substr(0, kMost);
}

int ScreenlessDesktop::ask(const std::string &message, const std::vector<std::string> &buttons) {
  return gEventAnswers->ask(message, buttons);
}

bool ScreenlessDesktop::ask_text(const std::string &prompt, std::string &answer) {
  return gEventAnswers->ask_text(prompt, answer);
}

void ScreenlessDesktop::message_box(const std::string &title, const std::string &text) {
  gEventAnswers->message_box(title, text);
}

std::optional<std::string> ScreenlessDesktop::choose_file(bool, const std::string &title,
                                                          const std::string &) {
  return gEventAnswers->choose_file(title);
}

// Only a command that reads characters waits here.
void ScreenlessDesktop::pump(int milliseconds) {
  if (milliseconds != 0)
    type_next_answer();
}

// --- the hands ---------------------------------------------------------------------------------

void ScreenlessDesktop::mouse(WindowId win, const MouseEvent &event) {
  mouse_event(win, event);
}

void ScreenlessDesktop::key(WindowId win, const KeyEvent &event) {
  if (TextTypeWindow(win) != 0)
    text_key(win, event);
  else
    key_event(win, event);
}

// In a text pane the pane's own keys come before the accelerators.
void ScreenlessDesktop::text_key(WindowId win, const KeyEvent &event) {
  constexpr std::pair<std::string_view, EditCommand> kEditKeys[] = {{"Z", EditCommand::undo},
                                                                    {"X", EditCommand::cut},
                                                                    {"C", EditCommand::copy},
                                                                    {"V", EditCommand::paste}};
  Window *window = find(win);
  if (window == nullptr)
    return;
  if (event.key == Key::letter && event.held == Modifiers{false, true, false}) {
    if (event.text == "A")
      return window->pane.select({0, window->pane.all().size()});
    for (const auto &[letter, command] : kEditKeys)
      if (event.text == letter)
        return edit(win, command);
  }
  if (take_accelerator(event) || (window->kind == kControlWindow && console_key(event)))
    return;
  if (window->pane.key(event))
    text_changed(win);
}

bool ScreenlessDesktop::console_key(const KeyEvent &event) {
  if (event.key == Key::up || event.key == Key::down)
    return recall_key(event.key == Key::up ? -1 : 1);
  if (event.key != Key::escape)
    return false;
  clear_typed();
  return true;
}

std::string ScreenlessDesktop::title_of(WindowId win) {
  const Window *window = find(win);
  return window == nullptr ? std::string() : window->title;
}

// Drawing what has changed finds faults that no one would see here.
void ScreenlessDesktop::settle() {
  const std::set<WindowId> windows = std::exchange(to_paint_, {});
  for (const WindowId win : windows) {
    SvgCanvas canvas;
    if (find(win) != nullptr && TextTypeWindow(win) == 0)
      paint_window(win, canvas);
  }
}

} // namespace velora
