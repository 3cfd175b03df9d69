// The funnel of changes: the state before, the change, settling, the difference, the step.
#include "editor/edit.h"

#include <algorithm>
#include <set>

#include "editor/compound.h"
#include "editor/draw_layout.h"
#include "editor/history.h"
#include "editor/model/vel_segs.h"
#include "editor/needs.h"
#include "platform/response.h"

namespace velora {

namespace {

// The pictures that a change runs for, innermost last.
std::vector<WinInfo *> in_change;

// Clears what a collapse may have left on a segment, so that numbers can be relied on.
void renumber(WinInfo *wi) {
  for (int slot = 1; slot <= wi->seg_ct; ++slot)
    if (Segm *seg = wi->seg_ments[slot]; seg != nullptr) {
      seg->segnum = slot;
      seg->status &= ~kCopiedBit;
    }
}

// True when a change gave the node in this slot a label or shape that its box does not know yet.
bool is_new_to_fit(const SlotChange &change) {
  if (!change.after || change.after->type == kArc)
    return false;
  return !change.before || change.before->label != change.after->label ||
         change.before->type != change.after->type ||
         (change.before->style & kShapeMask) != (change.after->style & kShapeMask);
}

// Grows a box to its label as the usual text size shows it, sidewards and down, but never up into
// the band.
void fit_to_label(const WinInfo *wi, Segm *node) {
  const Rect own = node->box();
  const Rect fitted = fit_node(node, 0, Font{});
  node->lx = std::min(own.left, fitted.left);
  node->ux = std::max(own.right, fitted.right);
  node->ly = std::min(own.top, fitted.top);
  node->uy = std::max(own.bottom, fitted.bottom);
  if (own.top >= argument_band())
    keep_below_band(wi, node);
}

// The arrows that may run otherwise now: those of the nodes touched, and all that arrive where one
// of those arrives, since they share the side of the box.
std::set<const Segm *> moved_arcs(const WinInfo *wi, const PictureDelta &delta) {
  std::set<const Segm *> ends;
  std::set<const Segm *> arcs;
  for (const SlotChange &change : delta.slots) {
    const Segm *seg = wi->seg_ments[change.slot];
    if (seg == nullptr)
      continue;
    if (is_arc(seg)) {
      ends.insert(arc_end(seg));
      continue;
    }
    ends.insert(seg);
    for (const Segm *arc : seg->segf_ptr)
      ends.insert(arc_end(arc));
  }
  for (const Segm *end : ends)
    if (end != nullptr)
      arcs.insert(end->segb_ptr.begin(), end->segb_ptr.end());
  return arcs;
}

void settle(WinInfo *wi, const PictureState &before) {
  const PictureDelta touched = difference(before, wi);
  for (const SlotChange &change : touched.slots)
    if (is_new_to_fit(change))
      fit_to_label(wi, wi->seg_ments[change.slot]);
  const std::set<const Segm *> arcs = moved_arcs(wi, touched);
  if (arcs.empty())
    return;
  const PictureLayout layout = lay_out_picture(wi);
  for (const ArcPlace &place : layout.arcs) {
    if (!arcs.contains(place.seg))
      continue;
    Segm *arc = wi->seg_ments[place.seg->segnum];
    arc->lx = place.path.front().x;
    arc->ly = place.path.front().y;
    arc->ux = place.path.back().x;
    arc->uy = place.path.back().y;
  }
}

// Adds a step, or to the last one where both belong together.
void record(WinInfo *wi, std::string_view what, PictureDelta &&delta, std::string_view merge) {
  PictureHistory &history = history_of(wi);
  ++history.changes;
  history.steps.resize(history.done);
  if (!merge.empty() && !history.steps.empty() && history.steps.back().merge == merge &&
      history.steps.back().compound == nullptr) {
    merge_delta(history.steps.back().delta, std::move(delta));
    return;
  }
  history.steps.push_back({std::string(what), std::string(merge), std::move(delta), nullptr});
  history.done = history.steps.size();
}

// A change as it runs. When it is abandoned, the picture is put back.
class Change {
public:
  explicit Change(WinInfo *wi) : wi_(wi) {
    renumber(wi);
    before_ = state_of(wi);
    in_change.push_back(wi);
  }
  ~Change() {
    in_change.pop_back();
    if (!finished_)
      restore_state(wi_, before_);
  }
  Change(const Change &) = delete;
  Change &operator=(const Change &) = delete;

