// Keeping places: a box that must give way moves sideways to the nearest free place, so the rows
// stay as they are.
#include "editor/model/layered_keep.h"

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <set>

namespace velora {

namespace {

using Boxes = std::span<const LayeredBox>;
using Arrows = std::span<const LayeredArrow>;

// The placing while boxes are put into it one by one.
class Placing {
public:
  Placing(Boxes boxes, const LayeredOptions &options)
      : boxes_(boxes), options_(options), corners_(boxes.size()), placed_(boxes.size()) {}

  void put(std::size_t box, Point corner) {
    corners_[box] = corner;
    placed_[box] = 1;
  }
  [[nodiscard]] bool has(std::size_t box) const { return placed_[box] != 0; }
  [[nodiscard]] Rect rect(std::size_t box) const {
    const Point at = corners_[box];
    return {at.x, at.y, at.x + boxes_[box].width, at.y + boxes_[box].height};
  }
  [[nodiscard]] const std::vector<Point> &corners() const { return corners_; }

  // A box there would lie on one that is placed.
  [[nodiscard]] bool taken(std::size_t box, Point at) const {
    const Rect wanted{at.x, at.y, at.x + boxes_[box].width, at.y + boxes_[box].height};
    for (std::size_t i = 0; i < boxes_.size(); ++i) {
      const Rect other = has(i) ? rect(i) : Rect{};
      if (has(i) && i != box && wanted.left < other.right && other.left < wanted.right &&
          wanted.top < other.bottom && other.top < wanted.bottom)
        return true;
    }
    return false;
  }

  // The free place nearest to `wanted` at the same height, with the usual gap to both sides.
  [[nodiscard]] Point nearest_free(std::size_t box, Point wanted) const {
    std::vector<std::pair<int, int>> blocked; // left corners that will not do, open intervals
    for (std::size_t i = 0; i < boxes_.size(); ++i) {
      if (!has(i) || i == box)
        continue;
      const Rect other = rect(i);
      if (other.top < wanted.y + boxes_[box].height && wanted.y < other.bottom)
        blocked.emplace_back(other.left - boxes_[box].width - options_.gap,
                             other.right + options_.gap);
    }
    std::sort(blocked.begin(), blocked.end());
    int right = wanted.x; // the first free place from here to the right
    for (const auto &[from, to] : blocked)
      if (from < right && right < to)
        right = to;
    std::sort(blocked.begin(), blocked.end(),
              [](const auto &a, const auto &b) { return a.second > b.second; });
    int left = wanted.x;
    for (const auto &[from, to] : blocked)
      if (from < left && left < to)
        left = from;
    const bool to_left = wanted.x - left < right - wanted.x && left >= options_.origin.x;
    return {to_left ? left : right, wanted.y};
  }

private:
  Boxes boxes_;
  const LayeredOptions &options_;
  std::vector<Point> corners_;
  std::vector<char> placed_;
};

// The boxes from the top row down, by their numbers within a row.
std::vector<std::size_t> by_rows(const LayeredResult &fresh) {
  std::vector<std::size_t> order(fresh.rows.size());
  for (std::size_t i = 0; i < order.size(); ++i)
    order[i] = i;
  std::stable_sort(order.begin(), order.end(), [&fresh](std::size_t a, std::size_t b) {
    return fresh.corners[a].y != fresh.corners[b].y ? fresh.corners[a].y < fresh.corners[b].y
                                                    : fresh.corners[a].x < fresh.corners[b].x;
  });
  return order;
}

// Puts a new box into the placing: in one of its rows between those it joins, as near to them as
// there is room.
class Inserter {
public:
  Inserter(Boxes boxes, Arrows arrows, const LayeredOptions &options, Placing &placing)
      : boxes_(boxes), options_(options), placing_(placing), above_(boxes.size()),
        below_(boxes.size()) {
    for (const LayeredArrow &arrow : arrows) {
      below_[static_cast<std::size_t>(arrow.from)].push_back(static_cast<std::size_t>(arrow.to));
      above_[static_cast<std::size_t>(arrow.to)].push_back(static_cast<std::size_t>(arrow.from));
    }
  }

  void insert(std::size_t box, Point fresh) {
    int upper = INT_MIN; // the lowest rim of what stands above
    int lower = INT_MAX;
    long sum = 0;
    long count = 0;
    for (const std::size_t i : above_[box])
      if (placing_.has(i) && i != box) {
        upper = std::max(upper, placing_.rect(i).bottom);
        sum += placing_.rect(i).centre().x;
        ++count;
      }
    for (const std::size_t i : below_[box])
      if (placing_.has(i) && i != box) {
        lower = std::min(lower, placing_.rect(i).top);
        sum += placing_.rect(i).centre().x;
        ++count;
      }
    Point wanted = fresh;
    if (count != 0)
      wanted.x = std::max(options_.origin.x, static_cast<int>(sum / count) - boxes_[box].width / 2);
    if (upper != INT_MIN)
      wanted.y = upper + options_.row_distance;
    else if (lower != INT_MAX)
      wanted.y = std::max(0, lower - options_.row_distance - boxes_[box].height);
    placing_.put(box, best_row(box, wanted, upper, lower));
  }

private:
  Point best_row(std::size_t box, Point wanted, int upper, int lower) const {
    std::set<int> tops{wanted.y};
    for (std::size_t i = 0; i < boxes_.size(); ++i)
      if (placing_.has(i))
        tops.insert(placing_.rect(i).top);
    Point best = placing_.nearest_free(box, wanted);
    long least = LONG_MAX;
    for (const int top : tops) {
      if ((upper != INT_MIN && top < upper + options_.row_distance / 2) ||
          (lower != INT_MAX && top + boxes_[box].height > lower - options_.row_distance / 2))
        continue;
      const Point at = placing_.nearest_free(box, {wanted.x, top});
      const long way = std::labs(at.x - wanted.x) + 2L * std::labs(at.y - wanted.y);
      if (way < least) {
        least = way;
        best = at;
      }
    }
    return best;
  }

