// The command line of the terminal program.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "shell/network_files.h"

namespace velora {

// What the user asked for on the command line; numbers are 0 where nothing was asked.
struct Options {
  bool batch = false;
  bool help = false;
  bool version = false;
  bool builtins_page = false;
  bool notes = true;
  bool answer_notes = true;
  bool strict = false;
  int seconds = 0;  // --timeout
  std::string test; // --test, a file of queries and answers
  bool trust = false;
  std::vector<std::string> queries; // --eval, in order
  std::string lib_dir;
  std::string database;
  std::string graphics_dir;
  std::string draw;       // --draw, the name of a picture
  std::string draw_file;  // -o
  std::string events;     // --events, an event script
  NetworkRequest network; // --network and what stands with it
  std::int32_t space = 0;
  std::int64_t max_space = 0;
  int nesting = 0;
};

// Reads the words after the program's name into `options`. False when they are not understood;
// `complaint` then says why, in one line.
bool read_options(const std::vector<std::string> &words, Options &options, std::string &complaint);

// The text of --help.
std::string usage_text();

} // namespace velora
