// The last step of the layered layout: what is drawn are straight arrows, without the bends that
// the rows were ordered with. So boxes are tried at other places of their row, and of rows
// nearby, and stay where arrows cross least and run through fewest boxes.
#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstdlib>

#include "core/events.h"
#include "editor/model/layered_work.h"

namespace velora {

namespace {

// What a fault weighs: a box that an arrow runs through is worse than two arrows that cross.
constexpr long kCrossing = 10;
constexpr long kThrough = 40;

// Pairs looked at, for each box and at most; bounds the time.
constexpr long kWorkForBox = 60'000;
constexpr long kMostWork = 33'000'000;
constexpr int kMostPasses = 8;

struct Spot {
  int row = 0;
  int x = 0; // of the centre
};

struct Line {
  Point from;
  Point to;
};

std::int64_t side(const Line &line, Point p) {
  return static_cast<std::int64_t>(line.to.x - line.from.x) * (p.y - line.from.y) -
         static_cast<std::int64_t>(line.to.y - line.from.y) * (p.x - line.from.x);
}

bool opposite(std::int64_t a, std::int64_t b) {
  return (a < 0 && b > 0) || (a > 0 && b < 0);
}

bool cross(const Line &a, const Line &b) {
  if (std::max(a.from.x, a.to.x) < std::min(b.from.x, b.to.x) ||
      std::max(b.from.x, b.to.x) < std::min(a.from.x, a.to.x))
    return false;
  return opposite(side(a, b.from), side(a, b.to)) && opposite(side(b, a.from), side(b, a.to));
}

// A line that spans the whole height of a box runs through it when it meets its middle part.
bool through(const Line &line, const Rect &box) {
  if (std::max(line.from.x, line.to.x) <= box.left || std::min(line.from.x, line.to.x) >= box.right)
    return false;
  bool left = false;
  bool right = false;
  for (const Point corner : {Point{box.left, box.top}, Point{box.right, box.top},
                             Point{box.left, box.bottom}, Point{box.right, box.bottom}}) {
    const std::int64_t s = side(line, corner);
    left = left || s > 0;
    right = right || s < 0;
  }
  return left && right;
}

class Refiner {
public:
  Refiner(LayeredWork &work, const std::vector<LayeredRow> &stack, int gap, int slack)
      : work_(work), stack_(stack), gap_(gap), edges_of_(work.boxes.size()), rows_(stack.size()),
        lines_(work.edges.size()), gaps_(stack.size()), met_(work.edges.size()),
        left_(std::min(kMostWork, kWorkForBox * static_cast<long>(work.boxes.size()))) {
    for (std::size_t e = 0; e < work.edges.size(); ++e) {
      edges_of_[static_cast<std::size_t>(work.edges[e].from)].push_back(static_cast<int>(e));
      edges_of_[static_cast<std::size_t>(work.edges[e].to)].push_back(static_cast<int>(e));
    }
    for (std::size_t b = 0; b < work.boxes.size(); ++b) {
      const auto box = static_cast<int>(b);
      tallest_ = std::max(tallest_, work.boxes[b].height);
      leftmost_ = std::min(leftmost_, x_of(box) - half(box));
      rightmost_ = std::max(rightmost_, x_of(box) + half(box));
    }
    leftmost_ -= slack;
    rightmost_ += slack;
    for (std::size_t b = 0; b < work.boxes.size(); ++b)
      rows_[static_cast<std::size_t>(row_of(static_cast<int>(b)))].push_back(static_cast<int>(b));
    for (std::vector<int> &row : rows_)
      std::sort(row.begin(), row.end(), [this](int a, int b) { return x_of(a) < x_of(b); });
    for (std::size_t e = 0; e < work.edges.size(); ++e)
      enter(static_cast<int>(e));
  }

