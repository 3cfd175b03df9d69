// The pages of help of evaluation control, definitions at run time and the clock.
#include "eval/help.h"

namespace velora {

constinit const std::span<const HelpRow> help_meta{};

} // namespace velora
