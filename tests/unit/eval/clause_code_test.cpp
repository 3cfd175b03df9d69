// Bodies built in one go against the plain way: whatever a program can look at, evaluated or not,
// must be the same.
#include "eval/clause_code.h"

#include <gtest/gtest.h>

#include <random>

#include "core/space.h"
#include "front/cint.h"
#include "kit/language.h"

namespace velora {
namespace {

// Random bodies over three variables that the head binds and one that it does not.
class BodyMaker {
public:
  explicit BodyMaker(unsigned seed) : random_(seed) {}
  std::string body() { return application(4); }

private:
  int pick(int n) { return static_cast<int>(random_() % static_cast<unsigned>(n)); }
  std::string leaf() {
    static const char *const leaves[] = {"?0", "?1",  "?2", "?0", "?1",    "?2", "?7",
                                         "#3", "zc0", "zf", "+",  "\"t\"", "nil"};
    return leaves[pick(13)];
  }
  std::string application(int depth) {
    static const char *const heads[] = {"zc1", "zc2", "zf", "zg", "?0", "?1", "zadd", "zk"};
    std::string text = heads[pick(8)];
    for (int args = 1 + pick(3); args > 0; --args)
      text += " " + element(depth - 1);
    return text;
  }
  std::string element(int depth) {
    return depth <= 0 || pick(3) == 0 ? leaf() : "(" + application(depth) + ")";
  }
  std::mt19937 random_;
};

class ClauseCodeTest : public kit::Language {
protected:
  void SetUp() override {
    kit::Language::SetUp();
    cint_tdec("zt ::= enum");
    cint_cdec("zc0 ::= zt");
    cint_cdec("zc1 ::= zt -> zt");
    cint_cdec("zc2 ::= zt -> zt -> zt");
    cint_fdec("zf ::= zt -> zt");
    cint_fdec("zg ::= zt -> zt -> zt");
    cint_fdef("zg ?0 (zc1 ?1) ::= zc2 ?1 (zf ?0)");
    cint_fdec("zadd ::= int -> int -> int");
    cint_fdef("zadd ?0 ?1 ::= + ?1 ?0");
    cint_fdec("zk ::= zt -> zt -> zt");
    cint_fdef("zk ?0 ?1 ::= ?0");
  }
  void TearDown() override {
    gPlainBodies = 0;
    set_collect_stress(0);
    kit::Language::TearDown();
  }

  // Declares `zb` with the body, and asks it both ways.
  void compare(const std::string &body) {
    static const char *const queries[] = {
        "zb #1 #2 (zc1 zc0) ;", "zb zk (zadd #1) (zg zc0 (zc1 #4)) ;", "zb (zk #1) (zf #5) ?0 ;",
        "map (zb #1 zf) [#1 (zf #2)] ;"};
    for (const char *query : queries) {
      std::string answers[2];
      for (const int plain : {0, 1}) {
        gPlainBodies = plain;
        cint_fdec("zb ::= zt -> zt -> zt -> zt");
        ASSERT_EQ(cint_fdef("zb ?0 ?1 ?2 ::= " + body), 1) << body;
        answers[plain] = kit::answer(query);
      }
      ASSERT_EQ(answers[0], answers[1]) << body << "\n" << query;
    }
  }
};

TEST_F(ClauseCodeTest, UnevaluatedArgumentsLookLikeCombinators) {
  cint_fdec("zq ::= zt -> zt");
  cint_fdef("zq ?0 ::= quote (zc1 (zf (zg ?0)))");
  EXPECT_EQ(kit::answer("zq #5 ;"), "( B zc1 ( B zf zg) #5)");
  cint_fdef("zq ?0 ::= quote (zc2 ?0 ?0)");
  EXPECT_EQ(kit::answer("zq #5 ;"), "( S zc2 I #5)");
  cint_fdef("zq ?0 ::= zc1 (quote (zc2 ?0 ?0))");
  EXPECT_EQ(kit::answer("zq #5 ;"), "( zc1 ( S zc2 I #5))");
}

TEST_F(ClauseCodeTest, RandomBodiesLookAlikeQuoted) {
  BodyMaker maker(1);
  for (int i = 0; i < 150; ++i)
    compare("quote (zc2 (" + maker.body() + ") (" + maker.body() + "))");
}

TEST_F(ClauseCodeTest, RandomBodiesEvaluateAlike) {
  BodyMaker maker(2);
  for (int i = 0; i < 150; ++i)
    compare(maker.body());
}

TEST_F(ClauseCodeTest, RandomBodiesEvaluateAlikeUnderConstantCollection) {
  BodyMaker maker(3);
  set_collect_stress(1);
  for (int i = 0; i < 40; ++i)
    compare("zc1 (exptolistq (" + maker.body() + "))");
}

// The code of a clause that is replaced while what it built still waits must stay.
TEST_F(ClauseCodeTest, ReplacedClausesLiveOnInWhatTheyBuilt) {
  cint_fdec("zr ::= int -> int");
  cint_fdec("zs ::= int -> int");
  cint_fdef("zs ?0 ::= progN (assert zr ?0 #0) (+ ?0 (* ?0 #10))");
  cint_fdef("zr ?0 ::= zs ?0");
  set_collect_stress(1);
  EXPECT_EQ(kit::answer("zr #4 ;"), "#44");
  EXPECT_EQ(kit::answer("zr #4 ;"), "#0");
}

} // namespace
} // namespace velora
