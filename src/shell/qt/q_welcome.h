// The page at the start: a new database, one to open, recent ones, examples, first steps.
#pragma once

namespace velora::qt {

void show_welcome();
void close_welcome();

} // namespace velora::qt
