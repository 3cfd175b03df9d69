// Text to picture to text on many clauses made at random, and pictures drawn at random to text and
// back. The oracle is the language itself: both texts are parsed by its own parser, and the trees
// compared node by node.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <random>

#include "core/symbols.h"
#include "core/trees.h"
#include "editor/builder.h"
#include "editor/model/seg_file.h"
#include "editor/model/vel_segs.h"
#include "editor/model/wininfo.h"
#include "editor/translate.h"
#include "front/cint.h"
#include "front/parse.h"
#include "front/parser.h"
#include "front/source.h"
#include "front/type_names.h"
#include "kit/language.h"
#include "kit/pictures.h"
#include "platform/safe_file.h"
#include "shell/return_point.h"

using namespace velora;
using namespace velora::kit;

namespace {

constexpr int kClauses = 1000;
constexpr const char *kDeclarations =
    "cdec\nNone3 ::= thing3 ;\nSome3 ::= int -> thing3 -> thing3 ;\n;\n"
    "fdec\nuse ::= int -> int -> int ;\none ::= int -> int ;\nanother_long_name ::= int -> int ;\n";

// A term that the language's own parser has read, as text; variables are numbered by `names`.
std::string tree_text(const node *n, std::map<int, int> &names) {
  switch (n->type) {
  case kApply:
    return "(" + tree_text(n->val.a.a1, names) + " " + tree_text(n->val.a.a2, names) + ")";
  case kVariable:
    return "?" + std::to_string(
                     names.try_emplace(n->val.v, static_cast<int>(names.size())).first->second);
  case kInteger:
    return "#" + std::to_string(n->val.i);
  case kReal:
    return "r" + std::to_string(n->val.r);
  case kCharacter:
    return std::string("'") + n->val.c;
  case kString:
    return "\"" + std::string(n->val.s.str, static_cast<std::size_t>(n->val.s.len)) + "\"";
  case kBuiltin:
  case kFunctionNode:
    return n->type == kBuiltin ? n->val.bi.fc->name : n->val.fc->name;
  case kConstructorNode:
    return n->val.cs->name;
  default:
    return "<" + std::to_string(n->type) + ">";
  }
}

// Head and body of a clause read by the parser of the language, variables by first occurrence;
// empty when it cannot read them. Variables that the head lacks keep their own numbers.
std::string language_form(const std::string &clause) {
  const std::size_t sign = clause.find("::=");
  std::map<int, int> names;
  std::string form;
  for (const std::string &part : {clause.substr(0, sign), clause.substr(sign + 3)}) {
    const StatementSource source(part + "\n;\n");
    pp_get_token();
    const Tree term = p_query_term();
    if (!term)
      return {};
    if (!form.empty()) // a variable that is free in the body is known by its number alone
      for (int number = 0; number < 30; ++number)
        names.try_emplace(number, 1000 + number);
    form += tree_text(term.get(), names) + " = ";
  }
  return form;
}

// Clauses over the declared names, with everything that makes a picture say something else: wrong
// positions, free variables, deep nesting, signs that files change.
class RandomClauses {
public:
  explicit RandomClauses(unsigned seed) : random_(seed) {}

  std::string clause(const std::string &function, int arguments) {
    std::string text = function;
    const bool in_order = pick(2) == 0;
    for (int i = 0; i < arguments; ++i)
      text += " " + pattern(in_order ? i : pick(6));
    return text + " ::= " + expression(pick(9));
  }

private:
  int pick(int below) { return static_cast<int>(random_() % static_cast<unsigned>(below)); }
  std::string variable(int number) { return "?" + std::to_string(number); }

  std::string pattern(int number) {
    switch (pick(8)) {
    case 0:
      return literal();
    case 1:
      return "(Some3 " + variable(pick(6)) + " " + variable(pick(6)) + ")";
    case 2:
      return "(Some3 " + literal() + " (Some3 " + variable(pick(6)) + " None3))";
    default:
      return variable(number);
    }
  }

  std::string literal() {
    static const char *const all[] = {"#1",         "#-20", "#r2.5", "'x'",           "' '",
                                      "\"text\"",   "\"\"", "None3", "\"two words\"", "\"a~b\"",
                                      "#1000000000"};
    return all[pick(static_cast<int>(std::size(all)))];
  }

