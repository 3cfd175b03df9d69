// Each command that changes stored pictures and code together is one step: Undo and Redo give both
// files of the database back byte for byte. And a command that fails or is cancelled leaves them
// so.
#include <filesystem>
#include <functional>

#include "core/symbols.h"
#include "db/commit.h"
#include "db/f_dbops.h"
#include "editor/compound.h"
#include "editor/edit.h"
#include "editor/model/seg_file.h"
#include "editor/vel_cmp.h"
#include "kit/pictures.h"
#include "platform/safe_file.h"
#include "shell/command_numbers.h"
#include "shell/picture_windows.h"
#include "unit/shell/desk_kit.h"

namespace velora {
namespace {

constexpr const char *kCode =
    "tdec tint ::= enum ; ;"
    "cdec Dark ::= tint ; Pale ::= tint ; ;"
    "fdec quad ::= int -> int ; step ::= int -> int ;"
    " down ::= int -> int ; pick ::= int -> int ; oct ::= int -> int ;"
    " warm ::= tint -> int ; ;"
    "fdef quad ?0 ::= #7 ; step #0 ::= #0 ; step ?0 ::= down ?0 ;"
    " down ?0 ::= step (- ?0 #1) ;"
    " pick #1 ::= #10 ; pick #2 ::= #20 ; pick #3 ::= #30 ;"
    " oct ?0 ::= quad (quad ?0) ; warm Dark ::= #1 ; warm Pale ::= #0 ; ;";

class CompoundSteps : public kit::DeskTest {
protected:
  void SetUp() override {
    kit::DeskTest::SetUp();
    kit::feed(kCode);
    // The pictures of one name do not stand beside each other in the file.
    store("pick", 0, "#1", "#10");
    store("quad", 0, "int", "#7");
    store("pick", 1, "#2", "#20");
    store("down", 0, "int", "#0");
    store("pick", 2, "#3", "#30");
  }
  void TearDown() override {
    forget_orphans();
    kit::DeskTest::TearDown();
  }
  static void draw(WinInfo *wi, const std::string &input, const std::string &body) {
    kit::place_node(wi, kHexagon, kBold, "int", {200, 300, 230, 320});
    kit::place_node(wi, kHexagon, kBold, input, {10, 2, 40, 22});
    const int value = kit::place_node(wi, kHexagon, kPlain, body, {100, 100, 130, 120});
    if (!body.empty())
      kit::join(wi, value, 1);
  }
  static void store(const std::string &name, int number, const std::string &input,
                    const std::string &body) {
    WinInfo *wi = kit::picture(name, number);
    draw(wi, input, body);
    wi->saved = 1;
  }
  // A window with a stored picture.
  WinInfo *shown(const std::string &name, int number) {
    WinInfo *wi = SetupNewWindow(kFunctionPicture);
    previous = wi->win;
    EXPECT_EQ(GetNextComponent(wi, name, number - 1), 1);
    return wi;
  }
  // A window with a picture that was just drawn.
  WinInfo *fresh(const std::string &name, const std::string &input, const std::string &body) {
    WinInfo *wi = SetupNewWindow(kFunctionPicture);
    previous = wi->win;
    edit_picture(wi, "Draw", [&] {
      wi->name = name;
      draw(wi, input, body);
    });
    return wi;
  }
  static void label(WinInfo *wi, int slot, const std::string &text) {
    edit_picture(wi, "Label", [&] { wi->seg_ments[slot]->label = text; });
  }
  static std::string files() { return database_text() + "\n====\n" + pictures_text(); }
  void answer(std::initializer_list<int> choices) { desktop().choices = choices; }

