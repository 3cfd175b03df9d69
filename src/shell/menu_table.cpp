// The rows of the menu table, in the order of their numbers. Called by the dispatcher, by the
// enabling rules and by the check of the resource script.
#include "shell/menu_table.h"

#include "shell/commands.h"

namespace velora {

namespace {

// Commands without a function belong to the editing of pictures; they stand greyed in the menus.
constexpr int (*kLater)() = nullptr;

// clang-format off
constexpr MenuCommand kRows[] = {
    // number, bars, label, accelerator, needs, function
    {101, kAllBars, "New DataBase...", "", kNothing, NewDataBaseCommand},
    {102, kAllBars, "&Open...", "Ctrl+O", kNothing, OpenCommand},
    {103, kAllBars, "Close DataBase", "", kNothing, CloseDataBaseCommand},
    {105, kAllBars, "Build Segments...", "", kDatabase, kLater},
    {107, kAllBars, "&Save DataBase", "Ctrl+S", kNothing, SaveDataBaseCommand},
    {108, kAllBars, "Import DataBase...", "", kNothing, ImportCommand},
    {109, kAllBars, "Save Copy Of DataBase...", "", kDatabase, SaveCopyCommand},
    {111, kTextBars, "Save Win as .BMP file...", "", kNothing, SaveWinAsPICT},
    {111, kPictureBars, "Save Win as &PICT...", "", kNothing, SaveWinAsPICT},
    {112, kTextBars, "Save CONTROL &Text...", "", kNothing, SaveControlTextCommand},
    {113, kAllBars, "&Quit", "Ctrl+Q", kNothing, QuitCommand},

    {201, kTextBars, "&Undo", "", kTextWindow | kUndoable, UndoCommand},
    {203, kTextBars, "&Cut", "", kTextWindow | kTextSelected, CutCommand},
    {204, kTextBars, "&Copy", "", kTextWindow | kTextSelected, CopyCommand},
    {205, kTextBars, "&Paste", "", kTextWindow | kPasteable, PasteCommand},
    {206, kTextBars, "&Clear", "", kTextWindow | kTextSelected, ClearCommand},
    {208, kTextBars, "&Find...", "Ctrl+F", kTextWindow, FindCommand},
    {209, kTextBars, "&Find Again", "F3", kTextWindow | kSearched, FindAgainCommand},

    {301, kPictureBars, "Move Nodes", "", kPicture, kLater},
    {302, kPictureBars, "Expand All", "", kPicture, BiggerTextCommand},
    {303, kPictureBars, "Shrink All", "", kPicture, SmallerTextCommand},
    {304, kPictureBars, "Expand Selection", "", kPicture | kSelection, kLater},
    {305, kPictureBars, "Shrink Selection", "", kPicture | kSelection, kLater},
    {307, kPictureBars, "Lasso SubGraph", "", kPicture, kLater},
    {308, kPictureBars, "Copy Selection to New Window", "", kPicture | kSelection, kLater},
    {309, kPictureBars, "Refresh Window", "Ctrl+R", kPicture, RefreshCommand},
    {311, kPictureBars, "Clear Selection", "Ctrl+D", kTextSelected, ClearSelectionCommand},

    {401, kAllBars, "&Query", "Ctrl+Y", kNothing, QueryCommand},
    {403, kAllBars, "&Increase Query Space", "", kMarkedOutside, IncreaseSpaceCommand},
    {404, kAllBars, "&Decrease Query Space", "", kMarkedOutside, DecreaseSpaceCommand},
    {405, kAllBars, "&Reset Query Space", "", kMarkedOutside, ResetSpaceCommand},
    {407, kAllBars, "&Preferences...", "", kNothing, kLater},

    {501, kAllBars, "&Commit...", "Ctrl+T", kCommittable, CommitCommand},
    {503, kAllBars, "Constructors", "", kNothing, NewConstructorsCommand},
    {504, kAllBars, "Function", "", kNothing, NewFunctionCommand},
    {505, kAllBars, "Network", "", kNothing, NewNetworkCommand},
    {506, kAllBars, "Graphics", "", kNothing, NewGraphicsCommand},
    {507, kAllBars, "Narrative", "", kNothing, NewNarrativeCommand},
    {508, kAllBars, "Annotation", "", kPicture, AnnotationCommand},
    {509, kAllBars, "Orvek Code", "", kNothing, NewOrvekCommand},
    {511, kAllBars, "Clear Control", "", kNothing, ClearControlCommand},
    {512, kAllBars, "Stack", "", kNothing, StackCommand},

    {601, kFunctionsBar, "Add Input Para&meters", "", kPicture, kLater},
    {602, kFunctionsBar, "Add Functions", "Ctrl+K", kPicture, kLater},
    {603, kFunctionsBar, "Add Recursive Functions", "", kPicture, kLater},
    {604, kFunctionsBar, "Add Type Constructors", "", kPicture, kLater},
    {605, kFunctionsBar, "Add Typ&es", "Ctrl+E", kPicture, kLater},
    {606, kFunctionsBar, "Add Hold_Values", "", kPicture, kLater},
    {607, kFunctionsBar, "Add J&unctions", "Ctrl+U", kPicture, kLater},
    {609, kFunctionsBar, "&Join Nodes", "Ctrl+J", kPicture, kLater},

    {701, kDatatypeBar, "Add Typ&es", "Ctrl+E", kPicture, kLater},
    {702, kDatatypeBar, "Add Type Constructors", "", kPicture, kLater},
    {703, kDatatypeBar, "Import List of Constructors", "", kPicture, kLater},
    {704, kDatatypeBar, "Add Functions", "Ctrl+K", kPicture, kLater},
    {705, kDatatypeBar, "Add J&unctions", "Ctrl+U", kPicture, kLater},
    {707, kDatatypeBar, "&Join Nodes", "Ctrl+J", kPicture, kLater},

    {801, kNetworkBar, "Delete Built-in and System Functions", "", kNetworkShown, kLater},
    {802, kNetworkBar, "Delete Constructors", "", kNetworkShown, kLater},
    {803, kNetworkBar, "Delete Lowest Level Functions", "", kNetworkShown, kLater},
    {805, kNetworkBar, "Children", "", kNetworkShown | kSelection, kLater},
    {806, kNetworkBar, "Descendants", "", kNetworkShown | kSelection, kLater},
    {807, kNetworkBar, "Descendants In New Window", "", kNetworkShown | kSelection, kLater},
    {808, kNetworkBar, "Parents", "", kNetworkShown | kSelection, kLater},
    {809, kNetworkBar, "Ancestors", "", kNetworkShown | kSelection, kLater},
    {810, kNetworkBar, "Ancestors In New Window", "", kNetworkShown | kSelection, kLater},
    {812, kNetworkBar, "Export to DataBase...", "", kNetworkShown | kSelection, kLater},

    {902, kFunctionsBar, "&Get Function...", "Ctrl+G", kPicture, GetByNameCommand},
    {903, kFunctionsBar, "Get &Next Component", "Ctrl+N", kPicture, GetNextCommand},
    {904, kFunctionsBar, "Get Component No. ...", "", kPicture, GetNumberCommand},
    {906, kFunctionsBar, "Evaluate", "", kPicture, kLater},
    {908, kFunctionsBar, "Remove", "", kPicture, kLater},

    {1002, kDatatypeBar, "&Get DataType...", "Ctrl+G", kPicture, GetByNameCommand},
    {1003, kDatatypeBar, "Get &Next Component", "Ctrl+N", kPicture, GetNextCommand},
    {1005, kDatatypeBar, "Remove", "", kPicture, kLater},

    {1102, kNetworkBar, "All Root Functions", "", kPicture, kLater},
    {1103, kNetworkBar, "Get &Next Component", "Ctrl+N", kPicture, GetNextCommand},
    {1104, kNetworkBar, "Get Component No. ...", "", kPicture, GetNumberCommand},
    {1105, kNetworkBar, "Create Network from DataBase", "", kPicture, kLater},
    {1107, kNetworkBar, "Create Functions from Network", "", kPicture, kLater},
    {1109, kNetworkBar, "Remove Component", "", kPicture, kLater},

    {1201, kPictureBars, "Black", "", kPicture | kSelection, kLater},
    {1203, kPictureBars, "Red", "", kPicture | kSelection, kLater},
    {1204, kPictureBars, "Magenta", "", kPicture | kSelection, kLater},
    {1205, kPictureBars, "Blue", "", kPicture | kSelection, kLater},
    {1206, kPictureBars, "Cyan", "", kPicture | kSelection, kLater},
    {1207, kPictureBars, "Green", "", kPicture | kSelection, kLater},
    {1208, kPictureBars, "Yellow", "", kPicture | kSelection, kLater},

    {1301, kNetworkBar, "Add Functions", "Ctrl+K", kPicture, kLater},
    {1302, kNetworkBar, "Add Recursive Functions", "", kPicture, kLater},
    {1303, kNetworkBar, "Add J&unctions", "Ctrl+U", kPicture, kLater},
    {1305, kNetworkBar, "&Join Nodes", "Ctrl+J", kPicture, kLater},

    // The numbers that the accelerators send whatever the kind of the picture.
    {1401, kNoBar, "Join Nodes", "Ctrl+J", kPicture, kLater},
    {1402, kNoBar, "Add Types", "Ctrl+E", kPicture, kLater},
    {1403, kNoBar, "Add Functions", "Ctrl+K", kPicture, kLater},
    {1404, kNoBar, "Add Junctions", "Ctrl+U", kPicture, kLater},
    {1405, kNoBar, "Get Function", "Ctrl+G", kPicture, GetByNameCommand},
    {1406, kNoBar, "Get Next Component", "Ctrl+N", kPicture, GetNextCommand},
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
