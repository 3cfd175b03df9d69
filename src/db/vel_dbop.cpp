// New, open, include, save and close of a database with its pictures. The picture file is read and
// written first: when it fails the text is left alone.
#include "db/vel_dbop.h"

#include "core/symbols.h"
#include "db/f_dbops.h"
#include "db/needs.h"
#include "db/vel_util.h"
#include "editor/model/seg_file.h"
#include "editor/model/wininfo.h"
#include "eval/registry.h"
#include "front/parser.h"
#include "platform/response.h"
#include "platform/safe_file.h"

namespace velora {

int gNumDocuments = 0;

namespace {

// Menu commands that need a database.
constexpr int kCloseCommand = 103;
constexpr int kSaveCommand = 107;
constexpr int kCopyCommand = 109;

std::string seg_name() {
  return gDDB_basename + ".seg";
}

// Shows that the program is busy while in scope.
class BusyCursor {
public:
  BusyCursor() { gDesktop->set_cursor(CursorShape::busy); }
  ~BusyCursor() { gDesktop->set_cursor(CursorShape::arrow); }
  BusyCursor(const BusyCursor &) = delete;
  BusyCursor &operator=(const BusyCursor &) = delete;
};

// The built-in open reads a text without its pictures and makes no database current: only the text
// can be saved then, since writing the picture file would empty it.
bool only_text_is_open() {
  return gDDB_basename.empty() && Db_file != 0;
}

// A second database must not take over the name of the first or read its pictures over changed
// ones.
bool another_is_open() {
  if (Db_file == 0)
    return false;
  DisplayResponse("Db file already open\n");
  return true;
}

// Asked when a save that the user wanted has failed.
bool changes_are_given_up() {
  constexpr int kGoOn = 1;
  return PromptUser("The changes are not saved. Go on and lose them?", {"Go on", "Cancel"}) ==
         kGoOn;
}

// Ends a save: pictures saved or not, text committed or not. 1 when both.
int finish_save(bool graphs_saved) {
  if (!graphs_saved) {
    DisplayResponse("Unable to save graphs\n");
    gSymbolTableChanged = 0;
    gSegsChanged = 1;
    return 0;
  }
  gSegsChanged = 0;
  if (fdb_commit_db() == 0) {
    DisplayResponse("Graphs saved but not DataBase\n");
    gSymbolTableChanged = 1;
    return 0;
  }
  DisplayResponse("DataBase and Graphs Saved OK\n");
  FreeOrvekWindows();
  gSymbolTableChanged = 0;
  return 1;
}

} // namespace

int OpenNewDataBase(const std::string &orig) {
  if (another_is_open())
    return 0;
  std::string name = orig;
  if (GetUserDialogText("New Database name?", name) == 0 || name.empty())
    return 0;
  return CreateDataBase(name);
}

int CreateDataBase(const std::string &name) {
  if (another_is_open())
    return 0;
  Setup_Global_DDB_name(name);
  // A name that is only an ending, such as ".ddb", leaves nothing to call the database by.
  if (gDDB_basename.empty() || fdb_create_db(gDDB_basename) == 0) {
    DisplayResponsef("%s database not created\n", gDDB_basename.c_str());
    Unset_DDB_name();
    Unset_DDB_Dir();
    return 0;
  }
  fdb_create_segs(gDDB_basename);
  load_file(library_file("user.fdb"), 1);
  if (OpenDB() != 0) {
    if (fdb_commit_db() == 0)
      orvek_error("unable to commit DB\n");
    SetControlWinName(gDDB_basename);
  }
  return 1;
}

int OpenDB() {
  if (fdb_open_db(gDDB_basename) == 0) {
    DisplayResponsef("%s database not opened\n", gDDB_basename.c_str());
    return 0;
  }
  for (const int command : {kCloseCommand, kSaveCommand, kCopyCommand})
    gEnableItem(command);
  return 1;
}

int OpenDataBaseFile() {
  if (another_is_open())
    return 0;
  if (gDDB_basename.empty()) {
    const auto chosen = gDesktop->choose_file(false, "Open DataBase", "*.ddb");
    if (!chosen)
      return 0;
    Setup_Global_DDB_name(*chosen);
  }
  const BusyCursor busy;
  int opened = 0;
  complete_save(seg_name());
  if (RestoreAll(seg_name()) == 0) {
    Unset_DDB_name();
  } else if (OpenDB() != 0) {
    opened = 1;
    gSymbolTableChanged = 0;
    OrvekVeloraConsistencyCheck();
  }
  SetControlWinName(gDDB_basename);
  return opened;
}

int IncludeDataBase() {
  const auto chosen = gDesktop->choose_file(false, "Import DataBase", "*.ddb");
  return chosen ? IncludeDataBaseFile(*chosen) : 0;
}

int IncludeDataBaseFile(const std::string &name) {
  std::string base;
  Make_Base_Name(name, base);
  const BusyCursor busy;
  complete_save(base + ".seg");
  complete_save(base + File_ext);
  if (RestoreAll(base + ".seg") == 0 || load_file(base + File_ext, 0) == 0)
    return 0;
  DisplayResponse("New Orvek Code in Memory\n");
  OrvekVeloraConsistencyCheck();
  return 1;
}

int SaveDataBase(const std::string &defaultmsg) {
  if (only_text_is_open())
    return fdb_commit_db();
  if (gDDB_basename.empty()) {
    if (OpenNewDataBase(defaultmsg) == 0)
      return 0;
  } else {
    ChangeToDDBDir();
  }
  // Refused before anything is tried, so what has changed is still told as changed.
  if (may_overwrite_db() == 0) {
    DisplayResponse("Nothing is saved\n");
    return 0;
  }
  const BusyCursor busy;
  DisplayResponse("Saving. . . ");
  const int saved = finish_save(SaveAll(seg_name()) != 0);
  free_linkages();
  return saved;
}

int CommitClose() {
  ChangeToDDBDir();
  const BusyCursor busy;
  if (may_overwrite_db() == 0)
    return 0;
  if (SaveAll(seg_name()) == 0)
    return changes_are_given_up() ? fdb_close_db() : 0;
  if (fdb_commit_db() == 0) {
    orvek_error("DB not committed\n");
    return 0;
  }
  gSymbolTableChanged = 0;
  gSegsChanged = 0;
  return fdb_close_db();
}

int SaveDBChanges(const std::string &defaultmsg) {
  if ((gSymbolTableChanged == 0 && gSegsChanged == 0) || gNumDocuments < 2)
    return 1;
  constexpr int kYes = 1;
  constexpr int kNo = 2;
  const std::string &shown = gDDB_basename.empty() ? defaultmsg : gDDB_basename;
  const int answer = PromptUser(format_text("Save Changes to Database:\n %s?", shown.c_str()),
                                {"Yes", "No", "Cancel"});
  if (answer != kYes)
    return answer == kNo ? 1 : 0;
  if (only_text_is_open())
    return fdb_commit_db() != 0 || changes_are_given_up() ? 1 : 0;
  if (gDDB_basename.empty() && OpenNewDataBase(defaultmsg) == 0)
    return 0;
  DisplayResponse("Saving database and picture segments files. . .");
  if (CommitClose() == 0)
    return changes_are_given_up() ? 1 : 0;
  DisplayResponse("\nAll files saved\n");
  return 1;
}

void ResetVelora() {
  fdb_close_db();
  FreeAllPictures();
  forget_segment_files();
  SetControlWinName(gDDB_basename);
  gSymbolTableChanged = 1;
  gSegsChanged = 1;
}

void CompleteDataBasePair() {
  if (gDDB_basename.empty() || file_exists(seg_name()) || file_exists(gDDB_basename + ".segs"))
    return;
  SafeFile file(seg_name());
  if (file.open())
    file.write("$$$$");
  file.replace();
}

} // namespace velora
