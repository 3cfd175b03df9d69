// The pages of help of the built-ins of arithmetic, comparison and control.
#include "eval/help.h"

namespace velora {

constinit const std::span<const HelpRow> help_own{};

} // namespace velora
