// The pages of help of mathematics, the combinators and matrices.
#include "eval/help.h"

namespace velora {

constinit const std::span<const HelpRow> help_maths{};

} // namespace velora
