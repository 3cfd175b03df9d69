// Drawn pictures with what must come out of each: the clause, what is declared, the query, and what
// is told and marked. The pictures stand in tests/golden/pictures.
#include <vector>

#include "editor/model/seg_file.h"
#include "editor/model/wininfo.h"
#include "editor/picture_walk.h"
#include "editor/translate.h"
#include "front/parser.h"
#include "kit/language.h"
#include "kit/pictures.h"

namespace velora {
namespace {

const std::string kFolder = VELORA_SOURCE_DIR "/tests/golden/pictures/";

struct Sample {
  const char *name;
  bool ok;
  const char *declaration;
  const char *clause;
  const char *lhs; // empty when there is none
  const char *query;
  std::vector<const char *> messages;
  std::vector<const char *> query_messages;
  std::vector<int> highlighted;
};

const Sample kSamples[] = {
    {"quad",
     true,
     "",
     "quad ?0 ::= dbl (dbl ?0)",
     "quad ?0",
     "dbl (dbl (int))",
     {"Good! A component of function quad defined\n", "Translated OK\n"},
     {"\nQUERY>>   dbl (dbl (int))\n"},
     {}},
    {"tail0",
     true,
     "",
     "tail0 (: #0 ?1) ::= len (?1)",
     "tail0 (: #0 ?1)",
     "len (?1)",
     {"Good! A component of function tail0 defined\n", "Translated OK\n"},
     {"\nQUERY>>   len (?1)\n"},
     {}},
    {"down",
     true,
     "",
     "down ?0 ::= down (dbl ?0)",
     "down ?0",
     "",
     {"Good! A component of function down defined\n", "Translated OK\n"},
     {"ERROR: Blank function node\n"},
     {}},
    {"keep",
     true,
     "",
     "keep ?0 ::= mix (HOLDN #4 (dbl ?0)) (HOLDN #4 (dbl ?0))",
     "keep ?0",
     "mix (HOLDN #4 (dbl (int))) (HOLDN #4 (dbl (int)))",
     {"Good! A component of function keep defined\n", "Translated OK\n"},
     {"\nQUERY>>   mix (HOLDN #4 (dbl (int))) (HOLDN #4 (dbl (int)))\n"},
     {}},
    {"jump",
     true,
     "",
     "jump ?0 ::= dbl ?0",
     "jump ?0",
     "dbl (int)",
     {"Good! A component of function jump defined\n", "Translated OK\n"},
     {"\nQUERY>>   dbl (int)\n"},
     {}},
    {"loop",
     false,
     "",
     "",
     "loop ?0",
     "",
     {"Cycle in function graph - mix\n"},
     {"Cycle in function graph - mix\n"},
     {6, 7}},
    {"fresh",
     true,
     "fresh ::= int -> int -> int",
     "fresh ?0 ?1 ::= mix ?0 ?1",
     "",
     "mix (int) (int)",
     {"Good! fresh declared as a new function \n", "Good! A component of function fresh defined\n",
      "Translated OK\n"},
     {"\nQUERY>>   mix (int) (int)\n"},
     {}},
    {"none",
     false,
     "",
     "",
     "none ?0",
     "",
     {"No path back from result\n", "Incomplete function declaration\n"},
     {"ERROR: No path to result\n"},
     {}},
};

class TranslateSamples : public kit::Language, public testing::WithParamInterface<Sample> {
protected:
  void SetUp() override {
    kit::Language::SetUp();
    ASSERT_EQ(load_file(kFolder + "pics.ddb", 1), 1);
    ASSERT_EQ(RestoreAll(kFolder + GetParam().name + ".seg"), 1);
    ASSERT_EQ(PictureExists(GetParam().name, 0, &picture_), 1);
    picture_->saved = 0; // as a window's copy
    console().clear();
  }
  void TearDown() override {
    FreeAllPictures();
    kit::Language::TearDown();
  }
  // Each message must be shown, in this order; others may stand between.
  void expect_messages(const std::vector<const char *> &expected) {
    std::size_t at = 0;
    for (const char *message : expected) {
      while (at < gTranslation.messages.size() && gTranslation.messages[at].text != message)
        ++at;
      // What the declarations say themselves stands in the console alone.
      if (at == gTranslation.messages.size()) {
        EXPECT_NE(console().text.find(message), std::string::npos) << message;
        at = 0;
      }
    }
  }
  void expect_marks() {
    std::vector<int> selected;
    std::vector<int> highlighted;
    for (int slot = 1; slot <= picture_->seg_ct; ++slot) {
      const unsigned status = picture_->seg_ments[slot]->status;
      if ((status & kSelected) != 0)
        selected.push_back(slot);
      if ((status & kHighlighted) != 0)
        highlighted.push_back(slot);
    }
    EXPECT_TRUE(selected.empty());
    EXPECT_EQ(highlighted, GetParam().highlighted);
  }

  WinInfo *picture_ = nullptr;
};

TEST_P(TranslateSamples, Translates) {
  const Sample &sample = GetParam();
  EXPECT_EQ(TranslateGraph(picture_, 0), sample.ok ? 1 : 0) << console().messages;
  EXPECT_EQ(gTranslation.text, sample.clause);
  EXPECT_EQ(gTranslation.declaration, sample.declaration);
  EXPECT_EQ(console().messages.find("arning"), std::string::npos) << console().messages;
  expect_messages(sample.messages);
  expect_marks();
}

TEST_P(TranslateSamples, ShowsTheLeftSide) {
  TypeNames formals;
  Translation t;
  if (get_intypes_of(GetParam().name, formals, 1) != 0) {
    EXPECT_EQ(picture_lhs(picture_, formals, t), 1);
    EXPECT_EQ(t.lhs, GetParam().lhs);
  } else {
    EXPECT_STREQ(GetParam().lhs, "");
  }
}

TEST_P(TranslateSamples, RunsAsAQuery) {
  GraphToQuery(picture_);
  EXPECT_EQ(gTranslation.text, GetParam().query);
  expect_messages(GetParam().query_messages);
  expect_marks();
}

INSTANTIATE_TEST_SUITE_P(Pictures, TranslateSamples, testing::ValuesIn(kSamples),
                         [](const auto &sample) { return std::string(sample.param.name); });

} // namespace
} // namespace velora
