// The parser of types. No recursion: open parentheses and type operators that still lack arguments
// stand on a stack, the types read so far on another.
#include <cstdint>
#include <vector>

#include "core/events.h"
#include "core/symbols.h"
#include "core/trees.h"
#include "front/notes.h"
#include "front/parse.h"
#include "front/pdecs.h"
#include "front/putils.h"
#include "platform/response.h"

namespace velora {

namespace {

// An open construct: a specification (`op` null), or a type operator that awaits `wanted` types.
struct Open {
  symbol *op;
  unsigned wanted;
  std::size_t first; // its first type on the stack
  BracketPlace opened;
};

class TypeParser {
public:
  TypeParser() = default;
  ~TypeParser() {
    for (top_node *t : types_)
      free_type_tree(t);
  }
  TypeParser(const TypeParser &) = delete;
  TypeParser &operator=(const TypeParser &) = delete;

  top_node *specification(int *arity);

private:
  bool read_type(bool *complete);
  bool read_name(bool *complete);
  bool finish_operators();
  bool run();
  void fold_specification(std::size_t first);
  // The place is made first, so that a type is owned from the moment it exists.
  template <class Make> void put_type(Make make) {
    types_.push_back(nullptr);
    types_.back() = make();
  }
  BracketPlace innermost_bracket() const;
  void report_invalid() const;
  void keep_fault() const;
  top_node *take() {
    top_node *t = types_.back();
    types_.pop_back();
    return t;
  }

