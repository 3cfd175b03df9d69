// Stamps of contents.
#include "platform/file_stamp.h"

#include "platform/interrupt.h"
#include "platform/sha256.h"
#include "platform/whole_file.h"

namespace velora {

FileStamp stamp_of_text(std::string_view text) {
  return {true, text.size(), sha256(text)};
}

FileStamp stamp_of(const std::string &name) {
  const InterruptHold whole; // what was read in part would look like somebody's change
  std::string text;
  if (read_plain_file(name, text))
    return stamp_of_text(text);
  return {file_exists(name), 0, {}};
}

} // namespace velora
