// The table of keys that pictures take when no text is being edited. Read by the dispatcher of keys
// and by the page of keys.
#pragma once

#include <span>

#include "editor/hand/hand.h"

namespace velora {

enum KeyWith { kWithout, kWithShift, kWithControl, kWithControlShift, kWithAny };

struct HandKey {
  Key key;
  const char *letter; // of Key::letter, else null
  int number;         // of Key::function
  KeyWith with;
  const char *shown; // the key as people write it
  const char *does;
  void (*run)(WinInfo *, const KeyEvent &);
};

std::span<const HandKey> hand_keys();

} // namespace velora
