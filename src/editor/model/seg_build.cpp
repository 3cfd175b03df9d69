// Building a picture from the entries of a file. Whatever a file says, the picture that comes out
// keeps the invariants of segments: all other code relies on them.
#include "editor/model/seg_build.h"

#include <algorithm>
#include <utility>

#include "editor/model/vel_segs.h"
#include "platform/response.h"

namespace velora {

namespace {

// No picture reaches farther; all arithmetic on corners stays within an int.
constexpr int kFarthestCorner = 1000000;

bool known_kind(int type) {
  return type == kHexagon || type == kBox || type == kArc || type == kJunction ||
         type == kHoldValue;
}

void fill_segment(Segm *seg, int slot, const SegEntry &entry, DamageList &damage) {
  const SegmentLine &fields = entry.fields;
  seg->type = fields.type;
  seg->segnum = slot;
  seg->style = fields.style;
  seg->label = fields.label;
  seg->annot = entry.annot;
  int *const corners[4] = {&seg->lx, &seg->ly, &seg->ux, &seg->uy};
  for (int i = 0; i < 4; ++i) {
    *corners[i] = std::clamp(fields.box[i], -kFarthestCorner, kFarthestCorner);
    if (*corners[i] != fields.box[i])
      damage.add(entry.line, format_text("segment %d lies at %d", slot, fields.box[i]));
  }
  if (fields.segnum != slot)
    damage.add(entry.line, format_text("segment %d stands at place %d", fields.segnum, slot));
  if (is_arc(seg) || (seg->lx <= seg->ux && seg->ly <= seg->uy))
    return;
  damage.add(entry.line, format_text("segment %d has a negative size", slot));
  if (seg->lx > seg->ux)
    std::swap(seg->lx, seg->ux);
  if (seg->ly > seg->uy)
    std::swap(seg->ly, seg->uy);
}

// Nodes link to arcs and arcs to nodes.
bool may_link(const Segm *from, const Segm *to) {
  return to != nullptr && (is_arc(from) ? is_node(to) : is_arc(to));
}

struct Joiner {
  WinInfo *wi;
  const std::vector<SegEntry> &entries;
  DamageList &damage;

  std::size_t line_of(int slot) const { return entries[static_cast<std::size_t>(slot)].line; }

  void join(Segm *seg, char mark, const std::vector<int> &numbers, std::vector<Segm *> &list) {
    for (const int number : numbers) {
      Segm *linked = wi->seg_ments[number];
      if (!may_link(seg, linked) || (is_arc(seg) && !list.empty()))
        damage.add(line_of(seg->segnum),
                   format_text("link %c%d of segment %d leads nowhere", mark, number, seg->segnum));
      else
        list.push_back(linked);
    }
  }

  // Keeps the arcs of a node's list that name the node at their end, each once.
  void keep_true_links(Segm *node, std::vector<Segm *> &list, Segm *(*end)(const Segm *),
                       std::vector<char> &seen) {
    const auto is_false = [&](const Segm *arc) {
      char &known = seen[static_cast<std::size_t>(arc->segnum)];
      const bool kept = end(arc) == node && known == 0;
      if (kept)
        known = 1;
      else
        damage.add(line_of(node->segnum), format_text("segments %d and %d do not agree on a link",
                                                      node->segnum, arc->segnum));
      return !kept;
    };
    std::erase_if(list, is_false);
  }

  void add_missing(Segm *arc, Segm *node, std::vector<Segm *> &list) {
    damage.add(line_of(arc->segnum),
               format_text("segments %d and %d do not agree on a link", arc->segnum, node->segnum));
    list.push_back(arc);
  }
};

// Afterwards every arc has two ends and stands once in the list of each.
void mend_links(Joiner &joiner) {
  WinInfo *wi = joiner.wi;
  for (int slot = 1; slot <= wi->seg_ct; ++slot) {
    Segm *arc = wi->seg_ments[slot];
    if (arc == nullptr || !is_arc(arc) || (arc_start(arc) != nullptr && arc_end(arc) != nullptr))
      continue;
    joiner.damage.add(joiner.line_of(slot), format_text("arrow %d has not two ends", slot));
    arc->segb_ptr.clear();
    arc->segf_ptr.clear();
  }
  std::vector<char> starts(static_cast<std::size_t>(wi->seg_ct) + 1);
  std::vector<char> ends(starts.size());
  for (int slot = 1; slot <= wi->seg_ct; ++slot) {
    Segm *node = wi->seg_ments[slot];
    if (node == nullptr || is_arc(node))
      continue;
    joiner.keep_true_links(node, node->segf_ptr, arc_start, starts);
    joiner.keep_true_links(node, node->segb_ptr, arc_end, ends);
  }
  for (int slot = 1; slot <= wi->seg_ct; ++slot) {
    Segm *arc = wi->seg_ments[slot];
    if (arc == nullptr || !is_arc(arc))
      continue;
    const auto index = static_cast<std::size_t>(slot);
    if (arc_start(arc) == nullptr)
      wi->seg_ments.drop(slot);
    else if (starts[index] == 0)
      joiner.add_missing(arc, arc_start(arc), arc_start(arc)->segf_ptr);
    if (wi->seg_ments[slot] != nullptr && ends[index] == 0)
      joiner.add_missing(arc, arc_end(arc), arc_end(arc)->segb_ptr);
  }
}

} // namespace

int fill_picture(WinInfo *wi, const std::vector<SegEntry> &entries, DamageList &damage) {
  wi->seg_ct = static_cast<int>(entries.size()) - 1;
  if (make_all_extra_segment(wi) == 0) {
    orvek_error("RestoreAll: calloc failed");
    return 0;
  }
  for (int slot = 1; slot <= wi->seg_ct; ++slot) {
    const SegEntry &entry = entries[static_cast<std::size_t>(slot)];
    if (entry.filled && known_kind(entry.fields.type)) {
      fill_segment(wi->seg_ments[slot], slot, entry, damage);
      continue;
    }
    if (entry.filled)
      damage.add(entry.line,
                 format_text("segment %d is of an unknown kind, %d", slot, entry.fields.type));
    wi->seg_ments.drop(slot);
  }
  Joiner joiner{wi, entries, damage};
  for (int slot = 1; slot <= wi->seg_ct; ++slot) {
    Segm *seg = wi->seg_ments[slot];
    if (seg == nullptr)
      continue;
    const SegEntry &entry = entries[static_cast<std::size_t>(slot)];
    joiner.join(seg, 'B', entry.back, seg->segb_ptr);
    joiner.join(seg, 'F', entry.forward, seg->segf_ptr);
  }
  mend_links(joiner);
  return 1;
}

} // namespace velora
