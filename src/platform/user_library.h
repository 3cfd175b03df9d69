// The user's own shared library behind the built-in `user_fun`: found by VELORA_USER_LIBRARY,
// loaded at the first call, kept until the program ends.
#pragma once

#include <string>
#include <vector>

#include "platform/user_table.h"

namespace velora {

// Calls function `number` of the user's library with `texts`; true when it gave an `answer`.
// Without a library, or with one that does not fit, shows why once and answers false.
bool call_user_library(int number, const std::vector<std::string> &texts, std::string &answer);

// The exported function `name` of the shared library `file`, which stays loaded; null with a
// reason in `why` when there is none. One definition for each system.
void *load_library_symbol(const char *file, const char *name, std::string &why);

} // namespace velora
