// Questions about who calls whom, over the pairs of one link set: callers, callees, roots, ways,
// circles, what cannot be reached. Called by the commands of the network and of the terminal.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "network/links.h"

namespace velora {

// The functions of a set, numbered from 0 in order of first appearance. Lists keep the order of
// the pairs.
class CallGraph {
public:
  explicit CallGraph(const PairList &pairs);

  [[nodiscard]] int count() const { return static_cast<int>(names_.size()); }
  [[nodiscard]] const std::string &name(int number) const { return names_[index(number)]; }
  // The number of a function, -1 when the set does not name it.
  [[nodiscard]] int number(std::string_view name) const;
  [[nodiscard]] const std::vector<int> &callees(int number) const {
    return callees_[index(number)];
  }
  [[nodiscard]] const std::vector<int> &callers(int number) const {
    return callers_[index(number)];
  }

  // The functions that nobody calls.
  [[nodiscard]] std::vector<int> roots() const;
  // A shortest way from one function to another, both included; empty when there is none.
  [[nodiscard]] std::vector<int> shortest_way(int from, int to) const;
  // All functions that stand on some way from one to another, in number order.
  [[nodiscard]] std::vector<int> on_all_ways(int from, int to) const;
  // Whether each function is reached from any of `roots`, which reach themselves.
  [[nodiscard]] std::vector<bool> reached(const std::vector<int> &roots) const;
  // The same against the arrows, and no farther than `depth` steps when that is not negative.
  [[nodiscard]] std::vector<bool> walk(const std::vector<int> &starts, bool forward,
                                       int depth) const;
  // Groups of two and more functions that call each other in a circle.
  [[nodiscard]] std::vector<std::vector<int>> circles() const;

private:
  static std::size_t index(int number) { return static_cast<std::size_t>(number); }
  int add(const std::string &name);

  std::vector<std::string> names_;
  std::unordered_map<std::string, int> numbers_;
  std::vector<std::vector<int>> callees_;
  std::vector<std::vector<int>> callers_;
};

// Groups of two and more numbers that lead to each other, given where each number leads; each group
// in ascending order, groups by their least number.
std::vector<std::vector<int>> circles_of(const std::vector<std::vector<int>> &next);

// The calls of the code as it is now, calls of a function to itself included, and the functions
// that have clauses. They are read from the database's file, or from memory when the code has
// changed since it was saved or belongs to no file.
struct CurrentCalls {
  CallGraph graph;
  std::vector<std::string> defined; // in order of their first clause
  [[nodiscard]] bool knows(std::string_view name) const;
};
CurrentCalls current_calls();

} // namespace velora
