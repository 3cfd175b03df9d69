// Which items are enabled, what commands do first, and the commands of picture windows.
#include "shell/x_menus.h"

#include "core/symbols.h"
#include "editor/hand/hand.h"
#include "editor/model/seg_file.h"
#include "editor/model/vel_segs.h"
#include "editor/user_menus.h"
#include "shell/picture_windows.h"
#include "unit/shell/desk_kit.h"

namespace velora {

namespace {

class Menus : public kit::DeskTest {
protected:
  // A stored function picture of one box that gives the result.
  static void store(const std::string &name, int cmpnt) {
    WinInfo *wi = nullptr;
    NewWinInfo(0, kFunctionPicture, &wi);
    wi->name = name;
    wi->cmpnt = cmpnt;
    setup_for_fdef(wi);
    wi->seg_ments[1]->label = "int";
    wi->seg_ments[add_node(wi, kToolFunction, 100, 100 + 10 * cmpnt)]->label = "rand";
    put_arc_between(wi, 2, 1, kArc);
  }
  WinInfo *open_function() {
    choose(504);
    window_activated(windows_of_kind(kFunctionWindow).back());
    return picture_of(previous);
  }
  bool enabled(int number, const MenuSnapshot &snapshot) {
    return command_enabled(*find_menu_command(number), snapshot);
  }
};

TEST_F(Menus, ItemsNeedWhatTheyActOn) {
  MenuSnapshot none;
  EXPECT_TRUE(enabled(102, none));
  EXPECT_FALSE(enabled(302, none));
  EXPECT_FALSE(enabled(201, none));
  EXPECT_FALSE(enabled(109, none));
  MenuSnapshot text;
  text.text_window = true;
  text.edit.selected = true;
  EXPECT_TRUE(enabled(203, text));
  EXPECT_TRUE(enabled(311, text));
  EXPECT_FALSE(enabled(201, text));
  EXPECT_FALSE(enabled(205, text));
  EXPECT_FALSE(enabled(209, text));
  MenuSnapshot picture;
  picture.picture = true;
  EXPECT_TRUE(enabled(302, picture));
  EXPECT_TRUE(enabled(1406, picture));
  EXPECT_TRUE(enabled(301, picture));
  EXPECT_FALSE(enabled(304, picture)) << "nothing is chosen";
  EXPECT_FALSE(enabled(201, picture)) << "there is no step";
}

TEST_F(Menus, OnlyChangesAreToldToTheDesktop) {
  desktop().log.clear();
  AdjustMenus();
  EXPECT_TRUE(desktop().log.empty());
  desktop().edit_now.selected = true;
  window_activated(hControl);
  EXPECT_TRUE(item_on(203));
  EXPECT_TRUE(logged("item 204 on"));
  EXPECT_FALSE(logged("item 205"));
}

TEST_F(Menus, EveryCommandClearsTheModes) {
  greqMode = 16;
  greqNext = 2;
  choose(511);
  EXPECT_EQ(greqMode, 0);
  EXPECT_EQ(greqNext, 0);
  greqMode = 16;
  choose(302); // there is no picture
  EXPECT_EQ(greqMode, 0);
}

TEST_F(Menus, EditCommandsGoToTheActiveTextWindow) {
  desktop().edit_now = {true, true, true};
  choose(509);
  window_activated(gOrvWind);
  for (const int number : {201, 203, 204, 205, 206})
    choose(number);
  const std::string win = std::to_string(gOrvWind);
  for (const char *name : {"undo", "cut", "copy", "paste", "clear"})
    EXPECT_TRUE(logged("edit " + win + " " + name));
}

TEST_F(Menus, ComponentsAreShownInTurn) {
  store("f", 0);
  store("f", 1);
  WinInfo *wi = open_function();
  desktop().answers = {"f"};
  choose(902);
  EXPECT_EQ(wi->cmpnt, 0);
  EXPECT_EQ(desktop().windows[wi->win].title, "f [1 of 2]");
  EXPECT_GT(desktop().windows[wi->win].extent.right, 100);
  choose(903);
  EXPECT_EQ(wi->cmpnt, 1);
  EXPECT_EQ(desktop().windows[wi->win].title, "f [2 of 2]");
  choose(1406);
  EXPECT_EQ(wi->cmpnt, 0) << "the walk wraps";
  desktop().answers = {"1"};
  choose(904);
  EXPECT_EQ(wi->cmpnt, 1);
  desktop().answers = {"no number"};
  choose(904);
  EXPECT_EQ(wi->cmpnt, 0);
}

TEST_F(Menus, UserMenuLoadsThePictureOfItsItem) {
  store("g", 0);
  WinInfo *wi = open_function();
  CreateUserMenus();
  ASSERT_EQ(desktop().labels[9010], "g");
  choose(9010);
  EXPECT_EQ(wi->name, "g");
  EXPECT_EQ(wi->saved, 0);
  choose(9011);
  EXPECT_EQ(wi->name, "g") << "no such item";
}

TEST_F(Menus, UnknownNameIsToldAndThePictureStays) {
  store("g", 0);
  WinInfo *wi = open_function();
  desktop().answers = {"g", "nosuch"};
  choose(902);
  choose(902);
  EXPECT_EQ(wi->name, "g");
  EXPECT_NE(shown().find("There is no picture of nosuch\n"), std::string::npos);
}

TEST_F(Menus, NetworkWindowAsksNoName) {
  choose(505);
  window_activated(windows_of_kind(kNetworkWindow).front());
  desktop().answers = {"f"};
  choose(1405);
  EXPECT_EQ(desktop().answers.size(), 1U);
}

TEST_F(Menus, FiltersWaitForANetwork) {
  choose(505);
  const WindowId win = windows_of_kind(kNetworkWindow).front();
  window_activated(win);
  EXPECT_FALSE(logged("menu 3 \"Filters\" on"));
  add_node(picture_of(win), kToolFunction, 100, 100);
  menu_opened();
  EXPECT_TRUE(logged("menu 3 \"Filters\" on"));
  window_activated(hControl);
  EXPECT_TRUE(logged("menu 3 \"Filters\" off"));
}

TEST_F(Menus, TextSizesStepWithinBounds) {
  for (const auto &[from, to] :
       {std::pair{8, 10}, {10, 12}, {12, 16}, {16, 22}, {22, 22}, {14, 18}})
    EXPECT_EQ(bigger_text_size(from), to);
  for (const auto &[from, to] : {std::pair{22, 16}, {16, 12}, {12, 10}, {10, 8}, {8, 8}, {14, 10}})
    EXPECT_EQ(smaller_text_size(from), to);
}

TEST_F(Menus, ClosingAChangedPictureAsks) {
  kit::feed("fdec f ::= int ; ;");
  store("f", 0);
  WinInfo *wi = open_function();
  desktop().answers = {"f"};
  choose(902);
  const WindowId win = wi->win;
  choose(302);
  EXPECT_EQ(wi->txtsze, 16);
  close_asked(win);
  EXPECT_TRUE(logged("ask \"Save Changes to: f?\" [Save] [Discard] -> 5"));
  ASSERT_EQ(picture_of(win), wi);
  desktop().choices = {1, 1}; // Save, Replace Component
  close_asked(win);
  EXPECT_EQ(picture_of(win), nullptr);
  EXPECT_EQ(window_kind(win), 0);
  WinInfo *stored = nullptr;
  ASSERT_EQ(PictureExists("f", 0, &stored), 1);
  EXPECT_EQ(stored->txtsze, 16);
  EXPECT_NE(shown().find("replacing component 0 of f\n"), std::string::npos);
  EXPECT_EQ(gSegsChanged, 1);
}

TEST_F(Menus, FreshPictureClosesUnasked) {
  const WindowId win = open_function()->win;
  close_asked(win);
  EXPECT_FALSE(logged("ask \"Save Changes"));
  EXPECT_EQ(window_kind(win), 0);
}

TEST_F(Menus, QuittingAsksForAChangedPictureOnly) {
  kit::feed("fdec f ::= int ; ;");
  store("f", 0);
  WinInfo *wi = open_function();
  desktop().answers = {"f"};
  choose(902);
  gSymbolTableChanged = 0;
  choose(302);
  close_asked(0); // cancelled
  EXPECT_TRUE(logged("ask \"Save Changes to: f?\" [Save] [Discard] -> 5"));
  EXPECT_FALSE(desktop().has_quit);
  gSymbolTableChanged = 1;
  desktop().choices = {2}; // and the question about the database is cancelled
  close_asked(0);
  EXPECT_FALSE(desktop().has_quit);
  EXPECT_EQ(wi->clean, 0) << "what was given up still counts when the user stays";
  gSymbolTableChanged = 0;
  desktop().log.clear();
  desktop().choices = {1, 1};
  choose(103);
  WinInfo *stored = nullptr;
  EXPECT_FALSE(logged("ask \"Save Changes to: f?\" [Save] [Discard] -> 2"));
  EXPECT_EQ(picture_of(wi->win), wi) << "the database's question was cancelled";
  ASSERT_EQ(PictureExists("f", 0, &stored), 1);
  EXPECT_EQ(stored->txtsze, 16);
}

TEST_F(Menus, RefreshedPictureCountsAsChanged) {
  store("f", 0);
  WinInfo *wi = open_function();
  desktop().answers = {"f"};
  choose(902);
  EXPECT_EQ(wi->saved, 0);
  EXPECT_EQ(wi->clean, 1);
  choose(309);
  EXPECT_EQ(wi->clean, 0);
}

TEST_F(Menus, ChangedPictureIsNotOverwrittenUnasked) {
  store("f", 0);
  store("g", 0);
  WinInfo *wi = open_function();
  desktop().answers = {"f", "g", "g"};
  choose(902);
  choose(303);
  choose(902);
  EXPECT_EQ(wi->name, "f");
  EXPECT_TRUE(logged("ask \"Unsaved changes in window\" [Commit first] [Overwrite contents] -> 5"));
  desktop().choices = {2};
  choose(902);
  EXPECT_EQ(wi->name, "g");
}

} // namespace

} // namespace velora