  Boxes boxes_;
  const LayeredOptions &options_;
  Placing &placing_;
  std::vector<std::vector<std::size_t>> above_;
  std::vector<std::vector<std::size_t>> below_;
};

long upward_arrows(Boxes boxes, Arrows arrows, const std::vector<Point> &corners) {
  long count = 0;
  for (const LayeredArrow &arrow : arrows) {
    const auto from = static_cast<std::size_t>(arrow.from);
    const auto to = static_cast<std::size_t>(arrow.to);
    count += from != to && corners[from].y + boxes[from].height > corners[to].y ? 1 : 0;
  }
  return count;
}

// The own places of the boxes, with what is new or lies on another put in.
std::vector<Point> mended_places(Boxes boxes, Arrows arrows, const LayeredOptions &options,
                                 const LayeredResult &fresh) {
  Placing placing(boxes, options);
  for (const bool pinned : {true, false})
    for (std::size_t i = 0; i < boxes.size(); ++i)
      if (boxes[i].place && boxes[i].pinned == pinned &&
          (pinned || !placing.taken(i, *boxes[i].place)))
        placing.put(i, *boxes[i].place);
  Inserter inserter(boxes, arrows, options, placing);
  for (const std::size_t i : by_rows(fresh))
    if (!placing.has(i))
      inserter.insert(i, fresh.corners[i]);
  return placing.corners();
}

// Half as many more and a few are not worth moving everything for.
bool about_as_good(long own, long fresh, long few) {
  return own <= fresh + fresh / 2 + few;
}

bool reads_about_as_well(Boxes boxes, Arrows arrows, const std::vector<Point> &own,
                         const std::vector<Point> &fresh) {
  const LayeredFaults of_own = layered_faults(boxes, arrows, own);
  const LayeredFaults of_fresh = layered_faults(boxes, arrows, fresh);
  constexpr long kFew = 4;
  // An arrow through a box says a wrong thing: a small picture, where nothing distracts from it,
  // excuses none.
  const long few_through = std::min(kFew, static_cast<long>(boxes.size()) / 10);
  return of_own.overlaps == 0 && about_as_good(of_own.crossings, of_fresh.crossings, kFew) &&
         about_as_good(of_own.boxes_crossed, of_fresh.boxes_crossed, few_through) &&
         upward_arrows(boxes, arrows, own) <= upward_arrows(boxes, arrows, fresh);
}

// Moves the fresh layout to where most pinned boxes want it, then lets boxes give way to them.
void respect_pins(Boxes boxes, const LayeredOptions &options, LayeredResult &result) {
  std::vector<int> right;
  std::vector<int> down;
  for (std::size_t i = 0; i < boxes.size(); ++i)
    if (boxes[i].pinned && boxes[i].place) {
      right.push_back(boxes[i].place->x - result.corners[i].x);
      down.push_back(boxes[i].place->y - result.corners[i].y);
    }
  if (right.empty())
    return;
  std::sort(right.begin(), right.end());
  std::sort(down.begin(), down.end());
  // Nothing is moved beyond the upper left corner.
  const int dx = std::max(0, right[right.size() / 2]);
  const int dy = std::max(0, down[down.size() / 2]);
  Placing placing(boxes, options);
  for (std::size_t i = 0; i < boxes.size(); ++i)
    if (boxes[i].pinned && boxes[i].place)
      placing.put(i, *boxes[i].place);
  for (const std::size_t i : by_rows(result)) {
    const Point at{result.corners[i].x + dx, result.corners[i].y + dy};
    if (!placing.has(i))
      placing.put(i, placing.taken(i, at) ? placing.nearest_free(i, at) : at);
  }
  result.corners = placing.corners();
}

} // namespace

void keep_places(std::span<const LayeredBox> boxes, std::span<const LayeredArrow> arrows,
                 const LayeredOptions &options, LayeredResult &result) {
  const auto count = static_cast<int>(boxes.size());
  std::vector<LayeredArrow> known(arrows.begin(), arrows.end());
  std::erase_if(known, [count](const LayeredArrow &arrow) {
    return arrow.from < 0 || arrow.to < 0 || arrow.from >= count || arrow.to >= count;
  });
  const auto placed = std::count_if(boxes.begin(), boxes.end(),
                                    [](const LayeredBox &box) { return box.place.has_value(); });
  LayeredResult fresh = result;
  respect_pins(boxes, options, fresh);
  if (options.keep_places && placed * 2 >= count) {
    std::vector<Point> own = mended_places(boxes, known, options, fresh);
    if (reads_about_as_well(boxes, known, own, fresh.corners))
      fresh.corners = std::move(own);
  }
  result.corners = std::move(fresh.corners);
}

} // namespace velora
