// The records of pictures: segments, the numbered array that owns them, and the picture record.
// Used by the whole editor, the segment file, the network and the windows of the shell.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "platform/desk_windows.h"

namespace velora {

// Kinds of a segment.
enum SegmentKind { kHexagon = 1, kBox = 2, kArc = 3, kJunction = 6, kHoldValue = 7 };

// Variants of a box or hexagon.
enum SegmentStyle { kPlain = 0, kDouble = 1, kBold = 2 };

// The drawing tools, by the request mode of the editor that places each.
enum DrawTool {
  kToolCopied = 0, // kind and style are set already
  kToolHexagon = 4,
  kToolConstructor = 6,
  kToolFunction = 7,
  kToolRecursive = 9,
  kToolType = 10,
  kToolRecursiveToo = 11,
  kToolParameter = 12,
  kToolJunction = 13,
  kToolHold = 31
};

// Flag bits of Segm::status. None is stored in files.
inline constexpr unsigned kVisited = 0x40;    // reached by a walk over the network
inline constexpr unsigned kCopiedBit = 0x100; // copied by the collapse that runs
inline constexpr unsigned kSelected = 0x200;
inline constexpr unsigned kHighlighted = 0x400; // an arc that is pointed out, as in a cycle

// Parts of Segm::style, which files keep: the variant of the shape, three bits of colour (the
// palette index), and the marks of a segment that is not shown and of one that layouts leave where
// it is.
inline constexpr int kShapeMask = 15;
inline constexpr int kColourShift = 4;
inline constexpr int kColourMask = 7 << kColourShift;
inline constexpr int kHidden = 1 << 7;
inline constexpr int kPinned = 1 << 8;

// One item of a picture: a node with a label, or an arc between two nodes.
// Invariants: `segnum` is the slot in the picture's array (but see DoCopyNodes); an arc has one
// start node, which lists it in segf_ptr, and one end node, which lists it in segb_ptr; the arrays
// point only to segments of the same picture and own nothing.
struct Segm {
  int type = 0;
  int segnum = 0;
  int style = 0;
  unsigned status = 0;
  // A node's box, y growing downwards; an arc's start and end point.
  int lx = 0;
  int ly = 0;
  int ux = 0;
  int uy = 0;
  std::string label;
  std::string annot;            // empty for none
  std::vector<Segm *> segb_ptr; // arcs that end at a node; the start node of an arc
  std::vector<Segm *> segf_ptr; // arcs that start at a node; the end node of an arc

  [[nodiscard]] Rect box() const { return {lx, ly, ux, uy}; }
};

// The variant of a segment's shape: SegmentStyle. Styles are compared by this alone.
inline int shape_style(const Segm *seg) {
  return seg->style & kShapeMask;
}
inline void set_shape_style(Segm *seg, int style) {
  seg->style = (seg->style & ~kShapeMask) | (style & kShapeMask);
}
// The colour of a segment, a PaletteIndex.
inline int colour_index(const Segm *seg) {
  return (seg->style & kColourMask) >> kColourShift;
}
inline void set_colour(Segm *seg, int palette_index) {
  seg->style = (seg->style & ~kColourMask) | ((palette_index << kColourShift) & kColourMask);
}
inline bool is_node(const Segm *seg) {
  return seg->type == kHexagon || seg->type == kBox || seg->type == kJunction ||
         seg->type == kHoldValue;
}
inline bool is_arc(const Segm *seg) {
  return seg->type == kArc;
}
inline Segm *arc_start(const Segm *arc) {
  return arc->segb_ptr.empty() ? nullptr : arc->segb_ptr.front();
}
inline Segm *arc_end(const Segm *arc) {
  return arc->segf_ptr.empty() ? nullptr : arc->segf_ptr.front();
}

// The numbered segments of one picture, which it owns. Slot 0 is no segment; a slot may be empty.
class SegmArray {
public:
  // The segment in a slot; null when the slot is empty or there is none of that number.
  Segm *operator[](int slot) const {
    return slot > 0 && slot < slots() ? slots_[static_cast<std::size_t>(slot)].get() : nullptr;
  }
  // Number of slots, slot 0 included.
  [[nodiscard]] int slots() const { return static_cast<int>(slots_.size()); }
  void resize(int slots) { slots_.resize(static_cast<std::size_t>(slots)); }
  void put(int slot, std::unique_ptr<Segm> seg) { at(slot) = std::move(seg); }
  std::unique_ptr<Segm> take(int slot) { return std::move(at(slot)); }
  void drop(int slot) { at(slot).reset(); }
  void clear() { slots_.clear(); }

private:
  std::unique_ptr<Segm> &at(int slot) { return slots_[static_cast<std::size_t>(slot)]; }
  std::vector<std::unique_ptr<Segm>> slots_;
};

// Kinds of a picture.
enum PictureKind { kFunctionPicture = 1, kConstructorsPicture = 2, kNetworkPicture = 3 };

inline constexpr const char *kNetworkName = "$$NETWORK$$";

// One picture, shown or stored. Records stand in the list gWinInfo, newest last, which changes
// only through NewWinInfo and RemovePicture.
struct WinInfo {
  std::string name; // empty for none: a fresh window
  int cmpnt = -1;   // component number of the picture within its function; -1 for none
  int seg_ct = 0;   // highest slot in use
  WindowId win = 0; // the window that shows it; 0 for a stored picture
  int ht = 0;       // size of the window when it was made
  int wth = 0;
  short wtype = kFunctionPicture;
  int saved = 1;   // only records with a non-zero value are written to the segment file
  int clean = 1;   // no unsaved drawing
  int txtsze = 12; // text size (zoom), used within 8 to 22
  std::string annot;
  SegmArray seg_ments;
  // The steps it went through, made with the first one; the editor knows what is in it.
  std::shared_ptr<struct PictureHistory> history;
  WinInfo *next = nullptr;
};

} // namespace velora
