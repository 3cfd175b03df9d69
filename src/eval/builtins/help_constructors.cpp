// The pages of help of the 23 built-in constructors.
#include "eval/help.h"

namespace velora {

constinit const std::span<const HelpRow> help_constructors{};

} // namespace velora