  void run() {
    for (int pass = 0; pass < kMostPasses && left_ > 0; ++pass) {
      CheckForUserEvents(0);
      bool better = false;
      for (std::size_t i = 0; i < work_.boxes.size() && left_ > 0; ++i) {
        const std::size_t b = pass % 2 == 0 ? i : work_.boxes.size() - 1 - i;
        better = improve(static_cast<int>(b), pass) || better;
      }
      if (!better)
        return;
    }
  }

private:
  LayerItem &item(int box) { return work_.items[static_cast<std::size_t>(box)]; }
  const LayerItem &item(int box) const { return work_.items[static_cast<std::size_t>(box)]; }
  int row_of(int box) const { return item(box).row; }
  int x_of(int box) const { return static_cast<int>(item(box).x); }
  int half(int box) const { return (item(box).width + 1) / 2; }
  const LayeredArrow &edge(int e) const { return work_.edges[static_cast<std::size_t>(e)]; }
  int height(int box) const { return work_.boxes[static_cast<std::size_t>(box)].height; }
  Rect rect(int box) const {
    const int top = stack_[static_cast<std::size_t>(row_of(box))].top;
    const int left = x_of(box) - half(box);
    return {left, top, left + item(box).width, top + height(box)};
  }
  Line line_of(int e) const {
    const Rect from = rect(edge(e).from);
    const Rect to = rect(edge(e).to);
    return {{from.centre().x, from.bottom}, {to.centre().x, to.top}};
  }
  bool share_box(int e, int f) const {
    const LayeredArrow &a = edge(e);
    const LayeredArrow &b = edge(f);
    return a.from == b.from || a.to == b.to || a.from == b.to || a.to == b.from;
  }

  // Each edge is entered in the gap below every row that it leaves or passes.
  void enter(int e) {
    lines_[static_cast<std::size_t>(e)] = line_of(e);
    for (int r = row_of(edge(e).from); r < row_of(edge(e).to); ++r)
      gaps_[static_cast<std::size_t>(r)].push_back(e);
  }
  void leave(int e) {
    for (int r = row_of(edge(e).from); r < row_of(edge(e).to); ++r)
      std::erase(gaps_[static_cast<std::size_t>(r)], e);
  }

  // What an edge costs where it is: crossings with others and boxes it runs through. The edges of
  // one box do not cross each other.
  long cost_of_edge(int e, const Line &line) {
    long cost = 0;
    ++stamp_;
    const int first = row_of(edge(e).from);
    const int last = row_of(edge(e).to);
    for (int r = first; r < last; ++r) {
      for (const int f : gaps_[static_cast<std::size_t>(r)]) {
        int &met = met_[static_cast<std::size_t>(f)];
        if (met == stamp_)
          continue;
        met = stamp_;
        --left_;
        if (cross(line, lines_[static_cast<std::size_t>(f)]) && !share_box(e, f))
          cost += kCrossing;
      }
      if (r > first)
        cost += kThrough * boxes_met(r, line);
    }
    return cost;
  }

  // The boxes of a row that a line runs through lie side by side.
  long boxes_met(int r, const Line &line) {
    const std::vector<int> &row = rows_[static_cast<std::size_t>(r)];
    const int top = stack_[static_cast<std::size_t>(r)].top;
    const auto at = [&line](int y) {
      return line.from.x +
             static_cast<int>(static_cast<std::int64_t>(line.to.x - line.from.x) *
                              (y - line.from.y) / std::max(1, line.to.y - line.from.y));
    };
    const int low = std::min(at(top), at(top + tallest_)) - 1;
    auto place = std::partition_point(row.begin(), row.end(),
                                      [&](int b) { return x_of(b) + half(b) < low; });
    long count = 0;
    for (; place != row.end() && rect(*place).left <= std::max(at(top), at(top + tallest_)) + 1;
         ++place) {
      --left_;
      count += through(line, rect(*place)) ? 1 : 0;
    }
    return count;
  }

  // Looking ends as soon as the cost reaches `limit`.
  long cost_of_box(int box, long limit) {
    long cost = 0;
    for (const int e : edges_of_[static_cast<std::size_t>(box)]) {
      if (cost >= limit)
        return cost;
      const Line line = line_of(e);
      cost += cost_of_edge(e, line);
      cost += (std::abs(line.from.x - line.to.x) + std::abs(line.from.y - line.to.y)) / 100;
    }
    const int r = row_of(box);
    const Rect room = rect(box);
    if (r > 0) // lines that pass this row come through the gap above
      for (const int e : gaps_[static_cast<std::size_t>(r) - 1]) {
        --left_;
        if (row_of(edge(e).to) > r && through(lines_[static_cast<std::size_t>(e)], room))
          cost += kThrough;
      }
    return cost;
  }

  // Takes a box out of its row and its edges out of the gaps, or puts them back at `spot`.
  void lift(int box) {
    for (const int e : edges_of_[static_cast<std::size_t>(box)])
      leave(e);
    std::erase(rows_[static_cast<std::size_t>(row_of(box))], box);
  }
  void drop(int box, Spot spot) {
    item(box).row = spot.row;
    item(box).x = spot.x;
    std::vector<int> &row = rows_[static_cast<std::size_t>(spot.row)];
    row.insert(
        std::partition_point(row.begin(), row.end(), [&](int b) { return x_of(b) < spot.x; }), box);
    for (const int e : edges_of_[static_cast<std::size_t>(box)])
      enter(e);
  }

