// The layered layout as a whole: parts that are not joined are laid out one by one and packed side
// by side; boxes without any arrow stand in rows below.
#include "editor/model/layered_layout.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "editor/model/layered_keep.h"
#include "editor/model/layered_work.h"

namespace velora {

namespace {

// Groups boxes that arrows join, directly or through others.
class Joined {
public:
  explicit Joined(std::size_t count) : root_(count) { std::iota(root_.begin(), root_.end(), 0); }
  int root(int box) {
    while (at(box) != box)
      box = at(box) = at(at(box));
    return box;
  }
  void join(int a, int b) {
    a = root(a);
    b = root(b);
    at(std::max(a, b)) = std::min(a, b);
  }

private:
  int &at(int box) { return root_[static_cast<std::size_t>(box)]; }
  std::vector<int> root_;
};

// A connected part with the numbers that its boxes have outside.
struct Part {
  std::vector<int> numbers;
  LayeredWork work;
  std::vector<LayeredRow> rows;
  int width = 0;
  int height = 0;
};

std::vector<Part> split(std::span<const LayeredBox> boxes, std::span<const LayeredArrow> arrows) {
  Joined joined(boxes.size());
  const auto count = static_cast<int>(boxes.size());
  const auto is_box = [count](int number) { return number >= 0 && number < count; };
  for (const LayeredArrow &arrow : arrows)
    if (is_box(arrow.from) && is_box(arrow.to))
      joined.join(arrow.from, arrow.to);
  std::vector<Part> parts;
  std::vector<int> part_of(boxes.size(), -1);
  std::vector<int> local(boxes.size());
  for (int i = 0; i < count; ++i) {
    const auto root = static_cast<std::size_t>(joined.root(i));
    if (part_of[root] < 0) {
      part_of[root] = static_cast<int>(parts.size());
      parts.emplace_back();
    }
    Part &part = parts[static_cast<std::size_t>(part_of[root])];
    local[static_cast<std::size_t>(i)] = static_cast<int>(part.numbers.size());
    part.numbers.push_back(i);
    part.work.boxes.push_back(boxes[static_cast<std::size_t>(i)]);
  }
  for (const LayeredArrow &arrow : arrows) {
    if (!is_box(arrow.from) || !is_box(arrow.to))
      continue;
    const auto root = static_cast<std::size_t>(joined.root(arrow.from));
    parts[static_cast<std::size_t>(part_of[root])].work.edges.push_back(
        {local[static_cast<std::size_t>(arrow.from)], local[static_cast<std::size_t>(arrow.to)]});
  }
  return parts;
}

// Where the rows of a part begin, from the top down.
void stack_rows(Part &part, int row_distance) {
  part.rows.assign(part.work.rows.size(), {});
  for (const LayerItem &item : part.work.items) {
    if (item.box < 0)
      continue;
    int &height = part.rows[static_cast<std::size_t>(item.row)].height;
    height = std::max(height, part.work.boxes[static_cast<std::size_t>(item.box)].height);
  }
  int top = 0;
  for (LayeredRow &row : part.rows) {
    row.top = top;
    part.height = top + row.height;
    top = part.height + row_distance;
  }
}

// Moves a part to its upper left corner and notes how much room it takes.
void measure(Part &part) {
  int left = 0;
  int right = 0;
  bool first = true;
  for (const LayerItem &item : part.work.items) {
    if (item.box < 0)
      continue;
    const int low = static_cast<int>(item.x) - (item.width + 1) / 2;
    left = first ? low : std::min(left, low);
    right = first ? low + item.width : std::max(right, low + item.width);
    first = false;
  }
  for (LayerItem &item : part.work.items)
    item.x -= left;
  part.width = right - left;
}

// How far a small part may grow sideways where that unties arrows.
constexpr int kLeastSlack = 250;

bool lay_out_part(Part &part, const LayeredOptions &options) {
  LayeredWork &work = part.work;
  break_circles(work);
  assign_ranks(work);
  make_items(work, 0);
  bool kept = order_rows(work, options.keep_input_order);
  // The rows that a wide rank is dealt over get bends and an order of their own.
  if (options.wrap_width > 0 && wrap_ranks(work, options.wrap_width, options.gap)) {
    make_items(work, 0);
    kept = order_rows(work, options.keep_input_order);
  }
  place_across(work, options.gap);
  stack_rows(part, options.row_distance);
  measure(part);
  if (!options.keep_input_order)
    refine_places(work, part.rows, options.gap,
                  options.wrap_width > 0 ? options.wrap_width / 6
                                         : std::max(kLeastSlack, part.width / 2));
  measure(part);
  return kept;
}

// Takes rooms from left to right; with a width, a room that does not fit begins a new shelf.
class Shelf {
public:
  Shelf(const LayeredOptions &options, int width) : options_(options), width_(width) {}
  Point take(int width, int height) {
    if (x_ > 0 && width_ > 0 && x_ + width > width_)
      next_shelf();
    const Point at{options_.origin.x + x_, options_.origin.y + y_};
    x_ += width + options_.gap;
    widest_ = std::max(widest_, x_);
    tallest_ = std::max(tallest_, height);
    return at;
  }
  void next_shelf() {
    if (x_ > 0)
      y_ += tallest_ + options_.row_distance;
    x_ = tallest_ = 0;
  }
  void set_width(int width) { width_ = width; }
  [[nodiscard]] int widest() const { return widest_; }

private:
  const LayeredOptions &options_;
  int width_;
  int x_ = 0;
  int y_ = 0;
  int widest_ = 0;
  int tallest_ = 0;
};

void put_part(const Part &part, Point at, LayeredResult &result) {
  for (const LayerItem &item : part.work.items) {
    if (item.box < 0)
      continue;
    const auto local = static_cast<std::size_t>(item.box);
    const auto number = static_cast<std::size_t>(part.numbers[local]);
    const int top = part.rows[static_cast<std::size_t>(item.row)].top;
    result.corners[number] = {at.x + static_cast<int>(item.x) - (item.width + 1) / 2, at.y + top};
    result.rows[number] = item.row;
  }
}

// Boxes that nothing joins fill rows about as wide as the rest.
constexpr int kLeastLooseWidth = 600;

LayeredResult lay_out_afresh(std::span<const LayeredBox> boxes,
                             std::span<const LayeredArrow> arrows, const LayeredOptions &options) {
  LayeredResult result;
  result.corners.resize(boxes.size());
  result.rows.resize(boxes.size());
  Shelf shelf(options, options.wrap_width);
  std::vector<Part> parts = split(boxes, arrows);
  for (Part &part : parts) {
    if (part.numbers.size() == 1)
      continue;
    result.order_kept = lay_out_part(part, options) && result.order_kept;
    put_part(part, shelf.take(part.width, part.height), result);
  }
  shelf.next_shelf();
  if (options.wrap_width == 0)
    shelf.set_width(std::max(kLeastLooseWidth, shelf.widest()));
  for (const Part &part : parts) {
    if (part.numbers.size() != 1)
      continue;
    const LayeredBox &box = part.work.boxes.front();
    result.corners[static_cast<std::size_t>(part.numbers.front())] =
        shelf.take(box.width, box.height);
  }
  return result;
}

} // namespace

bool wrap_ranks(LayeredWork &work, int width, int gap) {
  std::vector<int> rank = work.rank;
  int added = 0;
  for (const std::vector<int> &row : work.rows) {
    int total = 0;
    std::vector<int> boxes;
    for (const int i : row)
      if (const LayerItem &item = work.items[static_cast<std::size_t>(i)]; item.box >= 0) {
        boxes.push_back(item.box);
        total += item.width + gap;
      }
    const int pieces = std::min(static_cast<int>(boxes.size()), (total + width - 1) / width);
    for (std::size_t i = 0; i < boxes.size(); ++i)
      rank[static_cast<std::size_t>(boxes[i])] += added + static_cast<int>(i) % std::max(1, pieces);
    added += std::max(1, pieces) - 1;
  }
  work.rank = std::move(rank);
  return added > 0;
}

int wrap_width_for(std::span<const LayeredBox> boxes, const LayeredOptions &options) {
  constexpr double kShape = 1.5;
  double area = 0;
  for (const LayeredBox &box : boxes)
    area += static_cast<double>(box.width + options.gap) * (box.height + options.row_distance);
  return std::max(kLeastLooseWidth, static_cast<int>(std::sqrt(area * kShape)));
}

LayeredResult lay_out_layers(std::span<const LayeredBox> boxes,
                             std::span<const LayeredArrow> arrows, const LayeredOptions &options) {
  LayeredResult fresh = lay_out_afresh(boxes, arrows, options);
  keep_places(boxes, arrows, options, fresh);
  return fresh;
}

} // namespace velora
