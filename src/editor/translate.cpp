// The commands of translation: what is declared, defined and run, in which order, and what is told.
#include "editor/translate.h"

#include <algorithm>
#include <map>

#include "core/print.h"
#include "core/symbols.h"
#include "editor/clause_form.h"
#include "editor/draw.h"
#include "editor/hand/faults.h"
#include "editor/model/vel_segs.h"
#include "editor/model/wininfo.h"
#include "editor/picture_walk.h"
#include "editor/vel_cmp.h"
#include "editor/vel_type.h"
#include "front/cint.h"
#include "platform/answer_hint.h"
#include "platform/desktop.h"
#include "platform/response.h"

namespace velora {

Translation gTranslation;

namespace {

constexpr int kYes = 1;

// The values that the user gave for the inputs of pictures, by picture and number of the input.
std::map<std::pair<std::string, std::size_t>, std::string> given_values;

// The stored picture that a window's clean record is a copy of, or the record itself when nothing
// was ever drawn in it.
bool nothing_to_save(const WinInfo *wi) {
  if (wi->saved == 1)
    return true;
  if (wi->clean == 0 || wi->win == 0)
    return false;
  return FindStoredPicture(wi->name, wi->cmpnt) != nullptr;
}

// The clause of the text that has the same left side as a translated one, up to the names of
// variables; empty when there is none.
std::string standing_clause(const std::string &name, const std::string &clause) {
  const symbol *sym = find_symbol(name.c_str(), 0);
  if (sym == nullptr || (sym->stype != kFunction && sym->stype != kDbFunction))
    return {};
  for (const std::string &standing : clauses_of(sym->b.fc))
    if (same_left_side(standing, clause))
      return standing;
  return {};
}

std::string head_of_clause(const std::string &clause) {
  return clause.substr(0, clause.find(" ::= "));
}

// Whether a translated clause is to be defined, and room made for it where it replaces one that is
// written with other variables: as it is, it would only stand beside that one.
enum class Definition { define, stands, refused };
Definition settle_with_text(const std::string &name, const Translation &t) {
  const std::string standing = standing_clause(name, t.text);
  if (standing.empty())
    return Definition::define;
  const bool other_names = exists_clause(t.lhs) == 0;
  if (same_clause(standing, t.text))
    return other_names ? Definition::stands : Definition::define;
  if (t.asks) {
    DisplayResponse("The text has:\n   " + standing + "\n");
    if (PromptUser(t.lhs + " stands with another body. Replace it?", {"Yes", "No"}) != kYes)
      return Definition::refused;
  }
  if (other_names)
    deny_clause(head_of_clause(standing));
  return Definition::define;
}

int translate_function(WinInfo *wi, int newfdec, Translation &t) {
  TypeNames formals;
  if (check_for_fdec(wi, formals, newfdec, t) == 0 || function_input_check(wi, 1, t) == 0)
    return 0;
  t.tell("Formal parameters of " + wi->name + " are:\n", kPlainText);
  for (const std::string &formal : formals)
    t.tell(formal + "\n", kPlainText);
  return get_function(wi, formals, newfdec, t);
}

// True for an input that stands for a value that the user may give.
bool is_open_input(const std::string &label, const TypeNames &formals, std::size_t i) {
  return TypeIsKnown(label) != 0 ||
         (i < formals.size() && CompareParameterStrings(label, formals[i]) == 0);
}

} // namespace

InputValues ask_values(const WinInfo *wi, const Translation &t, bool again) {
  InputValues values;
  TypeNames formals;
  get_intypes_of(wi->name, formals, 1);
  const std::vector<int> inputs = make_input_numbers(wi);
  for (std::size_t i = 0; i < inputs.size(); ++i) {
    const std::string label(label_of(wi->seg_ments[inputs[i]]));
    if (place_of(t, inputs[i]) == nullptr || !is_open_input(label, formals, i))
      continue;
    std::string &remembered = given_values[{wi->name, i}];
    if (!again && !remembered.empty()) {
      values.emplace_back(inputs[i], remembered);
      continue;
    }
    std::string answer = remembered;
    if (GetUserDialogText("Value of input " + std::to_string(i + 1) + ": " + label, answer) == 0)
      break;
    if (answer.find_first_not_of(' ') == std::string::npos || answer == kAnswerHint)
      continue;
    remembered = answer;
    values.emplace_back(inputs[i], answer);
  }
  return values;
}

void show_findings(WinInfo *wi, const Translation &t) {
  for (int slot = 1; slot <= wi->seg_ct; ++slot) {
    const Segm *seg = wi->seg_ments[slot];
    if (seg != nullptr && is_arc(seg) && (seg->status & kHighlighted) != 0)
      show_arc(wi, slot, 0);
    if (seg != nullptr && (seg->status & kExpanded) != 0)
      expand_function_segment(wi, slot, 0);
  }
  for (const int slot : t.expanded)
    expand_function_segment(wi, slot, 1);
  for (const int slot : t.selected)
    MarkItemSelection(wi, slot, 1);
  for (const int slot : t.highlighted)
    show_arc(wi, slot, 1);
  std::vector<PictureFault> faults;
  for (const PictureMessage &message : t.messages)
    if (message.level != kPlainText && message.segnum != 0)
      faults.push_back({message.segnum, message.text});
  note_faults(wi, std::move(faults));
  if (wi->win != 0)
    gDesktop->invalidate(wi->win);
}

int TranslateGraph(WinInfo *wi, int newfdec) {
  if (nothing_to_save(wi)) {
    BeepMsge("Graph already saved\n", 1);
    return 0;
  }
  return translate_picture(wi, newfdec);
}

int translate_picture(WinInfo *wi, int newfdec, bool asks) {
  gTranslation = Translation{};
  gTranslation.asks = asks;
  fdef_res = kResultSlot;
  Translation &t = gTranslation;
  int done = 0;
  if (ValidName(wi->name) != 0 && CheckJunctionLinks(wi, t) != 0)
    done =
        wi->wtype == kFunctionPicture ? translate_function(wi, newfdec, t) : get_structures(wi, t);
  show_findings(wi, t);
  if (done != 0)
    t.tell("Translated OK\n", kPlainText);
  return done;
}

int check_for_fdec(WinInfo *wi, TypeNames &inpars, int newfdec, Translation &t) {
  const symbol *old = find_symbol(wi->name.c_str(), 0);
  if (newfdec == 0 && old != nullptr && get_intypes_of(wi->name, inpars, 1) != 0)
    return 1;
  const Segm *result = wi->seg_ments[kResultSlot];
  if (result == nullptr || TypeIsKnown(std::string(label_of(result))) == 0)
    return t.tell("Unknown Output Parameter Type\n", 1, kResultSlot);
  inpars = make_input_list(wi);
  const std::string text = picture_declaration(wi);
  if (signature_of(old) == nullptr)
    old = nullptr;
  if (old != nullptr) {
    // An equal declaration would only lose the clauses.
    if (same_signature(old, text)) {
      t.tell("Good! " + wi->name + " stands declared as it is drawn\n", kPlainText);
      return 1;
    }
    const std::string question =
        wi->name + " is declared as " + tspecs_text(signature_of(old)) + ". Declare it anew?";
    if (PromptUser(question, {"Yes", "No"}) != kYes)
      return 0;
  }
  t.declaration = text;
  return create_fdec(text, wi->name.c_str(), old);
}

int get_function(WinInfo *wi, const TypeNames &fmpars, int newfdec, Translation &t) {
  if (!picture_clause(wi, fmpars, t, newfdec == 0))
    return 0;
  t.tell("Translated function:\n   " + t.text + "\n", kPlainText);
  switch (settle_with_text(wi->name, t)) {
  case Definition::refused:
    return t.tell("The clause of the text is kept\n", 1);
  case Definition::stands:
    t.tell("Good! The text has this clause already\n", kPlainText);
    return 1;
  case Definition::define:
    break;
  }
  const int defined = cint_fdef(t.text);
  // The parser has shown the name alone.
  t.tell("\n", kPlainText);
  if (defined == 0)
    return t.tell("Sorry! Unsuccessful definition for function " + wi->name + "\n", 1);
  t.tell("Good! A component of function " + wi->name + " defined\n", kPlainText);
  return 1;
}

int GraphToQuery(WinInfo *wi) {
  gTranslation = Translation{};
  fdef_res = kResultSlot;
  Translation &t = gTranslation;
  if (wi->seg_ct == 0)
    return 0;
  const bool made =
      CheckJunctionLinks(wi, t) != 0 && function_input_check(wi, 0, t) != 0 && picture_query(wi, t);
  show_findings(wi, t);
  if (!made)
    return 0;
  t.tell("\nQUERY>>   " + t.text + "\n", kPlainText);
  const InputValues values = ask_values(wi, t, true);
  if (!values.empty()) {
    Translation filled;
    if (!picture_query(wi, filled, values))
      return 0;
    filled.messages.insert(filled.messages.begin(), t.messages.begin(), t.messages.end());
    t = std::move(filled);
    t.tell("\nQUERY>>   " + t.text + "\n", kPlainText);
  }
  if (CheckValid(t.text, t) == 0)
    return t.tell("Sorry, invalid Query\n", 1);
  return cint_query(t.text);
}

} // namespace velora
