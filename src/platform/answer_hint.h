// What stands in a dialog for a text that suggests nothing. Who asks tells by it that the user left
// the text as it was.
#pragma once

namespace velora {

inline constexpr const char *kAnswerHint = "Please type here";

} // namespace velora
