// The guard: what it lets pass, what it speaks about, what it says of stored components; places
// that boxes keep, and tidying.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "core/symbols.h"
#include "db/f_dbops.h"
#include "editor/builder.h"
#include "editor/clause_form.h"
#include "editor/guard.h"
#include "editor/model/seg_file.h"
#include "editor/model/vel_segs.h"
#include "editor/model/wininfo.h"
#include "editor/tidy.h"
#include "editor/translate.h"
#include "kit/language.h"
#include "kit/pictures.h"
#include "platform/response.h"
#include "platform/safe_file.h"
#include "shell/return_point.h"

using namespace velora;
using namespace velora::kit;

namespace {

class GuardTest : public Language {
protected:
  void SetUp() override {
    Language::SetUp();
    FreeAllPictures();
    folder_ = std::filesystem::temp_directory_path() /
              (std::string("velora_guard_") +
               ::testing::UnitTest::GetInstance()->current_test_info()->name());
    std::filesystem::remove_all(folder_);
    std::filesystem::create_directories(folder_);
  }
  void TearDown() override {
    FreeAllPictures();
    std::error_code failed;
    std::filesystem::remove_all(folder_, failed);
    Language::TearDown();
  }
  std::string base() const { return (folder_ / "text").string(); }

  // Builds clauses of "f ::= int -> int -> int" and answers what the guard said.
  std::string said_of(const std::string &clauses, Tidying tidying = Tidying::never) {
    return said_of_text("fdec\nf ::= int -> int -> int ;\na_long_name ::= int -> int -> int ;\n"
                        "three_of ::= int -> int -> int -> int ;\n;\nfdef\n" +
                            clauses + "\n;\n",
                        tidying);
  }
  std::string said_of_text(const std::string &text, Tidying tidying = Tidying::never) {
    feed(text);
    build(text, tidying);
    return console().messages;
  }
  void build(const std::string &text, Tidying tidying = Tidying::never) {
    std::ofstream(base() + ".ddb", std::ios::binary) << text;
    console().messages.clear();
    run_command([&] { return build_segments(base(), tidying); });
  }
  std::vector<std::unique_ptr<WinInfo>> pictures() const {
    std::string text;
    read_whole_file(base() + ".seg", text);
    return pictures_of_text(text);
  }
  void write_pictures(const std::vector<std::unique_ptr<WinInfo>> &all) const {
    for (const std::unique_ptr<WinInfo> &wi : all) {
      WinInfo *stored = nullptr;
      NewWinInfo(0, wi->wtype, &stored);
      CopyWinInfo(wi.get(), stored);
    }
    SaveAll(base() + ".seg");
    FreeAllPictures();
    forget_segment_files();
  }

private:
  std::filesystem::path folder_;
};

Segm *labelled(WinInfo *wi, const std::string &label) {
  for (int slot = 1; slot <= wi->seg_ct; ++slot)
    if (Segm *seg = wi->seg_ments[slot]; seg != nullptr && seg->label == label)
      return seg;
  return nullptr;
}

void move_to(Segm *seg, int x, int y) {
  seg->ux += x - seg->lx;
  seg->uy += y - seg->ly;
  seg->lx = x;
  seg->ly = y;
}

TEST_F(GuardTest, PicturesThatMeanTheirTextAreSilent) {
  EXPECT_EQ(said_of("f ?0 ?1 ::= + ?0 (* ?1 #2) ;"), "");
  EXPECT_EQ(said_of("f #1 ?1 ::= HOLDN #3 (+ ?1 ?1) ;"), "");
  EXPECT_EQ(said_of("f ?7 ?2 ::= #1 ;"), "") << "names of variables do not count";
}

TEST_F(GuardTest, AVariableThatIsNoPositionIsTold) {
  const std::string said = said_of("f ?1 ?0 ::= - ?0 ?1 ;");
  EXPECT_EQ(said.substr(0, 5), "f 0: ") << said;
  EXPECT_NE(said.find("\n  text     f ?1 ?0 ::= - ?0 ?1\n  picture  f ?0 ?1 ::= "),
            std::string::npos)
      << said;
}

TEST_F(GuardTest, AnUnboundVariableThatAPositionWouldBindIsTold) {
  EXPECT_NE(said_of("f ?2 ?3 ::= + ?2 ?0 ;"), "");
  EXPECT_NE(said_of("f ?0 ?0 ::= ?0 ;"), "") << "two positions of one variable";
}

TEST_F(GuardTest, DeepNestingReachesTheArgumentsAndIsTold) {
  EXPECT_EQ(said_of("f ?0 ?1 ::= + (+ (+ (+ (+ ?0 #1) #1) #1) #1) #1 ;"), "");
  EXPECT_NE(said_of("f ?0 ?1 ::= + (+ (+ (+ (+ (+ (+ ?0 #1) #1) #1) #1) #1) #1) #1 ;"), "");
}

TEST_F(GuardTest, ItemsLeftOutAndLabelsThatChangeAreTold) {
  EXPECT_NE(said_of("f ?0 ?1 ::= sum [ ?0 ?1 ] ;").find("f 0: "), std::string::npos);
  EXPECT_NE(said_of_text("fdec\ng ::= str ;\n;\nfdef\ng ::= \"a~b\" ;\n;\n"), "")
      << "a file would turn the sign into a blank";
}

TEST_F(GuardTest, WhatIsNotLoadedIsTold) {
  build("fdec\nh ::= int -> int ;\n;\nfdef\nh ?0 ::= h (h ?0) ;\n;\n");
  EXPECT_NE(console().messages.find("The text is not loaded: 1 "), std::string::npos);
  EXPECT_NE(console().messages.find("h 0: "), std::string::npos);
}

TEST_F(GuardTest, TypesAreCompared) {
  EXPECT_EQ(said_of_text("tdec\nlamp ::= enum ;\nduo ::= typeop #0 ;\n;\n"
                         "cdec\nOn ::= lamp ;\nMk ::= int -> int -> duo ;\n;\n"),
            "");
  const std::string said = said_of_text("tdec\ntwin ::= typeop #1 ;\n;\n"
                                        "cdec\nTwo ::= ?0 -> ?0 -> twin ?0 ;\n;\n");
  EXPECT_EQ(said.substr(0, 8), "twin 0: ") << "its result is compound, so no picture shows it";
  EXPECT_NE(said_of_text("tdec\nday ::= typeop #0 ;\n;\ncdec\nMonday ::= day ;\n;\n"), "")
      << "constants alone would be guessed an enumerated type";
}

TEST_F(GuardTest, BracketsInTypesCountWhereTheyChangeThem) {
  const auto form = [](const char *text) { return declaration_form(text); };
  EXPECT_EQ(form("C ::= ((list int)) -> T"), form("C ::= list int -> T"));
  EXPECT_NE(form("C ::= (int -> int) -> T"), form("C ::= int -> int -> T"));
  EXPECT_NE(form("C ::= list (list int) -> T"), form("C ::= list list int -> T"));
  EXPECT_NE(form("T ::= typeop #1"), form("T ::= typeop #2"));
}

TEST_F(GuardTest, BoxesThatWereMovedStayWhereTheyAre) {
  const std::string text = "fdec\nf ::= int -> int -> int ;\n;\n"
                           "fdef\nf ?0 ?1 ::= + ?0 (* ?1 #2) ;\nf #1 ?0 ::= ?0 ;\n;\n";
  feed(text);
  build(text);
  auto drawn = pictures();
  ASSERT_EQ(drawn.size(), 2U);
  move_to(labelled(drawn[0].get(), "*"), 300, 200);
  labelled(drawn[0].get(), "*")->annot = "twice\n";
  drawn[0]->annot = "all of it\n";
  write_pictures(drawn);
  // The same clauses in another order, one with other names of variables, and a new one.
  build("fdec\nf ::= int -> int -> int ;\n;\n"
        "fdef\nf #1 ?0 ::= ?0 ;\nf ?3 ?4 ::= + ?3 (* ?4 #2) ;\nf #2 ?0 ::= #5 ;\n;\n");
  drawn = pictures();
  ASSERT_EQ(drawn.size(), 3U);
  const Segm *moved = labelled(drawn[1].get(), "*");
  EXPECT_EQ(moved->lx, 300);
  EXPECT_EQ(moved->ly, 200);
  EXPECT_EQ(moved->annot, "twice\n");
  EXPECT_EQ(drawn[1]->annot, "all of it\n");
  EXPECT_EQ(arc_end(moved->segb_ptr[0]), moved);
  EXPECT_EQ(moved->segb_ptr[0]->ux, moved->box().centre().x) << "the arcs follow";
}

TEST_F(GuardTest, InAChangedClauseBoxesOnEqualPathsStay) {
  const std::string head = "fdec\nf ::= int -> int -> int ;\n;\nfdef\nf ?0 ?1 ::= ";
  feed(head + "+ (- ?0 #1) (* ?1 #2) ;\n;\n");
  build(head + "+ (- ?0 #1) (* ?1 #2) ;\n;\n");
  auto drawn = pictures();
  move_to(labelled(drawn[0].get(), "*"), 300, 190);
  move_to(labelled(drawn[0].get(), "-"), 20, 190);
  write_pictures(drawn);
  build(head + "+ (- ?0 #1) (* ?1 (/ ?0 #3)) ;\n;\n");
  drawn = pictures();
  EXPECT_EQ(labelled(drawn[0].get(), "*")->lx, 300);
  EXPECT_EQ(labelled(drawn[0].get(), "-")->lx, 20);
  build(head + "- (- ?0 #1) (* ?1 #2) ;\n;\n");
  EXPECT_NE(labelled(pictures()[0].get(), "*")->lx, 300) << "what it feeds has changed";
}

// The second input was drawn far to the right, with the first one behind it: beside a new box that
// would turn the inputs around.
TEST_F(GuardTest, KeptPlacesGiveWayBeforeAMeaningChanges) {
  const std::string head = "fdec\nf ::= int -> int -> int ;\n;\nfdef\nf ?0 ?1 ::= ";
  feed(head + "- (* ?0 #1) ?1 ;\n;\n");
  build(head + "- (* ?0 #1) ?1 ;\n;\n");
  auto drawn = pictures();
  move_to(labelled(drawn[0].get(), "*"), 400, 190);
  move_to(labelled(drawn[0].get(), "?1"), 500, 190);
  labelled(drawn[0].get(), "*")->annot = "product\n";
  write_pictures(drawn);
  build(head + "- (* ?0 #1) (/ ?1 #2) ;\n;\n");
  EXPECT_EQ(console().messages, "");
  EXPECT_EQ(labelled(pictures()[0].get(), "*")->annot, "product\n");
}

TEST_F(GuardTest, APictureWithWhatNoTextShowsIsKeptWhole) {
  const std::string text = "fdec\nf ::= int -> int -> int ;\n;\nfdef\nf ?0 ?1 ::= + ?0 ?0 ;\n;\n";
  feed(text);
  // Both inputs come straight from the argument, as one draws it by hand.
  std::vector<std::unique_ptr<WinInfo>> drawn;
  WinInfo *wi = picture("f");
  place_node(wi, kHexagon, kBold, "int", {200, 320, 230, 340});
  place_node(wi, kHexagon, kBold, "int", {100, 5, 130, 25});
  place_node(wi, kHexagon, kBold, "int", {300, 5, 330, 25});
  place_node(wi, kBox, kPlain, "+", {200, 260, 230, 280});
  join(wi, 4, 1);
  join(wi, 2, 4);
  join(wi, 2, 4);
  SaveAll(base() + ".seg");
  FreeAllPictures();
  forget_segment_files();
  build(text);
  EXPECT_EQ(console().messages, "");
  drawn = pictures();
  ASSERT_EQ(drawn.size(), 1U);
  EXPECT_EQ(drawn[0]->seg_ct, 7);
  EXPECT_EQ(drawn[0]->seg_ments[4]->ly, 260);
}

TEST_F(GuardTest, TidyMendsWhatTheRulesCannotDraw) {
  for (const char *clause :
       {"f ?1 ?0 ::= - ?0 ?1 ;", "f (: ?0 ?1) ?2 ::= + ?0 ?2 ;",
        "f ?0 ?1 ::= + (+ (+ (+ (+ (+ (+ (+ ?0 #1) #1) #1) #1) #1) #1) #1) #1 ;",
        "f ?0 ?1 ::= three_of (a_long_name ?0 ?1) (a_long_name ?1 ?0) (a_long_name ?0 ?0) ;"}) {
    const std::string said = said_of(clause, Tidying::always);
    EXPECT_EQ(said.find("f 0: "), std::string::npos) << clause << "\n" << said;
    const auto drawn = pictures();
    ASSERT_EQ(drawn.size(), 1U);
    EXPECT_EQ(layout_fault(drawn[0].get()), "") << clause;
  }
}

TEST_F(GuardTest, ComponentsHaveAState) {
  const std::string text = "tdec\nlamp ::= enum ;\n;\ncdec\nOn ::= lamp ;\n;\n"
                           "fdec\nf ::= int -> int ;\ng ::= int ;\n;\n"
                           "fdef\nf #1 ::= #2 ;\nf ?0 ::= + ?0 #1 ;\ng ::= #1 ;\n;\n";
  feed(text);
  build(text);
  RestoreAll(base() + ".seg");
  OrvekVeloraConsistencyCheck();
  const auto state_of = [](const char *name) {
    const ComponentReport report = ComponentSurvey().report(find_symbol(name, 0));
    std::string shown = name_of(report.state);
    for (const int number : report.differ)
      shown += " " + std::to_string(number);
    return shown;
  };
  EXPECT_EQ(state_of("f"), "same");
  EXPECT_EQ(state_of("lamp"), "same");
  WinInfo *other = nullptr;
  ASSERT_EQ(PictureExists("f", 0, &other), 1);
  other->seg_ments[1]->label = "bool";
  EXPECT_EQ(state_of("f"), "text newer 0") << "its result has another type";
  other->seg_ments[1]->label = " (int)";
  EXPECT_EQ(state_of("f"), "same");
  feed("fdef\nf ?0 ::= + ?0 #2 ;\n;\n");
  EXPECT_EQ(state_of("f"), "text newer 1");
  feed("cdec\nOff ::= lamp ;\n;\n");
  EXPECT_EQ(state_of("lamp"), "text newer 0");
  WinInfo *wi = nullptr;
  ASSERT_EQ(PictureExists("g", 0, &wi), 1);
  labelled(wi, "#1")->label = "#7";
  EXPECT_EQ(state_of("g"), "text newer 0");
  wi->win = 9;
  wi->clean = 0;
  EXPECT_EQ(state_of("g"), "picture newer 0");
  wi->win = 0;
  RemovePicture(wi);
  EXPECT_EQ(state_of("g"), "no picture");
  ASSERT_EQ(PictureExists("f", 0, &wi), 1);
  labelled(wi, "#1")->label = "#9";
  EXPECT_EQ(state_of("f"), "picture newer 0 1") << "no clause has that left side";
}

} // namespace
