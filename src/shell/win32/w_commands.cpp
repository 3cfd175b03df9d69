// The table of the desktop's own commands.
#include "shell/win32/w_commands.h"

#include <string>

#include "platform/response.h"
#include "shell/command_numbers.h"
#include "shell/commands.h"
#include "shell/desk_events.h"
#include "shell/keys_page.h"
#include "shell/menu_table.h"
#include "shell/name_help.h"
#include "shell/vel_wins.h"
#include "shell/win32/w_dialogs.h"
#include "shell/win32/w_edit.h"
#include "shell/win32/w_find.h"
#include "shell/win32/w_text.h"

namespace velora::win32 {

namespace {

Window *active() {
  return find_window(previous);
}

bool text_active() {
  return active() != nullptr && active()->edit != nullptr;
}

bool code_active() {
  return text_active() && active()->kind == kOrvekWindow;
}

bool drawing_active() {
  return active() != nullptr && active()->edit == nullptr;
}

bool window_active() {
  return active() != nullptr;
}

void replace_text() {
  open_replace(*active());
}

void larger_font() {
  zoom_text(*active(), 1);
}

void smaller_font() {
  zoom_text(*active(), -1);
}

void usual_font() {
  zoom_text(*active(), 0);
}

void save_png() {
  run_entry([] { return SaveWindowAs(".png"); });
}

void save_svg() {
  run_entry([] { return SaveWindowAs(".svg"); });
}

// The name that help is asked for: what is selected, or the word at the caret.
std::string name_in_sight() {
  return text_active() ? name_at_caret(*active()) : selected_name(previous);
}

// Pages are shown where answers are, so that they can be copied and kept.
void help_on_name_in_sight() {
  run_entry([name = name_in_sight()] {
    const std::string page = help_on_name(name);
    if (!page.empty())
      DisplayResponse("\n" + page);
    else if (name.empty())
      DisplayResponse("Put the caret into a name, or select a box, to read about it\n");
    else
      DisplayResponsef("There is nothing to tell about %s\n", name.c_str());
    return 1;
  });
}

void show_keys() {
  run_entry([] { return DisplayResponse("\n" + keys_page()), 1; });
}

// A key of a command; `key` 0 is none.
struct OwnKey {
  WPARAM key = 0;
  WPARAM other = 0; // the same on the block of digits
  bool control = false;
};

// A row: where it stands, and when it is of use. `menu` names a menu of the bar; one that the bar
// lacks is made at its end.
struct OwnCommand {
  int number;
  unsigned bars;
  const wchar_t *menu;
  const wchar_t *label;
  OwnKey key;
  bool (*of_use)();
  void (*run)();
};

// clang-format off
constexpr OwnCommand kOwn[] = {
    {kCmdSavePng, kAllBars, L"&File", L"Save Win as P&NG...", {}, window_active, save_png},
    {kCmdSaveSvg, kAllBars, L"&File", L"Save Win as S&VG...", {}, drawing_active, save_svg},
    {kCmdReplace, kTextBars, L"&Edit", L"&Replace...\tCtrl+H", {'H', 0, true}, code_active, replace_text},
    {kCmdLargerFont, kTextBars, L"Fo&nt", L"&Larger Font\tCtrl+Plus", {VK_OEM_PLUS, VK_ADD, true}, text_active, larger_font},
    {kCmdSmallerFont, kTextBars, L"Fo&nt", L"&Smaller Font\tCtrl+Minus", {VK_OEM_MINUS, VK_SUBTRACT, true}, text_active, smaller_font},
    {kCmdUsualFont, kTextBars, L"Fo&nt", L"&Usual Font\tCtrl+0", {'0', VK_NUMPAD0, true}, text_active, usual_font},
    {kCmdHelpOnName, kAllBars, L"&Help", L"&Help on Name\tF1", {VK_F1, 0, false}, nullptr, help_on_name_in_sight},
    {kCmdKeys, kAllBars, L"&Help", L"&Keys", {}, nullptr, show_keys},
    {kCmdAbout, kAllBars, L"&Help", L"&About Velora", {}, nullptr, show_about},
};
// clang-format on

bool of_use(const OwnCommand &row) {
  return row.of_use == nullptr || row.of_use();
}

HMENU menu_of(HMENU bar, const std::wstring &label) {
  for (int i = 0; i < GetMenuItemCount(bar); ++i) {
    wchar_t text[80] = L"";
    GetMenuStringW(bar, static_cast<UINT>(i), text, 80, MF_BYPOSITION);
    if (label == text)
      return GetSubMenu(bar, i);
  }
  const HMENU made = CreatePopupMenu();
  AppendMenuW(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(made), label.c_str());
  return made;
}

} // namespace

// In the File menu they stand before Quit, which is the last, and the line above it.
void add_own_items(HMENU bar, MenuBar which) {
  for (const OwnCommand &row : kOwn) {
    if ((row.bars & bar_bit(which)) == 0)
      continue;
    const HMENU menu = menu_of(bar, row.menu);
    const auto number = static_cast<UINT_PTR>(row.number);
    if (std::wstring(row.menu) == L"&File")
      InsertMenuW(menu, static_cast<UINT>(GetMenuItemCount(menu)) - 2, MF_BYPOSITION | MF_STRING,
                  number, row.label);
    else
      AppendMenuW(menu, MF_STRING, number, row.label);
  }
}

void adjust_own_items(HMENU bar) {
  for (const OwnCommand &row : kOwn)
    EnableMenuItem(bar, static_cast<UINT>(row.number),
                   MF_BYCOMMAND | (of_use(row) ? MF_ENABLED : MF_GRAYED));
}

bool run_own_command(int number) {
  for (const OwnCommand &row : kOwn)
    if (row.number == number) {
      if (of_use(row))
        row.run();
      return true;
    }
  return false;
}

bool take_own_key(const MSG &message) {
  if (message.message != WM_KEYDOWN || GetKeyState(VK_MENU) < 0 || GetKeyState(VK_SHIFT) < 0)
    return false;
  const bool control = GetKeyState(VK_CONTROL) < 0;
  for (const OwnCommand &row : kOwn)
    if (row.key.key != 0 && row.key.control == control && of_use(row) &&
        (message.wParam == row.key.key || message.wParam == row.key.other))
      return run_own_command(row.number);
  return false;
}

} // namespace velora::win32
