// Menus out of tables. Holds the five bars, which items and menus are grey, and the names in the
// menus of the user.
#include "shell/qt/q_menus.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QShortcut>
#include <QTimer>

#include <array>
#include <map>
#include <set>

#include "editor/user_menus.h"
#include "shell/desk_events.h"
#include "shell/menu_layout.h"
#include "shell/menu_table.h"
#include "shell/qt/q_commands.h"
#include "shell/qt/q_frame.h"
#include "shell/qt/q_guard.h"
#include "shell/qt/q_text.h"
#include "shell/qt/q_tools.h"

namespace velora::qt {

namespace {

constexpr MenuBar kBars[] = {MenuBar::main, MenuBar::functions, MenuBar::datatype, MenuBar::network,
                             MenuBar::orvek};
constexpr std::size_t kMostLabel = 79;

struct BarMenus {
  std::vector<QMenu *> menus;
  QMenu *names = nullptr;            // the user's
  std::map<int, std::string> labels; // of its items
};
std::array<BarMenus, std::size(kBars)> bars;
std::multimap<int, QAction *> items;
MenuBar current = MenuBar::main;
bool all_on = true;
std::map<QKeySequence, int> commands_by_key;
std::set<QMenu *> greyed; // menus that are grey by themselves

BarMenus &menus_in(MenuBar bar) {
  return bars[static_cast<std::size_t>(bar)];
}

const MenuCommand *row_on(int number, MenuBar bar) {
  for (const MenuCommand &row : menu_commands())
    if (row.number == number && (row.bars & bar_bit(bar)) != 0)
      return &row;
  return nullptr;
}

QString plain_label(const QString &label) {
  QString plain = label;
  return plain.remove(QLatin1Char('&'));
}

void add_item(QMenu *menu, const MenuCommand &row) {
  QString label = QString::fromUtf8(row.label);
  if (*row.accelerator != '\0')
    label += QLatin1Char('\t') + QString::fromUtf8(row.accelerator);
  QAction *item = menu->addAction(label);
  item->setObjectName(QStringLiteral("item%1").arg(row.number));
  item->setMenuRole(QAction::NoRole);
  item->setStatusTip(plain_label(QString::fromUtf8(row.label)));
  item->setEnabled(row.run != nullptr);
  QObject::connect(item, &QAction::triggered, item,
                   [number = row.number] { guarded([=] { choose_command(number); }); });
  items.emplace(row.number, item);
}

void add_items(QMenu *menu, std::span<const int> numbers, MenuBar bar) {
  for (const int number : numbers) {
    if (number == kSeparator) {
      menu->addSeparator();
    } else if (number == kUserItems) {
      const UserMenu *user = user_menu_of(bar);
      menus_in(bar).names = menu->addMenu(QString::fromUtf8(user->label));
    } else if (const MenuCommand *row = row_on(number, bar)) {
      add_item(menu, *row);
    }
  }
}

void make_bar(MenuBar bar) {
  for (const MenuSpec &spec : menus_of(bar)) {
    auto *menu = new QMenu(QString::fromUtf8(spec.label), &frame());
    menu->setObjectName(plain_label(menu->title()));
    add_items(menu, spec.items, bar);
    const bool text_edit = menu->objectName() != QLatin1String("Edit") || bar == MenuBar::main ||
                           bar == MenuBar::orvek;
    if (text_edit)
      add_own_items(menu, menu->objectName());
    QObject::connect(menu, &QMenu::aboutToShow, menu, [] { guarded([] { menu_opened(); }); });
    menus_in(bar).menus.push_back(menu);
  }
  static QMenu *const fonts = make_view_menu();
  static QMenu *const help = make_help_menu();
  if (bar == MenuBar::main || bar == MenuBar::orvek)
    menus_in(bar).menus.push_back(fonts);
  menus_in(bar).menus.push_back(help);
}

// An accelerator stands for one command whatever the bar: where items of several bars share it, for
// the number that is meant for all of them.
std::map<QString, int> accelerators() {
  std::map<QString, int> keys;
  for (const MenuCommand &row : menu_commands())
    if (*row.accelerator != '\0') {
      int &number = keys[QString::fromUtf8(row.accelerator)];
      number = number == 0 || row.bars == kNoBar ? row.number : number;
    }
  return keys;
}

void make_accelerators() {
  std::map<QString, int> keys = accelerators();
  for (const OwnCommand &row : own_commands())
    if (*row.accelerator != '\0')
      keys[QString::fromUtf8(row.accelerator)] = row.number;
  for (const auto &[key, number] : keys) {
    commands_by_key[QKeySequence(key, QKeySequence::PortableText)] = number;
    // Sub-windows have some keys of their own on some systems, which close them just as well.
    if (QKeySequence::keyBindings(QKeySequence::Close)
            .contains(QKeySequence(key, QKeySequence::PortableText)))
      continue;
    auto *shortcut = new QShortcut(QKeySequence(key, QKeySequence::PortableText), &frame());
    shortcut->setObjectName(QStringLiteral("key%1").arg(number));
    QObject::connect(shortcut, &QShortcut::activated, shortcut,
                     [command = number] { guarded([=] { choose_command(command); }); });
  }
}

void show_state(QMenu *menu) {
  menu->menuAction()->setEnabled(all_on && !greyed.contains(menu));
}

} // namespace

void choose_command(int number) {
  if (!run_own_command(number))
    menu_chosen(number, current);
}

bool choose_by_key(const QKeySequence &keys) {
  const auto found = commands_by_key.find(keys);
  if (found == commands_by_key.end())
    return false;
  choose_command(found->second);
  return true;
}

void make_menus() {
  for (const MenuBar bar : kBars)
    make_bar(bar);
  make_accelerators();
  make_tools();
  frame().menuBar()->setObjectName(QStringLiteral("menus"));
  current = MenuBar::orvek; // so that the main one is shown anew
  show_bar(MenuBar::main);
}

void show_bar(MenuBar bar) {
  if (bar == current)
    return;
  current = bar;
  show_tools(bar);
  QMenuBar *shown = frame().menuBar();
  for (QAction *action : shown->actions())
    shown->removeAction(action);
  for (QMenu *menu : menus_in(bar).menus) {
    show_state(menu);
    shown->addMenu(menu);
  }
}

MenuBar shown_bar() {
  return current;
}

void enable_menu_item(int command, bool on) {
  const auto [first, last] = items.equal_range(command);
  for (auto item = first; item != last; ++item)
    item->second->setEnabled(on);
  enable_tool(command, on);
}

void enable_whole_menu(MenuBar bar, const std::string &label, bool on) {
  for (QMenu *menu : menus_in(bar).menus) {
    if (plain_label(menu->title()) != plain_label(wide(label)))
      continue;
    if (on)
      greyed.erase(menu);
    else
      greyed.insert(menu);
    show_state(menu);
  }
}

void enable_all_menus(bool on) {
  all_on = on;
  for (const BarMenus &bar : bars)
    for (QMenu *menu : bar.menus)
      show_state(menu);
  enable_all_tools(on);
}

void fill_user_menu(MenuBar bar, const std::string &header, const std::vector<std::string> &names,
                    int first_command) {
  BarMenus &menus = menus_in(bar);
  const UserMenu *user = user_menu_of(bar);
  if (menus.names == nullptr || user == nullptr)
    return;
  menus.names->clear();
  menus.labels.clear();
  menus.names->addAction(wide(header))->setEnabled(false);
  int number = first_command;
  for (const std::string &name : names) {
    QString label = wide(name);
    label.replace(QLatin1Char('&'), QStringLiteral("&&")); // no mnemonic
    QAction *item = menus.names->addAction(label);
    item->setEnabled(user->serves);
    QObject::connect(item, &QAction::triggered, item,
                     [number] { guarded([=] { choose_command(number); }); });
    menus.labels[number++] = name.substr(0, kMostLabel);
  }
}

void show_picture_menu(const QPoint &at) {
  if (!all_on)
    return;
  menu_opened();
  QMenu shown;
  shown.setObjectName(QStringLiteral("picture_menu"));
  for (const char *label : {"Features", "Find", "Colour"})
    for (QMenu *menu : menus_in(current).menus)
      if (menu->objectName() == QLatin1String(label))
        shown.addMenu(menu);
  shown.addSeparator();
  for (QMenu *menu : menus_in(current).menus)
    if (menu->objectName() == QLatin1String("Edit"))
      shown.addActions(menu->actions());
  shown.exec(at);
}

std::string user_menu_label(MenuBar bar, int command) {
  const auto &labels = menus_in(bar).labels;
  const auto found = labels.find(command);
  return found == labels.end() ? std::string() : found->second;
}

} // namespace velora::qt
