// The common form of clauses. The text is read by the tokenizer as a statement of its own; items
// live in a pool until the form is written. A lambda's variable is known by how many lambdas
// stand around it, so that its name does not count either.
#include "editor/clause_form.h"

#include <algorithm>
#include <cstring>
#include <deque>
#include <map>

#include "core/events.h"
#include "db/removal.h"
#include "db/term_text.h"
#include "front/parse.h"
#include "front/source.h"
#include "platform/response.h"

namespace velora {

namespace {

// A leaf, or the application of a head to arguments: then `head` is a leaf or a lambda's list.
struct Item {
  int token = kTokName;
  std::string text; // of a leaf
  int number = 0;   // of a variable, an integer
  std::vector<Item *> args;
};

// Notes of the tokenizer were shown when the text was first read.
class WithoutNotes {
public:
  WithoutNotes() : before_(gNotes) { gNotes = 0; }
  ~WithoutNotes() { gNotes = before_; }
  WithoutNotes(const WithoutNotes &) = delete;
  WithoutNotes &operator=(const WithoutNotes &) = delete;

private:
  int before_;
};

// Reads expressions from the tokens of the source in use. A failure is remembered, so that what
// was begun can be thrown away at the end.
class Reader {
public:
  // An expression up to a token that cannot be part of one, which stays current.
  Item *expression() {
    check_stack();
    Item *root = nullptr;
    for (Item *item = element(); item != nullptr; item = element()) {
      if (root == nullptr)
        root = item;
      else
        root->args.push_back(item);
    }
    failed_ |= root == nullptr;
    return root;
  }
  [[nodiscard]] bool failed() const { return failed_; }

private:
  Item *make(int token, std::string text) {
    pool_.push_back({token, std::move(text), pp_int_val, {}});
    return &pool_.back();
  }

  // One element and the token behind it; null at a token that ends the level.
  Item *element() {
    switch (pp_token) {
    case kTokOpen:
      return bracketed();
    case kTokOpenList:
      return list();
    case kTokInteger:
    case kTokVariable:
    case kTokName:
    case kTokLambda:
      return leaf(pp_start);
    case kTokCharacter:
      return leaf(std::string("'") + pp_char_val + "'");
    case kTokRealLit:
      return leaf(format_text("#r%.9g", static_cast<double>(pp_real_val)));
    case kTokString:
      return leaf("\"" + std::string(pp_str_val, static_cast<std::size_t>(pp_str_len)) + "\"");
    default:
      return nullptr;
    }
  }

  Item *leaf(std::string text) {
    Item *item = make(pp_token, std::move(text));
    pp_get_token();
    return item;
  }

  // The application in brackets is the same without them, but arguments behind it must not become
  // those of a shared item: each bracket makes items of its own, so appending is safe.
  Item *bracketed() {
    pp_get_token();
    Item *inside = expression();
    failed_ |= pp_token != kTokClose;
    if (!failed_)
      pp_get_token();
    return failed_ ? nullptr : inside;
  }

  // [a b] is (: a (: b nil)).
  Item *list() {
    pp_get_token();
    Item *first = nullptr;
    Item **end = &first;
    while (pp_token != kTokCloseList && !failed_) {
      Item *member = element();
      failed_ |= member == nullptr;
      if (failed_)
        return nullptr;
      Item *cell = make(kTokName, ":");
      cell->args = {member, nullptr};
      *end = cell;
      end = &cell->args[1];
    }
    if (failed_)
      return nullptr;
    *end = make(kTokName, "nil");
    pp_get_token();
    return first;
  }

  std::deque<Item> pool_;
  bool failed_ = false;
};

// Writes items in the common form. Variables of the head are numbered as they come; in the body
// one that the head does not have keeps its own number and a mark.
class Writer {
public:
  void head_follows(bool follows) { in_head_ = follows; }

