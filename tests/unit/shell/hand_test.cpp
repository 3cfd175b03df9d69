// The hand in a picture: tools, choosing, moving, joining, labels, undo.
#include "unit/shell/hand_kit.h"

#include "editor/needs.h"
#include "kit/log_canvas.h"

namespace velora {

namespace {

class Hand : public kit::HandTest {};

TEST_F(Hand, EveryToolPlacesItsNodeAndOpensItsLabel) {
  struct Row {
    int window, command, mode, type, style;
    CursorShape cursor;
  };
  constexpr Row kRows[] = {
      {504, 601, 12, kHexagon, kBold, CursorShape::bold_hexagon},
      {504, 602, 7, kBox, kPlain, CursorShape::box},
      {504, 603, 9, kBox, kBold, CursorShape::bold_box},
      {504, 604, 6, kBox, kDouble, CursorShape::double_box},
      {504, 605, 10, kHexagon, kDouble, CursorShape::double_hexagon},
      {504, 606, 31, kHoldValue, kPlain, CursorShape::hexagon},
      {504, 607, 13, kJunction, kBold, CursorShape::junction},
      {504, 1550, 4, kHexagon, kPlain, CursorShape::hexagon},
      {504, 1403, 7, kBox, kPlain, CursorShape::box},
      {504, 1402, 10, kHexagon, kDouble, CursorShape::double_hexagon},
      {503, 701, 10, kHexagon, kDouble, CursorShape::double_hexagon},
      {503, 702, 6, kBox, kDouble, CursorShape::double_box},
      {503, 703, 11, kBox, kBold, CursorShape::bold_box},
      {503, 704, 7, kBox, kPlain, CursorShape::box},
      {503, 705, 13, kJunction, kBold, CursorShape::junction},
      {505, 1301, 7, kBox, kPlain, CursorShape::box},
      {505, 1302, 9, kBox, kBold, CursorShape::bold_box},
      {505, 1303, 13, kJunction, kBold, CursorShape::junction},
      {505, 1404, 13, kJunction, kBold, CursorShape::junction},
  };
  for (const Row &row : kRows) {
    open(row.window);
    choose(row.command);
    EXPECT_EQ(greqMode, row.mode) << row.command;
    EXPECT_EQ(desktop().cursor, row.cursor) << row.command;
    EXPECT_EQ(wi->seg_ct, 0) << "nothing stands before the first click";
    click({200, 150});
    const int slot = row.window == 505 ? 1 : 2;
    ASSERT_EQ(wi->seg_ct, slot) << row.command;
    EXPECT_EQ(seg(slot)->type, row.type) << row.command;
    EXPECT_EQ(shape_style(seg(slot)), row.style) << row.command;
    EXPECT_EQ(middle(slot).x, row.type == kBox ? 185 : 200) << row.command;
    EXPECT_EQ(wi->saved, 0);
    EXPECT_EQ(greqMode, 0) << "a tool is for one click";
    ASSERT_EQ(gHand.state, HandState::labelling) << row.command;
    enter("name");
    EXPECT_EQ(seg(slot)->label, "name");
    EXPECT_EQ(gHand.state, HandState::idle);
    EXPECT_EQ(chosen(), std::to_string(slot));
    // One step: node, label, and the setting up of the fresh picture.
    choose(201);
    EXPECT_EQ(wi->seg_ct, 0) << row.command;
    EXPECT_EQ(wi->saved, 1);
    EXPECT_EQ(wi->clean, 1);
    choose(202);
    EXPECT_EQ(wi->seg_ct, slot);
    EXPECT_EQ(seg(slot)->label, "name");
  }
}

TEST_F(Hand, ToolsStayWithShiftAndGoWithEsc) {
  open();
  choose(602);
  click({100, 100}, kShift);
  key(Key::enter);
  EXPECT_EQ(greqMode, 7);
  click({100, 200}, kShift);
  key(Key::escape);
  EXPECT_EQ(gHand.state, HandState::idle);
  EXPECT_EQ(wi->seg_ct, 3) << "Esc in a label leaves the node";
  choose(602);
  key(Key::escape);
  EXPECT_EQ(greqMode, 0);
  click({300, 100});
  EXPECT_EQ(wi->seg_ct, 3);
  open();
  choose(602);
  key(Key::escape);
  EXPECT_EQ(wi->seg_ct, 0) << "no result node is left behind";
  EXPECT_EQ(wi->saved, 1);
  // There are no types in a network: the mode stays.
  open(505);
  choose(1301);
  choose(1402);
  EXPECT_EQ(greqMode, 7);
}

TEST_F(Hand, ClicksAndBandsChoose) {
  open();
  const int a = place(602, {100, 100}, "a");
  const int b = place(602, {200, 100}, "b");
  const int c = place(602, {300, 200}, "c");
  click(middle(a));
  EXPECT_EQ(chosen(), std::to_string(a));
  click(middle(b), kShift);
  EXPECT_EQ(chosen(), "2 3");
  click(middle(a), kShift);
  EXPECT_EQ(chosen(), std::to_string(b));
  click({10, 60});
  EXPECT_EQ(chosen(), "");
  drag({40, 60}, {250, 140});
  EXPECT_EQ(chosen(), "2 3");
  drag({240, 160}, {380, 240}, kShift);
  EXPECT_EQ(chosen(), "2 3 4");
  key(Key::letter, kControl, "A");
  EXPECT_EQ(chosen(), "1 2 3 4");
  EXPECT_EQ(step_to_undo(wi), "Add Function") << "choosing is no step";
  key(Key::tab);
  EXPECT_EQ(chosen(), std::to_string(a)) << "from the result round to the first";
  key(Key::tab);
  EXPECT_EQ(chosen(), std::to_string(b));
  key(Key::tab, kShift);
  EXPECT_EQ(chosen(), std::to_string(a));
  key(Key::right, kControl);
  EXPECT_EQ(chosen(), std::to_string(b));
  key(Key::down, kControl);
  EXPECT_EQ(chosen(), std::to_string(c));
}

TEST_F(Hand, TheLineOfTheBandLeavesNodesReadable) {
  open();
  for (const int x : {250, 80})
    place(601, {x, 20}, "int");
  kit::LogCanvas canvas;
  paint_window(wi->win, canvas);
  int pieces = 0;
  for (const kit::LogCanvas::Line &line : canvas.lines) {
    if (line.pen.style != PenStyle::dotted || line.from.y != NodeHeight(wi))
      continue;
    ++pieces;
    for (const int slot : {2, 3})
      EXPECT_TRUE(line.to.x <= seg(slot)->lx || line.from.x >= seg(slot)->ux)
          << line.from.x << " to " << line.to.x << " crosses " << slot;
  }
  EXPECT_EQ(pieces, 3);
}

TEST_F(Hand, NodesMoveSnapAndStayOutOfTheBand) {
  open();
  const int a = place(602, {100, 100}, "a");
  const int b = place(602, {250, 160}, "b");
  const Point before = middle(a);
  drag(middle(a), {middle(a).x + 20, middle(a).y + 57});
  EXPECT_EQ(middle(a).x, before.x + 20);
  EXPECT_EQ(middle(a).y, middle(b).y) << "drawn into the row of its neighbour";
  choose(201);
  EXPECT_EQ(middle(a), before);
  drag(middle(a), {middle(a).x + 20, middle(a).y + 57}, kAlt);
  EXPECT_EQ(middle(a).y, before.y + 57);
  drag(middle(a), {middle(a).x, 5}, kAlt);
  EXPECT_GE(seg(a)->ly, argument_band()) << "what is no parameter is no argument";
  const int p = place(601, {50, 30}, "int");
  EXPECT_EQ(middle(p).y, NodeHeight(wi));
  EXPECT_LT(seg(p)->ly, NodeHeight(wi));
  click(middle(b));
  for (int i = 0; i < 4; ++i)
    key(Key::right);
  key(Key::down, kShift);
  EXPECT_EQ(middle(b).x, 235 + 20);
  EXPECT_EQ(middle(b).y, 161);
  choose(201);
  EXPECT_EQ(middle(b).x, 235) << "nudges are one step";
  // A drag that is lost, or left by Esc, leaves no trace.
  const std::string picture = kit::picture_text(wi);
  mouse(MouseKind::down, middle(b));
  mouse(MouseKind::move, {400, 400});
  mouse(MouseKind::lost, {});
  mouse(MouseKind::down, middle(b));
  mouse(MouseKind::move, {400, 400});
  key(Key::escape);
  mouse(MouseKind::up, {400, 400});
  EXPECT_EQ(kit::picture_text(wi), picture);
  choose(301);
  EXPECT_EQ(greqMode, 16);
  drag(rim(b), {rim(b).x + 40, rim(b).y + 40}, kAlt);
  EXPECT_EQ(middle(b).x, 275) << "with the tool for moving the rim moves too";
  EXPECT_EQ(greqMode, 0);
}

TEST_F(Hand, ArrowsAreDrawnFromRimsByToolAndByKeys) {
  open();
  const int a = place(602, {100, 100}, "a");
  const int b = place(602, {100, 200}, "b");
  const int c = place(602, {250, 100}, "c");
  drag(rim(a), middle(b));
  EXPECT_EQ(inputs(b), "a");
  EXPECT_EQ(step_to_undo(wi), "Join");
  click({400, 60});
  choose(609);
  EXPECT_EQ(desktop().cursor, CursorShape::start_join);
  click(middle(c));
  EXPECT_EQ(greqMode, 17);
  EXPECT_EQ(desktop().cursor, CursorShape::end_join);
  click(middle(b));
  EXPECT_EQ(inputs(b), "a,c");
  EXPECT_EQ(greqMode, 0);
  click(middle(b));
  choose(1401);
  EXPECT_EQ(gHand.state, HandState::keyjoin);
  key(Key::down);
  EXPECT_EQ(gHand.target, 1);
  key(Key::enter);
  EXPECT_EQ(inputs(1), "b");
  click({400, 60});
  choose(1401);
  EXPECT_EQ(greqMode, 17) << "with nothing chosen it is the tool";
  key(Key::escape);
  // The result feeds nothing, and nothing feeds itself.
  const int count = wi->seg_ct;
  drag(rim(1), middle(a), kAlt);
  EXPECT_EQ(wi->seg_ct, count);
  choose(201);
  drag(rim(a), {middle(a).x, middle(a).y - 1});
  EXPECT_EQ(wi->seg_ct, count);
  // The number follows from where the nodes stand; a head can be dragged to another place.
  const Segm *arc = cyclic_order_types_of(seg(b))[1];
  const PictureLayout layout = lay_out_picture(wi);
  Point head{};
  for (const ArcPlace &place : layout.arcs)
    if (place.seg == arc)
      head = {place.path.back().x, place.path.back().y - 1};
  drag(head, {seg(b)->lx + 2, seg(b)->ly + 3});
  EXPECT_EQ(inputs(b), "c,a");
  choose(201);
  EXPECT_EQ(inputs(b), "a,c");
}

TEST_F(Hand, BoxesGoIntoArrowsAndComeOut) {
  open();
  const int a = place(602, {100, 60}, "a");
  const int b = place(602, {100, 250}, "b");
  drag(rim(a), middle(b));
  choose(602);
  click({85, 150});
  enter("between");
  EXPECT_EQ(inputs(b), "between");
  EXPECT_EQ(inputs(label_slot("between")), "a");
  click(middle(label_slot("between")));
  key(Key::del, kShift);
  EXPECT_EQ(inputs(b), "a");
  EXPECT_EQ(label_slot("between"), 0);
  const int c = place(602, {300, 150}, "c");
  drag(middle(c), {85, 150});
  EXPECT_EQ(inputs(b), "c");
  EXPECT_EQ(inputs(c), "a");
  click(middle(c));
  key(Key::del);
  EXPECT_EQ(inputs(b), "");
  click(middle(1));
  key(Key::del);
  EXPECT_NE(seg(1), nullptr) << "the result stays";
  // Dropping an arrow on nothing asks for the box that it is to feed.
  drag(rim(a), {300, 200});
  EXPECT_EQ(gHand.state, HandState::naming);
  enter("null");
  const int added = label_slot("null");
  ASSERT_NE(added, 0);
  EXPECT_EQ(inputs(added), "a");
  EXPECT_NEAR(middle(added).x, 300, 20);
  choose(201);
  EXPECT_EQ(label_slot("null"), 0);
  // In a network the first node goes with Del, and stays with the menu's command.
  open(505);
  place(1301, {100, 100}, "f");
  choose(311);
  EXPECT_NE(seg(1), nullptr);
  key(Key::del);
  EXPECT_EQ(seg(1), nullptr);
}

TEST_F(Hand, LabelsAreEditedInPlace) {
  open();
  const int a = place(602, {200, 150}, "first");
  double_click(middle(a));
  ASSERT_EQ(gHand.state, HandState::labelling);
  EXPECT_EQ(gHand.text.selected(), "first");
  typed("second");
  click({20, 300});
  EXPECT_EQ(seg(a)->label, "second") << "a click elsewhere accepts";
  click(middle(a));
  key(Key::function, {}, {}, 2);
  typed("third");
  key(Key::escape);
  EXPECT_EQ(seg(a)->label, "second");
  key(Key::enter);
  enter("a~b");
  EXPECT_EQ(gHand.state, HandState::labelling) << "a refused label keeps the editor open";
  EXPECT_NE(gHand.complaint, "");
  key(Key::letter, kControl, "A");
  enter("$$$$x");
  EXPECT_EQ(gHand.state, HandState::labelling);
  key(Key::letter, kControl, "A");
  enter(std::string(81, 'x'));
  EXPECT_EQ(gHand.state, HandState::labelling);
  key(Key::letter, kControl, "A");
  key(Key::backspace);
  enter("caf\xC3\xA9 x");
  EXPECT_EQ(seg(a)->label, "caf\xC3\xA9 x");
  key(Key::enter);
  key(Key::del);
  key(Key::enter);
  EXPECT_EQ(seg(a)->label, "") << "no text leaves it blank";
  EXPECT_GT(seg(a)->box().width(), 30) << "settling only enlarges";
  choose(1551);
  enter("two words");
  EXPECT_EQ(gHand.state, HandState::labelling);
  key(Key::letter, kControl, "A");
  enter("fac");
  EXPECT_EQ(wi->name, "fac");
  EXPECT_EQ(desktop().windows[wi->win].title, "fac *");
  choose(201);
  EXPECT_EQ(wi->name, "");
}

TEST_F(Hand, ABlankEndsLiteralsThatAreClosed) {
  open();
  for (const char *closed : {"#1", "'('", "' '", "\"a (b\"", "[#1 #2]"})
    EXPECT_TRUE(is_whole_name(wi, closed)) << closed;
  for (const char *unclosed : {"'", "' ", "(f", "[#1", "\"a"})
    EXPECT_FALSE(is_whole_name(wi, unclosed)) << unclosed;
}

TEST_F(Hand, NodesAreCopiedWithinAndBetweenPictures) {
  open();
  const int a = place(602, {100, 100}, "a");
  const int b = place(602, {100, 200}, "b");
  drag(rim(a), middle(b));
  drag({40, 60}, {180, 240});
  choose(204);
  choose(205);
  EXPECT_EQ(wi->seg_ct, 7);
  EXPECT_EQ(chosen(), "5 6");
  EXPECT_EQ(inputs(6), "a");
  EXPECT_EQ(seg(5)->lx, seg(a)->lx + 20);
  choose(1553);
  EXPECT_EQ(wi->seg_ct, 10);
  choose(203);
  EXPECT_EQ(chosen(), "");
  EXPECT_EQ(label_slot("a"), a);
  choose(201);
  choose(201);
  choose(201);
  EXPECT_EQ(wi->seg_ct, 4);
  open();
  choose(205);
  EXPECT_EQ(wi->seg_ct, 4) << "the result node, two boxes, their arrow";
  EXPECT_EQ(inputs(3), "a");
  EXPECT_EQ(desktop().clipboard_text(), "b a");
  desktop().set_clipboard_text("something else");
  menu_opened();
  EXPECT_FALSE(item_on(205));
  choose(308);
  window_activated(desktop().windows.rbegin()->first);
  wi = picture_of(previous);
  EXPECT_EQ(wi->seg_ct, 4) << "the selection in a window of its own";
}

TEST_F(Hand, TheKeysAloneDoWhatTheMouseDoes) {
  open();
  choose(602);
  key(Key::enter);
  enter("a"); // in the middle of the window
  ASSERT_EQ(label_slot("a"), 2);
  choose(602);
  key(Key::enter);
  enter("b"); // beside it
  EXPECT_EQ(middle(3).y, middle(2).y);
  EXPECT_GT(seg(3)->lx, seg(2)->ux);
  choose(602);
  key(Key::enter);
  enter("c");
  for (const int from : {3, 4}) {
    select_only(wi, from);
    choose(1401);
    while (gHand.target != 2)
      key(Key::tab);
    key(Key::enter);
  }
  EXPECT_EQ(inputs(2), "b,c");
  // An arrow is chosen and made another input.
  const int arc = cyclic_order_types_of(seg(2))[1]->segnum;
  select_only(wi, arc);
  key(Key::left, kShift);
  EXPECT_EQ(inputs(2), "c,b");
  choose(201);
  EXPECT_EQ(inputs(2), "b,c");
  // A name typed at an arrow goes into it.
  select_only(wi, cyclic_order_types_of(seg(2))[0]->segnum);
  enter("null");
  EXPECT_EQ(inputs(2), "null,c");
  EXPECT_EQ(inputs(label_slot("null")), "b");
  // Several are chosen, and collapsed.
  select_only(wi, 2);
  key(Key::right, {true, true, false});
  EXPECT_EQ(selected_slots(wi).size(), 2U);
  select_only(wi, label_slot("c"));
  const std::size_t windows = desktop().windows.size();
  choose(307);
  key(Key::enter);
  EXPECT_EQ(desktop().windows.size(), windows + 1);
}

TEST_F(Hand, SelectionsAreResizedColouredAndCollapsed) {
  open();
  const int a = place(602, {100, 100}, "a");
  const int b = place(602, {100, 200}, "b");
  drag(rim(a), middle(b));
  click(middle(a));
  const Rect box = seg(a)->box();
  choose(304);
  EXPECT_EQ(seg(a)->box().width(), box.width() * 4 / 3);
  EXPECT_EQ(seg(a)->box().centre(), box.centre());
  choose(305);
  choose(305);
  EXPECT_LT(seg(a)->box().width(), box.width());
  for (int i = 0; i < 3; ++i)
    choose(201);
  EXPECT_EQ(seg(a)->box(), box);
  choose(1203);
  EXPECT_EQ(colour_index(seg(a)), kRed);
  choose(1201);
  EXPECT_EQ(colour_index(seg(a)), kBlack);
  choose(201);
  EXPECT_EQ(colour_index(seg(a)), kRed);
  choose(302);
  choose(302);
  EXPECT_EQ(wi->txtsze, 22);
  EXPECT_EQ(seg(a)->box(), box) << "the text size deforms nothing";
  choose(201);
  EXPECT_EQ(wi->txtsze, 12);
  choose(307);
  EXPECT_EQ(greqMode, 32);
  WinInfo *first = wi;
  drag({40, 60}, {180, 150});
  window_activated(desktop().windows.rbegin()->first);
  wi = picture_of(previous);
  ASSERT_NE(wi, first);
  EXPECT_EQ(inputs(1), "a");
  EXPECT_EQ(greqMode, 0);
}

} // namespace

} // namespace velora
