// The pages of help of the list built-ins.
#include "eval/help.h"

namespace velora {

constinit const std::span<const HelpRow> help_lists{};

} // namespace velora
