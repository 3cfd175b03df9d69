// The order of the rows of the layered layout. Every item is drawn towards the middle of its
// neighbours in the row above, then below, over and over; neighbours in a row change places where
// that saves crossings; the best order met is kept.
#include <algorithm>
#include <cmath>
#include <numeric>
#include <queue>

#include "core/events.h"
#include "editor/model/layered_work.h"

namespace velora {

namespace {

using Rows = std::vector<std::vector<int>>;

// Steps of work after which no further try is begun; a step is about one edge looked at once.
constexpr long kMostWork = 4'000'000;
constexpr int kMostRounds = 24;
constexpr int kPatience = 7; // rounds without a better order

// Counts, for numbers that come one by one, how many of those before were greater.
class InversionCounter {
public:
  explicit InversionCounter(std::size_t size) : sums_(size + 1) {}
  long greater_than(std::size_t value) const {
    long below = 0;
    for (std::size_t i = value + 1; i > 0; i -= i & (~i + 1))
      below += sums_[i];
    return count_ - below;
  }
  void add(std::size_t value) {
    ++count_;
    for (std::size_t i = value + 1; i < sums_.size(); i += i & (~i + 1))
      ++sums_[i];
  }

private:
  std::vector<long> sums_;
  long count_ = 0;
};

class RowOrder {
public:
  explicit RowOrder(LayeredWork &work) : work_(work), place_(work.items.size()) {
    for (const LayerItem &item : work.items)
      edges_ += static_cast<long>(item.down.size());
  }

  // Rows in the order in which a walk down (or up) from the boxes meets their items.
  void start(bool downwards) {
    std::vector<char> met(work_.items.size());
    Rows fresh(work_.rows.size());
    const auto visit = [&](int root) {
      std::vector<int> open{root};
      while (!open.empty()) {
        const int item = open.back();
        open.pop_back();
        if (met[static_cast<std::size_t>(item)] != 0)
          continue;
        met[static_cast<std::size_t>(item)] = 1;
        const LayerItem &at = work_.items[static_cast<std::size_t>(item)];
        fresh[static_cast<std::size_t>(at.row)].push_back(item);
        const std::vector<int> &onward = downwards ? at.down : at.up;
        open.insert(open.end(), onward.rbegin(), onward.rend());
      }
    };
    for (std::size_t i = 0; i < work_.items.size(); ++i)
      if ((downwards ? work_.items[i].up : work_.items[i].down).empty())
        visit(static_cast<int>(i));
    work_.rows = std::move(fresh);
    note_places();
  }

  // Improves the order at hand; answers its crossings.
  long improve() {
    Rows best = work_.rows;
    long least = crossings();
    int idle = 0;
    for (int round = 0; round < kMostRounds && least > 0 && idle < kPatience; ++round) {
      if (spent_ > kMostWork)
        break;
      CheckForUserEvents(0);
      const bool downwards = round % 2 == 0;
      sweep(downwards);
      exchange(round % 4 >= 2);
      const long now = crossings();
      ++idle;
      if (now >= least)
        continue;
      if (now < least - least / 100)
        idle = 0;
      least = now;
      best = work_.rows;
    }
    work_.rows = std::move(best);
    note_places();
    return least;
  }

private:
  long crossings() {
    long total = 0;
    for (std::size_t r = 0; r + 1 < work_.rows.size(); ++r)
      total += between(r);
    spent_ += 4 * edges_;
    return total;
  }

  void note_places() {
    for (const std::vector<int> &row : work_.rows)
      for (std::size_t i = 0; i < row.size(); ++i)
        place_[static_cast<std::size_t>(row[i])] = static_cast<int>(i);
  }

  const LayerItem &item(int number) const { return work_.items[static_cast<std::size_t>(number)]; }
  int place(int number) const { return place_[static_cast<std::size_t>(number)]; }

  void sort_places(const std::vector<int> &items, std::vector<int> &places) const {
    places.clear();
    for (const int i : items)
      places.push_back(place(i));
    std::sort(places.begin(), places.end());
  }

  long between(std::size_t r) const {
    InversionCounter counter(work_.rows[r + 1].size());
    std::vector<int> ends;
    long total = 0;
    for (const int i : work_.rows[r]) {
      sort_places(item(i).down, ends);
      for (const int end : ends)
        total += counter.greater_than(static_cast<std::size_t>(end));
      for (const int end : ends)
        counter.add(static_cast<std::size_t>(end));
    }
    return total;
  }

