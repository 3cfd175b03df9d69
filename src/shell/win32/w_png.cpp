// The system's library of images is started for one file and ended again.
#include "shell/win32/w_png.h"

#include <ole2.h>

#include <algorithm>

namespace Gdiplus {
using std::max;
using std::min;
} // namespace Gdiplus
#include <gdiplus.h>

namespace velora::win32 {

namespace {

constexpr CLSID kPngWriter = {
    0x557CF406, 0x1A04, 0x11D3, {0x9A, 0x73, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}};

class ImageLibrary {
public:
  ImageLibrary() {
    const Gdiplus::GdiplusStartupInput plain;
    started_ = Gdiplus::GdiplusStartup(&token_, &plain, nullptr) == Gdiplus::Ok;
  }
  ~ImageLibrary() {
    if (started_)
      Gdiplus::GdiplusShutdown(token_);
  }
  ImageLibrary(const ImageLibrary &) = delete;
  ImageLibrary &operator=(const ImageLibrary &) = delete;
  [[nodiscard]] bool started() const { return started_; }

private:
  ULONG_PTR token_ = 0;
  bool started_ = false;
};

// What was written to a stream in memory.
std::string content_of(IStream *stream) {
  HGLOBAL block = nullptr;
  STATSTG told{};
  if (GetHGlobalFromStream(stream, &block) != S_OK || stream->Stat(&told, STATFLAG_NONAME) != S_OK)
    return {};
  const auto *bytes = static_cast<const char *>(GlobalLock(block));
  if (bytes == nullptr)
    return {};
  std::string content(bytes, static_cast<std::size_t>(told.cbSize.QuadPart));
  GlobalUnlock(block);
  return content;
}

} // namespace

std::string png_of(HBITMAP bitmap) {
  const ImageLibrary library;
  IStream *stream = nullptr;
  if (!library.started() || CreateStreamOnHGlobal(nullptr, TRUE, &stream) != S_OK)
    return {};
  std::string content;
  {
    Gdiplus::Bitmap image(bitmap, nullptr);
    if (image.Save(stream, &kPngWriter, nullptr) == Gdiplus::Ok)
      content = content_of(stream);
  }
  stream->Release();
  return content;
}

} // namespace velora::win32
