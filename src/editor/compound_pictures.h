// The stored pictures of one name as a compound step keeps them: what differs before and after a
// command, and the numbers that windows showing them follow. Private to editor/compound.
#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "editor/history.h"
#include "editor/model/records.h"

namespace velora {

// A stored record as a value: its picture, and the stored record of any name in front of it in the
// list ("" and -1 for none).
struct StoredPicture {
  PictureState state;
  std::pair<std::string, int> behind;
};

// All stored records of a name, in their order.
struct StoredPictures {
  std::string name;
  std::vector<StoredPicture> records;
};
StoredPictures take_stored(const std::string &name);

// What differs between two such states: behind `same` equal records at the beginning some records
// stand for others, and the rest is equal but for its numbers.
struct StoredChange {
  std::string name;
  std::size_t same = 0;
  std::vector<StoredPicture> before;
  std::vector<StoredPicture> after;
  std::vector<int> numbers_before; // of all records
  std::vector<int> numbers_after;
};
bool is_nothing(const StoredChange &change);
StoredChange stored_change(StoredPictures &&before, StoredPictures &&after);

// True when the records stand as the change left them.
bool stands_as_left(const StoredChange &change, bool back);
// Gives the records of the name the state before the change or after it.
void put_stored(const StoredChange &change, bool back);
// The windows other than `acting` that show such records show them under their other numbers from
// now on; the number is -1 where the record went.
void follow_numbers(const StoredChange &change, bool back, const WinInfo *acting);

} // namespace velora
