// The pages of help of graphics windows, grid maps, plots and narration.
#include "eval/help.h"

namespace velora {

constinit const std::span<const HelpRow> help_graphics{};

} // namespace velora
