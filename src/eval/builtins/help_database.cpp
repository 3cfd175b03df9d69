// The pages of help of databases and types at run time.
#include "eval/help.h"

namespace velora {

constinit const std::span<const HelpRow> help_database{};

} // namespace velora
