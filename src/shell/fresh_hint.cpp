// The words that a fresh picture window begins with, by its kind.
#include "shell/fresh_hint.h"

#include <array>
#include <string_view>

#include "platform/text_measures.h"

namespace velora {

namespace {

using Lines = std::array<std::string_view, 3>;

constexpr Lines kFunctionLines{"F4 names the function. Then type what it does,",
                               "or choose a tool and click here.",
                               "Get Function in the Find menu shows a stored picture."};
constexpr Lines kTypeLines{"Type the type, Enter, a constructor, Enter, what it takes, Enter, ...",
                           "or choose a tool and click here.",
                           "Get DataType in the Find menu shows a stored picture."};
constexpr Lines kNetworkLines{"Create Network from DataBase in the Find menu draws",
                              "which function calls which."};

constexpr Colour kGrey{128, 128, 128};
constexpr Point kPlace{24, 48};

const Lines &lines_of(int wtype) {
  return wtype == kNetworkPicture        ? kNetworkLines
         : wtype == kConstructorsPicture ? kTypeLines
                                         : kFunctionLines;
}

} // namespace

void draw_fresh_hint(const WinInfo *wi, Canvas &canvas) {
  if (wi->seg_ct > 0)
    return;
  constexpr Font kFont{10, false, false};
  Point at = kPlace;
  for (const std::string_view line : lines_of(wi->wtype)) {
    canvas.text(at, line, kFont, kGrey);
    at.y += measured_height(kFont) + 4;
  }
}

} // namespace velora
