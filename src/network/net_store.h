// The stored network picture of the whole database, "$$NETWORK$$" component 0.
#pragma once

namespace velora {

// Rebuilds the stored network picture from the database file. Boxes that the user moved keep their
// places. "There are no links in the Network" through the error exit. Answers 1.
int StoreNetwork();

} // namespace velora
