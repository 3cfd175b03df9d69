// What a picture's window shows of it, and where the hand leads from there: zoom, pan, faults.
#include "unit/shell/hand_kit.h"

#include "core/symbols.h"
#include "editor/hand/faults.h"
#include "editor/model/wininfo.h"
#include "shell/desk_events.h"
#include "shell/text_windows.h"

namespace velora {

namespace {

class HandView : public kit::HandTest {
protected:
  PictureView view() { return desktop().view_of(wi->win); }
};

TEST_F(HandView, ThePointUnderThePointerStaysWhereItIs) {
  open();
  place(602, {200, 150}, "a");
  const Rect box = seg(2)->box();
  MouseEvent wheel;
  wheel.kind = MouseKind::wheel;
  wheel.at = {200, 150};
  wheel.notches = -1;
  EXPECT_FALSE(mouse_event(wi->win, wheel)) << "without control the window scrolls";
  wheel.held.control = true;
  EXPECT_TRUE(mouse_event(wi->win, wheel));
  EXPECT_EQ(view().percent, 125);
  // 200 units from the left at 100 % are 160 at 125 %.
  EXPECT_EQ(view().origin, (Point{40, 30}));
  wheel.notches = 1;
  mouse_event(wi->win, wheel);
  EXPECT_EQ(view().percent, 100);
  EXPECT_EQ(view().origin, (Point{0, 0}));
  EXPECT_EQ(wi->txtsze, 12) << "the stored text size is another thing";
  EXPECT_EQ(seg(2)->box(), box);
  EXPECT_EQ(step_to_undo(wi), "Add Function") << "looking is no step";
  choose(1500);
  EXPECT_EQ(view().percent, 125);
  choose(1502);
  EXPECT_EQ(view().percent, 100);
  for (int i = 0; i < 12; ++i)
    choose(1501);
  EXPECT_EQ(view().percent, 25);
  edit_picture(wi, "Far", [&] { move_node(seg(2), 3000, 0); });
  choose(1503);
  EXPECT_LT(view().percent, 100);
  EXPECT_GT(view().percent * (3200 + 16), 100) << "and still to be seen";
}

TEST_F(HandView, TheMiddleButtonAndTheSpaceKeyMoveThePicture) {
  open();
  place(602, {200, 150}, "a");
  const std::string picture = kit::picture_text(wi);
  mouse(MouseKind::down, {100, 100}, {}, MouseButton::middle);
  mouse(MouseKind::move, {80, 70}, {}, MouseButton::middle);
  EXPECT_EQ(view().origin, (Point{20, 30}));
  EXPECT_EQ(desktop().cursor, CursorShape::hand);
  mouse(MouseKind::up, {80, 70}, {}, MouseButton::middle);
  key(Key::space);
  mouse(MouseKind::down, middle(2));
  mouse(MouseKind::move, {middle(2).x + 20, middle(2).y + 30});
  mouse(MouseKind::up, {0, 0});
  EXPECT_EQ(view().origin, (Point{0, 0}));
  EXPECT_EQ(kit::picture_text(wi), picture) << "nothing was moved in it";
  drag(middle(2), {middle(2).x + 40, middle(2).y}, kAlt);
  EXPECT_NE(kit::picture_text(wi), picture) << "the space key counts for one drag";
}

TEST_F(HandView, FaultsLeadToTheirSegments) {
  open();
  const int a = place(602, {100, 100}, "a");
  const int b = place(602, {200, 200}, "b");
  EXPECT_FALSE(go_to_next_fault(wi));
  note_faults(wi, {{a, "ERROR: a is wrong\n"}, {b, "WARNING: b too\n"}});
  choose(1555);
  EXPECT_EQ(chosen(), std::to_string(a));
  choose(1555);
  EXPECT_EQ(chosen(), std::to_string(b));
  choose(1555);
  EXPECT_EQ(chosen(), std::to_string(a));
  EXPECT_EQ(go_to_fault("WARNING: b too"), wi);
  EXPECT_EQ(chosen(), std::to_string(b));
  EXPECT_EQ(go_to_fault("something else"), nullptr);
  // So does a click on the message in CONTROL.
  EXPECT_FALSE(message_leads({"a", "ERROR"}));
  EXPECT_TRUE(message_leads({"ERROR: a is wrong"}));
  gDesktop->focus_window(hControl);
  message_clicked({"ERROR: a is wrong"});
  EXPECT_EQ(chosen(), std::to_string(a));
  EXPECT_EQ(desktop().focus, wi->win);
  choose(1555);
  key(Key::del);
  EXPECT_EQ(faults_of(wi).size(), 1U) << "what is gone has no fault";
  RemoveWinInfo(wi->win);
  EXPECT_EQ(go_to_fault("ERROR: a is wrong"), nullptr);
}

TEST_F(HandView, ABoxLeadsToItsPlaceInTheText) {
  open();
  wi->name = "twice";
  place(601, {60, 20}, "int");
  double_click(middle(1));
  enter("int");
  enter("+ ?0 * ?0 #2");
  const WindowId picture = wi->win;
  WindowId text = 0;
  const auto shown = [&](int slot) {
    window_activated(picture);
    click(middle(slot));
    choose(1556);
    text = desktop().windows.rbegin()->first;
    const TextRange range = gDesktop->selection(text);
    return gDesktop->text_of(text).substr(range.start, range.end - range.start);
  };
  EXPECT_EQ(shown(label_slot("*")), "(* ?0 (#2))") << console().messages;
  EXPECT_EQ(gDesktop->text_of(text), "fdef\ntwice ?0 ::= + ?0 (* ?0 (#2)) ;\n;\n");
  EXPECT_EQ(shown(label_slot("#2")), "(#2)");
  EXPECT_EQ(unstored_texts().size(), 0U) << "looking at it leaves nothing to store";
  EXPECT_EQ(find_symbol("twice", 0), nullptr) << "and defines nothing";
  // A picture that is no clause shows what keeps it from being one.
  window_activated(picture);
  const std::size_t windows = desktop().windows.size();
  drag(rim(label_slot("*")), middle(1));
  choose(1556);
  EXPECT_EQ(desktop().windows.size(), windows);
  EXPECT_EQ(faults_of(wi).size(), 1U) << console().messages;
}

TEST_F(HandView, ANetworkOpensFunctionsInWindowsLargeEnough) {
  WinInfo *stored = kit::picture("wide");
  kit::place_node(stored, kBox, kPlain, "far", {700, 500, 760, 520});
  open(505);
  place(1301, {100, 100}, "wide");
  double_click(middle(1));
  const WindowId shown = desktop().windows.rbegin()->first;
  ASSERT_NE(shown, wi->win);
  EXPECT_EQ(picture_of(shown)->name, "wide");
  EXPECT_GT(desktop().windows[shown].place.width(), 760);
  EXPECT_GT(desktop().windows[shown].place.height(), 520);
  EXPECT_NE(gHand.state, HandState::labelling);
  key(Key::function, {}, {}, 2);
  EXPECT_EQ(gHand.state, HandState::labelling) << "F2 edits in a network too";
}

} // namespace

} // namespace velora
