// Growing, pruning, hiding, tidying and writing of network pictures, and questions about calls.
#include "network/net_view.h"

#include <set>

#include "editor/draw.h"
#include "editor/make_picture.h"
#include "editor/model/vel_segs.h"
#include "kit/log_canvas.h"
#include "kit/pictures.h"
#include "network/call_graph.h"
#include "network/links.h"
#include "network/net_formats.h"
#include "network/net_lay.h"
#include "network/net_store.h"
#include "network/net_tidy.h"
#include "network/net_util.h"
#include "unit/db/db_kit.h"

using namespace velora;
using namespace velora::db_test;

namespace {

class Network : public DbTest {
protected:
  // A network window's picture over the links "ab ac bd", with the boxes named, joined as the
  // links.
  WinInfo *network(const std::string &pairs, const std::string &boxes) {
    links.clear();
    links.push_back(std::make_unique<Links>(Links{1, {}}));
    for (std::size_t i = 0; i + 1 < pairs.size(); i += 3)
      links[0]->ipr.push_back({pairs.substr(i, 1), 0, "~", pairs.substr(i + 1, 1), 0, 0});
    WinInfo *wi = kit::picture(kNetworkName, -1, kNetworkPicture);
    int x = 0;
    for (const char box : boxes)
      kit::place_node(wi, kBox, 0, std::string(1, box), Rect{x += 40, 20, x + 20, 40});
    for (const Pair &pair : links[0]->ipr)
      if (const int from = NamedFunInWin(wi, pair.first))
        if (const int to = NamedFunInWin(wi, pair.second))
          kit::join(wi, from, to);
    return wi;
  }
  static void select(WinInfo *wi, const std::string &boxes) {
    for (int i = 1; i <= wi->seg_ct; ++i)
      if (Segm *seg = wi->seg_ments[i])
        seg->status =
            seg->type == kBox && boxes.find(seg->label) != std::string::npos ? kSelected : 0;
  }
  // The boxes and the arcs, "a b a>b".
  static std::string shown(const WinInfo *wi) {
    std::set<std::string> items;
    for (int i = 1; i <= wi->seg_ct; ++i)
      if (const Segm *seg = wi->seg_ments[i])
        items.insert(is_arc(seg) ? arc_start(seg)->label + ">" + arc_end(seg)->label : seg->label);
    std::string text;
    for (const std::string &item : items)
      text += item + " ";
    EXPECT_EQ(kit::invariant_faults(wi), "");
    return text;
  }
  std::string expanded(int choice, const std::string &selected, const std::string &boxes) {
    WinInfo *wi = network("ab ac bd cd de xa", boxes);
    select(wi, selected);
    without_links_ = ExpandNetNodes(wi, choice);
    return shown(wi);
  }
  int without_links_ = 0;
};

TEST_F(Network, GrowsByWhatIsCalledAndWhatCalls) {
  EXPECT_EQ(expanded(kChildren, "a", "a"), "a a>b a>c b c ");
  EXPECT_EQ(expanded(kDescendants, "b", "b"), "b b>d d d>e e ");
  EXPECT_EQ(expanded(kParents, "d", "d"), "b b>d c c>d d ");
  EXPECT_EQ(expanded(kAncestors, "b", "b"), "a a>b b x x>a ");
  // Nothing is doubled, and nodes without links are counted after the others are done.
  EXPECT_EQ(expanded(kChildren, "ea", "aeb"), "a a>b a>c b c e ");
  EXPECT_EQ(without_links_, 1);
}

TEST_F(Network, ShowsASetInAPictureOfItsOwn) {
  WinInfo *wi = network("ab bc", "a");
  select(wi, "a");
  hControl = 1; // a program with windows
  EXPECT_EQ(ExpandNetNodes(wi, kDescendantsInNewWindow), 0);
  hControl = 0;
  EXPECT_EQ(shown(wi), "a ");
  ASSERT_NE(wi->next, nullptr);
  EXPECT_EQ(shown(wi->next), "a a>b b b>c c ");
  EXPECT_NE(wi->next->win, 0);
  EXPECT_EQ(wi->next->saved, 0);
}

TEST_F(Network, PrunesTheLowestFunctionsReached) {
  load("tdec\nt ::= enum ;\n;\ncdec\nM ::= t ;\n;\nfdec\nd ::= t ;\n;\n");
  const auto pruned = [&](int choice, const std::string &selected) {
    WinInfo *wi = network("ab bM bd xd", "abMdx");
    select(wi, selected);
    DelLowestFuns(wi, choice);
    for (int i = 1; i <= wi->seg_ct; ++i)
      EXPECT_TRUE(wi->seg_ments[i] == nullptr ||
                  (wi->seg_ments[i]->status & (kVisited | kCopiedBit)) == 0);
    return shown(wi);
  };
  EXPECT_EQ(pruned(kConstructorsOnly, "a"), "a a>b b b>d d x x>d ");
  EXPECT_EQ(pruned(kAllLowest, "a"), "a a>b b x ");
  EXPECT_EQ(pruned(kAllLowest, "x"), "M a a>b b b>M x ");
  EXPECT_EQ(pruned(kBuiltinAndSystem, "a"), "M a a>b b b>M b>d d x x>d ");
  EXPECT_EQ(pruned(kAllLowest, ""), "M a a>b b b>M b>d d x x>d ");
}

// A frame that would hold a stranger goes close around the boxes of the circle and its arrows.
TEST_F(Network, FramesACircleWithoutStrangers) {
  for (const bool stranger : {false, true}) {
    WinInfo *wi = network("ab ba", stranger ? "abc" : "ab");
    const auto put = [wi](int slot, int x, int y) {
      Segm *seg = wi->seg_ments[slot];
      seg->lx = x;
      seg->ly = y;
      seg->ux = x + 40;
      seg->uy = y + 20;
    };
    put(1, 20, 20);
    put(2, 320, 220);
    if (stranger)
      put(3, 300, 30);
    kit::LogCanvas log;
    DrawVeloraWindow(wi, log);
    const Point within{320, 40}; // of the third box
    int around_all = 0;
    int around_one = 0;
    for (const auto &shape : log.shapes) {
      if (shape.kind != 'r' || shape.pen.style != PenStyle::dotted)
        continue;
      around_all += shape.box.contains(within) ? 1 : 0;
      around_one += shape.box.contains({30, 30}) ? 1 : 0;
    }
    EXPECT_EQ(around_all, stranger ? 0 : 1);
    EXPECT_EQ(around_one, 1);
  }
}

TEST_F(Network, ShowsRootsOnAGridOfTenths) {
  WinInfo *wi = network("ab cb db eb fb gb hb ib jb", "");
  wi->wth = 100;
  wi->ht = 100;
  EXPECT_EQ(DisplayRootNodes(wi), 1);
  EXPECT_EQ(console().messages, "");
  EXPECT_EQ(shown(wi), "a c d e f g h i j ");
  EXPECT_EQ(wi->seg_ments[1]->box().centre().y + 70, wi->seg_ments[8]->box().centre().y + 80);
  EXPECT_EQ(wi->saved, 0);
  DisplayRootNodes(wi);
  EXPECT_EQ(console().messages, "Warning : The Network window is not empty\n");
  const int before = wi->seg_ct;
  EXPECT_EQ(Add_Net_Node(wi, "a"), 1);
  EXPECT_EQ(Add_Net_Node(wi, "new"), before + 1);
  EXPECT_EQ(wi->seg_ments[before + 1]->label, "new");
}

TEST_F(Network, HidesAndShowsAgain) {
  load("tdec\nt ::= enum ;\n;\ncdec\nM ::= t ;\n;\n");
  WinInfo *wi = network("ab bc cd bM", "abcdM");
  EXPECT_EQ(hide_pattern(wi, "[bc]"), 0);
  EXPECT_EQ(hide_pattern(wi, "b"), 1);
  EXPECT_EQ(hide_kinds(wi, kHideConstructors), 1);
  EXPECT_EQ(hidden_names(wi), (std::vector<std::string>{"b", "M"}));
  const NetworkView view = look_at_network(wi);
  ASSERT_EQ(view.skipped.size(), 1U); // a to c over b
  EXPECT_EQ(view.skipped[0].first->label + view.skipped[0].second->label, "ac");
  EXPECT_EQ(network_as_csv(wi), "caller,callee\nc,d\na,c\n");
  EXPECT_EQ(show_all(wi), 2);
  EXPECT_TRUE(look_at_network(wi).skipped.empty());
  EXPECT_EQ(hide_beyond(wi, 1), 0); // nothing is selected
  select(wi, "a");
  EXPECT_EQ(hide_beyond(wi, 1), 3);
  // The file keeps what is hidden.
  wi->saved = 1;
  EXPECT_EQ(SaveAll("n.seg"), 1);
  EXPECT_NE(get("n.seg").find("c 3 2 128 "), std::string::npos);
}

TEST_F(Network, CirclesOfVisibleNodesAreFound) {
  WinInfo *wi = network("ab bc ca cd de ed", "abcde");
  EXPECT_EQ(look_at_network(wi).circles.size(), 2U);
  hide_pattern(wi, "b"); // the way over it still closes the circle
  const NetworkView view = look_at_network(wi);
  ASSERT_EQ(view.circles.size(), 2U);
  EXPECT_EQ(view.circles[0].size(), 2U);
}

TEST(Patterns, FitNames) {
  EXPECT_TRUE(fits_pattern("make_list", "make*"));
  EXPECT_TRUE(fits_pattern("make_list", "*_l?st"));
  EXPECT_TRUE(fits_pattern("", "*"));
  EXPECT_TRUE(fits_pattern("abcabd", "*ab?"));
  EXPECT_FALSE(fits_pattern("abc", "ab"));
  EXPECT_FALSE(fits_pattern("ab", "ab?"));
  EXPECT_FALSE(fits_pattern("", "?"));
}

TEST_F(Network, IsTidiedOnceAndPinsStay) {
  WinInfo *wi = network("ab ac bd cd de xa", "abcdex");
  for (int i = 1; i <= 6; ++i)
    wi->seg_ments[i]->lx = wi->seg_ments[i]->ly = 0, wi->seg_ments[i]->ux = 30,
    wi->seg_ments[i]->uy = 24;
  EXPECT_TRUE(boxes_overlap(wi));
  set_pinned(wi->seg_ments[3], true);
  EXPECT_EQ(tidy_network(wi), 5);
  EXPECT_EQ(wi->seg_ments[3]->box(), (Rect{0, 0, 30, 24}));
  EXPECT_FALSE(boxes_overlap(wi));
  set_pinned(wi->seg_ments[3], false);
  tidy_network(wi);
  EXPECT_EQ(tidy_network(wi), 0);
}

TEST_F(Network, IsStoredAsItWasDrawnAndKeepsLooks) {
  put("build.ddb", get(VELORA_SOURCE_DIR "/tests/golden/network/build.ddb"));
  Setup_Global_DDB_name("build");
  EXPECT_EQ(StoreNetwork(), 1);
  EXPECT_EQ(SaveAll("n.seg"), 1);
  EXPECT_EQ(get("n.seg"), get(VELORA_SOURCE_DIR "/tests/golden/network/build.net") + "$$$$");
  set_hidden(gWinInfo->seg_ments[2], true);
  EXPECT_EQ(StoreNetwork(), 1);
  EXPECT_TRUE(is_hidden(gWinInfo->seg_ments[2]));
}

TEST_F(Network, MakesPicturesOfFunctionsWithoutOne) {
  WinInfo *wi = network("ab ac bc", "abc");
  kit::picture("b");
  EXPECT_EQ(NetworkToFunctions(wi), 1);
  EXPECT_EQ(said(), "New picture stored for function a\n1 functions have pictures already\n");
  WinInfo *made = nullptr;
  ASSERT_EQ(PictureExists("a", 0, &made), 1);
  EXPECT_EQ(made->seg_ct, 3);
  EXPECT_EQ(made->seg_ments[2]->label + made->seg_ments[3]->label, "bc");
  EXPECT_EQ(MakeFunctionPicture("none", {}, {0, 0, 100, 100}), 0);
}

TEST_F(Network, IsWrittenForOtherPrograms) {
  WinInfo *wi = network("ab", "ab");
  wi->seg_ments[1]->label = "say \"<&>\", \\";
  EXPECT_EQ(network_as_dot(wi), "digraph network {\n  node [shape=box];\n"
                                "  n1 [label=\"say \\\"<&>\\\", \\\\\"];\n  n2 [label=\"b\"];\n"
                                "  n1 -> n2;\n}\n");
  EXPECT_NE(network_as_graphml(wi).find(">say &quot;&lt;&amp;&gt;&quot;, \\<"), std::string::npos);
  wi->seg_ments[2]->label = "\x1b\xff\xef\xbf\xbf";
  EXPECT_EQ(network_as_graphml(wi).find_first_of("\x1b\xff"), std::string::npos)
      << "no document may hold these";
  wi->seg_ments[2]->label = "b";
  EXPECT_EQ(network_as_csv(wi), "caller,callee\n\"say \"\"<&>\"\", \\\",b\n");
}

TEST(CallGraphs, AnswerQuestions) {
  PairList pairs;
  for (const char *pair : {"ab", "bc", "ad", "dc", "ce", "fe", "gh", "hg", "cc"})
    pairs.push_back({std::string(1, pair[0]), 0, "~", std::string(1, pair[1]), 0, 0});
  const CallGraph graph(pairs);
  const auto text = [&graph](const std::vector<int> &numbers) {
    std::string names;
    for (const int number : numbers)
      names += graph.name(number);
    return names;
  };
  const auto way = [&](const char *from, const char *to) {
    return text(graph.shortest_way(graph.number(from), graph.number(to)));
  };
  EXPECT_EQ(text(graph.roots()), "af");
  EXPECT_EQ(way("a", "e"), "abce");
  EXPECT_EQ(way("a", "a"), "a");
  EXPECT_EQ(way("e", "a"), "");
  EXPECT_EQ(text(graph.on_all_ways(graph.number("a"), graph.number("e"))), "abcde");
  EXPECT_EQ(graph.number("zz"), -1);
  ASSERT_EQ(graph.circles().size(), 1U);
  EXPECT_EQ(text(graph.circles()[0]), "gh");
  const std::vector<bool> near = graph.walk({graph.number("a")}, true, 1);
  EXPECT_EQ(std::count(near.begin(), near.end(), true), 3);
}

} // namespace
