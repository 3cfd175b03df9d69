// Reading a file once and whole. A read error is an error and never the end of the file: what could
// not be read whole is not read at all.
#pragma once

#include <cstddef>
#include <string>

namespace velora {

// Beyond this many bytes nothing is read: so long a file is an endless one.
inline constexpr std::size_t kLargestFile = std::size_t{1} << 30;

// Reads all of a file, device or pipe into `text`. False, with errno set, when it cannot be opened,
// cannot be read to its end, is too large, or when the user interrupts the reading (EINTR).
bool read_whole_file(const std::string &name, std::string &text);
// The same, but of a plain file alone: a pipe would wait for its other end, and a device has none.
// These fail with EINVAL, which file_error_text puts into words.
bool read_plain_file(const std::string &name, std::string &text);

// True when a directory entry of that name stands, or may stand where we are not let to look; a
// link that leads nowhere counts.
bool file_exists(const std::string &name);

// What `error` means for `name`, such as "x.ddb: Permission denied"; what a link leads to is said.
std::string file_error_text(const std::string &name, int error);

} // namespace velora
