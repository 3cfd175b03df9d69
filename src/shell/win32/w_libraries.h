// The libraries of the language for the desktop program: files beside it, or else those inside it.
#pragma once

#include <string>

namespace velora::win32 {

// The folder of the program, with a separator at its end.
std::string program_folder();

// The folder that the libraries are read from while in scope. Library files beside the program, or
// in its folder "lib", come first; without them those inside the program are written to a folder
// among the temporary files, which goes at the end.
class Libraries {
public:
  Libraries();
  ~Libraries();
  Libraries(const Libraries &) = delete;
  Libraries &operator=(const Libraries &) = delete;
  [[nodiscard]] const std::string &folder() const { return folder_; }

private:
  std::string folder_;
  bool unpacked_ = false;
};

} // namespace velora::win32
