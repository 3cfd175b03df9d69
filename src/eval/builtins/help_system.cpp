// The pages of help of the 32 system functions.
#include "eval/help.h"

namespace velora {

constinit const std::span<const HelpRow> help_system{};

} // namespace velora
