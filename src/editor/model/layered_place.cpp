// Where the items of each row stand from left to right. A row is placed at once: of all placings
// that keep its order and distances the one is taken whose items are, squared, nearest to where
// their neighbours draw them. Rows are placed downwards and upwards in turn.
#include <algorithm>
#include <cmath>

#include "core/events.h"
#include "editor/model/layered_work.h"

namespace velora {

namespace {

// How strongly an edge pulls: most between two bends, so that long arrows run straight.
constexpr double kBoxToBox = 1;
constexpr double kBoxToBend = 2;
constexpr double kBendToBend = 8;
constexpr int kRounds = 12;

class Across {
public:
  Across(LayeredWork &work, int gap) : work_(work), gap_(gap) {}

  void run() {
    for (const std::vector<int> &row : work_.rows)
      start(row);
    const auto count = static_cast<int>(work_.rows.size());
    for (int round = 0; round < kRounds; ++round) {
      CheckForUserEvents(0);
      for (int r = 1; r < count; ++r)
        settle(row(r), 1, round + 2 < kRounds ? 0 : 0.7);
      for (int r = count - 2; r >= 0; --r)
        settle(row(r), round + 2 < kRounds ? 0 : 0.7, 1);
    }
    follow_sequence();
    to_whole_numbers();
  }

private:
  LayerItem &item(int number) { return work_.items[static_cast<std::size_t>(number)]; }
  const std::vector<int> &row(int r) const { return work_.rows[static_cast<std::size_t>(r)]; }

  // The least distance between the centres of neighbours. It is a whole number, so that rounding
  // down keeps it.
  int distance(int left, int right) {
    const LayerItem &a = item(left);
    const LayerItem &b = item(right);
    const int room = a.box >= 0 && b.box >= 0 ? gap_ : (a.box >= 0 || b.box >= 0 ? gap_ / 2 : 14);
    return (a.width + 1) / 2 + (b.width + 1) / 2 + room;
  }

  void start(const std::vector<int> &items) {
    double x = 0;
    for (std::size_t i = 0; i < items.size(); ++i) {
      x += i == 0 ? 0 : distance(items[i - 1], items[i]);
      item(items[i]).x = x;
    }
    for (const int i : items) // all rows around one middle
      item(i).x -= x / 2;
  }

  double pull(const LayerItem &a, const LayerItem &b) const {
    if (a.box < 0 && b.box < 0)
      return kBendToBend;
    return a.box < 0 || b.box < 0 ? kBoxToBend : kBoxToBox;
  }

  // Runs of items that touch each other stand where their mean is drawn to; a run that would push
  // into the one before it joins it.
  void settle(const std::vector<int> &items, double above, double below) {
    struct Run {
      double sum;
      double weight;
      std::size_t end;
      [[nodiscard]] double at() const { return sum / weight; }
    };
    std::vector<Run> runs;
    std::vector<double> offset(items.size());
    for (std::size_t i = 0; i < items.size(); ++i) {
      const LayerItem &it = item(items[i]);
      offset[i] = i == 0 ? 0 : offset[i - 1] + distance(items[i - 1], items[i]);
      double weight = 0.01; // without neighbours it stays where it is, if nothing pushes
      double sum = weight * it.x;
      const auto draw = [&](const std::vector<int> &neighbours, double share) {
        for (const int n : neighbours) {
          const double strength = share * pull(it, item(n));
          weight += strength;
          sum += strength * item(n).x;
        }
      };
      draw(it.up, above);
      draw(it.down, below);
      runs.push_back({sum - weight * offset[i], weight, i + 1});
      while (runs.size() > 1 && runs[runs.size() - 2].at() > runs.back().at()) {
        Run last = runs.back();
        runs.pop_back();
        runs.back().sum += last.sum;
        runs.back().weight += last.weight;
        runs.back().end = last.end;
      }
    }
    std::size_t i = 0;
    for (const Run &run : runs)
      for (; i < run.end; ++i)
        item(items[i]).x = run.at() + offset[i];
  }

  // Boxes in the one order of all rows: each stands right of the inputs before it and of the boxes
  // before it in its row. Whoever must give way moves to the right, so one pass does.
  void follow_sequence() {
    if (work_.sequence.empty())
      return;
    std::vector<std::vector<int>> left_inputs(work_.boxes.size());
    for (const std::vector<int> &inputs : work_.inputs)
      for (std::size_t i = 1; i < inputs.size(); ++i)
        left_inputs[static_cast<std::size_t>(inputs[i])].push_back(inputs[i - 1]);
    std::vector<int> last(work_.rows.size(), -1);
    std::vector<char> placed(work_.boxes.size());
    for (const int box : work_.sequence) {
      LayerItem &it = item(box);
      int &before = last[static_cast<std::size_t>(it.row)];
      if (before >= 0)
        it.x = std::max(it.x, item(before).x + distance(before, box));
      for (const int input : left_inputs[static_cast<std::size_t>(box)])
        if (placed[static_cast<std::size_t>(input)] != 0)
          it.x = std::max(it.x, item(input).x + kInputStep);
      placed[static_cast<std::size_t>(box)] = 1;
      before = box;
    }
  }

  void to_whole_numbers() {
    double least = 0;
    bool first = true;
    for (const LayerItem &it : work_.items)
      if (it.box >= 0 && (first || std::floor(it.x) - (it.width + 1) / 2 < least)) {
        least = std::floor(it.x) - (it.width + 1) / 2;
        first = false;
      }
    for (LayerItem &it : work_.items)
      it.x = std::floor(it.x) - least;
  }

  // Between the centres of two inputs that follow each other: more than rounding can take.
  static constexpr double kInputStep = 4;

  LayeredWork &work_;
  int gap_;
};

} // namespace

void place_across(LayeredWork &work, int gap) {
  Across(work, gap).run();
}

} // namespace velora
