// The five menu bars: loading, showing, enabling of items and the submenus of names. Holds the
// menus.
#include <iterator>
#include <set>
#include <string>
#include <utility>

#include "editor/user_menus.h"
#include "shell/win32/w_commands.h"
#include "shell/win32/w_text.h"
#include "shell/win32/w_windows.h"

namespace velora::win32 {

namespace {

// In the order of MenuBar.
constexpr const wchar_t *kBarNames[] = {L"MainMenu", L"FunctionsMenu", L"DatatypeMenu",
                                        L"NetworkMenu", L"OrvekMenu"};
HMENU bars[std::size(kBarNames)];
MenuBar current = MenuBar::main;
std::set<std::pair<MenuBar, int>> greyed; // menus that are grey by themselves, by their places

HMENU handle_of(MenuBar bar) {
  return bars[static_cast<int>(bar)];
}

// The label as a reader sees it, without the mark of its mnemonic.
std::wstring label_at(HMENU menu, int place) {
  wchar_t text[80] = L"";
  GetMenuStringW(menu, static_cast<UINT>(place), text, 80, MF_BYPOSITION);
  std::wstring label = text;
  std::erase(label, L'&');
  return label;
}

void enable_place(HMENU menu, int place, bool on) {
  EnableMenuItem(menu, static_cast<UINT>(place), MF_BYPOSITION | (on ? MF_ENABLED : MF_GRAYED));
}

// The submenu of that label, at any depth.
HMENU find_submenu(HMENU menu, const std::wstring &label) {
  for (int i = 0; i < GetMenuItemCount(menu); ++i) {
    const HMENU sub = GetSubMenu(menu, i);
    if (sub == nullptr)
      continue;
    if (label == label_at(menu, i))
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
    add_own_items(bars[i], static_cast<MenuBar>(i));
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
  const HMENU menu = handle_of(bar);
  if (menu != nullptr && GetMenu(hVel) != menu)
    SetMenu(hVel, menu);
  current = bar;
}

MenuBar shown_bar() {
  return current;
}

void adjust_shown_items() {
  if (handle_of(current) != nullptr)
    adjust_own_items(handle_of(current));
}

void enable_menu_item(int command, bool on) {
  const UINT flags = MF_BYCOMMAND | (on ? MF_ENABLED : MF_GRAYED);
  for (const HMENU bar : bars)
    if (bar != nullptr)
      EnableMenuItem(bar, static_cast<UINT>(command), flags);
}

void enable_whole_menu(MenuBar bar, const std::string &label, bool on) {
  const HMENU menu = handle_of(bar);
  const std::wstring wanted = widen(label);
  for (int i = 0; i < GetMenuItemCount(menu); ++i) {
    if (label_at(menu, i) != wanted)
      continue;
    if (on)
      greyed.erase({bar, i});
    else
      greyed.insert({bar, i});
    enable_place(menu, i, on);
  }
  if (bar == current)
    DrawMenuBar(hVel);
}

void enable_all_menus(bool on) {
  for (std::size_t b = 0; b < std::size(bars); ++b)
    for (int i = 0; bars[b] != nullptr && i < GetMenuItemCount(bars[b]); ++i)
      enable_place(bars[b], i, on && !greyed.contains({static_cast<MenuBar>(b), i}));
  DrawMenuBar(hVel);
}

void fill_user_menu(MenuBar bar, const std::string &header, const std::vector<std::string> &names,
                    int first_command) {
  const UserMenu *user = user_menu_of(bar);
  const HMENU menu = user != nullptr ? find_submenu(handle_of(bar), widen(user->label)) : nullptr;
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
    const UINT flags =
        MF_STRING | (new_column ? MF_MENUBARBREAK : 0) | (user->serves ? 0 : MF_GRAYED);
    AppendMenuW(menu, flags, first + i, widen(label).c_str());
  }
}

// A mnemonic mark in a name was doubled, so more is read than is answered.
std::string user_menu_label(MenuBar bar, int command) {
  constexpr std::size_t kMost = 79;
  wchar_t text[2 * kMost + 1] = L"";
  GetMenuStringW(handle_of(bar), static_cast<UINT>(command), text,
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
