// Opening, placing, storing and closing of the desktop's windows.
#include "shell/vel_wins.h"

#include <algorithm>
#include <fstream>

#include "core/symbols.h"
#include "db/needs.h"
#include "db/vel_dbop.h"
#include "platform/safe_file.h"
#include "shell/graphics_windows.h"
#include "shell/text_windows.h"
#include "unit/shell/desk_kit.h"

namespace velora {

namespace {

class Windows : public kit::DeskTest {
protected:
  WindowId open_orvek(const std::string &text) {
    choose(509);
    desktop().windows[gOrvWind].text = text;
    return gOrvWind;
  }
  // The windows in the order in which they were last placed.
  std::vector<WindowId> placed_order() {
    std::vector<WindowId> order;
    for (const std::string &line : desktop().log)
      if (line.rfind("place ", 0) == 0)
        order.push_back(std::stoi(line.substr(6)));
    return order;
  }
  std::string title(WindowId win) { return desktop().windows[win].title; }
};

TEST_F(Windows, FirstPlacements) {
  EXPECT_EQ(desktop().windows[hControl].place, (Rect{30, 384, 542, 576}));
  EXPECT_EQ(title(hControl), "CONTROL");
  choose(509);
  EXPECT_EQ(desktop().windows[gOrvWind].place, (Rect{10, 50, 360, 450}));
  choose(504);
  choose(504);
  const std::vector<WindowId> pictures = windows_of_kind(kFunctionWindow);
  ASSERT_EQ(pictures.size(), 2U);
  const Rect first = desktop().windows[pictures[0]].place;
  const Rect second = desktop().windows[pictures[1]].place;
  EXPECT_EQ(first.width(), 450);
  EXPECT_EQ(first.height(), 360);
  EXPECT_NE(first, second);
  EXPECT_EQ(gNumDocuments, 5) << "the frame counts";
}

// Going back and forward over windows that had the focus; a window that closes is passed by, and
// one that is chosen in another way drops what lay ahead.
TEST_F(Windows, BackAndForwardFollowTheFocus) {
  const WindowId one = open_orvek("");
  const WindowId two = open_orvek("");
  const WindowId three = open_orvek("");
  for (const WindowId win : {one, two, one, two, three})
    window_activated(win);
  const auto go = [this](int step) {
    const bool gone = go_over_windows(step) != 0;
    window_activated(desktop().focus); // as a window system does
    return gone ? previous : 0;
  };
  EXPECT_EQ(go(1), 0);
  EXPECT_EQ(go(-1), two);
  EXPECT_EQ(go(-1), one);
  EXPECT_EQ(go(1), two);
  EXPECT_EQ(go(-1), one);
  close_asked(two);
  EXPECT_EQ(window_in_history(-1), 0) << "one, two, one is one window now";
  EXPECT_EQ(go(1), three);
  EXPECT_EQ(go(-1), one);
  window_activated(hControl);
  EXPECT_EQ(window_in_history(1), 0);
  EXPECT_EQ(go(-1), one);
}

TEST_F(Windows, TheFocusGoesRoundInBothDirections) {
  const WindowId one = open_orvek("");
  const WindowId two = open_orvek("");
  const auto step = [this](WindowId from, int by) {
    window_activated(from);
    next_window_asked(by);
    return desktop().focus;
  };
  EXPECT_EQ(step(one, 1), two);
  EXPECT_EQ(step(two, 1), hControl);
  EXPECT_EQ(step(hControl, -1), two);
  previous = 0;
  next_window_asked(1);
  EXPECT_EQ(desktop().focus, hControl) << "from no window to the first one";
}

TEST_F(Windows, TextAndGraphicsWindowsAreNumbered) {
  const WindowId one = open_orvek("");
  const WindowId two = open_orvek("");
  EXPECT_EQ(title(one), "Orvek [1 of 2]");
  EXPECT_EQ(title(two), "Orvek [2 of 2]");
  close_asked(one);
  EXPECT_EQ(title(two), "Orvek [1 of 1]");
  EXPECT_EQ(gOrvWind, two);
  choose(506);
  choose(506);
  const std::vector<WindowId> graphics = windows_of_kind(kGraphicsWindow);
  ASSERT_EQ(graphics.size(), 2U);
  EXPECT_EQ(title(graphics[1]), "Graphics [2 of 2]");
  close_asked(graphics[0]);
  EXPECT_EQ(title(graphics[1]), "Graphics [1 of 1]");
  EXPECT_EQ(windows_of_kind(kGraphicsWindow).size(), 1U);
}

TEST_F(Windows, MenuBarFollowsTheActiveWindow) {
  choose(504);
  window_activated(windows_of_kind(kFunctionWindow).front());
  EXPECT_EQ(desktop().bar, MenuBar::functions);
  choose(506);
  window_activated(windows_of_kind(kGraphicsWindow).front());
  EXPECT_EQ(desktop().bar, MenuBar::functions) << "graphics windows leave the bar";
  window_activated(open_orvek(""));
  EXPECT_EQ(desktop().bar, MenuBar::orvek);
  window_activated(hControl);
  EXPECT_EQ(desktop().bar, MenuBar::main);
}

TEST_F(Windows, StackLeavesTheStartOfEveryTitleInSight) {
  constexpr int kTitleHeight = 20;
  constexpr int kTitleStart = 20;
  for (const int more : {3, 36}) {
    for (int i = 0; i < more; ++i)
      open_orvek("");
    window_activated(hControl);
    desktop().log.clear();
    choose(512);
    EXPECT_EQ(previous, hControl);
    EXPECT_EQ(desktop().focus, hControl);
    const Rect area = desktop().work_area();
    std::vector<Rect> below; // in the order of placing, so later ones lie above
    for (const WindowId win : placed_order()) {
      const Rect &place = desktop().windows[win].place;
      EXPECT_TRUE(area.contains({place.left, place.top}));
      EXPECT_LE(place.right, area.right);
      EXPECT_LE(place.bottom, area.bottom);
      for (const Rect &lower : below)
        EXPECT_TRUE(place.top >= lower.top + kTitleHeight ||
                    place.left >= lower.left + kTitleStart);
      below.push_back(place);
    }
    EXPECT_EQ(below.size(), gWindows.size());
  }
}

TEST_F(Windows, CommittedTextIsInTheDatabaseAndItsFileGone) {
  gAppDirectory = ::testing::TempDir();
  window_activated(
      open_orvek("fdec\n twice ::= int -> int ;\n;\nfdef\n twice ?0 ::= + ?0 ?0 ;\n;\n"));
  choose(501);
  EXPECT_NE(shown().find("Orvek Code Stored\n"), std::string::npos);
  EXPECT_FALSE(std::ifstream(gAppDirectory + "tmp.ddb").good());
  EXPECT_EQ(desktop().labels[9010], "twice") << "the Find menus know it";
  type("twice #4\n");
  EXPECT_NE(shown().find("#8\nQUERY> "), std::string::npos);
  close_asked(gOrvWind);
  EXPECT_TRUE(windows_of_kind(kOrvekWindow).empty()) << "stored text closes unasked";
  gAppDirectory.clear();
}

TEST_F(Windows, CommitLeavesADatabaseOfTheScratchNameAlone) {
  gAppDirectory = ::testing::TempDir();
  const std::string name = gAppDirectory + "tmp.ddb";
  std::ofstream(name) << "the user's";
  window_activated(open_orvek("fdec\n twice ::= int -> int ;\n;\n"));
  choose(501);
  EXPECT_NE(shown().find("Orvek Code Stored\n"), std::string::npos);
  std::string text;
  EXPECT_TRUE(read_whole_file(name, text));
  EXPECT_EQ(text, "the user's");
  std::remove(name.c_str());
  gAppDirectory.clear();
}

TEST_F(Windows, FocusGoesBackToTheWindowThatHadIt) {
  const WindowId first = open_orvek("");
  const WindowId second = open_orvek("");
  const WindowId third = open_orvek("");
  for (const WindowId win : {third, second, first, third})
    window_activated(win);
  desktop().log.clear();
  close_asked(third);
  EXPECT_EQ(desktop().focus, first);
  // The focus goes first, so that no window system has to choose who gets it.
  const auto place = [this](const std::string &call, WindowId win) {
    const auto found =
        std::find(desktop().log.begin(), desktop().log.end(), call + " " + std::to_string(win));
    EXPECT_NE(found, desktop().log.end()) << call;
    return found - desktop().log.begin();
  };
  EXPECT_LT(place("focus", first), place("close", third));
  window_activated(first);
  close_asked(first);
  EXPECT_EQ(desktop().focus, second);
}

TEST_F(Windows, SystemMayEndTheProgramWhenNothingIsLost) {
  gSymbolTableChanged = 0;
  EXPECT_TRUE(session_may_end());
  const WindowId win = open_orvek("not stored");
  EXPECT_FALSE(session_may_end());
  DoCloseWindow(win);
  EXPECT_TRUE(session_may_end());
  gSymbolTableChanged = 1;
  EXPECT_FALSE(session_may_end());
  gSymbolTableChanged = 0;
  desktop().on_pump = [] { EXPECT_FALSE(session_may_end()) << "a query runs"; };
  type("last (list_of_int #1 #300000 #1)\n");
  desktop().on_pump = nullptr;
}

TEST_F(Windows, FaultyTextStaysUnstored) {
  gAppDirectory = ::testing::TempDir();
  const WindowId win =
      open_orvek("fdec\n thrice ::= int -> int ;\n;\nfdef\n thrice ?0 ::= nosuch ;\n;\n");
  window_activated(win);
  choose(501);
  EXPECT_EQ(shown().find("Orvek Code Stored\n"), std::string::npos);
  EXPECT_NE(find_symbol("thrice", 6), nullptr) << "what is right is stored";
  FreeOrvekWindows(); // as after saving
  EXPECT_EQ(window_kind(win), kOrvekWindow) << "the user's text is not lost";
  gAppDirectory.clear();
}

TEST_F(Windows, CommitWithoutTextOrPictureSaysSo) {
  window_activated(hControl);
  choose(501);
  EXPECT_NE(shown().find("There is nothing to commit\n"), std::string::npos);
}

TEST_F(Windows, ClosingTextThatIsNotStoredAsks) {
  const WindowId win = open_orvek("fdec\n once ::= int -> int ;\n;\n");
  close_asked(win); // cancelled
  EXPECT_TRUE(logged("ask \"Save Changes to: Orvek Code?\" [Save] [Discard] -> 5"));
  EXPECT_EQ(window_kind(win), kOrvekWindow);
  desktop().choices = {1};
  close_asked(win);
  EXPECT_EQ(window_kind(win), 0);
  EXPECT_NE(find_symbol("once", 4), nullptr);
  const WindowId other = open_orvek("anything");
  desktop().choices = {2};
  close_asked(other);
  EXPECT_EQ(window_kind(other), 0);
}

TEST_F(Windows, SaveClosesOnlyStoredTexts) {
  open_orvek("");
  const WindowId kept = open_orvek("not stored");
  FreeOrvekWindows();
  EXPECT_EQ(windows_of_kind(kOrvekWindow), std::vector<WindowId>{kept});
}

TEST_F(Windows, FindSelectsBehindTheSelectionAndGoesRound) {
  const WindowId win = open_orvek("one Two two");
  window_activated(win);
  desktop().answers = {"two"};
  choose(208);
  EXPECT_EQ(desktop().windows[win].selection, (TextRange{4, 7}));
  choose(209);
  EXPECT_EQ(desktop().windows[win].selection, (TextRange{8, 11}));
  choose(209);
  EXPECT_EQ(desktop().windows[win].selection, (TextRange{4, 7}));
  EXPECT_EQ(find_in_text("abc", "x", 0), TextRange{});
  EXPECT_EQ(find_in_text("abc", "", 0), TextRange{});
}

TEST_F(Windows, QuittingOffersToSaveAndStopsWhenRefused) {
  open_orvek("not stored");
  choose(113);
  EXPECT_FALSE(desktop().has_quit);
  gSymbolTableChanged = 1;
  desktop().choices = {2};
  choose(113);
  EXPECT_TRUE(logged("ask \"Save Changes to Database:"));
  EXPECT_FALSE(desktop().has_quit);
}

TEST_F(Windows, QuittingAsksEvenWhenOnlyTheConsoleIsOpen) {
  gSymbolTableChanged = 1;
  choose(113);
  EXPECT_TRUE(logged("ask \"Save Changes to Database:"));
  EXPECT_FALSE(desktop().has_quit);
}

TEST_F(Windows, ClosingWhileAQueryRunsAsksWhen) {
  const auto close_meanwhile = [this](WindowId win) {
    bool asked = false;
    desktop().on_pump = [&] {
      if (!asked)
        close_asked(win);
      asked = true;
      EXPECT_NE(window_kind(win), 0);
      choose(509); // no command can start meanwhile
    };
    type("last (list_of_int #1 #300000 #1)\n");
    desktop().on_pump = nullptr;
    EXPECT_TRUE(asked);
    EXPECT_EQ(windows_of_kind(kOrvekWindow).size(), window_kind(win) == kOrvekWindow ? 1U : 0U);
    return news();
  };
  const WindowId win = open_orvek("");
  EXPECT_TRUE(close_meanwhile(win).ends_with("#300000\nQUERY> ")) << "cancelled";
  EXPECT_TRUE(logged("Close the window:\" [Stop It and Close] [When It Has Ended] -> 5"));
  EXPECT_EQ(window_kind(win), kOrvekWindow);
  desktop().choices = {2};
  EXPECT_TRUE(close_meanwhile(win).ends_with("#300000\nQUERY> "));
  EXPECT_EQ(window_kind(win), 0);
  const WindowId other = open_orvek("");
  desktop().choices = {1};
  EXPECT_TRUE(close_meanwhile(other).ends_with("Query interrupted\n\nQUERY> "));
  EXPECT_EQ(window_kind(other), 0);
  EXPECT_NE(close_meanwhile(hControl).find("not allowed to close CONTROL window\n"),
            std::string::npos);
}

TEST_F(Windows, GraphicsWindowIsDrawnAndScrollsOverWhatIsDrawn) {
  type("gr_open\n");
  type("gr_fillrect #0 #0 #900 #20\n");
  const std::vector<WindowId> graphics = windows_of_kind(kGraphicsWindow);
  if (graphics.empty())
    enter_window(gBgrWind->win, kGraphicsWindow); // the desktop tells of it in the program
  ASSERT_NE(gBgrWind, nullptr);
  EXPECT_GE(desktop().windows[gBgrWind->win].extent.right, 900);
}

} // namespace

} // namespace velora
