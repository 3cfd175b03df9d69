// New, open, include, save and close of a database with its pictures. Both files are looked at
// before either is taken into memory, and replaced together.
#include "db/vel_dbop.h"

#include <cerrno>
#include <utility>

#include "core/events.h"
#include "core/symbols.h"
#include "db/f_dbops.h"
#include "db/needs.h"
#include "db/pair_file.h"
#include "db/recovery_file.h"
#include "db/vel_util.h"
#include "editor/model/seg_file.h"
#include "editor/model/wininfo.h"
#include "eval/registry.h"
#include "front/parser.h"
#include "platform/desktop.h"
#include "platform/response.h"
#include "platform/safe_file.h"
#include "platform/trust.h"

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

// Ends a save of both files. What is not saved has changed still.
int finish_save(bool saved) {
  gSymbolTableChanged = saved ? 0 : 1;
  gSegsChanged = saved ? 0 : 1;
  if (!saved)
    return 0;
  remove_work(gDDB_basename);
  DisplayResponse("DataBase and Graphs Saved OK\n");
  FreeOrvekWindows();
  return 1;
}

// A segment file that is missing while the version before it stands is not taken for no pictures.
// False when the user would rather not go on.
bool settle_missing_pictures(const std::string &base, PairTexts &texts) {
  const std::string backup = base + ".seg.bak";
  if (texts.pictures_kind != PicturesFound::missing || !file_exists(backup))
    return true;
  constexpr int kUse = 1;
  constexpr int kWithout = 2;
  const int answer = PromptUser(format_text("%s.seg is missing, but %s holds pictures. Use them?",
                                            base.c_str(), backup.c_str()),
                                {"Use Them", "Open Without", "Cancel"});
  if (answer == kWithout)
    return true;
  if (answer != kUse)
    return false;
  if (!read_whole_file(backup, texts.pictures)) {
    orvek_errorf("%s\n", file_error_text(backup, errno).c_str());
    return false;
  }
  texts.pictures_kind = PicturesFound::whole;
  texts.pictures_name = base + ".seg";
  return true;
}

// Reads both files of `base`; nothing is taken into memory. False after a message.
bool read_files(const std::string &base, PairTexts &texts) {
  if (!read_pair(base, texts))
    return false;
  if (texts.text_error == 0 && texts.pictures_kind != PicturesFound::unreadable)
    return settle_missing_pictures(base, texts);
  if (texts.text_error != 0)
    report_unreadable(base, texts.text_error);
  poll_user_events(); // who stopped the reading knows why it ended
  return false;
}

// Takes the pictures that were read into memory. False after a message; the text is then not to be
// read either.
bool take_pictures(const PairTexts &texts) {
  return texts.pictures_kind == PicturesFound::missing ||
         restore_pictures(texts.pictures_name, texts.pictures) != 0;
}

// Forgets the name of a database that could not be opened, however that ended.
class NameGuard {
public:
  NameGuard() = default;
  ~NameGuard() {
    if (!opened_)
      Unset_DDB_name();
  }
  NameGuard(const NameGuard &) = delete;
  NameGuard &operator=(const NameGuard &) = delete;
  void opened() { opened_ = true; }

private:
  bool opened_ = false;
};

int opened_text(int opened) {
  if (opened == 0) {
    DisplayResponsef("%s database not opened\n", gDDB_basename.c_str());
    return 0;
  }
  for (const int command : {kCloseCommand, kSaveCommand, kCopyCommand})
    gEnableItem(command);
  return 1;
}

// Makes the current database of its files as they stand and of the unsaved work on them.
int opened_work(const WorkFile &work) {
  PairTexts texts;
  if (!read_pair(gDDB_basename, texts) || texts.text_error != 0)
    return opened_text(0);
  note_unread_segment_file(seg_name());
  if (texts.pictures_kind == PicturesFound::whole)
    note_segment_file(texts.pictures_name, texts.pictures);
  OpeningGuard opening(database_file(gDDB_basename), OpeningGuard::Means::open);
  attach_database(gDDB_basename, texts.text);
  if (take_work(work) == 0)
    return 0;
  opening.done();
  OrvekVeloraConsistencyCheck();
  gSymbolTableChanged = 1;
  gSegsChanged = 1;
  return opened_text(1);
}

// Makes the current database of its files.
int opened_files(const PairTexts &texts) {
  OpeningGuard opening(database_file(gDDB_basename), OpeningGuard::Means::open);
  note_unread_segment_file(seg_name());
  if (!take_pictures(texts))
    return opened_text(0);
  if (opened_text(fdb_open_text(gDDB_basename, texts.text)) == 0)
    return 0;
  opening.done();
  gSymbolTableChanged = 0;
  OrvekVeloraConsistencyCheck();
  return 1;
}

