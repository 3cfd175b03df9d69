// Types at run time: declaring a type, adding a constant to one, listing its constants lazily.
// What they make are ordinary entries of the symbol table, saved by the next commit. Called by the
// dispatcher.
#include <cstdlib>
#include <sstream>
#include <string>

#include "core/symbols.h"
#include "core/trees.h"
#include "eval/bi_support.h"
#include "eval/builtins/families.h"
#include "eval/registry.h"
#include "front/type_names.h"
#include "platform/response.h"

namespace velora {

namespace {

constexpr std::size_t kLongestText = 80;
constexpr int kMostTypeArguments = 255;

// What the kind text of newtdec says; `stype` is 0 when it says nothing sensible.
struct TypeKind {
  std::uint8_t stype = kKindless;
  std::uint8_t arity = 0;
};

// "Error (newtdec):  FOUND found when { EXPECTED } expected\n", with a beep.
int refuse(const std::string &found, const char *expected, const char *builtin = "newtdec") {
  BeepMsgef(1, "Error (%s):  %s found when { %s } expected\n", builtin, found.c_str(), expected);
  return 0;
}

// The arity of "typeop # N"; -1 when the text is not of this form, -2 when N is too large.
int typeop_arity(std::istringstream &words) {
  std::string sign;
  long arity = 0;
  if (!(words >> sign >> arity) || sign != "#")
    return -1;
  return arity > kMostTypeArguments ? -2 : static_cast<int>(arity);
}

TypeKind read_kind(const std::string &text) {
  std::istringstream words(text);
  std::string first;
  words >> first;
  if (first.starts_with("enum"))
    return {kEnumType, 0};
  if (first == "nonlex")
    return {kNonlexType, 0};
  if (first != "typeop")
    return {};
  const int arity = typeop_arity(words);
  if (arity == -2)
    refuse(text, "valid type op arity");
  // A negative arity is stored modulo 256, as in a declaration.
  return arity == -1 || arity == -2 ? TypeKind{}
                                    : TypeKind{kTypeOp, static_cast<std::uint8_t>(arity)};
}

bool of_library(const symbol *sym) {
  return sym != nullptr && (sym->stype & (kBuiltinBit | kSystemBit)) != 0;
}

// A zeroed record of the heap.
template <typename Record> Record *new_record() {
  auto *record = static_cast<Record *>(std::calloc(1, sizeof(Record)));
  if (record == nullptr)
    error_exit("Alloc failed");
  return record;
}

// Kept: the answer of newtdec prints as True but is a node of kind 16, so it is not equal to the
// constructor. Its number is beyond the table, so it never reduces.
int set_declared(node *target) {
  static char name[] = "True";
  static func_block block{name, nullptr, nullptr, 0, kBuiltins};
  target->type = kBuiltin;
  target->quote = 0;
  target->val.bi = {&block, kBuiltins};
  return 1;
}

// Enters `name` as a constant of `type`, behind the ones it has; null when it is refused.
symbol *add_constant(symbol *type, const std::string &name) {
  symbol *old = find_symbol(name.data(), name.size());
  if (old == type || of_library(old))
    return nullptr;
  symbol *sym = insert_symbol(name.data(), name.size());
  if (sym == nullptr)
    return nullptr;
  auto *cs = new_record<cons_block>();
  cs->name = sym->name;
  sym->stype = kConstructor;
  sym->b.cs = cs;
  cs->types = make_user_top_node(type, 0);
  enum_block *values = type->b.en;
  if (values->tail != nullptr)
    values->tail->b.cs->link = sym;
  else
    values->head = sym;
  values->tail = sym;
  return sym;
}

// The first constant that `all` of this node lists; 0 in `*listable` when it lists nothing.
symbol *first_constant(const node *n, bool *listable) {
  *listable = true;
  if (n->type == kName && (n->val.sym->stype & kEnumBit) != 0)
    return n->val.sym->b.en->head;
  if (n->type == kConstructorNode && n->val.cs->arity == 0) {
    symbol *sym = find_symbol(n->val.cs->name, 0);
    if (sym != nullptr && sym->b.cs == n->val.cs)
      return sym;
  }
  *listable = false;
  return nullptr;
}

} // namespace

// all T = c1 : all c2 ..., the constants of T from the first, or from the constant given, on.
int bi_all(node **stack, int) {
  if (bi_arg(stack, 1) == nullptr)
    return set_cons(stack[1], kNil);
  if (bi_arg(stack, 1)->type != kConstructorNode)
    evaluate(bi_arg(stack, 1));
  bool listable = false;
  const symbol *first = first_constant(bi_arg(stack, 1), &listable);
  if (!listable)
    return 0;
  if (first == nullptr)
    return set_cons(stack[1], kNil);
  const symbol *next = first->b.cs->link;
  Root cell(LMakeConstructor(bi_cons_table[kCons].cs));
  const Root constant(LMakeConstructor(first->b.cs));
  cell = LMakeApplyNode(cell, constant);
  Root rest(LMakeConstructor(next != nullptr ? next->b.cs : bi_cons_table[kNil].cs));
  if (next != nullptr)
    rest = LMakeApplyNode(stack[1]->val.a.a1, rest);
  return set_apply(stack[1], cell, rest);
}

// nlcreate T name = the new constant `name` of the enumerated or non-lexical type T.
int bi_nlcreate(node **stack, int) {
  const node *type = bi_arg(stack, 1);
  if (type->type != kName)
    return 0;
  symbol *sym = type->val.sym;
  if (sym->stype != kEnumType && sym->stype != kNonlexType)
    return 0;
  const node *name = force_arg(stack, 2, kString);
  if (name == nullptr)
    return 0;
  const std::string text = MakeStringValid(std::string(text_of(name)));
  if (!reads_as_name(text))
    return refuse(text, "new symbol", "nlcreate");
  const symbol *constant = add_constant(sym, text);
  if (constant == nullptr)
    return 0;
  stack[2]->type = kConstructorNode;
  stack[2]->quote = 0;
  stack[2]->val.cs = constant->b.cs;
  return 1;
}

// newtdec name kind declares a type: kind is "enum", "nonlex" or "typeop # N".
int bi_newtdec(node **stack, int) {
  if (force_arg(stack, 1, kString) == nullptr || force_arg(stack, 2, kString) == nullptr)
    return 0;
  const std::string name_text(text_of(bi_arg(stack, 1)));
  const std::string kind_text(text_of(bi_arg(stack, 2)));
  if (kind_text.size() > kLongestText)
    return 0;
  const TypeKind kind = read_kind(kind_text);
  if (kind.stype == kKindless || name_text.size() > kLongestText)
    return 0;
  std::string name;
  std::istringstream(name_text) >> name;
  name = MakeStringValid(name);
  if (!reads_as_name(name) || of_library(find_symbol(name.data(), name.size())))
    return refuse(name_text, "new symbol");
  symbol *sym = insert_symbol(name.data(), name.size());
  if (sym == nullptr)
    return refuse(name_text, "new symbol");
  if (kind.stype == kTypeOp) {
    sym->b.tp = new_record<top_block>();
    sym->b.tp->arity = kind.arity;
  } else {
    sym->b.en = new_record<enum_block>();
  }
  sym->stype = kind.stype;
  return set_declared(stack[2]);
}

} // namespace velora
