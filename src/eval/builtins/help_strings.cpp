// The pages of help of strings and conversions.
#include "eval/help.h"

namespace velora {

namespace {

constexpr HelpRow kRows[] = {
    {"str_concat",
     "list str -> str",
     "Joins the strings of a list without anything between them.",
     {{R"(str_concat ["ab" "" "cd"])", R"("abcd")"}, {"str_concat nil", R"("")"}},
     "a list that holds anything but strings."},
};

} // namespace

constinit const std::span<const HelpRow> help_strings = kRows;

} // namespace velora