  std::string expression(int depth) {
    if (depth <= 0)
      return pick(3) == 0 ? literal() : variable(pick(4));
    switch (pick(6)) {
    case 0:
      return "one " + inner(depth);
    case 1:
      return "use " + inner(depth) + " " + inner(depth - pick(3));
    case 2:
      return "another_long_name " + inner(depth);
    case 3:
      return "Some3 " + inner(depth - pick(3)) + " " + inner(depth);
    case 4:
      return "HOLDN #" + std::to_string(pick(3)) + " " + inner(depth);
    default:
      return "+ " + inner(depth) + " " + inner(pick(2));
    }
  }
  std::string inner(int depth) {
    const std::string text = expression(depth - 1);
    return text.find(' ') == std::string::npos || text[0] == '"' || text[0] == '\''
               ? text
               : "(" + text + ")";
  }

  std::mt19937 random_;
};

class BuildPropertyTest : public Language {
protected:
  void SetUp() override {
    Language::SetUp();
    FreeAllPictures();
    folder_ = std::filesystem::temp_directory_path() /
              (std::string("velora_property_") +
               ::testing::UnitTest::GetInstance()->current_test_info()->name());
    std::filesystem::remove_all(folder_);
    std::filesystem::create_directories(folder_);
    feed("tdec\nthing3 ::= typeop #0 ;\n;\n" + std::string(kDeclarations) + ";\n");
  }
  void TearDown() override {
    FreeAllPictures();
    std::error_code failed;
    std::filesystem::remove_all(folder_, failed);
    Language::TearDown();
  }

  // Builds a text and answers its pictures by name; what the guard said is in the console.
  std::map<std::string, std::unique_ptr<WinInfo>> built(const std::string &text, Tidying tidying) {
    const std::string base = (folder_ / "text").string();
    std::ofstream(base + ".ddb", std::ios::binary) << text;
    console().clear();
    EXPECT_NE(run_command([&] { return build_segments(base, tidying); }), CommandEnd::failed);
    std::string file;
    read_whole_file(base + ".seg", file);
    std::map<std::string, std::unique_ptr<WinInfo>> pictures;
    for (std::unique_ptr<WinInfo> &wi : pictures_of_text(file))
      pictures[wi->name] = std::move(wi);
    return pictures;
  }

