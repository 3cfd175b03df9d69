// Call links: which names the clauses of each function mention, read from the database file, as
// numbered sets of pairs that can be narrowed to the descendants or ancestors of a function. The
// link built-ins, the layout of networks and their filters call it.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace velora {

// One function of the file with the distinct names that its clauses mention, in order of first
// mention.
struct ArrayEntry {
  std::string name;
  std::vector<std::string> mentions;
};
// The scan table: one entry for each function that has clauses, in order of first appearance.
extern std::vector<ArrayEntry> ARRAY;

// One link. Status bit 16: the function at that end calls itself.
struct Pair {
  std::string first;
  int f_status = 0;
  std::string arc = "~";
  std::string second;
  int s_status = 0;
  int segno = 0;
};
using PairList = std::vector<Pair>;
// The pairs being made.
extern PairList ipairs;
inline constexpr int kCallsItself = 16;

// A numbered link set.
struct Links {
  int id;
  PairList ipr;
};
// All sets in order of their numbers; set 1 is that of the whole database.
extern std::vector<std::unique_ptr<Links>> links;

// Fills ARRAY from a database file. "Cannot open ddb file" through the error exit.
void scan_file_to_ARRAY(const std::string &filename);
// Fills ARRAY from the text of a database file.
void scan_text_to_ARRAY(std::string_view text);
// Makes one pair for each entry and mention.
void ARRAY_to_ipairs();
// Takes out the pairs of a function with itself, and sets `recbit` on the first other pair that
// names it.
void remove_self_recursions(int recbit);
// Takes out every pair that equals an earlier one in both names.
void remove_duplicates();

// Builds set 1 from the open database's file.
void MakeFirstLinkage();
// The set of that number, or null.
Links *find_links(int num);
// Derives a set from set `num`: what is reachable from `name` (op 155) or what reaches it (156).
// Answers the new number, or 0 when there is no set `num`.
int bi_link_filters(int op, int num, const std::string &name);
// Shows a set as a network picture; 1, or 0 when the set does not exist or is empty.
int bi_link_show(int num);

// Frees all sets. Called when the database is saved or closed.
void free_linkages();

} // namespace velora
