// Databases made at random, for tests of what is written and read back.
#pragma once

#include <random>
#include <string>

namespace velora::db_test {

// Makes the text of a database as a person might type it: any spacing, any kind of term.
class RandomDatabase {
public:
  explicit RandomDatabase(unsigned seed) : random_(seed) {}

  std::string database() {
    std::string text = "tdec\n";
    for (int i = pick(4); i >= 0; --i)
      text +=
          "op" + std::to_string(types_++) + space() + "::= typeop #" + std::to_string(1) + ";\n";
    text += "en ::= enum ;\nnl ::=\tnonlex;\n;\ncdec\n";
    for (int i = pick(6); i >= 0; --i)
      text += "K" + std::to_string(constructors_++) + " ::=" + space() + type(2) + ";\n";
    text += "c0 ::= en; c1 ::= en; c2 ::= nl; ;\nfdec\n";
    for (int i = 1 + pick(8); i >= 0; --i)
      text += name(functions_++) + (pick(4) == 0 ? " #" + std::to_string(pick(4)) : "") +
              " ::= " + type(3) + " ;\n";
    text += ";\nfdef\n";
    for (int f = 0; f < functions_; ++f)
      for (int i = pick(6) == 0 ? pick(40) : pick(3); i > 0; --i)
        text += name(f) + patterns() + " ::=" + space() + spine(4) + ";\n";
    return text + ";\n";
  }

  [[nodiscard]] int functions() const { return functions_; }
  static std::string name(int f) { return (f % 3 == 0 ? "+fun*" : "f_") + std::to_string(f); }

private:
  int pick(int below) { return static_cast<int>(random_() % static_cast<unsigned>(below)); }
  std::string space() { return std::string(static_cast<std::size_t>(1 + pick(3)), ' '); }

  std::string type(int depth) {
    static const char *const basic[] = {"int", "char", "real", "str", "sym", "?3", "en", "nl"};
    const int kind = depth == 0 ? 0 : pick(5);
    if (kind == 1)
      return "op" + std::to_string(pick(types_)) + " (" + type(depth - 1) + ")";
    if (kind == 2)
      return "(" + type(depth - 1) + "->" + type(depth - 1) + ")";
    if (kind == 3)
      return type(depth - 1) + " -> " + type(depth - 1);
    return basic[pick(8)];
  }

  std::string literal() {
    switch (pick(8)) {
    case 0:
      return "#" + std::to_string(pick(2000) - 1000);
    case 1:
      return std::string("'") + static_cast<char>(' ' + pick(95)) + "'";
    case 2:
      return "#r" + std::to_string(pick(4000) - 2000) + ".5";
    case 3:
      return text();
    case 4:
      return "K" + std::to_string(pick(constructors_));
    default:
      return "?" + std::to_string(pick(5));
    }
  }

  std::string text() {
    static const std::string kLetters = "abc ;:=()[]'?#/*-%s\\~\xc3\xa9";
    std::string letters = "\"";
    for (int i = pick(30); i > 0; --i)
      letters += kLetters[static_cast<std::size_t>(pick(static_cast<int>(kLetters.size())))];
    return letters + "\"";
  }

  std::string patterns() {
    std::string text;
    for (int i = pick(4); i > 0; --i)
      text += space() + (pick(4) == 0 ? "(K0 " + literal() + " " + literal() + ")" : literal());
    return text;
  }

  std::string item(int depth) {
    if (depth > 0 && pick(3) == 0)
      return "(" + spine(depth - 1) + ")";
    if (depth > 0 && pick(12) == 0)
      return "(lambda ?" + std::to_string(pick(9)) + " " + spine(depth - 1) + ")";
    return pick(3) == 0 ? name(pick(functions_)) : literal();
  }

  std::string spine(int depth) {
    std::string text = item(depth);
    for (int i = pick(6); i > 0; --i)
      text += space() + item(depth);
    return text;
  }

  std::mt19937 random_;
  int types_ = 0;
  int constructors_ = 0;
  int functions_ = 0;
};

} // namespace velora::db_test
