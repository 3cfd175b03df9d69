// The five menu bars: loading, showing, enabling of items and the submenus of names. Holds the
// menus.
#include <iterator>
#include <string>

#include "shell/menu_table.h"
#include "shell/win32/w_text.h"
#include "shell/win32/w_windows.h"

namespace velora::win32 {

namespace {

// In the order of MenuBar.
constexpr const wchar_t *kBarNames[] = {L"MainMenu", L"FunctionsMenu", L"DatatypeMenu",
                                        L"NetworkMenu", L"OrvekMenu"};
HMENU bars[std::size(kBarNames)];
MenuBar current = MenuBar::main;

// The submenu of that label, at any depth.
HMENU find_submenu(HMENU menu, const std::wstring &label) {
  for (int i = 0; i < GetMenuItemCount(menu); ++i) {
    const HMENU sub = GetSubMenu(menu, i);
    if (sub == nullptr)
      continue;
    wchar_t text[80] = L"";
    GetMenuStringW(menu, static_cast<UINT>(i), text, 80, MF_BYPOSITION);
    if (label == text)
      return sub;
    if (const HMENU deeper = find_submenu(sub, label))
      return deeper;
  }
  return nullptr;
}

} // namespace

bool init_menus() {
  for (std::size_t i = 0; i < std::size(kBarNames); ++i) {
    bars[i] = LoadMenuW(hInst, kBarNames[i]);
    if (bars[i] == nullptr)
      return false;
  }
  hAccel = LoadAcceleratorsW(hInst, L"MenuAccelerators");
  return hAccel != nullptr;
}

// The bar that the frame shows goes with the frame.
void destroy_menus() {
  for (HMENU &bar : bars) {
    if (bar != nullptr && bar != GetMenu(hVel))
      DestroyMenu(bar);
    bar = nullptr;
  }
}

void show_bar(MenuBar bar) {
  const HMENU menu = bars[static_cast<int>(bar)];
  if (menu != nullptr && GetMenu(hVel) != menu)
    SetMenu(hVel, menu);
  current = bar;
}

MenuBar shown_bar() {
  return current;
}

void enable_menu_item(int command, bool on) {
  const UINT flags = MF_BYCOMMAND | (on ? MF_ENABLED : MF_GRAYED);
  for (const HMENU bar : bars)
    if (bar != nullptr)
      EnableMenuItem(bar, static_cast<UINT>(command), flags);
}

void enable_all_menus(bool on) {
  const UINT flags = MF_BYPOSITION | (on ? MF_ENABLED : MF_GRAYED);
  for (const HMENU bar : bars)
    for (int i = 0; bar != nullptr && i < GetMenuItemCount(bar); ++i)
      EnableMenuItem(bar, static_cast<UINT>(i), flags);
  DrawMenuBar(hVel);
}

void fill_user_menu(MenuBar bar, const std::string &header, const std::vector<std::string> &names,
                    int first_command) {
  HMENU menu = nullptr;
  for (const UserMenu &user : kUserMenus)
    if (user.bar == bar_bit(bar))
      menu = find_submenu(bars[static_cast<int>(bar)], widen(user.label));
  if (menu == nullptr)
    return;
  while (DeleteMenu(menu, 0, MF_BYPOSITION) != FALSE) {
  }
  const auto first = static_cast<UINT_PTR>(first_command);
  AppendMenuW(menu, MF_STRING | MF_GRAYED, first - 1, widen(header).c_str());
  for (std::size_t i = 0; i < names.size(); ++i) {
    std::string label; // an "&" in a name is no mnemonic
    for (const char c : names[i])
      label += c == '&' ? std::string("&&") : std::string(1, c);
    const bool new_column = i > 0 && i % 40 == 0;
    AppendMenuW(menu, MF_STRING | (new_column ? MF_MENUBARBREAK : 0), first + i,
                widen(label).c_str());
  }
}

// A mnemonic mark in a name was doubled, so more is read than is answered.
std::string user_menu_label(MenuBar bar, int command) {
  constexpr std::size_t kMost = 79;
  wchar_t text[2 * kMost + 1] = L"";
  GetMenuStringW(bars[static_cast<int>(bar)], static_cast<UINT>(command), text,
                 static_cast<int>(std::size(text)), MF_BYCOMMAND);
  std::wstring label;
  for (const wchar_t *c = text; *c != L'\0' && label.size() < kMost; ++c) {
    label += *c;
    if (c[0] == L'&' && c[1] == L'&')
      ++c;
  }
  return narrow(label);
}

} // namespace velora::win32
