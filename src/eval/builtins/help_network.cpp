// The pages of help of the function network.
#include "eval/help.h"

namespace velora {

constinit const std::span<const HelpRow> help_network{};

} // namespace velora
