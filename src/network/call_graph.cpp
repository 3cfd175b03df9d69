// The walks behind the questions about calls. None recurses, so chains of any length are safe.
#include "network/call_graph.h"

#include <algorithm>
#include <deque>

#include "core/events.h"
#include "core/symbols.h"
#include "db/commit.h"
#include "db/f_dbops.h"

namespace velora {

CallGraph::CallGraph(const PairList &pairs) {
  for (const Pair &pair : pairs) {
    const int caller = add(pair.first);
    const int callee = add(pair.second);
    callees_[index(caller)].push_back(callee);
    callers_[index(callee)].push_back(caller);
  }
}

int CallGraph::add(const std::string &name) {
  const auto [place, fresh] = numbers_.try_emplace(name, count());
  if (fresh) {
    names_.push_back(name);
    callees_.emplace_back();
    callers_.emplace_back();
  }
  return place->second;
}

int CallGraph::number(std::string_view name) const {
  const auto found = numbers_.find(std::string(name));
  return found == numbers_.end() ? -1 : found->second;
}

std::vector<int> CallGraph::roots() const {
  std::vector<int> found;
  for (int i = 0; i < count(); ++i)
    if (callers(i).empty())
      found.push_back(i);
  return found;
}

std::vector<int> CallGraph::shortest_way(int from, int to) const {
  std::vector<int> before(names_.size(), -1);
  std::deque<int> open{from};
  before[index(from)] = from;
  while (!open.empty() && before[index(to)] < 0) {
    CheckForUserEvents(0);
    const int at = open.front();
    open.pop_front();
    for (const int next : callees(at))
      if (before[index(next)] < 0) {
        before[index(next)] = at;
        open.push_back(next);
      }
  }
  std::vector<int> way;
  if (before[index(to)] < 0)
    return way;
  for (int at = to; at != from; at = before[index(at)])
    way.push_back(at);
  way.push_back(from);
  std::reverse(way.begin(), way.end());
  return way;
}

std::vector<bool> CallGraph::walk(const std::vector<int> &starts, bool forward, int depth) const {
  std::vector<bool> met(names_.size());
  std::vector<int> layer = starts;
  for (const int start : starts)
    met[index(start)] = true;
  for (int step = 0; !layer.empty() && (depth < 0 || step < depth); ++step) {
    std::vector<int> next;
    for (const int at : layer) {
      CheckForUserEvents(0);
      for (const int onward : forward ? callees(at) : callers(at))
        if (!met[index(onward)]) {
          met[index(onward)] = true;
          next.push_back(onward);
        }
    }
    layer = std::move(next);
  }
  return met;
}

std::vector<bool> CallGraph::reached(const std::vector<int> &roots) const {
  return walk(roots, true, -1);
}

std::vector<int> CallGraph::on_all_ways(int from, int to) const {
  const std::vector<bool> below = walk({from}, true, -1);
  const std::vector<bool> above = walk({to}, false, -1);
  std::vector<int> found;
  for (int i = 0; i < count(); ++i)
    if (below[index(i)] && above[index(i)])
      found.push_back(i);
  return found;
}

std::vector<std::vector<int>> CallGraph::circles() const {
  return circles_of(callees_);
}

namespace {

// Finds groups by one walk: a number's `low` is the earliest number still on the stack that it
// leads to; where that is the number itself, what stands above it on the stack is a group.
class CircleWalk {
public:
  explicit CircleWalk(const std::vector<std::vector<int>> &next)
      : next_(next), met_(next.size()), low_(next.size()), on_stack_(next.size()) {}

  void from(int root, std::vector<std::vector<int>> &groups) {
    if (met_[at(root)] != 0)
      return;
    enter(root);
    while (!open_.empty()) {
      CheckForUserEvents(0);
      auto &[number, edge] = open_.back();
      if (edge < next_[at(number)].size()) {
        const int to = next_[at(number)][edge++];
        if (met_[at(to)] == 0)
          enter(to);
        else if (on_stack_[at(to)])
          low_[at(number)] = std::min(low_[at(number)], met_[at(to)]);
        continue;
      }
      const int done = number;
      open_.pop_back();
      if (!open_.empty())
        low_[at(open_.back().first)] = std::min(low_[at(open_.back().first)], low_[at(done)]);
      if (low_[at(done)] == met_[at(done)])
        take_group(done, groups);
    }
  }

private:
  static std::size_t at(int number) { return static_cast<std::size_t>(number); }
  void enter(int number) {
    met_[at(number)] = low_[at(number)] = ++clock_;
    stack_.push_back(number);
    on_stack_[at(number)] = true;
    open_.emplace_back(number, 0);
  }
  void take_group(int first, std::vector<std::vector<int>> &groups) {
    std::vector<int> group;
    int taken = -1;
    while (taken != first) {
      taken = stack_.back();
      stack_.pop_back();
      on_stack_[at(taken)] = false;
      group.push_back(taken);
    }
    if (group.size() < 2)
      return;
    std::sort(group.begin(), group.end());
    groups.push_back(std::move(group));
  }

  const std::vector<std::vector<int>> &next_;
  std::vector<int> met_;
  std::vector<int> low_;
  std::vector<bool> on_stack_;
  std::vector<int> stack_;
  std::vector<std::pair<int, std::size_t>> open_;
  int clock_ = 0;
};

} // namespace

std::vector<std::vector<int>> circles_of(const std::vector<std::vector<int>> &next) {
  std::vector<std::vector<int>> groups;
  CircleWalk walk(next);
  for (std::size_t i = 0; i < next.size(); ++i)
    walk.from(static_cast<int>(i), groups);
  std::sort(groups.begin(), groups.end());
  return groups;
}

bool CurrentCalls::knows(std::string_view name) const {
  return graph.number(name) >= 0 ||
         std::find(defined.begin(), defined.end(), name) != defined.end();
}

CurrentCalls current_calls() {
  const std::string file = current_database_file();
  if (gSymbolTableChanged != 0 || file.empty())
    scan_text_to_ARRAY(database_text());
  else
    scan_file_to_ARRAY(file);
  PairList pairs;
  CurrentCalls calls{CallGraph(pairs), {}};
  for (const ArrayEntry &entry : ARRAY) {
    calls.defined.push_back(entry.name);
    for (const std::string &mention : entry.mentions)
      pairs.push_back({entry.name, 0, "~", mention, 0, 0});
  }
  ARRAY.clear();
  calls.graph = CallGraph(pairs);
  return calls;
}

} // namespace velora
