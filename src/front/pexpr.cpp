// The expression parser. Elements of all open levels stand on one stack, each level knowing where
// its own begin; a level is folded into one tree when it closes and becomes an element of the level
// around it. Whatever is on the stack is freed when parsing is given up.
#include "front/pexpr.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "core/events.h"
#include "core/needs.h"
#include "core/symbols.h"
#include "core/text.h"
#include "core/trees.h"
#include "front/parse.h"
#include "front/putils.h"

namespace velora {

Balance p_balance = kBalanced;

namespace {

node *string_leaf() {
  Tree leaf(make_leaf(kString));
  leaf->val.s.str = new_text({pp_str_val, static_cast<std::size_t>(pp_str_len)});
  leaf->val.s.len = pp_str_len;
  hold_text(leaf->val.s.str);
  return leaf.release();
}

node *symbol_leaf(symbol *s) {
  if ((s->stype & kFunctionBit) != 0) {
    const bool built_in = (s->stype & kBuiltinBit) != 0;
    node *leaf = make_leaf(built_in ? kBuiltin : kFunctionNode);
    if (built_in) {
      leaf->val.bi.fc = s->b.fc;
      leaf->val.bi.id = s->b.fc->max_var;
      note_built_in(leaf->val.bi.id);
    } else {
      leaf->val.fc = s->b.fc;
    }
    return leaf;
  }
  const bool constructor = (s->stype & kConstructorBit) != 0;
  node *leaf = make_leaf(constructor ? kConstructorNode : kName);
  if (constructor)
    leaf->val.cs = s->b.cs;
  else
    leaf->val.sym = s;
  return leaf;
}

// The constructor that list notation stands for; null after a message.
symbol *list_constructor(const char *name) {
  symbol *s = find_symbol(name, 0);
  if (s != nullptr && (s->stype & kConstructorBit) != 0)
    return s;
  refuse("please define unrecognised symbol: " + std::string(name) + "\n");
  return nullptr;
}

// The declared symbol that the current name token stands for, or null.
symbol *token_symbol() {
  return find_symbol(pp_str_val, static_cast<std::size_t>(pp_str_len));
}

struct Level {
  std::size_t first; // its first element on the stack
  bool list;
  BracketPlace opened;
};

class ExpressionParser {
public:
  explicit ExpressionParser(bool in_list) { levels_.push_back({0, in_list, {}}); }
  ~ExpressionParser() {
    for (node *n : elements_)
      free_struct(n);
  }
  ExpressionParser(const ExpressionParser &) = delete;
  ExpressionParser &operator=(const ExpressionParser &) = delete;

  // The whole expression, or null.
  node *run();

private:
  enum Step { kGoOn, kDone, kFail };
  Step step();
  Step element();
  Step close(bool by_end);
  bool fold_application(std::size_t first);
  bool fold_list(std::size_t first);
  bool operator_in_middle() const;
  void push(node *n) {
    Tree owned(n);
    elements_.push_back(n);
    owned.release();
  }
  // The bracket that opened the level has none of its kind that closes it.
  void unclosed(const Level &level) {
    note_open_bracket(level.opened, level.list);
    unbalanced(level.list ? kSquareUnmatched : kRoundUnmatched);
  }
  void unbalanced(Balance b) {
    if (p_balance == kBalanced)
      p_balance = b;
  }

