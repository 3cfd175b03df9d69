// Steps of a text: whatever is done to it, all of it can be taken back and done again; words are
// one step.
#include "shell/text_steps.h"

#include <gtest/gtest.h>

#include <random>

namespace velora {

namespace {

struct Typed {
  std::wstring text;
  TextSteps steps;

  void set(std::wstring now) {
    text = std::move(now);
    steps.changed(text);
  }
  void type(std::wstring_view more) {
    for (const wchar_t c : more)
      set(text + c);
  }
  bool back() { return take(steps.undo()); }
  bool again() { return take(steps.redo()); }

private:
  bool take(const std::optional<TextStep> &step) {
    if (step)
      text.replace(step->at, step->removed.size(), step->added);
    return step.has_value();
  }
};

TEST(TextSteps, AWordIsOneStepAndSoAreLettersDeletedInARow) {
  Typed t;
  t.type(L"one two");
  for (const wchar_t *left : {L"one ", L"one", L""}) {
    ASSERT_TRUE(t.back());
    EXPECT_EQ(t.text, left);
  }
  EXPECT_FALSE(t.back());
  EXPECT_FALSE(t.steps.can_undo());
  while (t.again()) {
  }
  EXPECT_EQ(t.text, L"one two");
  t.set(L"one tw");
  t.set(L"one t");
  t.set(L"on t"); // elsewhere
  ASSERT_TRUE(t.back());
  EXPECT_EQ(t.text, L"one t");
  ASSERT_TRUE(t.back());
  EXPECT_EQ(t.text, L"one two");
  t.set(L"ne two");
  t.set(L"e two"); // both in front of what stands: Delete
  ASSERT_TRUE(t.back());
  EXPECT_EQ(t.text, L"one two");
  t.type(L"\r\n"); // a new way: what was taken back is gone
  EXPECT_FALSE(t.again());
}

TEST(TextSteps, WhatTheProgramSetIsNotTakenBack) {
  Typed t;
  t.type(L"word");
  t.steps.reset(L"other");
  t.text = L"other";
  EXPECT_FALSE(t.back());
  t.set(L"others");
  EXPECT_EQ(t.steps.changed(t.text), std::nullopt);
  ASSERT_TRUE(t.back());
  EXPECT_EQ(t.text, L"other");
}

TEST(TextSteps, AnyChangesAreTakenBackWholeAndDoneAgain) {
  std::mt19937 random(3);
  for (int round = 0; round < 50; ++round) {
    Typed t;
    for (int i = 0; i < 60; ++i) {
      std::wstring now = t.text;
      const std::size_t at = random() % (now.size() + 1);
      const std::size_t gone = random() % 3 == 0 ? random() % (now.size() - at + 1) : 0;
      now.replace(at, gone, std::wstring(random() % 4, L"ab \n"[random() % 4]));
      t.set(now);
    }
    const std::wstring last = t.text;
    while (t.back()) {
    }
    EXPECT_EQ(t.text, L"");
    while (t.again()) {
    }
    EXPECT_EQ(t.text, last);
  }
}

} // namespace

} // namespace velora
