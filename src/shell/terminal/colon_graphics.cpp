// The command of the shell about graphics windows.
#include <charconv>

#include "eval/graphics_model.h"
#include "platform/response.h"
#include "shell/graphics_files.h"
#include "shell/terminal/colon.h"

namespace velora {

// ":graphics" lists the windows; ":graphics save N FILE" writes one as a picture.
int colon_graphics(const std::string &argument) {
  if (argument.empty()) {
    list_graphics();
    if (gBgrWinInfo == nullptr)
      DisplayResponse(
          "No graphics window is open; gr_open opens one, and the drawing built-ins draw "
          "into it\n\":graphics save N FILE.svg\" writes what window N shows as a "
          "picture\n");
    return 1;
  }
  constexpr std::string_view kSave = "save ";
  int window = 0;
  if (argument.starts_with(kSave)) {
    const char *end = argument.data() + argument.size();
    const char *start = argument.data() + argument.find_first_not_of(' ', kSave.size());
    const auto [stop, error] = std::from_chars(start, end, window);
    const std::size_t file =
        argument.find_first_not_of(' ', static_cast<std::size_t>(stop - argument.data()));
    if (error == std::errc() && stop != end && *stop == ' ' && file != std::string::npos)
      return save_graphics(window, argument.substr(file).c_str());
  }
  return report_use(":graphics, or :graphics save N FILE.svg");
}

} // namespace velora
