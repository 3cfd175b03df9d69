// Lays out call links in levels. The levels come from a depth-first post-order, so a caller stands
// in a later level than at least one of the functions it calls, and cycles are broken where they
// were entered. All divisions truncate, from left to right as written.
#include "network/net_lay.h"

#include <memory>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "core/events.h"
#include "core/needs.h"
#include "db/f_dbops.h"
#include "network/links.h"

namespace velora {

namespace {

// Horizontal spacing in characters, width of a character, half the height of a box; the area.
constexpr int hor_sp = 8;
constexpr int ch_w = 12;
constexpr int ch_ht = 12;
constexpr int kWidth = 400;
constexpr int kHeight = 320;

constexpr int kOwnStatusBits = 0x70;

// One function of the layout.
struct Node {
  std::string_view item;
  std::vector<std::size_t> callees; // by node number, in pair order
  int wx = 0;
  int wy = 0;
  int bcons = 0;
  int fcons = 0;
  int level = 0;
  int segno = 0;
  bool done = false;

  [[nodiscard]] int width() const { return static_cast<int>(item.size()) * ch_w; }
};

using Level = std::vector<std::size_t>;

// The layout between FixNetNodeLevels and do_layout.
struct Layout {
  PairList pairs;
  std::vector<Node> nodes; // in order of first appearance
  std::unordered_map<std::string_view, std::size_t> numbers;
  std::vector<std::size_t> callers; // nodes that call, in order of first appearance
  std::vector<std::size_t> ord_list;
  std::vector<Level> levels;

  std::size_t number_of(std::string_view name) {
    const auto [place, is_new] = numbers.try_emplace(name, nodes.size());
    if (is_new) {
      nodes.emplace_back();
      nodes.back().item = name;
    }
    return place->second;
  }
};

Layout layout;

// An end takes part when its status is 0, when it carries a bit of its own, or when it is marked
// kept and not dropped.
bool end_is_kept(int status, int kept, int dropped) {
  return status == 0 || (status & kOwnStatusBits) != 0 ||
         ((status & kept) != 0 && (status & dropped) == 0);
}

// Copies the pairs that take part; the status of a name is the union of what any pair says of it.
void ipairs_to_pairs() {
  std::unordered_map<std::string_view, int> status;
  for (const Pair &pair : ipairs) {
    status[pair.first] |= pair.f_status;
    status[pair.second] |= pair.s_status;
  }
  for (const Pair &pair : ipairs) {
    CheckForUserEvents(0);
    if (!end_is_kept(pair.f_status, 8, 2) || !end_is_kept(pair.s_status, 4, 1))
      continue;
    layout.pairs.push_back(pair);
    layout.pairs.back().f_status = status[pair.first];
    layout.pairs.back().s_status = status[pair.second];
  }
}

// Numbers the functions and notes who calls whom.
void pairs_to_ARRAY() {
  for (const Pair &pair : layout.pairs) {
    const std::size_t caller = layout.number_of(pair.first);
    const std::size_t callee = layout.number_of(pair.second);
    if (layout.nodes[caller].callees.empty())
      layout.callers.push_back(caller);
    layout.nodes[caller].callees.push_back(callee);
    ++layout.nodes[caller].fcons;
    ++layout.nodes[callee].bcons;
  }
}

// Appends `root` and what it calls, callees first; a function that was reached before is passed by.
void order_from(std::size_t root) {
  struct Visit {
    std::size_t node;
    std::size_t next;
  };
  std::vector<Visit> open{{root, 0}};
  layout.nodes[root].done = true;
  while (!open.empty()) {
    CheckForUserEvents(0);
    Visit &visit = open.back();
    const std::vector<std::size_t> &callees = layout.nodes[visit.node].callees;
    if (visit.next == callees.size()) {
      layout.ord_list.push_back(visit.node);
      open.pop_back();
      continue;
    }
    const std::size_t callee = callees[visit.next++];
    if (!layout.nodes[callee].done) {
      layout.nodes[callee].done = true;
      open.push_back({callee, 0});
    }
  }
}

void ARRAY_to_ordered_list() {
  if (layout.callers.empty())
    error_exit("There are no links in the Network");
  for (const std::size_t caller : layout.callers)
    if (!layout.nodes[caller].done)
      order_from(caller);
}

// A function joins the newest level unless it calls a function of that level.
void ordered_list_to_levels() {
  for (const std::size_t number : layout.ord_list) {
    const int newest = static_cast<int>(layout.levels.size());
    Node &node = layout.nodes[number];
    bool calls_newest = newest == 0;
    for (const std::size_t callee : node.callees)
      calls_newest = calls_newest || layout.nodes[callee].level == newest;
    if (calls_newest)
      layout.levels.emplace_back();
    node.level = static_cast<int>(layout.levels.size());
    layout.levels.back().push_back(number);
  }
}

// rows = ((nodes + 1) * hor_sp + characters) * ch_w / width + 1
int rows_of(const Level &level) {
  int charct = 0;
  for (const std::size_t number : level)
    charct += static_cast<int>(layout.nodes[number].item.size());
  return ((static_cast<int>(level.size()) + 1) * hor_sp + charct) * ch_w / kWidth + 1;
}

// Places row `i` of `layer_ct` rows of a level; `done` nodes stand in the rows before it.
void place_row(const Level &level, int lvl_no, int i, int layer_ct, int &done) {
  const int level_ct = static_cast<int>(layout.levels.size());
  const auto step = static_cast<std::size_t>(layer_ct);
  int extx = 0;
  for (auto n = static_cast<std::size_t>(i); n < level.size(); n += step)
    extx += layout.nodes[level[n]].width();
  const int this_layer = (static_cast<int>(level.size()) - done) / (layer_ct - i);
  const int gap_x = (kWidth - extx) / (this_layer + 1);
  const int off_x = gap_x / layer_ct;
  const int off_y = kHeight / ((level_ct + 1) * layer_ct);
  int curr_x = gap_x;
  for (auto n = static_cast<std::size_t>(i); n < level.size(); n += step) {
    Node &node = layout.nodes[level[n]];
    node.wx = off_x * i + curr_x;
    node.wy = kHeight - lvl_no * kHeight / (level_ct + 1) + off_y * i;
    curr_x += node.width() + gap_x;
  }
  done += this_layer;
}

void pos_nodes() {
  int lvl_no = 0;
  for (const Level &level : layout.levels) {
    ++lvl_no;
    const int layer_ct = rows_of(level);
    int done = 0;
    for (int i = 0; i < layer_ct; ++i)
      place_row(level, lvl_no, i, layer_ct, done);
  }
}

// Collects segments and gives them their numbers, from 1 in order of first use.
class SegmentMaker {
public:
  explicit SegmentMaker(SegmArray &segs) : segs_(segs) {
    segs_.clear();
    segs_.resize(static_cast<int>(layout.nodes.size() + layout.pairs.size()) + 1);
  }