  // The free centre nearest to `wanted` in a row from which the box is lifted.
  int nearest_free(int box, int r, int wanted) const {
    const std::vector<int> &row = rows_[static_cast<std::size_t>(r)];
    const auto from =
        std::partition_point(row.begin(), row.end(), [&](int b) { return x_of(b) < wanted; });
    // To the right: past every neighbour that is too near; to the left likewise.
    const auto room = [&](int a) { return half(a) + half(box) + gap_; };
    int right = wanted;
    if (from != row.begin())
      right = std::max(right, x_of(*std::prev(from)) + room(*std::prev(from)));
    for (auto at = from; at != row.end() && x_of(*at) - room(*at) < right; ++at)
      right = x_of(*at) + room(*at);
    int left = wanted;
    if (from != row.end())
      left = std::min(left, x_of(*from) - room(*from));
    for (auto at = from; at != row.begin() && x_of(*std::prev(at)) + room(*std::prev(at)) > left;
         --at)
      left = x_of(*std::prev(at)) - room(*std::prev(at));
    return wanted - left <= right - wanted ? left : right;
  }

  // Places worth trying: where the box's arrows draw it, and around where it stands.
  std::vector<Spot> spots_for(int box, int pass) const {
    std::vector<int> ends;
    int highest = 0;
    int lowest = static_cast<int>(rows_.size()) - 1;
    for (const int e : edges_of_[static_cast<std::size_t>(box)]) {
      const bool leaves = edge(e).from == box;
      const int other = leaves ? edge(e).to : edge(e).from;
      ends.push_back(x_of(other));
      (leaves ? lowest : highest) =
          leaves ? std::min(lowest, row_of(other) - 1) : std::max(highest, row_of(other) + 1);
    }
    std::sort(ends.begin(), ends.end());
    long sum = 0;
    for (const int x : ends)
      sum += x;
    const int step = half(box) * 2 + gap_;
    std::vector<int> wanted = {static_cast<int>(sum / static_cast<long>(ends.size())),
                               ends[ends.size() / 2], ends.front(), ends.back()};
    for (const int d : {1, 2, 4, 8})
      for (const int s : {-1, 1})
        wanted.push_back(x_of(box) + s * d * step / (pass % 2 == 0 ? 2 : 3));
    const int own = row_of(box);
    std::vector<Spot> spots;
    for (const int r : {own, own - 1, own + 1})
      if (r >= highest && r <= lowest && may_stand(box, r))
        for (const int x : wanted)
          if (const int free = nearest_free(box, r, x);
              free - half(box) >= leftmost_ && free + half(box) <= rightmost_)
            spots.push_back({r, free});
    return spots;
  }

  bool may_stand(int box, int r) const {
    const LayeredBox &it = work_.boxes[static_cast<std::size_t>(box)];
    return r == row_of(box) ||
           (it.rank < 0 && it.height <= stack_[static_cast<std::size_t>(r)].height);
  }

  bool improve(int box, int pass) {
    const Spot own{row_of(box), x_of(box)};
    long least = cost_of_box(box, LONG_MAX);
    if (least < kCrossing)
      return false;
    lift(box);
    Spot best = own;
    for (const Spot spot : spots_for(box, pass)) {
      if (spot.row == own.row && spot.x == own.x)
        continue;
      if (left_ < 0)
        break;
      item(box).row = spot.row;
      item(box).x = spot.x;
      const long cost = cost_of_box(box, least);
      if (cost < least) {
        least = cost;
        best = spot;
      }
    }
    drop(box, best);
    return best.row != own.row || best.x != own.x;
  }

  LayeredWork &work_;
  const std::vector<LayeredRow> &stack_;
  int gap_;
  int tallest_ = 0;
  int leftmost_ = 0; // no box may reach beyond
  int rightmost_ = 0;
  std::vector<std::vector<int>> edges_of_;
  std::vector<std::vector<int>> rows_;
  std::vector<Line> lines_;
  std::vector<std::vector<int>> gaps_;
  std::vector<int> met_;
  int stamp_ = 0;
  long left_;
};

} // namespace

void refine_places(LayeredWork &work, const std::vector<LayeredRow> &rows, int gap, int slack) {
  Refiner(work, rows, gap, slack).run();
}

} // namespace velora
