// Ranks of the layered layout: which box stands above which. Circles are opened where a walk from
// the sources meets them; then every box takes the rank that keeps its arrows short.
#include <algorithm>
#include <numeric>

#include "core/events.h"
#include "editor/model/layered_work.h"

namespace velora {

namespace {

using Lists = std::vector<std::vector<int>>;

Lists successors(const LayeredWork &work) {
  Lists next(work.boxes.size());
  for (const LayeredArrow &edge : work.edges)
    next[static_cast<std::size_t>(edge.from)].push_back(edge.to);
  return next;
}

Lists predecessors(const LayeredWork &work) {
  Lists before(work.boxes.size());
  for (const LayeredArrow &edge : work.edges)
    before[static_cast<std::size_t>(edge.to)].push_back(edge.from);
  return before;
}

// Walks depth first and finds the edges that lead back to a box whose walk is still open.
class CircleFinder {
public:
  explicit CircleFinder(const Lists &next) : next_(next), state_(next.size(), kNew) {}

  void walk_from(int root, std::vector<LayeredArrow> &back) {
    if (state_[static_cast<std::size_t>(root)] != kNew)
      return;
    std::vector<std::pair<int, std::size_t>> open{{root, 0}};
    state_[static_cast<std::size_t>(root)] = kOpen;
    while (!open.empty()) {
      auto &[box, at] = open.back();
      const std::vector<int> &out = next_[static_cast<std::size_t>(box)];
      if (at == out.size()) {
        state_[static_cast<std::size_t>(box)] = kDone;
        open.pop_back();
        continue;
      }
      const int to = out[at++];
      char &known = state_[static_cast<std::size_t>(to)];
      if (known == kOpen)
        back.push_back({box, to});
      if (known != kNew)
        continue;
      known = kOpen;
      open.push_back({to, 0});
    }
  }

private:
  static constexpr char kNew = 0;
  static constexpr char kOpen = 1;
  static constexpr char kDone = 2;
  const Lists &next_;
  std::vector<char> state_;
};

bool same_ends(const LayeredArrow &a, const LayeredArrow &b) {
  return a.from == b.from && a.to == b.to;
}

bool before_by_ends(const LayeredArrow &a, const LayeredArrow &b) {
  return a.from != b.from ? a.from < b.from : a.to < b.to;
}

// The boxes so that every edge leads forward.
std::vector<int> downward_order(const Lists &next) {
  std::vector<int> waiting(next.size());
  for (const std::vector<int> &out : next)
    for (const int to : out)
      ++waiting[static_cast<std::size_t>(to)];
  std::vector<int> order;
  for (std::size_t i = 0; i < next.size(); ++i)
    if (waiting[i] == 0)
      order.push_back(static_cast<int>(i));
  for (std::size_t at = 0; at < order.size(); ++at)
    for (const int to : next[static_cast<std::size_t>(order[at])])
      if (--waiting[static_cast<std::size_t>(to)] == 0)
        order.push_back(to);
  return order;
}

// The ranks while they are being found.
struct Ranks {
  const LayeredWork &work;
  Lists next;
  Lists before;
  std::vector<int> order;
  std::vector<int> rank;

  int wish(int box) const { return work.boxes[static_cast<std::size_t>(box)].rank; }
  int &of(int box) { return rank[static_cast<std::size_t>(box)]; }

  // The highest place for each box.
  void start() {
    for (const int box : order) {
      int least = std::max(0, wish(box));
      for (const int from : before[static_cast<std::size_t>(box)])
        least = std::max(least, of(from) + 1);
      of(box) = least;
    }
  }

  // The lowest place for each box; wishes stay.
  void start_late() {
    start();
    const int lowest = *std::max_element(rank.begin(), rank.end());
    for (std::size_t i = order.size(); i-- > 0;) {
      if (wish(order[i]) >= 0)
        continue;
      int most = lowest;
      for (const int to : next[static_cast<std::size_t>(order[i])])
        most = std::min(most, of(to) - 1);
      of(order[i]) = most;
    }
  }

  long length() {
    long total = 0;
    for (const LayeredArrow &edge : work.edges)
      total += of(edge.to) - of(edge.from);
    return total;
  }

  // Moves a box towards the side to which more of its edges lead, as far as it goes.
  bool settle(int box) {
    if (wish(box) >= 0)
      return false;
    const std::vector<int> &above = before[static_cast<std::size_t>(box)];
    const std::vector<int> &below = next[static_cast<std::size_t>(box)];
    int target = of(box);
    if (above.size() < below.size()) {
      target = of(below.front()) - 1;
      for (const int to : below)
        target = std::min(target, of(to) - 1);
    } else if (above.size() > below.size()) {
      target = 0;
      for (const int from : above)
        target = std::max(target, of(from) + 1);
    }
    const bool moved = target != of(box);
    of(box) = target;
    return moved;
  }

