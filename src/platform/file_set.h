// Replacing the files of a database together: after a failure or a crash at any moment all of them
// are old or all are new. The version before stays as NAME.bak of each.
//
// The order of a replacement, all under a lock:
//   1. the new contents are written to hidden files beside the old ones and forced to the disk;
//   2. the old files, and the backups of the time before, get second, hidden names;
//   3. a marker is written that says which contents were old and which are new. From here on a
//      replacement that is cut off is finished by whoever comes next; before, it never was;
//   4. the second names of the old files become the backups;
//   5. the new files take the names; then the marker and what was kept beside go.
// A single file needs no marker: its step 5 is one rename.
//
// The marker holds sums and no paths. Whoever finishes a replacement trusts only plain files under
// the hidden names of the folders at hand, whose contents have the sums that the marker tells.
#pragma once

#include <string>
#include <vector>

#include "platform/safe_file.h"

namespace velora {

// The names of the lock and of the marker for the files that share the base name of `file` (its
// name without the last ending): ".BASE.lock" and ".BASE.save" in the folder where its links lead.
std::string set_lock_name(const std::string &file);
std::string set_marker_name(const std::string &file);

struct NewFile {
  std::string name;
  std::string content;
};

// How a replacement ended: for all but `saved` which file failed and why, in words.
struct SetOutcome {
  SaveOutcome outcome = SaveOutcome::saved;
  std::size_t file = 0;
  std::string reason;
};

// Replaces all of `files`. The caller holds their lock. `marker` is the marker's name, which lies
// in a folder of theirs; for a single file it may be empty. No interrupt is looked at.
SetOutcome replace_files(const std::vector<NewFile> &files, const std::string &marker);

// Replaces one file of a database, the version before staying as its backup. False with the cause
// in `reason`.
bool write_with_backup(const std::string &name, const std::string &text, std::string &reason);

// Keeps `text`, the contents of a file that is about to be replaced and could not be read whole, as
// NAME.damaged, NAME.damaged.2 and so on, and says so. False after a message.
bool keep_damaged_copy(const std::string &name, const std::string &text);

// What was found of a replacement that was cut off.
enum class CutOff {
  none,     // there is no marker
  finished, // it is complete now: all files are new
  unfit,    // the marker does not fit what stands there; nothing was touched
  failed    // it could not be completed for want of rights or room; nothing is lost
};

// Completes a replacement of `names` that was cut off. The caller holds their lock.
CutOff finish_replacement(const std::vector<std::string> &names, const std::string &marker,
                          std::string &reason);

} // namespace velora
