// The headers of the window system, with the settings that all files of this folder share, and
// scope objects for its handles.
#pragma once

#ifndef UNICODE
#define UNICODE
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef _WIN32_WINNT
#define _WIN32_WINNT 0x0A00
#endif

#include <windows.h>

#include <commctrl.h>
#include <commdlg.h>
#include <shellapi.h>

#include <memory>

namespace velora::win32 {

// A handle of the graphics interface, deleted at the end of its scope.
struct DeleteGdi {
  void operator()(HGDIOBJ handle) const { DeleteObject(handle); }
};
using GdiHandle = std::unique_ptr<void, DeleteGdi>;

// The drawing surface of a window's inside.
class WindowDC {
public:
  explicit WindowDC(HWND window) : window_(window), dc_(GetDC(window)) {}
  ~WindowDC() { ReleaseDC(window_, dc_); }
  WindowDC(const WindowDC &) = delete;
  WindowDC &operator=(const WindowDC &) = delete;
  operator HDC() const { return dc_; }

private:
  HWND window_;
  HDC dc_;
};

// The painting of a window's inside, from its announcement to its end.
class Painting {
public:
  explicit Painting(HWND window) : window_(window) {
    BeginPaint(window_, &paint_);
    GetClientRect(window_, &inside_);
  }
  ~Painting() { EndPaint(window_, &paint_); }
  Painting(const Painting &) = delete;
  Painting &operator=(const Painting &) = delete;
  operator HDC() const { return paint_.hdc; }
  [[nodiscard]] const RECT &inside() const { return inside_; }
  // The part that has to be painted.
  [[nodiscard]] const RECT &dirty() const { return paint_.rcPaint; }
  // Shows what was drawn in memory, where the screen has to be painted.
  void copy_from(HDC memory) const {
    const RECT &dirty = paint_.rcPaint;
    BitBlt(paint_.hdc, dirty.left, dirty.top, dirty.right - dirty.left, dirty.bottom - dirty.top,
           memory, dirty.left, dirty.top, SRCCOPY);
  }

private:
  HWND window_;
  PAINTSTRUCT paint_{};
  RECT inside_{};
};

// A drawing surface in memory that keeps what is drawn until it is copied.
class MemoryDC {
public:
  MemoryDC(HDC like, int width, int height)
      : dc_(CreateCompatibleDC(like)), bitmap_(CreateCompatibleBitmap(like, width, height)),
        former_(SelectObject(dc_, bitmap_)) {}
  ~MemoryDC() {
    SelectObject(dc_, former_);
    DeleteObject(bitmap_);
    DeleteDC(dc_);
  }
  MemoryDC(const MemoryDC &) = delete;
  MemoryDC &operator=(const MemoryDC &) = delete;
  operator HDC() const { return dc_; }

private:
  HDC dc_;
  HBITMAP bitmap_;
  HGDIOBJ former_;
};

// Selects an object and puts the former one back.
class Selected {
public:
  Selected(HDC dc, HGDIOBJ object) : dc_(dc), former_(SelectObject(dc, object)) {}
  ~Selected() { SelectObject(dc_, former_); }
  Selected(const Selected &) = delete;
  Selected &operator=(const Selected &) = delete;

private:
  HDC dc_;
  HGDIOBJ former_;
};

} // namespace velora::win32
