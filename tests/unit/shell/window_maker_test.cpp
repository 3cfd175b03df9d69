// Where windows stand at first, which of them has the keyboard, and the sections typed in CONTROL.
#include "platform/window_maker.h"

#include "shell/console_section.h"
#include "unit/shell/desk_kit.h"

namespace velora {

namespace {

class LowScreen : public kit::RecorderDesktop {
public:
  Rect screen() override { return {0, 0, 853, 600}; }
};

class FirstWindows : public kit::DeskTest {};

TEST_F(FirstWindows, OnALowScreenNoneHidesControl) {
  LowScreen low;
  Desktop *usual = gDesktop;
  gDesktop = &low;
  for (int kind = kFunctionWindow; kind <= kAnnotationWindow; ++kind)
    if (kind != kControlWindow) {
      EXPECT_LE(first_place(static_cast<WindowKind>(kind), 0).bottom, 300) << kind;
    }
  EXPECT_GE(first_place(kFunctionWindow, 4).height(), 160);
  gDesktop = usual;
  EXPECT_EQ((Rect{10, 50, 360, 450}), first_place(kOrvekWindow, 0));
  EXPECT_EQ((Rect{180, 180, 630, 540}), first_place(kFunctionWindow, 7));
}

TEST_F(FirstWindows, AMinimisedWindowGivesTheKeyboardAway) {
  const WindowId first = NewTextWindow(kNarrativeWindow);
  window_activated(first);
  const WindowId second = NewTextWindow(kOrvekWindow);
  window_activated(second);
  window_put_away(second);
  EXPECT_EQ(first, desktop().focus);
  window_activated(first);
  window_put_away(hControl); // which had it before the others
  EXPECT_EQ(first, previous);
  window_put_away(first);
  EXPECT_EQ(first, desktop().focus) << "the others lie minimised themselves and stay so";
}

TEST(TypedSection, CutsStatementsWhereTheyEnd) {
  TypedSection section;
  section.enter(SectionKind::fdef);
  std::optional<std::string> behind;
  using Texts = std::vector<std::string>;
  EXPECT_EQ((Texts{"f ?0 ::= ?0 "}), section.take("f ?0 ::= ?0 ; g ?0 ::= \"a;b", behind));
  EXPECT_TRUE(section.statement_open());
  EXPECT_EQ((Texts{" g ?0 ::= \"a;b\nc;\" "}), section.take("c;\" ;", behind));
  EXPECT_FALSE(section.statement_open());
  EXPECT_EQ((Texts{"h ::= ';'"}), section.take("h ::= ';';", behind));
  EXPECT_FALSE(behind);
  EXPECT_EQ(Texts{}, section.take("; + #1 #2", behind));
  EXPECT_EQ(" + #1 #2", behind.value_or("none"));
  EXPECT_EQ(SectionKind::none, section.kind());
}

} // namespace

} // namespace velora
