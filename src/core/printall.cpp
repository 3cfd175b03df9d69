// The diagnostic dump of symbols: kinds, types, decision trees and bodies; and the text of type
// specifications, which the database writer uses too.

#include "core/events.h"
#include "core/print.h"
#include "core/symbols.h"
#include "core/trees.h"
#include "platform/response.h"

namespace velora {

namespace {

const char *basic_type_name(std::uint8_t code) {
  switch (code) {
  case kTypeInt:
    return "int";
  case kTypeChar:
    return "char";
  case kTypeReal:
    return "real";
  case kTypeStr:
    return "str";
  case kTypeLstr:
    return "lstr";
  case kTypeSym:
    return "sym";
  default:
    return "unknown-typeop";
  }
}

bool is_user_application(const top_node *tn) {
  return (tn->top_code & kTypeVariable) == 0 && (tn->top_code & kTypeUser) != 0 &&
         type_arg_count(tn) > 0;
}

// An argument that is itself an application stands in parentheses, so that it reads back.
void buffer_type_argument(std::string &buf, const top_node *tn) {
  buf += ' ';
  if (tn != nullptr && is_user_application(tn)) {
    buf += '(';
    buffer_tspec(buf, tn);
    buf += ')';
  } else {
    buffer_tspec(buf, tn);
  }
}

void print_function(const func_block *fc) {
  orvek_printf("FUNCTION arity:%d, max_var:%d\nTYPES: ", fc->arity, fc->max_var);
  orvek_print(tspecs_text(fc->types));
  orvek_print("\nDEFS:");
  for (const defs_link *group = fc->defs; group != nullptr; group = group->next) {
    orvek_print("\n");
    print_lhs_tree(group->lhs_tree);
    int number = 1;
    for (const rhs_link *clause = group->defs; clause != nullptr; clause = clause->next) {
      orvek_printf("\n%d:", number++);
      print_node(clause->rhs);
      orvek_print("\t");
      print_node(clause->original);
    }
  }
  orvek_print("\nEND-DEFS\n");
}

void print_enumeration(const symbol *sym) {
  orvek_print("ENUM\n\t");
  print_enum_vals(sym->b.en->head);
  orvek_print("\nEND_ENUM.");
}

void print_definition(const symbol *sym) {
  switch (sym->stype & kKindMask) {
  case kConstructor:
    orvek_printf("CONSTRUCTOR arity:%d TYPES: ", sym->b.cs->arity);
    orvek_print(tspecs_text(sym->b.cs->types));
    orvek_print("\n");
    break;
  case kTypeOp:
    orvek_printf("TYPEOP %d.", sym->b.tp->arity);
    break;
  case kNonlexType:
    orvek_print("NONLEX ");
    print_enumeration(sym);
    break;
  case kEnumType:
    print_enumeration(sym);
    break;
  case kDbFunction:
    orvek_print("DB ");
    print_function(sym->b.fc);
    break;
  case kFunction:
    print_function(sym->b.fc);
    break;
  default:
    orvek_print("UNKNOWN !!!!");
  }
}

void print_entry(const symbol *sym) {
  CheckForUserEvents(0);
  orvek_printf("\n*** %s : ", sym->name);
  if ((sym->stype & kBuiltinBit) != 0)
    orvek_print("BUILT-IN ");
  if ((sym->stype & kSystemBit) != 0)
    orvek_print("SYSTEM ");
  print_definition(sym);
}

} // namespace

void print_all() {
  for (const symbol *sym = Symbol_table; sym != nullptr; sym = sym->next)
    print_entry(sym);
}

int print_symbol(const char *name) {
  const symbol *sym = find_symbol(name, 0);
  if (sym == nullptr)
    return 0;
  print_entry(sym);
  return 1;
}

void print_enum_vals(symbol *head) {
  for (const symbol *value = head; value != nullptr; value = value->b.cs->link)
    orvek_printf(" %s", value->name);
}

void print_lhs_tree(const choice_node *lhs) {
  check_stack();
  for (const choice_node *alternative = lhs; alternative != nullptr;
       alternative = alternative->next) {
    if (alternative != lhs)
      orvek_print("OR ");
    if (is_apply(&alternative->n)) {
      orvek_printf(" (@#%u", alternative->mask);
      print_lhs_tree(choice_list(alternative->n.val.a.a1));
      print_lhs_tree(choice_list(alternative->n.val.a.a2));
      orvek_print(") ");
    } else {
      orvek_print(leaf_text(&alternative->n));
      orvek_printf("#%u", alternative->mask);
    }
  }
}

void buffer_tspecs(std::string &buf, const top_node *tn) {
  if (tn == nullptr || tn->top_code != kTypeArrow) {
    buffer_tspec(buf, tn);
    return;
  }
  for (const top_node *cell = tn; cell != nullptr; cell = cell->tnu.bia[1]) {
    if (cell != tn)
      buf += "->";
    buffer_tspec(buf, cell->tnu.bia[0]);
  }
}

void buffer_tspec(std::string &buf, const top_node *tn) {
  check_stack();
  if (tn == nullptr)
    return;
  if ((tn->top_code & kTypeVariable) != 0) {
    buf += format_text("?%d", tn->top_code & 0x7F);
  } else if ((tn->top_code & kTypeUser) != 0) {
    buf += tn->tnu.u.s->name;
    for (unsigned i = 0; i < type_arg_count(tn); ++i)
      buffer_type_argument(buf, tn->tnu.u.ua[i]);
    if (type_arg_count(tn) > 0)
      buf += ' ';
  } else if (tn->top_code == kTypeArrow) {
    buf += '(';
    buffer_tspecs(buf, tn);
    buf += ')';
  } else {
    buf += basic_type_name(tn->top_code);
  }
}

std::string tspecs_text(const top_node *tn) {
  std::string text;
  buffer_tspecs(text, tn);
  return text;
}

symbol *GetSymbolOutput(const top_node *tn) {
  while (tn != nullptr && tn->top_code == kTypeArrow)
    tn = tn->tnu.bia[1] != nullptr ? tn->tnu.bia[1] : tn->tnu.bia[0];
  if (tn == nullptr || (tn->top_code & kTypeVariable) != 0 || (tn->top_code & kTypeUser) == 0)
    return nullptr;
  return tn->tnu.u.s;
}

} // namespace velora
