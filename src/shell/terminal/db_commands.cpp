// Commands of the shell about the database: new, open, include, save, close, copy, status.
#include "shell/terminal/db_commands.h"

#include <cerrno>

#include "core/symbols.h"
#include "db/f_dbops.h"
#include "db/recovery_file.h"
#include "db/vel_dbop.h"
#include "db/vel_util.h"
#include "editor/model/wininfo.h"
#include "editor/vel_cmp.h"
#include "front/notes.h"
#include "front/parser.h"
#include "front/pdecs.h"
#include "platform/response.h"
#include "platform/safe_file.h"
#include "platform/trust.h"
#include "platform/whole_file.h"
#include "shell/recovery.h"
#include "shell/terminal/colon.h"

namespace velora {

namespace {

constexpr const char *kUnnamed = "Untitled1";

void changes_are_none() {
  gSymbolTableChanged = 0;
  gSegsChanged = 0;
}

// The error that stands in the way of reading a plain file; 0 for none.
int why_unreadable(const std::string &name) {
  if (entry_kind(name, true) == EntryKind::other)
    return EINVAL;
  const int fd = open_to_read(name);
  if (fd < 0)
    return errno;
  close_file_number(fd);
  return 0;
}

// Looks at the files of a database before anything is touched: what fails half way leaves a name
// behind that stands in the way of the next database. Says which file cannot be opened, and why.
bool can_be_opened(const std::string &base) {
  std::string failing = database_file(base);
  int error = why_unreadable(failing);
  if (error == ENOENT && file_exists(failing + ".bak"))
    show_note("note: " + failing + ".bak holds the version before the last save");
  if (error == 0) {
    failing = base + ".seg";
    error = file_exists(failing) ? why_unreadable(failing) : 0;
  }
  if (error == 0)
    return true;
  orvek_errorf("Failed to open %s\n", failing.c_str());
  if (error != ENOENT)
    show_note("note: " + file_error_text(failing, error));
  return false;
}

bool refuse_second_database() {
  if (!database_is_current())
    return false;
  BeepMsge("Db file already open\n", 1);
  show_note("note: \":close\" closes it");
  return true;
}

bool refuse_without_database() {
  if (database_is_current())
    return false;
  BeepMsge("No database is open\n", 1);
  return true;
}

bool is_user_symbol(const symbol *s) {
  return (s->stype & (kBuiltinBit | kSystemBit)) == 0;
}

bool something_is_in_memory() {
  if (gWinInfo != nullptr)
    return true;
  for (const symbol *s = Symbol_table; s != nullptr; s = s->next)
    if (is_user_symbol(s))
      return true;
  return false;
}

// What the symbol table and the pictures hold, for `:status`.
struct Contents {
  int types = 0;
  int constructors = 0;
  int functions = 0;
  int clauses = 0;
  int pictures = 0;
};

Contents count_contents() {
  Contents c;
  for (const symbol *s = Symbol_table; s != nullptr; s = s->next) {
    if (!is_user_symbol(s))
      continue;
    if ((s->stype & kFunctionBit) != 0) {
      ++c.functions;
      c.clauses += clause_count(s->name);
    } else if ((s->stype & kConstructorBit) != 0) {
      ++c.constructors;
    } else if ((s->stype & kTypeNameBit) != 0) {
      ++c.types;
    }
  }
  for (const WinInfo *wi = gWinInfo; wi != nullptr; wi = wi->next)
    ++c.pictures;
  return c;
}

// Saving writes what the program knows, and of comments it knows nothing.
void note_comments() {
  std::string text;
  if (Db_file == 0 || !read_whole_file(Db_f_name, text))
    return;
  bool quoted = false;
  for (std::size_t i = 0; i + 1 < text.size(); ++i) {
    quoted = text[i] == '"' ? !quoted : quoted && text[i] != '\n';
    if (!quoted && text[i] == '/' && text[i + 1] == '*')
      return advise(Note::comments_dropped, {Db_f_name, Db_f_name});
  }
}

// Unsaved work may hold pictures that were shown in windows.
int open_current() {
  const int opened = OpenDataBaseFile();
  store_recovered_pictures();
  return opened;
}

} // namespace

int open_named_database(const std::string &name) {
  std::string base;
  Make_Base_Name(name, base);
  if (!file_exists(database_file(base)) && base == name && file_exists(name)) {
    const int loaded = load_file(name, 0);
    gSymbolTableChanged = 0;
    return loaded;
  }
  if (!can_be_opened(base))
    return 0;
  Setup_Global_DDB_name(base);
  return open_current();
}

bool database_is_current() {
  return Db_file != 0 || !gDDB_basename.empty();
}

int offer_unnamed() {
  offer_unnamed_work();
  store_recovered_pictures();
  return 1;
}

int keep_unsaved_work() {
  if ((gSymbolTableChanged == 0 && gSegsChanged == 0) || !something_is_in_memory())
    return 1;
  const std::string name = write_work();
  if (name.empty())
    return 0;
  show_note("note: what is not saved is kept in " + name + " and offered at the next start");
  return 1;
}

int leave_database(bool typed) {
  gNumDocuments = 2;
  const bool asked = database_is_current() || (typed && something_is_in_memory());
  if (asked && SaveDBChanges(kUnnamed) == 0)
    return 0;
  remove_work(gDDB_basename);
  CompleteDataBasePair();
  return 1;
}

int colon_new(const std::string &argument) {
  if (refuse_second_database())
    return 0;
  const int created = CreateDataBase(argument);
  if (created != 0)
    changes_are_none();
  return created;
}

int colon_open(const std::string &argument) {
  if (refuse_second_database())
    return 0;
  std::string base;
  Make_Base_Name(argument, base);
  if (!can_be_opened(base))
    return 0;
  Setup_Global_DDB_name(base);
  return open_current();
}

// A mistyped name must not leave a picture file behind, so the text is looked for first.
int colon_include(const std::string &argument) {
  std::string base;
  Make_Base_Name(argument, base);
  if (!can_be_opened(base))
    return 0;
  return IncludeDataBaseFile(argument);
}

int colon_save(const std::string &) {
  note_comments();
  return SaveDataBase(kUnnamed);
}

int colon_close(const std::string &) {
  if (refuse_without_database())
    return 0;
  gNumDocuments = 2;
  if (SaveDBChanges(kUnnamed) == 0)
    return 0;
  ResetVelora();
  changes_are_none();
  return 1;
}

int colon_copy(const std::string &argument) {
  if (refuse_without_database())
    return 0;
  if (argument.empty()) {
    BackupDataBase();
    return 1;
  }
  if (argument != "mac" && argument != "dos")
    return report_use(":copy mac|dos");
  const int copied = argument == "mac" ? MacFormat() : PCFormat();
  DisplayResponse("DataBase Copy Saved\n");
  return copied;
}

int colon_status(const std::string &) {
  if (!database_is_current())
    DisplayResponse("No database is open\n");
  else
    DisplayResponsef("Database %s\n", Db_file != 0 ? Db_f_name.c_str() : gDDB_basename.c_str());
  const Contents c = count_contents();
  DisplayResponsef("%d types, %d constructors, %d functions with %d clauses, %d pictures\n",
                   c.types, c.constructors, c.functions, c.clauses, c.pictures);
  DisplayResponsef("The code %s, the pictures %s\n",
                   gSymbolTableChanged != 0 ? "has changed" : "is saved",
                   gSegsChanged != 0 ? "have changed" : "are saved");
  if (session_is_restricted())
    DisplayResponsef("The session is restricted: %s (:trust)\n", why_restricted().c_str());
  return 1;
}

int colon_trust(const std::string &) {
  if (!session_is_restricted()) {
    DisplayResponse("Nothing here needs trust\n");
    return 1;
  }
  DisplayResponsef("Trusted from now on: %s\n", restricting_databases().c_str());
  lift_restriction();
  return 1;
}

} // namespace velora