  std::vector<top_node *> types_;
  std::vector<Open> open_;
  BracketPlace unclosed_; // of the innermost bracket, as far as it has not been closed
};

bool is_type_keyword(int token) {
  return token == kTokInt || token == kTokChar || token == kTokReal || token == kTokStr ||
         token == kTokSym;
}

// A name as a type: an enumerated type, or an operator whose arguments follow. An argument that is
// itself an application stands in parentheses.
bool TypeParser::read_name(bool *complete) {
  symbol *s = find_symbol(pp_str_val, static_cast<std::size_t>(pp_str_len));
  if (s == nullptr || (s->stype & (kTypeNameBit | kEnumBit)) == 0)
    return false;
  const unsigned wanted = (s->stype & kEnumBit) != 0 ? 0 : s->b.tp->arity;
  const bool is_argument = !open_.empty() && open_.back().op != nullptr;
  if (wanted > kMostTypeArguments || (wanted > 0 && is_argument))
    return false;
  if (wanted == 0) {
    put_type([&] { return make_user_top_node(s, 0); });
  } else {
    open_.push_back({s, wanted, types_.size(), {}});
    *complete = false;
  }
  return true;
}

// Reads the beginning of a type; `complete` tells whether the type ended with the token.
bool TypeParser::read_type(bool *complete) {
  *complete = true;
  if (is_type_keyword(pp_token)) {
    put_type([&] { return make_bi_top_node(static_cast<std::uint8_t>(pp_token + 8)); });
  } else if (pp_token == kTokVariable) {
    const int code = kTypeVariable | (pp_int_val & 0x7F);
    put_type([&] { return make_bi_top_node(static_cast<std::uint8_t>(code)); });
  } else if (pp_token == kTokOpen) {
    unclosed_ = bracket_place();
    open_.push_back({nullptr, 0, types_.size(), unclosed_});
    *complete = false;
  } else if (pp_token != kTokName || !read_name(complete)) {
    return false;
  }
  pp_get_token();
  return true;
}

// Builds every type operator that has all its arguments now; false when one still lacks some.
bool TypeParser::finish_operators() {
  while (!open_.empty() && open_.back().op != nullptr) {
    const Open top = open_.back();
    if (types_.size() - top.first < top.wanted)
      return false;
    top_node *t = make_user_top_node(top.op, top.wanted);
    for (unsigned i = 0; i < top.wanted; ++i)
      t->tnu.u.ua[i] = types_[top.first + i];
    types_.resize(top.first);
    types_.push_back(t);
    open_.pop_back();
  }
  return true;
}

// One type is itself; t1 -> t2 becomes a chain of arrow cells, the last one without a next.
void TypeParser::fold_specification(std::size_t first) {
  const std::size_t last = types_.size() - 1;
  if (last == first)
    return;
  for (std::size_t i = types_.size(); i-- > first;) {
    types_[i] = make_arrow_node(types_[i], i == last ? nullptr : types_[i + 1]);
    if (i != last)
      types_[i + 1] = nullptr;
  }
  types_.resize(first + 1);
}

BracketPlace TypeParser::innermost_bracket() const {
  for (std::size_t i = open_.size(); i-- > 0;)
    if (open_[i].op == nullptr)
      return open_[i].opened;
  return {};
}

// Every specification that is open around an invalid type is invalid and says so.
void TypeParser::report_invalid() const {
  for (const Open &o : open_)
    if (o.op == nullptr)
      BeepMsge("Invalid tspec\n", 1);
}

// What a programmer of other languages calls a basic type.
const char *type_meant(const std::string &word) {
  constexpr const char *kMeant[][2] = {
      {"string", "str"},   {"String", "str"},     {"Str", "str"},    {"text", "str"},
      {"integer", "int"},  {"Integer", "int"},    {"Int", "int"},    {"number", "int"},
      {"Char", "char"},    {"character", "char"}, {"float", "real"}, {"Float", "real"},
      {"double", "real"},  {"Double", "real"},    {"Real", "real"},  {"Bool", "bool"},
      {"boolean", "bool"}, {"Boolean", "bool"},   {"List", "list"}};
  for (const auto &row : kMeant)
    if (word == row[0])
      return row[1];
  return nullptr;
}

// What the last invalid type lacks, until it is told.
struct TypeFault {
  Note which = Note::count;
  std::vector<std::string> words;
  BracketPlace opened; // of the innermost bracket that the statement's end left open
};
TypeFault fault;

// Keeps what the token is that is no type here.
void TypeParser::keep_fault() const {
  const bool is_argument = !open_.empty() && open_.back().op != nullptr;
  const symbol *s = pp_token == kTokName
                        ? find_symbol(pp_str_val, static_cast<std::size_t>(pp_str_len))
                        : nullptr;
  if (s != nullptr && (s->stype & kTypeNameBit) != 0)
    fault = {Note::type_in_brackets, {}, {}};
  else if (pp_token == kTokName && type_meant(pp_start) != nullptr)
    fault = {Note::type_meant, {pp_start, type_meant(pp_start)}, {}};
  else if (pp_token == kTokName)
    fault = {Note::unknown_type, {pp_start}, {}};
  else if (is_argument)
    fault = {
        Note::type_arguments, {open_.back().op->name, counted(open_.back().wanted, "type")}, {}};
  // A bracket whose types were whole is off the stack already.
  if (pp_token == kTokEnd)
    fault.opened = unclosed_;
}

// Reads until the outermost construct is complete. The types of an open specification stay on the
// stack.
bool TypeParser::run() {
  const std::size_t outermost = open_.size();
  for (;;) {
    CheckForUserEvents(83);
    bool complete = false;
    if (!read_type(&complete))
      return false;
    while (complete && finish_operators()) {
      if (pp_token == kTokArrow) {
        pp_get_token();
        break;
      }
      if (open_.size() == outermost)
        return true;
      const std::size_t first = open_.back().first;
      unclosed_ = open_.back().opened;
      open_.pop_back();
      if (pp_token != kTokClose)
        return false;
      fold_specification(first);
      pp_get_token();
      unclosed_ = innermost_bracket();
    }
  }
}

top_node *TypeParser::specification(int *arity) {
  fault = TypeFault{};
  open_.push_back({nullptr, 0, 0, {}});
  if (!run()) {
    report_invalid();
    keep_fault();
    return nullptr;
  }
  *arity = static_cast<int>(types_.size()) - 1;
  if (*arity > kMostArrows) {
    report_invalid();
    return nullptr;
  }
  fold_specification(0);
  return take();
}

} // namespace

void note_invalid_type() {
  if (fault.which != Note::count)
    advise(fault.which, fault.words);
  note_open_bracket(fault.opened, false);
  fault = TypeFault{};
}

top_node *p_tspecs(int *arity) {
  return TypeParser().specification(arity);
}

} // namespace velora
