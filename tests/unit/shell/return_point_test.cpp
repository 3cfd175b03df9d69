// The return point: every way a command can end, and that the session is whole afterwards.
#include "shell/return_point.h"

#include <new>
#include <stdexcept>

#include "core/events.h"
#include "core/needs.h"
#include "core/space.h"
#include "eval/evaluate.h"
#include "front/cint.h"
#include "kit/faults.h"
#include "kit/language.h"
#include "platform/response.h"

namespace velora {

namespace {

using kit::answer;

class ReturnPoint : public kit::Language {
protected:
  // The session answers queries as if nothing had happened.
  void expect_whole() {
    const char *what = nullptr;
    EXPECT_EQ(check_pool(&what), 1) << what;
    EXPECT_EQ(Evaluates, 0);
    EXPECT_EQ(gNarPrint, 0);
    EXPECT_EQ(Query_root, nullptr);
    EXPECT_EQ(answer("+ #40 #2 ;"), "#42");
  }
};

TEST_F(ReturnPoint, TellsHowACommandEnded) {
  EXPECT_EQ(run_command([] { return 1; }), CommandEnd::done);
  EXPECT_EQ(run_command([] { return 0; }), CommandEnd::failed);
  EXPECT_EQ(run_command([]() -> int { error_exit("Alas\n"); }), CommandEnd::failed);
  EXPECT_EQ(run_command([]() -> int { error_exit("Query interrupted\n"); }),
            CommandEnd::interrupted);
  EXPECT_EQ(console().text, "Alas\nQuery interrupted\n");
  expect_whole();
}

// Only want of memory is called so; a fault of the program's own says what it is.
TEST_F(ReturnPoint, TellsFaultsOfItsOwnAsSuch) {
  EXPECT_EQ(run_command([]() -> int { throw std::bad_alloc(); }), CommandEnd::failed);
  EXPECT_EQ(run_command([]() -> int { throw std::logic_error("odd"); }), CommandEnd::failed);
  EXPECT_EQ(run_command([]() -> int { throw 1; }), CommandEnd::failed);
  EXPECT_EQ(console().text, "Alloc failedSorry! Internal fault: odd\nSorry! Internal fault\n");
  expect_whole();
}

TEST_F(ReturnPoint, ResetsWhatACommandLeftHalfWay) {
  run_command([]() -> int {
    Evaluates = 17;
    gNarPrint = 1;
    DisableAllMenus();
    Query_root = LMakeInteger(1);
    error_exit("Alas\n");
  });
  EXPECT_EQ(console().log.back(), "idle");
  expect_whole();
}

TEST_F(ReturnPoint, RunsTheQueryAgainInALargerSpace) {
  const std::int32_t before = node_count;
  int runs = 0;
  const CommandEnd end = run_command([&]() -> int {
    ++runs;
    gQuery = "+ #1 #2";
    error_exit("Insufficient Query Space\n");
  });
  EXPECT_EQ(end, CommandEnd::done);
  EXPECT_EQ(runs, 1) << "the query runs again from its text";
  EXPECT_EQ(node_count, 2 * before);
  EXPECT_NE(console().text.find("Re-trying Query\n+ #1 #2\n#3"), std::string::npos);
  resize_free_list(0);
  expect_whole();
}

TEST_F(ReturnPoint, RepeatsOtherCommandsTheirOwnWay) {
  int again = 0;
  const Command fails = []() -> int { error_exit("Insufficient Query Space\n"); };
  EXPECT_EQ(run_command(fails, [&] { return ++again; }), CommandEnd::done);
  EXPECT_EQ(again, 1);
  EXPECT_EQ(run_command(fails), CommandEnd::failed) << "nothing can repeat it";
  EXPECT_NE(console().text.find("Insufficient Query Space\n"), std::string::npos);
  resize_free_list(0);
  expect_whole();
}

TEST_F(ReturnPoint, GivesUpAtTheCeiling) {
  const std::int64_t ceiling = gMaxNodes;
  gMaxNodes = node_count;
  int again = 0;
  EXPECT_EQ(run_command([]() -> int { error_exit("Insufficient Query Space\n"); },
                        [&] { return ++again; }),
            CommandEnd::failed);
  EXPECT_EQ(again, 0);
  gMaxNodes = ceiling;
  resize_free_list(0);
  expect_whole();
}

TEST_F(ReturnPoint, AThrownValueIsTheAnswer) {
  EXPECT_EQ(run_command([]() -> int {
              Query_root = LMakeInteger(7);
              error_exit("throw");
            }),
            CommandEnd::done);
  EXPECT_EQ(console().text, "#7");
  init_free_list();
  expect_whole();
}

TEST_F(ReturnPoint, AnInterruptDropsTheRestOfTheLine) {
  console().interrupt_after = 0;
  gInterrupted = 1;
  EXPECT_EQ(answer("foldr + #0 (list_of_int #1 #100 #1) ; #5 ;"), "Query interrupted\n");
  EXPECT_EQ(gInterrupted, 0);
  expect_whole();
}

// Each allocation of a command fails once: it ends with a message, the session goes on, nothing
// leaks (the sanitizer looks at that).
TEST_F(ReturnPoint, EveryAllocationMayFail) {
  const std::string text = "fdec\nalloc_f ::= list int -> int ;\n;\nfdef\n"
                           "alloc_f (: ?0 ?1) ::= + ?0 (alloc_f ?1) ;\nalloc_f nil ::= #0 ;\n;\n"
                           "alloc_f [#1 #2 #3] ;\nimplode [\"a\" \"b\"] ;\nlambda alloc_f ;\n";
  long n = 1;
  for (bool reached = true; reached; ++n) {
    console().clear();
    kit::fail_allocation(n);
    kit::feed(text);
    reached = kit::allocation_failed();
    kit::fail_allocation(0);
    ASSERT_LT(n, 20000);
    expect_whole();
  }
  EXPECT_GT(n, 50) << "the command allocates";
}

} // namespace

} // namespace velora
