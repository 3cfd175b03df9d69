// Reading the lines of event scripts.
#include "shell/events/event_line.h"

#include <gtest/gtest.h>

#include "shell/events/pane_text.h"

namespace velora {

namespace {

std::string point_text(const std::string &text) {
  std::vector<std::string> words = event_words(text);
  const auto p = take_point(words);
  if (!p)
    return "none";
  const std::string where = p->by_place    ? "place"
                            : p->slot != 0 ? "slot " + std::to_string(p->slot)
                                           : "label " + p->label;
  return where + " " + std::to_string(static_cast<int>(p->part)) + " " + std::to_string(p->at.x) +
         "," + std::to_string(p->at.y) + " rest " + std::to_string(words.size());
}

TEST(EventLine, PointsByPlaceSlotAndLabel) {
  EXPECT_EQ("place 0 3,-4 rest 0", point_text("3 -4"));
  EXPECT_EQ("place 0 3,4 rest 2", point_text("3 4 shift ctrl"));
  EXPECT_EQ("slot 12 0 0,0 rest 0", point_text("@12"));
  EXPECT_EQ("slot 12 2 5,-6 rest 1", point_text("@12.bottom+5-6 right"));
  EXPECT_EQ("slot 3 6 0,0 rest 2", point_text("@3.end 7 8"));
  EXPECT_EQ("label list int 1 0,0 rest 1", point_text("\"list int\".top @2"));
  EXPECT_EQ("label a 0 -1,2 rest 0", point_text("\"a\"-1+2"));
}

TEST(EventLine, WhatIsNoPoint) {
  for (const char *text : {"", "3", "x 4", "3 y", "@", "@0", "@x", "@3.rim", "@3+4", "@3*4+5",
                           "\"open", "\"a\".nowhere", "99999999999 1"})
    EXPECT_EQ("none", point_text(text)) << text;
}

TEST(EventLine, KeysWithAndWithoutOthersHeld) {
  const auto typed = read_key("x");
  ASSERT_TRUE(typed);
  EXPECT_EQ(Key::text, typed->key);
  EXPECT_EQ("x", typed->text);
  EXPECT_EQ("X", read_key("shift+x")->text);
  const auto held = read_key("Ctrl+Shift+d");
  ASSERT_TRUE(held);
  EXPECT_EQ(Key::letter, held->key);
  EXPECT_EQ("D", held->text);
  EXPECT_TRUE(held->held.control && held->held.shift && !held->held.alt);
  EXPECT_EQ(Key::page_up, read_key("alt+PAGEUP")->key);
  EXPECT_EQ(11, read_key("F11")->number);
  for (const char *name : {"", "ctrl+", "F0", "F13", "xy", "ctrl+ctrl"})
    EXPECT_FALSE(read_key(name)) << name;
}

TEST(EventLine, TextBehindAVerbIsTakenAsItIs) {
  EXPECT_FALSE(read_event_line("   "));
  EXPECT_FALSE(read_event_line(" # type x"));
  const auto line = read_event_line("type  #1 x ");
  ASSERT_TRUE(line);
  EXPECT_EQ("type", line->verb);
  EXPECT_EQ(" #1 x ", line->rest);
}

KeyEvent key(Key which, bool shift = false, bool control = false) {
  return {which, {}, 0, {shift, control, false}};
}

TEST(PaneText, TypesSelectsAndTakesBack) {
  PaneText pane;
  pane.type("h\u00e9llo\nworld");
  pane.key(key(Key::home));
  pane.key(key(Key::backspace));
  EXPECT_EQ("h\u00e9lloworld", pane.all());
  pane.key(key(Key::home));
  pane.key(key(Key::right));
  pane.key(key(Key::del)); // the letter of two bytes
  EXPECT_EQ("hlloworld", pane.all());
  pane.key(key(Key::right, true));
  pane.key(key(Key::right, true));
  pane.edit(EditCommand::cut);
  EXPECT_EQ("howorld", pane.all());
  pane.key(key(Key::end, false, true));
  pane.edit(EditCommand::paste);
  EXPECT_EQ("howorldll", pane.all());
  while (pane.state().can_undo)
    pane.edit(EditCommand::undo);
  EXPECT_EQ("", pane.all());
}

TEST(PaneText, WhatTheProgramWroteStandsFast) {
  PaneText pane(true);
  pane.append("QUERY> ");
  pane.type("+ #1");
  pane.append("more ");
  EXPECT_EQ("QUERY> more + #1", pane.all());
  EXPECT_EQ("+ #1", pane.typed());
  pane.select({0, 5});
  EXPECT_FALSE(pane.edit(EditCommand::clear));
  pane.type("!"); // goes to the end
  EXPECT_EQ("QUERY> more + #1!", pane.all());
  pane.write("");
  EXPECT_EQ("+ #1!", pane.all());
}

} // namespace

} // namespace velora
