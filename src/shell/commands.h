// The functions behind the menu commands, each one a command of the user. A command answers nonzero
// when the menus are to be adjusted after it. They act on the window that last had the focus.
// Called through the menu table alone.
#pragma once

namespace velora {

// Files.
int NewDataBaseCommand();
int OpenCommand();
int CloseDataBaseCommand();
int SaveDataBaseCommand();
int ImportCommand();
int BuildSegmentsCommand();
int SaveCopyCommand();
int SaveWinAsPICT();
// Saves the window as a file of a kind that is known by its ending: ".bmp", ".png", ".pdf" where
// the desktop makes documents, or ".svg" for one that is drawn.
int SaveWindowAs(const char *ending);
int SaveControlTextCommand();
int QuitCommand();

// Text editing.
int UndoCommand();
int CutCommand();
int CopyCommand();
int PasteCommand();
int ClearCommand();
int ClearSelectionCommand();
int FindCommand();
int FindAgainCommand();

// Queries and their space.
int QueryCommand();
int IncreaseSpaceCommand();
int DecreaseSpaceCommand();
int ResetSpaceCommand();

// Windows.
int CommitCommand();
int NewConstructorsCommand();
int NewFunctionCommand();
int NewNetworkCommand();
int NewGraphicsCommand();
int NewNarrativeCommand();
int AnnotationCommand();
int NewOrvekCommand();
int ClearControlCommand();
int StackCommand();
int WindowBackCommand();
int WindowForwardCommand();

// Pictures.
int RedoCommand();
int MoveNodesCommand();
int ExpandAllCommand();
int ShrinkAllCommand();
int ExpandSelectionCommand();
int ShrinkSelectionCommand();
int LassoCommand();
int CopySelectionCommand();
int DuplicateCommand();
int TidyCommand();
int EvaluateCommand();
int ShowValueCommand();
int ShowTextCommand();
int NextFaultCommand();
int NamePictureCommand();
int AddInputsCommand();
int AddFunctionsCommand();
int AddRecursiveCommand();
int AddConstructorsCommand();
int AddTypesCommand();
int AddHoldsCommand();
int AddJunctionsCommand();
int ImportListCommand();
int AddConstantsCommand();
int JoinNodesCommand();
int BlackCommand();
int BlueCommand();
int RedCommand();
int GreenCommand();
int CyanCommand();
int MagentaCommand();
int YellowCommand();
int ZoomInCommand();
int ZoomOutCommand();
int ZoomWholeCommand();
int ZoomFitCommand();
int RefreshCommand();
int GetByNameCommand();
int GetNextCommand();
int GetNumberCommand();
int RemoveCommand();

// Networks.
int DeleteBuiltinsCommand();
int DeleteConstructorsCommand();
int DeleteLowestCommand();
int ChildrenCommand();
int DescendantsCommand();
int DescendantsInNewWindowCommand();
int ParentsCommand();
int AncestorsCommand();
int AncestorsInNewWindowCommand();
int ExportCommand();
int RootFunctionsCommand();
int CreateNetworkCommand();
int CreateFunctionsCommand();
int HideBuiltinsCommand();
int HideConstructorsCommand();
int HideSelectedCommand();
int HidePatternCommand();
int HideFarCommand();
int ListHiddenCommand();
int ShowAllCommand();
int PinCommand();
int PathCommand();
int CallersCommand();
int UnreachedCommand();
int CirclesCommand();
int WriteNetworkCommand();

} // namespace velora
