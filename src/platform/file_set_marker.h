// The marker of a replacement of several files: its token, and for each file what it held and what
// it is to hold. No paths stand in it. Private to file_set.cpp.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/file_stamp.h"

namespace velora {

struct SetMarker {
  std::string token;
  struct File {
    FileStamp old;
    FileStamp made;
  };
  std::vector<File> files;
};

std::string marker_text(const SetMarker &marker);
// False when the text is no whole marker.
bool read_marker(std::string_view text, SetMarker &marker);

} // namespace velora