  bool finish(std::string_view what, const EditOptions &options) {
    if (options.settle)
      settle(wi_, before_);
    PictureDelta delta = difference(before_, wi_);
    finished_ = true;
    if (is_nothing(delta)) {
      wi_->saved = options.own_flags ? wi_->saved : before_.fields.saved;
      wi_->clean = options.own_flags ? wi_->clean : before_.fields.clean;
      return false;
    }
    if (!options.own_flags)
      wi_->saved = wi_->clean = 0;
    delta.after.saved = wi_->saved;
    delta.after.clean = wi_->clean;
    record(wi_, what, std::move(delta), options.merge);
    return true;
  }

private:
  WinInfo *wi_;
  PictureState before_;
  bool finished_ = false;
};

// One step back or forth; what it changed beside the picture goes with it, or nothing goes.
int take_step(WinInfo *wi, bool back) {
  PictureHistory &history = history_of(wi);
  if (back ? history.done == 0 : history.done == history.steps.size()) {
    BeepMsge(back ? "There is nothing to undo\n" : "There is nothing to redo\n", 0);
    return 0;
  }
  const PictureStep &step = history.steps[back ? history.done - 1 : history.done];
  if (step.compound != nullptr && apply_compound(*step.compound, back, wi) == 0)
    return 0;
  apply_delta(wi, step.delta, back);
  history.done += back ? static_cast<std::size_t>(-1) : 1;
  ++history.changes;
  picture_changed(wi);
  return 1;
}

} // namespace

bool edit_picture(WinInfo *wi, std::string_view what, const std::function<void()> &change,
                  const EditOptions &options) {
  if (std::find(in_change.begin(), in_change.end(), wi) != in_change.end()) {
    change();
    return true;
  }
  bool changed = false;
  {
    Change run(wi);
    change();
    changed = run.finish(what, options);
  }
  if (changed)
    picture_changed(wi);
  return changed;
}

void picture_stored(WinInfo *wi) {
  wi->clean = 1;
  PictureHistory &history = history_of(wi);
  for (PictureStep &step : history.steps)
    step.delta.before.clean = step.delta.after.clean = 0;
  // What is done from here on is a step of its own, so that Undo finds this state again.
  if (history.done > 0)
    history.steps[history.done - 1].merge.clear();
  if (history.done > 0)
    history.steps[history.done - 1].delta.after.clean = 1;
  if (history.done < history.steps.size())
    history.steps[history.done].delta.before.clean = 1;
}

void begin_compound(WinInfo *wi) {
  if (wi != nullptr)
    in_change.push_back(wi);
}

void end_compound(WinInfo *wi, const std::string &what, const PictureState &before,
                  std::shared_ptr<CompoundChange> change) {
  in_change.erase(std::find(in_change.begin(), in_change.end(), wi));
  PictureDelta delta = difference(before, wi);
  // What was stored is taken back with the step, so the states before it are as clean as they were;
  // a store that changed nothing leaves this one clean alone.
  if (change == nullptr && is_nothing(delta)) {
    if (wi->clean != 0 && before.fields.clean == 0)
      picture_stored(wi);
    return;
  }
  record(wi, what, std::move(delta), {});
  history_of(wi).steps.back().compound = std::move(change);
  picture_changed(wi);
}

std::string step_to_undo(const WinInfo *wi) {
  const PictureHistory *history = wi->history.get();
  return history != nullptr && history->done > 0 ? history->steps[history->done - 1].what : "";
}

std::string step_to_redo(const WinInfo *wi) {
  const PictureHistory *history = wi->history.get();
  return history != nullptr && history->done < history->steps.size()
             ? history->steps[history->done].what
             : "";
}

int undo_step(WinInfo *wi) {
  return take_step(wi, true);
}

int redo_step(WinInfo *wi) {
  return take_step(wi, false);
}

int argument_band() {
  int highest = 0;
  WinInfo sizes;
  for (const int size : {8, 10, 12, 16, 22}) {
    sizes.txtsze = size;
    highest = std::max(highest, NodeHeight(&sizes));
  }
  return highest;
}

void keep_below_band(const WinInfo *wi, Segm *node) {
  const int band = std::max(argument_band(), NodeHeight(wi));
  const bool parameter = node->type == kHexagon && shape_style(node) == kBold;
  if (wi->wtype == kFunctionPicture && !parameter && node->ly < band)
    move_node(node, 0, band - node->ly);
}

void move_node(Segm *node, int dx, int dy) {
  node->lx += dx;
  node->ux += dx;
  node->ly += dy;
  node->uy += dy;
}

} // namespace velora
