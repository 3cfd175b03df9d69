// The replacement of several files as one. `Replacement` holds the state of one attempt; what it
// has not brought to its end it takes back or leaves to finish_replacement, never half.
#include "platform/file_set.h"

#include <cerrno>
#include <deque>

#include "platform/file_set_marker.h"
#include "platform/interrupt.h"

namespace velora {

namespace {

// Gives the contents of `from` a second name: a hard link, or a copy where there are no links.
bool keep_file(const std::string &from, const std::string &to) {
  if (link_file(from, to))
    return true;
  std::string text;
  HiddenFile copy;
  if (!read_whole_file(from, text) || !copy.make(to) || !copy.write(text) || !copy.finish(from))
    return false;
  copy.keep();
  return true;
}

// One file of a replacement. The hidden names are empty until something stands under them.
struct Part {
  const NewFile *wanted = nullptr;
  std::string target; // where links lead
  std::string backup; // target.bak
  FileStamp old;
  HiddenFile made;      // the new contents
  std::string kept;     // the second name of the old file
  std::string older;    // the second name of the old backup
  bool cleared = false; // the old backup was removed to make room
  bool moved = false;   // `kept` has become the backup
  bool placed = false;  // the new file has taken the name
};

class Replacement {
public:
  Replacement(const std::vector<NewFile> &files, std::string marker);
  ~Replacement();
  Replacement(const Replacement &) = delete;
  Replacement &operator=(const Replacement &) = delete;
  SetOutcome run();

private:
  bool fail(SaveOutcome outcome, const Part &part, const std::string &path);
  bool write_new();
  bool keep_old();
  bool write_marker();
  bool move_backups();
  bool move_backup(Part &part);
  bool take_names();
  bool put_back();
  static bool put_backup_back(Part &part);
  void put_back_or_say();
  void sync_folders() const;
  bool remove_marker();
  void remove_kept();

