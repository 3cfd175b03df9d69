// The tokenizer: one table of texts with their tokens, then what crosses lines and sources.
#include "unit/front/front_kit.h"

namespace velora {
namespace {

using front_test::FrontTest;

// The tokens of one statement: code and value, joined by blanks.
std::string tokens(const std::string &text) {
  const StatementSource source(text + "\n");
  std::string result;
  while (pp_get_token() != kTokEnd || pp_at_end == 0) {
    result += result.empty() ? "" : " ";
    result += std::to_string(pp_token);
    switch (pp_token) {
    case kTokInteger:
    case kTokVariable:
      result += "=" + std::to_string(pp_int_val);
      break;
    case kTokCharacter:
      result += std::string("=") + pp_char_val;
      break;
    case kTokRealLit:
      result += format_text("=%g", static_cast<double>(pp_real_val));
      break;
    case kTokString:
    case kTokName:
      result += "=" + std::string(pp_str_val, static_cast<std::size_t>(pp_str_len));
      break;
    default:
      break;
    }
  }
  return result;
}

struct TokenCase {
  const char *text;
  const char *expected;
};

class TokenTable : public ::testing::TestWithParam<TokenCase> {};

TEST_P(TokenTable, Reads) {
  EXPECT_EQ(tokens(GetParam().text), GetParam().expected) << GetParam().text;
}

INSTANTIATE_TEST_SUITE_P(
    Words, TokenTable,
    ::testing::Values(
        TokenCase{"int char real str sym", "1 2 3 4 6"},
        TokenCase{"fdec cdec fdef tdec enum lload lambda typeop nonlex",
                  "26 27 28 31 37 32 29 35 36"},
        TokenCase{"integer Int lambdas fdec2", "25=integer 25=Int 25=lambdas 25=fdec2"},
        TokenCase{"a-b", "25=a 25=-b"}, TokenCase{"int->int", "1 19 1"},
        TokenCase{"+ * / <= != @! !@ , {x}", "25=+ 25=* 25=/ 25=<= 25=!= 25=@! 25=!@ 25=, 25={x}"},
        TokenCase{"- : 'x", "25=- 25=: 25='x"}, TokenCase{"a::=b", "25=a 18 25=b"},
        TokenCase{"f(x)[y]", "25=f 20 25=x 21 22 25=y 23"}, TokenCase{"a\tb", "25=a\tb"},
        TokenCase{"\t a", "25=a"}, TokenCase{"é;ü", "25=é 16 25=ü"},
        TokenCase{"f\"s\"", "25=f 12=s"}, TokenCase{"1 2.5", "25=1 25=2.5"}));

INSTANTIATE_TEST_SUITE_P(
    Literals, TokenTable,
    ::testing::Values(
        TokenCase{"#42 #-7 #+7", "9=42 9=-7 9=7"}, TokenCase{"# 5", "9=5"},
        TokenCase{"#5-3", "9=5 25=-3"}, TokenCase{"#5abc", "9=5"}, TokenCase{"#x", "25=#x"},
        TokenCase{"#2147483647 #-2147483648", "9=2147483647 9=-2147483648"},
        TokenCase{"#2147483648 #-99999999999999999999", "9=2147483647 9=-2147483648"},
        TokenCase{"?0 ?12 ?x ?", "24=0 24=12 25=?x 25=?"}, TokenCase{"?0)", "24=0 21"},
        TokenCase{"#r2.5 #r1.5e3 #r-2 #r.5", "11=2.5 11=1500 11=-2 11=0.5"},
        TokenCase{"#r1-2", "11=1"}, TokenCase{"#r1e99", "11=inf"}, TokenCase{"#rx y", "25=#r 25=y"},
        TokenCase{"'a' '''", "10=a 10='"}, TokenCase{"' '", "10= "},
        TokenCase{"'ab'", "25='ab 25='"}, TokenCase{"\"a b\" \"\"", "12=a b 12="},
        TokenCase{"\"ab\"\"cd\"", "12=ab 12=cd"}, TokenCase{"\"abc", "12=ab"},
        TokenCase{"\"", "12="}, TokenCase{"\"a;b\";", "12=a;b 16"}));

// In a statement only the two characters that open a comment are skipped.
INSTANTIATE_TEST_SUITE_P(Comments, TokenTable,
                         ::testing::Values(TokenCase{"a /* b */ c", "25=a 25=b 25=*/ 25=c"},
                                           TokenCase{"a/*b", "25=a/*b"}));

class FileTokens : public FrontTest {
protected:
  std::string of(const std::string &text) {
    const FileSource source(text, "tokens.q");
    std::string result;
    while (pp_get_token() != kTokEnd || pp_at_end == 0)
      result += (result.empty() ? "" : " ") + std::string(pp_start);
    return result;
  }
};

TEST_F(FileTokens, CommentsCrossLines) {
  EXPECT_EQ(of("a /* b ; */ c"), "a c");
  EXPECT_EQ(of("a /* b\n\nc */ d"), "a d");
  EXPECT_EQ(of("a /* b\n*/ c */ d"), "a d") << "a first column does not close a comment";
  EXPECT_EQ(of("a /* b\n**/ c"), "a c");
  EXPECT_EQ(of("/**/a/* /* */b"), "a/* b") << "inside a name it is no comment";
  EXPECT_EQ(of("a /* never closed\n;"), "a");
  EXPECT_EQ(of("/*/ x */ a"), "a");
}

TEST_F(FileTokens, LineEndsAndOddBytes) {
  EXPECT_EQ(of("a\r\nb\n"), "a b");
  EXPECT_EQ(of("a\rb"), "a\rb") << "a carriage return elsewhere is part of a name";
  EXPECT_EQ(of(""), "");
  EXPECT_EQ(notes(), "");
  EXPECT_EQ(of(std::string("a\0b\n\0c", 6)), "a b c");
  EXPECT_NE(notes().find("NUL"), std::string::npos);
}

TEST_F(FileTokens, ALineOfAnyLengthIsReadWhole) {
  const std::string name(100000, 'n');
  EXPECT_EQ(of(std::string(7001, ' ') + name + " x"), name + " x");
}

} // namespace
} // namespace velora