  void write(const Item *item, std::string &form) {
    check_stack();
    if (item->args.empty())
      return write_leaf(item, form);
    form += '(';
    write_leaf(item, form);
    const bool binds = item->token == kTokLambda && item->args[0]->token == kTokVariable &&
                       item->args[0]->args.empty();
    const bool holds = item->token == kTokName && item->text == "HOLDN" &&
                       item->args[0]->token == kTokInteger && item->args[0]->args.empty();
    if (binds)
      bound_.push_back(item->args[0]->number);
    for (std::size_t i = 0; i < item->args.size(); ++i) {
      form += ' ';
      if (i == 0 && holds)
        form += format_text("#hold%zu", number_of(holds_, item->args[0]->number));
      else
        write(item->args[i], form);
    }
    if (binds)
      bound_.pop_back();
    form += ')';
  }

private:
  static std::size_t number_of(std::map<int, std::size_t> &seen, int number) {
    return seen.try_emplace(number, seen.size()).first->second;
  }

  void write_leaf(const Item *item, std::string &form) {
    if (item->token == kTokInteger)
      form += format_text("#%d", item->number);
    else if (item->token == kTokVariable)
      write_variable(item->number, form);
    else
      form += item->text;
  }

  void write_variable(int number, std::string &form) {
    const auto binder = std::find(bound_.rbegin(), bound_.rend(), number);
    if (binder != bound_.rend())
      form += format_text("?lambda%td", bound_.rend() - binder);
    else if (in_head_ || variables_.contains(number))
      form += format_text("?%zu", number_of(variables_, number));
    else
      form += format_text("?free%d", number);
  }

  bool in_head_ = false;
  std::map<int, std::size_t> variables_;
  std::map<int, std::size_t> holds_;
  std::vector<int> bound_;
};

// True at the end of the whole text, whose strings were all closed.
bool ends_well() {
  return pp_token == kTokEnd && pp_open_string == 0 && pp_get_token() == kTokEnd && pp_at_end != 0;
}

} // namespace

ClauseForm clause_form(std::string_view clause) {
  const WithoutNotes quiet;
  const StatementSource source(std::string(clause) + "\n;\n");
  Reader reader;
  Writer writer;
  ClauseForm form;
  pp_get_token();
  const Item *head = reader.expression();
  const bool has_body = !reader.failed() && pp_token == kTokDefine;
  if (reader.failed() || (!has_body && !ends_well()))
    return {};
  writer.head_follows(true);
  writer.write(head, form.left);
  writer.head_follows(false);
  if (!has_body)
    return form; // a left side alone, which is no clause
  pp_get_token();
  const Item *body = reader.expression();
  if (reader.failed() || !ends_well())
    return {};
  form.readable = true;
  form.whole = form.left + " ::= ";
  writer.write(body, form.whole);
  return form;
}

bool same_clause(std::string_view clause, std::string_view other) {
  const ClauseForm form = clause_form(clause);
  return form.readable && form.whole == clause_form(other).whole;
}

bool same_left_side(std::string_view clause, std::string_view other) {
  const std::string left = clause_form(clause).left;
  return !left.empty() && left == clause_form(other).left;
}

std::vector<std::string> clauses_of(const func_block *function, const symbol *mentioned) {
  std::vector<std::string> texts;
  for (const defs_link *group = function->defs; group != nullptr; group = group->next) {
    std::uint32_t mask = 1;
    for (const rhs_link *clause = group->defs; clause != nullptr; clause = clause->next) {
      const std::uint32_t bit = mask;
      mask <<= 1;
      if (mentioned != nullptr && rhs_tree_depends_on(mentioned, clause->original) == 0)
        continue;
      std::string text;
      fprint_lhs_args(text, group->lhs_tree, bit, ' ');
      text += "::= ";
      fprint_args(text, clause->original, ' ');
      while (text.ends_with(' '))
        text.pop_back();
      texts.push_back(std::move(text));
    }
  }
  return texts;
}

} // namespace velora
