// Boxes that stood keep their places when pictures are built again.
//
// Two pictures are walked side by side: result with result, the n-th input with the n-th input,
// parameters from left to right, constructors by their names. A clause that stands as it was, up to
// names of variables, has all its boxes where they were, whatever number its picture had. In a
// changed clause a box keeps its place when its label and the labels of all boxes on the way to it
// are the same.
#include <algorithm>
#include <map>
#include <memory>
#include <set>

#include "core/events.h"
#include "editor/builder_records.h"
#include "editor/clause_form.h"
#include "editor/guard.h"
#include "editor/model/records.h"
#include "editor/model/seg_file.h"
#include "editor/model/vel_segs.h"
#include "editor/tidy.h"

namespace velora {

namespace {

// A picture that stood, with what it meant.
struct OldPicture {
  WinInfo *wi;
  ClauseForm form;
  bool used = false;
};

graph_block &block_of(BuiltPicture &picture, int number) {
  return picture.segments[static_cast<std::size_t>(number) - 1];
}

std::string label_in_file(const std::string &label) {
  return label_from_file(label_to_file(label));
}

// Pairs the boxes of a new picture with nodes of an old one. Each node is given once.
class Pairing {
public:
  Pairing(BuiltPicture &picture, const WinInfo *old, bool labels_count)
      : picture_(picture), old_(old), labels_count_(labels_count) {}

  void find() {
    if (picture_.source->stype == kTokTdec)
      return find_in_type();
    const std::vector<Segm *> arguments = argument_nodes(old_);
    for (int i = 0; i < picture_.arguments && i < static_cast<int>(arguments.size()); ++i)
      give(i + 2, arguments[static_cast<std::size_t>(i)]);
    walk(1, old_->seg_ments[1]);
  }

  // True when every box of the new picture was given a node.
  [[nodiscard]] bool complete() const {
    const auto boxes = std::count_if(picture_.segments.begin(), picture_.segments.end(),
                                     [](const graph_block &block) { return block.shape != kArc; });
    return static_cast<std::size_t>(boxes) == pairs_.size();
  }

  // Moves the boxes to their nodes' corners. Annotations and colours come along.
  void apply() {
    for (const auto &[number, node] : pairs_) {
      graph_block &block = block_of(picture_, number);
      block.lx = node->lx;
      block.ly = node->ly;
      block.ux = node->ux;
      block.uy = node->uy;
      block.line = (block.line & kShapeMask) | (node->style & ~kShapeMask);
      block.annot = node->annot;
    }
    picture_.annot = old_->annot;
    picture_.text_size = old_->txtsze;
  }

private:
  bool give(int number, const Segm *node) {
    if (node == nullptr || given_.contains(node) ||
        (labels_count_ && node->label != label_in_file(block_of(picture_, number).label)))
      return false;
    given_.insert(node);
    pairs_.emplace(number, node);
    return true;
  }

  // The boxes that feed a box, in the order of its inputs.
  std::vector<int> feeders(int number) {
    std::vector<int> boxes;
    for (const int line : block_of(picture_, number).backward)
      boxes.push_back(block_of(picture_, line).backward.front());
    return boxes;
  }

  void walk(int first, const Segm *result) {
    std::vector<std::pair<int, const Segm *>> open{{first, result}};
    while (!open.empty()) {
      CheckForUserEvents(0);
      const auto [number, node] = open.back();
      open.pop_back();
      if (!give(number, node))
        continue;
      const std::vector<int> boxes = feeders(number);
      const std::vector<Segm *> arcs = cyclic_order_types_of(node);
      for (std::size_t i = 0; i < boxes.size() && i < arcs.size(); ++i)
        open.emplace_back(boxes[i], arc_start(arcs[i]));
    }
  }

  void find_in_type() {
    const Segm *type = old_->seg_ments[1];
    if (!give(1, type))
      return;
    for (const Segm *arc : type->segf_ptr)
      for (const int line : block_of(picture_, 1).forward)
        give(block_of(picture_, line).forward.front(), arc_end(arc));
    std::map<std::string, const Segm *> constructors;
    for (const Segm *arc : type->segb_ptr)
      constructors.emplace(arc_start(arc)->label, arc_start(arc));
    for (const int box : feeders(1)) {
      const auto known = constructors.find(label_in_file(block_of(picture_, box).label));
      if (known != constructors.end())
        walk(box, known->second);
    }
  }

