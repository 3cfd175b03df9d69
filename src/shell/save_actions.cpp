// The save actions. The codes follow what the picture is, what is stored of it and what the code
// says of its function; the table below says which buttons a code offers.
#include "shell/save_actions.h"

#include <algorithm>

#include "editor/compound.h"
#include "editor/edit.h"
#include "editor/model/wininfo.h"
#include "editor/picture_walk.h"
#include "editor/vel_cmp.h"
#include "platform/response.h"
#include "shell/annotation.h"
#include "shell/picture_windows.h"
#include "shell/recovery.h"
#include "shell/text_windows.h"
#include "shell/vel_wins.h"

namespace velora {

namespace {

constexpr SaveButton kDeclarationOnly{"Save Declaration Only", SaveAction::declaration};
constexpr SaveButton kComponentOf{"Save New Component of Function...", SaveAction::component_of};
constexpr SaveButton kComponent{"Save New Component", SaveAction::component};
constexpr SaveButton kDataType{"Save DataType", SaveAction::data_type};
constexpr SaveButton kReplace{"Replace Component", SaveAction::replace};
constexpr SaveButton kRedefine{"Redefine Function", SaveAction::redefine};

bool stored = false;

// A picture whose function is declared: how its inputs and its result fit the declaration.
int guess_by_declaration(const WinInfo *wi) {
  std::string declared;
  if (ExistOrvek(wi) != 0 || get_outtype_of(wi->name, declared) == 0)
    return 8;
  const Segm *result = wi->seg_ments[kResultSlot];
  if (result == nullptr)
    return 0;
  if (CompareParameterStrings(declared, result->label) != 0)
    return 9;
  TypeNames formals;
  if (get_intypes_of(wi->name, formals, 1) == 0)
    return 8;
  const std::vector<int> inputs = make_input_numbers(wi);
  if (inputs.size() != formals.size())
    return 9;
  for (std::size_t i = 0; i < inputs.size(); ++i)
    if (CompareParameterStrings(wi->seg_ments[inputs[i]]->label, formals[i]) != 0)
      return 10; // a constant where a type stood: another clause
  return 8;
}

// The name that a picture is stored under: an unnamed data type takes that of its type.
std::string stored_name(const WinInfo *wi) {
  const Segm *first = wi->seg_ments[kResultSlot];
  if (!wi->name.empty() || wi->wtype == kFunctionPicture || first == nullptr)
    return wi->name;
  return wi->wtype == kNetworkPicture ? kNetworkName : GetBaseType(label_of(first));
}

bool ask_function_name(std::string &name) {
  name.clear();
  return GetUserDialogText("Function Name?", name) != 0 && !name.empty();
}

int save_declaration(WinInfo *wi) {
  if (SaveNewDeclaration(wi) == 0) {
    wi->name.clear();
    return 0;
  }
  wi->cmpnt = -1;
  return 1;
}

// Under another name the picture is a new one, whatever it was a copy of.
int save_component_of(WinInfo *wi, const std::string &name) {
  const std::string old_name = wi->name;
  const int old_number = wi->cmpnt;
  const int old_clean = wi->clean;
  wi->name = name;
  wi->cmpnt = -1;
  wi->clean = 0;
  wi->saved = 0;
  if (SaveNewComponent(wi) != 0)
    return 1;
  wi->name = old_name;
  wi->cmpnt = old_number;
  wi->clean = old_clean;
  return 0;
}

int save_component(WinInfo *wi) {
  const std::string old_name = wi->name;
  wi->name = stored_name(wi);
  if (SaveNewComponent(wi) != 0)
    return 1;
  wi->name = old_name;
  return 0;
}

// Does one action as one step: the picture's own fields, the stored pictures and the code together.
int perform(WinInfo *wi, const SaveButton &button) {
  std::string name = wi->name;
  const bool names =
      button.action == SaveAction::declaration || button.action == SaveAction::component_of;
  if (names && !ask_function_name(name))
    return 0;
  CompoundStep step(wi, button.label);
  step.touch_code();
  for (const std::string &touched : {stored_name(wi), name})
    if (!touched.empty())
      step.touch_pictures(touched);
  int done = 0;
  const auto change = [&] {
    switch (button.action) {
    case SaveAction::declaration:
      wi->name = name;
      done = save_declaration(wi);
      break;
    case SaveAction::component_of:
      done = save_component_of(wi, name);
      break;
    case SaveAction::component:
    case SaveAction::data_type:
      done = save_component(wi);
      break;
    case SaveAction::replace:
      done = ReplaceComponent(wi, 0);
      break;
    case SaveAction::redefine:
      done = redefine_function(wi);
      break;
    }
  };
  edit_picture(wi, button.label, change, {.own_flags = true, .settle = false});
  // What was declared on the way does not stay without the picture that it was declared for.
  if (done == 0)
    step.take_back();
  stored = done != 0;
  recovery_soon();
  redraw_picture(wi);
  return names ? 0 : done;
}

} // namespace

int GuessSaveAction(const WinInfo *wi, bool named) {
  if (wi->seg_ct == 0)
    return 0;
  const Segm *result = wi->seg_ments[kResultSlot];
  if (wi->wtype == kFunctionPicture && (result == nullptr || result->segb_ptr.empty()))
    return 1;
  if (!named)
    return wi->wtype == kConstructorsPicture ? 4 : wi->wtype == kNetworkPicture ? 3 : 2;
  if (wi->wtype == kConstructorsPicture)
    return 5;
  if (wi->cmpnt == -1)
    return wi->wtype == kNetworkPicture ? 3 : 6;
  return wi->wtype == kNetworkPicture ? 7 : guess_by_declaration(wi);
}

std::vector<SaveButton> save_buttons(int code) {
  switch (code) {
  case 1:
    return {kDeclarationOnly};
  case 2:
    return {kComponentOf};
  case 3:
    return {kComponent};
  case 4:
    return {kDataType};
  case 5:
    return {kReplace, kDataType};
  case 6:
    return {kComponent, kComponentOf};
  case 7:
    return {kComponent, kReplace};
  case 8:
    return {kReplace, kComponentOf};
  case 9:
    return {kRedefine, kComponentOf};
  case 10:
    return {kComponent, kReplace, kComponentOf, kRedefine};
  default:
    return {};
  }
}

int SaveWindowAction(WinInfo *wi) {
  stored = false;
  AddAnnotation();
  const std::vector<SaveButton> buttons = save_buttons(GuessSaveAction(wi, !wi->name.empty()));
  if (buttons.empty()) {
    BeepMsge("Warning : no action determined\n", 0);
    return 0;
  }
  std::vector<std::string> labels;
  for (const SaveButton &button : buttons)
    labels.emplace_back(button.label);
  const std::string name = wi->name.empty() ? "unnamed" : wi->name;
  const int choice = gConsole->ask("Please choose action for: " + name, labels);
  if (choice < 1 || choice > static_cast<int>(buttons.size()))
    return 0;
  return perform(wi, buttons[static_cast<std::size_t>(choice - 1)]);
}

bool save_action_stored() {
  return stored;
}

int commitWindow(WindowId window) {
  if (window_kind(window) == kOrvekWindow) {
    if (StoreOrvekToDB(window) != 0)
      DisplayResponse("Orvek Code Stored\n");
    return 1;
  }
  WinInfo *wi = picture_of(window);
  if (wi == nullptr) {
    DisplayResponse("There is nothing to commit\n");
    return 0;
  }
  const std::string name = wi->name;
  const bool network = wi->wtype == kNetworkPicture && wi->seg_ct > 0;
  if (network)
    wi->name = kNetworkName;
  SaveWindowAction(wi);
  if (network && !stored)
    wi->name = name;
  return stored ? 1 : 0;
}

} // namespace velora
