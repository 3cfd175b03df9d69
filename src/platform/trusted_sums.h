// The sums of the database texts that the user trusts, kept in a file of the user's state folder, a
// line each, so that they hold for later runs too.
#pragma once

#include <string>

namespace velora {

// True when `sum` (as sha256 gives it) was trusted in this run or an earlier one.
bool is_trusted_sum(const std::string &sum);
// Trusts `sum` from now on. Where there is no state folder it holds for this run.
void trust_sum(const std::string &sum);
// Forgets what was read of the list, so that it is read anew; for tests.
void forget_trusted_sums();

} // namespace velora
