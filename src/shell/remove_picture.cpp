// Removing a picture, its clause, or a whole function.
#include <array>

#include "core/needs.h"
#include "core/symbols.h"
#include "editor/compound.h"
#include "editor/edit.h"
#include "editor/model/wininfo.h"
#include "editor/vel_cmp.h"
#include "platform/response.h"
#include "shell/picture_windows.h"
#include "shell/recovery.h"
#include "shell/save_actions.h"

namespace velora {

namespace {

constexpr std::array<const char *, 5> kLabels = {"", "Remove Picture and Orvek Code",
                                                 "Remove Picture Only", "Remove Orvek Code Only",
                                                 "Destroy Entire Function"};

int destroy_function(const WinInfo *wi) {
  symbol *sym = find_symbol(wi->name.c_str(), 0);
  if (sym != nullptr && remove_symbol(sym) == 0)
    return -1;
  RemoveAllComponents(wi);
  return 0;
}

// Shows what stands at the place of a component that went.
void show_what_is_left(WinInfo *wi, int before) {
  wi->clean = 1; // what it showed was to go
  if (GetNextComponent(wi, wi->name, before - 1) == 0)
    ClearWinInfo(wi);
}

int remove_chosen(WinInfo *wi, int choice) {
  CompoundStep step(wi, remove_label(choice));
  step.touch(wi->name);
  int done = 0;
  const auto change = [&] {
    const int before = remove_parts(wi, choice);
    done = before >= 0 ? 1 : 0;
    if (before < 0 || choice == kRemoveCode)
      return;
    if (choice == kDestroyFunction)
      ClearWinInfo(wi);
    else
      show_what_is_left(wi, before);
  };
  edit_picture(wi, remove_label(choice), change, {.own_flags = true, .settle = false});
  recovery_soon();
  redraw_picture(wi);
  return done;
}

int remove_other(WinInfo *wi) {
  if (confirm_picture_removal() == 0)
    return 0;
  if (!wi->name.empty())
    return remove_chosen(wi, kRemovePicture);
  edit_picture(wi, remove_label(kRemovePicture), [wi] { ClearWinInfo(wi); },
               {.own_flags = true, .settle = false});
  redraw_picture(wi);
  return 1;
}

} // namespace

const char *remove_label(int choice) {
  return kLabels[static_cast<std::size_t>(choice)];
}

int confirm_removal(int choice) {
  constexpr int kYes = 1;
  return PromptUser("Please confirm choice", {remove_label(choice)}) == kYes ? 1 : 0;
}

int confirm_picture_removal() {
  constexpr int kYes = 1;
  return PromptUser("Please confirm", {"Remove Picture"}) == kYes ? 1 : 0;
}

int remove_parts(const WinInfo *wi, int choice) {
  switch (choice) {
  case kRemoveBoth:
    DenyExtension(wi);
    return RemoveComponent(wi);
  case kRemovePicture:
    return RemoveComponent(wi);
  case kRemoveCode:
    return DenyExtension(wi) != 0 ? 0 : -1;
  default:
    return destroy_function(wi);
  }
}

int RemoveThis(WinInfo *wi) {
  if (wi->name == kNetworkName && wi->cmpnt == 0) {
    DisplayResponse("Network Component 0 must be retained for future updates\n");
    return 0;
  }
  if (wi->wtype != kFunctionPicture || wi->name.empty() || ExistOrvek(wi) == 0)
    return remove_other(wi);
  const int choice =
      PromptUser("Please Choose Action", {kLabels[kRemoveBoth], kLabels[kRemovePicture],
                                          kLabels[kRemoveCode], kLabels[kDestroyFunction]});
  if (choice < kRemoveBoth || choice > kDestroyFunction || confirm_removal(choice) == 0)
    return 0;
  return remove_chosen(wi, choice);
}

} // namespace velora
