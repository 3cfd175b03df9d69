// The hand under any events, the fast way of drawing, and the page of keys.
#include "unit/shell/hand_kit.h"

#include <fstream>
#include <random>
#include <sstream>

#include "editor/draw_layout.h"
#include "editor/hand/stubs.h"
#include "editor/model/seg_file.h"
#include "editor/picture_walk.h"
#include "front/cint.h"
#include "shell/keys_page.h"

namespace velora {

namespace {

class HandEvents : public kit::HandTest {
protected:
  // The picture as files keep it, and what its record says.
  std::string state() {
    return kit::picture_text(wi) + std::to_string(wi->saved) + std::to_string(wi->clean);
  }
  void random_event(std::mt19937 &random);
};

int below(std::mt19937 &random, int limit) {
  return static_cast<int>(random() % static_cast<unsigned>(limit));
}

bool overlap(const Rect &a, const Rect &b) {
  return a.left <= b.right && b.left <= a.right && a.top <= b.bottom && b.top <= a.bottom;
}

void HandEvents::random_event(std::mt19937 &random) {
  static constexpr int kCommands[] = {201,  202,  203,  204,  205,  301,  302,  303,  304,
                                      305,  307,  311,  601,  602,  603,  604,  605,  606,
                                      607,  609,  1201, 1203, 1401, 1402, 1403, 1404, 1500,
                                      1501, 1502, 1503, 1550, 1551, 1553};
  static constexpr Key kNamed[] = {Key::enter, Key::escape, Key::tab,   Key::space, Key::del,
                                   Key::left,  Key::right,  Key::up,    Key::down,  Key::home,
                                   Key::end,   Key::enter,  Key::enter, Key::escape};
  static const char *const kTyped[] = {"a", "?", "0", "#", "1", " ", "+", "i", "f", "~", "$", "\""};
  const Point at{below(random, 430), below(random, 340)};
  const Modifiers held{below(random, 4) == 0, below(random, 12) == 0, below(random, 12) == 0};
  switch (below(random, 12)) {
  case 0:
  case 1:
  case 2:
    drag(at, {below(random, 430), below(random, 340)}, held);
    break;
  case 3:
  case 4:
    click(at, held);
    break;
  case 5:
    mouse(static_cast<MouseKind>(below(random, 6)), at, held,
          static_cast<MouseButton>(below(random, 4)));
    break;
  case 6:
  case 7:
    key(kNamed[below(random, std::size(kNamed))], held);
    break;
  case 8:
  case 9:
    key(Key::text, {}, kTyped[below(random, std::size(kTyped))]);
    break;
  case 10:
    double_click(at);
    break;
  default:
    choose(kCommands[below(random, std::size(kCommands))]);
  }
}

TEST_F(HandEvents, AnyEventsAreTakenBackWholeAndDoneAgain) {
  // The long run of the tests asks for the full number.
  const int events = std::getenv("VELORA_FULL") != nullptr ? 5000 : 500;
  for (unsigned seed = 1; seed <= 20; ++seed) {
    std::mt19937 random(seed);
    wi = nullptr;
    open(seed % 4 == 3 ? 505 : seed % 4 == 2 ? 503 : 504);
    const std::string first = state();
    for (int i = 0; i < events; ++i) {
      random_event(random);
      ASSERT_EQ(kit::invariant_faults(wi), "") << "seed " << seed << " event " << i;
      if (desktop().windows.size() > 4) { // what a lasso or a copy opened
        const WindowId extra = desktop().windows.rbegin()->first;
        if (extra != wi->win) {
          forget_hand(picture_of(extra));
          RemoveWinInfo(extra);
          DoCloseWindow(extra);
        }
        window_activated(wi->win);
      }
    }
    key(Key::escape);
    if (gHand.state != HandState::idle)
      key(Key::escape);
    const std::string last = state();
    while (!step_to_redo(wi).empty())
      redo_step(wi);
    const std::string end = state();
    int steps = 0;
    for (; !step_to_undo(wi).empty(); ++steps)
      ASSERT_EQ(undo_step(wi), 1);
    EXPECT_EQ(state(), first) << "seed " << seed;
    for (int i = 0; i < steps; ++i)
      ASSERT_EQ(redo_step(wi), 1);
    EXPECT_EQ(state(), end) << "seed " << seed;
    EXPECT_GT(steps, events / 40) << "seed " << seed;
    desktop().log.clear();
    RemoveWinInfo(wi->win);
    forget_hand(wi);
  }
}

TEST_F(HandEvents, AFunctionIsTypedAsItIsRead) {
  open();
  choose(1551);
  enter("fac");
  place(601, {60, 20}, "int");
  double_click(middle(1));
  enter("int");
  enter("if = ?0 #0 #1 * ?0 fac - ?0 #1");
  EXPECT_EQ(inputs(1), "if");
  EXPECT_EQ(inputs(label_slot("if")), "=,#1,*");
  EXPECT_EQ(inputs(label_slot("=")), "int,#0");
  EXPECT_EQ(inputs(label_slot("*")), "int,fac");
  EXPECT_EQ(inputs(label_slot("fac")), "-");
  EXPECT_EQ(inputs(label_slot("-")), "int,#1");
  const Segm *own = seg(label_slot("fac"));
  EXPECT_EQ(shape_style(own), kBold) << "its own name is a recursive function";
  EXPECT_EQ(make_input_numbers(wi).size(), 1U);
  // Nothing covers anything, and every box stands below the band.
  const PictureLayout layout = lay_out_picture(wi);
  for (const NodePlace &node : layout.nodes)
    for (const NodePlace &other : layout.nodes) {
      const Rect &a = node.box;
      const Rect &b = other.box;
      EXPECT_TRUE(&node == &other || a.right <= b.left || b.right <= a.left || a.bottom <= b.top ||
                  b.bottom <= a.top)
          << node.seg->label << " over " << other.seg->label;
    }
  // Each name was a step.
  EXPECT_EQ(step_to_undo(wi), "Add #1");
  for (int i = 0; i < 11; ++i)
    choose(201);
  EXPECT_EQ(inputs(1), "");
}

TEST_F(HandEvents, MissingInputsShowAndAreWalked) {
  open();
  enter("append");
  const int slot = label_slot("append");
  ASSERT_NE(slot, 0);
  EXPECT_EQ(inputs(1), "append");
  EXPECT_EQ(missing_inputs(wi, seg(slot)), (std::vector<int>{0, 1}));
  EXPECT_EQ(chosen(), std::to_string(slot));
  key(Key::tab);
  EXPECT_EQ(gHand.stub, 0);
  key(Key::tab);
  EXPECT_EQ(gHand.stub, 1);
  key(Key::tab);
  EXPECT_EQ(gHand.stub, -1);
  EXPECT_NE(chosen(), std::to_string(slot));
  click(middle(slot));
  typed("nil");
  EXPECT_EQ(gHand.state, HandState::naming);
  EXPECT_EQ(gHand.matches.front().name, "nil");
  EXPECT_EQ(gHand.matches.front().tool, kToolHexagon) << "a constant is a value";
  key(Key::escape);
  EXPECT_EQ(missing_inputs(wi, seg(slot)), (std::vector<int>{0, 1})) << "Esc leaves no trace";
  typed("appen");
  EXPECT_EQ(gHand.matches.front().name, "append") << "the first that begins so";
  key(Key::down);
  EXPECT_EQ(gHand.matches[gHand.chosen].name, "appen") << "or the text as it is";
  key(Key::enter);
  EXPECT_EQ(inputs(slot), "appen");
}

TEST_F(HandEvents, StubsKeepClearOfTheArrowsAtTheirBox) {
  ASSERT_EQ(cint_fdec("pick ::= int -> int -> int -> int"), 1);
  ASSERT_EQ(cint_fdec("blend ::= int -> int -> int -> int -> int"), 1);
  // Under one value and under two, of which the second stands far to the side.
  for (const char *label : {"+", "pick", "blend"})
    for (const std::size_t values : {1, 2})
      for (const int x : {140, 200, 260, 330}) {
        SCOPED_TRACE(std::string(label) + " with " + std::to_string(values) + " at " +
                     std::to_string(x));
        open();
        place(603, {x, 120}, "#1");
        if (values == 2)
          place(603, {70, 120}, "#2");
        const int box = place(602, {200, 200}, label);
        drag(rim(label_slot("#1")), middle(box));
        if (values == 2)
          drag(rim(label_slot("#2")), middle(box));
        const PictureLayout layout = lay_out_picture(wi);
        const auto node = std::find_if(layout.nodes.begin(), layout.nodes.end(),
                                       [&](const NodePlace &n) { return n.seg == seg(box); });
        ASSERT_NE(node, layout.nodes.end());
        const std::vector<Stub> stubs = stubs_of(wi, layout, *node);
        ASSERT_EQ(stubs.size(), missing_inputs(wi, seg(box)).size());
        for (const Stub &stub : stubs) {
          const StubAt hit = stub_at(wi, layout, stub.tip);
          EXPECT_EQ(hit.slot, box);
          EXPECT_EQ(hit.input, stub.input);
          for (const ArcPlace &arc : layout.arcs)
            EXPECT_FALSE(overlap(stub.ink, arrow_end_box(arc, picture_font(wi), 13)))
                << "input " << stub.input;
          for (const Stub &other : stubs)
            EXPECT_TRUE(other.input == stub.input || !overlap(stub.ink, other.ink));
        }
      }
}

TEST_F(HandEvents, AnArrowThatCannotStandInOrderBends) {
  open();
  place(601, {60, 20}, "int");
  click({400, 60});
  enter("-");
  const int minus = label_slot("-");
  click(middle(minus));
  enter("#9");
  EXPECT_EQ(inputs(minus), "#9");
  // The input stands left of the value, and is to be the second.
  ASSERT_LT(middle(make_input_numbers(wi)[0]).x, middle(label_slot("#9")).x);
  enter("?0");
  EXPECT_EQ(inputs(minus), "#9,int");
}

TEST_F(HandEvents, ThePageOfKeysIsThatOfTheTables) {
  const std::string file = std::string(VELORA_SOURCE_DIR) + "/docs/keys.md";
  if (std::getenv("VELORA_UPDATE_GOLDEN") != nullptr)
    std::ofstream(file) << keys_page();
  std::ifstream in(file);
  std::ostringstream text;
  text << in.rdbuf();
  EXPECT_EQ(text.str(), keys_page()) << "run with VELORA_UPDATE_GOLDEN=1";
}

} // namespace

} // namespace velora