  std::deque<Part> parts_;
  std::string marker_;
  std::string token_;
  SetOutcome outcome_;
  bool marked_ = false; // the marker stands: hidden files belong to whoever finishes
};

Replacement::Replacement(const std::vector<NewFile> &files, std::string marker)
    : marker_(std::move(marker)), token_(random_token()) {
  for (const NewFile &file : files) {
    Part &part = parts_.emplace_back();
    part.wanted = &file;
    part.target = link_target(file.name);
    part.backup = part.target + ".bak";
    part.old = stamp_of(part.target);
  }
}

Replacement::~Replacement() {
  if (!marked_)
    remove_kept();
  for (Part &part : parts_)
    if (marked_)
      part.made.keep();
}

// Notes the first failure, with errno set by what failed.
bool Replacement::fail(SaveOutcome outcome, const Part &part, const std::string &path) {
  if (outcome_.outcome != SaveOutcome::saved)
    return false;
  outcome_.outcome = outcome;
  outcome_.file = static_cast<std::size_t>(part.wanted - parts_.front().wanted);
  outcome_.reason = file_error_text(path, errno);
  return false;
}

bool Replacement::write_new() {
  for (Part &part : parts_) {
    if (entry_kind(part.target) == EntryKind::folder) {
      errno = EISDIR;
      return fail(SaveOutcome::cannot_open, part, part.wanted->name);
    }
    if (!part.made.make(hidden_name(part.target, token_, "new"))) {
      const bool refused = errno == EACCES || errno == EPERM || errno == EROFS;
      // In a folder that may not be written to, the old file could not be moved either.
      return fail(refused && part.old.exists ? SaveOutcome::cannot_keep_old
                                             : SaveOutcome::cannot_open,
                  part, refused ? folder_of(part.target) : part.wanted->name);
    }
    const std::string &text = part.wanted->content;
    for (std::size_t at = 0; at < text.size(); at += gFileChunk)
      if (!part.made.write(std::string_view(text).substr(at, gFileChunk)))
        return fail(SaveOutcome::cannot_write, part, part.wanted->name);
    if (!part.made.finish(part.target))
      return fail(SaveOutcome::cannot_write, part, part.wanted->name);
  }
  return true;
}

bool Replacement::keep_old() {
  for (Part &part : parts_) {
    const std::string kept = hidden_name(part.target, token_, "old");
    const std::string older = hidden_name(part.target, token_, "bak");
    // A backup that is no plain file, or cannot be kept, is looked at when it has to give way.
    if (entry_kind(part.backup) == EntryKind::file && keep_file(part.backup, older))
      part.older = older;
    if (!part.old.exists)
      continue;
    if (!keep_file(part.target, kept))
      return fail(SaveOutcome::cannot_keep_old, part, part.wanted->name);
    part.kept = kept;
  }
  sync_folders();
  return true;
}

bool Replacement::write_marker() {
  if (marker_.empty())
    return true;
  SetMarker marker{token_, {}};
  for (const Part &part : parts_)
    marker.files.push_back({part.old, stamp_of_text(part.wanted->content)});
  HiddenFile made;
  const Part &first = parts_.front();
  if (!made.make(hidden_name(marker_, token_, "mark")) || !made.write(marker_text(marker)) ||
      !made.finish(marker_) || !made.take(marker_))
    return fail(SaveOutcome::cannot_write, first, marker_);
  marked_ = true;
  return sync_folder(folder_of(marker_)) || fail(SaveOutcome::cannot_write, first, marker_);
}

// Where a rename may not take a file's place, the old backup is removed first.
bool Replacement::move_backup(Part &part) {
  part.moved = rename_file(part.kept, part.backup);
  if (part.moved)
    return true;
  part.cleared = remove_file(part.backup);
  part.moved = part.cleared && rename_file(part.kept, part.backup);
  return part.moved;
}

bool Replacement::move_backups() {
  for (Part &part : parts_)
    if (!part.kept.empty() && !move_backup(part))
      return fail(SaveOutcome::cannot_keep_old, part, part.backup);
  return true;
}

bool Replacement::take_names() {
  for (Part &part : parts_) {
    if (!part.made.take(part.target))
      return fail(SaveOutcome::cannot_replace, part, part.wanted->name);
    part.placed = true;
  }
  sync_folders();
  return true;
}

// The backup of the time before takes its name again, where it lost it.
bool Replacement::put_backup_back(Part &part) {
  if (!part.moved && !part.cleared)
    return true;
  const bool back = part.older.empty() ? !part.moved || remove_file(part.backup)
                                       : rename_file(part.older, part.backup);
  if (!back)
    return false;
  part.moved = false;
  part.cleared = false;
  part.older.clear();
  return true;
}

// Takes everything back. The old contents stand as the backup or under their second name; each name
// gets them by a rename, so that no name is ever without a whole file.
bool Replacement::put_back() {
  bool done = true;
  for (Part &part : parts_) {
    const std::string again = hidden_name(part.target, token_, "old");
    if (part.placed && part.old.exists) {
      const std::string &from = part.moved ? part.backup : part.kept;
      part.placed = !(keep_file(from, again) || from == again) || !rename_file(again, part.target);
    } else if (part.placed) {
      part.placed = !remove_file(part.target);
    }
    done &= !part.placed && put_backup_back(part);
  }
  return done;
}

bool Replacement::remove_marker() {
  if (marker_.empty())
    return true;
  if (!remove_file(marker_))
    return false;
  marked_ = false;
  sync_folder(folder_of(marker_));
  return true;
}

// After a failure behind the marker. What cannot be put back is left to be finished, and said.
void Replacement::put_back_or_say() {
  const bool back = put_back();
  sync_folders();
  // A single file has no marker: it stands as it was, and at most its backup is not the one before.
  if (marker_.empty() || (back && remove_marker()))
    return;
  outcome_.reason += "; the save is not finished: its new contents stand in " +
                     parts_.front().made.name() + " and its like beside";
}

void Replacement::remove_kept() {
  for (Part &part : parts_) {
    if (!part.kept.empty() && !part.moved)
      remove_file(part.kept);
    if (!part.older.empty())
      remove_file(part.older);
    part.kept.clear();
    part.older.clear();
  }
}

// What a folder cannot make durable is in order all the same: the order of the names is what counts
// after a crash of the program.
void Replacement::sync_folders() const {
  for (const Part &part : parts_)
    sync_folder(folder_of(part.target));
}

SetOutcome Replacement::run() {
  if (!write_new() || !keep_old())
    return outcome_;
  if (!write_marker()) {
    if (marked_ && !remove_marker())
      outcome_.reason += "; the save will be finished at the next opening";
    return outcome_;
  }
  if (!move_backups() || !take_names()) {
    put_back_or_say();
    return outcome_;
  }
  // All names are new. A marker that will not go is found to be fulfilled by the next who looks.
  remove_marker();
  return outcome_;
}

} // namespace

namespace {

std::string hidden_beside(const std::string &file, const char *ending) {
  const std::string target = link_target(file);
  const std::string part = file_part(target);
  return folder_of(target) + "." + part.substr(0, part.rfind('.')) + ending;
}

} // namespace

std::string set_lock_name(const std::string &file) {
  return hidden_beside(file, ".lock");
}

std::string set_marker_name(const std::string &file) {
  return hidden_beside(file, ".save");
}

SetOutcome replace_files(const std::vector<NewFile> &files, const std::string &marker) {
  const InterruptHold whole;
  Replacement replacement(files, marker);
  return replacement.run();
}

bool write_with_backup(const std::string &name, const std::string &text, std::string &reason) {
  const FileLock lock(set_lock_name(name));
  if (lock.busy()) {
    reason = name + ": another program is saving it";
    return false;
  }
  const SetOutcome end = replace_files({{name, text}}, "");
  reason = end.reason;
  return end.outcome == SaveOutcome::saved;
}

bool keep_damaged_copy(const std::string &name, const std::string &text) {
  std::string copy = name + ".damaged";
  for (int i = 2; file_exists(copy); ++i)
    copy = name + ".damaged." + std::to_string(i);
  std::string reason;
  if (!write_whole_file(copy, text, reason)) {
    orvek_errorf("%s could not be read whole and cannot be kept as %s: %s\n", name.c_str(),
                 copy.c_str(), reason.c_str());
    return false;
  }
  DisplayResponsef("What could not be read of %s is kept in %s\n", name.c_str(), copy.c_str());
  return true;
}

namespace {

// One file of a replacement that was cut off.
struct Rest {
  std::string target;
  std::string made;
  std::string kept;
  bool is_new = false;
};

bool plain_file_with(const std::string &name, const FileStamp &stamp) {
  return entry_kind(name) == EntryKind::file && stamp_of(name) == stamp;
}

// Each file must be old or new, and what is not new yet must have its new contents whole.
bool fits(const SetMarker &marker, const std::vector<std::string> &names,
          std::vector<Rest> &rests) {
  if (marker.files.size() != names.size())
    return false;
  for (std::size_t i = 0; i < names.size(); ++i) {
    Rest rest;
    rest.target = link_target(names[i]);
    rest.made = hidden_name(rest.target, marker.token, "new");
    rest.kept = hidden_name(rest.target, marker.token, "old");
    const FileStamp now = stamp_of(rest.target);
    rest.is_new = now == marker.files[i].made;
    if (!rest.is_new &&
        (now != marker.files[i].old || !plain_file_with(rest.made, marker.files[i].made)))
      return false;
    rests.push_back(rest);
  }
  return true;
}

// From the renames on; `error_path` says what failed.
bool complete(const std::vector<Rest> &rests, const SetMarker &marker, std::string &error_path) {
  for (std::size_t i = 0; i < rests.size(); ++i) {
    const Rest &rest = rests[i];
    error_path = rest.target;
    if (rest.is_new)
      continue;
    const FileStamp &old = marker.files[i].old;
    const std::string backup = rest.target + ".bak";
    // What was taken back in part has lost its second name; the old contents stand under the name.
    if (old.exists && !plain_file_with(rest.kept, old) && !plain_file_with(backup, old) &&
        !keep_file(rest.target, rest.kept))
      return false;
    if (plain_file_with(rest.kept, old) && !rename_file(rest.kept, backup))
      return false;
    if (!rename_file(rest.made, rest.target))
      return false;
  }
  for (const Rest &rest : rests)
    sync_folder(folder_of(rest.target));
  return true;
}

} // namespace

CutOff finish_replacement(const std::vector<std::string> &names, const std::string &marker,
                          std::string &reason) {
  if (entry_kind(marker) == EntryKind::none)
    return CutOff::none;
  const InterruptHold whole;
  std::string text;
  SetMarker found;
  std::vector<Rest> rests;
  if (entry_kind(marker) != EntryKind::file || !read_whole_file(marker, text) ||
      !read_marker(text, found) || !fits(found, names, rests))
    return CutOff::unfit;
  std::string path = marker;
  if (!complete(rests, found, path) || !remove_file(marker)) {
    reason = file_error_text(path, errno);
    return CutOff::failed;
  }
  sync_folder(folder_of(marker));
  for (const Rest &rest : rests)
    remove_leftovers(rest.target);
  return CutOff::finished;
}

} // namespace velora
