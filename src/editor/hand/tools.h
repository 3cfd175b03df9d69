// What tools and gestures do to a picture once they are decided: placing, joining, moving,
// removing. Each is called inside edit_picture, or wraps itself in one step where it says so.
#pragma once

#include <string>
#include <vector>

#include "editor/draw.h"
#include "editor/hand/names.h"
#include "editor/model/records.h"

namespace velora {

// True when a request mode places nodes.
bool places_nodes(int mode);
// What a tool is called in its step: "Add Function".
const char *tool_name(int mode);

// Sets up a picture that is still fresh: its result node, or the name of a network.
void set_up_fresh(WinInfo *wi);

// The selected segments; nodes only, slot 1 too.
std::vector<int> selected_slots(const WinInfo *wi, bool nodes_only = false);
// The one node that is selected; 0 for none or several.
int selected_node(const WinInfo *wi);
void select_only(WinInfo *wi, int slot);
void select_these(WinInfo *wi, const std::vector<int> &slots);
void toggle_selected(WinInfo *wi, int slot);
// Whether a segment may be removed: the result node of a function or type may not.
bool may_remove(const WinInfo *wi, int slot);

// Places a node of a tool and selects it; it goes into an arrow that it is placed on. The slot, 0
// on failure.
int place_node_at(WinInfo *wi, int tool, Point at, int arc_below);
// Puts a node into an arrow: what fed the arrow's end feeds the node, and the node feeds the end.
void insert_into_arc(WinInfo *wi, int node, int arc);
// Moves the selected nodes; what is no parameter stays below the band.
void move_selected(WinInfo *wi, int dx, int dy);
// Takes nodes out: each node fed by exactly one other passes that on to what it fed.
void remove_and_join(WinInfo *wi, const std::vector<int> &slots);
void remove_slots(WinInfo *wi, const std::vector<int> &slots);
// Enlarges (2) or shrinks (1) the selected nodes.
void ResizeSelectedItems(WinInfo *wi, int which);

// Whether an arrow may run from one node to another.
bool may_join(const WinInfo *wi, int from, int to);
// The number, from 0, that an arrow from `from` would have at `to` by where the nodes stand;
// `skipped` is an arc that is not counted, 0 for none.
int natural_input(const WinInfo *wi, int from, int to, int skipped);
// Joins two nodes so that the arrow is the input of that number, from 0; -1 takes it as it comes.
// Where the places of the nodes give another number, the arrow takes a bend: a junction that stands
// in the right order. The slot of the last arc, 0 on failure.
int join_as_input(WinInfo *wi, int from, int to, int input);
// Joins as the missing input of that number, whichever of the others are there.
int join_to_input(WinInfo *wi, int from, int to, int input);
// The input that a point over a node asks for: the one whose stretch of the upper side it is on,
// among those that are there, not counting the arc `skipped`, and one more. -1 for the only one.
int input_under(const WinInfo *wi, int slot, Point at, int skipped);
// Makes the arc at the arrow's head the input of that number of its node or of another.
int rejoin_head(WinInfo *wi, int arc, int to, int input);

// Where a node stands that is to be input number `input` of a box: above it, in order among the
// others, overlapping nothing. May move everything below the band down to make room.
Point place_for_input(WinInfo *wi, int box, int input, int tool, const std::string &label);
// A free place near a point.
Point free_place(const WinInfo *wi, Point near, int tool, const std::string &label);

// Does what a row of the list of names says: places or takes the node and joins it. The node, 0 on
// failure. Selects what is to be typed to next.
int insert_name(WinInfo *wi, const KnownName &name, const Insertion &where);
// Where the next name goes when nothing else is said: into the first missing input of the selected
// box, else into the result when nothing feeds it, else nowhere.
Insertion next_insertion(const WinInfo *wi, int stub);

// Copies the selected nodes and the arrows among them for pasting; false when there are none.
bool copy_selected(const WinInfo *wi);
// Pastes what was copied last, at a step from where it stood; nothing when the clipboard holds
// something else by now.
bool can_paste();
void paste_copied(WinInfo *wi);
void duplicate_selected(WinInfo *wi);

// The segments of a picture in the order that Tab walks them: nodes from the top down and from left
// to right, each with the arrows that leave it.
std::vector<int> walking_order(const WinInfo *wi, bool nodes_only);
// The node nearest in a direction from another; 0 for none.
int node_towards(const PictureLayout &layout, int from, int dx, int dy);

} // namespace velora
