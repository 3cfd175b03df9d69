// The declarations tdec, fdec and cdec. Called for the statements of a section and for single
// statements; the types are read by ptypes.cpp.
#include "front/pdecs.h"

#include <cstdlib>
#include <memory>
#include <new>
#include <string>

#include "core/needs.h"
#include "core/symbols.h"
#include "core/trees.h"
#include "front/notes.h"
#include "front/parse.h"
#include "front/putils.h"
#include "front/source.h"
#include "platform/response.h"

namespace velora {

namespace {

struct FreeType {
  void operator()(top_node *t) const { free_type_tree(t); }
};
using TypeTree = std::unique_ptr<top_node, FreeType>;

// A record of a symbol: it is given back with std::free when the symbol goes.
template <typename Block> Block *new_block() {
  void *memory = std::calloc(1, sizeof(Block));
  if (memory == nullptr)
    error_exit("Alloc failed");
  return new (memory) Block{};
}

struct FreeBlock {
  void operator()(void *block) const { std::free(block); }
};
template <typename Block> using OwnedBlock = std::unique_ptr<Block, FreeBlock>;

symbol *token_symbol() {
  return find_symbol(pp_str_val, static_cast<std::size_t>(pp_str_len));
}

// Says why a name that a failed type declaration left behind cannot be used.
void note_kindless(const symbol *s) {
  if (s != nullptr && s->stype == kKindless)
    show_note("note: a failed declaration left this name without a kind; it is free again when "
              "the database is closed");
}

int give_enum_kind(symbol *s, SymbolKind kind) {
  s->b.en = new_block<enum_block>();
  s->stype = kind;
  pp_get_token();
  return 1;
}

int give_typeop_kind(symbol *s, const std::string &name) {
  if (pp_get_token() != kTokInteger || pp_int_val >= 256)
    return report_error(name, "valid type op arity");
  s->b.tp = new_block<top_block>();
  s->b.tp->arity = static_cast<std::uint8_t>(pp_int_val);
  s->stype = kTypeOp;
  pp_get_token();
  return 1;
}

// A function or constructor declaration as it is read.
struct Declaration {
  std::string name;
  bool function;
  symbol *old = nullptr; // the entry that is declared again
  int given_arity = -1;
  int arrows = 0;
  TypeTree types;
};

// Checks the name against what is declared already.
int check_name(Declaration &d) {
  d.old = find_symbol(d.name.c_str(), d.name.size());
  if (d.old == nullptr)
    return 1;
  const std::uint8_t bit = d.function ? kFunctionBit : kConstructorBit;
  if ((d.old->stype & bit) == 0) {
    report_error(d.name, "not a defined type name");
    note_kindless(d.old);
    return 0;
  }
  if ((d.old->stype & kBuiltinBit) != 0 || d.old->stype == kSysFunction)
    return report_error(d.name, "non built-in");
  return 1;
}

// The arity literal of a function; a negative one counts as absent.
int read_arity(Declaration &d) {
  if (!d.function || pp_token != kTokInteger)
    return 1;
  if (pp_int_val >= 256)
    return report_error(d.name, "valid function arity");
  d.given_arity = pp_int_val;
  pp_get_token();
  return 1;
}

// True for the bare name of an enumerated type; `sort` receives its symbol.
bool is_constant_type(const top_node *types, symbol **sort) {
  if (types->top_code != kTypeUser || (types->tnu.u.s->stype & kEnumBit) == 0)
    return false;
  *sort = types->tnu.u.s;
  return true;
}

int read_types(Declaration &d) {
  d.types.reset(p_tspecs(&d.arrows));
  if (!d.types) {
    report_error(d.name, "type specification");
    note_invalid_type();
    return 0;
  }
  symbol *sort = nullptr;
  if (!d.function && is_constant_type(d.types.get(), &sort) && sort->stype == kBuiltinEnum)
    return report_error(d.name, "no more Constructors of this type");
  if (pp_token != kTokEnd)
    return report_error(d.name, ";");
  return 1;
}

// The same signature again: a function loses its clauses, a constructor stays as it is.
void declare_again(symbol *s) {
  if ((s->stype & kFunctionBit) == 0)
    return;
  // A file that is read again goes on with the clauses; who types is told.
  if (s->b.fc->defs != nullptr && reading_console())
    advise(Note::clauses_lost,
           {s->name, counted(static_cast<std::size_t>(clause_count(s->b.fc)), "clause")});
  free_function_defs(s->b.fc);
  s->b.fc->max_var = -1;
}

void enter_function(symbol *s, Declaration &d, OwnedBlock<func_block> fc) {
  fc->name = s->name;
  fc->types = d.types.release();
  fc->arity = static_cast<std::uint8_t>(d.given_arity >= 0 ? d.given_arity : d.arrows);
  fc->max_var = -1;
  s->b.fc = fc.release();
  s->stype = d.given_arity >= 0 ? kDbFunction : kFunction;
}

// Appends a constant to the values of its type.
void append_value(enum_block *values, symbol *constant) {
  if (values->head == nullptr)
    values->head = constant;
  else
    values->tail->b.cs->link = constant;
  values->tail = constant;
}

void enter_constructor(symbol *s, Declaration &d, OwnedBlock<cons_block> cs) {
  symbol *sort = nullptr;
  const bool constant = is_constant_type(d.types.get(), &sort);
  cs->name = s->name;
  cs->types = d.types.release();
  cs->arity = static_cast<std::uint8_t>(d.arrows);
  s->b.cs = cs.release();
  s->stype = kConstructor;
  if (constant)
    append_value(sort->b.en, s);
}

int enter(Declaration &d) {
  OwnedBlock<func_block> fc(d.function ? new_block<func_block>() : nullptr);
  OwnedBlock<cons_block> cs(d.function ? nullptr : new_block<cons_block>());
  symbol *s = insert_symbol(d.name.c_str(), d.name.size());
  if (s == nullptr)
    return report_error(d.name, "new symbol");
  if (d.function)
    enter_function(s, d, std::move(fc));
  else
    enter_constructor(s, d, std::move(cs));
  return 1;
}

} // namespace

int p_tdec() {
  const bool is_name = pp_token == kTokName;
  const std::string name = is_name ? pp_start : "";
  const symbol *old = is_name ? token_symbol() : nullptr;
  if (old != nullptr && (old->stype & (kFunctionBit | kConstructorBit)) != 0)
    return report_error(name, "non-function name");
  symbol *s = nullptr;
  if (is_name)
    s = insert_symbol(pp_str_val, static_cast<std::size_t>(pp_str_len));
  if (s == nullptr) {
    report_error(name, "new symbol");
    note_kindless(is_name ? token_symbol() : nullptr);
    return 0;
  }
  // Kept: from here on a failed declaration leaves its name in the table without a kind.
  if (pp_get_token() != kTokDefine)
    return report_error(name, "::=");
  switch (pp_get_token()) {
  case kTokTypeop:
    return give_typeop_kind(s, name);
  case kTokEnum:
    return give_enum_kind(s, kEnumType);
  case kTokNonlex:
    return give_enum_kind(s, kNonlexType);
  default:
    report_error(name, "meta type symbol");
    advise(Note::values_of_type, {name, pp_token == kTokName ? pp_start : "VALUE", name});
    return 0;
  }
}

int p_f_or_c_dec(int dec_token) {
  if (pp_token != kTokName)
    return report_error("", "function or constructor symbol");
  Declaration d{{pp_str_val, static_cast<std::size_t>(pp_str_len)},
                dec_token == kTokFdec,
                nullptr,
                -1,
                0,
                nullptr};
  if (check_name(d) == 0)
    return 0;
  pp_get_token();
  if (read_arity(d) == 0)
    return 0;
  if (pp_token != kTokDefine)
    return report_error(d.name, "::=");
  pp_get_token();
  if (read_types(d) == 0)
    return 0;
  if (d.old != nullptr) {
    const top_node *types = d.function ? d.old->b.fc->types : d.old->b.cs->types;
    if (equal_type_tree(types, d.types.get()) != 0) {
      declare_again(d.old);
      return 1;
    }
  }
  return enter(d);
}

int clause_count(const func_block *fc) {
  int count = 0;
  for (const defs_link *group = fc->defs; group != nullptr; group = group->next)
    for (const rhs_link *clause = group->defs; clause != nullptr; clause = clause->next)
      ++count;
  return count;
}

} // namespace velora
