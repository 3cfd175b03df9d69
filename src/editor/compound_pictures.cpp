// Differences of stored pictures, and putting them back in their places in the list, which is the
// order of the segment file.
#include "editor/compound_pictures.h"

#include <algorithm>
#include <map>

#include "editor/model/wininfo.h"
#include "editor/vel_cmp.h"

namespace velora {

namespace {

bool same_picture(const PictureState &a, const PictureState &b) {
  PictureFields fields = a.fields;
  fields.cmpnt = b.fields.cmpnt; // numbers are compared by themselves
  return fields == b.fields && a.slots == b.slots;
}

PictureState stored_state(const WinInfo *wi) {
  PictureState state = state_of(wi);
  state.selected.clear();
  return state;
}

std::vector<int> numbers_of(const std::vector<StoredPicture> &records) {
  std::vector<int> numbers;
  for (const StoredPicture &record : records)
    numbers.push_back(record.state.fields.cmpnt);
  return numbers;
}

// Moves a record that was appended to where its picture stood: behind the stored record that was in
// front of it, unless that one is gone or it stands there already.
void move_to_place(WinInfo *wi, const StoredPicture &picture) {
  const auto &[name, number] = picture.behind;
  WinInfo *wanted = nullptr;
  WinInfo *in_front = nullptr;
  for (WinInfo *at = gWinInfo; at != wi; at = at->next) {
    if (at->win != 0)
      continue;
    if (wanted == nullptr && at->cmpnt == number && at->name == name)
      wanted = at;
    in_front = at;
  }
  const bool first = name.empty() && number < 0;
  if (wanted != in_front)
    move_picture_behind(wi, wanted, first);
}

// Where record `from` of one state stands in the other one; -1 when it is not there. Only pictures
// in the part that differs have to be looked for.
int place_after(const StoredChange &change, bool back, std::size_t from) {
  const std::vector<StoredPicture> &old = back ? change.after : change.before;
  const std::vector<StoredPicture> &now = back ? change.before : change.after;
  if (from < change.same || old.size() == now.size())
    return static_cast<int>(from);
  if (from >= change.same + old.size())
    return static_cast<int>(from - old.size() + now.size());
  const PictureState &wanted = old[from - change.same].state;
  const auto found = std::find_if(now.begin(), now.end(), [&](const StoredPicture &picture) {
    return same_picture(picture.state, wanted);
  });
  return found == now.end() ? -1 : static_cast<int>(change.same + (found - now.begin()));
}

} // namespace

StoredPictures take_stored(const std::string &name) {
  StoredPictures stored{name, {}};
  const WinInfo *in_front = nullptr;
  for (const WinInfo *wi = gWinInfo; wi != nullptr; wi = wi->next) {
    if (wi->win != 0)
      continue;
    if (wi->name == name)
      stored.records.push_back({stored_state(wi), in_front != nullptr
                                                      ? std::pair(in_front->name, in_front->cmpnt)
                                                      : std::pair(std::string(), -1)});
    in_front = wi;
  }
  return stored;
}

bool is_nothing(const StoredChange &change) {
  return change.before.empty() && change.after.empty() &&
         change.numbers_before == change.numbers_after;
}

StoredChange stored_change(StoredPictures &&before, StoredPictures &&after) {
  StoredChange change;
  change.name = before.name;
  change.numbers_before = numbers_of(before.records);
  change.numbers_after = numbers_of(after.records);
  std::vector<StoredPicture> &old = before.records;
  std::vector<StoredPicture> &now = after.records;
  const auto same = [](const StoredPicture &a, const StoredPicture &b) {
    return same_picture(a.state, b.state);
  };
  const auto front = std::mismatch(old.begin(), old.end(), now.begin(), now.end(), same);
  const auto old_begin = front.first;
  const auto now_begin = front.second;
  auto old_end = old.end();
  auto now_end = now.end();
  while (old_end != old_begin && now_end != now_begin && same(*(old_end - 1), *(now_end - 1))) {
    --old_end;
    --now_end;
  }
  change.same = static_cast<std::size_t>(old_begin - old.begin());
  change.before.assign(std::move_iterator(old_begin), std::move_iterator(old_end));
  change.after.assign(std::move_iterator(now_begin), std::move_iterator(now_end));
  return change;
}

bool stands_as_left(const StoredChange &change, bool back) {
  const std::vector<WinInfo *> records = stored_components(change.name);
  const std::vector<int> &numbers = back ? change.numbers_after : change.numbers_before;
  const std::vector<StoredPicture> &left = back ? change.after : change.before;
  if (!std::equal(records.begin(), records.end(), numbers.begin(), numbers.end(),
                  [](const WinInfo *wi, int number) { return wi->cmpnt == number; }))
    return false;
  for (std::size_t i = 0; i < left.size(); ++i)
    if (!same_picture(stored_state(records[change.same + i]), left[i].state))
      return false;
  return true;
}

void put_stored(const StoredChange &change, bool back) {
  const std::vector<StoredPicture> &now = back ? change.after : change.before;
  const std::vector<StoredPicture> &wanted = back ? change.before : change.after;
  const std::vector<int> &numbers = back ? change.numbers_before : change.numbers_after;
  std::vector<WinInfo *> records = stored_components(change.name);
  const auto first = records.begin() + static_cast<std::ptrdiff_t>(change.same);
  std::vector<WinInfo *> changed(first, first + static_cast<std::ptrdiff_t>(now.size()));
  for (; changed.size() > wanted.size(); changed.pop_back())
    RemovePicture(changed.back());
  const std::size_t standing = changed.size();
  for (std::size_t i = 0; i < wanted.size(); ++i) {
    if (i >= standing) {
      WinInfo *made = nullptr;
      if (NewWinInfo(0, wanted[i].state.fields.wtype, &made) == 0)
        return;
      changed.push_back(made);
    }
    restore_state(changed[i], wanted[i].state);
  }
  // What was made anew goes to its place, in order, so that each finds the one in front of it: by
  // then the records before it have the numbers they had.
  for (std::size_t i = 0; i < standing; ++i)
    changed[i]->cmpnt = wanted[i].state.fields.cmpnt;
  for (std::size_t i = 0; i < change.same; ++i)
    records[i]->cmpnt = numbers[i];
  for (std::size_t i = standing; i < wanted.size(); ++i)
    move_to_place(changed[i], wanted[i]);
  records = stored_components(change.name);
  for (std::size_t i = 0; i < records.size() && i < numbers.size(); ++i)
    records[i]->cmpnt = numbers[i];
}

void follow_numbers(const StoredChange &change, bool back, const WinInfo *acting) {
  const std::vector<int> &old = back ? change.numbers_after : change.numbers_before;
  const std::vector<int> &now = back ? change.numbers_before : change.numbers_after;
  std::map<int, int> other;
  for (std::size_t i = 0; i < old.size(); ++i) {
    const int place = place_after(change, back, i);
    const int number = place < 0 ? -1 : now[static_cast<std::size_t>(place)];
    if (number != old[i])
      other.emplace(old[i], number);
  }
  const auto follow = [&](int &number) {
    if (const auto found = other.find(number); found != other.end())
      number = found->second;
  };
  for (WinInfo *wi = gWinInfo; wi != nullptr && !other.empty(); wi = wi->next) {
    if (wi->win == 0 || wi == acting || wi->name != change.name)
      continue;
    follow(wi->cmpnt);
    for (PictureStep &step : history_of(wi).steps)
      for (PictureFields *fields : {&step.delta.before, &step.delta.after})
        if (fields->name == change.name)
          follow(fields->cmpnt);
  }
}

} // namespace velora
