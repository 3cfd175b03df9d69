// What the user has declared and defined, as it is written: in sections that read back.
#pragma once

#include <string>

#include "core/records.h"

namespace velora {

// The declaration of a name and its clauses; for a type its constructors as well.
std::string listing_of(const symbol &s);
// Everything that is the user's, oldest first; empty when nothing is.
std::string own_listing();

} // namespace velora
