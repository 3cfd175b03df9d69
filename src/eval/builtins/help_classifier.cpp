// The pages of help of the Bayesian classifier.
#include "eval/help.h"

namespace velora {

constinit const std::span<const HelpRow> help_classifier{};

} // namespace velora
