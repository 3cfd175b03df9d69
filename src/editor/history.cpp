// Differences between states of a picture, and applying them.
#include "editor/history.h"

#include <algorithm>
#include <unordered_map>

#include "editor/compound.h"

namespace velora {

namespace {

// Links to slot numbers. A segment knows its number itself, but for one that a collapse left with
// the number of its copy; then the numbers are looked up.
class SlotNumbers {
public:
  explicit SlotNumbers(const WinInfo *wi) {
    const int last = wi->seg_ments.slots();
    for (int slot = 1; slot < last; ++slot)
      trusted_ =
          trusted_ && (wi->seg_ments[slot] == nullptr || wi->seg_ments[slot]->segnum == slot);
    for (int slot = 1; slot < last && !trusted_; ++slot)
      if (wi->seg_ments[slot] != nullptr)
        slots_.emplace(wi->seg_ments[slot], slot);
  }

  [[nodiscard]] int of(const Segm *seg) const {
    if (trusted_)
      return seg->segnum;
    const auto found = slots_.find(seg);
    return found == slots_.end() ? 0 : found->second;
  }

  [[nodiscard]] bool agree(const std::vector<int> &numbers,
                           const std::vector<Segm *> &links) const {
    return std::equal(numbers.begin(), numbers.end(), links.begin(), links.end(),
                      [this](int number, const Segm *linked) { return number == of(linked); });
  }

private:
  bool trusted_ = true;
  std::unordered_map<const Segm *, int> slots_;
};

SegmState state_of_segment(const Segm *seg, const SlotNumbers &numbers) {
  SegmState state{seg->type,  seg->style, seg->box(), seg->status & kMeantMask,
                  seg->label, seg->annot, {},         {}};
  for (const Segm *linked : seg->segb_ptr)
    state.back.push_back(numbers.of(linked));
  for (const Segm *linked : seg->segf_ptr)
    state.forward.push_back(numbers.of(linked));
  return state;
}

bool is_as(const std::optional<SegmState> &state, const Segm *seg, const SlotNumbers &numbers) {
  if (!state || seg == nullptr)
    return !state && seg == nullptr;
  return state->type == seg->type && state->style == seg->style && state->box == seg->box() &&
         state->meant == (seg->status & kMeantMask) && state->label == seg->label &&
         state->annot == seg->annot && numbers.agree(state->back, seg->segb_ptr) &&
         numbers.agree(state->forward, seg->segf_ptr);
}

std::vector<int> selection_of(const WinInfo *wi) {
  std::vector<int> slots;
  for (int slot = 1; slot <= wi->seg_ct; ++slot)
    if (wi->seg_ments[slot] != nullptr && (wi->seg_ments[slot]->status & kSelected) != 0)
      slots.push_back(slot);
  return slots;
}

void select_slots(WinInfo *wi, const std::vector<int> &slots) {
  for (int slot = 1; slot <= wi->seg_ct; ++slot)
    if (Segm *seg = wi->seg_ments[slot]; seg != nullptr)
      seg->status &= ~kSelected;
  for (const int slot : slots)
    if (Segm *seg = wi->seg_ments[slot]; seg != nullptr)
      seg->status |= kSelected;
}

void set_fields(WinInfo *wi, const PictureFields &fields) {
  wi->name = fields.name;
  wi->cmpnt = fields.cmpnt;
  wi->wtype = fields.wtype;
  wi->saved = fields.saved;
  wi->clean = fields.clean;
  wi->txtsze = fields.txtsze;
  wi->annot = fields.annot;
}

// Puts a segment's own values into its slot, making the segment where there is none.
void set_segment(WinInfo *wi, int slot, const SegmState &state) {
  Segm *seg = wi->seg_ments[slot];
  if (seg == nullptr) {
    wi->seg_ments.put(slot, std::make_unique<Segm>());
    seg = wi->seg_ments[slot];
  }
  seg->segnum = slot;
  seg->type = state.type;
  seg->style = state.style;
  seg->lx = state.box.left;
  seg->ly = state.box.top;
  seg->ux = state.box.right;
  seg->uy = state.box.bottom;
  seg->status = (seg->status & ~kMeantMask) | state.meant;
  seg->label = state.label;
  seg->annot = state.annot;
}

void set_links(const WinInfo *wi, const std::vector<int> &numbers, std::vector<Segm *> &links) {
  links.clear();
  for (const int number : numbers)
    if (Segm *linked = wi->seg_ments[number]; linked != nullptr)
      links.push_back(linked);
}

// Gives the listed slots their states. First all segments stand in their slots, then they are
// linked: a slot that is not listed keeps its segment, so links to it stay as they are.
template <class Changes, class Pick>
void set_slots(WinInfo *wi, int seg_ct, const Changes &changes, const Pick &pick) {
  wi->seg_ments.resize(std::max(wi->seg_ct, seg_ct) + 1);
  for (const auto &change : changes) {
    const auto &[slot, state] = pick(change);
    if (*state)
      set_segment(wi, slot, **state);
    else
      wi->seg_ments.drop(slot);
  }
  wi->seg_ct = seg_ct;
  wi->seg_ments.resize(seg_ct + 1);
  for (const auto &change : changes) {
    const auto &[slot, state] = pick(change);
    Segm *seg = wi->seg_ments[slot];
    if (seg == nullptr || !*state)
      continue;
    set_links(wi, (*state)->back, seg->segb_ptr);
    set_links(wi, (*state)->forward, seg->segf_ptr);
  }
}

using SlotState = std::pair<int, const std::optional<SegmState> *>;

} // namespace

PictureFields fields_of(const WinInfo *wi) {
  return {wi->name, wi->cmpnt, wi->seg_ct, wi->wtype, wi->saved, wi->clean, wi->txtsze, wi->annot};
}

PictureState state_of(const WinInfo *wi) {
  PictureState state{fields_of(wi), {}, selection_of(wi)};
  const SlotNumbers numbers(wi);
  state.slots.resize(static_cast<std::size_t>(wi->seg_ct) + 1);
  for (int slot = 1; slot <= wi->seg_ct; ++slot)
    if (const Segm *seg = wi->seg_ments[slot]; seg != nullptr)
      state.slots[static_cast<std::size_t>(slot)] = state_of_segment(seg, numbers);
  return state;
}

PictureDelta difference(const PictureState &before, const WinInfo *wi) {
  PictureDelta delta{before.fields, fields_of(wi), {}, before.selected, selection_of(wi)};
  const SlotNumbers numbers(wi);
  const int last = std::max(before.fields.seg_ct, wi->seg_ct);
  const std::optional<SegmState> none;
  for (int slot = 1; slot <= last; ++slot) {
    const auto index = static_cast<std::size_t>(slot);
    const auto &old = index < before.slots.size() ? before.slots[index] : none;
    const Segm *seg = slot <= wi->seg_ct ? wi->seg_ments[slot] : nullptr;
    if (is_as(old, seg, numbers))
      continue;
    SlotChange change{slot, old, {}};
    if (seg != nullptr)
      change.after = state_of_segment(seg, numbers);
    delta.slots.push_back(std::move(change));
  }
  return delta;
}

bool is_nothing(const PictureDelta &delta) {
  PictureFields after = delta.after;
  after.saved = delta.before.saved;
  after.clean = delta.before.clean;
  return delta.slots.empty() && after == delta.before;
}

void apply_delta(WinInfo *wi, const PictureDelta &delta, bool back) {
  const PictureFields &fields = back ? delta.before : delta.after;
  set_slots(wi, fields.seg_ct, delta.slots, [back](const SlotChange &change) {
    return SlotState{change.slot, back ? &change.before : &change.after};
  });
  set_fields(wi, fields);
  select_slots(wi, back ? delta.selected_before : delta.selected_after);
}

void restore_state(WinInfo *wi, const PictureState &state) {
  std::vector<SlotState> all;
  const std::optional<SegmState> none;
  for (int slot = 1; slot <= std::max(state.fields.seg_ct, wi->seg_ct); ++slot) {
    const auto index = static_cast<std::size_t>(slot);
    all.emplace_back(slot, index < state.slots.size() ? &state.slots[index] : &none);
  }
  set_slots(wi, state.fields.seg_ct, all, [](const SlotState &slot) { return slot; });
  set_fields(wi, state.fields);
  select_slots(wi, state.selected);
}

void merge_delta(PictureDelta &first, PictureDelta &&second) {
  std::vector<SlotChange> merged;
  auto old = first.slots.begin();
  for (SlotChange &change : second.slots) {
    for (; old != first.slots.end() && old->slot < change.slot; ++old)
      merged.push_back(std::move(*old));
    if (old != first.slots.end() && old->slot == change.slot)
      change.before = std::move((old++)->before);
    if (change.before != change.after)
      merged.push_back(std::move(change));
  }
  for (; old != first.slots.end(); ++old)
    merged.push_back(std::move(*old));
  first.slots = std::move(merged);
  first.after = std::move(second.after);
  first.selected_after = std::move(second.selected_after);
}

// Compound steps outlive their window: Undo in the console takes them back.
PictureHistory::~PictureHistory() {
  for (std::size_t i = 0; i < done; ++i)
    if (steps[i].compound != nullptr)
      keep_orphan(steps[i].what, std::move(steps[i].compound));
}

PictureHistory &history_of(WinInfo *wi) {
  if (wi->history == nullptr)
    wi->history = std::make_shared<PictureHistory>();
  return *wi->history;
}

} // namespace velora
