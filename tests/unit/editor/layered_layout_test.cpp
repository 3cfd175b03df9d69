// The layered layout: boxes never overlap, arrows run down, inputs keep their order, pins and
// earlier places are respected, and what is laid out does not depend on chance.
#include "editor/model/layered_layout.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace velora {
namespace {

struct Graph {
  std::vector<LayeredBox> boxes;
  std::vector<LayeredArrow> arrows;

  LayeredResult lay_out(const LayeredOptions &options = {}) const {
    return lay_out_layers(boxes, arrows, options);
  }
  LayeredFaults faults(const std::vector<Point> &corners) const {
    return layered_faults(boxes, arrows, corners);
  }
  int centre(const LayeredResult &result, int box) const {
    const auto i = static_cast<std::size_t>(box);
    return result.corners[i].x + boxes[i].width / 2;
  }
  void put_where(const LayeredResult &result) {
    for (std::size_t i = 0; i < boxes.size(); ++i)
      boxes[i].place = result.corners[i];
  }
};

// Boxes of many sizes; arrows mostly downwards by number, some back, some to themselves.
Graph random_graph(unsigned seed, int count, int arrows, bool circles) {
  std::mt19937 random(seed);
  Graph graph;
  const auto below = [&random](int limit) {
    return static_cast<int>(random() % static_cast<unsigned>(limit));
  };
  for (int i = 0; i < count; ++i)
    graph.boxes.push_back({20 + below(100), 20 + below(20), -1, false, {}});
  for (int i = 0; i < arrows; ++i) {
    int from = below(count);
    int to = below(count);
    if (!circles && from >= to)
      std::swap(from, to);
    if (circles || from != to)
      graph.arrows.push_back({from, to});
  }
  return graph;
}

int width_of(const Graph &graph, const LayeredResult &result) {
  int right = 0;
  for (std::size_t i = 0; i < graph.boxes.size(); ++i)
    right = std::max(right, result.corners[i].x + graph.boxes[i].width);
  return right;
}

// An expression: box 0 takes its inputs, they take theirs, and so on; new boxes feed older ones.
Graph random_tree(unsigned seed, int count) {
  std::mt19937 random(seed);
  Graph graph;
  for (int i = 0; i < count; ++i) {
    graph.boxes.push_back({30 + static_cast<int>(random() % 60), 24, -1, false, {}});
    if (i > 0)
      graph.arrows.push_back({i, static_cast<int>(random() % static_cast<unsigned>(i))});
  }
  return graph;
}

TEST(LayeredLayout, boxes_never_overlap_whatever_the_options) {
  for (unsigned seed = 0; seed < 12; ++seed) {
    const Graph graph = random_graph(seed, 1 + static_cast<int>(seed) * 4,
                                     static_cast<int>(seed) * 6, seed % 2 == 0);
    for (const int wrap : {0, 300})
      for (const bool keep : {false, true}) {
        LayeredOptions options;
        options.wrap_width = wrap;
        options.keep_input_order = keep;
        const LayeredResult result = graph.lay_out(options);
        EXPECT_EQ(graph.faults(result.corners).overlaps, 0) << seed << ' ' << wrap << keep;
        for (const Point corner : result.corners) {
          EXPECT_GE(corner.x, options.origin.x);
          EXPECT_GE(corner.y, options.origin.y);
        }
      }
  }
}

TEST(LayeredLayout, without_circles_every_arrow_runs_down) {
  for (unsigned seed = 0; seed < 6; ++seed) {
    const Graph graph = random_graph(seed, 40, 70, false);
    LayeredOptions options;
    options.wrap_width = seed % 2 == 0 ? 0 : 400;
    const LayeredResult result = graph.lay_out(options);
    for (const LayeredArrow &arrow : graph.arrows) {
      const auto from = static_cast<std::size_t>(arrow.from);
      const auto to = static_cast<std::size_t>(arrow.to);
      EXPECT_LE(result.corners[from].y + graph.boxes[from].height + options.row_distance,
                result.corners[to].y);
    }
  }
}

TEST(LayeredLayout, a_circle_turns_one_arrow_only) {
  Graph graph;
  graph.boxes.assign(4, {60, 24, -1, false, {}});
  graph.arrows = {{0, 1}, {1, 2}, {2, 3}, {3, 0}, {1, 1}};
  const LayeredResult result = graph.lay_out();
  EXPECT_EQ(result.rows, (std::vector<int>{0, 1, 2, 3}));
}

TEST(LayeredLayout, trees_are_drawn_without_crossings) {
  for (unsigned seed = 0; seed < 6; ++seed) {
    const Graph graph = random_tree(seed, 40);
    EXPECT_EQ(graph.faults(graph.lay_out().corners).crossings, 0) << seed;
  }
}

TEST(LayeredLayout, inputs_stand_in_their_order) {
  for (unsigned seed = 0; seed < 15; ++seed) {
    const Graph graph = random_tree(seed, 30);
    LayeredOptions options;
    options.keep_input_order = true;
    const LayeredResult result = graph.lay_out(options);
    EXPECT_TRUE(result.order_kept);
    std::vector<int> last(graph.boxes.size(), -1);
    for (const LayeredArrow &arrow : graph.arrows) {
      int &before = last[static_cast<std::size_t>(arrow.to)];
      EXPECT_TRUE(before < 0 || graph.centre(result, before) < graph.centre(result, arrow.from));
      before = arrow.from;
    }
  }
}

TEST(LayeredLayout, says_when_inputs_cannot_all_stand_in_order) {
  Graph graph;
  graph.boxes.assign(4, {60, 24, -1, false, {}});
  graph.arrows = {{0, 2}, {1, 2}, {1, 3}, {0, 3}};
  LayeredOptions options;
  options.keep_input_order = true;
  const LayeredResult result = graph.lay_out(options);
  EXPECT_FALSE(result.order_kept);
  EXPECT_EQ(graph.faults(result.corners).overlaps, 0);
}

TEST(LayeredLayout, wished_ranks_hold_as_far_as_arrows_allow) {
  Graph graph;
  graph.boxes.assign(5, {60, 24, -1, false, {}});
  graph.arrows = {{0, 1}, {1, 2}, {3, 2}, {2, 4}};
  graph.boxes[3].rank = 0; // a parameter stays in the top row though its arrow is long
  EXPECT_EQ(graph.lay_out().rows, (std::vector<int>{0, 1, 2, 0, 3}));
  graph.boxes[3].rank = -1;
  EXPECT_EQ(graph.lay_out().rows[3], 1);
  graph.boxes[4].rank = 1; // an impossible wish
  EXPECT_EQ(graph.lay_out().rows[4], 3);
}

TEST(LayeredLayout, wide_ranks_are_wrapped) {
  Graph graph;
  graph.boxes.assign(61, {80, 24, -1, false, {}});
  for (int i = 1; i <= 60; ++i)
    graph.arrows.push_back({0, i});
  LayeredOptions options;
  const int flat = width_of(graph, graph.lay_out(options));
  options.wrap_width = 900;
  const LayeredResult wrapped = graph.lay_out(options);
  EXPECT_GT(flat, 5000);
  EXPECT_LT(width_of(graph, wrapped), 1900);
  EXPECT_EQ(graph.faults(wrapped.corners).overlaps, 0);
}

TEST(LayeredLayout, boxes_without_arrows_fill_rows_below) {
  Graph graph;
  graph.boxes.assign(30, {80, 24, -1, false, {}});
  graph.arrows = {{28, 29}, {-1, 3}, {4, 99}};
  const LayeredResult result = graph.lay_out();
  EXPECT_LT(width_of(graph, result), 800);
  for (std::size_t i = 0; i < 28; ++i)
    EXPECT_GT(result.corners[i].y, result.corners[29].y);
}

TEST(LayeredLayout, pinned_boxes_stay_and_nothing_lies_on_them) {
  for (unsigned seed = 0; seed < 6; ++seed) {
    Graph graph = random_graph(seed, 30, 45, true);
    graph.put_where(graph.lay_out());
    for (const std::size_t i : {3U, 11U, 17U}) {
      graph.boxes[i].pinned = true;
      graph.boxes[i].place->x += 37;
      graph.boxes[i].place->y += static_cast<int>(i) * 20;
    }
    const LayeredResult result = graph.lay_out();
    for (const std::size_t i : {3U, 11U, 17U})
      EXPECT_EQ(result.corners[i], *graph.boxes[i].place);
    const LayeredFaults before = graph.faults(result.corners);
    EXPECT_EQ(before.overlaps, 0) << seed;
  }
}

TEST(LayeredLayout, a_tidy_picture_stays_and_a_change_moves_little) {
  for (unsigned seed = 0; seed < 6; ++seed) {
    Graph graph = random_graph(seed, 40, 45, false);
    graph.put_where(graph.lay_out());
    LayeredOptions options;
    options.keep_places = true;
    const LayeredResult again = graph.lay_out(options);
    for (std::size_t i = 0; i < graph.boxes.size(); ++i)
      EXPECT_EQ(again.corners[i], *graph.boxes[i].place) << seed;
    graph.boxes.push_back({70, 24, -1, false, {}});
    graph.arrows.push_back({0, 40});
    const LayeredResult grown = graph.lay_out(options);
    EXPECT_EQ(graph.faults(grown.corners).overlaps, 0);
    int moved = 0;
    for (std::size_t i = 0; i < 40; ++i)
      moved += grown.corners[i] == *graph.boxes[i].place ? 0 : 1;
    EXPECT_EQ(moved, 0) << seed;
  }
}

TEST(LayeredLayout, an_arrow_through_a_box_of_a_small_picture_goes) {
  Graph graph;
  graph.boxes.assign(3, {60, 24, -1, false, {}});
  graph.arrows = {{0, 1}, {1, 2}, {0, 2}};
  for (int i = 0; i < 3; ++i)
    graph.boxes[static_cast<std::size_t>(i)].place = Point{40, 40 + i * 72};
  LayeredOptions options;
  options.keep_places = true;
  EXPECT_EQ(graph.faults(graph.lay_out(options).corners).boxes_crossed, 0);
}

TEST(LayeredLayout, a_bad_picture_is_laid_out_afresh) {
  Graph graph = random_graph(7, 40, 60, false);
  for (LayeredBox &box : graph.boxes)
    box.place = Point{10, 10};
  LayeredOptions options;
  options.keep_places = true;
  const LayeredResult result = graph.lay_out(options);
  EXPECT_EQ(graph.faults(result.corners).overlaps, 0);
  EXPECT_EQ(result.corners, graph.lay_out().corners);
}

TEST(LayeredFaults, counts_what_it_says) {
  Graph graph;
  graph.boxes.assign(5, {20, 20, -1, false, {}});
  graph.arrows = {{0, 3}, {1, 2}, {0, 2}};
  const std::vector<Point> corners = {{0, 0}, {100, 0}, {0, 200}, {100, 200}, {40, 100}};
  const LayeredFaults faults = graph.faults(corners);
  EXPECT_EQ(faults.crossings, 1);     // 0-3 with 1-2; arrows with a common box are not counted
  EXPECT_EQ(faults.boxes_crossed, 2); // both run through box 4
  EXPECT_EQ(faults.overlaps, 0);
}

} // namespace
} // namespace velora
