// The segments of a picture: growth, geometry, hit test, removal, compaction, copying and
// collapse. Called by drawing, mouse handling, the components and the network. Coordinates are
// those of the window, y growing downwards, so data flow from the top of a picture to its result
// at the bottom.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "editor/model/records.h"

namespace velora {

// The size of text that node heights are measured in.
extern int gNodeTextSize;
// The slot of the result node made by setup_for_fdef.
extern int fdef_res;

// The text size used for a picture: its own, held within 8 to 22.
int text_size_of(const WinInfo *wi);
// The font a picture is painted with: of size 8, 10, 16 or 22, and 12 for every other text size.
Font picture_font(const WinInfo *wi);
// Height of a new node. `wi` may be null.
int NodeHeight(const WinInfo *wi);
// The inside of a picture's window, or the size it was made with.
Rect picture_area(const WinInfo *wi);

// Grows the array by one slot with a fresh segment in it; answers the segment, null on failure.
Segm *extra_segment(WinInfo *wi);
// Sizes the array to seg_ct + 1 with a fresh segment in every slot; 1 or 0.
int make_all_extra_segment(WinInfo *wi);
// Makes `sptr` a node of the kind of tool `nodetype`, centred near (x, y), with number `id`.
void initialise_segment(const WinInfo *wi, Segm *sptr, int id, int nodetype, int x, int y);
// Adds a node of the kind of a tool; answers its slot, 0 on failure.
int add_node(WinInfo *wi, int nodetype, int x, int y);
// Gives a fresh function or constructors picture its result node, segment 1; answers 1 or 0.
int setup_for_fdef(WinInfo *wi);
// Adds a segment of kind `connection` (3) from one node to another; answers its slot, 0 when
// either is no node or memory is short.
int put_arc_between(WinInfo *wi, int from, int to, int connection);
// Makes room for one more link in a list.
void make_pointer_space(std::vector<Segm *> &list);

// True when a point is near enough to a line, from the left and top of `line` to its right and
// bottom, to hit an arc that runs there.
bool line_is_hit(const Rect &line, int x, int y);
// Hit test: the lowest slot hit, 0 for none. `nodeonly` non-zero leaves arcs out.
int search_for_segment(int x, int y, int nodeonly, const WinInfo *wi);
// The first function box labelled `name`, 0 for none.
int NamedFunInWin(const WinInfo *wi, const std::string &name);
// The arcs that enter a node in the order of its arguments: by the centre of the node each comes
// from, left to right, then upper first, then by number.
std::vector<Segm *> cyclic_order_types_of(const Segm *node);

// Removes a segment, a node with all its arcs.
void remove_segment(int segi, WinInfo *wi);
void remove_node(int segi, WinInfo *wi);
void remove_arc(int segi, WinInfo *wi);
// Removes every selected segment from slot 2 on.
void deleteSelectedItems(WinInfo *wi);
// Moves the segments down into empty slots, renumbers them and shrinks the array.
void CleanUpSegments(WinInfo *wi);

// Deep copy of the first `fn` slots; `tn` receives the number of slots made. Answers 1.
int CopySegments(const SegmArray &fromsegs, int fn, SegmArray &tosegs, int *tn);
// Copies everything of a segment but its links.
void CopySegInfo(Segm *to, const Segm *from);

// Copies the selected nodes, and the arcs among them, into a new window; null when none opens.
WinInfo *CopySelectedNodes(WinInfo *wi);
// Copies a node of another picture, centred at the same place; answers its slot, 0 on failure.
int transfer_add_node(WinInfo *to, const Segm *node);

// What lies in a rectangle: slots wholly inside, arcs that only end in it (inputs) and arcs that
// only start in it (outputs), each in slot order.
struct RectContents {
  std::vector<int> inside;
  std::vector<int> inputs;
  std::vector<int> outputs;
};
RectContents search_for_segment_in_rect(const WinInfo *wi, const Rect &rect);
// 1 when a slot is in a list.
int find_seg_in_array(int segi, std::span<const int> list);
// Collapse: copies what the dragged rectangle holds, as far as it feeds the first arc that leaves
// it, into a new window; the new record, or null after a message.
WinInfo *DoCopyNodes(WinInfo *wi, const Rect &drag);

} // namespace velora
