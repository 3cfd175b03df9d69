// Saving and removing pictures in windows: the codes with their buttons, what each button does, and
// that each is one step.
#include "shell/save_actions.h"

#include <functional>

#include "core/symbols.h"
#include "db/needs.h"
#include "editor/edit.h"
#include "editor/symbol_state.h"
#include "editor/vel_cmp.h"
#include "kit/pictures.h"
#include "shell/annotation.h"
#include "shell/picture_windows.h"
#include "unit/shell/desk_kit.h"

namespace velora {
namespace {

class SaveActions : public kit::DeskTest {
protected:
  void SetUp() override {
    kit::DeskTest::SetUp();
    kit::feed("fdec f ::= int -> int ; ;");
  }
  // A window with a picture of `name` that gives `body` for `input`.
  WinInfo *open(const std::string &name, const std::string &input, const std::string &body,
                const std::string &result = "int") {
    WinInfo *wi = SetupNewWindow(kFunctionPicture);
    edit_picture(wi, "Draw", [&] {
      wi->name = name;
      kit::place_node(wi, kHexagon, kBold, result, {200, 300, 230, 320});
      if (!input.empty())
        kit::place_node(wi, kHexagon, kBold, input, {10, 2, 40, 22});
      const int value = kit::place_node(wi, kHexagon, kPlain, body, {100, 100, 130, 120});
      if (!body.empty())
        kit::join(wi, value, 1);
    });
    wi->saved = 0;
    wi->clean = 0;
    return wi;
  }
  WinInfo *stored_window(const std::string &input, const std::string &body) {
    WinInfo *wi = open("f", input, body);
    EXPECT_EQ(SaveNewComponent(wi), 1) << console().messages;
    return wi;
  }
  static void change(WinInfo *wi, int slot, const std::string &label) {
    edit_picture(wi, "Label", [&] { wi->seg_ments[slot]->label = label; });
    wi->saved = 0;
    wi->clean = 0;
  }
  static std::string labels(int code) {
    std::string all;
    for (const SaveButton &button : save_buttons(code))
      all += std::string(button.label) + "|";
    return all;
  }
  // Everything that files would hold.
  static std::string everything() {
    const SymbolState code = take_symbol_state("f");
    std::string text = code.declaration + "\n";
    for (const std::string &clause : code.clauses)
      text += clause + "\n";
    return text + kit::all_pictures_text();
  }
};

TEST_F(SaveActions, OffersTheButtonsOfEachCode) {
  const char *expected[] = {
      "",
      "Save Declaration Only|",
      "Save New Component of Function...|",
      "Save New Component|",
      "Save DataType|",
      "Replace Component|Save DataType|",
      "Save New Component|Save New Component of Function...|",
      "Save New Component|Replace Component|",
      "Replace Component|Save New Component of Function...|",
      "Redefine Function|Save New Component of Function...|",
      "Save New Component|Replace Component|Save New Component of Function...|Redefine Function|"};
  for (int code = 0; code <= 10; ++code)
    EXPECT_EQ(labels(code), expected[code]) << code;
}

TEST_F(SaveActions, GuessesTheCode) {
  const auto code = [](const WinInfo *wi) { return GuessSaveAction(wi, !wi->name.empty()); };
  EXPECT_EQ(code(SetupNewWindow(kFunctionPicture)), 0);
  EXPECT_EQ(code(open("", "int", "")), 1);
  EXPECT_EQ(code(open("", "int", "#1")), 2);
  WinInfo *type = SetupNewWindow(kConstructorsPicture);
  kit::place_node(type, kHexagon, kDouble, "hue", {10, 100, 40, 120});
  EXPECT_EQ(code(type), 4);
  type->name = "hue";
  EXPECT_EQ(code(type), 5);
  WinInfo *net = SetupNewWindow(kNetworkPicture);
  kit::place_node(net, kBox, kPlain, "f", {10, 100, 40, 120});
  EXPECT_EQ(code(net), 3);
  net->name = kNetworkName;
  EXPECT_EQ(code(net), 3);
  net->cmpnt = 0;
  EXPECT_EQ(code(net), 7);
  WinInfo *wi = open("f", "int", "#1");
  EXPECT_EQ(code(wi), 6);
  wi->cmpnt = 0;
  EXPECT_EQ(code(wi), 8); // every input has its type
  wi->seg_ments[2]->label = "#3";
  EXPECT_EQ(code(wi), 10);
  kit::feed("fdef f #3 ::= #4 ; ;");
  EXPECT_EQ(code(wi), 8); // that clause stands
  wi->seg_ments[1]->label = "str";
  wi->seg_ments[2]->label = "int";
  EXPECT_EQ(code(wi), 9);
  wi->seg_ments[1]->label = "int";
  kit::place_node(wi, kHexagon, kBold, "int", {50, 2, 80, 22});
  EXPECT_EQ(code(wi), 9);
  wi->name = "undeclared";
  EXPECT_EQ(code(wi), 8);
}

TEST_F(SaveActions, SavesANewComponentAndClosesTheWindow) {
  WinInfo *wi = open("f", "int", "#1");
  const WindowId win = wi->win;
  EXPECT_TRUE(picture_title(wi).ends_with(" *"));
  desktop().choices = {1, 1}; // Save, Save New Component
  close_asked(win);
  EXPECT_EQ(picture_of(win), nullptr);
  ASSERT_EQ(stored_components("f").size(), 1u);
  EXPECT_EQ(clause_count("f"), 1);
}

TEST_F(SaveActions, StaysOpenAfterASaveUnderANameAndAfterACancel) {
  WinInfo *wi = open("", "int", "#1");
  const WindowId win = wi->win;
  desktop().choices = {1}; // Save, then nothing chosen
  close_asked(win);
  ASSERT_NE(picture_of(win), nullptr);
  EXPECT_EQ(clause_count("f"), 0);
  desktop().choices = {1, 1}; // no name given
  close_asked(win);
  EXPECT_TRUE(stored_components("f").empty());
  EXPECT_EQ(wi->name, "");
  desktop().choices = {1, 1};
  desktop().answers = {"f"};
  close_asked(win);
  ASSERT_EQ(picture_of(win), wi);
  EXPECT_EQ(stored_components("f").size(), 1u);
  EXPECT_EQ(picture_title(wi), "f [1 of 1]");
  close_asked(win); // it is clean: no question
  EXPECT_EQ(picture_of(win), nullptr);
}

TEST_F(SaveActions, SavesADeclarationOnly) {
  WinInfo *wi = open("", "str", "");
  desktop().choices = {1};
  desktop().answers = {"g"};
  EXPECT_EQ(SaveWindowAction(wi), 0);
  EXPECT_TRUE(save_action_stored());
  EXPECT_EQ(wi->name, "g");
  EXPECT_EQ(wi->cmpnt, -1);
  TypeNames types;
  EXPECT_EQ(get_intypes_of("g", types, 1), 1);
  EXPECT_EQ(types, TypeNames{"str"});
  // A name that cannot be is no name.
  wi = open("", "str", "");
  desktop().choices = {1};
  desktop().answers = {"two words"};
  EXPECT_EQ(SaveWindowAction(wi), 0);
  EXPECT_FALSE(save_action_stored());
  EXPECT_EQ(wi->name, "");
}

TEST_F(SaveActions, CommitsWithoutClosing) {
  WinInfo *wi = open("f", "int", "#1");
  previous = wi->win;
  ASSERT_EQ(open_annotation(), 1);
  EXPECT_EQ(desktop().windows[gAnnWind].title, "Annotation: f *");
  previous = wi->win;
  desktop().choices = {1};
  EXPECT_EQ(commitWindow(wi->win), 1);
  EXPECT_EQ(desktop().windows[gAnnWind].title, "Annotation: f [1 of 1]");
  EXPECT_EQ(picture_of(wi->win), wi);
  EXPECT_EQ(wi->clean, 1);
  EXPECT_EQ(commitWindow(hControl), 0);
  EXPECT_NE(news().find("There is nothing to commit\n"), std::string::npos);
}

TEST_F(SaveActions, TakesEachStepBackWhole) {
  WinInfo *wi = open("f", "#1", "#10");
  const auto undone = [&](const char *what, const std::function<void()> &command) {
    const std::string before = everything();
    command();
    EXPECT_NE(everything(), before) << what;
    const std::string after = everything();
    EXPECT_EQ(undo_step(wi), 1) << what;
    EXPECT_EQ(everything(), before) << what;
    EXPECT_EQ(redo_step(wi), 1) << what;
    EXPECT_EQ(everything(), after) << what;
  };
  undone("commit", [&] {
    desktop().choices = {1};
    SaveWindowAction(wi);
  });
  change(wi, 3, "#11");
  undone("replace", [&] {
    desktop().choices = {1};
    SaveWindowAction(wi);
  });
  change(wi, 2, "#2");
  undone("another component", [&] {
    desktop().choices = {1};
    SaveWindowAction(wi);
  });
  undone("deny", [&] {
    desktop().choices = {kRemoveCode, 1};
    RemoveThis(wi);
  });
  change(wi, 2, "int");
  change(wi, 1, "str");
  undone("redefine", [&] {
    desktop().choices = {1, 2};
    SaveWindowAction(wi);
  });
  EXPECT_EQ(undo_step(wi), 1);
  EXPECT_EQ(undo_step(wi), 1); // the labels
  EXPECT_EQ(undo_step(wi), 1);
  change(wi, 2, "#1");
  wi->cmpnt = 0;
  undone("remove", [&] {
    desktop().choices = {kRemoveBoth, 1};
    RemoveThis(wi);
  });
}

// Clauses that come back with the other pictures are not missed before they could.
TEST_F(SaveActions, RedefinesWithTheOtherPictures) {
  WinInfo *wi = stored_window("#1", "#10");
  WinInfo *other = open("f", "#2", "\"b\"", "str");
  WinInfo *stored = kit::picture("f", 1);
  CopyWinInfo(other, stored);
  stored->cmpnt = 1;
  change(wi, 2, "int");
  change(wi, 3, "\"a\"");
  change(wi, 1, "str");
  news();
  desktop().choices = {1, 1}; // Redefine Function; the others again: Yes
  EXPECT_EQ(SaveWindowAction(wi), 1);
  EXPECT_EQ(clause_count("f"), 2);
  const std::string told = news();
  EXPECT_EQ(told.find("MORE"), std::string::npos) << told;
}

TEST_F(SaveActions, SavesADataTypeUnderItsOwnName) {
  WinInfo *wi = SetupNewWindow(kConstructorsPicture);
  edit_picture(wi, "Draw", [&] {
    kit::place_node(wi, kHexagon, kDouble, "hue9", {200, 300, 230, 320});
    kit::join(wi, kit::place_node(wi, kBox, kDouble, "Dark9", {10, 100, 60, 120}), 1);
  });
  wi->saved = 0;
  wi->clean = 0;
  desktop().choices = {1};
  EXPECT_EQ(SaveWindowAction(wi), 1) << console().messages;
  EXPECT_EQ(wi->name, "hue9");
  ASSERT_EQ(stored_components("hue9").size(), 1u);
  EXPECT_EQ(stored_components("hue9")[0]->wtype, kConstructorsPicture);
  ASSERT_NE(find_symbol("hue9", 0), nullptr);
  EXPECT_EQ(find_symbol("hue9", 0)->stype, kEnumType);
  EXPECT_EQ(undo_step(wi), 1);
  EXPECT_EQ(find_symbol("hue9", 0), nullptr);
  EXPECT_EQ(find_symbol("Dark9", 0), nullptr);
  EXPECT_TRUE(stored_components("hue9").empty());
  EXPECT_EQ(redo_step(wi), 1);
  EXPECT_NE(find_symbol("Dark9", 0), nullptr);
}

TEST_F(SaveActions, AFailedSaveLeavesTheNameAsItWas) {
  WinInfo *type = SetupNewWindow(kConstructorsPicture);
  edit_picture(type, "Draw", [&] {
    kit::place_node(type, kHexagon, kDouble, "hue9", {200, 300, 230, 320});
    kit::place_node(type, kBox, kDouble, "Dark9", {10, 100, 60, 120}); // leads nowhere
  });
  type->saved = 0;
  type->clean = 0;
  desktop().choices = {1};
  EXPECT_EQ(SaveWindowAction(type), 0);
  EXPECT_FALSE(save_action_stored());
  EXPECT_EQ(type->name, "");
  EXPECT_EQ(step_to_undo(type), "Draw");
  // But a name that a declaration could not be made for goes, by whatever command.
  WinInfo *wi = open("old", "int", "");
  desktop().choices = {1};
  desktop().answers = {"two words"};
  EXPECT_EQ(commitWindow(wi->win), 0);
  EXPECT_EQ(wi->name, "");
}

TEST_F(SaveActions, RemovesWhatIsChosen) {
  WinInfo *one = stored_window("#1", "#10");
  WinInfo *two = stored_window("#2", "#20");
  EXPECT_EQ(RemoveThis(one), 0); // cancelled
  desktop().choices = {kRemovePicture};
  EXPECT_EQ(RemoveThis(one), 0); // not confirmed
  EXPECT_EQ(stored_components("f").size(), 2u);
  desktop().choices = {kRemoveCode, 1};
  EXPECT_EQ(RemoveThis(one), 1);
  EXPECT_EQ(clause_count("f"), 1);
  EXPECT_EQ(one->seg_ments[2]->label, "#1"); // it stays shown
  desktop().choices = {1};
  EXPECT_EQ(RemoveThis(one), 1); // without a clause only the picture is left to go
  EXPECT_EQ(stored_components("f").size(), 1u);
  EXPECT_EQ(one->seg_ments[2]->label, "#2"); // the next one is shown
  desktop().choices = {kDestroyFunction, 1};
  two->cmpnt = 0;
  EXPECT_EQ(RemoveThis(two), 1);
  EXPECT_EQ(find_symbol("f", 0), nullptr);
  EXPECT_TRUE(stored_components("f").empty());
  EXPECT_EQ(two->seg_ct, 0);
}

// The names are those of declared functions, with a stored picture or without.
TEST_F(SaveActions, OffersTheNamesThatStand) {
  const auto offered = [this](const std::string &name) {
    std::string newest;
    for (const std::string &line : desktop().log)
      if (line.starts_with("user menu ") && line.find("from 9010:") != std::string::npos)
        newest = line;
    return newest.find("\"" + name + "\"") != std::string::npos;
  };
  WinInfo *wi = open("", "str", "");
  desktop().choices = {1};
  desktop().answers = {"g9"};
  SaveWindowAction(wi);
  EXPECT_TRUE(offered("g9"));
  EXPECT_TRUE(offered("f"));
  kit::feed("fdef f ?0 ::= #1 ; ;");
  desktop().choices = {kDestroyFunction, 1};
  EXPECT_EQ(RemoveThis(open("f", "int", "#1")), 1); // which was never stored
  EXPECT_FALSE(offered("f"));
}

TEST_F(SaveActions, KeepsTheNetworkOfTheDatabase) {
  WinInfo *net = SetupNewWindow(kNetworkPicture);
  net->name = kNetworkName;
  net->cmpnt = 0;
  EXPECT_EQ(RemoveThis(net), 0);
  EXPECT_NE(news().find("Network Component 0 must be retained for future updates\n"),
            std::string::npos);
}

TEST_F(SaveActions, TellsOfUncommittedPicturesBeforeASave) {
  open("f", "int", "#1");
  EXPECT_EQ(offer_to_commit_pictures(), 0); // cancelled
  EXPECT_TRUE(logged("1 pictures are not committed"));
  desktop().choices = {2};
  EXPECT_EQ(offer_to_commit_pictures(), 1);
  EXPECT_TRUE(stored_components("f").empty());
  desktop().choices = {1, 1};
  EXPECT_EQ(offer_to_commit_pictures(), 1);
  EXPECT_EQ(stored_components("f").size(), 1u);
  EXPECT_EQ(offer_to_commit_pictures(), 1); // nothing is left to ask
}

TEST_F(SaveActions, StopsASaveWhereTheUserStopsGoingThroughThePictures) {
  open("f", "#1", "#1");
  open("f", "#2", "#2");
  desktop().choices = {1, 1}; // Go Through Them, Save New Component, then nothing
  EXPECT_EQ(offer_to_commit_pictures(), 0);
  EXPECT_EQ(stored_components("f").size(), 1u);
  EXPECT_EQ(changed_pictures().size(), 1u);
}

TEST_F(SaveActions, ShowsTheDeclarationOfAFunctionWithoutPictures) {
  WinInfo *wi = SetupNewWindow(kFunctionPicture);
  EXPECT_EQ(GetNextComponent(wi, "f", -1), 1);
  EXPECT_EQ(wi->name, "f");
  EXPECT_EQ(wi->seg_ct, 2);
  EXPECT_EQ(wi->seg_ments[2]->label, "int");
  EXPECT_EQ(GetNextComponent(wi, "nobody", -1), 0);
  desktop().log.clear();
  EXPECT_EQ(ShowGraphic("f", 0, nullptr), 1); // it is no stored one
  EXPECT_TRUE(logged("beep"));
}

} // namespace
} // namespace velora
