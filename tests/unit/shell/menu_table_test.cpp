// Holds the resource script to the menu table: same commands, labels, accelerators and greying.
#include "editor/user_menus.h"
#include "shell/menu_layout.h"
#include "shell/menu_table.h"

#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <sstream>
#include <string>

namespace velora {

namespace {

struct Item {
  std::string label;
  std::string accelerator;
  bool grey;
  bool operator==(const Item &) const = default;
};
using Bar = std::map<int, Item>;

// A line of the script that holds a quoted text: the text, and what stands behind it.
bool quoted_line(const std::string &line, const std::string &keyword, std::string &text,
                 std::string &rest) {
  const std::size_t open = line.find(keyword + " \"");
  if (open == std::string::npos)
    return false;
  const std::size_t start = open + keyword.size() + 2;
  const std::size_t end = line.find('"', start);
  text = line.substr(start, end - start);
  rest = line.substr(end + 1);
  return true;
}

// The script, with the menus that stand in files of their own.
std::string script(const std::string &file = "velora.rc") {
  std::ifstream in(VELORA_SOURCE_DIR "/src/shell/win32/" + file);
  EXPECT_TRUE(in.is_open()) << file;
  std::string text;
  std::string included;
  std::string rest;
  for (std::string line; std::getline(in, line);)
    text += quoted_line(line, "#include", included, rest) && included.starts_with("menus/")
                ? script(included)
                : line + "\n";
  return text;
}

// The items of one menu bar of the script, without the headers of the user menus.
Bar bar_of_script(const std::string &text, const std::string &name) {
  const std::size_t start = text.find("\n" + name + " MENU\n");
  std::istringstream part(text.substr(start, text.find("\nEND\n", start) - start));
  Bar bar;
  std::string label;
  std::string rest;
  for (std::string line; std::getline(part, line);) {
    if (!quoted_line(line, "MENUITEM", label, rest))
      continue;
    const int number = std::stoi(rest.substr(rest.find_first_of("0123456789")));
    const std::size_t tab = label.find("\\t");
    Item item{label.substr(0, tab), tab == std::string::npos ? "" : label.substr(tab + 2),
              rest.find("GRAYED") != std::string::npos};
    if (number % 1000 != 9) {
      EXPECT_TRUE(bar.emplace(number, item).second) << name << " has " << number << " twice";
    }
  }
  return bar;
}

Bar bar_of_table(unsigned bit) {
  Bar bar;
  for (const MenuCommand &row : menu_commands())
    if ((row.bars & bit) != 0)
      bar[row.number] = {row.label, row.accelerator, row.run == nullptr};
  return bar;
}

// The menus of desktops that make them at run time: every command of a bar has one place there.
TEST(MenuTable, LayoutPlacesEveryCommandOnce) {
  for (const MenuBar bar :
       {MenuBar::main, MenuBar::functions, MenuBar::datatype, MenuBar::network, MenuBar::orvek}) {
    std::map<int, int> placed;
    for (const MenuSpec &menu : menus_of(bar))
      for (const int number : menu.items)
        if (number > 0)
          ++placed[number];
    std::map<int, int> wanted;
    for (const MenuCommand &row : menu_commands())
      if ((row.bars & bar_bit(bar)) != 0)
        wanted[row.number] = 1;
    EXPECT_EQ(placed, wanted) << "bar " << static_cast<int>(bar);
  }
}

TEST(MenuTable, ScriptShowsTheTable) {
  const std::string text = script();
  const std::map<std::string, unsigned> bars = {{"MainMenu", kMainBar},
                                                {"OrvekMenu", kOrvekBar},
                                                {"FunctionsMenu", kFunctionsBar},
                                                {"DatatypeMenu", kDatatypeBar},
                                                {"NetworkMenu", kNetworkBar}};
  for (const auto &[name, bit] : bars) {
    const Bar shown = bar_of_script(text, name);
    const Bar table = bar_of_table(bit);
    EXPECT_GT(shown.size(), 25U) << name;
    for (const auto &[number, item] : table) {
      const auto found = shown.find(number);
      ASSERT_NE(found, shown.end()) << name << " lacks " << number;
      EXPECT_EQ(found->second.label, item.label) << name << " " << number;
      EXPECT_EQ(found->second.accelerator, item.accelerator) << name << " " << number;
      EXPECT_EQ(found->second.grey, item.grey) << name << " " << number;
    }
    EXPECT_EQ(shown.size(), table.size()) << name;
  }
}

TEST(MenuTable, EveryAcceleratorOfTheScriptIsThatOfItsCommand) {
  const std::string text = script();
  const std::size_t start = text.find("\nMenuAccelerators ACCELERATORS\n");
  std::istringstream part(text.substr(start, text.find("\nEND\n", start) - start));
  int count = 0;
  for (std::string line; std::getline(part, line);) {
    if (line.find("VIRTKEY") == std::string::npos)
      continue;
    const std::size_t comma = line.find(',');
    const MenuCommand *command = find_menu_command(std::stoi(line.substr(comma + 1)));
    ASSERT_NE(command, nullptr) << line;
    std::string key = line.substr(0, comma);
    key.erase(0, key.find_first_not_of(" "));
    const std::map<std::string, std::string> named = {
        {"VK_F3", "F3"}, {"VK_LEFT", "Alt+Left"}, {"VK_RIGHT", "Alt+Right"}};
    const auto special = named.find(key);
    EXPECT_EQ(command->accelerator,
              special != named.end() ? special->second : "Ctrl+" + key.substr(1, 1));
    EXPECT_EQ(line.find("CONTROL") != std::string::npos, special == named.end());
    EXPECT_EQ(line.find("ALT") != std::string::npos, key == "VK_LEFT" || key == "VK_RIGHT");
    ++count;
  }
  EXPECT_EQ(count, 17);
}

TEST(MenuTable, UserMenusStandInTheScript) {
  const std::string text = script();
  for (const UserMenu &menu : kUserMenus) {
    const std::string popup = std::string("POPUP \"") + menu.label + "\"";
    const std::size_t at = text.find(popup);
    ASSERT_NE(at, std::string::npos) << popup;
    const std::string header = std::string("MENUITEM \"") + menu.header + "\", " +
                               std::to_string(menu.first_command - 1) + ", GRAYED";
    EXPECT_LT(text.find(header, at), at + 120) << header;
    EXPECT_EQ(find_menu_command(menu.first_command), nullptr);
  }
}

TEST(MenuTable, GenericNumbersDoWhatTheirItemsDo) {
  EXPECT_EQ(find_menu_command(1405)->run, find_menu_command(902)->run);
  EXPECT_EQ(find_menu_command(1405)->run, find_menu_command(1002)->run);
  EXPECT_EQ(find_menu_command(1406)->run, find_menu_command(1103)->run);
  EXPECT_EQ(find_menu_command(999), nullptr);
}

} // namespace

} // namespace velora
