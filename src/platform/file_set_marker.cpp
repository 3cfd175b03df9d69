// Writing and reading of markers. A line for each stamp; the last line is the sum of all others, so
// that a marker that is cut off or changed is none.
#include "platform/file_set_marker.h"

#include <charconv>

#include "platform/sha256.h"

namespace velora {

namespace {

constexpr std::string_view kFirstLine = "velora save 1";
constexpr std::size_t kSumLength = 64;

std::string stamp_line(const char *what, const FileStamp &stamp) {
  if (!stamp.exists)
    return std::string(what) + " absent\n";
  return std::string(what) + ' ' + std::to_string(stamp.size) + ' ' + stamp.sum + '\n';
}

bool is_hex(std::string_view text, std::size_t length) {
  return text.size() == length &&
         text.find_first_not_of("0123456789abcdef") == std::string_view::npos;
}

// Takes the next line off `text`; false at its end.
bool next_line(std::string_view &text, std::string_view &line) {
  const std::size_t end = text.find('\n');
  if (end == std::string_view::npos)
    return false;
  line = text.substr(0, end);
  text.remove_prefix(end + 1);
  return true;
}

bool read_stamp(std::string_view line, std::string_view what, FileStamp &stamp) {
  if (!line.starts_with(what) || line.substr(what.size(), 1) != " ")
    return false;
  line.remove_prefix(what.size() + 1);
  if (line == "absent")
    return true;
  const std::size_t blank = line.find(' ');
  if (blank == std::string_view::npos || !is_hex(line.substr(blank + 1), kSumLength))
    return false;
  const char *end = line.data() + blank;
  const auto [stop, error] = std::from_chars(line.data(), end, stamp.size);
  stamp.exists = true;
  stamp.sum = line.substr(blank + 1);
  return error == std::errc() && stop == end;
}

} // namespace

std::string marker_text(const SetMarker &marker) {
  std::string text(kFirstLine);
  text += "\ntoken " + marker.token + '\n';
  for (const SetMarker::File &file : marker.files)
    text += stamp_line("old", file.old) + stamp_line("new", file.made);
  return text + "sum " + sha256(text) + '\n';
}

bool read_marker(std::string_view text, SetMarker &marker) {
  constexpr std::size_t kTokenLength = 16;
  const std::size_t last = text.rfind("sum ");
  if (last == std::string_view::npos ||
      text.substr(last) != "sum " + sha256(text.substr(0, last)) + '\n')
    return false;
  text = text.substr(0, last);
  std::string_view line;
  if (!next_line(text, line) || line != kFirstLine || !next_line(text, line) ||
      !line.starts_with("token ") || !is_hex(line.substr(6), kTokenLength))
    return false;
  marker.token = line.substr(6);
  while (next_line(text, line)) {
    SetMarker::File file;
    if (!read_stamp(line, "old", file.old) || !next_line(text, line) ||
        !read_stamp(line, "new", file.made))
      return false;
    marker.files.push_back(file);
  }
  return text.empty() && !marker.files.empty();
}

} // namespace velora