  // Runs a command of a window, which must change the files, and goes back and forth twice.
  void whole(WinInfo *wi, int command) {
    const std::string before = files();
    choose(command);
    const std::string after = files();
    EXPECT_NE(before, after) << desktop().log_text();
    for (int round = 0; round < 2; ++round) {
      ASSERT_EQ(undo_step(wi), 1) << console().messages;
      EXPECT_EQ(files(), before);
      ASSERT_EQ(redo_step(wi), 1) << console().messages;
      EXPECT_EQ(files(), after);
    }
    ASSERT_EQ(undo_step(wi), 1);
  }
  void nothing(const std::function<void()> &command) {
    const std::string before = files();
    command();
    EXPECT_EQ(files(), before);
    desktop().choices.clear();
  }
};

TEST_F(CompoundSteps, CommitAndReplace) {
  answer({1}); // Save New Component
  whole(fresh("pick", "#4", "#40"), kCmdCommit);
  WinInfo *wi = shown("pick", 1);
  EXPECT_EQ(wi->clean, 1);
  label(wi, 3, "#21");
  label(wi, 2, "#5");
  answer({2, 1}); // Replace Component, and the clause of before goes
  whole(wi, kCmdCommit);
  // Back at what is stored there is nothing to save.
  EXPECT_EQ(undo_step(wi), 1);
  EXPECT_EQ(wi->clean, 0);
  EXPECT_EQ(undo_step(wi), 1);
  EXPECT_EQ(wi->clean, 1);
}

TEST_F(CompoundSteps, RemoveAndDeny) {
  for (const int part : {1, 2, 3}) { // both, picture, code
    WinInfo *wi = shown("pick", 1);
    answer({part, 1});
    whole(wi, kCmdRemoveFunction);
    EXPECT_EQ(wi->clean, 1);
    EXPECT_EQ(wi->cmpnt, 1);
  }
}

TEST_F(CompoundSteps, DestroyWithThoseWhoCall) {
  WinInfo *wi = shown("quad", 0);
  answer({4, 1, 2}); // oct calls it and loses its clause
  whole(wi, kCmdRemoveFunction);
  wi = shown("down", 0);
  answer({4, 1, 2}); // it and step call each other
  whole(wi, kCmdRemoveFunction);
  // What was written since with the function that would go is not lost.
  wi = fresh("more", "int", "#1");
  answer({1});
  choose(kCmdCommit);
  kit::feed("fdef oct #8 ::= more #8 ; ;");
  const std::string now = files();
  EXPECT_EQ(undo_step(wi), 0);
  EXPECT_EQ(files(), now);
}

TEST_F(CompoundSteps, Redefine) {
  WinInfo *wi = shown("quad", 0);
  kit::feed("deny [quad ?0] ;");
  label(wi, 3, "\"seven\"");
  label(wi, 1, "nothing");
  nothing([&] {
    answer({1, 2}); // its result is no type
    choose(kCmdCommit);
  });
  label(wi, 1, "str");
  nothing([&] {
    answer({1, 1}); // others call it: No
    choose(kCmdCommit);
  });
  nothing([&] { choose(kCmdCommit); });
  answer({1, 2});
  whole(wi, kCmdCommit);
}

TEST_F(CompoundSteps, ACancelHalfWayLeavesAllAsItWas) {
  WinInfo *wi = shown("pick", 1);
  label(wi, 2, "#5");
  nothing([&] {
    answer({2}); // Replace Component, but what of the clause of before?
    choose(kCmdCommit);
  });
  EXPECT_EQ(wi->clean, 0);
  label(wi, 1, "str");
  nothing([&] {
    answer({1}); // Redefine Function, but what of the other pictures?
    choose(kCmdCommit);
  });
  EXPECT_EQ(undo_step(wi), 1);
  EXPECT_EQ(undo_step(wi), 1);
  for (const int part : {1, 2, 3, 4})
    nothing([&] {
      answer({part});
      choose(kCmdRemoveFunction);
    });
  EXPECT_EQ(picture_title(wi), "pick [2 of 3]");
}

TEST_F(CompoundSteps, DeclarationsAndTypes) {
  // pick is declared anew with another type, which costs its clauses.
  WinInfo *wi = fresh("", "str", "");
  for (const int yes : {2, 1}) {
    desktop().answers = {"pick"};
    answer({1, yes});
    if (yes == 1)
      whole(wi, kCmdCommit);
    else
      nothing([&] { choose(kCmdCommit); });
  }
  wi = SetupNewWindow(kConstructorsPicture);
  previous = wi->win;
  edit_picture(wi, "Draw", [&] {
    kit::place_node(wi, kHexagon, kDouble, "tint", {200, 300, 230, 320});
    kit::join(wi, kit::place_node(wi, kBox, kDouble, "Mid", {10, 100, 60, 120}), 1);
    kit::join(wi, kit::place_node(wi, kBox, kDouble, "Pale", {110, 100, 160, 120}), 1);
  });
  answer({1}); // Save DataType
  whole(wi, kCmdCommit);
}

TEST_F(CompoundSteps, ACommitThatFailsLeavesNothingBehind) {
  // The function is declared before its body turns out to be wrong.
  fresh("brandnew", "int", "(#1");
  nothing([&] {
    answer({1});
    choose(kCmdCommit);
  });
  EXPECT_EQ(find_symbol("brandnew", 0), nullptr);
}

TEST_F(CompoundSteps, OtherWindowsFollowTheNumbers) {
  WinInfo *first = shown("pick", 0);
  WinInfo *last = shown("pick", 2);
  WinInfo *wi = shown("pick", 1);
  const auto titles = [&] {
    return desktop().windows[first->win].title + ", " + desktop().windows[last->win].title;
  };
  EXPECT_EQ(titles(), "pick [1 of 3], pick [3 of 3]");
  answer({1, 1});
  choose(kCmdRemoveFunction);
  EXPECT_EQ(titles(), "pick [1 of 2], pick [2 of 2]");
  label(last, 3, "#31");
  previous = last->win;
  answer({1});
  choose(kCmdCommit);
  ASSERT_EQ(stored_components("pick").size(), 2U);
  EXPECT_EQ(stored_components("pick")[1]->seg_ments[3]->label, "#31");
  EXPECT_EQ(undo_step(last), 1);
  EXPECT_EQ(undo_step(last), 1);
  EXPECT_EQ(undo_step(wi), 1);
  EXPECT_EQ(titles(), "pick [1 of 3], pick [3 of 3]");
  previous = wi->win;
  answer({4, 1});
  choose(kCmdRemoveFunction);
  EXPECT_EQ(titles(), "pick, pick");
}

// Commands that read or write files.
class CompoundFiles : public CompoundSteps {
protected:
  void SetUp() override {
    CompoundSteps::SetUp();
    folder_ = std::filesystem::temp_directory_path() / "velora_compound_steps";
    std::filesystem::remove_all(folder_);
    std::filesystem::create_directories(folder_);
  }
  void TearDown() override {
    gDDB_basename.clear();
    std::error_code failed;
    std::filesystem::remove_all(folder_, failed);
    CompoundSteps::TearDown();
  }
  std::string path(const std::string &file) const { return (folder_ / file).string(); }
  static std::string contents(const std::string &file) {
    std::string text;
    return read_whole_file(file, text) ? text : "none";
  }

private:
  std::filesystem::path folder_;
};

TEST_F(CompoundFiles, NetworkAndFunctions) {
  std::string reason;
  gDDB_basename = path("mine");
  ASSERT_TRUE(write_with_backup(path("mine.ddb"), database_text(), reason)) << reason;
  WinInfo *wi = SetupNewWindow(kNetworkPicture);
  previous = wi->win;
  AdjustMenus();
  whole(wi, kCmdCreateNetwork);
  ASSERT_EQ(redo_step(wi), 1);
  AdjustMenus();
  whole(wi, kCmdCreateFunctions); // oct and step have no pictures
  EXPECT_NE(news().find("New picture stored for function oct\n"), std::string::npos);
}

TEST_F(CompoundFiles, Build) {
  const std::string code = "fdec\nf ::= int -> int ;\n;\nfdef\nf ?0 ::= + ?0 #1 ;\n;\n";
  const std::string old = "fdec\nf ::= int ;\n;\nfdef\nf ::= #1 ;\n;\n";
  std::string reason;
  choose(kCmdNewOrvek);
  desktop().windows[gOrvWind].text = code;
  for (const bool over : {false, true}) {
    if (over) {
      ASSERT_TRUE(write_with_backup(path("extra.ddb"), old, reason));
    }
    desktop().files = {path("extra.ddb")};
    answer({1}); // Build over it
    choose(kCmdBuildSegments);
    EXPECT_EQ(contents(path("extra.ddb")), code);
    EXPECT_EQ(contents(path("extra.seg")).substr(0, 2), "f ");
    previous = hControl;
    choose(kCmdUndo);
    EXPECT_EQ(contents(path("extra.ddb")), over ? old : "none");
    EXPECT_EQ(contents(path("extra.seg")), "none");
    answer({});
  }
  desktop().files = {path("extra.ddb")};
  answer({1});
  choose(kCmdBuildSegments);
  ASSERT_TRUE(write_with_backup(path("extra.ddb"), old, reason)); // by somebody else
  previous = hControl;
  choose(kCmdUndo);
  EXPECT_EQ(contents(path("extra.ddb")), old);
}

} // namespace
} // namespace velora