  std::vector<node *> elements_;
  std::vector<Level> levels_;
};

node *ExpressionParser::run() {
  for (;;) {
    CheckForUserEvents(81);
    switch (step()) {
    case kGoOn:
      break;
    case kFail:
      return nullptr;
    case kDone: {
      node *result = elements_.back();
      elements_.pop_back();
      return result;
    }
    }
  }
}

ExpressionParser::Step ExpressionParser::step() {
  switch (pp_token) {
  case kTokOpen:
  case kTokOpenList:
    levels_.push_back({elements_.size(), pp_token == kTokOpenList, bracket_place()});
    pp_get_token();
    return kGoOn;
  case kTokClose:
    if (levels_.back().list)
      unclosed(levels_.back());
    else if (levels_.size() == 1)
      unbalanced(kRoundUnmatched);
    if (!levels_.back().list && elements_.size() == levels_.back().first)
      return kFail; // nothing between the brackets
    pp_get_token();
    return close(false);
  case kTokCloseList:
    if (!levels_.back().list) {
      if (levels_.size() > 1)
        note_open_bracket(levels_.back().opened, false);
      unbalanced(kSquareUnmatched);
      return kFail;
    }
    pp_token = kTokEndOfList;
    pp_get_token();
    return close(false);
  case kTokEnd:
  case kTokDefine:
    return close(true);
  default:
    return element();
  }
}

ExpressionParser::Step ExpressionParser::element() {
  const bool first = elements_.size() == levels_.back().first;
  if (pp_token == kTokLambda && !first) {
    parse_error("lambda symbol found in MIDDLE of expr");
    return kFail;
  }
  node *leaf = nullptr;
  if (pp_token != kTokName)
    leaf = p_make_node();
  else if (symbol *s = token_symbol())
    leaf = symbol_leaf(s);
  else
    report_undefined(operator_in_middle());
  if (leaf == nullptr)
    return kFail;
  push(leaf);
  pp_get_token();
  return kGoOn;
}

// True when the level has two elements of which the second is a function named by signs, and the
// first a value: infix use.
bool ExpressionParser::operator_in_middle() const {
  const std::size_t first = levels_.back().first;
  if (elements_.size() != first + 2 || elements_[first]->type == kFunctionNode ||
      elements_[first]->type == kBuiltin)
    return false;
  const node *middle = elements_[first + 1];
  if (middle->type != kBuiltin && middle->type != kFunctionNode)
    return false;
  const char *name = middle->type == kBuiltin ? middle->val.bi.fc->name : middle->val.fc->name;
  return std::string_view("+-*/=<>!").find(*name) != std::string_view::npos;
}

// Closes the innermost level; `by_end` when the end of the whole expression does it, in which case
// every level around it closes as well.
ExpressionParser::Step ExpressionParser::close(bool by_end) {
  // Of several open brackets the innermost is told of: the others wait for what it lacks.
  if (by_end && levels_.size() > 1)
    unclosed(levels_.back());
  do {
    const Level level = levels_.back();
    levels_.pop_back();
    if (!(level.list ? fold_list(level.first) : fold_application(level.first)))
      return kFail;
    if (levels_.empty())
      return kDone;
  } while (by_end);
  return kGoOn;
}

// f a b is ((f a) b).
bool ExpressionParser::fold_application(std::size_t first) {
  if (elements_.size() == first)
    return false;
  for (std::size_t i = first + 1; i < elements_.size(); ++i) {
    elements_[first] = make_apply_node(elements_[first], elements_[i]);
    elements_[i] = nullptr;
  }
  elements_.resize(first + 1);
  return true;
}

// [a b] is ((: a) ((: b) nil)).
bool ExpressionParser::fold_list(std::size_t first) {
  symbol *const nil = list_constructor("nil");
  symbol *const cell = list_constructor(":");
  if (nil == nullptr || cell == nullptr)
    return false;
  push(symbol_leaf(nil));
  for (std::size_t i = elements_.size() - 1; i-- > first;) {
    Tree cons(symbol_leaf(cell));
    elements_[i] = make_apply_node(cons.get(), elements_[i]);
    cons.release();
    elements_[i] = make_apply_node(elements_[i], elements_[i + 1]);
    elements_[i + 1] = nullptr;
  }
  elements_.resize(first + 1);
  return true;
}

} // namespace

node *p_expression(int list_level) {
  p_balance = kBalanced;
  ExpressionParser parser(list_level > 0);
  return parser.run();
}

node *p_make_node() {
  node *leaf = nullptr;
  switch (pp_token) {
  case kTokInteger:
    leaf = make_leaf(kInteger);
    leaf->val.i = pp_int_val;
    return leaf;
  case kTokCharacter:
    leaf = make_leaf(kCharacter);
    leaf->val.c = pp_char_val;
    return leaf;
  case kTokRealLit:
    leaf = make_leaf(kReal);
    leaf->val.r = pp_real_val;
    return leaf;
  case kTokString:
    return string_leaf();
  case kTokVariable:
    leaf = make_leaf(kVariable);
    leaf->val.v = pp_int_val;
    return leaf;
  case kTokLambda:
    return make_leaf(kLambda);
  case kTokName:
    if (symbol *s = token_symbol())
      return symbol_leaf(s);
    report_undefined(false);
    return nullptr;
  default:
    return nullptr;
  }
}

} // namespace velora
