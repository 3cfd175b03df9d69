// What the steps of the layered layout hand to each other: one connected part of the boxes with
// its ranks, its bends and its rows. Private to the layout.
#pragma once

#include <span>
#include <vector>

#include "editor/model/layered_layout.h"

namespace velora {

// Something that takes part in a row: a box, or the bend of an arrow that passes through it.
struct LayerItem {
  int box = -1; // -1 for a bend
  int row = 0;
  int width = 0;
  std::vector<int> up;   // items of the row above that arrows come from
  std::vector<int> down; // items of the row below that arrows lead to
  double x = 0;          // its centre
};

// One connected part. The numbers of boxes count from 0 within the part. Items begin with the
// boxes, in the same order; bends follow. `edges` are distinct, join different boxes and form no
// circle, so every one leads from a row to a lower one.
struct LayeredWork {
  std::vector<LayeredBox> boxes;
  std::vector<LayeredArrow> edges;
  std::vector<std::vector<int>> inputs; // of each box, in order, as far as arrows run downwards
  std::vector<int> rank;                // of each box, from 0 without gaps
  std::vector<LayerItem> items;
  std::vector<std::vector<int>> rows; // items from left to right
  std::vector<int> sequence;          // all boxes in the one order that all rows follow, if any
};

// Turns arrows that close a circle round, so that `edges` forms none, and notes the inputs.
void break_circles(LayeredWork &work);
// Ranks: every edge leads at least one rank down, and edges are short.
void assign_ranks(LayeredWork &work);
// Makes items and rows from the ranks; an edge over several ranks gets a bend in each.
void make_items(LayeredWork &work, int bend_width);
// Orders the rows so that few edges cross. With `keep_inputs` the boxes follow one order over all
// rows in which the inputs of each box stand from left to right; false when no such order exists.
bool order_rows(LayeredWork &work, bool keep_inputs);
// Deals boxes of rows wider than `width` over several ranks; true when it changed any.
bool wrap_ranks(LayeredWork &work, int width, int gap);
// Gives all items their `x`, with at least `gap` between boxes; the least left rim is 0. Where the
// rows follow a sequence the inputs of each box stand from left to right by their centres.
void place_across(LayeredWork &work, int gap);
// Where a row begins, and the height of its highest box.
struct LayeredRow {
  int top = 0;
  int height = 0;
};
// Moves boxes within and between rows so that straight arrows cross less and run through fewer
// boxes. The whole grows sideways by at most `slack` at either side.
void refine_places(LayeredWork &work, const std::vector<LayeredRow> &rows, int gap, int slack);

} // namespace velora
