// The notes beside an answer that could not be reduced: what the first call that stayed lacks. The
// printing tells of such calls while it goes through the answer; the innermost one that is met
// first is looked at, since those around it wait for it. Its words are kept as texts, for the
// terms may be gone when the answer has been printed.
#include "shell/answer_notes.h"

#include <algorithm>
#include <string>
#include <vector>

#include "core/needs.h"
#include "core/print.h"
#include "core/trees.h"
#include "db/term_text.h"
#include "eval/help.h"
#include "eval/registry.h"
#include "front/cint.h"
#include "front/infer.h"
#include "front/notes.h"
#include "platform/response.h"

namespace velora {

int gAnswerNotes = 0;
int gAnswersLeft = 0;

namespace {

// The notes of the answer that is being printed.
struct KeptNote {
  Note which;
  std::vector<std::string> words;
};
std::vector<KeptNote> kept;
bool met = false;

// A call as it stands: its head and its arguments, the last of which may stand apart.
struct Call {
  const node *head = nullptr;
  std::vector<const node *> arguments;
};

Call call_of(const node *function_part, const node *last) {
  Call call;
  if (last != nullptr)
    call.arguments.push_back(last);
  const node *n = function_part;
  for (; n != nullptr && is_apply(n); n = n->val.a.a1)
    call.arguments.push_back(n->val.a.a2);
  std::reverse(call.arguments.begin(), call.arguments.end());
  call.head = n;
  return call;
}

bool is_function(const node *n) {
  return n != nullptr && (n->type == kBuiltin || n->type == kFunctionNode);
}

const func_block *block_of(const node *head) {
  return head->type == kBuiltin ? head->val.bi.fc : head->val.fc;
}

// How many arguments the head takes before it can do anything.
std::size_t wanted_by(const node *head) {
  if (head->type == kBuiltin)
    return static_cast<std::size_t>(bi_funcs_table[head->val.bi.id].arity.least);
  return head->val.fc->arity;
}

// Whether a call that has all the arguments of its declaration gives something that takes no more.
bool gives_a_value(const top_node *types) {
  while (types != nullptr && types->top_code == kTypeArrow)
    types = types->tnu.bia[1] != nullptr ? types->tnu.bia[1] : types->tnu.bia[0];
  return types != nullptr && (types->top_code & kTypeVariable) == 0 && types->top_code != kTypeSym;
}

void keep(Note which, std::vector<std::string> words) {
  kept.push_back({which, std::move(words)});
}

void keep_count(Note note, const std::string &name, std::size_t wanted, std::size_t has) {
  keep(note, {name, counted(wanted, "argument"), std::to_string(has)});
}

// --- the clause that is nearest ----------------------------------------------------------------

const node *part_of_clause(const node *list, std::uint32_t mask) {
  const auto *at = reinterpret_cast<const choice_node *>(list);
  while (at != nullptr && (at->mask & mask) == 0)
    at = at->next;
  return at == nullptr ? nullptr : &at->n;
}

// Whether the term, as far as it is reduced, has the shape of the pattern.
bool has_shape(const node *pattern, std::uint32_t mask, const node *term) {
  const node *p = part_of_clause(pattern, mask);
  if (p == nullptr || term == nullptr || p->type == kVariable)
    return true;
  if (!is_apply(p))
    return !is_apply(term) && equal_node(p, term) != 0;
  return is_apply(term) && has_shape(p->val.a.a1, mask, term->val.a.a1) &&
         has_shape(p->val.a.a2, mask, term->val.a.a2);
}

// How many of the arguments fit the clause's patterns.
std::size_t fitting(const defs_link *group, std::uint32_t mask, const Call &call) {
  std::vector<const node *> patterns;
  const node *n = part_of_clause(reinterpret_cast<const node *>(group->lhs_tree), mask);
  for (; n != nullptr && is_apply(n); n = part_of_clause(n->val.a.a1, mask))
    patterns.push_back(n->val.a.a2);
  std::reverse(patterns.begin(), patterns.end());
  std::size_t count = 0;
  for (std::size_t i = 0; i < patterns.size() && i < call.arguments.size(); ++i)
    count += has_shape(patterns[i], mask, call.arguments[i]) ? 1 : 0;
  return count;
}

// The head of the clause that fits most arguments; of several the first.
std::string nearest_clause(const Call &call) {
  constexpr int kMostGroups = 64;
  std::string nearest;
  std::size_t best = 0;
  int groups = 0;
  for (const defs_link *group = call.head->val.fc->defs; group != nullptr && groups < kMostGroups;
       group = group->next, ++groups) {
    std::uint32_t mask = 1;
    for (const rhs_link *clause = group->defs; clause != nullptr; clause = clause->next) {
      const std::size_t fits = fitting(group, mask, call);
      if (nearest.empty() || fits > best) {
        best = fits;
        nearest.clear();
        fprint_lhs_args(nearest, group->lhs_tree, mask, ' ');
      }
      mask <<= 1;
    }
  }
  nearest.erase(nearest.find_last_not_of(' ') + 1);
  return nearest;
}

// --- what a call lacks -------------------------------------------------------------------------

void keep_type_clash(const node *function_part, const node *last) {
  const TypeFinding finding = type_of_call(function_part, last);
  if (!finding.fits && !finding.clash.function.empty())
    keep(Note::argument_type, {std::to_string(finding.clash.argument), finding.clash.function,
                               finding.clash.wanted, finding.clash.found});
}

void keep_joined_lines() {
  const std::size_t end = gQuery.find_last_not_of(" \t\n");
  if (end != std::string::npos && gQuery.find('\n') < end)
    keep(Note::lines_joined, {});
}

// Of a call that has all its arguments.
void look_at(const Call &call, const node *function_part, const node *last) {
  const func_block *fc = block_of(call.head);
  const std::string name = leaf_text(call.head);
  const std::size_t declared = wanted_by(call.head);
  if (call.head->type == kFunctionNode && fc->defs == nullptr)
    return keep(Note::no_clauses, {name});
  if (call.arguments.size() > declared && gives_a_value(fc->types)) {
    keep_count(Note::too_many, name, declared, call.arguments.size());
    return keep_joined_lines();
  }
  keep_type_clash(function_part, last);
  const HelpRow *row = find_help(name);
  if (call.head->type == kFunctionNode && (row == nullptr || row->refuses == nullptr))
    return keep(Note::no_clause_fits, {name, nearest_clause(call)});
  if (row != nullptr && row->refuses != nullptr)
    keep(Note::left_as_it_stands, {name, row->refuses});
}

} // namespace

void begin_answer() {
  kept.clear();
  met = false;
}

void whole_answer_stays(const node *root) {
  const Call call = call_of(root, nullptr);
  if (is_function(call.head) && call.arguments.empty()) {
    if (call.head->type == kFunctionNode && block_of(call.head)->defs == nullptr &&
        wanted_by(call.head) == 0) {
      met = true;
      keep(Note::no_clauses, {leaf_text(call.head)});
    }
  } else if (is_function(call.head) && call.arguments.size() < wanted_by(call.head)) {
    met = true;
    keep_count(Note::too_few, leaf_text(call.head), wanted_by(call.head), call.arguments.size());
  }
}

void call_stays(const node *function_part, const node *last, bool last_stays) {
  if (met)
    return;
  const Call call = call_of(function_part, last);
  if (call.head != nullptr && call.head->type >= kInteger && call.head->type <= kString) {
    met = true;
    keep(Note::no_function, {leaf_text(call.head)});
    return keep_joined_lines();
  }
  if (!is_function(call.head) || call.arguments.size() < wanted_by(call.head))
    return;
  if (last_stays) {
    const Call inner = call_of(last, nullptr);
    if (is_function(inner.head) && !inner.arguments.empty() &&
        inner.arguments.size() >= wanted_by(inner.head))
      return; // the call waits for its last argument, which is told of next
  }
  met = true;
  look_at(call, function_part, last);
}

void end_answer() {
  gAnswersLeft += met ? 1 : 0;
  for (const KeptNote &note : kept)
    if (gAnswerNotes != 0)
      advise(note.which, note.words);
  kept.clear();
}

} // namespace velora
