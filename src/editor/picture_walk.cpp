// The walk over a picture. Its output is bounded, since a box that is used twice is written twice
// and twenty boxes in a row may double it each time; steps that write nothing are counted too.
#include "editor/picture_walk.h"

#include <algorithm>

#include "core/events.h"
#include "editor/model/vel_segs.h"
#include "front/brackets.h"

namespace velora {

namespace {

std::vector<const Segm *> junctions(const WinInfo *wi, bool sinks) {
  std::vector<const Segm *> found;
  for (int slot = 1; slot <= wi->seg_ct; ++slot) {
    const Segm *seg = wi->seg_ments[slot];
    if (seg != nullptr && seg->type == kJunction && is_sink(seg) == sinks)
      found.push_back(seg);
  }
  return found;
}

const char *kSeveralResults = "Output is result of more than one function\n";

// Closes the text of a node that began at `from`.
void note_place(PictureWalk &walk, const Segm *node, std::size_t index) {
  walk.t->places[index].to = walk.out->size();
  walk.t->places[index].segnum = node->segnum;
}

std::size_t open_place(PictureWalk &walk, const Segm *node) {
  walk.t->places.push_back({node->segnum, walk.out->size() + 1, walk.out->size()});
  return walk.t->places.size() - 1;
}

bool within_bounds(PictureWalk &walk, const Segm *node) {
  CheckForUserEvents(83);
  check_stack();
  if (++walk.t->steps <= kMostWalkSteps && walk.out->size() <= kLongestTranslation)
    return true;
  return walk.t->tell(
      "Sorry! The text of this picture is too long: a box that is used several times "
      "is written out each time. Hold_Values share it\n",
      3, node->segnum);
}

// Goes from a hexagon that something feeds to what feeds it, noting the arcs passed. Null after a
// message when several arcs enter or the hexagons feed each other in a ring.
const Segm *pass_hexagons(PictureWalk &walk, const Segm *node, std::vector<const Segm *> &arcs) {
  std::vector<const Segm *> passed;
  while (node->type == kHexagon && !node->segb_ptr.empty()) {
    if (node->segb_ptr.size() > 1) {
      walk.t->tell(kSeveralResults, 3, node->segnum);
      return nullptr;
    }
    if (const auto met = std::find(passed.begin(), passed.end(), node); met != passed.end()) {
      const auto ring = static_cast<std::size_t>(met - passed.begin());
      const std::size_t first = arcs.size() - (passed.size() - ring);
      for (std::size_t i = first; i < arcs.size(); ++i)
        walk.t->highlighted.push_back(arcs[i]->segnum);
      walk.t->tell("Cycle in function graph - " + node->label + "\n", 3, node->segnum);
      return nullptr;
    }
    passed.push_back(node);
    const Segm *arc = node->segb_ptr.front();
    arcs.push_back(arc);
    node = arc_start(arc);
    if (node == nullptr)
      return nullptr;
  }
  return node;
}

// Writes a node that nothing feeds.
int write_leaf(PictureWalk &walk, const Segm *node) {
  if (node->type == kHoldValue) {
    walk.t->selected.push_back(node->segnum);
    walk.t->tell("ERROR: Incorrect use of Hold", 3, node->segnum);
    return kWalkFailed;
  }
  if (shape_style(node) == kDouble)
    return kWalked;
  const std::size_t place = open_place(walk, node);
  const int i = input_number(walk, node);
  if (i >= 0 && is_variable_input(walk, i)) {
    *walk.out += " ?" + std::to_string(i);
  } else {
    const std::string *text = &node->label;
    if (walk.values != nullptr)
      for (const auto &[slot, value] : *walk.values)
        if (slot == node->segnum)
          text = &value;
    if (CheckValid(*text, *walk.t, node->segnum) == 0) {
      if (text->find_first_not_of(' ') == std::string::npos)
        walk.t->tell("Sorry! A value of this picture is blank\n", 1, node->segnum);
      walk.t->selected.push_back(node->segnum);
      return kWalkFailed;
    }
    *walk.out += " (" + *text + ")";
  }
  note_place(walk, node, place);
  return kWalked;
}

// Reports the ring that ends in a node of the path; the distance back to it.
int report_cycle(PictureWalk &walk, std::size_t at, const std::vector<const Segm *> &arcs) {
  for (std::size_t i = at + 1; i < walk.path.size(); ++i)
    for (const Segm *arc : walk.path[i].arcs)
      walk.t->highlighted.push_back(arc->segnum);
  for (const Segm *arc : arcs)
    walk.t->highlighted.push_back(arc->segnum);
  std::sort(walk.t->highlighted.begin(), walk.t->highlighted.end());
  const Segm *node = walk.path[at].node;
  const std::string_view label = label_of(node);
  walk.t->tell("Cycle in function graph - " + (label.empty() ? walk.wi->name : std::string(label)) +
                   "\n",
               3, node->segnum);
  return static_cast<int>(walk.path.size() - at);
}

// Opens a node, writes what feeds it and closes it.
int write_node(PictureWalk &walk, const Segm *node, std::vector<const Segm *> arcs) {
  // A junction writes nothing, so it has no place in the text either.
  const bool silent = node->type == kJunction;
  const std::size_t place = silent ? 0 : open_place(walk, node);
  if (node->type == kHoldValue) {
    *walk.out += " (HOLDN #" + std::to_string(node->segnum);
  } else if (!silent) {
    const std::string_view label = label_of(node);
    *walk.out += " (";
    *walk.out += label.empty() ? std::string_view(walk.wi->name) : label;
  }
  walk.path.push_back({node, std::move(arcs)});
  const int result = walk_inputs(walk, node);
  walk.path.pop_back();
  if (result != kWalked)
    return result;
  if (!silent) {
    *walk.out += ')';
    note_place(walk, node, place);
  }
  return kWalked;
}

} // namespace

std::string_view label_of(const Segm *seg) {
  const std::string_view label = seg->label;
  const std::size_t from = label.find_first_not_of(' ');
  if (from == std::string_view::npos)
    return {};
  return label.substr(from, label.find_last_not_of(' ') - from + 1);
}

int CheckJunctionLinks(const WinInfo *wi, Translation &t) {
  const std::vector<const Segm *> sources = junctions(wi, false);
  const std::vector<const Segm *> sinks = junctions(wi, true);
  // With one sink every source means it, whatever the labels say.
  if (sources.empty() || sinks.size() == 1)
    return 1;
  int faulty = 0;
  for (const Segm *source : sources) {
    const auto fits = std::count_if(sinks.begin(), sinks.end(), [source](const Segm *sink) {
      return sink->label == source->label;
    });
    if (fits == 1)
      continue;
    t.selected.push_back(source->segnum);
    faulty = faulty == 0 ? source->segnum : faulty;
  }
  if (faulty == 0)
    return 1;
  return t.tell("ERROR: Junction connections are ambiguous or unmatched\n", 3, faulty);
}

const Segm *FindJunctionLink(const WinInfo *wi, const Segm *junction) {
  if (is_sink(junction))
    return junction;
  const Segm *link = nullptr;
  for (const Segm *sink : junctions(wi, true))
    if (link == nullptr || sink->label == junction->label)
      link = sink;
  return link;
}

std::vector<int> make_input_numbers(const WinInfo *wi) {
  const int band = NodeHeight(wi);
  std::vector<int> slots;
  for (int slot = kResultSlot + 1; slot <= wi->seg_ct; ++slot) {
    const Segm *seg = wi->seg_ments[slot];
    if (seg != nullptr && !is_arc(seg) && seg->ly < band)
      slots.push_back(slot);
  }
  std::stable_sort(slots.begin(), slots.end(),
                   [wi](int a, int b) { return wi->seg_ments[a]->lx < wi->seg_ments[b]->lx; });
  return slots;
}

TypeNames make_input_list(const WinInfo *wi) {
  TypeNames labels;
  for (const int slot : make_input_numbers(wi)) {
    const std::string label(label_of(wi->seg_ments[slot]));
    labels.push_back(split_signature(label).size() > 1 ? "(" + label + ")" : label);
  }
  return labels;
}

int CheckValid(std::string_view text, Translation &t, int segnum) {
  if (text.find_first_not_of(' ') == std::string_view::npos)
    return 0;
  BracketScan scan;
  scan.step_over(text);
  const std::vector<const char *> faults = scan.faults();
  for (const char *fault : faults)
    t.tell(fault, 1, segnum);
  return faults.empty() ? 1 : 0;
}

int input_number(const PictureWalk &walk, const Segm *node) {
  const auto at = std::find(walk.inputs.begin(), walk.inputs.end(), node->segnum);
  return at == walk.inputs.end() ? -1 : static_cast<int>(at - walk.inputs.begin());
}

bool is_variable_input(const PictureWalk &walk, int i) {
  const auto number = static_cast<std::size_t>(i);
  return walk.formals != nullptr && number < walk.formals->size() &&
         CompareParameterStrings(walk.wi->seg_ments[walk.inputs[number]]->label,
                                 (*walk.formals)[number]) == 0;
}

int walk_inputs(PictureWalk &walk, const Segm *node) {
  for (const Segm *arc : cyclic_order_types_of(node))
    if (const int result = get_type_from(walk, arc); result != kWalked)
      return result;
  return kWalked;
}

int get_type_from(PictureWalk &walk, const Segm *arc) {
  std::vector<const Segm *> arcs{arc};
  const Segm *node = arc_start(arc);
  if (node == nullptr || !within_bounds(walk, node))
    return kWalkFailed;
  node = pass_hexagons(walk, node, arcs);
  if (node == nullptr)
    return kWalkFailed;
  if (node->type == kJunction) {
    const auto [link, fresh] = walk.links.emplace(node, nullptr);
    if (fresh)
      link->second = FindJunctionLink(walk.wi, node);
    node = link->second;
    if (node == nullptr)
      return kWalkFailed;
  } else if (node->type == kHexagon || (node->type == kHoldValue && node->segb_ptr.empty())) {
    return write_leaf(walk, node);
  } else if (node->type == kHoldValue && node->segb_ptr.size() > 1) {
    walk.t->selected.push_back(node->segnum);
    walk.t->tell(kSeveralResults, 3, node->segnum);
    return kWalkFailed;
  }
  for (std::size_t i = walk.path.size(); i-- > 0;)
    if (walk.path[i].node == node)
      return report_cycle(walk, i, arcs);
  return write_node(walk, node, std::move(arcs));
}

} // namespace velora
