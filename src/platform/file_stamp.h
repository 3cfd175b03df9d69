// What a file held when it was last read or written, to notice that somebody has changed it since.
// Contents count, not the time: a copy put back is no change, and a change within the clock's step
// is one.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace velora {

struct FileStamp {
  bool exists = false;
  std::uintmax_t size = 0;
  std::string sum; // of the contents; empty for a file that cannot be read
  friend bool operator==(const FileStamp &, const FileStamp &) = default;
};

// Of what stands under that name now. A missing file has `exists` false.
FileStamp stamp_of(const std::string &name);
// Of a file that holds `text`.
FileStamp stamp_of_text(std::string_view text);

} // namespace velora
