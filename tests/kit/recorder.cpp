// The recorders: every call a line, every answer from the script.
#include "kit/recorder.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <utility>

#include "platform/interrupt.h"

namespace velora::kit {

namespace {

std::string joined(const std::vector<std::string> &lines) {
  std::string all;
  for (const std::string &line : lines)
    all += line + "\n";
  return all;
}

std::string rect_text(const Rect &r) {
  char buf[80];
  std::snprintf(buf, sizeof buf, "%d,%d,%d,%d", r.left, r.top, r.right, r.bottom);
  return buf;
}

template <class T> T next_of(std::deque<T> &script, T otherwise) {
  if (script.empty())
    return otherwise;
  T value = script.front();
  script.pop_front();
  return value;
}

} // namespace

std::string quoted(std::string_view text) {
  std::string out = "\"";
  for (const char c : text) {
    if (c == '\n')
      out += "\\n";
    else if (c == '"' || c == '\\')
      (out += '\\') += c;
    else if (static_cast<unsigned char>(c) < 32) {
      char buf[8];
      std::snprintf(buf, sizeof buf, "\\x%02x", static_cast<unsigned char>(c));
      out += buf;
    } else
      out += c;
  }
  return out + "\"";
}

// --- the console -------------------------------------------------------------------------------

void RecorderConsole::clear() {
  text.clear();
  story.clear();
  messages.clear();
  notes.clear();
  log.clear();
}

std::string RecorderConsole::log_text() const {
  return joined(log);
}

void RecorderConsole::write(std::string_view t) {
  text += t;
  log.push_back("write " + quoted(t));
}

void RecorderConsole::narrative(std::string_view t) {
  story += t;
  log.push_back("narrative " + quoted(t));
}

void RecorderConsole::warn(std::string_view t, int level) {
  messages += t;
  log.push_back((level == 0 ? "warning " : "error ") + quoted(t));
}

void RecorderConsole::note(std::string_view t) {
  notes += t;
  log.push_back("note " + quoted(t));
}

int RecorderConsole::ask(const std::string &message, std::span<const std::string> buttons) {
  std::string line = "ask " + quoted(message);
  for (const std::string &button : buttons)
    line += " [" + button + "]";
  const int choice = next_of(choices, 5);
  log.push_back(line + " -> " + std::to_string(choice));
  return choice;
}

bool RecorderConsole::ask_text(const std::string &prompt, std::string &answer) {
  const std::string line = "ask_text " + quoted(prompt) + " (" + answer + ")";
  if (typed.empty()) {
    log.push_back(line + " -> cancelled");
    return false;
  }
  answer = next_of(typed, std::string());
  log.push_back(line + " -> " + quoted(answer));
  return true;
}

int RecorderConsole::read_char() {
  return next_of(characters, -1);
}

bool RecorderConsole::interrupted() {
  if (std::exchange(gInterrupted, 0) != 0)
    return true;
  if (interrupt_after < 0)
    return false;
  return interrupt_after-- == 0;
}

void RecorderConsole::busy(bool on) {
  log.push_back(on ? "busy" : "idle");
}

void RecorderConsole::beep() {
  log.push_back("beep");
}

// --- the desktop -------------------------------------------------------------------------------

std::string RecorderDesktop::log_text() const {
  return joined(log);
}

void RecorderDesktop::note_call(const char *format, ...) {
  char buf[512];
  std::va_list args;
  va_start(args, format);
  std::vsnprintf(buf, sizeof buf, format, args);
  va_end(args);
  log.emplace_back(buf);
}

WindowId RecorderDesktop::create_window(WindowKind kind, const std::string &title,
                                        const Rect &place) {
  windows[++last_] = Window{kind, title, place, false, {}};
  note_call("create %d kind %d %s at %s", last_, kind, quoted(title).c_str(),
            rect_text(place).c_str());
  return last_;
}

void RecorderDesktop::close_window(WindowId win) {
  note_call("close %d", win);
  windows.erase(win);
  if (focus == win)
    focus = 0;
}

void RecorderDesktop::set_title(WindowId win, const std::string &title) {
  note_call("title %d %s", win, quoted(title).c_str());
  windows[win].title = title;
}

void RecorderDesktop::place_window(WindowId win, const Rect &place) {
  note_call("place %d %s", win, rect_text(place).c_str());
  windows[win].place = place;
}

void RecorderDesktop::show_window(WindowId win) {
  note_call("show %d", win);
  windows[win].shown = true;
}

void RecorderDesktop::focus_window(WindowId win) {
  note_call("focus %d", win);
  focus = win;
}

void RecorderDesktop::invalidate(WindowId win) {
  note_call("invalidate %d", win);
}

Rect RecorderDesktop::client_rect(WindowId win) {
  const auto found = windows.find(win);
  if (found == windows.end())
    return {0, 0, 0, 0};
  const Rect &place = found->second.place;
  return {0, 0, place.right - place.left, place.bottom - place.top};
}

std::string RecorderDesktop::text_of(WindowId win) {
  const auto found = windows.find(win);
  return found == windows.end() ? std::string() : found->second.text;
}

void RecorderDesktop::set_text(WindowId win, std::string_view text) {
  note_call("text %d %s", win, quoted(text).c_str());
  windows[win].text = text;
}

// A soft break is seen as a line end.
void RecorderDesktop::append_text(WindowId win, std::string_view text,
                                  const std::vector<TextRange> &standing_out) {
  std::string seen(text);
  std::replace(seen.begin(), seen.end(), kSoftBreak, '\n');
  note_call("append %d %s", win, quoted(seen).c_str());
  for (const TextRange &range : standing_out)
    note_call("stands out %d %s", win,
              quoted(seen.substr(range.start, range.end - range.start)).c_str());
  windows[win].text += seen;
}

std::string RecorderDesktop::typed_text(WindowId win) {
  return windows[win].typed;
}

void RecorderDesktop::set_typed_text(WindowId win, std::string_view text) {
  windows[win].typed = text;
}

// Text of ASCII letters is enough here: a byte is a character.
std::size_t RecorderDesktop::drop_front(WindowId win, std::size_t keep) {
  std::string &text = windows[win].text;
  if (text.size() <= keep)
    return 0;
  const std::size_t line = text.find_last_of("\n\r", text.size() - keep - 1);
  const std::size_t dropped = line == std::string::npos ? 0 : line + 1;
  text.erase(0, dropped);
  note_call("drop %d", win);
  return dropped;
}

void RecorderDesktop::prepend_text(WindowId win, std::string_view text) {
  windows[win].text.insert(0, text);
}

void RecorderDesktop::edit(WindowId win, EditCommand command) {
  constexpr const char *kNames[] = {"undo", "cut", "copy", "paste", "clear"};
  note_call("edit %d %s", win, kNames[static_cast<int>(command)]);
}

TextRange RecorderDesktop::selection(WindowId win) {
  return windows[win].selection;
}

void RecorderDesktop::select_text(WindowId win, TextRange range) {
  windows[win].selection = range;
}

void RecorderDesktop::show_menu_bar(MenuBar shown) {
  note_call("menu bar %d", static_cast<int>(shown));
  bar = shown;
}

void RecorderDesktop::enable_menu(MenuBar of, const std::string &label, bool on) {
  note_call("menu %d %s %s", static_cast<int>(of), quoted(label).c_str(), on ? "on" : "off");
}

void RecorderDesktop::enable_menus(bool on) {
  note_call("menus %s", on ? "on" : "off");
}

void RecorderDesktop::enable_item(int command, bool on) {
  note_call("item %d %s", command, on ? "on" : "off");
  items[command] = on;
}

void RecorderDesktop::set_user_menu(MenuBar of, const std::string &header,
                                    const std::vector<std::string> &names, int first_command) {
  std::string line;
  int command = first_command;
  for (const std::string &name : names) {
    line += " " + quoted(name);
    labels[command++] = name;
  }
  note_call("user menu %d %s from %d:%s", static_cast<int>(of), quoted(header).c_str(),
            first_command, line.c_str());
}

std::optional<std::string> RecorderDesktop::choose_file(bool for_saving, const std::string &title,
                                                        const std::string &pattern) {
  const std::string file = next_of(files, std::string());
  note_call("choose file to %s %s %s -> %s", for_saving ? "save" : "open", quoted(title).c_str(),
            pattern.c_str(), file.empty() ? "cancelled" : file.c_str());
  return file.empty() ? std::nullopt : std::optional(file);
}

std::string RecorderDesktop::menu_label(MenuBar, int command) {
  const auto found = labels.find(command);
  return found == labels.end() ? std::string() : found->second;
}

void RecorderDesktop::set_extent(WindowId win, const Rect &extent) {
  windows[win].extent = extent;
}

void RecorderDesktop::set_view(WindowId win, const PictureView &view) {
  note_call("view %d %d,%d %d%%", win, view.origin.x, view.origin.y, view.percent);
  windows[win].view = view;
}

void RecorderDesktop::show_database(const std::string &name, bool unsaved) {
  database = name + (unsaved ? "*" : "");
}

void RecorderDesktop::mark_faults(WindowId win, const std::vector<TextMark> &marks) {
  windows[win].marks = marks;
}

int RecorderDesktop::ask(const std::string &message, const std::vector<std::string> &buttons) {
  std::string line = "ask " + quoted(message);
  for (const std::string &button : buttons)
    line += " [" + button + "]";
  const int choice = next_of(choices, 5);
  note_call("%s -> %d", line.c_str(), choice);
  return choice;
}

bool RecorderDesktop::ask_text(const std::string &prompt, std::string &answer) {
  note_call("ask_text %s (%s)", quoted(prompt).c_str(), answer.c_str());
  if (answers.empty())
    return false;
  answer = next_of(answers, std::string());
  return true;
}

void RecorderDesktop::message_box(const std::string &title, const std::string &text) {
  note_call("box %s %s", quoted(title).c_str(), quoted(text).c_str());
}

void RecorderDesktop::pump(int) {
  if (on_pump)
    on_pump();
}

void RecorderDesktop::beep() {
  note_call("beep");
}

void RecorderDesktop::set_cursor(CursorShape shape) {
  if (shape != cursor)
    note_call("cursor %d", static_cast<int>(shape));
  cursor = shape;
}

int RecorderDesktop::text_width(WindowId, std::string_view text, const Font &font) {
  return static_cast<int>(text.size()) * (font.size * 6 / 10);
}

int RecorderDesktop::text_height(WindowId, const Font &font) {
  return font.size * 4 / 3;
}

bool RecorderDesktop::save_bitmap(WindowId win, const std::string &file) {
  note_call("save bitmap %d %s", win, quoted(file).c_str());
  return windows.count(win) != 0;
}

void RecorderDesktop::quit() {
  note_call("quit");
  has_quit = true;
}

// --- in place of the real ones -----------------------------------------------------------------

Recording::Recording() : old_console_(gConsole), old_desktop_(gDesktop) {
  gConsole = &console;
  gDesktop = &desktop;
}

Recording::~Recording() {
  gConsole = old_console_;
  gDesktop = old_desktop_;
}

} // namespace velora::kit
