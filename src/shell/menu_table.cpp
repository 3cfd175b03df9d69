// The rows of the menu table, in the order of their numbers. Called by the dispatcher, by the
// enabling rules and by the check of the resource script.
#include "shell/menu_table.h"

#include "shell/command_numbers.h"
#include "shell/commands.h"

namespace velora {

namespace {

// Kept: there is nothing to prefer, so this one has no function and stands grey in the menus.
constexpr int (*kNoAction)() = nullptr;

// clang-format off
constexpr MenuCommand kRows[] = {
    // number, bars, label, accelerator, needs, function
    {kCmdNewDataBase, kAllBars, "New DataBase...", "", kNothing, NewDataBaseCommand},
    {kCmdOpenDataBase, kAllBars, "&Open...", "Ctrl+O", kNothing, OpenCommand},
    {kCmdCloseDataBase, kAllBars, "Close DataBase", "", kNothing, CloseDataBaseCommand},
    {kCmdBuildSegments, kAllBars, "Build Segments...", "", kNothing, BuildSegmentsCommand},
    {kCmdSaveDataBase, kAllBars, "&Save DataBase", "Ctrl+S", kNothing, SaveDataBaseCommand},
    {kCmdImportDataBase, kAllBars, "Import DataBase...", "", kNothing, ImportCommand},
    {kCmdSaveCopy, kAllBars, "Save Copy Of DataBase...", "", kDatabase, SaveCopyCommand},
    {kCmdSaveWindow, kTextBars, "Save Win as .BMP file...", "", kNothing, SaveWinAsPICT},
    {kCmdSaveWindow, kPictureBars, "Save Win as &PICT...", "", kNothing, SaveWinAsPICT},
    {kCmdSaveControlText, kTextBars, "Save CONTROL &Text...", "", kNothing, SaveControlTextCommand},
    {kCmdQuit, kAllBars, "&Quit", "Ctrl+Q", kNothing, QuitCommand},

    {kCmdUndo, kTextBars, "&Undo", "", kUndoable, UndoCommand},
    {kCmdUndo, kPictureBars, "&Undo", "Ctrl+Z", kUndoable, UndoCommand},
    {kCmdRedo, kPictureBars, "&Redo", "Ctrl+Shift+Z", kPicture | kRedoable, RedoCommand},
    {kCmdCut, kTextBars, "&Cut", "", kTextSelected, CutCommand},
    {kCmdCut, kPictureBars, "&Cut", "Ctrl+X", kTextSelected, CutCommand},
    {kCmdCopy, kTextBars, "&Copy", "", kTextSelected, CopyCommand},
    {kCmdCopy, kPictureBars, "&Copy", "Ctrl+C", kTextSelected, CopyCommand},
    {kCmdPaste, kTextBars, "&Paste", "", kPasteable, PasteCommand},
    {kCmdPaste, kPictureBars, "&Paste", "Ctrl+V", kPasteable, PasteCommand},
    {kCmdClear, kTextBars, "&Clear", "", kTextWindow | kTextSelected, ClearCommand},
    {kCmdFind, kTextBars, "&Find...", "Ctrl+F", kTextWindow, FindCommand},
    {kCmdFindAgain, kTextBars, "&Find Again", "F3", kTextWindow | kSearched, FindAgainCommand},

    {kCmdMoveNodes, kPictureBars, "Move Nodes", "", kPicture, MoveNodesCommand},
    {kCmdExpandAll, kPictureBars, "Expand All", "", kPicture, ExpandAllCommand},
    {kCmdShrinkAll, kPictureBars, "Shrink All", "", kPicture, ShrinkAllCommand},
    {kCmdExpandSelection, kPictureBars, "Expand Selection", "", kPicture | kSelection, ExpandSelectionCommand},
    {kCmdShrinkSelection, kPictureBars, "Shrink Selection", "", kPicture | kSelection, ShrinkSelectionCommand},
    {kCmdLassoSubGraph, kPictureBars, "Lasso SubGraph", "", kPicture, LassoCommand},
    {kCmdCopySelection, kPictureBars, "Copy Selection to New Window", "", kPicture | kSelection, CopySelectionCommand},
    {kCmdRefreshWindow, kPictureBars, "Refresh Window", "Ctrl+R", kPicture, RefreshCommand},
    {kCmdClearSelection, kPictureBars, "Clear Selection", "Ctrl+D", kTextSelected, ClearSelectionCommand},

    {kCmdQuery, kAllBars, "&Query", "Ctrl+Y", kNothing, QueryCommand},
    {kCmdIncreaseSpace, kAllBars, "&Increase Query Space", "", kMarkedOutside, IncreaseSpaceCommand},
    {kCmdDecreaseSpace, kAllBars, "&Decrease Query Space", "", kMarkedOutside, DecreaseSpaceCommand},
    {kCmdResetSpace, kAllBars, "&Reset Query Space", "", kMarkedOutside, ResetSpaceCommand},
    {kCmdPreferences, kAllBars, "&Preferences...", "", kNothing, kNoAction},

    {kCmdCommit, kAllBars, "&Commit...", "Ctrl+T", kNothing, CommitCommand},
    {kCmdNewConstructors, kAllBars, "Constructors", "", kNothing, NewConstructorsCommand},
    {kCmdNewFunction, kAllBars, "Function", "", kNothing, NewFunctionCommand},
    {kCmdNewNetwork, kAllBars, "Network", "", kNothing, NewNetworkCommand},
    {kCmdNewGraphics, kAllBars, "Graphics", "", kNothing, NewGraphicsCommand},
    {kCmdNewNarrative, kAllBars, "Narrative", "", kNothing, NewNarrativeCommand},
    {kCmdNewAnnotation, kAllBars, "Annotation", "", kPicture, AnnotationCommand},
    {kCmdNewOrvek, kAllBars, "Orvek Code", "", kNothing, NewOrvekCommand},
    {kCmdClearControl, kAllBars, "Clear Control", "", kNothing, ClearControlCommand},
    {kCmdStack, kAllBars, "Stack", "", kNothing, StackCommand},

    {kCmdAddInputs, kFunctionsBar, "Add Input Para&meters", "", kPicture, AddInputsCommand},
    {kCmdAddFunctions, kFunctionsBar, "Add Functions", "Ctrl+K", kPicture, AddFunctionsCommand},
    {kCmdAddRecursive, kFunctionsBar, "Add Recursive Functions", "", kPicture, AddRecursiveCommand},
    {kCmdAddConstructors, kFunctionsBar, "Add Type Constructors", "", kPicture, AddConstructorsCommand},
    {kCmdAddTypes, kFunctionsBar, "Add Typ&es", "Ctrl+E", kPicture, AddTypesCommand},
    {kCmdAddHolds, kFunctionsBar, "Add Hold_Values", "", kPicture, AddHoldsCommand},
    {kCmdAddJunctions, kFunctionsBar, "Add J&unctions", "Ctrl+U", kPicture, AddJunctionsCommand},
    {kCmdJoinNodes, kFunctionsBar, "&Join Nodes", "Ctrl+J", kPicture, JoinNodesCommand},

    {kCmdDataAddTypes, kDatatypeBar, "Add Typ&es", "Ctrl+E", kPicture, AddTypesCommand},
    {kCmdDataAddConstructors, kDatatypeBar, "Add Type Constructors", "", kPicture, AddConstructorsCommand},
    {kCmdImportList, kDatatypeBar, "Import List of Constructors", "", kPicture, ImportListCommand},
    {kCmdDataAddFunctions, kDatatypeBar, "Add Functions", "Ctrl+K", kPicture, AddFunctionsCommand},
    {kCmdDataAddJunctions, kDatatypeBar, "Add J&unctions", "Ctrl+U", kPicture, AddJunctionsCommand},
    {kCmdDataJoinNodes, kDatatypeBar, "&Join Nodes", "Ctrl+J", kPicture, JoinNodesCommand},

    {kCmdDeleteBuiltIns, kNetworkBar, "Delete Built-in and System Functions", "", kNetworkShown | kSelection, DeleteBuiltinsCommand},
    {kCmdDeleteConstructors, kNetworkBar, "Delete Constructors", "", kNetworkShown | kSelection, DeleteConstructorsCommand},
    {kCmdDeleteLowest, kNetworkBar, "Delete Lowest Level Functions", "", kNetworkShown | kSelection, DeleteLowestCommand},
    {kCmdChildren, kNetworkBar, "Children", "", kNetworkShown | kSelection, ChildrenCommand},
    {kCmdDescendants, kNetworkBar, "Descendants", "", kNetworkShown | kSelection, DescendantsCommand},
    {kCmdDescendantsInNewWindow, kNetworkBar, "Descendants In New Window", "", kNetworkShown | kSelection, DescendantsInNewWindowCommand},
    {kCmdParents, kNetworkBar, "Parents", "", kNetworkShown | kSelection, ParentsCommand},
    {kCmdAncestors, kNetworkBar, "Ancestors", "", kNetworkShown | kSelection, AncestorsCommand},
    {kCmdAncestorsInNewWindow, kNetworkBar, "Ancestors In New Window", "", kNetworkShown | kSelection, AncestorsInNewWindowCommand},
    {kCmdExportNodes, kNetworkBar, "Export to DataBase...", "", kNetworkShown | kSelection, ExportCommand},

    {kCmdGetFunction, kFunctionsBar, "&Get Function...", "Ctrl+G", kPicture, GetByNameCommand},
    {kCmdGetNextFunction, kFunctionsBar, "Get &Next Component", "Ctrl+N", kPicture, GetNextCommand},
    {kCmdGetFunctionNumber, kFunctionsBar, "Get Component No. ...", "", kPicture, GetNumberCommand},
    {kCmdEvaluate, kFunctionsBar, "Evaluate", "", kPicture, EvaluateCommand},
    {kCmdRemoveFunction, kFunctionsBar, "Remove", "", kPicture, RemoveCommand},

    {kCmdGetDataType, kDatatypeBar, "&Get DataType...", "Ctrl+G", kPicture, GetByNameCommand},
    {kCmdGetNextDataType, kDatatypeBar, "Get &Next Component", "Ctrl+N", kPicture, GetNextCommand},
    {kCmdRemoveDataType, kDatatypeBar, "Remove", "", kPicture, RemoveCommand},

    {kCmdRootFunctions, kNetworkBar, "All Root Functions", "", kPicture | kDatabase, RootFunctionsCommand},
    {kCmdGetNextNetwork, kNetworkBar, "Get &Next Component", "Ctrl+N", kPicture, GetNextCommand},
    {kCmdGetNetworkNumber, kNetworkBar, "Get Component No. ...", "", kPicture, GetNumberCommand},
    {kCmdCreateNetwork, kNetworkBar, "Create Network from DataBase", "", kPicture | kDatabase, CreateNetworkCommand},
    {kCmdCreateFunctions, kNetworkBar, "Create Functions from Network", "", kPicture, CreateFunctionsCommand},
    {kCmdRemoveNetwork, kNetworkBar, "Remove Component", "", kPicture, RemoveCommand},

    {kCmdBlack, kPictureBars, "Black", "", kPicture | kSelection, BlackCommand},
    {kCmdRed, kPictureBars, "Red", "", kPicture | kSelection, RedCommand},
    {kCmdMagenta, kPictureBars, "Magenta", "", kPicture | kSelection, MagentaCommand},
    {kCmdBlue, kPictureBars, "Blue", "", kPicture | kSelection, BlueCommand},
    {kCmdCyan, kPictureBars, "Cyan", "", kPicture | kSelection, CyanCommand},
    {kCmdGreen, kPictureBars, "Green", "", kPicture | kSelection, GreenCommand},
    {kCmdYellow, kPictureBars, "Yellow", "", kPicture | kSelection, YellowCommand},

    {kCmdNetAddFunctions, kNetworkBar, "Add Functions", "Ctrl+K", kPicture, AddFunctionsCommand},
    {kCmdNetAddRecursive, kNetworkBar, "Add Recursive Functions", "", kPicture, AddRecursiveCommand},
    {kCmdNetAddJunctions, kNetworkBar, "Add J&unctions", "Ctrl+U", kPicture, AddJunctionsCommand},
    {kCmdNetJoinNodes, kNetworkBar, "&Join Nodes", "Ctrl+J", kPicture, JoinNodesCommand},

    // The numbers that the accelerators send whatever the kind of the picture.
    {kCmdAnyJoinNodes, kNoBar, "Join Nodes", "Ctrl+J", kPicture, JoinNodesCommand},
    {kCmdAnyAddTypes, kNoBar, "Add Types", "Ctrl+E", kPicture, AddTypesCommand},
    {kCmdAnyAddFunctions, kNoBar, "Add Functions", "Ctrl+K", kPicture, AddFunctionsCommand},
    {kCmdAnyAddJunctions, kNoBar, "Add Junctions", "Ctrl+U", kPicture, AddJunctionsCommand},
    {kCmdAnyGetByName, kNoBar, "Get Function", "Ctrl+G", kPicture, GetByNameCommand},
    {kCmdAnyGetNext, kNoBar, "Get Next Component", "Ctrl+N", kPicture, GetNextCommand},

    {kCmdZoomIn, kPictureBars, "Zoom &In", "Ctrl+Plus", kPicture, ZoomInCommand},
    {kCmdZoomOut, kPictureBars, "Zoom &Out", "Ctrl+Minus", kPicture, ZoomOutCommand},
    {kCmdZoomWhole, kPictureBars, "&100 %", "Ctrl+1", kPicture, ZoomWholeCommand},
    {kCmdZoomFit, kPictureBars, "&Fit", "Ctrl+0", kPicture, ZoomFitCommand},

    {kCmdAddConstants, kPictureBars & ~kNetworkBar, "Add Constants", "", kPicture, AddConstantsCommand},
    {kCmdNamePicture, kPictureBars & ~kNetworkBar, "Name Picture...", "F4", kPicture, NamePictureCommand},
    {kCmdTidy, kPictureBars, "Tid&y", "", kPicture, TidyCommand},
    {kCmdDuplicate, kPictureBars, "Duplicate", "Ctrl+Shift+D", kPicture | kSelection, DuplicateCommand},
    {kCmdShowValue, kFunctionsBar, "Show Value", "F5", kPicture, ShowValueCommand},
    {kCmdNextFault, kPictureBars, "Next Error", "F8", kPicture, NextFaultCommand},
    {kCmdShowText, kFunctionsBar, "Show Text", "F6", kPicture, ShowTextCommand},

    // The network's own commands.
    {kCmdHideBuiltIns, kNetworkBar, "Hide Built-in and System Functions", "", kNetworkShown, HideBuiltinsCommand},
    {kCmdHideConstructors, kNetworkBar, "Hide Constructors", "", kNetworkShown, HideConstructorsCommand},
    {kCmdHideSelection, kNetworkBar, "Hide Selection", "", kNetworkShown | kSelection, HideSelectedCommand},
    {kCmdHideNames, kNetworkBar, "Hide Names...", "", kNetworkShown, HidePatternCommand},
    {kCmdHideFar, kNetworkBar, "Hide What Is Far...", "", kNetworkShown | kSelection, HideFarCommand},
    {kCmdListHidden, kNetworkBar, "List Hidden", "", kNetworkShown, ListHiddenCommand},
    {kCmdShowAll, kNetworkBar, "Show All", "", kNetworkShown, ShowAllCommand},
    {kCmdPin, kNetworkBar, "Pin Selection", "", kNetworkShown | kSelection, PinCommand},
    {kCmdWays, kNetworkBar, "Ways Between Two", "", kNetworkShown | kSelection, PathCommand},
    {kCmdCalls, kNetworkBar, "Calls of Selection", "", kNetworkShown | kSelection, CallersCommand},
    {kCmdUnreached, kNetworkBar, "Not Reached from Selection", "", kNetworkShown | kSelection, UnreachedCommand},
    {kCmdCircles, kNetworkBar, "Circles of Calls", "", kNetworkShown, CirclesCommand},
    {kCmdWriteNetwork, kNetworkBar, "Write Network...", "", kNetworkShown, WriteNetworkCommand},

    {kCmdWindowBack, kAllBars, "Back", "Alt+Left", kEarlierWindow, WindowBackCommand},
    {kCmdWindowForward, kAllBars, "For&ward", "Alt+Right", kLaterWindow, WindowForwardCommand},
};
// clang-format on

constexpr bool in_order() {
  for (std::size_t i = 1; i < std::size(kRows); ++i)
    if (kRows[i - 1].number > kRows[i].number)
      return false;
  return true;
}
static_assert(in_order(), "the rows stand in the order of their numbers");

} // namespace

std::span<const MenuCommand> menu_commands() {
  return kRows;
}

const MenuCommand *find_menu_command(int number) {
  const auto *row = std::lower_bound(
      std::begin(kRows), std::end(kRows), number,
      [](const MenuCommand &command, int wanted) { return command.number < wanted; });
  return row != std::end(kRows) && row->number == number ? row : nullptr;
}

} // namespace velora
