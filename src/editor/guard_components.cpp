// The state of stored pictures against the code in memory: which components mean what a clause or
// declaration says, and which side is newer where they differ.
//
// Nothing in the files tells when a component or a clause was changed. A picture counts as newer
// when no clause has its left side (it was drawn and not translated), when a window shows it with
// changes that are not stored, or when its file was written after that of the code and the code
// has not been changed since; in all other cases the text does.
#include <algorithm>
#include <chrono>
#include <filesystem>
#include <map>
#include <system_error>

#include "core/symbols.h"
#include "db/f_dbops.h"
#include "editor/clause_form.h"
#include "editor/guard.h"
#include "editor/model/wininfo.h"
#include "editor/translate.h"
#include "editor/type_terms.h"
#include "front/type_names.h"

namespace velora {

namespace {

bool is_user_type(const symbol *sym) {
  return (sym->stype & kBuiltinBit) == 0 && (sym->stype & kTypeNameBit) != 0 &&
         (sym->stype & (kFunctionBit | kConstructorBit)) == 0;
}

// The file of pictures was written clearly later than that of the code, and both are as they were
// read.
bool picture_file_is_newer() {
  if (Db_f_name.empty() || gSymbolTableChanged != 0)
    return false;
  std::error_code failed;
  const auto text = std::filesystem::last_write_time(Db_f_name, failed);
  if (failed)
    return false;
  const auto pictures = std::filesystem::last_write_time(gDDB_basename + ".seg", failed);
  return !failed && pictures > text + std::chrono::seconds(2);
}

bool has_unstored_changes(const WinInfo *wi) {
  return wi->win != 0 && wi->clean == 0 && wi->cmpnt >= 0;
}

// The form of "C ::= (a) -> (b) -> T" without its result, which is the type that is looked at.
std::string constructor_form(const std::string &declaration) {
  const std::string form = declaration_form(declaration);
  return form.substr(0, form.rfind('\n'));
}

// The result that a picture is labelled with differs from the declared one.
bool other_result(const WinInfo *wi, const std::string &name) {
  std::string declared;
  const Segm *result = wi->seg_ments[kResultSlot];
  return result != nullptr && get_outtype_of(name, declared) != 0 &&
         type_text(read_type(result->label)) != type_text(read_type(declared));
}

} // namespace

ComponentSurvey::ComponentSurvey() : pictures_newer_(picture_file_is_newer()) {
  for (WinInfo *wi = gWinInfo; wi != nullptr; wi = wi->next)
    if ((wi->win == 0 || has_unstored_changes(wi)) && wi->cmpnt >= 0)
      pictures_[wi->name].push_back(wi);
  for (auto &[name, found] : pictures_)
    std::stable_sort(found.begin(), found.end(),
                     [](const WinInfo *a, const WinInfo *b) { return a->cmpnt < b->cmpnt; });
  for (const symbol *sym = Symbol_table; sym != nullptr; sym = sym->next) {
    if (sym->stype != kConstructor)
      continue;
    const std::string name(sym->name, sym->name_len);
    TypeNames types;
    std::string result;
    if (get_intypes_of(name, types, 1) == 0 || get_outtype_of(name, result) == 0)
      continue;
    constructors_[result.substr(0, result.find(' '))].push_back(declaration_form(name, types));
  }
}

const std::vector<WinInfo *> &ComponentSurvey::pictures_of(const std::string &name) const {
  static const std::vector<WinInfo *> none;
  const auto found = pictures_.find(name);
  return found == pictures_.end() ? none : found->second;
}

ComponentReport ComponentSurvey::report(const symbol *sym) const {
  const std::string name(sym->name, sym->name_len);
  if (pictures_of(name).empty())
    return {ComponentState::no_picture, {}};
  return is_user_type(sym) ? report_type(name) : report_function(name, sym->b.fc);
}

// Notes that a component differs. Work in a picture counts before that in the text.
void ComponentSurvey::differs(ComponentReport &report, const WinInfo *wi,
                              bool picture_newer) const {
  if (report.differ.empty() || report.differ.back() != wi->cmpnt)
    report.differ.push_back(wi->cmpnt);
  if (picture_newer || pictures_newer_ || has_unstored_changes(wi))
    report.state = ComponentState::picture_newer;
  else if (report.state == ComponentState::same)
    report.state = ComponentState::text_newer;
}

ComponentReport ComponentSurvey::report_function(const std::string &name,
                                                 const func_block *function) const {
  ComponentReport report;
  std::vector<ClauseForm> clauses;
  for (const std::string &text : clauses_of(function))
    clauses.push_back(clause_form(text));
  std::vector<char> drawn(clauses.size());
  TypeNames formals;
  get_intypes_of(name, formals, 1);
  for (WinInfo *wi : pictures_of(name)) {
    const ClauseForm form = clause_form(meaning_of_function(wi, formals).text);
    bool equal = false;
    bool left_stands = false;
    for (std::size_t i = 0; i < clauses.size(); ++i) {
      left_stands |= form.readable && clauses[i].left == form.left;
      if (!form.readable || clauses[i].whole != form.whole || equal)
        continue;
      equal = true;
      drawn[i] = 1;
    }
    if (!equal)
      differs(report, wi, !left_stands);
    else if (other_result(wi, name))
      differs(report, wi, false);
  }
  const bool some_undrawn = std::count(drawn.begin(), drawn.end(), 0) > 0;
  if (some_undrawn && report.state == ComponentState::same)
    report.state = ComponentState::text_newer;
  return report;
}

// What a type is based on is not compared: a type that stands keeps its base when it is translated.
ComponentReport ComponentSurvey::report_type(const std::string &name) const {
  ComponentReport report;
  std::vector<std::string> declared;
  if (const auto found = constructors_.find(name); found != constructors_.end())
    declared = found->second;
  std::sort(declared.begin(), declared.end());
  for (WinInfo *wi : pictures_of(name)) {
    std::vector<std::string> drawn;
    const PictureMeaning meaning = meaning_of_type(wi, drawn);
    std::vector<std::string> forms;
    for (std::size_t i = 1; i < drawn.size(); ++i)
      forms.push_back(constructor_form(drawn[i]));
    std::sort(forms.begin(), forms.end());
    if (meaning.text.empty() || forms != declared)
      differs(report, wi, false);
  }
  return report;
}

} // namespace velora
