// Growing and pruning of network pictures. Nodes come from a layout of the link set made aside, and
// keep its coordinates.
#include "network/net_util.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

#include "core/events.h"
#include "core/symbols.h"
#include "editor/model/vel_segs.h"
#include "network/links.h"
#include "network/net_lay.h"
#include "network/net_view.h"
#include "platform/response.h"

namespace velora {

namespace {

constexpr int kFilterFrom = 155;
constexpr int kFilterTo = 156;
constexpr unsigned kMarked = kCopiedBit; // to be deleted

bool adds_callees(int choice) {
  return choice <= kChildren;
}

// The boxes of a picture by their labels, kept up to date while nodes are added; of two of one name
// the first.
class NodesByName {
public:
  explicit NodesByName(WinInfo *wi) : wi_(wi) {
    for (int slot = 1; slot <= wi->seg_ct; ++slot)
      if (const Segm *seg = wi->seg_ments[slot]; seg != nullptr && seg->type == kBox)
        slots_.emplace(seg->label, slot);
  }

  // The slot of the node named like `node`, which is copied into the picture when there is none; 0
  // when memory is short.
  int slot_for(const Segm *node) {
    if (const auto found = slots_.find(node->label); found != slots_.end()) {
      set_hidden(wi_->seg_ments[found->second], false);
      return found->second;
    }
    Segm *copy = extra_segment(wi_);
    if (copy == nullptr)
      return 0;
    CopySegInfo(copy, node);
    copy->segnum = wi_->seg_ct;
    slots_.emplace(node->label, wi_->seg_ct);
    return wi_->seg_ct;
  }

private:
  WinInfo *wi_;
  std::unordered_map<std::string, int> slots_;
};

bool joined(const WinInfo *wi, int from, int to) {
  const Segm *start = wi->seg_ments[from];
  const Segm *end = wi->seg_ments[to];
  const auto leads_to_end = [end](const Segm *arc) { return arc_end(arc) == end; };
  return std::any_of(start->segf_ptr.begin(), start->segf_ptr.end(), leads_to_end);
}

// Adds the node at the other end of each arc that leaves a laid-out node, and the arcs.
void CheckAndAddSegDown(WinInfo *wi, NodesByName &nodes, int slot, const Segm *laid_out) {
  for (const Segm *arc : laid_out->segf_ptr) {
    const int callee = nodes.slot_for(arc_end(arc));
    if (callee != 0 && !joined(wi, slot, callee))
      put_arc_between(wi, slot, callee, kArc);
  }
}

// The same with the arcs that enter it.
void CheckAndAddSegUp(WinInfo *wi, NodesByName &nodes, int slot, const Segm *laid_out) {
  for (const Segm *arc : laid_out->segb_ptr) {
    const int caller = nodes.slot_for(arc_start(arc));
    if (caller != 0 && !joined(wi, caller, slot))
      put_arc_between(wi, caller, slot, kArc);
  }
}

void ExpandOnWindow(WinInfo *wi, const Links &set, int choice, const std::string &name) {
  SegmArray laid_out;
  ipairs = set.ipr;
  FixNetNodeLevels();
  const int count = do_layout(laid_out);
  const bool named_only = choice == kChildren || choice == kParents;
  NodesByName nodes(wi);
  for (int i = 1; i <= count; ++i) {
    CheckForUserEvents(0);
    const Segm *node = laid_out[i];
    if (node->type != kBox || (named_only && node->label != name))
      continue;
    const int slot = nodes.slot_for(node);
    if (slot == 0)
      return;
    if (adds_callees(choice))
      CheckAndAddSegDown(wi, nodes, slot, node);
    else
      CheckAndAddSegUp(wi, nodes, slot, node);
  }
}

bool to_be_deleted(const Segm *node, int choice) {
  if (choice == kAllLowest)
    return true;
  if (choice == kBuiltinAndSystem && node->label == "lambda")
    return true;
  const symbol *sym = node->label.empty() ? nullptr : find_symbol(node->label.c_str(), 0);
  if (sym == nullptr)
    return false;
  if (choice == kBuiltinAndSystem)
    return sym->stype == kBuiltinFunction || sym->stype == kSysFunction;
  return sym->stype == kBuiltinConstructor || sym->stype == kConstructor;
}

// Walks the arcs that leave a node and marks the lowest functions it reaches.
void MarkLowestFuns(Segm *from, int choice) {
  std::vector<Segm *> open{from};
  while (!open.empty()) {
    CheckForUserEvents(0);
    Segm *node = open.back();
    open.pop_back();
    if ((node->status & kVisited) != 0)
      continue;
    node->status |= kVisited;
    if (node->segf_ptr.empty() && to_be_deleted(node, choice))
      node->status |= kMarked;
    for (const Segm *arc : node->segf_ptr)
      if (Segm *end = arc_end(arc))
        open.push_back(end);
  }
}

// Takes the marks of a walk off again, whatever way it ends.
class Marks {
public:
  explicit Marks(WinInfo *wi) : wi_(wi) {}
  ~Marks() {
    for (int slot = 1; slot <= wi_->seg_ct; ++slot)
      if (Segm *seg = wi_->seg_ments[slot])
        seg->status &= ~(kVisited | kMarked);
  }
  Marks(const Marks &) = delete;
  Marks &operator=(const Marks &) = delete;

private:
  WinInfo *wi_;
};

// The grid of tenths of a window: from (w, 2h) down, restarting at h in the next column when it
// would reach 9h, and in the first column when that would reach 9w.
class TenthsGrid {
public:
  explicit TenthsGrid(const WinInfo *wi)
      : w_(std::max(1, picture_area(wi).width() / 10)),
        h_(std::max(1, picture_area(wi).height() / 10)), at_{w_, 2 * h_} {}
  [[nodiscard]] Point at() const { return at_; }
  void step() {
    at_.y += h_;
    if (at_.y < 9 * h_)
      return;
    at_.y = h_;
    at_.x += w_;
    if (at_.x >= 9 * w_)
      at_.x = w_;
  }

private:
  int w_;
  int h_;
  Point at_;
};

// Adds a function's box; its slot, 0 on failure.
int add_function(WinInfo *wi, const std::string &name, Point at) {
  Segm *seg = extra_segment(wi);
  if (seg == nullptr)
    return 0;
  initialise_segment(wi, seg, wi->seg_ct, kToolFunction, at.x, at.y);
  seg->label = name;
  return wi->seg_ct;
}

std::vector<std::string> root_functions() {
  if (find_links(1) == nullptr)
    MakeFirstLinkage();
  SegmArray laid_out;
  ipairs = find_links(1)->ipr;
  FixNetNodeLevels();
  const int count = do_layout(laid_out);
  std::vector<std::string> names;
  for (int i = 1; i <= count; ++i)
    if (laid_out[i]->type == kBox && laid_out[i]->segb_ptr.empty())
      names.push_back(laid_out[i]->label);
  return names;
}

void name_network(WinInfo *wi) {
  wi->name = kNetworkName;
  wi->saved = 0;
}

} // namespace

std::vector<Segm *> selected_nodes(const WinInfo *wi) {
  std::vector<Segm *> nodes;
  for (int slot = 1; slot <= wi->seg_ct; ++slot)
    if (Segm *seg = wi->seg_ments[slot];
        seg != nullptr && is_node(seg) && (seg->status & kSelected) != 0)
      nodes.push_back(seg);
  return nodes;
}

int ExpandNetNodes(WinInfo *wi, int choice) {
  int without_links = 0;
  const bool new_window = choice == kDescendantsInNewWindow || choice == kAncestorsInNewWindow;
  // Names, not segments: the picture grows meanwhile.
  std::vector<std::string> names;
  for (const Segm *node : selected_nodes(wi))
    names.push_back(node->label);
  if (!names.empty() && find_links(1) == nullptr)
    MakeFirstLinkage();
  for (const std::string &name : names) {
    const int id = bi_link_filters(adds_callees(choice) ? kFilterFrom : kFilterTo, 1, name);
    const Links *set = find_links(id);
    if (set == nullptr || set->ipr.empty())
      ++without_links;
    else if (new_window)
      bi_link_show(id);
    else
      ExpandOnWindow(wi, *set, choice, name);
  }
  return without_links;
}

int DelLowestFuns(WinInfo *wi, int choice) {
  const Marks marks(wi);
  for (Segm *node : selected_nodes(wi))
    MarkLowestFuns(node, choice);
  int removed = 0;
  for (int slot = 1; slot <= wi->seg_ct; ++slot) {
    const Segm *seg = wi->seg_ments[slot];
    if (seg == nullptr || (seg->status & kMarked) == 0)
      continue;
    remove_segment(slot, wi);
    ++removed;
  }
  return removed;
}

int DisplayRootNodes(WinInfo *wi) {
  const std::vector<std::string> names = root_functions();
  const auto filled = [wi] {
    for (int slot = 1; slot <= wi->seg_ct; ++slot)
      if (wi->seg_ments[slot] != nullptr)
        return true;
    return false;
  };
  if (filled())
    BeepMsge("Warning : The Network window is not empty\n", 0);
  TenthsGrid grid(wi);
  for (const std::string &name : names) {
    if (add_function(wi, name, grid.at()) == 0)
      return 0;
    grid.step();
  }
  name_network(wi);
  return 1;
}

int Add_Net_Node(WinInfo *wi, const std::string &name) {
  if (const int known = NamedFunInWin(wi, name)) {
    set_hidden(wi->seg_ments[known], false);
    return known;
  }
  // After as many steps as there are nodes every place has been tried.
  TenthsGrid grid(wi);
  for (int tried = 0; tried <= wi->seg_ct; ++tried) {
    if (search_for_segment(grid.at().x, grid.at().y, 1, wi) == 0)
      break;
    grid.step();
  }
  const int slot = add_function(wi, name, grid.at());
  if (slot != 0)
    name_network(wi);
  return slot;
}

} // namespace velora
