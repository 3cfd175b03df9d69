// The windows of the program, as the driver finds and asks them.
#pragma once

#include "driver_text.h"

#include <functional>

inline constexpr DWORD kPollEvery = 30;
inline constexpr UINT kSendPatience = 20000;

// Sends a message, but does not wait for ever for a program that hangs.
inline LRESULT send(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  DWORD_PTR result = 0;
  SendMessageTimeoutW(window, message, wparam, lparam, SMTO_NORMAL, kSendPatience, &result);
  return static_cast<LRESULT>(result);
}

inline std::string text_of(HWND window) {
  const auto length = send(window, WM_GETTEXTLENGTH, 0, 0);
  std::wstring text(static_cast<std::size_t>(length) + 1, L'\0');
  const auto got = send(window, WM_GETTEXT, static_cast<WPARAM>(text.size()),
                        reinterpret_cast<LPARAM>(text.data()));
  text.resize(static_cast<std::size_t>(got));
  return narrow(text);
}

inline std::string class_of(HWND window) {
  wchar_t name[80] = L"";
  GetClassNameW(window, name, 80);
  return narrow(name);
}

struct Search {
  std::string wanted_class;
  std::string title; // how it begins
  std::vector<HWND> found;
};

inline BOOL CALLBACK look_at(HWND window, LPARAM lparam) {
  auto *search = reinterpret_cast<Search *>(lparam);
  wchar_t title[200] = L"";
  if (IsWindowVisible(window) == FALSE || class_of(window) != search->wanted_class)
    return TRUE;
  InternalGetWindowText(window, title, 200);
  if (narrow(title).rfind(search->title, 0) == 0)
    search->found.push_back(window);
  return TRUE;
}

inline std::vector<HWND> windows(const std::string &wanted_class, const std::string &title = "") {
  Search search{wanted_class, title, {}};
  EnumWindows(look_at, reinterpret_cast<LPARAM>(&search));
  return search.found;
}

inline HWND one_window(const std::string &wanted_class, const std::string &title = "") {
  const auto found = windows(wanted_class, title);
  return found.empty() ? nullptr : found.front();
}

inline bool wait_until(const std::function<bool()> &condition, int milliseconds) {
  const ULONGLONG end = GetTickCount64() + static_cast<ULONGLONG>(milliseconds);
  while (!condition()) {
    if (GetTickCount64() > end)
      return false;
    Sleep(kPollEvery);
  }
  return true;
}

inline HWND frame() {
  return one_window("VELORA");
}

inline HWND edit_of(HWND window) {
  return window == nullptr ? nullptr : FindWindowExW(window, nullptr, L"edit", nullptr);
}

inline HWND console_edit() {
  return edit_of(one_window("ControlChild"));
}

inline HWND dialog() {
  return one_window("#32770");
}

inline std::vector<HWND> children(HWND window) {
  std::vector<HWND> found;
  EnumChildWindows(
      window,
      [](HWND child, LPARAM list) -> BOOL {
        reinterpret_cast<std::vector<HWND> *>(list)->push_back(child);
        return TRUE;
      },
      reinterpret_cast<LPARAM>(&found));
  return found;
}

inline std::string without_mnemonic(std::string label) {
  std::erase(label, '&');
  return label;
}
