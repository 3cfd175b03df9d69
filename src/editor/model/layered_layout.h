// The layered layout of boxes joined by arrows: what stands above what (ranks), in which order
// from left to right, and where. It knows no pictures, so that networks, function pictures and
// benchmarks share it. The same input gives the same result on every machine.
//
// Arrows run downwards wherever no circle forbids it. Boxes never overlap each other, pinned ones
// aside, which stay where they are whatever lies there.
#pragma once

#include <optional>
#include <span>
#include <vector>

#include "platform/geometry.h"

namespace velora {

struct LayeredBox {
  int width = 0;
  int height = 0;
  int rank = -1;              // wished rank, 0 at the top; -1 for none. Arrows go before wishes
  bool pinned = false;        // stays at `place`
  std::optional<Point> place; // the upper left corner where it stands now, when it stands anywhere
};

// An arrow from a box to one that is to stand below it, by their numbers. The arrows that enter a
// box are its inputs, in the order in which they stand in the list.
struct LayeredArrow {
  int from = 0;
  int to = 0;
};

struct LayeredOptions {
  int gap = 24;                  // least distance of boxes side by side
  int row_distance = 48;         // between the bottom of a row and the top of the next
  int wrap_width = 0;            // ranks wider than this are dealt over several rows; 0: never
  bool keep_input_order = false; // the inputs of a box stand from left to right by their centres
  bool keep_places = false;      // boxes with a place move only where that makes a better picture
  Point origin{40, 40};          // the upper left corner of the whole; pinned boxes may lie outside
};

struct LayeredResult {
  std::vector<Point> corners; // the upper left corner of each box
  std::vector<int> rows;      // the row of each box, from 0 at the top of its connected part
  bool order_kept = true;     // false when some box's inputs could not all stand in their order
};

// Lays the boxes out. Arrows from a box to itself, and from or to numbers that are no boxes, are
// passed over. May be abandoned by an interrupt like any long loop.
LayeredResult lay_out_layers(std::span<const LayeredBox> boxes,
                             std::span<const LayeredArrow> arrows, const LayeredOptions &options);

// A width for wrapping that makes the whole about half as wide again as it is high.
int wrap_width_for(std::span<const LayeredBox> boxes, const LayeredOptions &options);

// How readable a placing is when every arrow is a straight line from the middle of a lower rim to
// the middle of an upper rim: pairs of boxes that overlap, pairs of arrows without a common box
// that cross, and pairs of an arrow and a box that it runs through and does not join.
struct LayeredFaults {
  long overlaps = 0;
  long crossings = 0;
  long boxes_crossed = 0;
};
LayeredFaults layered_faults(std::span<const LayeredBox> boxes,
                             std::span<const LayeredArrow> arrows, std::span<const Point> corners);

} // namespace velora
