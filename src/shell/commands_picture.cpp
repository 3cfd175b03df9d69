// The commands that edit pictures: the rows of the Edit, Features, Colour and View menus.
#include "editor/draw.h"
#include "editor/edit.h"
#include "editor/hand/faults.h"
#include "editor/hand/hand.h"
#include "editor/hand/tools.h"
#include "editor/model/vel_segs.h"
#include "editor/tidy.h"
#include "editor/translate.h"
#include "network/net_tidy.h"
#include "platform/response.h"
#include "shell/commands.h"
#include "shell/picture_edit.h"
#include "shell/picture_view.h"
#include "shell/picture_windows.h"
#include "shell/show_text.h"
#include "shell/show_value.h"
#include "shell/vel_wins.h"

namespace velora {

namespace {

// The picture that a command acts on, with what was being typed in it taken; null for none.
WinInfo *edited_picture() {
  WinInfo *wi = picture_of(previous);
  if (wi != nullptr)
    settle_hand();
  return wi;
}

int choose(int mode) {
  if (WinInfo *wi = edited_picture(); wi != nullptr)
    choose_tool(wi, mode);
  return 0;
}

int change(const char *what, void (*run)(WinInfo *), const EditOptions &options = {}) {
  WinInfo *wi = edited_picture();
  if (wi == nullptr)
    return 0;
  edit_picture(
      wi, what, [&] { run(wi); }, options);
  return 1;
}

int colour(const char *what, int index) {
  WinInfo *wi = edited_picture();
  if (wi == nullptr)
    return 0;
  edit_picture(wi, what, [&] { ColourSelectedItems(wi, index); });
  return 1;
}

} // namespace

int undo_picture(WinInfo *wi) {
  settle_hand();
  return undo_step(wi);
}

int redo_picture(WinInfo *wi) {
  settle_hand();
  return redo_step(wi);
}

int RedoCommand() {
  WinInfo *wi = picture_of(previous);
  return wi != nullptr ? redo_picture(wi) : 0;
}

// In a text that is being edited these are keys of the text.
bool edit_text_of_hand(WinInfo *wi, const char *letter) {
  const bool typing =
      gHand.wi == wi && (gHand.state == HandState::labelling || gHand.state == HandState::naming);
  KeyEvent event;
  event.key = Key::letter;
  event.text = letter;
  event.held.control = true;
  return typing && hand_key(wi, event);
}

int copy_in_picture(WinInfo *wi) {
  return edit_text_of_hand(wi, "C") || copy_selected(wi) ? 1 : 0;
}

int cut_in_picture(WinInfo *wi) {
  if (edit_text_of_hand(wi, "X"))
    return 1;
  if (!copy_selected(wi))
    return 0;
  edit_picture(wi, "Cut", [&] { remove_slots(wi, selected_slots(wi)); });
  return 1;
}

int paste_in_picture(WinInfo *wi) {
  if (edit_text_of_hand(wi, "V"))
    return 1;
  if (!can_paste())
    return 0;
  edit_picture(wi, "Paste", [&] { paste_copied(wi); });
  return 1;
}

int MoveNodesCommand() {
  return choose(kModeMove);
}
int LassoCommand() {
  return choose(kModeLasso);
}
int ExpandAllCommand() {
  return change("Expand All", [](WinInfo *wi) { wi->txtsze = bigger_text_size(wi->txtsze); },
                {.merge = "text size"});
}
int ShrinkAllCommand() {
  return change("Shrink All", [](WinInfo *wi) { wi->txtsze = smaller_text_size(wi->txtsze); },
                {.merge = "text size"});
}
int ExpandSelectionCommand() {
  return change("Expand Selection", [](WinInfo *wi) { ResizeSelectedItems(wi, 2); });
}
int ShrinkSelectionCommand() {
  return change("Shrink Selection", [](WinInfo *wi) { ResizeSelectedItems(wi, 1); });
}
int DuplicateCommand() {
  return change("Duplicate", duplicate_selected);
}

// Tidies what is chosen, or everything when nothing is.
int TidyCommand() {
  WinInfo *wi = edited_picture();
  if (wi == nullptr)
    return 0;
  if (wi->wtype == kNetworkPicture) {
    edit_picture(wi, "Tidy", [wi] { tidy_network(wi); });
    return 1;
  }
  bool tidied = false;
  edit_picture(wi, "Tidy", [&] { tidied = tidy_picture(wi); });
  if (!tidied)
    BeepMsge("Sorry! This cannot be tidied without changing the order of inputs\n", 1);
  return 1;
}

int EvaluateCommand() {
  WinInfo *wi = edited_picture();
  return wi != nullptr ? GraphToQuery(wi) : 0;
}

// The value of the chosen node, or of the whole.
int ShowValueCommand() {
  WinInfo *wi = edited_picture();
  if (wi == nullptr)
    return 0;
  const int slot = selected_node(wi);
  return show_value(wi, slot != 0 ? slot : kResultSlot);
}

// The clause that the picture is, with what the chosen node stands for selected in it.
int ShowTextCommand() {
  WinInfo *wi = edited_picture();
  if (wi == nullptr)
    return 0;
  const int slot = selected_node(wi);
  return show_text_of(wi, slot != 0 ? slot : kResultSlot);
}

int NextFaultCommand() {
  WinInfo *wi = edited_picture();
  if (wi != nullptr && !go_to_next_fault(wi))
    DisplayResponse("No faults were found in this picture\n");
  return 1;
}

int CopySelectionCommand() {
  WinInfo *wi = edited_picture();
  if (wi == nullptr)
    return 0;
  WinInfo *to = CopySelectedNodes(wi);
  mark_changed(wi);
  register_picture_windows();
  if (to != nullptr)
    redraw_picture(to);
  return 1;
}

// Kept: the first node of a network stays, as the result of a function does.
int clear_selection_in_picture(WinInfo *wi) {
  settle_hand();
  edit_picture(wi, "Clear Selection", [&] { deleteSelectedItems(wi); });
  return 1;
}

int AddInputsCommand() {
  return choose(kToolParameter);
}
int AddFunctionsCommand() {
  return choose(kToolFunction);
}
int AddRecursiveCommand() {
  return choose(kToolRecursive);
}
int AddConstructorsCommand() {
  return choose(kToolConstructor);
}
int AddTypesCommand() {
  return choose(kToolType);
}
int AddHoldsCommand() {
  return choose(kToolHold);
}
int AddJunctionsCommand() {
  return choose(kToolJunction);
}
int ImportListCommand() {
  return choose(kToolRecursiveToo);
}
int AddConstantsCommand() {
  return choose(kToolHexagon);
}

int JoinNodesCommand() {
  if (WinInfo *wi = edited_picture(); wi != nullptr)
    begin_join(wi);
  return 0;
}

int NamePictureCommand() {
  if (WinInfo *wi = edited_picture(); wi != nullptr)
    edit_picture_name(wi);
  return 0;
}

int BlackCommand() {
  return colour("Black", kBlack);
}
int BlueCommand() {
  return colour("Blue", kBlue);
}
int RedCommand() {
  return colour("Red", kRed);
}
int GreenCommand() {
  return colour("Green", kGreen);
}
int CyanCommand() {
  return colour("Cyan", kCyan);
}
int MagentaCommand() {
  return colour("Magenta", kMagenta);
}
int YellowCommand() {
  return colour("Yellow", kYellow);
}

int ZoomInCommand() {
  return zoom_by(picture_of(previous), 1);
}
int ZoomOutCommand() {
  return zoom_by(picture_of(previous), -1);
}
int ZoomWholeCommand() {
  return zoom_to(picture_of(previous), 100);
}
int ZoomFitCommand() {
  return zoom_to_fit(picture_of(previous));
}

} // namespace velora
