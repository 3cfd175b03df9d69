// Prints terms in file notation. Terms may be nested as deeply as memory allows (a list is nested
// once for each element), so printing keeps its own stack.
#include "db/term_text.h"

#include <algorithm>
#include <vector>

#include "core/print.h"
#include "platform/response.h"

namespace velora {

namespace {

constexpr std::size_t kFoldAfter = 45;

bool leaf_reads_back(const node *n) {
  if (n->type == kCharacter)
    return n->val.c != '\n' && n->val.c != '\0';
  if (n->type == kString)
    return std::string_view(n->val.s.str, static_cast<std::size_t>(n->val.s.len))
               .find_first_of("\"\n") == std::string_view::npos;
  return true;
}

// One character that no text literal can hold, as an expression.
std::string carried_character(char c) {
  return c == '"' ? "'\"'" : format_text("(decode #%d)", static_cast<unsigned char>(c));
}

// An expression whose value is a leaf that does not read back: the texts and characters around what
// no literal can hold, joined.
std::string carried_leaf(const node *n) {
  if (n->type == kCharacter)
    return carried_character(n->val.c);
  std::string_view rest(n->val.s.str, static_cast<std::size_t>(n->val.s.len));
  std::string list;
  int parts = 0;
  for (; !rest.empty(); ++parts) {
    const std::size_t good = std::min(rest.find_first_of("\"\n"), rest.size());
    if (good > 0)
      list.append("(: \"").append(rest.substr(0, good)).append("\" ");
    else
      list.append("(: (implode (: ").append(carried_character(rest[0])).append(" nil)) ");
    rest.remove_prefix(std::max<std::size_t>(good, 1));
  }
  return "(str_concat " + list + "nil" + std::string(static_cast<std::size_t>(parts), ')') + ")";
}

// A plain tree stands as it is.
struct PlainTree {
  static constexpr bool carries_expressions = true;
  const node *operator()(const node *part) const { return part; }
};

// In a decision tree the clause takes the first alternative of each list that carries its bit.
struct ClauseHead {
  static constexpr bool carries_expressions = false; // a pattern is no expression
  std::uint32_t mask;
  const node *operator()(const node *part) const {
    const auto *list = reinterpret_cast<const choice_node *>(part);
    while (list != nullptr && (list->mask & mask) == 0)
      list = list->next;
    return list != nullptr ? &list->n : nullptr;
  }
};

// What is still to be printed: a spine, an argument, or one character.
struct Pending {
  enum Kind { spine, argument, character } kind;
  const node *part;
  char c;
};

// spine(x)    = spine(x.a1) argument(x.a2) sep,  or leaf sep
// argument(x) = "(" spine(x.a1) argument(x.a2) ")",  or leaf
template <class Pick>
bool print_term(std::string &f, const node *root, Pending::Kind kind, Pick pick, char sep) {
  bool reads_back = true;
  std::vector<Pending> open{{kind, root, 0}};
  while (!open.empty()) {
    const Pending next = open.back();
    open.pop_back();
    if (next.kind == Pending::character) {
      f += next.c;
      continue;
    }
    const bool spine = next.kind == Pending::spine;
    const node *n = pick(next.part);
    if (n != nullptr && is_apply(n)) {
      if (!spine)
        f += '(';
      open.push_back({Pending::character, nullptr, spine ? sep : ')'});
      open.push_back({Pending::argument, n->val.a.a2, 0});
      open.push_back({Pending::spine, n->val.a.a1, 0});
      continue;
    }
    if (n != nullptr && Pick::carries_expressions && !leaf_reads_back(n))
      f += carried_leaf(n);
    else if (n != nullptr)
      reads_back = fprint_node(f, n) && reads_back;
    if (spine)
      f += sep;
  }
  return reads_back;
}

// One past the character, or the whole of a character literal, at `pos` outside a text.
std::size_t step_over(std::string_view text, std::size_t pos) {
  const bool literal = text[pos] == '\'' && pos + 2 < text.size() && text[pos + 2] == '\'';
  return pos + (literal ? 3 : 1);
}

// Where the piece of a line that begins at `start` ends.
std::size_t piece_end(std::string_view text, std::size_t start, char sep) {
  std::size_t pos = start;
  bool in_text = false;
  while (pos < text.size() && pos - start < kFoldAfter) {
    if (text[pos] == '"')
      in_text = !in_text;
    pos = in_text ? pos + 1 : step_over(text, pos);
  }
  if (in_text) {
    while (pos < text.size() && text[pos] != '"')
      ++pos;
    return pos < text.size() ? pos + 1 : pos;
  }
  while (pos < text.size() && text[pos] != sep && text[pos] != '"')
    pos = step_over(text, pos);
  return pos;
}

void fold(std::string &f, std::string_view text, std::string_view indent, char sep) {
  for (std::size_t pos = 0; pos < text.size();) {
    const std::size_t end = piece_end(text, pos, sep);
    f += '\n';
    f += indent;
    f += text.substr(pos, end - pos);
    pos = end;
  }
}

} // namespace

bool fprint_node(std::string &f, const node *n) {
  switch (n->type) {
  case kVariable:
  case kLambda:
  case kBuiltin:
  case kFunctionNode:
  case kConstructorNode:
  case kInteger:
  case kCharacter:
  case kReal:
  case kString:
  case kName:
  case kCombI:
  case kCombK:
  case kCombS:
  case kCombB:
  case kCombC:
    f += leaf_text(n);
    return leaf_reads_back(n);
  default:
    f += format_text("<%d>?", n->type);
    return false;
  }
}

bool fprint_expr(std::string &f, const node *root, char sep) {
  return print_term(f, root, Pending::argument, PlainTree{}, sep);
}

bool fprint_args(std::string &f, const node *root, char sep) {
  return print_term(f, root, Pending::spine, PlainTree{}, sep);
}

bool fprint_lhs_args(std::string &f, const choice_node *root, std::uint32_t mask, char sep) {
  return print_term(f, reinterpret_cast<const node *>(root), Pending::spine, ClauseHead{mask}, sep);
}

void fprint_tf(std::string &f, std::string_view head, std::string_view body, std::string_view lind,
               std::string_view rind, char sep) {
  fold(f, head, lind, sep);
  f += " ::=";
  fold(f, body, rind, sep);
  f += " ;\n";
}

} // namespace velora