  // A group of boxes joined by edges of length 1 below a box moves down with it when the edges
  // that become shorter are more than those that become longer.
  bool sink_group(int seed) {
    std::vector<int> group{seed};
    std::vector<char> inside(rank.size());
    inside[static_cast<std::size_t>(seed)] = 1;
    long gain = 0;
    for (std::size_t at = 0; at < group.size(); ++at) {
      if (wish(group[at]) >= 0)
        return false;
      for (const int to : next[static_cast<std::size_t>(group[at])]) {
        if (of(to) != of(group[at]) + 1 || inside[static_cast<std::size_t>(to)] != 0)
          continue;
        inside[static_cast<std::size_t>(to)] = 1;
        group.push_back(to);
      }
    }
    for (const int box : group) {
      for (const int to : next[static_cast<std::size_t>(box)])
        gain += inside[static_cast<std::size_t>(to)] == 0 ? 1 : 0;
      for (const int from : before[static_cast<std::size_t>(box)])
        gain -= inside[static_cast<std::size_t>(from)] == 0 ? 1 : 0;
    }
    if (gain <= 0)
      return false;
    for (const int box : group)
      ++of(box);
    return true;
  }

  void shorten() {
    const std::size_t most = 16;
    bool moved = true;
    for (std::size_t pass = 0; pass < most && moved; ++pass) {
      CheckForUserEvents(0);
      moved = false;
      for (std::size_t i = order.size(); i-- > 0;)
        moved = settle(order[i]) || moved;
      for (const int box : order)
        moved = settle(box) || moved;
      // Looking at groups costs more, so it is left out where the picture is very large.
      if (order.size() <= 300)
        for (const int box : order)
          while (sink_group(box))
            moved = true;
    }
  }

  // Empty ranks vanish.
  void close_gaps() {
    std::vector<int> used = rank;
    std::sort(used.begin(), used.end());
    used.erase(std::unique(used.begin(), used.end()), used.end());
    for (int &r : rank)
      r = static_cast<int>(std::lower_bound(used.begin(), used.end(), r) - used.begin());
  }
};

} // namespace

void break_circles(LayeredWork &work) {
  std::erase_if(work.edges, [](const LayeredArrow &edge) { return edge.from == edge.to; });
  const Lists next = successors(work);
  std::vector<LayeredArrow> back;
  CircleFinder finder(next);
  std::vector<char> entered(work.boxes.size());
  for (const LayeredArrow &edge : work.edges)
    entered[static_cast<std::size_t>(edge.to)] = 1;
  for (std::size_t i = 0; i < next.size(); ++i)
    if (entered[i] == 0)
      finder.walk_from(static_cast<int>(i), back);
  for (std::size_t i = 0; i < next.size(); ++i)
    finder.walk_from(static_cast<int>(i), back);
  std::sort(back.begin(), back.end(), before_by_ends);
  work.inputs.assign(work.boxes.size(), {});
  for (LayeredArrow &edge : work.edges) {
    if (std::binary_search(back.begin(), back.end(), edge, before_by_ends)) {
      std::swap(edge.from, edge.to);
      continue;
    }
    std::vector<int> &inputs = work.inputs[static_cast<std::size_t>(edge.to)];
    if (std::find(inputs.begin(), inputs.end(), edge.from) == inputs.end())
      inputs.push_back(edge.from);
  }
  std::stable_sort(work.edges.begin(), work.edges.end(), before_by_ends);
  work.edges.erase(std::unique(work.edges.begin(), work.edges.end(), same_ends), work.edges.end());
}

void assign_ranks(LayeredWork &work) {
  Ranks ranks{work, successors(work), predecessors(work), {}, {}};
  ranks.order = downward_order(ranks.next);
  ranks.rank.assign(work.boxes.size(), 0);
  ranks.start();
  ranks.shorten();
  const long length = ranks.length();
  std::vector<int> early = ranks.rank;
  ranks.start_late();
  ranks.shorten();
  if (ranks.length() >= length)
    ranks.rank = std::move(early);
  ranks.close_gaps();
  work.rank = std::move(ranks.rank);
}

void make_items(LayeredWork &work, int bend_width) {
  work.items.assign(work.boxes.size(), {});
  int lowest = 0;
  for (std::size_t i = 0; i < work.boxes.size(); ++i) {
    LayerItem &item = work.items[i];
    item.box = static_cast<int>(i);
    item.row = work.rank[i];
    item.width = work.boxes[i].width;
    lowest = std::max(lowest, item.row);
  }
  const auto join = [&work](int upper, int lower) {
    work.items[static_cast<std::size_t>(upper)].down.push_back(lower);
    work.items[static_cast<std::size_t>(lower)].up.push_back(upper);
  };
  for (const LayeredArrow &edge : work.edges) {
    int upper = edge.from;
    const int end_row = work.rank[static_cast<std::size_t>(edge.to)];
    for (int row = work.rank[static_cast<std::size_t>(edge.from)] + 1; row < end_row; ++row) {
      const int bend = static_cast<int>(work.items.size());
      work.items.emplace_back();
      work.items.back().row = row;
      work.items.back().width = bend_width;
      join(upper, bend);
      upper = bend;
    }
    join(upper, edge.to);
  }
  work.rows.assign(static_cast<std::size_t>(lowest) + 1, {});
  for (std::size_t i = 0; i < work.items.size(); ++i)
    work.rows[static_cast<std::size_t>(work.items[i].row)].push_back(static_cast<int>(i));
}

} // namespace velora
