// Call links: what counts as a mention, link sets and their filters, and the layered layout.
#include <gtest/gtest.h>

#include <map>

#include "db/needs.h"
#include "editor/model/wininfo.h"
#include "network/links.h"
#include "network/net_lay.h"

using namespace velora;

namespace {

// The scan table as "caller: callee callee" lines.
std::string scanned(const std::string &text) {
  scan_text_to_ARRAY(text);
  std::string lines;
  for (const ArrayEntry &entry : ARRAY) {
    lines += entry.name + ":";
    for (const std::string &mention : entry.mentions)
      lines += " " + mention;
    lines += "\n";
  }
  ARRAY.clear();
  return lines;
}

std::string shown(const PairList &pairs) {
  std::string text;
  for (const Pair &pair : pairs)
    text += pair.first + ">" + pair.second + " ";
  return text;
}

// Makes set 1 of pairs written "ab ac bd".
void make_set(const std::string &pairs) {
  links.clear();
  links.push_back(std::make_unique<Links>());
  links[0]->id = 1;
  for (std::size_t i = 0; i + 1 < pairs.size(); i += 3)
    links[0]->ipr.push_back({pairs.substr(i, 1), 0, "~", pairs.substr(i + 1, 1), 0, 0});
}

std::string filtered(int op, const std::string &name) {
  const int id = bi_link_filters(op, 1, name);
  return id == 0 ? "none" : shown(find_links(id)->ipr);
}

constexpr int kFrom = 155;
constexpr int kTo = 156;

struct ScanRow {
  const char *name;
  const char *text;
  const char *table;
};

class Scan : public testing::TestWithParam<ScanRow> {};

TEST_P(Scan, FindsTheMentions) {
  EXPECT_EQ(scanned(GetParam().text), GetParam().table);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, Scan,
    testing::Values(
        ScanRow{"written", "tdec\n;\nfdef\n\n  f ?0  ::=\n      g #1 (h (k ?0))  ;\n;\n",
                "f: g h k\n"},
        ScanRow{"once_each", "fdef f #1 ::= g g ; f #2 ::= h g ; g ::= f ; ;", "f: g h\ng: f\n"},
        ScanRow{"literals_and_truth",
                "fdef f ::= g #3 'x' \"k l\" ?0 #r2.5 True False nil None Cons ; ;", "f: g Cons\n"},
        ScanRow{"head_is_not_scanned", "fdef f (Cons ?0) ::= ?0 ; ;", "f:\n"},
        ScanRow{"error", "fdef f ::= error \"no ; way\" g ; f #1 ::= (error h) ; ;", "f:\n"},
        ScanRow{"semicolons", "fdef f ::= g \"a;b\" ';' '\"' h ; k ::= f ; ;", "f: g h\nk: f\n"},
        ScanRow{"definition_sign_in_a_text", "fdef f \"::=\" ::= g ; ;", "f: g\n"},
        ScanRow{"comments", "fdef f ::= g /* h ; \" */ k ; ;", "f: g k\n"},
        ScanRow{"two_sections", "fdef f ::= g ; ; fdec x ::= int ; ; fdef g ::= h ; ;",
                "f: g\ng: h\n"},
        ScanRow{"a_name_with_fdef_in_it", "fdec myfdefs ::= int ; ; fdef f ::= g ; ;", "f: g\n"},
        ScanRow{"cut_off", "fdef f ::= g ; h ::= k", "f: g\nh: k\n"},
        ScanRow{"open_text", "fdef f ::= g \"never closed ; h", "f: g\n"},
        ScanRow{"nothing", "", ""}),
    [](const auto &row) { return std::string(row.param.name); });

TEST(Pairs, AFunctionThatCallsItselfIsMarkedAndMakesNoPair) {
  scan_text_to_ARRAY("fdef f ::= f g ; g ::= f g ; alone ::= alone ; ;");
  ARRAY_to_ipairs();
  remove_self_recursions(kCallsItself);
  EXPECT_EQ(shown(ipairs), "f>g g>f ");
  EXPECT_EQ(ipairs[0].f_status, kCallsItself);
  EXPECT_EQ(ipairs[0].s_status, kCallsItself);
  EXPECT_EQ(ipairs[1].f_status + ipairs[1].s_status, 0);
  ipairs.push_back(ipairs[0]);
  remove_duplicates();
  EXPECT_EQ(shown(ipairs), "f>g g>f ");
  ipairs.clear();
}

TEST(LinkSets, AreNarrowedDepthFirstWithTheLastPairFirst) {
  make_set("ab ac bd cd de xa");
  EXPECT_EQ(filtered(kFrom, "a"), "c>d a>c d>e b>d a>b ");
  EXPECT_EQ(filtered(kTo, "d"), "a>c c>d x>a a>b b>d ");
  EXPECT_EQ(filtered(kFrom, "e"), "");
  EXPECT_EQ(filtered(kFrom, "unknown"), "");
  EXPECT_EQ(links.back()->id, 5);
  EXPECT_EQ(bi_link_filters(kFrom, 9, "a"), 0);
  make_set("ab ba");
  EXPECT_EQ(filtered(kFrom, "a"), "b>a a>b ");
  free_linkages();
  EXPECT_EQ(find_links(1), nullptr);
}

TEST(LinkSets, ALongChainNeedsNoStack) {
  make_set("");
  for (int i = 0; i < 200000; ++i)
    links[0]->ipr.push_back({std::to_string(i), 0, "~", std::to_string(i + 1), 0, 0});
  const int id = bi_link_filters(kFrom, 1, "0");
  EXPECT_EQ(find_links(id)->ipr.size(), 200000u);
  free_linkages();
}

// --- layout ------------------------------------------------------------------------------------

struct LaidOut {
  explicit LaidOut(const std::string &pairs) {
    make_set(pairs);
    ipairs = links[0]->ipr;
    FixNetNodeLevels();
    count = do_layout(segs);
    free_linkages();
  }
  Segm *node(const std::string &label) const {
    for (int i = 1; i <= count; ++i)
      if (segs[i]->type == kBox && segs[i]->label == label)
        return segs[i];
    return nullptr;
  }
  SegmArray segs;
  int count = 0;
};

TEST(Layout, NumbersSegmentsInOrderOfFirstUseNodesBeforeTheirArc) {
  const LaidOut net("ab ac bc");
  ASSERT_EQ(net.count, 6);
  EXPECT_EQ(net.node("a")->segnum, 1);
  EXPECT_EQ(net.node("b")->segnum, 2);
  EXPECT_EQ(net.node("c")->segnum, 4);
  const Segm *arc = net.segs[3];
  EXPECT_EQ(arc->type, kArc);
  EXPECT_EQ(arc->style, 1);
  EXPECT_EQ(arc->label, "I/O");
  EXPECT_EQ(arc_start(arc), net.node("a"));
  EXPECT_EQ(arc_end(arc), net.node("b"));
  EXPECT_EQ(net.node("a")->segf_ptr.size(), 2u);
  EXPECT_EQ(net.node("c")->segb_ptr.size(), 2u);
}

TEST(Layout, PutsCallersInLaterLevelsThanWhatTheyCall) {
  const LaidOut net("ab ac bc");
  // Three levels of one node: 320 - level * 320 / 4, the box 12 above and below.
  EXPECT_EQ(net.node("c")->ly, 240 - 12);
  EXPECT_EQ(net.node("b")->ly, 160 - 12);
  EXPECT_EQ(net.node("a")->ly, 80 - 12);
  // One node of one character: the gap is (400 - 12) / 2.
  EXPECT_EQ(net.node("a")->lx, 194 - 12);
  EXPECT_EQ(net.node("a")->ux, 194);
  EXPECT_EQ(net.node("a")->uy, 80 + 12);
}

TEST(Layout, BreaksACycleWhereItWasEntered) {
  const LaidOut net("ab ba");
  EXPECT_GT(net.node("b")->ly, net.node("a")->ly);
  EXPECT_EQ(net.count, 4);
}

TEST(Layout, DealsAWideLevelOverRows) {
  links.clear();
  for (int i = 0; i < 5; ++i)
    ipairs.push_back({"caller", 0, "~", "longname0" + std::to_string(i), 0, 0});
  FixNetNodeLevels();
  SegmArray segs;
  const int count = do_layout(segs);
  std::map<int, int> rows; // nodes by height
  for (int i = 1; i <= count; ++i)
    if (segs[i]->type == kBox && segs[i]->label != "caller")
      ++rows[segs[i]->ly];
  // ((6 * 8) + 50) * 12 / 400 + 1 = 3 rows, dealt 0 1 2 0 1
  ASSERT_EQ(rows.size(), 3u);
  EXPECT_EQ(rows.begin()->second, 2);
  EXPECT_EQ(rows.rbegin()->second, 1);
}

TEST(Layout, AShownSetIsANetworkPictureThatIsNotStored) {
  make_set("ab");
  EXPECT_EQ(bi_link_show(1), 1);
  ASSERT_NE(gWinInfo, nullptr);
  EXPECT_EQ(gWinInfo->name, kNetworkName);
  EXPECT_EQ(gWinInfo->seg_ct, 3);
  EXPECT_EQ(gWinInfo->saved, 0);
  EXPECT_EQ(bi_link_show(1), 1); // the same record again
  EXPECT_EQ(gWinInfo->next, nullptr);
  EXPECT_EQ(bi_link_show(2), 0);
  make_set("");
  EXPECT_EQ(bi_link_show(1), 0);
  FreeAllPictures();
  free_linkages();
}

} // namespace