  Segm *make_node_segment(Node &node) {
    if (node.segno != 0)
      return segs_[node.segno];
    CheckForUserEvents(0);
    Segm *seg = next();
    node.segno = seg->segnum;
    seg->type = kBox;
    seg->label = node.item;
    seg->segf_ptr.reserve(static_cast<std::size_t>(node.fcons));
    seg->segb_ptr.reserve(static_cast<std::size_t>(node.bcons));
    seg->lx = node.wx - ch_w;
    seg->ly = node.wy - ch_ht;
    seg->ux = seg->lx + node.width();
    seg->uy = seg->ly + 2 * ch_ht;
    return seg;
  }

  void make_arc_segment(Segm *caller, Segm *callee) {
    Segm *arc = next();
    arc->type = kArc;
    arc->style = 1;
    arc->label = "I/O";
    arc->segb_ptr.push_back(caller);
    arc->segf_ptr.push_back(callee);
    caller->segf_ptr.push_back(arc);
    callee->segb_ptr.push_back(arc);
  }

  [[nodiscard]] int count() const { return count_; }

private:
  Segm *next() {
    auto seg = std::make_unique<Segm>();
    seg->segnum = ++count_;
    Segm *made = seg.get();
    segs_.put(count_, std::move(seg));
    return made;
  }

  SegmArray &segs_;
  int count_ = 0;
};

} // namespace

void FixNetNodeLevels() {
  layout = {};
  ipairs_to_pairs();
  ipairs.clear();
  pairs_to_ARRAY();
  ARRAY_to_ordered_list();
  ordered_list_to_levels();
  pos_nodes();
}

int do_layout(SegmArray &seg_ments) {
  SegmentMaker maker(seg_ments);
  for (const Pair &pair : layout.pairs) {
    Segm *caller = maker.make_node_segment(layout.nodes[layout.number_of(pair.first)]);
    Segm *callee = maker.make_node_segment(layout.nodes[layout.number_of(pair.second)]);
    maker.make_arc_segment(caller, callee);
  }
  layout = {};
  return maker.count();
}

int MakeNetworkSegs(SegmArray &seg_ments) {
  scan_file_to_ARRAY(current_database_file());
  ARRAY_to_ipairs();
  ARRAY.clear();
  remove_self_recursions(kCallsItself);
  remove_duplicates();
  FixNetNodeLevels();
  return do_layout(seg_ments);
}

} // namespace velora
