// What is known of a name: how it is declared, what its help page says, which names begin alike.
// Used by the terminal's commands, by completion and by the help windows of the desktops.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/records.h"
#include "platform/desk_windows.h"

namespace velora {

// "name ::= type" and the like, as the declaration reads.
std::string declaration_text(const symbol &s);

struct DeclaredName {
  std::string name;
  std::string declaration; // of it, as declaration_text answers
};
// The names that begin so, in the order of the alphabet, at most `most` of them.
std::vector<DeclaredName> names_beginning(std::string_view start, std::size_t most);

// The help page of a name, or its declaration when it has none; empty for a name that is not known.
std::string help_on_name(const std::string &name);

// The name that stands for a picture's window when help is asked for: that of the first node that
// is selected; empty without one.
std::string selected_name(WindowId win);

} // namespace velora
