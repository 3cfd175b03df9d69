// Storing, replacing and removing components.
#include "editor/vel_cmp.h"

#include <algorithm>

#include "core/needs.h"
#include "core/symbols.h"
#include "editor/draw.h"
#include "editor/model/vel_segs.h"
#include "editor/model/wininfo.h"
#include "editor/symbol_state.h"
#include "platform/response.h"

namespace velora {

namespace {

constexpr int kYes = 1;

// Marks of a window are no part of a stored picture.
void clear_marks(WinInfo *wi) {
  for (int slot = 1; slot <= wi->seg_ct; ++slot)
    if (Segm *seg = wi->seg_ments[slot]; seg != nullptr)
      seg->status &= ~(kSelected | kHighlighted | kExpanded);
}

void store_copy(const WinInfo *shown, WinInfo *stored) {
  CopyWinInfo(shown, stored);
  stored->wtype = shown->wtype;
  stored->saved = 1;
  stored->clean = 1;
  clear_marks(stored);
  gSegsChanged = 1;
}

std::string left_side(const WinInfo *wi) {
  std::string lhs;
  return MakeLHS(wi, lhs) == 1 ? lhs : "";
}

// What becomes of the clause of the picture that `gone` stands for, when a picture with another
// left side takes its place.
enum class OldClause { stays, goes, cancelled };

// The clause stays where it is gone already or some other picture stands for it; else the user
// says.
OldClause settle_old_clause(const WinInfo *gone, const std::string &old_lhs) {
  if (old_lhs.empty() || exists_clause(old_lhs) == 0)
    return OldClause::stays;
  for (const WinInfo *stored : stored_components(gone->name))
    if (stored != gone && left_side(stored) == old_lhs)
      return OldClause::stays;
  const std::string question = "The clause " + old_lhs + " stays from before. Remove it?";
  const int choice = PromptUser(question, {"Yes", "No"});
  return choice == kYes         ? OldClause::goes
         : choice == kCancelled ? OldClause::cancelled
                                : OldClause::stays;
}

} // namespace

std::vector<WinInfo *> stored_components(const std::string &name) {
  std::vector<WinInfo *> found;
  for (WinInfo *wi = gWinInfo; wi != nullptr; wi = wi->next)
    if (wi->win == 0 && wi->name == name)
      found.push_back(wi);
  return found;
}

int SaveNewDeclaration(WinInfo *wi) {
  gTranslation = Translation{};
  TypeNames inputs;
  if (ValidName(wi->name) == 0 || check_for_fdec(wi, inputs, 1, gTranslation) == 0)
    return 0;
  wi->clean = 1;
  return 1;
}

int SaveNewComponent(WinInfo *wi) {
  if (wi->wtype != kNetworkPicture && TranslateGraph(wi, 0) == 0)
    return 0;
  int number = 0;
  for (const WinInfo *stored : stored_components(wi->name))
    number = std::max(number, stored->cmpnt + 1);
  WinInfo *stored = nullptr;
  if (NewWinInfo(0, wi->wtype, &stored) == 0)
    return 0;
  store_copy(wi, stored);
  stored->cmpnt = number;
  wi->cmpnt = number;
  wi->saved = 0;
  wi->clean = 1;
  if (wi->wtype == kNetworkPicture)
    DisplayResponsef("Network Component %d saved\n", number);
  else if (wi->wtype == kFunctionPicture)
    CheckCmpntsEqualFdefs(wi);
  return 1;
}

namespace {

// Replaces without comparing pictures and clauses afterwards. 1, or 0 after a message or a Cancel.
int put_over_stored(WinInfo *wi, int newfdec) {
  DisplayResponsef("replacing component %d of %s\n", wi->cmpnt, wi->name.c_str());
  WinInfo *stored = FindStoredPicture(wi->name, wi->cmpnt);
  if (stored == nullptr) {
    BeepMsgef(1, "Unable to find component %d of function %s\n", wi->cmpnt, wi->name.c_str());
    return 0;
  }
  // All questions come before anything is done.
  const std::string old_lhs =
      wi->wtype == kFunctionPicture && newfdec == 0 ? left_side(stored) : "";
  const OldClause old =
      old_lhs == left_side(wi) ? OldClause::stays : settle_old_clause(stored, old_lhs);
  if (old == OldClause::cancelled)
    return 0;
  if (wi->wtype != kNetworkPicture && translate_picture(wi, newfdec, false) == 0)
    return 0;
  ClearWinInfo(stored);
  store_copy(wi, stored);
  wi->saved = 0;
  wi->clean = 1;
  if (old == OldClause::goes)
    deny_clause(old_lhs);
  return 1;
}

} // namespace

int ReplaceComponent(WinInfo *wi, int newfdec) {
  if (put_over_stored(wi, newfdec) == 0)
    return 0;
  if (wi->wtype == kFunctionPicture)
    CheckCmpntsEqualFdefs(wi);
  return 1;
}

int RemoveComponent(const WinInfo *wi) {
  const std::string name = wi->name;
  WinInfo *gone = FindStoredPicture(name, wi->cmpnt);
  int before = 0;
  if (gone == nullptr) {
    gConsole->beep();
  } else {
    const std::vector<WinInfo *> all = stored_components(name);
    before = static_cast<int>(std::find(all.begin(), all.end(), gone) - all.begin());
    RemovePicture(gone);
    gSegsChanged = 1;
  }
  int number = 0;
  for (WinInfo *stored : stored_components(name))
    stored->cmpnt = number++;
  return before;
}

int RemoveAllComponents(const WinInfo *wi) {
  const std::vector<WinInfo *> all = stored_components(wi->name);
  for (WinInfo *stored : all)
    RemovePicture(stored);
  if (all.empty()) {
    gConsole->beep();
    return 0;
  }
  gSegsChanged = 1;
  DisplayResponse("All Components Removed\n");
  return static_cast<int>(all.size());
}

int redefine_function(WinInfo *wi) {
  const std::string name = wi->name;
  std::vector<WinInfo *> others = stored_components(name);
  std::erase_if(others, [wi](const WinInfo *stored) { return stored->cmpnt == wi->cmpnt; });
  int again = 0;
  if (!others.empty()) {
    again = PromptUser(std::to_string(others.size()) + " other pictures of " + name +
                           " will not fit. Translate them again?",
                       {"Yes", "No"});
    if (again == kCancelled)
      return 0;
  }
  const CodeState before = take_code();
  symbol *sym = find_symbol(name.c_str(), 0);
  if (sym != nullptr && remove_symbol(sym) == 0) {
    BeepMsgef(1, "Sorry! Unable to re-define function %s\n", name.c_str());
    return 0;
  }
  if (put_over_stored(wi, 1) == 0) {
    put_code_back(before);
    return 0;
  }
  if (again != kYes)
    others.clear();
  const Translation shown = gTranslation;
  for (const WinInfo *other : others) {
    WinInfo copy;
    copy.wtype = other->wtype;
    CopyWinInfo(other, &copy);
    translate_picture(&copy, 0, false);
  }
  gTranslation = shown;
  CheckCmpntsEqualFdefs(wi);
  return 1;
}

} // namespace velora
