// Windows of the program: making, placing, texts, and the pump of running commands. Places and
// sizes come in units of 96 an inch, which are the logical dots of the window system; places count
// from the corner of the frame's inside.
#include <QApplication>
#include <QClipboard>
#include <QEventLoop>
#include <QFileInfo>
#include <QMdiArea>
#include <QPainter>
#include <QScreen>
#include <QSignalBlocker>
#include <QTimer>

#include <algorithm>
#include <cmath>

#include "db/f_dbops.h"
#include "shell/console_window.h"
#include "shell/desk_events.h"
#include "shell/events/event_answers.h"
#include "shell/qt/q_code.h"
#include "shell/qt/q_console.h"
#include "shell/qt/q_cursors.h"
#include "shell/qt/q_dialogs.h"
#include "shell/qt/q_frame.h"
#include "shell/qt/q_menus.h"
#include "shell/qt/q_picture.h"
#include "shell/qt/q_pictures.h"
#include "shell/qt/q_print.h"
#include "shell/qt/q_recent.h"
#include "shell/qt/q_text.h"
#include "shell/qt/q_tools.h"
#include "shell/qt/q_windows.h"
#include "shell/vel_wins.h"
#include "shell/window_desktop.h"

namespace velora {

using namespace qt;

namespace {

bool busy_shown = false;

QRect in_dots(const Rect &place) {
  return {place.left, place.top, place.width(), place.height()};
}

TextPane *pane_of(WindowId win) {
  const Window *window = find_window(win);
  return window == nullptr ? nullptr : window->pane;
}

PictureArea *area_of(WindowId win) {
  const Window *window = find_window(win);
  return window == nullptr ? nullptr : window->view;
}

TextPane *make_pane(WindowId id, WindowKind kind) {
  if (kind == kControlWindow)
    return new ConsolePane(id);
  if (kind == kOrvekWindow)
    return new CodePane(id);
  return new TextPane(id);
}

// How much larger a sub-window is than what is inside.
QSize frame_size(const Window &window) {
  return window.sub->sizeHint() - inside_of(window)->sizeHint();
}

// Where a sub-window stands. While a script runs the inside of a picture is as large as its window
// is meant to be: what is drawn there shall stand in the same place on every desktop.
QRect dots_of(const Window &window, const Rect &place) {
  QRect dots = in_dots(place);
  if (gEventAnswers != nullptr && shows_picture(window.kind))
    dots.setSize(dots.size() + frame_size(window));
  return dots;
}

} // namespace

WindowId WindowDesktop::create_window(WindowKind kind, const std::string &title,
                                      const Rect &place) {
  Window *window = add_window(kind);
  window->sub = new SubWindow(window->id);
  if (holds_text(kind))
    window->pane = make_pane(window->id, kind);
  else
    window->view = new PictureArea(window->id, kind);
  QWidget *inside = inside_of(*window);
  inside->setObjectName(QStringLiteral("inside%1").arg(window->id));
  window->sub->setObjectName(QStringLiteral("window%1").arg(window->id));
  window->sub->setWidget(inside);
  window->sub->setWindowIcon(kind_icon(kind));
  window->sub->setAttribute(Qt::WA_DeleteOnClose, false);
  frame().area()->addSubWindow(window->sub);
  set_title(window->id, title);
  QRect dots = dots_of(*window, place);
  if (means_inside(kind, place))
    dots.setSize(dots.size() + frame_size(*window));
  window->sub->setGeometry(dots);
  enter_window(window->id, kind);
  return window->id;
}

void WindowDesktop::close_window(WindowId win) {
  leave_window(win);
  const Window *window = find_window(win);
  if (window == nullptr)
    return;
  SubWindow *sub = window->sub;
  remove_window(win);
  frame().area()->removeSubWindow(sub);
  sub->hide();
  sub->deleteLater();
}

void WindowDesktop::set_title(WindowId win, const std::string &title) {
  const Window *window = find_window(win);
  if (window == nullptr)
    return;
  window->sub->setWindowTitle(wide(title));
  window->sub->setAccessibleName(wide(title));
  inside_of(*window)->setAccessibleName(wide(title));
}

void WindowDesktop::place_window(WindowId win, const Rect &place) {
  const Window *window = find_window(win);
  if (window == nullptr)
    return;
  if (window->sub->isMinimized() || window->sub->isMaximized())
    window->sub->showNormal();
  window->sub->setGeometry(dots_of(*window, place));
  window->sub->raise();
}

void WindowDesktop::show_window(WindowId win) {
  const Window *window = find_window(win);
  if (window == nullptr)
    return;
  QMdiArea *area = frame().area();
  QMdiSubWindow *in_use = area->activeSubWindow();
  const QSignalBlocker quiet(area); // showing makes a window the active one, for a moment
  if (window->sub->isMinimized())
    window->sub->showNormal();
  else
    window->sub->show();
  if (in_use != nullptr)
    area->setActiveSubWindow(in_use);
  window->sub->raise();
}

void WindowDesktop::focus_window(WindowId win) {
  const Window *window = find_window(win);
  if (window == nullptr)
    return;
  if (window->sub->isMinimized())
    window->sub->showNormal();
  frame().area()->setActiveSubWindow(window->sub);
  inside_of(*window)->setFocus();
  if (previous != win) // it was the active one already, or the frame is not in front
    window_activated(win);
}

void WindowDesktop::invalidate(WindowId win) {
  if (PictureArea *view = area_of(win)) {
    view->viewport()->update();
    describe_picture(*view);
  }
}

Rect WindowDesktop::client_rect(WindowId win) {
  if (const PictureArea *view = area_of(win)) {
    return {0, 0, view->viewport()->width(), view->viewport()->height()};
  }
  const TextPane *pane = pane_of(win);
  return pane == nullptr ? Rect{} : Rect{0, 0, pane->width(), pane->height()};
}

// --- text --------------------------------------------------------------------------------------

std::string WindowDesktop::text_of(WindowId win) {
  const TextPane *pane = pane_of(win);
  return pane == nullptr ? std::string() : pane->text();
}

void WindowDesktop::set_text(WindowId win, std::string_view text) {
  if (TextPane *pane = pane_of(win))
    pane->set_text(text);
}

void WindowDesktop::append_text(WindowId win, std::string_view text,
                                const std::vector<TextRange> &standing_out) {
  if (TextPane *pane = pane_of(win))
    pane->append(text, standing_out);
}

std::string WindowDesktop::typed_text(WindowId win) {
  const TextPane *pane = pane_of(win);
  return pane == nullptr ? std::string() : pane->typed();
}

void WindowDesktop::set_typed_text(WindowId win, std::string_view text) {
  if (TextPane *pane = pane_of(win))
    pane->set_typed(text);
}

std::size_t WindowDesktop::drop_front(WindowId win, std::size_t keep) {
  TextPane *pane = pane_of(win);
  return pane == nullptr ? 0 : pane->drop_front(keep);
}

void WindowDesktop::prepend_text(WindowId win, std::string_view text) {
  if (TextPane *pane = pane_of(win))
    pane->prepend(text);
}

std::size_t WindowDesktop::columns(WindowId win) {
  const TextPane *pane = pane_of(win);
  return pane == nullptr ? 0 : pane->columns();
}

EditState WindowDesktop::edit_state(WindowId win) {
  const TextPane *pane = pane_of(win);
  return pane == nullptr ? EditState{} : pane->state();
}

void WindowDesktop::edit(WindowId win, EditCommand command) {
  if (TextPane *pane = pane_of(win))
    pane->edit(command);
}

TextRange WindowDesktop::selection(WindowId win) {
  const TextPane *pane = pane_of(win);
  return pane == nullptr ? TextRange{} : pane->selection();
}

void WindowDesktop::select_text(WindowId win, TextRange range) {
  if (TextPane *pane = pane_of(win))
    pane->select(range);
}

// --- menus, dialogs, measures ------------------------------------------------------------------

void WindowDesktop::show_menu_bar(MenuBar bar) {
  show_bar(bar);
}

MenuBar WindowDesktop::menu_bar() {
  return shown_bar();
}

std::string WindowDesktop::clipboard_text() {
  return QGuiApplication::clipboard()->text().toStdString();
}

void WindowDesktop::set_clipboard_text(const std::string &text) {
  QGuiApplication::clipboard()->setText(QString::fromStdString(text));
}

void WindowDesktop::enable_item(int command, bool on) {
  enable_menu_item(command, on);
}

void WindowDesktop::enable_menu(MenuBar bar, const std::string &label, bool on) {
  enable_whole_menu(bar, label, on);
}

void WindowDesktop::enable_menus(bool on) {
  enable_all_menus(on);
}

void WindowDesktop::set_user_menu(MenuBar bar, const std::string &header,
                                  const std::vector<std::string> &names, int first_command) {
  fill_user_menu(bar, header, names, first_command);
}

std::string WindowDesktop::menu_label(MenuBar bar, int command) {
  return user_menu_label(bar, command);
}

std::optional<std::string> WindowDesktop::choose_file(bool for_saving, const std::string &title,
                                                      const std::string &pattern) {
  gDesktopConsole.show();
  return gEventAnswers != nullptr ? gEventAnswers->choose_file(title)
                                  : choose_file_name(for_saving, title, pattern);
}

void WindowDesktop::set_cursor(CursorShape shape) {
  const bool busy = shape == CursorShape::busy;
  if (busy && !busy_shown)
    QApplication::setOverrideCursor(Qt::BusyCursor);
  if (!busy && busy_shown)
    QApplication::restoreOverrideCursor();
  busy_shown = busy;
  frame().show_running(busy);
  if (busy)
    return;
  use_cursor(shape);
  show_tool_in_use();
  for (const Window *window : all_windows())
    if (window->view != nullptr && shows_picture(window->kind))
      window->view->viewport()->setCursor(cursor_for(shape));
}

void WindowDesktop::set_extent(WindowId win, const Rect &extent) {
  if (PictureArea *view = area_of(win))
    view->set_extent(extent);
}

PictureView WindowDesktop::view_of(WindowId win) {
  const PictureArea *view = area_of(win);
  if (view == nullptr)
    return {};
  const Rect seen = view->seen();
  return {{seen.left, seen.top}, static_cast<int>(std::lround(view->zoom() * 100))};
}

void WindowDesktop::set_view(WindowId win, const PictureView &view) {
  if (PictureArea *area = area_of(win))
    area->show_from(view.origin, view.percent / 100.0);
}

void WindowDesktop::show_database(const std::string &name, bool unsaved) {
  frame().show_database(wide(name), unsaved);
  const QFileInfo file(wide(gDDB_basename) + QStringLiteral(".ddb"));
  if (!name.empty() && file.exists())
    note_database(file.absoluteFilePath());
}

void WindowDesktop::show_hint(const std::string &hint) {
  frame().show_hint(wide(hint));
}

void WindowDesktop::mark_faults(WindowId win, const std::vector<TextMark> &marks) {
  if (auto *code = dynamic_cast<CodePane *>(pane_of(win)))
    code->mark_faults(marks);
}

int WindowDesktop::ask(const std::string &message, const std::vector<std::string> &buttons) {
  return gEventAnswers != nullptr ? gEventAnswers->ask(message, buttons)
                                  : ask_question(message, buttons);
}

bool WindowDesktop::ask_text(const std::string &prompt, std::string &answer) {
  return gEventAnswers != nullptr ? gEventAnswers->ask_text(prompt, answer)
                                  : ask_line(prompt, answer);
}

void WindowDesktop::message_box(const std::string &title, const std::string &text) {
  gDesktopConsole.show();
  if (gEventAnswers != nullptr)
    gEventAnswers->message_box(title, text);
  else
    show_message(title, text);
}

// Waits for something to happen, at most so long, and deals with everything that waits.
void WindowDesktop::pump(int milliseconds) {
  if (milliseconds > 0 && gEventAnswers != nullptr) {
    type_next_answer();
  } else if (milliseconds > 0) {
    QTimer wake;
    wake.setSingleShot(true);
    wake.start(milliseconds);
    QApplication::processEvents(QEventLoop::WaitForMoreEvents);
  }
  QApplication::processEvents();
}

void WindowDesktop::beep() {
  QApplication::beep();
}

bool WindowDesktop::save_bitmap(WindowId win, const std::string &file) {
  const Window *window = find_window(win);
  return window != nullptr && save_window(*window, file);
}

Rect WindowDesktop::screen() {
  const QSize size = frame().screen()->size();
  return {0, 0, size.width(), size.height()};
}

Rect WindowDesktop::work_area() {
  const QSize size = frame().area()->viewport()->size();
  return {0, 0, size.width(), size.height()};
}

void WindowDesktop::quit() {
  frame().let_close();
  QApplication::quit();
}

} // namespace velora
