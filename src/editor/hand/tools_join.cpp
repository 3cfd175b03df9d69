// Joining nodes so that arguments come in the order that was asked for, finding places for new
// nodes, and what typing a name does.
#include <algorithm>

#include "editor/draw_layout.h"
#include "editor/edit.h"
#include "editor/hand/tools.h"
#include "editor/model/vel_segs.h"
#include "editor/picture_walk.h"

namespace velora {

namespace {

constexpr int kRowGap = 30;    // between a new node and the box that it feeds
constexpr int kColumnGap = 16; // between neighbours in a row
constexpr int kLeastGap = 12;  // kept around a new node
constexpr int kBendAbove = 18; // of a bend above its box

int centre_x(const Segm *node) {
  return node->box().centre().x;
}

// The centres of what feeds a node, in the order of its inputs.
std::vector<int> feeder_centres(const Segm *node, int skipped) {
  std::vector<int> centres;
  for (const Segm *arc : cyclic_order_types_of(node))
    if (arc->segnum != skipped)
      centres.push_back(centre_x(arc_start(arc)));
  return centres;
}

// A box for a node of a tool and label, around a point.
Rect box_for(const WinInfo *wi, int tool, const std::string &label, Point at) {
  Segm node;
  initialise_segment(wi, &node, 0, tool, at.x, at.y);
  node.label = label;
  const Rect box = fit_node(&node, 0, Font{});
  const int dx = at.x - box.centre().x;
  return {box.left + dx, box.top, box.right + dx, box.bottom};
}

// The node that a new box would stand too near to, or null. Parameters in the band are left alone.
const Segm *in_the_way(const PictureLayout &layout, const Rect &box) {
  for (const NodePlace &node : layout.nodes) {
    const Rect &other = node.box;
    if (other.left - kLeastGap < box.right && box.left < other.right + kLeastGap &&
        other.top - kLeastGap / 2 < box.bottom && box.top < other.bottom + kLeastGap / 2)
      return node.seg;
  }
  return nullptr;
}

Rect moved_to(const Rect &box, int x) {
  const int dx = x - box.centre().x;
  return {box.left + dx, box.top, box.right + dx, box.bottom};
}

// Moves everything below the band down.
void make_room(WinInfo *wi, int by) {
  for (int slot = 1; slot <= wi->seg_ct; ++slot) {
    Segm *seg = wi->seg_ments[slot];
    if (seg != nullptr && is_node(seg) && seg->ly >= argument_band())
      move_node(seg, 0, by);
  }
}

bool is_fed(const WinInfo *wi, int slot) {
  const Segm *node = wi->seg_ments[slot];
  return node != nullptr && !node->segb_ptr.empty();
}

// The node to go on with after one was placed: itself when it wants inputs, else the nearest node
// on the way to the result that does.
int next_to_fill(const WinInfo *wi, int slot) {
  for (int steps = 0; steps <= wi->seg_ct; ++steps) {
    const Segm *node = wi->seg_ments[slot];
    if (node == nullptr)
      return 0;
    if (!missing_inputs(wi, node).empty())
      return slot;
    if (node->segf_ptr.empty() || arc_end(node->segf_ptr.back()) == nullptr)
      return 0;
    slot = arc_end(node->segf_ptr.back())->segnum;
  }
  return 0;
}

} // namespace

bool may_join(const WinInfo *wi, int from, int to) {
  const Segm *start = wi->seg_ments[from];
  const Segm *end = wi->seg_ments[to];
  if (start == nullptr || end == nullptr || !is_node(start) || !is_node(end))
    return false;
  if (wi->wtype == kNetworkPicture)
    return true;
  // The result feeds nothing.
  return from != to && from != 1;
}

int natural_input(const WinInfo *wi, int from, int to, int skipped) {
  const std::vector<int> centres = feeder_centres(wi->seg_ments[to], skipped);
  const int x = centre_x(wi->seg_ments[from]);
  return static_cast<int>(std::upper_bound(centres.begin(), centres.end(), x) - centres.begin());
}

int join_as_input(WinInfo *wi, int from, int to, int input) {
  if (!may_join(wi, from, to))
    return 0;
  const Segm *end = wi->seg_ments[to];
  const std::vector<int> centres = feeder_centres(end, 0);
  const int count = static_cast<int>(centres.size());
  if (input < 0 || natural_input(wi, from, to, 0) == std::min(input, count))
    return put_arc_between(wi, from, to, kArc);
  // A junction above the box, between the neighbours that the arrow is to come between.
  const auto place = static_cast<std::size_t>(std::min(input, count));
  int x = centre_x(end);
  if (place == 0)
    x = centres.front() - kColumnGap;
  else if (place == centres.size())
    x = centres.back() + kColumnGap;
  else
    x = (centres[place - 1] + centres[place]) / 2;
  const int bend = add_node(wi, kToolJunction, x, std::max(end->ly - kBendAbove, argument_band()));
  if (bend == 0)
    return 0;
  keep_below_band(wi, wi->seg_ments[bend]);
  put_arc_between(wi, from, bend, kArc);
  return put_arc_between(wi, bend, to, kArc);
}

int join_to_input(WinInfo *wi, int from, int to, int input) {
  const int made = join_as_input(wi, from, to, place_of_input(wi, wi->seg_ments[to], input));
  if (made != 0)
    mean_input(wi->seg_ments[made], input);
  return made;
}

int rejoin_head(WinInfo *wi, int arc, int to, int input) {
  const Segm *seg = wi->seg_ments[arc];
  if (seg == nullptr || !is_arc(seg) || arc_start(seg) == nullptr)
    return 0;
  Segm *start = arc_start(seg);
  // A bend that only served this arrow moves instead of another one being made behind it.
  const bool bend = start->type == kJunction && start->segb_ptr.size() == 1 &&
                    start->segf_ptr.size() == 1 && arc_start(start->segb_ptr[0]) != nullptr;
  int from = start->segnum;
  if (!may_join(wi, bend ? arc_start(start->segb_ptr[0])->segnum : from, to))
    return 0;
  if (bend) {
    from = arc_start(start->segb_ptr[0])->segnum;
    remove_segment(start->segnum, wi);
  } else {
    remove_arc(arc, wi);
  }
  return join_as_input(wi, from, to, input);
}

int input_under(const WinInfo *wi, int slot, Point at, int skipped) {
  const Segm *node = wi->seg_ments[slot];
  int there = 0;
  for (const Segm *arc : node->segb_ptr)
    there += arc->segnum != skipped ? 1 : 0;
  if (there == 0)
    return -1;
  const int width = std::max(1, node->ux - node->lx);
  return std::clamp((at.x - node->lx) * (there + 1) / width, 0, there);
}

Point place_for_input(WinInfo *wi, int box, int input, int tool, const std::string &label) {
  const Segm *target = wi->seg_ments[box];
  const int wanted = std::max<int>(static_cast<int>(wanted_inputs(wi, target).size()), input + 1);
  Rect place = box_for(wi, tool, label, target->box().centre());
  const int height = place.height();
  int y = target->ly - kRowGap - height / 2;
  if (y - height / 2 < argument_band() + kLeastGap) {
    const int by = argument_band() + kLeastGap - (y - height / 2);
    make_room(wi, by);
    y += by;
  }
  const std::vector<int> centres = feeder_centres(target, 0);
  const auto at = static_cast<std::size_t>(
      std::clamp(place_of_input(wi, target, input), 0, static_cast<int>(centres.size())));
  int x = centre_x(target) + (2 * input - (wanted - 1)) * (place.width() + kColumnGap) / 2;
  if (at > 0)
    x = std::max(x, centres[at - 1] + kColumnGap);
  if (at < centres.size())
    x = std::min(x, centres[at] - kColumnGap);
  place = box_for(wi, tool, label, {x, y});
  // Away from what is in the way: to the right, or to the left when something follows there.
  const PictureLayout layout = lay_out_picture(wi);
  const bool leftwards = at < centres.size();
  for (std::size_t tries = 0; tries <= layout.nodes.size(); ++tries) {
    const Segm *other = in_the_way(layout, place);
    if (other == nullptr)
      break;
    const int half = place.width() / 2 + kColumnGap;
    place = moved_to(place, leftwards ? other->lx - half : other->ux + half);
  }
  return {place.centre().x, y};
}

Point free_place(const WinInfo *wi, Point near, int tool, const std::string &label) {
  Rect place = box_for(wi, tool, label, near);
  const PictureLayout layout = lay_out_picture(wi);
  for (std::size_t tries = 0; tries <= layout.nodes.size(); ++tries) {
    const Segm *other = in_the_way(layout, place);
    if (other == nullptr)
      break;
    place = moved_to(place, other->ux + place.width() / 2 + kColumnGap);
  }
  return {place.centre().x, near.y};
}

Insertion next_insertion(const WinInfo *wi, int stub) {
  Insertion where;
  const int slot = selected_node(wi);
  const Segm *node = wi->seg_ments[slot];
  const std::vector<int> missing =
      node != nullptr && slot != 1 ? missing_inputs(wi, node) : std::vector<int>{};
  if (!missing.empty()) {
    where.into = slot;
    const bool chosen = std::find(missing.begin(), missing.end(), stub) != missing.end();
    where.input = chosen ? stub : missing.front();
    where.at = {node->box().centre().x, node->ly};
    return where;
  }
  const bool result_waits = wi->wtype == kFunctionPicture && !is_fed(wi, 1);
  // A box that wants nothing more is gone on from; a value or an input is not.
  if (result_waits && (node == nullptr || slot == 1 || node->type != kBox)) {
    where.into = 1;
    const Rect area = picture_area(wi);
    where.at = wi->seg_ments[1] != nullptr
                   ? wi->seg_ments[1]->box().centre()
                   : Point{area.width() / 2, area.height() - NodeHeight(wi)};
  } else if (node != nullptr) {
    where.at = {node->ux + kColumnGap, node->box().centre().y};
  }
  return where;
}

namespace {

// In a picture of constructors what is typed says where it goes: a constructor into the type, a
// type into the constructor that is chosen.
Insertion among_constructors(const WinInfo *wi, const KnownName &name, Insertion where) {
  if (wi->wtype != kConstructorsPicture || where.placed || where.fed_by != 0)
    return where;
  const int chosen = selected_node(wi);
  const Segm *node = wi->seg_ments[chosen];
  if (name.tool == kToolConstructor)
    where.into = 1;
  else if (name.tool == kToolType && node != nullptr && node->type == kBox)
    where.into = chosen;
  if (where.into != 0)
    where.input = static_cast<int>(wi->seg_ments[where.into]->segb_ptr.size());
  return where;
}

// Gives the type of a picture of constructors its name.
int name_type(WinInfo *wi, const std::string &name) {
  wi->seg_ments[1]->label = name;
  select_only(wi, 1);
  return 1;
}

} // namespace

int insert_name(WinInfo *wi, const KnownName &name, const Insertion &wanted) {
  set_up_fresh(wi);
  if (type_is_unnamed(wi))
    return name_type(wi, name.name);
  Insertion where = among_constructors(wi, name, wanted);
  int slot = name.slot;
  const bool is_argument = name.tool == kToolParameter;
  if (is_argument && where.into == 1)
    where.into = 0; // a new input waits for what uses it
  if (slot == 0) {
    Point at = where.at;
    if (is_argument && !where.placed) {
      // A new argument goes behind the others.
      const std::vector<int> there = make_input_numbers(wi);
      const int h = NodeHeight(wi);
      at = free_place(wi, {there.empty() ? 3 * h : wi->seg_ments[there.back()]->ux + 2 * h, h},
                      name.tool, name.name);
    } else if (!where.placed && where.into != 0) {
      at = place_for_input(wi, where.into, where.input, name.tool, name.name);
    } else if (!where.placed) {
      at = free_place(wi, at, name.tool, name.name);
    }
    slot = add_node(wi, name.tool, at.x, at.y);
    if (slot == 0)
      return 0;
    Segm *node = wi->seg_ments[slot];
    node->label = name.name;
    // The geometry of new boxes puts their middle left of the point; here it is the middle that was
    // looked for, or pointed at.
    move_node(node, at.x - node->box().centre().x, 0);
    keep_below_band(wi, node);
  }
  if (where.fed_by != 0)
    join_as_input(wi, where.fed_by, slot, -1);
  if (where.arc != 0)
    insert_into_arc(wi, slot, where.arc);
  if (where.into != 0)
    join_to_input(wi, slot, where.into, where.input);
  if (wi->wtype == kConstructorsPicture) {
    // A constructor takes further types until another one is typed.
    select_only(wi, name.tool == kToolType && where.into != 0 ? where.into : slot);
    return slot;
  }
  const int next = next_to_fill(wi, slot);
  const int goes_on = next != 0 ? next : name.slot != 0 ? where.into : slot;
  // An argument that was joined leads on to whoever it feeds now, not along its other arrows.
  const int filling = name.slot != 0 || is_argument ? next_to_fill(wi, where.into) : next;
  select_only(wi, name.slot != 0 || is_argument ? (filling != 0 ? filling : goes_on) : goes_on);
  return slot;
}

} // namespace velora
