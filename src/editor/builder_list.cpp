// The builder's symbol list and its parser. Only the tokenizer is shared with the language: no
// symbol of the language's table is looked at, made or changed here.
#include "core/events.h"
#include "core/needs.h"
#include "editor/builder_records.h"
#include "front/putils.h"
#include "front/source.h"
#include "platform/response.h"

namespace velora {

namespace {

constexpr std::size_t kLongestName = 255;
constexpr int kHighestArity = 255;

std::string key_of(std::string_view name, int type) {
  return std::to_string(type) + ' ' + std::string(name);
}

bool is_digits(std::string_view text) {
  return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

// Goes on to the end of an entry that failed, so that the next one begins with its own name.
int skip_entry() {
  while (pp_token != kTokEnd) {
    CheckForUserEvents(0);
    pp_get_token();
  }
  return 0;
}

// An integer literal from 0 to 255 that is nothing but that.
bool valid_arity() {
  return pp_token == kTokInteger && is_digits(pp_start + 1) && pp_int_val >= 0 &&
         pp_int_val <= kHighestArity;
}

} // namespace

jsymbol *J_insert_symbol(Build &build, std::string_view name, int type) {
  const std::string kept(name.substr(0, kLongestName));
  jsymbol *&latest = build.latest[key_of(kept, type)];
  if (latest != nullptr && type != kTokFdef)
    return nullptr;
  jsymbol &entry = build.jSymbol_table.emplace_back();
  entry.name = kept;
  entry.stype = type;
  if (type == kTokFdef)
    entry.fdef.occurence = build.clause_count[kept]++;
  latest = &entry;
  return latest;
}

jsymbol *J_find_symbol(Build &build, std::string_view name, int type) {
  const auto found = build.latest.find(key_of(name.substr(0, kLongestName), type));
  return found == build.latest.end() ? nullptr : found->second;
}

const jsymbol *declaration_of(Build &build, const std::string &function) {
  return J_find_symbol(build, function, kTokFdec);
}

int J_parse_error(const char *fun, const char *token_required) {
  ++gParseErrors;
  orvek_errorf("Error (%s):  %s found when %s expected\n", fun, pp_start, token_required);
  show_note(format_text("note: line %ld of %s", pp_line_number(), pp_source_name().c_str()));
  return 0;
}

std::string token_text() {
  std::string text(pp_start);
  if (pp_token == kTokString)
    text += '"';
  return text;
}

int process_t_dec(Build &build) {
  constexpr const char *kTag = "P_T_DEC";
  if (pp_token != kTokName || J_find_symbol(build, pp_start, kTokTdec) != nullptr)
    return J_parse_error(kTag, "new symbol");
  const std::string name = pp_start;
  if (pp_get_token() != kTokDefine)
    return J_parse_error(kTag, "::=");
  pp_get_token();
  tdec_block type{pp_start, name + " ::= " + pp_start};
  if (pp_token == kTokTypeop) {
    pp_get_token();
    if (!valid_arity())
      return J_parse_error(kTag, "valid type op arity");
    type.text += format_text(" #%d", pp_int_val);
  } else if (pp_token == kTokEnd) {
    return J_parse_error(kTag, "meta type symbol"); // as the language says it
  }
  if (pp_get_token() != kTokEnd)
    return J_parse_error(kTag, "T_END");
  J_insert_symbol(build, name, kTokTdec)->tdec = std::move(type);
  return 1;
}

// Arrows in brackets belong to a group: the type of an argument that is a function.
int process_f_or_c_dec(Build &build, int type) {
  constexpr const char *kTag = "P_FC_DEC";
  if (pp_token != kTokName || J_find_symbol(build, pp_start, type) != nullptr) {
    J_parse_error(kTag, "new symbol");
    return skip_entry();
  }
  const std::string name = pp_start;
  pp_get_token();
  if (type == kTokFdec && valid_arity())
    pp_get_token(); // "f #2 ::= ..." fixes the number of arguments
  if (pp_token != kTokDefine) {
    J_parse_error(kTag, "::=");
    return skip_entry();
  }
  std::vector<cfdec_block> groups(1);
  int depth = 0;
  for (pp_get_token(); pp_token != kTokEnd; pp_get_token()) {
    CheckForUserEvents(0);
    depth += pp_token == kTokOpen ? 1 : pp_token == kTokClose ? -1 : 0;
    std::string &group = groups.back().param;
    if (pp_token == kTokArrow && depth <= 0)
      groups.emplace_back();
    else
      group += (group.empty() ? "" : " ") + token_text();
  }
  // A declaration lacks its result when nothing stands behind the last arrow.
  if (groups.back().param.empty())
    return J_parse_error(kTag, "a type");
  jsymbol *entry = J_insert_symbol(build, name, type);
  entry->cfdec.push_back(std::move(groups.back()));
  groups.pop_back();
  for (cfdec_block &group : groups)
    entry->cfdec.push_back(std::move(group));
  return 1;
}

namespace {

// The item of the current token.
fdef_block *J_make_item(Build &build) {
  build.items.push_back({pp_start, pp_token, false, {}});
  return &build.items.back();
}

// Moves to the next token of a clause; the clause's text grows by the one that is left.
void next_of_clause(fdef_header_block &clause) {
  CheckForUserEvents(0);
  const bool close = pp_token == kTokClose || pp_token == kTokCloseList;
  const bool apart =
      !clause.text.empty() && !close && !clause.text.ends_with('(') && !clause.text.ends_with('[');
  clause.text += (apart ? " " : "") + token_text();
  pp_get_token();
}

// Gathers a pattern in brackets into one item: its tokens joined by "~", brackets inside kept.
// The token behind the pattern is current afterwards. Null when the clause ends before it does.
fdef_block *gather_pattern(Build &build, fdef_header_block &clause) {
  fdef_block item{"", kTokString, true, {}};
  bool apart = false;
  next_of_clause(clause);
  for (int depth = 0; pp_token != kTokClose || depth > 0; next_of_clause(clause)) {
    if (pp_token == kTokEnd || pp_token == kTokDefine)
      return nullptr;
    depth += pp_token == kTokOpen ? 1 : pp_token == kTokClose ? -1 : 0;
    item.name += (apart && pp_token != kTokClose ? "~" : "") + token_text();
    apart = pp_token != kTokOpen;
  }
  next_of_clause(clause);
  build.items.push_back(std::move(item));
  return &build.items.back();
}

bool ends_level() {
  return pp_token == kTokEnd || pp_token == kTokClose;
}

bool is_leaf_token() {
  return pp_token == kTokInteger || pp_token == kTokCharacter || pp_token == kTokRealLit ||
         pp_token == kTokString || pp_token == kTokVariable || pp_token == kTokName;
}

// The expression in brackets that opens here; the token behind its bracket is current afterwards.
fdef_block *bracketed(Build &build, fdef_header_block &clause) {
  next_of_clause(clause);
  fdef_block *inside = J_p_expression(build, clause);
  if (pp_token == kTokClose)
    next_of_clause(clause);
  else
    J_parse_error("P_F_DEF", "T_CLOSE");
  return inside;
}

// A child of a head: a leaf or an expression in brackets. Anything else is reported and left out.
fdef_block *next_child(Build &build, fdef_header_block &clause) {
  if (pp_token == kTokOpen)
    return bracketed(build, clause);
  fdef_block *leaf = nullptr;
  if (is_leaf_token())
    leaf = J_make_item(build);
  else
    J_parse_error("P_F_DEF", "Known item"); // the guard will tell what the picture lacks
  next_of_clause(clause);
  return leaf;
}

} // namespace

fdef_block *J_p_expression(Build &build, fdef_header_block &clause) {
  check_stack();
  if (ends_level()) {
    J_parse_error("P_F_DEF", "Known item");
    return nullptr;
  }
  fdef_block *head = nullptr;
  if (pp_token == kTokOpen) {
    head = bracketed(build, clause);
  } else {
    head = J_make_item(build);
    next_of_clause(clause);
  }
  while (!ends_level()) {
    fdef_block *child = next_child(build, clause);
    if (head == nullptr)
      head = child; // what stood in its place was left out
    else if (child != nullptr)
      head->params.push_back(child);
  }
  return head;
}

int process_f_def(Build &build) {
  constexpr const char *kTag = "P_F_DEF";
  if (J_find_symbol(build, pp_start, kTokFdec) == nullptr)
    return J_parse_error(kTag, "a symbol declared in the fdec's");
  jsymbol *entry = J_insert_symbol(build, pp_start, kTokFdef);
  fdef_header_block &clause = entry->fdef;
  next_of_clause(clause);
  while (pp_token != kTokDefine) {
    if (pp_token == kTokEnd)
      return J_parse_error(kTag, "::=");
    fdef_block *item = nullptr;
    if (pp_token == kTokOpen) {
      item = gather_pattern(build, clause);
    } else {
      item = J_make_item(build);
      next_of_clause(clause);
    }
    if (item == nullptr)
      return J_parse_error(kTag, "T_CLOSE");
    clause.lhs.push_back(item);
  }
  next_of_clause(clause);
  clause.rhs = J_p_expression(build, clause);
  if (clause.rhs == nullptr)
    return 0;
  return pp_token == kTokEnd ? 1 : J_parse_error(kTag, "T_END");
}

namespace {

struct Section {
  int token;
  const char *progress;
};
constexpr Section kSections[] = {{kTokTdec, "Parsing tdecs\n"},
                                 {kTokCdec, "Parsing cdecs\n"},
                                 {kTokFdec, "Parsing fdecs\n"},
                                 {kTokFdef, "Parsing fdefs\n"}};

int process_entry(Build &build, int section) {
  switch (section) {
  case kTokTdec:
    return process_t_dec(build);
  case kTokFdef:
    return process_f_def(build);
  default:
    process_f_or_c_dec(build, section);
    return 1; // reported, and reading goes on
  }
}

const Section *heading() {
  for (const Section &section : kSections)
    if (section.token == pp_token)
      return &section;
  return nullptr;
}

} // namespace

int read_sections(Build &build) {
  while (pp_get_token() != kTokEnd) {
    const Section *section = heading();
    if (section == nullptr) {
      DisplayResponsef("Got %d = Invalid section heading\n", pp_token);
      return 0;
    }
    DisplayResponse(section->progress);
    while (pp_get_token() != kTokEnd) {
      CheckForUserEvents(0);
      if (process_entry(build, section->token) == 0)
        error_exit("Malformed line !");
    }
  }
  if (pp_at_end != 0)
    return 1;
  // A lone semicolon ends the reading when nothing follows it.
  pp_get_token();
  if (pp_at_end != 0)
    return 1;
  DisplayResponsef("Got %d = Invalid section heading\n", kTokEnd);
  return 0;
}

} // namespace velora
