// Copying, pasting and duplicating nodes, within a picture and between pictures. What was copied is
// kept by the program; the clipboard of the system gets its text, and what was copied counts as
// long as that text stands there.
#include <algorithm>
#include <map>

#include "editor/edit.h"
#include "editor/hand/label_editor.h"
#include "editor/hand/node_text.h"
#include "editor/hand/tools.h"
#include "editor/model/vel_segs.h"
#include "editor/needs.h"
#include "platform/desktop.h"

namespace velora {

namespace {

struct CopiedNode {
  int type;
  int style;
  Rect box;
  std::string label;
  std::string annot;
};
struct CopiedArc {
  std::size_t from;
  std::size_t to;
  int style;
};

struct Copied {
  std::vector<CopiedNode> nodes;
  std::vector<CopiedArc> arcs;
  std::string text;
  int pasted = 0; // how often, so that each paste stands apart from the last
};
Copied copied;

constexpr int kPasteStep = 20;

Copied copy_of(const WinInfo *wi, const std::vector<int> &slots) {
  Copied copy;
  std::map<const Segm *, std::size_t> index;
  for (const int slot : slots) {
    const Segm *seg = wi->seg_ments[slot];
    index.emplace(seg, copy.nodes.size());
    copy.nodes.push_back({seg->type, seg->style, seg->box(), seg->label, seg->annot});
  }
  for (const int slot : slots)
    for (const Segm *arc : wi->seg_ments[slot]->segf_ptr)
      if (const auto end = index.find(arc_end(arc)); end != index.end())
        copy.arcs.push_back({index.at(wi->seg_ments[slot]), end->second, arc->style});
  return copy;
}

// The result node is the picture's own: it is not copied.
std::vector<int> slots_to_copy(const WinInfo *wi) {
  std::vector<int> slots = selected_slots(wi, true);
  std::erase_if(slots, [wi](int slot) { return !may_remove(wi, slot); });
  return slots;
}

void put_copy(WinInfo *wi, const Copied &copy, int by) {
  set_up_fresh(wi);
  std::vector<int> made;
  for (const CopiedNode &node : copy.nodes) {
    Segm *seg = extra_segment(wi);
    if (seg == nullptr)
      return;
    seg->segnum = wi->seg_ct;
    seg->type = node.type;
    seg->style = node.style;
    seg->label = node.label;
    seg->annot = node.annot;
    seg->lx = node.box.left;
    seg->ly = node.box.top;
    seg->ux = node.box.right;
    seg->uy = node.box.bottom;
    // Arguments stay in their band; all else moves aside and down.
    const bool argument = wi->wtype == kFunctionPicture && seg->ly < NodeHeight(wi);
    move_node(seg, by, argument ? 0 : by);
    made.push_back(wi->seg_ct);
  }
  for (const CopiedArc &arc : copy.arcs) {
    const int slot = put_arc_between(wi, made[arc.from], made[arc.to], kArc);
    if (slot != 0)
      wi->seg_ments[slot]->style = arc.style;
  }
  select_these(wi, made);
}

} // namespace

bool copy_selected(const WinInfo *wi) {
  const std::vector<int> slots = slots_to_copy(wi);
  if (slots.empty())
    return false;
  copied = copy_of(wi, slots);
  copied.text = text_of_nodes(wi, slots);
  gDesktop->set_clipboard_text(copied.text);
  return true;
}

bool can_paste() {
  return !copied.nodes.empty() && gDesktop->clipboard_text() == copied.text;
}

void paste_copied(WinInfo *wi) {
  put_copy(wi, copied, kPasteStep * ++copied.pasted);
}

void duplicate_selected(WinInfo *wi) {
  put_copy(wi, copy_of(wi, slots_to_copy(wi)), kPasteStep);
}

} // namespace velora
