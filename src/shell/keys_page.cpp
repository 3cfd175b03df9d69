// Writing the page of keys.
#include "shell/keys_page.h"

#include <set>

#include "editor/hand/hand_keys.h"
#include "shell/menu_table.h"

namespace velora {

namespace {

constexpr const char *kOpening =
    "# Keys\n"
    "\n"
    "This page is made from the program's own tables; a test holds it to them.\n"
    "\n"
    "## Menu commands\n"
    "\n"
    "| key | command |\n"
    "|---|---|\n";

constexpr const char *kPictures = "\n"
                                  "## In a picture\n"
                                  "\n"
                                  "| key | does |\n"
                                  "|---|---|\n";

constexpr const char *kTyping =
    "| any letter, digit or sign | list the names that begin so, at the chosen box or the pointer; "
    "Enter, Tab or a blank places the one chosen and joins it, Up and Down choose, Esc leaves |\n"
    "| `?0`, `?1`, ... | join the input of that number |\n"
    "| `#7`, `\"text\"` | place a value |\n"
    "| `int`, `list int` | place an input of that type |\n"
    "| in a picture of constructors | the type first, then each constructor and the types it takes "
    "|\n"
    "\n"
    "While an arrow is drawn with the keys (Ctrl+J with one box chosen), Tab and the arrow keys\n"
    "choose its end, Enter joins and Esc leaves.\n"
    "\n"
    "While a label is edited, Enter takes the text and Esc leaves the old one; Ctrl+A, Ctrl+C,\n"
    "Ctrl+X and Ctrl+V do what they do in any text.\n"
    "\n"
    "## The mouse in a picture\n"
    "\n"
    "| what | does |\n"
    "|---|---|\n"
    "| click, Shift+click | choose a box or an arrow, or one more |\n"
    "| drag a box | move what is chosen; it snaps to its neighbours, not with Alt |\n"
    "| click an arrow of a network | show the clauses that make the call |\n"
    "| drag from the lower rim of a box | draw an arrow; dropped on the stub of a missing input, "
    "be "
    "that one; dropped on nothing, name the box it feeds |\n"
    "| drag the head of an arrow | make it another input, or of another box |\n"
    "| drop a box on an arrow | put it in between |\n"
    "| drag on the ground | choose what lies in the rectangle |\n"
    "| double click | edit the label; in a network open the function; on the ground type a name |\n"
    "| right button | choose what lies there, and show what can be done with it where the desktop "
    "has "
    "a menu for that |\n"
    "| Ctrl+wheel | zoom at the pointer |\n"
    "| middle button, or Space and drag | move the picture in its window |\n";

std::string without_mnemonic(std::string label) {
  const std::size_t at = label.find('&');
  return at == std::string::npos ? label : label.erase(at, 1);
}

std::string row(const std::string &key, const std::string &does) {
  return "| " + key + " | " + does + " |\n";
}

} // namespace

std::string keys_page() {
  std::string page = kOpening;
  std::set<std::string> seen;
  for (const MenuCommand &command : menu_commands())
    if (command.accelerator[0] != '\0' && seen.insert(command.accelerator).second)
      page += row(command.accelerator, without_mnemonic(command.label));
  page += kPictures;
  for (const HandKey &key : hand_keys())
    page += row(key.shown, key.does);
  return page + kTyping;
}

} // namespace velora
