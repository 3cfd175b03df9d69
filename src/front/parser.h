// The command parser: files of Orvek text as a sequence of commands and sections, queries, and the
// commands typed at the console.
#pragma once

#include <string>

#include "core/trees.h"
#include "front/source.h"

namespace velora {

// How deeply files may load files.
inline constexpr int kMostLoads = 64;

// Reads commands from the source until its end or an empty statement, reporting and skipping what
// fails. Answers 1.
int parse();
// Runs the command whose first token is current. 1 or 0.
int p_command();

// Loads a file of commands. 1 when it could be opened; otherwise 0, after "Can't read from file %s"
// unless `silent`.
int load_file(const std::string &fname, int silent);
// The same of a file that messages call by another name.
int load_file(const std::string &fname, int silent, const ShownName &shown);
// The same for the text of a file that has been read. 1, or 0 when files load each other too
// deeply.
int load_text(const std::string &fname, std::string text);
int load_text(const std::string &fname, std::string text, const ShownName &shown);
// Called at the return point: says where a loading was abandoned and that its first part stays.
void settle_cut_off_load();
// The command `lload`: the token after the keyword is read here. 1, or 0 for a missing name.
int p_load_file();

// Parses a query, evaluates and prints it. The result of the printing, or 0.
int p_query();
// Parses a query up to its semicolon, for p_query and for those who want the term alone; empty on
// failure.
Tree p_query_term();
// Evaluates and prints a parsed query. A query that runs within another leaves that one's root as
// it was.
int run_query(Tree term);

} // namespace velora
