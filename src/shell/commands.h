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
int SaveCopyCommand();
int SaveWinAsPICT();
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

// Pictures.
int BiggerTextCommand();
int SmallerTextCommand();
int RefreshCommand();
int GetByNameCommand();
int GetNextCommand();
int GetNumberCommand();

} // namespace velora
