// Networks as files: the stored network or one made aside, drawn as SVG or written for other
// programs, by the ending of the file's name. Called by the menus and by the terminal program.
#pragma once

#include <string>

#include "editor/model/records.h"

namespace velora {

// What of the open database's network is written, and how.
struct NetworkRequest {
  std::string file;  // ends in .svg, .dot, .graphml or .csv
  std::string from;  // only what this function reaches; empty for all
  std::string to;    // only what reaches this function; with both, what stands on the ways between
  int depth = -1;    // no farther than that many calls from `from` or `to`
  unsigned hide = 0; // kinds that are left out (HiddenKind)
  bool tidy = false;
};

// True when the ending is one of those known.
bool is_network_file(const std::string &file);

// Writes a network picture; 1, or 0 after a message.
int write_network_picture(const WinInfo *wi, const std::string &file);

// Lays the network of the open database out and writes it; 1, or 0 after a message. No picture of
// the database changes. "There are no links in the Network" through the error exit.
int write_network(const NetworkRequest &request);

} // namespace velora
