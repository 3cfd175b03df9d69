// Places in messages: which window and line they name.
#include "shell/message_place.h"

#include <gtest/gtest.h>

#include "unit/shell/desk_kit.h"

namespace velora {

using MessagePlaces = kit::DeskTest;

TEST_F(MessagePlaces, NamesTheWindowByItsNumber) {
  EXPECT_EQ(place_in_message("note: Orvek [1 of 1], line 6").win, 0) << "none is open";
  const WindowId first = NewTextWindow(kOrvekWindow);
  const WindowId second = NewTextWindow(kOrvekWindow);
  EXPECT_EQ(place_in_message("note: Orvek [1 of 2], line 6").win, first);
  EXPECT_EQ(place_in_message("note: Orvek [2 of 2], line 6").win, second);
  EXPECT_EQ(place_in_message("note: Orvek [2 of 2], line 6").line, 6);
  for (const char *other : {"note: Orvek [3 of 2], line 6", "note: Orvek [0 of 2], line 6",
                            "note: f.ddb:3:4", "Orvek [", "Orvek [1 of 2]", ""})
    EXPECT_EQ(place_in_message(other).win, 0) << other;
}

TEST_F(MessagePlaces, ALineIsItsTextWithoutBlanks) {
  const std::string text = "one\n  two \n\nfour";
  EXPECT_EQ(range_of_line(text, 1), (TextRange{0, 3}));
  EXPECT_EQ(range_of_line(text, 2), (TextRange{6, 9}));
  EXPECT_EQ(range_of_line(text, 3), (TextRange{11, 11}));
  EXPECT_EQ(range_of_line(text, 4), (TextRange{12, 16}));
  EXPECT_EQ(range_of_line(text, 99), (TextRange{16, 16}));
}

TEST_F(MessagePlaces, AClickShowsTheLine) {
  const WindowId win = NewTextWindow(kOrvekWindow);
  gDesktop->set_text(win, "first\nsecond\n");
  EXPECT_FALSE(message_leads({"Error: something"}));
  const std::vector<std::string> lines{"Error: something", "note: Orvek [1 of 1], line 2"};
  EXPECT_TRUE(message_leads(lines));
  gDesktop->focus_window(hControl);
  message_clicked(lines);
  EXPECT_EQ(desktop().focus, win);
  EXPECT_EQ(gDesktop->selection(win), (TextRange{6, 12}));
}

} // namespace velora
