// The commands of the Edit, Windows and Find menus.
#include "editor/compound.h"
#include "platform/desktop.h"
#include "platform/response.h"
#include "shell/annotation.h"
#include "shell/commands.h"
#include "shell/console_window.h"
#include "shell/graphics_windows.h"
#include "shell/picture_edit.h"
#include "shell/picture_windows.h"
#include "shell/save_actions.h"
#include "shell/text_windows.h"
#include "shell/vel_wins.h"

namespace velora {

namespace {

// What each edit command does in a picture.
int edit_in_picture(WinInfo *wi, EditCommand command) {
  switch (command) {
  case EditCommand::undo:
    return undo_picture(wi);
  case EditCommand::cut:
    return cut_in_picture(wi);
  case EditCommand::copy:
    return copy_in_picture(wi);
  case EditCommand::paste:
    return paste_in_picture(wi);
  case EditCommand::clear:
    break;
  }
  return clear_selection_in_picture(wi);
}

int edit_previous(EditCommand command) {
  if (WinInfo *wi = picture_of(previous); wi != nullptr)
    return edit_in_picture(wi, command);
  if (command == EditCommand::undo && previous == hControl && !orphan_to_undo().empty() &&
      gDesktop->typed_text(hControl).empty())
    return undo_orphan();
  if (TextTypeWindow(previous) == 0)
    return 0;
  gDesktop->edit(previous, command);
  if (previous == gAnnWind)
    AddAnnotation();
  return 1;
}

// The picture of the window that last had the focus, or null.
WinInfo *shown_picture() {
  return picture_of(previous);
}

// The name that the components of a window's picture are stored under.
std::string component_name(const WinInfo *wi) {
  return wi->wtype == kNetworkPicture ? std::string(kNetworkName) : wi->name;
}

} // namespace

int UndoCommand() {
  return edit_previous(EditCommand::undo);
}

int CutCommand() {
  return edit_previous(EditCommand::cut);
}

int CopyCommand() {
  return edit_previous(EditCommand::copy);
}

int PasteCommand() {
  return edit_previous(EditCommand::paste);
}

int ClearCommand() {
  return edit_previous(EditCommand::clear);
}

int ClearSelectionCommand() {
  return edit_previous(EditCommand::clear);
}

int FindCommand() {
  return findSearchString(previous, false);
}

int FindAgainCommand() {
  return findSearchString(previous, true);
}

int CommitCommand() {
  return commitWindow(previous);
}

int RemoveCommand() {
  return RemoveThis(shown_picture());
}

int NewConstructorsCommand() {
  return SetupNewWindow(kConstructorsPicture) != nullptr ? 1 : 0;
}

int NewFunctionCommand() {
  return SetupNewWindow(kFunctionPicture) != nullptr ? 1 : 0;
}

int NewNetworkCommand() {
  return SetupNewWindow(kNetworkPicture) != nullptr ? 1 : 0;
}

int NewGraphicsCommand() {
  return open_graphics_window();
}

int NewNarrativeCommand() {
  return open_narrative_window();
}

int AnnotationCommand() {
  return open_annotation();
}

int NewOrvekCommand() {
  return NewOrvekWindow() != 0 ? 1 : 0;
}

int ClearControlCommand() {
  gDesktopConsole.clear();
  return 1;
}

int StackCommand() {
  StackWindows();
  return 1;
}

int WindowBackCommand() {
  return go_over_windows(-1);
}

int WindowForwardCommand() {
  return go_over_windows(1);
}

int RefreshCommand() {
  WinInfo *wi = shown_picture();
  mark_changed(wi);
  redraw_picture(wi);
  return 1;
}

int GetByNameCommand() {
  WinInfo *wi = shown_picture();
  if (wi->wtype == kNetworkPicture)
    return 0;
  std::string name;
  const char *prompt = wi->wtype == kFunctionPicture ? "Function Name?" : "DataType Name?";
  if (GetUserDialogText(prompt, name) == 0 || name.empty())
    return 0;
  return GetNextComponent(wi, name, -1);
}

int GetNextCommand() {
  WinInfo *wi = shown_picture();
  return GetNextComponent(wi, component_name(wi), wi->cmpnt);
}

int GetNumberCommand() {
  WinInfo *wi = shown_picture();
  return GetNumComponent(wi, component_name(wi));
}

} // namespace velora
