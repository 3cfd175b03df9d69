// The table of the desktop's own commands, and their places in the menus.
#include "shell/qt/q_commands.h"

#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>

#include "shell/command_numbers.h"
#include "shell/commands.h"
#include "shell/desk_events.h"
#include "shell/name_help.h"
#include "shell/qt/q_code.h"
#include "shell/qt/q_frame.h"
#include "shell/qt/q_guard.h"
#include "shell/qt/q_help.h"
#include "shell/qt/q_print.h"
#include "shell/qt/q_recent.h"
#include "shell/qt/q_text.h"
#include "shell/qt/q_welcome.h"
#include "shell/qt/q_windows.h"
#include "shell/vel_wins.h"

namespace velora::qt {

namespace {

const Window *active() {
  return find_window(previous);
}

bool text_active() {
  return active() != nullptr && active()->pane != nullptr;
}

bool picture_active() {
  return active() != nullptr && active()->view != nullptr;
}

CodePane *active_code() {
  return active() == nullptr ? nullptr : dynamic_cast<CodePane *>(active()->pane);
}

bool code_active() {
  return active_code() != nullptr;
}

void replace_text() {
  active_code()->open_find();
}

void larger_font() {
  active()->pane->zoom(1);
}

void smaller_font() {
  active()->pane->zoom(-1);
}

void usual_font() {
  active()->pane->zoom(0);
}

void tile() {
  frame().area()->setViewMode(QMdiArea::SubWindowView);
  frame().area()->tileSubWindows();
}

void tabs() {
  QMdiArea *area = frame().area();
  const bool tabbed = area->viewMode() == QMdiArea::TabbedView;
  area->setViewMode(tabbed ? QMdiArea::SubWindowView : QMdiArea::TabbedView);
}

// Pages of help are windows of the frame too.
void close_window_in_use() {
  if (QMdiSubWindow *sub = frame().area()->activeSubWindow())
    sub->close();
}

// The name that help is asked for: at the caret, or of what is selected in a picture.
QString name_in_sight() {
  if (text_active()) {
    const QString selected = active()->pane->textCursor().selectedText();
    return selected.isEmpty() ? active()->pane->name_at_caret() : selected.trimmed();
  }
  return wide(selected_name(previous));
}

void help_on_name_in_sight() {
  show_help_on(name_in_sight());
}

void print_active() {
  print_window(*active());
}

void save_pdf() {
  run_entry([] { return SaveWindowAs(".pdf"); });
}

void save_png() {
  run_entry([] { return SaveWindowAs(".png"); });
}

void save_svg() {
  run_entry([] { return SaveWindowAs(".svg"); });
}

bool window_active() {
  return active() != nullptr;
}

// clang-format off
constexpr OwnCommand kOwn[] = {
    {kCmdHelpOnName, "&Help on Name", "F1", "Shows the help page of the name at the caret, or of the selected box", nullptr, help_on_name_in_sight},
    {kCmdKeys, "&Keys", "", "Lists the keys", nullptr, show_keys},
    {kCmdGuide, "&Guide", "", "Shows how the program is used", nullptr, show_guide},
    {kCmdAbout, "&About Velora", "", "Tells which program this is", nullptr, show_about},
    {kCmdWelcome, "&Welcome Page", "", "Databases to open and first steps", nullptr, show_welcome},
    {kCmdTile, "Tile", "", "Arranges the windows side by side", nullptr, tile},
    {kCmdTabs, "Tabs", "", "Shows the windows as tabs, or by themselves again", nullptr, tabs},
    {kCmdCloseWindow, "Close Window", "Ctrl+F4", "Closes the window in use", nullptr, close_window_in_use},
    {kCmdReplace, "&Replace...", "Ctrl+H", "Finds and replaces texts in the window", code_active, replace_text},
    {kCmdLargerFont, "Larger Font", "Ctrl++", "Makes the letters of the text larger", text_active, larger_font},
    {kCmdSmallerFont, "Smaller Font", "Ctrl+-", "Makes the letters of the text smaller", text_active, smaller_font},
    {kCmdUsualFont, "Usual Font", "", "Gives the letters their usual size", text_active, usual_font},
    {kCmdPrint, "&Print...", "Ctrl+P", "Prints the window", window_active, print_active},
    {kCmdSavePdf, "Save as PDF...", "", "Saves the window as a document", window_active, save_pdf},
    {kCmdSavePng, "Save as PNG...", "", "Saves the window as an image", window_active, save_png},
    {kCmdSaveSvg, "Save as SVG...", "", "Saves the picture as a drawing", picture_active, save_svg},
};
// clang-format on

const OwnCommand *find_own(int number) {
  for (const OwnCommand &row : kOwn)
    if (row.number == number)
      return &row;
  return nullptr;
}

QAction *make_item(QMenu *menu, int number) {
  const OwnCommand &row = *find_own(number);
  QString label = QString::fromUtf8(row.label);
  if (*row.accelerator != '\0')
    label += QLatin1Char('\t') + QString::fromUtf8(row.accelerator);
  auto *item = new QAction(label, menu);
  item->setObjectName(QStringLiteral("item%1").arg(number));
  item->setMenuRole(QAction::NoRole);
  item->setStatusTip(QString::fromUtf8(row.hint));
  QObject::connect(item, &QAction::triggered, item,
                   [number] { guarded([=] { run_own_command(number); }); });
  if (row.of_use != nullptr)
    QObject::connect(menu, &QMenu::aboutToShow, item,
                     [item, of_use = row.of_use] { guarded([&] { item->setEnabled(of_use()); }); });
  return item;
}

// The windows by their titles; the one in use is marked.
void fill_window_list(QMenu *menu) {
  menu->clear();
  int number = 0;
  for (const Window *window : all_windows()) {
    QString title = window->sub->windowTitle();
    title.replace(QLatin1Char('&'), QStringLiteral("&&"));
    const QString mnemonic = ++number < 10 ? QStringLiteral("&%1 ").arg(number) : QString();
    QAction *item = menu->addAction(mnemonic + title);
    item->setCheckable(true);
    item->setChecked(window->id == previous);
    QObject::connect(item, &QAction::triggered, item, [win = window->id] {
      guarded([win] {
        if (find_window(win) != nullptr)
          gDesktop->focus_window(win);
      });
    });
  }
}

void add_file_items(QMenu *menu) {
  QAction *quit = menu->actions().last();
  auto *recent = new QMenu(QStringLiteral("Recent DataBases"), menu);
  recent->setObjectName(QStringLiteral("recent"));
  QObject::connect(recent, &QMenu::aboutToShow, recent,
                   [recent] { guarded([=] { fill_recent(recent); }); });
  fill_recent(recent);
  menu->insertMenu(menu->actions().at(2), recent);
  for (const int number : {kCmdSavePdf, kCmdSavePng, kCmdSaveSvg, kCmdPrint})
    menu->insertAction(quit, make_item(menu, number));
  menu->insertSeparator(quit);
}

void add_window_items(QMenu *menu) {
  menu->addAction(make_item(menu, kCmdTile));
  menu->addAction(make_item(menu, kCmdTabs));
  menu->addAction(make_item(menu, kCmdCloseWindow));
  QMenu *list = menu->addMenu(QStringLiteral("Go To"));
  list->setObjectName(QStringLiteral("window_list"));
  QObject::connect(list, &QMenu::aboutToShow, list,
                   [list] { guarded([=] { fill_window_list(list); }); });
}

} // namespace

std::span<const OwnCommand> own_commands() {
  return kOwn;
}

bool run_own_command(int number) {
  const OwnCommand *row = find_own(number);
  if (row == nullptr)
    return false;
  if (row->of_use == nullptr || row->of_use())
    row->run();
  return true;
}

void add_own_items(QMenu *menu, const QString &label) {
  if (label == QLatin1String("File"))
    add_file_items(menu);
  else if (label == QLatin1String("Windows"))
    add_window_items(menu);
  else if (label == QLatin1String("Edit"))
    menu->addAction(make_item(menu, kCmdReplace));
}

QMenu *make_view_menu() {
  auto *menu = new QMenu(QStringLiteral("Fo&nt"), &frame());
  for (const int number : {kCmdLargerFont, kCmdSmallerFont, kCmdUsualFont})
    menu->addAction(make_item(menu, number));
  return menu;
}

QMenu *make_help_menu() {
  auto *menu = new QMenu(QStringLiteral("&Help"), &frame());
  menu->setObjectName(QStringLiteral("Help"));
  for (const int number : {kCmdHelpOnName, kCmdKeys, kCmdGuide, kCmdWelcome})
    menu->addAction(make_item(menu, number));
  menu->addSeparator();
  menu->addAction(make_item(menu, kCmdAbout));
  return menu;
}

} // namespace velora::qt