  BuiltPicture &picture_;
  const WinInfo *old_;
  bool labels_count_;
  std::map<int, const Segm *> pairs_;
  std::set<const Segm *> given_;
};

void lines_follow(BuiltPicture &picture) {
  for (graph_block &block : picture.segments)
    if (block.shape == kArc)
      place_line(block, block_of(picture, block.backward.front()),
                 block_of(picture, block.forward.front()));
}

// The old picture as it stands, in the place of the new one: it means the same, and holds what no
// text shows, such as junctions and holds.
void take_whole(BuiltPicture &picture, WinInfo *old) {
  CleanUpSegments(old);
  picture.segments.clear();
  picture.stood = true;
  picture.annot = old->annot;
  picture.text_size = old->txtsze;
  for (int slot = 1; slot <= old->seg_ct; ++slot) {
    const Segm *seg = old->seg_ments[slot];
    graph_block block{slot,    seg->type,  seg->style, seg->lx, seg->ly, seg->ux,
                      seg->uy, seg->label, seg->annot, {},      {}};
    for (auto link = seg->segb_ptr.rbegin(); link != seg->segb_ptr.rend(); ++link)
      block.backward.push_back((*link)->segnum);
    for (auto link = seg->segf_ptr.rbegin(); link != seg->segf_ptr.rend(); ++link)
      block.forward.push_back((*link)->segnum);
    picture.segments.push_back(std::move(block));
  }
}

using OldPictures = std::map<std::string, std::vector<OldPicture>>;

// Gives a picture the places of an old one. Kept places among new ones may bring arguments or
// inputs out of their order: then all boxes stand as the rules have them, and only colours and
// annotations stay.
void pair_with(Build &build, BuiltPicture &picture, const WinInfo *old) {
  const BuiltPicture by_rules = picture;
  Pairing pairing(picture, old, true);
  pairing.find();
  pairing.apply();
  std::string remark;
  if (!built_truly(build, picture, remark) && built_truly(build, by_rules, remark)) {
    for (std::size_t i = 0; i < picture.segments.size(); ++i) {
      picture.segments[i].lx = by_rules.segments[i].lx;
      picture.segments[i].ly = by_rules.segments[i].ly;
      picture.segments[i].ux = by_rules.segments[i].ux;
      picture.segments[i].uy = by_rules.segments[i].uy;
    }
    picture.text_size = by_rules.text_size;
  }
  lines_follow(picture);
}

// The old picture of an equal clause that nobody has taken, or null.
OldPicture *equal_picture(std::vector<OldPicture> &olds, const ClauseForm &form) {
  for (OldPicture &old : olds)
    if (!old.used && form.readable && old.form.whole == form.whole)
      return &old;
  return nullptr;
}

bool keep_places_of_equal(BuiltPicture &picture, std::vector<OldPicture> &olds) {
  OldPicture *old = equal_picture(olds, clause_form(picture.source->fdef.text));
  if (old == nullptr)
    return false;
  old->used = true;
  Pairing pairing(picture, old->wi, false);
  pairing.find();
  if (!pairing.complete()) {
    take_whole(picture, old->wi);
    return true;
  }
  pairing.apply();
  lines_follow(picture);
  return true;
}

// A changed clause is paired with the picture of the same left side, else of the same number.
void keep_places_of_changed(Build &build, BuiltPicture &picture, std::vector<OldPicture> &olds) {
  const ClauseForm form = clause_form(picture.source->fdef.text);
  OldPicture *found = nullptr;
  for (OldPicture &old : olds)
    if (!old.used && !form.left.empty() && old.form.left == form.left)
      found = found != nullptr ? found : &old;
  for (OldPicture &old : olds)
    if (found == nullptr && !old.used && old.wi->cmpnt == picture.component)
      found = &old;
  if (found == nullptr)
    return;
  found->used = true;
  pair_with(build, picture, found->wi);
}

} // namespace

void keep_places(Build &build, const std::vector<std::unique_ptr<WinInfo>> &stood) {
  OldPictures olds;
  for (const std::unique_ptr<WinInfo> &wi : stood) {
    if (wi->seg_ments[1] == nullptr)
      continue;
    OldPicture old{wi.get(), {}, false};
    if (const jsymbol *declared = declaration_of(build, wi->name); declared != nullptr) {
      wi->wtype = kFunctionPicture;
      old.form = clause_form(meaning_of_function(wi.get(), formals_of(*declared)).text);
    }
    olds[wi->name].push_back(std::move(old));
  }
  // Equal clauses choose first, so that none of them loses its picture to a changed one.
  std::vector<BuiltPicture *> changed;
  for (BuiltPicture &picture : build.pictures) {
    CheckForUserEvents(0);
    const auto found = olds.find(picture.name);
    if (found == olds.end())
      continue;
    if (picture.source->stype == kTokTdec)
      pair_with(build, picture, found->second.front().wi);
    else if (!keep_places_of_equal(picture, found->second))
      changed.push_back(&picture);
  }
  for (BuiltPicture *picture : changed)
    keep_places_of_changed(build, *picture, olds.find(picture->name)->second);
}

} // namespace velora
