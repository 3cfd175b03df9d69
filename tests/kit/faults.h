// Allocations that fail on purpose: operator new and the C allocation functions as the engine calls
// them. Linked into the unit tests only.
#pragma once

namespace velora::kit {

// Makes the `n`-th allocation from now (1 is the next) fail once; 0 calls it off.
void fail_allocation(long n);

// True when the failure asked for has happened.
bool allocation_failed();

} // namespace velora::kit
