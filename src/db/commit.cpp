// Writes the sections of a database file into memory. The layout, double blanks included, is the
// file format: other programs and older copies of databases rely on it.
#include "db/commit.h"

#include "core/events.h"
#include "core/print.h"
#include "core/second_names.h"
#include "core/symbols.h"
#include "db/term_text.h"
#include "platform/response.h"

namespace velora {

namespace {

constexpr std::string_view kHeadIndent = "  ";
constexpr std::string_view kBodyIndent = "      ";

void write_tdec(std::string &f, const symbol &s) {
  if (is_second_name(&s))
    return;
  if (s.stype == kTypeOp)
    f += format_text("\t%s ::= typeop #%d ;\n", s.name, s.b.tp->arity);
  else if (s.stype == kEnumType)
    f += format_text("\t%s ::= enum ;\n", s.name);
  else if (s.stype == kNonlexType)
    f += format_text("\t%s ::= nonlex ;\n", s.name);
}

// Names and types can be longer than any format buffer, so lines are put together.
void write_signature(std::string &f, const char *name, const std::string &arity,
                     const top_node *types) {
  f += '\t';
  f += name;
  f += arity;
  f += " ::= ";
  f += tspecs_text(types);
  f += " ;\n";
}

template <class WriteSymbol>
void write_section(std::string &f, const char *heading, WriteSymbol write_one) {
  f += heading;
  for (const symbol *s = Symbol_table; s != nullptr; s = s->next)
    write_one(*s);
  f += ";\n";
}

void write_group(std::string &f, const defs_link &group, bool &reads_back) {
  std::string head;
  std::string body;
  std::uint32_t mask = 1;
  for (const rhs_link *clause = group.defs; clause != nullptr; clause = clause->next, mask <<= 1) {
    head.clear();
    body.clear();
    const bool good_head = fprint_lhs_args(head, group.lhs_tree, mask, ' ');
    const bool good_body = fprint_args(body, clause->original, ' ');
    fprint_tf(f, head, body, kHeadIndent, kBodyIndent, ' ');
    reads_back = reads_back && good_head && good_body;
  }
}

// A second name, also one of a built-in, is saved as a function whose one clause is the first name.
bool is_second_function(const symbol &s) {
  return (s.stype & kFunctionBit) != 0 && s.name != s.b.fc->name;
}

void write_second_name(std::string &f, const symbol &s) {
  fprint_tf(f, std::string(s.name) + ' ', std::string(s.b.fc->name) + ' ', kHeadIndent, kBodyIndent,
            ' ');
}

// Second names of constructors and types have no clause to stand for them.
void warn_of_second_names() {
  for (const symbol *s = Symbol_table; s != nullptr; s = s->next)
    if (is_second_name(s) && (s->stype & kFunctionBit) == 0)
      BeepMsgef(0, "Warning: %s is a second name and is not saved\n", s->name);
}

void write_clauses(std::string &f, const symbol &s) {
  if (is_second_function(s)) {
    write_second_name(f, s);
    return;
  }
  if (s.stype != kFunction && s.stype != kDbFunction)
    return;
  CheckForUserEvents(800);
  bool reads_back = true;
  for (const defs_link *group = s.b.fc->defs; group != nullptr; group = group->next)
    write_group(f, *group, reads_back);
  if (!reads_back)
    BeepMsgef(0, "Warning: a clause of %s holds a text or character that cannot be read back\n",
              s.name);
}

} // namespace

void write_tdecs(std::string &f) {
  write_section(f, "tdec\n", [&f](const symbol &s) { write_tdec(f, s); });
}

void write_cdecs(std::string &f) {
  write_section(f, "cdec\n", [&f](const symbol &s) {
    if (s.stype == kConstructor && !is_second_name(&s))
      write_signature(f, s.name, "", s.b.cs->types);
  });
}

void write_fdecs(std::string &f) {
  write_section(f, "fdec\n", [&f](const symbol &s) {
    if (s.stype == kFunction || (is_second_function(s) && s.stype != kDbFunction))
      write_signature(f, s.name, "", s.b.fc->types);
  });
}

void write_db_fdecs(std::string &f) {
  write_section(f, "fdec\n", [&f](const symbol &s) {
    if (s.stype == kDbFunction)
      write_signature(f, s.name, format_text(" #%d", s.b.fc->arity), s.b.fc->types);
  });
}

void write_fdefs(std::string &f) {
  write_section(f, "fdef\n", [&f](const symbol &s) { write_clauses(f, s); });
}

std::string database_text() {
  std::string f;
  write_tdecs(f);
  write_cdecs(f);
  write_fdecs(f);
  write_db_fdecs(f);
  write_fdefs(f);
  warn_of_second_names();
  return f;
}

} // namespace velora
