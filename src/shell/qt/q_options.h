// The command line of the native desktop program.
#pragma once

#include <string>
#include <vector>

namespace velora::qt {

struct Options {
  std::string database;
  std::string lib_dir;
  std::string events;     // a script of events to run
  std::string screenshot; // the file that the frame is saved in before the program ends
  bool notes = true;
  bool help = false;
  bool version = false;
};

// Reads the words behind the program's name; false with a complaint when they cannot be understood.
bool read_options(const std::vector<std::string> &words, Options &options, std::string &complaint);
const char *usage_text();

} // namespace velora::qt