  // Where its neighbours on one side draw an item; its own place when it has none there.
  double drawn_to(int number, bool from_above) {
    const std::vector<int> &neighbours = from_above ? item(number).up : item(number).down;
    if (neighbours.empty())
      return -1;
    if (neighbours.size() == 1)
      return place(neighbours.front());
    std::vector<int> &places = scratch_;
    sort_places(neighbours, places);
    const std::size_t middle = places.size() / 2;
    if (places.size() % 2 == 1)
      return places[middle];
    if (places.size() == 2)
      return (places[0] + places[1]) / 2.0;
    // Of an even number the middle two, the nearer the denser side.
    const double left = places[middle - 1] - places.front();
    const double right = places.back() - places[middle];
    if (left + right == 0)
      return (places[middle - 1] + places[middle]) / 2.0;
    return (places[middle - 1] * right + places[middle] * left) / (left + right);
  }

  // Sorts a row by where its items are drawn to; those that nothing draws keep their places.
  void sort_row(std::vector<int> &row, bool from_above) {
    std::vector<std::pair<double, int>> drawn;
    for (const int i : row)
      if (const double to = drawn_to(i, from_above); to >= 0)
        drawn.emplace_back(to, i);
    std::stable_sort(drawn.begin(), drawn.end(),
                     [](const auto &a, const auto &b) { return a.first < b.first; });
    std::size_t next = 0;
    for (int &slot : row)
      if (!(from_above ? item(slot).up : item(slot).down).empty())
        slot = drawn[next++].second;
    for (std::size_t i = 0; i < row.size(); ++i)
      place_[static_cast<std::size_t>(row[i])] = static_cast<int>(i);
  }

  void sweep(bool downwards) {
    const std::size_t count = work_.rows.size();
    for (std::size_t r = 1; r < count; ++r)
      sort_row(work_.rows[downwards ? r : count - 1 - r], downwards);
    spent_ += 8 * edges_;
  }

  // How many crossings two neighbours of a row have with each other, seen on one side.
  static long pair_crossings(const std::vector<int> &left, const std::vector<int> &right) {
    long total = 0;
    std::size_t below = 0;
    for (const int end : left) {
      while (below < right.size() && right[below] < end)
        ++below;
      total += static_cast<long>(below);
    }
    return total;
  }

  // Lets neighbours change places as long as that saves crossings. With `on_ties` they also do
  // when it costs nothing, which leads out of dead ends.
  void exchange(bool on_ties) {
    bool better = true;
    for (int pass = 0; better && pass < 12 && spent_ < kMostWork; ++pass) {
      better = false;
      for (std::vector<int> &row : work_.rows)
        better = exchange_in(row, on_ties && pass == 0) || better;
      spent_ += 6 * edges_;
    }
  }

  bool exchange_in(std::vector<int> &row, bool on_ties) {
    if (row.size() < 2)
      return false;
    bool better = false;
    // The neighbours' places stand still while a row changes, so they are sorted once.
    std::vector<std::vector<int>> &ups = ups_;
    std::vector<std::vector<int>> &downs = downs_;
    if (ups.size() < row.size()) {
      ups.resize(row.size());
      downs.resize(row.size());
    }
    for (std::size_t i = 0; i < row.size(); ++i) {
      sort_places(item(row[i]).up, ups[i]);
      sort_places(item(row[i]).down, downs[i]);
    }
    for (std::size_t i = 0; i + 1 < row.size(); ++i) {
      const long now = pair_crossings(ups[i], ups[i + 1]) + pair_crossings(downs[i], downs[i + 1]);
      if (now == 0 && !on_ties)
        continue;
      const long then = pair_crossings(ups[i + 1], ups[i]) + pair_crossings(downs[i + 1], downs[i]);
      if (then > now || (then == now && !on_ties))
        continue;
      better = better || then < now;
      std::swap(row[i], row[i + 1]);
      std::swap(ups[i], ups[i + 1]);
      std::swap(downs[i], downs[i + 1]);
    }
    for (std::size_t i = 0; i < row.size(); ++i)
      place_[static_cast<std::size_t>(row[i])] = static_cast<int>(i);
    return better;
  }

