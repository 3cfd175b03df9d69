// The table of verbs: windows, menus, dialogs, the mouse and keys, and what can be printed.
#include "shell/events/event_verbs.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <limits>

#include "db/vel_util.h"
#include "editor/draw.h"
#include "editor/model/seg_file.h"
#include "editor/user_menus.h"
#include "platform/clock.h"
#include "platform/desktop.h"
#include "platform/utf8.h"
#include "shell/command_numbers.h"
#include "shell/desk_events.h"
#include "shell/events/event_state.h"
#include "shell/picture_windows.h"
#include "shell/vel_wins.h"
#include "shell/x_menus.h"

namespace velora {

namespace {

constexpr int kKilled = 137; // the exit status of a process that was killed

// --- windows and menus -------------------------------------------------------------------------

// Chooses a menu item where it can be chosen.
bool choose_item(EventRunner &runner, int number) {
  menu_opened();
  const MenuBar bar = gDesktop->menu_bar();
  if (!item_enabled(number, bar))
    return runner.fail("the menu has no such item now: " + std::to_string(number));
  menu_chosen(number, bar);
  return true;
}

template <int number> bool opens(EventRunner &runner, const std::string &) {
  return choose_item(runner, number);
}

bool do_menu(EventRunner &runner, const std::string &rest) {
  std::vector<std::string> words = event_words(rest);
  const auto number = take_number(words);
  return number ? choose_item(runner, *number) : runner.fail("no number of a command: " + rest);
}

bool do_user(EventRunner &runner, const std::string &rest) {
  const MenuBar bar = gDesktop->menu_bar();
  const UserMenu *menu = user_menu_of(bar);
  for (int n = menu == nullptr ? 0 : menu->first_command; n != 0; ++n) {
    const std::string label = gDesktop->menu_label(bar, n);
    if (label == rest)
      return choose_item(runner, n);
    if (label.empty())
      break;
  }
  return runner.fail("the menu has no such name now: " + rest);
}

// The window meant: the N-th of the list, or the latest used one of those whose title begins so.
WindowId window_meant(EventRunner &runner, const std::string &rest) {
  std::vector<std::string> words = event_words(rest);
  if (const auto number = take_number(words); number && words.empty())
    return *number >= 1 && *number <= static_cast<int>(gWindows.size())
               ? gWindows[static_cast<std::size_t>(*number) - 1].id
               : 0;
  const ShellWindow *found = nullptr;
  for (const ShellWindow &window : gWindows)
    if (runner.hands().title_of(window.id).starts_with(rest) &&
        (found == nullptr || window.last_focus > found->last_focus))
      found = &window;
  return found == nullptr ? 0 : found->id;
}

bool do_focus(EventRunner &runner, const std::string &rest) {
  const WindowId win = window_meant(runner, rest);
  if (win == 0 || rest.empty())
    return runner.fail("there is no such window: " + rest);
  gDesktop->focus_window(win);
  return true;
}

bool do_close(EventRunner &, const std::string &) {
  close_asked(previous);
  return true;
}

// Many steps back or forth, as many as there are.
bool do_steps(EventRunner &runner, const std::string &rest, int command) {
  std::vector<std::string> words = event_words(rest);
  const bool all = rest == "all";
  const auto number = all ? std::numeric_limits<int>::max() : take_number(words).value_or(0);
  if (number <= 0)
    return runner.fail("how many steps? " + rest);
  for (int i = 0; i < number; ++i) {
    menu_opened();
    if (!item_enabled(command, gDesktop->menu_bar()))
      break;
    menu_chosen(command, gDesktop->menu_bar());
  }
  return true;
}

bool do_undo(EventRunner &runner, const std::string &rest) {
  return do_steps(runner, rest, kCmdUndo);
}

bool do_redo(EventRunner &runner, const std::string &rest) {
  return do_steps(runner, rest, kCmdRedo);
}

// --- the mouse and the keys --------------------------------------------------------------------

// Sends one event of the mouse to the current window.
void send(EventRunner &runner, MouseKind kind, const AimedPoint &at, const EventHold &hold) {
  MouseEvent event;
  event.kind = kind;
  event.at = at.at;
  event.segment = at.segment;
  event.button = hold.button;
  event.held = hold.held;
  runner.hands().mouse(previous, event);
}

// The point at the front of the words, in the current window; false after a message.
bool aim(EventRunner &runner, std::vector<std::string> &words, AimedPoint &aimed) {
  const auto point = take_point(words);
  return (point && find_point(previous, *point, aimed)) || runner.fail("no such point here");
}

EventHold without_button(EventHold hold) {
  hold.button = MouseButton::none;
  return hold;
}

void press_and_release(EventRunner &runner, MouseKind kind, const AimedPoint &at,
                       const EventHold &hold) {
  send(runner, kind, at, hold);
  send(runner, MouseKind::up, at, hold);
}

// What a gesture is made of: one point or two, and the words behind them.
struct Gesture {
  AimedPoint from;
  AimedPoint to;
  EventHold hold;
  bool held = false; // any word was there
};

bool read_gesture(EventRunner &runner, const std::string &rest, bool two_points, Gesture &gesture) {
  std::vector<std::string> words = event_words(rest);
  if (!aim(runner, words, gesture.from) || (two_points && !aim(runner, words, gesture.to)))
    return false;
  gesture.held = !words.empty();
  return read_hold(words, gesture.hold) || runner.fail("words that mean nothing here: " + rest);
}

// A single event of the mouse. It moves with a button held only when a word says so.
template <MouseKind kind> bool do_mouse(EventRunner &runner, const std::string &rest) {
  Gesture gesture;
  if (!read_gesture(runner, rest, false, gesture))
    return false;
  const bool free = kind == MouseKind::move && !gesture.held;
  send(runner, kind, gesture.from, free ? without_button(gesture.hold) : gesture.hold);
  return true;
}

bool do_click(EventRunner &runner, const std::string &rest) {
  Gesture gesture;
  if (!read_gesture(runner, rest, false, gesture))
    return false;
  send(runner, MouseKind::move, gesture.from, without_button(gesture.hold));
  press_and_release(runner, MouseKind::down, gesture.from, gesture.hold);
  if (gesture.hold.twice)
    press_and_release(runner, MouseKind::double_click, gesture.from, gesture.hold);
  return true;
}

// The way goes over the middle, since a hand does not jump.
bool do_drag(EventRunner &runner, const std::string &rest) {
  Gesture gesture;
  if (!read_gesture(runner, rest, true, gesture))
    return false;
  const auto &[from, to, hold, held] = gesture;
  const AimedPoint middle{{(from.at.x + to.at.x) / 2, (from.at.y + to.at.y) / 2}, 0};
  send(runner, MouseKind::move, from, without_button(hold));
  send(runner, MouseKind::down, from, hold);
  send(runner, MouseKind::move, middle, hold);
  send(runner, MouseKind::move, to, hold);
  send(runner, MouseKind::up, to, hold);
  return true;
}

bool do_wheel(EventRunner &runner, const std::string &rest) {
  std::vector<std::string> words = event_words(rest);
  AimedPoint at;
  EventHold hold;
  if (!aim(runner, words, at))
    return false;
  const auto notches = take_number(words);
  if (!notches || !read_hold(words, hold))
    return runner.fail("how many notches? " + rest);
  MouseEvent event;
  event.kind = MouseKind::wheel;
  event.at = at.at;
  event.segment = at.segment;
  event.held = hold.held;
  event.notches = *notches;
  runner.hands().mouse(previous, event);
  return true;
}

bool do_key(EventRunner &runner, const std::string &rest) {
  const auto key = read_key(rest);
  if (!key)
    return runner.fail("there is no such key: " + rest);
  runner.hands().key(previous, *key);
  return true;
}

bool do_type(EventRunner &runner, const std::string &rest) {
  for (std::string_view left = rest; !left.empty();) {
    KeyEvent event;
    event.text = left.substr(0, first_character(left));
    left.remove_prefix(event.text.size());
    if (event.text == " ")
      event = {Key::space, {}, 0, {}};
    runner.hands().key(previous, event);
  }
  return true;
}

// The query as it would be typed. The window that was current before is so afterwards.
bool do_query(EventRunner &, const std::string &rest) {
  const WindowId current = previous;
  gDesktop->set_typed_text(hControl, rest + "\n");
  text_changed(hControl);
  if (previous != current && window_kind(current) != 0)
    gDesktop->focus_window(current);
  return true;
}

// --- time and printing -------------------------------------------------------------------------

bool do_wait(EventRunner &runner, const std::string &rest) {
  constexpr int kAtOnce = 100;
  std::vector<std::string> words = event_words(rest);
  const int wanted = take_number(words).value_or(-1);
  if (wanted < 0)
    return runner.fail("how many milliseconds? " + rest);
  for (int left = wanted; left > 0; left -= kAtOnce) {
    advance_clock(std::min(left, kAtOnce));
    time_passed();
  }
  return true;
}

bool do_die(EventRunner &, const std::string &) {
  std::_Exit(kKilled);
}

bool do_dump(EventRunner &runner, const std::string &) {
  const WinInfo *wi = picture_of(previous);
  runner.print(wi == nullptr ? "no picture\n" : picture_block(wi));
  return true;
}

bool do_svg(EventRunner &runner, const std::string &rest) {
  const WinInfo *wi = picture_of(previous);
  if (wi == nullptr)
    runner.print("no picture\n");
  return wi != nullptr && save_svg(wi, rest.c_str()) == 0 ? runner.fail("not drawn: " + rest)
                                                          : true;
}

bool do_state(EventRunner &runner, const std::string &) {
  runner.print(state_line(previous, runner.hands().cursor()));
  return true;
}

bool do_enabled(EventRunner &runner, const std::string &rest) {
  std::vector<std::string> words = event_words(rest);
  const auto number = take_number(words);
  if (!number)
    return runner.fail("no number of a command: " + rest);
  menu_opened();
  const bool on = item_enabled(*number, gDesktop->menu_bar());
  runner.print(std::to_string(*number) + (on ? " on\n" : " off\n"));
  return true;
}

bool do_windows(EventRunner &runner, const std::string &) {
  for (const ShellWindow &window : gWindows)
    runner.print((window.id == previous ? "* " : "") + runner.hands().title_of(window.id) + "\n");
  return true;
}

bool do_console(EventRunner &runner, const std::string &) {
  runner.print(runner.console_news());
  return true;
}

constexpr EventVerb kVerbs[] = {
    {"function", opens<kCmdNewFunction>},
    {"datatype", opens<kCmdNewConstructors>},
    {"network", opens<kCmdNewNetwork>},
    {"orvek", opens<kCmdNewOrvek>},
    {"narrative", opens<kCmdNewNarrative>},
    {"annotation", opens<kCmdNewAnnotation>},
    {"focus", do_focus},
    {"close", do_close},
    {"menu", do_menu},
    {"user", do_user},
    {"click", do_click},
    {"press", do_mouse<MouseKind::down>},
    {"move", do_mouse<MouseKind::move>},
    {"release", do_mouse<MouseKind::up>},
    {"drag", do_drag},
    {"wheel", do_wheel},
    {"key", do_key},
    {"type", do_type},
    {"query", do_query},
    {"wait", do_wait},
    {"die", do_die},
    {"dump", do_dump},
    {"svg", do_svg},
    {"state", do_state},
    {"enabled", do_enabled},
    {"windows", do_windows},
    {"console", do_console},
    {"undo", do_undo},
    {"redo", do_redo},
};

} // namespace

const EventVerb *find_event_verb(const std::string &name) {
  for (const EventVerb &verb : kVerbs)
    if (name == verb.name)
      return &verb;
  return nullptr;
}

bool queue_answer(EventRunner &runner, const EventLine &line) {
  using Kind = EventAnswers::Kind;
  constexpr std::pair<std::string_view, Kind> kKinds[] = {{"answer", Kind::text},
                                                          {"choose", Kind::button},
                                                          {"file", Kind::file},
                                                          {"cancel", Kind::cancel}};
  for (const auto &[verb, kind] : kKinds)
    if (line.verb == verb) {
      runner.answers().add(kind, line.rest);
      return true;
    }
  return false;
}

} // namespace velora
