// Terms in file notation and the folding of long lines.
#include <gtest/gtest.h>

#include "core/text.h"
#include "core/trees.h"
#include "db/term_text.h"

using namespace velora;

namespace {

std::string folded(const std::string &head, const std::string &body) {
  std::string f;
  fprint_tf(f, head, body, "  ", "      ", ' ');
  return f;
}

// The pieces of a folded body without their indents.
std::vector<std::string> pieces_of(const std::string &body) {
  const std::string all = folded("h ", body);
  std::vector<std::string> pieces;
  std::size_t at = all.find("::=\n") + 4;
  while (at < all.size()) {
    const std::size_t end = std::min(all.find('\n', at), all.size());
    pieces.push_back(all.substr(at + 6, end - at - 6));
    at = end + 1;
  }
  pieces.back().erase(pieces.back().size() - 2);
  return pieces;
}

node *leaf(std::uint8_t type, int value = 0) {
  node *n = make_leaf(type);
  n->val.i = value;
  return n;
}

node *text_leaf(std::string_view text) {
  node *n = make_leaf(kString);
  n->val.s.str = new_text(text);
  n->val.s.len = static_cast<int>(text.size());
  hold_text(n->val.s.str);
  return n;
}

struct Printed {
  std::string args;
  std::string expr;
  bool reads_back;
};

Printed printed(node *root) {
  const Tree tree(root);
  Printed p;
  p.reads_back = fprint_args(p.args, root, ' ');
  fprint_expr(p.expr, root, ' ');
  return p;
}

TEST(TermText, ASpineHasNoParenthesesAndABlankBehindEachItem) {
  const Printed p = printed(
      make_apply_node(make_apply_node(leaf(kVariable, 0), leaf(kInteger, -7)),
                      make_apply_node(make_apply_node(leaf(kCombS), leaf(kCombK)), leaf(kLambda))));
  EXPECT_EQ(p.args, "?0 #-7 (S K lambda) ");
  EXPECT_EQ(p.expr, "(?0 #-7 (S K lambda))");
}

TEST(TermText, LeavesThatNoLiteralCarriesAreComputed) {
  node *character = make_leaf(kCharacter);
  character->val.c = '"';
  EXPECT_EQ(printed(character).args, "'\"' ");
  node *line_end = make_leaf(kCharacter);
  line_end->val.c = '\n';
  const Printed computed = printed(line_end);
  EXPECT_EQ(computed.args, "(decode #10) ");
  EXPECT_TRUE(computed.reads_back);
  EXPECT_EQ(printed(text_leaf("it's (a; text)")).args, "\"it's (a; text)\" ");
  EXPECT_EQ(printed(make_apply_node(text_leaf("a\"b\n"), leaf(kInteger))).expr,
            "((str_concat (: \"a\" (: (implode (: '\"' nil)) (: \"b\" "
            "(: (implode (: (decode #10) nil)) nil))))) #0)");
  const Printed unknown = printed(leaf(70));
  EXPECT_EQ(unknown.args, "<70>? ");
  EXPECT_FALSE(unknown.reads_back);
  sweep_texts(~0u);
}

TEST(TermText, ALongListIsPrintedWithoutRecursion) {
  node *list = leaf(kCombI);
  for (int i = 0; i < 300000; ++i)
    list = make_apply_node(leaf(kCombK), list);
  const std::string text = printed(list).args;
  EXPECT_EQ(text.substr(0, 8), "K (K (K ");
  EXPECT_EQ(text.size(), 300000u * 4);
}

TEST(Folding, AClauseStandsOnTwoIndentedLines) {
  EXPECT_EQ(folded("f #1 ", "g #1 (h #2) "), "\n  f #1  ::=\n      g #1 (h #2)  ;\n");
}

TEST(Folding, ABreakComesAtTheFirstBlankAfter45Characters) {
  const std::string long_name(45, 'a');
  EXPECT_EQ(pieces_of(long_name + "b c "), (std::vector<std::string>{long_name + "b", " c "}));
  EXPECT_EQ(pieces_of(long_name + " c "), (std::vector<std::string>{long_name, " c "}));
  const std::string shorter(44, 'a');
  EXPECT_EQ(pieces_of(shorter + " c d "), (std::vector<std::string>{shorter + " c", " d "}));
}

TEST(Folding, ATextIsNeverBroken) {
  const std::string start(40, 'a');
  const std::string text = "\"one two three four five six seven\"";
  EXPECT_EQ(pieces_of(start + " " + text + " b "),
            (std::vector<std::string>{start + " " + text, " b "}));
  const std::string full(50, 'a');
  EXPECT_EQ(pieces_of(full + "\"x y\" "), (std::vector<std::string>{full, "\"x y\" "}));
}

TEST(Folding, CharactersThatLookLikeQuotesOrBlanksAreNotTakenForThem) {
  const std::string start(30, 'a');
  const std::string text = "\"one two three four five six\"";
  EXPECT_EQ(pieces_of(start + " '\"' " + text + " b "),
            (std::vector<std::string>{start + " '\"' " + text, " b "}));
  const std::string edge(44, 'a');
  EXPECT_EQ(pieces_of(edge + "('\"') b "), (std::vector<std::string>{edge + "('\"')", " b "}));
  EXPECT_EQ(pieces_of(edge + "(' ' b "), (std::vector<std::string>{edge + "(' '", " b "}));
}

TEST(Folding, ThePiecesMakeUpTheLine) {
  std::string line;
  for (int i = 0; i < 400; ++i)
    line += (i % 7 == 0 ? "\"a b " + std::to_string(i) + "\"" : "(w" + std::to_string(i)) +
            (i % 3 == 0 ? " " : ") ");
  std::string joined;
  for (const std::string &piece : pieces_of(line)) {
    EXPECT_LE(piece.size(), 60u);
    joined += piece;
  }
  EXPECT_EQ(joined, line);
}

} // namespace
