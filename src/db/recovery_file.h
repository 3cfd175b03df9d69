// Unsaved work on its way over an end of the program that nobody wanted: a hang-up, a request to
// end, a crash. It stands beside the database as NAME.work; what belongs to no database, or whose
// folder takes no files, in the user's state folder.
//
// The first line tells what both files of the database held when the work was written; then the
// text and all pictures follow, shown and unfinished ones too, with a line for each picture that
// says how it was shown. The file is its owner's alone.
#pragma once

#include <string>
#include <vector>

#include "platform/file_stamp.h"

namespace velora {

// How a picture stood in memory; in the order of the pictures' text.
struct WorkPicture {
  bool shown = false; // in a window
  int saved = 0;      // the record's own flags
  int clean = 0;
};

struct WorkFile {
  std::string name;
  FileStamp text_stamp; // of the database's files when this was written
  FileStamp pictures_stamp;
  std::string text;
  std::string pictures;
  std::vector<WorkPicture> how;
  std::string whole; // the bytes of the file itself, for its sum
};

// NAME.work of a base name; for "" the one in the state folder, or "" when there is none.
std::string work_name(const std::string &base);

// Writes all that is in memory to the work file of the current database, or to the one in the state
// folder. Answers the name written, or "" after a message.
std::string write_work();
// Removes the work file of `base` and all that this session wrote or took up, after a clean save or
// close. What the user wants to look at later stays.
void remove_work(const std::string &base);
// The same when the database is closed: what was kept for later is offered at the next opening.
void close_work(const std::string &base);
// Reads a work file; false when there is none or it is damaged.
bool read_work(const std::string &name, WorkFile &work);

// What the user wants done with the work found for a database.
enum class WorkChoice { none, recover, copy, later };
// Looks for unsaved work on `base` and asks, one file after the other when some were kept for
// later; discards what it is told to. Where nobody can be asked it is only pointed out.
WorkChoice offer_work(const std::string &base, WorkFile &work);

// Takes a work file that was read into memory; 1 or 0. Everything then counts as changed. A picture
// that was shown is a record beside the stored one of its name and number, with `saved` 0, until it
// gets its window or place (shell/recovery).
int take_work(const WorkFile &work);

// Offers what was left without a database; called when a session starts. The file stays until the
// work is saved or given up.
void offer_unnamed_work();
// Forgets what this session wrote and keeps for later; between tests.
void forget_work_files();

} // namespace velora