  static std::string declaration(const std::string &name, int arguments) {
    std::string text = name + " ::= ";
    for (int i = 0; i < arguments; ++i)
      text += "int -> ";
    return text + "int ;\n";
  }

private:
  std::filesystem::path folder_;
};

// The picture's clause is the text's, or the guard has spoken of it.
TEST_F(BuildPropertyTest, NoClauseChangesItsMeaningInSilence) {
  RandomClauses random(7);
  for (const Tidying tidying : {Tidying::never, Tidying::always}) {
    std::map<std::string, std::string> clauses;
    std::map<std::string, int> arguments;
    std::string text = kDeclarations;
    for (int i = 0; i < kClauses; ++i) {
      const std::string name = "fun" + std::to_string(i);
      arguments[name] = i % 4;
      clauses[name] = random.clause(name, i % 4);
      text += declaration(name, i % 4);
      feed("fdec\n" + declaration(name, i % 4) + ";\n");
    }
    text += ";\nfdef\n";
    for (const auto &[name, clause] : clauses)
      text += clause + " ;\n";
    const auto pictures = built(text + ";\n", tidying);
    int spoken = 0;
    for (const auto &[name, clause] : clauses) {
      const bool told = ("\n" + console().messages).find("\n" + name + " 0: ") != std::string::npos;
      spoken += told ? 1 : 0;
      ASSERT_TRUE(pictures.contains(name)) << clause;
      if (told)
        continue;
      std::string lhs;
      std::string rhs;
      std::string why;
      const TypeNames formals(static_cast<std::size_t>(arguments[name]), "int");
      ASSERT_TRUE(picture_clause(pictures.at(name).get(), formals, lhs, rhs, why)) << clause << why;
      const std::string form = language_form(clause);
      EXPECT_NE(form, "") << clause;
      EXPECT_EQ(language_form(lhs + " ::= " + rhs), form) << clause;
    }
    RecordProperty(tidying == Tidying::never ? "spoken" : "spoken_tidied", spoken);
    EXPECT_LT(spoken, kClauses * 9 / 10) << "the guard lets most of the drawable clauses pass";
    EXPECT_GT(spoken, 0) << "the clauses hold what no picture can show";
  }
}

// A drawn picture: a tree or a net of boxes over arguments, inputs placed at random.
void draw_at_random(std::mt19937 &random, WinInfo *wi, int arguments) {
  const auto pick = [&](int below) {
    return static_cast<int>(random() % static_cast<unsigned>(below));
  };
  place_node(wi, kHexagon, kBold, "int", {200, 420, 230, 440});
  std::vector<int> nodes;
  for (int i = 0; i < arguments; ++i) {
    const int x = 40 + 90 * i;
    nodes.push_back(
        place_node(wi, kHexagon, kBold, pick(4) == 0 ? "#3" : "int", {x, 4, x + 30, 20}));
  }
  const int count = 1 + pick(7);
  for (int i = 0; i < count; ++i) {
    const int x = pick(400);
    const int y = 60 + 40 * i;
    static const char *const names[] = {"one", "use", "+", "Some3", ""};
    static const char *const values[] = {"#5", "None3", "\"some text\"", "'c'", "#r0.5", "?9"};
    if (pick(3) == 0 || nodes.empty()) {
      nodes.push_back(place_node(wi, kHexagon, kBold, values[pick(6)], {x, y, x + 40, y + 20}));
      continue;
    }
    const bool hold = pick(8) == 0;
    const int box = hold ? place_node(wi, kHoldValue, kPlain, " ", {x, y, x + 10, y + 20})
                         : place_node(wi, kBox, kPlain, names[pick(5)], {x, y, x + 40, y + 20});
    for (int input = hold ? 1 : 1 + pick(3); input > 0; --input)
      join(wi, nodes[static_cast<std::size_t>(pick(static_cast<int>(nodes.size())))], box);
    nodes.push_back(box);
  }
  join(wi, nodes.back(), 1);
}

TEST_F(BuildPropertyTest, TranslatedPicturesLoadAndComeBackFromTheirText) {
  std::mt19937 random(9);
  std::map<std::string, std::string> clauses;
  std::string text = kDeclarations;
  int refused = 0;
  for (int i = 0; i < kClauses; ++i) {
    const std::string name = "pic" + std::to_string(i);
    const int arguments = i % 4;
    FreeAllPictures();
    WinInfo *wi = picture(name);
    draw_at_random(random, wi, arguments);
    std::string lhs;
    std::string rhs;
    std::string why;
    if (!picture_clause(wi, TypeNames(static_cast<std::size_t>(arguments), "int"), lhs, rhs, why)) {
      EXPECT_NE(why, "") << "a refusal says why";
      ++refused;
      continue;
    }
    feed("fdec\n" + declaration(name, arguments) + ";\n");
    clauses[name] = lhs + " ::= " + rhs;
    EXPECT_EQ(cint_fdef(clauses[name]), 1) << clauses[name] << console().messages;
    text += declaration(name, arguments);
  }
  EXPECT_LT(refused, kClauses / 2);
  text += ";\nfdef\n";
  for (const auto &[name, clause] : clauses)
    text += clause + " ;\n";
  const auto pictures = built(text + ";\n", Tidying::always);
  for (const auto &[name, clause] : clauses) {
    const bool told = ("\n" + console().messages).find("\n" + name + " 0: ") != std::string::npos;
    if (told)
      continue;
    const symbol *function = find_symbol(name.c_str(), 0);
    TypeNames formals;
    ASSERT_EQ(get_intypes_of(name, formals, 1), 1) << function;
    std::string lhs;
    std::string rhs;
    std::string why;
    ASSERT_TRUE(picture_clause(pictures.at(name).get(), formals, lhs, rhs, why)) << clause << why;
    EXPECT_EQ(language_form(lhs + " ::= " + rhs), language_form(clause)) << clause;
  }
  const auto remarks = console().messages.find(" 0: ");
  EXPECT_EQ(remarks, std::string::npos) << console().messages.substr(0, 600);
}

} // namespace
