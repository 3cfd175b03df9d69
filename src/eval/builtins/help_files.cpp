// The pages of help of reading and writing text files by name.
#include "eval/help.h"

namespace velora {

constinit const std::span<const HelpRow> help_files{};

} // namespace velora
