// The pages of help of whole files of lines and of tab-separated tables.
#include "eval/help.h"

namespace velora {

constinit const std::span<const HelpRow> help_whole_files{};

} // namespace velora
