// The steps that a picture has gone through, and going back and forth along them. Private to the
// funnel of changes (editor/edit.h), which records the steps, and to the compound steps.
//
// A step holds what differs between the picture before and after: for each slot its two values, and
// the record's own fields. Links are slot numbers, nothing is a pointer, so a step stays valid
// whatever happens to the segments.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "editor/model/records.h"

namespace velora {

// Bits of Segm::status: of an arrow, one more than the number of the input that it was drawn for.
// They count while inputs before it are missing; files do not keep them, steps do.
inline constexpr int kMeantShift = 16;
inline constexpr unsigned kMeantMask = 0xFFU << kMeantShift;

// A segment as a value. The marks of selection and of walks are no part of it.
struct SegmState {
  int type = 0;
  int style = 0;
  Rect box;
  unsigned meant = 0; // of an arrow: its bits of kMeantMask
  std::string label;
  std::string annot;
  std::vector<int> back;
  std::vector<int> forward;
  friend bool operator==(const SegmState &, const SegmState &) = default;
};

// The fields of a record that files keep, and its state of saving.
struct PictureFields {
  std::string name;
  int cmpnt = -1;
  int seg_ct = 0;
  short wtype = kFunctionPicture;
  int saved = 1;
  int clean = 1;
  int txtsze = 12;
  std::string annot;
  friend bool operator==(const PictureFields &, const PictureFields &) = default;
};

struct SlotChange {
  int slot = 0;
  std::optional<SegmState> before; // none for an empty slot
  std::optional<SegmState> after;
};

// The difference between two states of one picture.
struct PictureDelta {
  PictureFields before;
  PictureFields after;
  std::vector<SlotChange> slots; // in slot order
  std::vector<int> selected_before;
  std::vector<int> selected_after;
};

// A picture as a value, kept while a change runs.
struct PictureState {
  PictureFields fields;
  std::vector<std::optional<SegmState>> slots; // by slot number
  std::vector<int> selected;
};

struct CompoundChange; // what a step changed beside its picture: editor/compound.h

struct PictureStep {
  std::string what;  // as the user calls it, "Move"
  std::string merge; // steps in a row with the same text, not empty, are one
  PictureDelta delta;
  std::shared_ptr<CompoundChange> compound; // null for nearly all
};

// The steps of one picture. `done` counts those that stand; those behind it can be done again.
struct PictureHistory {
  std::vector<PictureStep> steps;
  std::size_t done = 0;
  // How often the picture was changed, also where a step grew, was taken back or done again.
  std::uint64_t changes = 0;
  ~PictureHistory();
};

PictureFields fields_of(const WinInfo *wi);
PictureState state_of(const WinInfo *wi);
// The difference from `before` to what the picture is now.
PictureDelta difference(const PictureState &before, const WinInfo *wi);
// True when files would keep the same and nothing else of the record differs but `saved`, `clean`.
bool is_nothing(const PictureDelta &delta);
// Gives the picture the state before the difference (`back`) or after it, with the selection.
void apply_delta(WinInfo *wi, const PictureDelta &delta, bool back);
// Gives the picture a whole state.
void restore_state(WinInfo *wi, const PictureState &state);
// Adds what a later difference changed to an earlier one.
void merge_delta(PictureDelta &first, PictureDelta &&second);

PictureHistory &history_of(WinInfo *wi);

} // namespace velora
