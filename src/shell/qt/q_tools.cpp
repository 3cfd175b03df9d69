// Tools are commands of the menu table with a drawing and a tip. A row names one.
#include "shell/qt/q_tools.h"

#include <QAction>
#include <QToolBar>

#include <map>

#include "editor/hand/hand.h"
#include "editor/model/records.h"
#include "shell/command_numbers.h"
#include "shell/menu_table.h"
#include "shell/qt/q_art.h"
#include "shell/qt/q_frame.h"
#include "shell/qt/q_guard.h"
#include "shell/qt/q_menus.h"

namespace velora::qt {

namespace {

struct Tool {
  int command; // 0 a gap
  Glyph glyph;
  int mode = 0; // of the hand while the tool is in use; 0 for a command that acts at once
};

// clang-format off
constexpr Tool kCommon[] = {
    {kCmdNewDataBase, Glyph::new_file}, {kCmdOpenDataBase, Glyph::open_file}, {kCmdSaveDataBase, Glyph::save_file}, {0, Glyph::none},
    {kCmdUndo, Glyph::undo}, {kCmdRedo, Glyph::redo}, {0, Glyph::none},
    {kCmdQuery, Glyph::query}, {kCmdCommit, Glyph::commit}, {0, Glyph::none},
    {kCmdNewFunction, Glyph::function_picture}, {kCmdNewConstructors, Glyph::data_picture}, {kCmdNewNetwork, Glyph::network_picture},
    {kCmdNewOrvek, Glyph::text}, {kCmdNewAnnotation, Glyph::annotation}};
constexpr Tool kFunctionTools[] = {
    {kCmdAddInputs, Glyph::hexagon, kToolParameter}, {kCmdAddFunctions, Glyph::box, kToolFunction}, {kCmdAddRecursive, Glyph::recursive, kToolRecursive},
    {kCmdAddConstructors, Glyph::double_box, kToolConstructor}, {kCmdAddTypes, Glyph::double_hexagon, kToolType}, {kCmdAddConstants, Glyph::bold_hexagon, kToolHexagon},
    {kCmdAddHolds, Glyph::hold, kToolHold}, {kCmdAddJunctions, Glyph::junction, kToolJunction}, {kCmdJoinNodes, Glyph::join, kModeJoin}, {0, Glyph::none},
    {kCmdMoveNodes, Glyph::move, kModeMove}, {kCmdLassoSubGraph, Glyph::lasso, kModeLasso}, {0, Glyph::none},
    {kCmdGetFunction, Glyph::find}, {kCmdGetNextFunction, Glyph::next}, {kCmdEvaluate, Glyph::evaluate}};
constexpr Tool kDataTools[] = {
    {kCmdDataAddTypes, Glyph::double_hexagon, kToolType}, {kCmdDataAddConstructors, Glyph::double_box, kToolConstructor}, {kCmdImportList, Glyph::import_list, kToolRecursiveToo},
    {kCmdDataAddFunctions, Glyph::box, kToolFunction}, {kCmdDataAddJunctions, Glyph::junction, kToolJunction}, {kCmdDataJoinNodes, Glyph::join, kModeJoin}, {0, Glyph::none},
    {kCmdMoveNodes, Glyph::move, kModeMove}, {kCmdLassoSubGraph, Glyph::lasso, kModeLasso}, {0, Glyph::none},
    {kCmdGetDataType, Glyph::find}, {kCmdGetNextDataType, Glyph::next}};
constexpr Tool kNetworkTools[] = {
    {kCmdNetAddFunctions, Glyph::box, kToolFunction}, {kCmdNetAddRecursive, Glyph::recursive, kToolRecursive}, {kCmdNetAddJunctions, Glyph::junction, kToolJunction},
    {kCmdNetJoinNodes, Glyph::join, kModeJoin}, {0, Glyph::none},
    {kCmdMoveNodes, Glyph::move, kModeMove}, {kCmdLassoSubGraph, Glyph::lasso, kModeLasso}, {0, Glyph::none},
    {kCmdChildren, Glyph::children}, {kCmdParents, Glyph::parents}, {kCmdGetNextNetwork, Glyph::next}};
constexpr Tool kZoom[] = {
    {kCmdZoomOut, Glyph::zoom_out}, {kCmdZoomIn, Glyph::zoom_in}, {kCmdZoomFit, Glyph::zoom_whole}};
// clang-format on

std::map<MenuBar, QToolBar *> picture_bars;
std::multimap<int, QAction *> tools;
std::map<QAction *, int> modes; // of the tools that stay in use
std::map<int, bool> enabled;
bool all_on = true;

QString tip_of(const MenuCommand &row) {
  QString tip = QString::fromUtf8(row.label);
  tip.remove(QLatin1Char('&'));
  if (*row.accelerator != '\0')
    tip += QStringLiteral(" (%1)").arg(QString::fromUtf8(row.accelerator));
  return tip;
}

void show_state(int command) {
  const auto known = enabled.find(command);
  const MenuCommand *row = find_menu_command(command);
  const bool on =
      all_on && row != nullptr && row->run != nullptr && (known == enabled.end() || known->second);
  const auto [first, last] = tools.equal_range(command);
  for (auto tool = first; tool != last; ++tool)
    tool->second->setEnabled(on);
}

void add_tools(QToolBar *bar, std::span<const Tool> rows) {
  for (const Tool &tool : rows) {
    const MenuCommand *row = find_menu_command(tool.command);
    if (tool.command == 0)
      bar->addSeparator();
    if (row == nullptr) // a command that this program does not have
      continue;
    QAction *action = bar->addAction(glyph_icon(tool.glyph), tip_of(*row));
    action->setObjectName(QStringLiteral("tool%1").arg(tool.command));
    action->setToolTip(tip_of(*row));
    action->setStatusTip(tip_of(*row));
    QObject::connect(action, &QAction::triggered, action, [command = tool.command] {
      guarded([=] {
        choose_command(command);
        show_tool_in_use(); // the click has toggled it
      });
    });
    tools.emplace(tool.command, action);
    if (tool.mode != 0) {
      action->setCheckable(true);
      modes[action] = tool.mode;
    }
    show_state(tool.command);
  }
}

QToolBar *make_bar(const char *name, std::span<const Tool> rows) {
  auto *bar = new QToolBar(QLatin1String(name));
  bar->setObjectName(QLatin1String(name));
  bar->setAccessibleName(QLatin1String(name));
  bar->setIconSize({20, 20});
  bar->setMovable(false);
  add_tools(bar, rows);
  frame().addToolBar(bar);
  return bar;
}

} // namespace

void make_tools() {
  make_bar("Tools", kCommon);
  const std::pair<MenuBar, std::span<const Tool>> kinds[] = {{MenuBar::functions, kFunctionTools},
                                                             {MenuBar::datatype, kDataTools},
                                                             {MenuBar::network, kNetworkTools}};
  frame().addToolBarBreak();
  for (const auto &[bar, rows] : kinds) {
    picture_bars[bar] = make_bar("Picture tools", rows);
    picture_bars[bar]->addSeparator();
    add_tools(picture_bars[bar], kZoom);
    picture_bars[bar]->hide();
  }
}

void show_tools(MenuBar bar) {
  for (const auto &[kind, tool_bar] : picture_bars)
    tool_bar->setVisible(kind == bar);
}

void show_tool_in_use() {
  for (const auto &[action, mode] : modes)
    action->setChecked(mode == greqMode);
}

void enable_tool(int command, bool on) {
  enabled[command] = on;
  show_state(command);
}

void enable_all_tools(bool on) {
  all_on = on;
  for (const auto &[command, tool] : tools)
    show_state(command);
}

} // namespace velora::qt
