// The list of open windows and what happens to them as a whole. Holds the handles that the rest of
// the shell knows its windows by.
#include "shell/vel_wins.h"

#include <algorithm>
#include <iterator>

#include "db/vel_dbop.h"
#include "platform/desktop.h"
#include "platform/response.h"
#include "shell/annotation.h"

namespace velora {

WindowId gOrvWind = 0;
WindowId gAnnWind = 0;
WindowId previous = 0;
std::string gAppDirectory;
std::vector<ShellWindow> gWindows;

namespace {

constexpr Rect placed(int x, int y, int width, int height) {
  return {x, y, x + width, y + height};
}

int focus_count = 0; // how often a window has got the focus

// The windows that had the focus, in order, no two neighbours the same; `at` is where the user is.
// A window that gets the focus in another way than by going there drops what lies ahead.
struct History {
  std::vector<WindowId> visited;
  std::size_t at = 0;

  void visit(WindowId win) {
    constexpr std::size_t kLongest = 100;
    if (!visited.empty() && visited[at] == win)
      return;
    if (!visited.empty())
      visited.resize(at + 1);
    visited.push_back(win);
    if (visited.size() > kLongest)
      visited.erase(visited.begin());
    at = visited.size() - 1;
  }
  // A window has closed: without it equal neighbours become one.
  void forget(WindowId win) {
    std::vector<WindowId> left;
    std::size_t left_at = 0;
    for (std::size_t i = 0; i < visited.size(); ++i) {
      if (visited[i] != win && (left.empty() || left.back() != visited[i]))
        left.push_back(visited[i]);
      if (i == at)
        left_at = left.empty() ? 0 : left.size() - 1;
    }
    visited = std::move(left);
    at = left_at;
  }
  [[nodiscard]] WindowId beside(int step) const {
    const auto there = static_cast<std::size_t>(static_cast<int>(at) + step);
    return there < visited.size() ? visited[there] : 0;
  }
};
History history;

void set_handle(WindowKind kind, WindowId win) {
  if (kind == kControlWindow)
    hControl = win;
  else if (kind == kOrvekWindow)
    gOrvWind = win;
  else if (kind == kAnnotationWindow)
    gAnnWind = win;
}

// The frame is one of them, so changes are never given up unasked.
void count_documents() {
  gNumDocuments = static_cast<int>(gWindows.size()) + 1;
}

} // namespace

int window_kind(WindowId win) {
  const auto found = std::find_if(gWindows.begin(), gWindows.end(),
                                  [win](const ShellWindow &w) { return w.id == win; });
  return found == gWindows.end() ? 0 : found->kind;
}

int TextTypeWindow(WindowId win) {
  return holds_text(window_kind(win));
}

int GraphicTypeWindow(WindowId win) {
  return window_kind(win) == kGraphicsWindow;
}

int PictureTypeWindow(WindowId win) {
  return shows_picture(window_kind(win));
}

std::vector<WindowId> windows_of_kind(WindowKind kind) {
  std::vector<WindowId> found;
  for (const ShellWindow &w : gWindows)
    if (w.kind == kind)
      found.push_back(w.id);
  return found;
}

// The console made at the start stands in the lower half of the screen. A desktop tells of each
// window that it makes, so whether the console is the first one is asked before.
WindowId NewTextWindow(WindowKind kind) {
  const bool first_console = kind == kControlWindow && hControl == 0;
  const WindowId win = make_window(kind, static_cast<int>(windows_of_kind(kind).size()));
  if (win == 0)
    return 0;
  if (first_console) {
    const Rect screen = gDesktop->screen();
    gDesktop->place_window(
        win, placed(30, screen.height() / 2, screen.width() / 2, screen.height() / 4));
  }
  enter_window(win, kind);
  gDesktop->focus_window(win);
  return win;
}

void renumber_windows(WindowKind kind, const char *format) {
  const std::vector<WindowId> wins = windows_of_kind(kind);
  for (std::size_t i = 0; i < wins.size(); ++i) {
    const std::string number = std::to_string(i + 1);
    std::string title = format;
    title.replace(title.find("%d"), 2, number);
    title.replace(title.find("%d"), 2, std::to_string(wins.size()));
    gDesktop->set_title(wins[i], title);
  }
}

void enter_window(WindowId win, WindowKind kind) {
  if (window_kind(win) == 0)
    gWindows.push_back({win, kind});
  set_handle(kind, win);
  count_documents();
}

void leave_window(WindowId win) {
  const int kind = window_kind(win);
  if (kind == 0)
    return;
  std::erase_if(gWindows, [win](const ShellWindow &w) { return w.id == win; });
  history.forget(win);
  count_documents();
  const auto left = windows_of_kind(static_cast<WindowKind>(kind));
  set_handle(static_cast<WindowKind>(kind), left.empty() ? 0 : left.back());
  if (previous == win)
    previous = 0;
}

void DoCloseWindow(WindowId win) {
  const int kind = window_kind(win);
  if (kind == 0)
    return;
  leave_window(win);
  // The window that comes next may be one that leaves the bar as it is.
  if (shows_picture(kind) && gDesktop->menu_bar() == look_of(static_cast<WindowKind>(kind)).bar)
    gDesktop->show_menu_bar(MenuBar::main);
  // It gets the focus while the other still stands: a window system that sees the window with the
  // focus go chooses the next one by itself.
  focus_latest_window();
  gDesktop->close_window(win);
}

void focus_latest_window() {
  const auto rank = [](const ShellWindow &w) { return w.out_of_sight ? -1 : w.last_focus; };
  const auto latest =
      std::max_element(gWindows.begin(), gWindows.end(),
                       [&](const auto &a, const auto &b) { return rank(a) < rank(b); });
  if (previous == 0 && latest != gWindows.end())
    gDesktop->focus_window(latest->id);
}

void leave_out_of_sight(WindowId win) {
  for (ShellWindow &w : gWindows)
    if (w.id == win)
      w.out_of_sight = true;
  // Giving the focus to a window that is minimised itself would bring that one back.
  const bool last_in_sight = std::all_of(gWindows.begin(), gWindows.end(),
                                         [](const ShellWindow &w) { return w.out_of_sight; });
  if (previous != win || last_in_sight)
    return;
  previous = 0;
  focus_latest_window();
}

void window_focused(WindowId win) {
  const int kind = window_kind(win);
  if (kind == 0)
    return;
  annotation_focus(win);
  previous = win;
  history.visit(win);
  for (ShellWindow &w : gWindows)
    if (w.id == win) {
      w.last_focus = ++focus_count;
      w.out_of_sight = false;
    }
  if (kind == kOrvekWindow)
    gOrvWind = win;
  const WindowLook &look = look_of(static_cast<WindowKind>(kind));
  if (look.changes_bar)
    gDesktop->show_menu_bar(look.bar);
}

// One slanting row of windows, or straight columns when there are many. The window with the focus
// comes last, in front.
void StackWindows() {
  const Rect area = gDesktop->work_area();
  const int width = std::max(300, area.width() / 2);
  const int height = std::max(200, area.height() / 2);
  const int rows = std::max(1, (area.height() - height) / kWindowStep + 1);
  const int count = static_cast<int>(gWindows.size());
  const int columns = (count + rows - 1) / rows;
  const int slant = columns > 1 ? 0 : kWindowStep;
  const int across = columns > 1 ? (area.width() - width) / (columns - 1) : 0;
  int at = 0;
  const auto place = [&](WindowId win) {
    const int row = at % rows;
    const int left = area.left + at / rows * across + row * slant;
    gDesktop->place_window(win, placed(left, area.top + row * kWindowStep, width, height));
    ++at;
  };
  for (const ShellWindow &w : gWindows)
    if (w.id != previous)
      place(w.id);
  if (window_kind(previous) != 0)
    place(previous);
}

void focus_next_window(int step) {
  const auto count = static_cast<int>(gWindows.size());
  const auto found = std::find_if(gWindows.begin(), gWindows.end(),
                                  [](const ShellWindow &w) { return w.id == previous; });
  const int before = step > 0 ? -1 : count; // of the first or last one
  const int at = found == gWindows.end() ? before : static_cast<int>(found - gWindows.begin());
  if (count > 0)
    gDesktop->focus_window(gWindows[static_cast<std::size_t>((at + step + count) % count)].id);
}

WindowId window_in_history(int step) {
  return history.beside(step);
}

int go_over_windows(int step) {
  const WindowId win = history.beside(step);
  if (win == 0)
    return 0;
  history.at = static_cast<std::size_t>(static_cast<int>(history.at) + step);
  gDesktop->focus_window(win);
  return 1;
}

} // namespace velora