  LayeredWork &work_;
  std::vector<int> place_;
  long edges_ = 0;
  long spent_ = 0;
  // Kept between calls so that their room is used again.
  std::vector<int> scratch_;
  std::vector<std::vector<int>> ups_;
  std::vector<std::vector<int>> downs_;
};

// Keys that put the inputs of every box from left to right: a walk up from the results counts the
// boxes without inputs, and a box stands in the middle of its own.
std::vector<double> input_keys(const LayeredWork &work) {
  const std::size_t count = work.boxes.size();
  std::vector<double> key(count, -1);
  std::vector<char> met(count);
  std::vector<char> feeds(count);
  for (const std::vector<int> &inputs : work.inputs)
    for (const int from : inputs)
      feeds[static_cast<std::size_t>(from)] = 1;
  double leaves = 0;
  const auto close = [&](int box) {
    const std::vector<int> &inputs = work.inputs[static_cast<std::size_t>(box)];
    double sum = 0;
    int known = 0;
    for (const int from : inputs)
      if (key[static_cast<std::size_t>(from)] >= 0) {
        sum += key[static_cast<std::size_t>(from)];
        ++known;
      }
    key[static_cast<std::size_t>(box)] = known != 0 ? sum / known : leaves++;
  };
  const auto visit = [&](int root) {
    std::vector<std::pair<int, std::size_t>> open{{root, 0}};
    met[static_cast<std::size_t>(root)] = 1;
    while (!open.empty()) {
      auto &[box, at] = open.back();
      const std::vector<int> &inputs = work.inputs[static_cast<std::size_t>(box)];
      if (at == inputs.size()) {
        close(box);
        open.pop_back();
        continue;
      }
      const int from = inputs[at++];
      if (met[static_cast<std::size_t>(from)] != 0)
        continue;
      met[static_cast<std::size_t>(from)] = 1;
      open.push_back({from, 0});
    }
  };
  for (std::size_t i = 0; i < count; ++i)
    if (feeds[i] == 0)
      visit(static_cast<int>(i));
  for (std::size_t i = 0; i < count; ++i)
    if (met[i] == 0)
      visit(static_cast<int>(i));
  return key;
}

// One order of all boxes that follows `key` as far as the inputs of every box stand in their
// order. `kept` turns false when the wishes form a circle.
std::vector<int> global_order(const LayeredWork &work, const std::vector<double> &key, bool &kept) {
  const std::size_t count = work.boxes.size();
  std::vector<std::vector<int>> after(count);
  std::vector<int> waiting(count);
  for (const std::vector<int> &inputs : work.inputs)
    for (std::size_t i = 1; i < inputs.size(); ++i) {
      after[static_cast<std::size_t>(inputs[i - 1])].push_back(inputs[i]);
      ++waiting[static_cast<std::size_t>(inputs[i])];
    }
  using Entry = std::pair<double, int>;
  std::priority_queue<Entry, std::vector<Entry>, std::greater<>> ready;
  std::vector<char> done(count);
  for (std::size_t i = 0; i < count; ++i)
    if (waiting[i] == 0)
      ready.emplace(key[i], static_cast<int>(i));
  std::vector<int> order;
  while (order.size() < count) {
    if (ready.empty()) {
      // A circle of wishes: the box with the least key goes first.
      kept = false;
      int least = -1;
      for (std::size_t i = 0; i < count; ++i)
        if (done[i] == 0 && (least < 0 || key[i] < key[static_cast<std::size_t>(least)]))
          least = static_cast<int>(i);
      ready.emplace(key[static_cast<std::size_t>(least)], least);
    }
    const int box = ready.top().second;
    ready.pop();
    if (done[static_cast<std::size_t>(box)] != 0)
      continue;
    done[static_cast<std::size_t>(box)] = 1;
    order.push_back(box);
    for (const int next : after[static_cast<std::size_t>(box)])
      if (--waiting[static_cast<std::size_t>(next)] == 0)
        ready.emplace(key[static_cast<std::size_t>(next)], next);
  }
  return order;
}

// Rows that follow one order of all boxes; a bend stands where its arrow comes from.
bool order_by_inputs(LayeredWork &work) {
  bool kept = true;
  work.sequence = global_order(work, input_keys(work), kept);
  const std::vector<int> &order = work.sequence;
  std::vector<double> rank_of(work.items.size());
  for (std::size_t i = 0; i < order.size(); ++i)
    rank_of[static_cast<std::size_t>(order[i])] = static_cast<double>(i);
  // Bends were made from the top down, so the item above is known first.
  for (std::size_t i = work.boxes.size(); i < work.items.size(); ++i)
    rank_of[i] = rank_of[static_cast<std::size_t>(work.items[i].up.front())];
  for (std::vector<int> &row : work.rows)
    std::stable_sort(row.begin(), row.end(), [&](int a, int b) {
      return rank_of[static_cast<std::size_t>(a)] < rank_of[static_cast<std::size_t>(b)];
    });
  return kept;
}

} // namespace

bool order_rows(LayeredWork &work, bool keep_inputs) {
  if (keep_inputs)
    return order_by_inputs(work);
  RowOrder order(work);
  order.start(true);
  const long from_above = order.improve();
  if (from_above == 0)
    return true;
  Rows first = work.rows;
  order.start(false);
  if (order.improve() >= from_above)
    work.rows = std::move(first);
  return true;
}

} // namespace velora