// The unsaved work on files that have changed since belongs to no database until it is saved under
// a name.
int opened_copy(const WorkFile &work) {
  const int taken = take_work(work);
  SetControlWinName(gDDB_basename);
  return taken;
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
  NameGuard current;
  // A name that is only an ending, such as ".ddb", leaves nothing to call the database by.
  if (gDDB_basename.empty() || fdb_create_db(gDDB_basename) == 0) {
    DisplayResponsef("%s database not created\n", gDDB_basename.c_str());
    Unset_DDB_name();
    Unset_DDB_Dir();
    return 0;
  }
  note_unread_segment_file(seg_name());
  fdb_create_segs(gDDB_basename);
  load_file(library_file("user.fdb"), 1, {"user.fdb"});
  if (OpenDB() != 0) {
    current.opened();
    if (fdb_commit_db() == 0)
      orvek_error("unable to commit DB\n");
    SetControlWinName(gDDB_basename);
  }
  return 1;
}

int OpenDB() {
  return opened_text(fdb_open_db(gDDB_basename));
}

int OpenDataBaseFile() {
  if (another_is_open())
    return 0;
  if (gDDB_basename.empty()) {
    const auto chosen = gDesktop->choose_file(false, "Open DataBase", "*.ddb");
    if (!chosen)
      return 0;
    std::string base;
    Make_Base_Name(*chosen, base); // whatever the case of its ending
    Setup_Global_DDB_name(base);
  }
  const BusyCursor busy;
  NameGuard name;
  PairTexts texts;
  int opened = 0;
  WorkFile work;
  const WorkChoice choice = offer_work(gDDB_basename, work);
  if (choice == WorkChoice::copy) {
    gDDB_basename.clear();
    return opened_copy(work);
  }
  if (choice == WorkChoice::recover)
    opened = opened_work(work);
  else
    opened = read_files(gDDB_basename, texts) ? opened_files(texts) : opened_text(0);
  if (opened != 0)
    name.opened();
  else
    Unset_DDB_name();
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
  PairTexts texts;
  if (!read_files(base, texts))
    return 0;
  OpeningGuard opening(database_file(base), OpeningGuard::Means::include);
  if (!take_pictures(texts))
    return 0;
  note_database_read(database_file(base), texts.text);
  {
    const DatabaseReading reading;
    if (load_text(database_file(base), texts.text) == 0)
      return 0;
  }
  opening.done();
  if (!texts.pictures.empty() && !texts.pictures.starts_with("$$$$"))
    gSegsChanged = 1; // they are in another database now
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
  if (!may_save_pictures(seg_name()) || may_save_db() == 0 || !settle_cut_off_save(gDDB_basename)) {
    DisplayResponse("Nothing is saved\n");
    return 0;
  }
  const BusyCursor busy;
  DisplayResponse("Saving. . . ");
  const int saved = finish_save(save_pair(gDDB_basename) != 0);
  free_linkages();
  return saved;
}

int CommitClose() {
  ChangeToDDBDir();
  const BusyCursor busy;
  if (!may_save_pictures(seg_name()) || may_save_db() == 0 || !settle_cut_off_save(gDDB_basename))
    return 0;
  if (save_pair(gDDB_basename) == 0) {
    orvek_error("DB not committed\n");
    gSymbolTableChanged = 1;
    gSegsChanged = 1;
    return 0;
  }
  gSymbolTableChanged = 0;
  gSegsChanged = 0;
  remove_work(gDDB_basename);
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
  if (!gDDB_basename.empty())
    close_work(gDDB_basename);
  else
    remove_work("");
  fdb_close_db();
  FreeAllPictures();
  forget_segment_files();
  SetControlWinName(gDDB_basename);
  gSymbolTableChanged = 1;
  gSegsChanged = 1;
}

// A pair whose pictures are only missing, or whose last save is unfinished, is no new one.
void CompleteDataBasePair() {
  if (gDDB_basename.empty() || !db_was_written())
    return;
  for (const char *ending : {".seg", ".segs", ".SEG", ".SEGS", ".seg.bak"})
    if (file_exists(gDDB_basename + ending))
      return;
  if (!file_exists(current_database_file()) ||
      file_exists(set_marker_name(current_database_file())))
    return;
  std::string reason;
  if (!write_whole_file(seg_name(), "$$$$", reason))
    show_note("note: " + reason);
}

} // namespace velora
