// A file of the C library that is closed when its handle goes.
#pragma once

#include <cstdio>
#include <memory>

namespace velora {

struct FileCloser {
  void operator()(std::FILE *file) const { std::fclose(file); }
};
using FileHandle = std::unique_ptr<std::FILE, FileCloser>;

// A stream on an open descriptor, which it closes; `mode` as for fopen.
std::FILE *stream_of(int fd, const char *mode);

} // namespace velora
