// Types and names as texts. Whether a text is a type or a name is asked of the tokenizer itself, so
// that this can never differ from what the parsers accept.
#include "front/type_names.h"

#include <algorithm>
#include <cstdint>

#include "core/events.h"
#include "core/print.h"
#include "core/symbols.h"
#include "core/trees.h"
#include "front/parse.h"
#include "front/pdecs.h"
#include "front/source.h"
#include "platform/response.h"

namespace velora {

namespace {

constexpr std::string_view kBlanks = " \t\n\r";
// What a comparison of labels passes over.
constexpr std::string_view kPassedOver = "\n ()";
// Names of symbols hold their length in a byte.
constexpr std::size_t kLongestName = 255;

std::string_view without_blanks(std::string_view text) {
  const std::size_t from = text.find_first_not_of(kBlanks);
  if (from == std::string_view::npos)
    return {};
  return text.substr(from, text.find_last_not_of(kBlanks) - from + 1);
}

// True when the bracket that the text begins with is closed by its last character.
bool bracketed_whole(std::string_view text) {
  if (!text.starts_with('(') || !text.ends_with(')'))
    return false;
  int open = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    open += text[i] == '(' ? 1 : text[i] == ')' ? -1 : 0;
    if (open == 0 && i + 1 < text.size())
      return false;
  }
  return open == 0;
}

const char *skip_passed_over(const char *p) {
  while (*p != '\0' && kPassedOver.find(*p) != std::string_view::npos)
    ++p;
  return p;
}

bool known_types();

// One type, its first token current; the token behind it is read. An argument of a type takes no
// arguments itself unless it stands in brackets.
bool known_type(bool is_argument) {
  check_stack();
  if (pp_token == kTokOpen) {
    pp_get_token();
    if (!known_types() || pp_token != kTokClose)
      return false;
    pp_get_token();
    return true;
  }
  if ((pp_token >= kTokInt && pp_token <= kTokSym) || pp_token == kTokVariable) {
    pp_get_token();
    return true;
  }
  if (pp_token != kTokName)
    return false;
  const symbol *sym = find_symbol(pp_start, static_cast<std::size_t>(pp_len));
  if (sym == nullptr)
    return false;
  // An enumerated type takes no arguments, and its bit is looked at first: it has the other, too.
  const bool is_enum = (sym->stype & kEnumBit) != 0;
  if (!is_enum && (sym->stype & kTypeNameBit) == 0)
    return false;
  const int arity = is_enum ? 0 : sym->b.tp->arity;
  pp_get_token();
  if (is_argument && arity > 0)
    return false;
  for (int left = arity; left > 0; --left)
    if (!known_type(true))
      return false;
  return true;
}

// Types joined by arrows.
bool known_types() {
  while (known_type(false)) {
    if (pp_token != kTokArrow)
      return true;
    pp_get_token();
  }
  return false;
}

} // namespace

const top_node *signature_of(const symbol *sym) {
  if (sym == nullptr)
    return nullptr;
  if ((sym->stype & kFunctionBit) != 0)
    return sym->b.fc != nullptr ? sym->b.fc->types : nullptr;
  if ((sym->stype & kConstructorBit) != 0)
    return sym->b.cs != nullptr ? sym->b.cs->types : nullptr;
  return nullptr;
}

int get_intypes_of(const std::string &name, TypeNames &inpars, int silent) {
  inpars.clear();
  const top_node *types = name.empty() ? nullptr : signature_of(find_symbol(name.c_str(), 0));
  if (types == nullptr) {
    if (silent == 0)
      BeepMsgef(3, "Unable to find input types of %s\n", name.c_str());
    return 0;
  }
  // The cell without a successor holds the result.
  for (; types->top_code == kTypeArrow && types->tnu.bia[1] != nullptr; types = types->tnu.bia[1]) {
    std::string text;
    buffer_tspec(text, types->tnu.bia[0]);
    inpars.push_back(std::move(text));
  }
  return 1;
}

int get_outtype_of(const std::string &name, std::string &outpar) {
  outpar.clear();
  const top_node *types = name.empty() ? nullptr : signature_of(find_symbol(name.c_str(), 0));
  if (types == nullptr)
    return 0;
  while (types->top_code == kTypeArrow && types->tnu.bia[1] != nullptr)
    types = types->tnu.bia[1];
  buffer_tspec(outpar, types->top_code == kTypeArrow ? types->tnu.bia[0] : types);
  return 1;
}

bool same_signature(const symbol *sym, const std::string &declaration) {
  const std::size_t define = declaration.find("::=");
  const top_node *standing = signature_of(sym);
  if (define == std::string::npos || standing == nullptr)
    return false;
  const std::string spec = declaration.substr(define + 3);
  if (TypeIsKnown(spec) == 0)
    return false;
  const StatementSource source(spec + ";\n");
  pp_get_token();
  int arity = 0;
  top_node *types = p_tspecs(&arity);
  const bool same = types != nullptr && tspecs_text(types) == tspecs_text(standing);
  free_type_tree(types);
  return same;
}

TypeNames split_signature(std::string_view text) {
  TypeNames parts;
  int open = 0;
  std::size_t from = 0;
  for (std::size_t i = 0; i <= text.size(); ++i) {
    const char c = i < text.size() ? text[i] : '\0';
    open += c == '(' ? 1 : c == ')' ? -1 : 0;
    const bool arrow = open == 0 && c == '-' && text.substr(i, 2) == "->";
    if (!arrow && i < text.size())
      continue;
    parts.emplace_back(without_blanks(text.substr(from, i - from)));
    from = i + 2;
    ++i;
  }
  return parts;
}

std::string_view bare_type(std::string_view type) {
  type = without_blanks(type);
  while (bracketed_whole(type))
    type = without_blanks(type.substr(1, type.size() - 2));
  return type;
}

std::string GetBaseType(std::string_view type) {
  const std::size_t from = type.find_first_not_of(" \t\n\r(");
  if (from == std::string_view::npos)
    return {};
  type.remove_prefix(from);
  return std::string(type.substr(0, type.find_first_of(" \t\n\r()")));
}

int VariableType(std::string_view type) {
  const std::string base = GetBaseType(type);
  if (base == "sym")
    return 1;
  return base.size() > 1 && base[0] == '?' &&
                 std::all_of(base.begin() + 1, base.end(),
                             [](char c) { return c >= '0' && c <= '9'; })
             ? 1
             : 0;
}

int TypeIsKnown(const std::string &type) {
  const StatementSource source(type + "\n");
  pp_get_token();
  return known_types() && pp_at_end != 0 ? 1 : 0;
}

int CompareParameterStrings(const char *a, const char *b) {
  if (a == nullptr || b == nullptr)
    return 1;
  for (;;) {
    a = skip_passed_over(a);
    b = skip_passed_over(b);
    if (*a != *b)
      return 1;
    if (*a == '\0')
      return 0;
    ++a;
    ++b;
  }
}

bool reads_as_name(const std::string &text) {
  if (text.size() > kLongestName || text.find_first_of("\n\r") != std::string::npos)
    return false;
  const StatementSource source(text + " ;");
  return pp_get_token() == kTokName && text == pp_start && pp_get_token() == kTokEnd &&
         pp_at_end == 0;
}

int ValidName(const std::string &name) {
  if (name.find_first_not_of(kBlanks) == std::string::npos) {
    BeepMsge("Sorry! The picture has no name\n", 1);
    return 0;
  }
  if (!reads_as_name(name)) {
    BeepMsgef(1, "Sorry! %s is not a valid name\n", name.c_str());
    return 0;
  }
  return 1;
}

} // namespace velora
