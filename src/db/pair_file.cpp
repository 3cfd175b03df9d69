// Reading and saving of the pair. Called by the operations of vel_dbop; the replacing itself is
// platform/file_set's.
#include "db/pair_file.h"

#include <cerrno>
#include <chrono>
#include <thread>

#include "db/commit.h"
#include "db/f_dbops.h"
#include "platform/file_set.h"
#include "platform/response.h"

namespace velora {

namespace {

// How long a reader waits for another program that is saving, and between two looks.
constexpr auto kPatience = std::chrono::seconds(5);
constexpr auto kPause = std::chrono::milliseconds(20);

std::string text_file(const std::string &base) {
  return base == gDDB_basename ? current_database_file() : database_file(base);
}

std::string picture_file(const std::string &base) {
  return base + ".seg";
}

// A save that was cut off before its marker has left hidden files that nobody will finish. Called
// under the lock, so that no save of another program owns them.
void remove_unfinished(const std::string &base, const FileLock &lock) {
  if (!lock.held() || entry_kind(set_marker_name(text_file(base))) != EntryKind::none)
    return;
  remove_leftovers(link_target(text_file(base)));
  remove_leftovers(link_target(picture_file(base)));
}

// What an attempt to complete a cut-off save found; `busy` while another program is saving.
enum class Settled { yes, busy, no };

Settled complete_cut_off_save(const std::string &base) {
  const std::string marker = set_marker_name(text_file(base));
  if (entry_kind(marker) == EntryKind::none)
    return Settled::yes;
  const FileLock lock(set_lock_name(text_file(base)));
  if (lock.busy())
    return Settled::busy;
  std::string reason;
  switch (finish_replacement({picture_file(base), text_file(base)}, marker, reason)) {
  case CutOff::none:
    return Settled::yes;
  case CutOff::finished:
    DisplayResponsef("The last save of %s was interrupted; it is complete now\n",
                     text_file(base).c_str());
    return Settled::yes;
  case CutOff::failed:
    orvek_errorf("Sorry! The last save of %s was interrupted and cannot be completed: %s\n",
                 text_file(base).c_str(), reason.c_str());
    break;
  case CutOff::unfit:
    orvek_errorf("Sorry! The last save of %s was interrupted, and its files were changed since\n",
                 text_file(base).c_str());
    break;
  }
  constexpr int kAsTheyAre = 1;
  return PromptUser(format_text("Go on with the files of %s as they are?", base.c_str()),
                    {"Go On", "Cancel"}) == kAsTheyAre
             ? Settled::yes
             : Settled::no;
}

bool settle_with_patience(const std::string &base) {
  const auto end = std::chrono::steady_clock::now() + kPatience;
  for (;;) {
    const Settled settled = complete_cut_off_save(base);
    if (settled != Settled::busy)
      return settled == Settled::yes;
    if (std::chrono::steady_clock::now() >= end) {
      orvek_errorf("Sorry! Another program is saving %s\n", text_file(base).c_str());
      return false;
    }
    std::this_thread::sleep_for(kPause);
  }
}

std::string read_text(const std::string &base, int &error) {
  std::string text;
  error = read_plain_file(text_file(base), text) ? 0 : errno;
  return text;
}

} // namespace

bool settle_cut_off_save(const std::string &base) {
  return settle_with_patience(base);
}

// The text is read before and after the pictures: what is the same both times, with no marker
// about, belongs to them.
bool read_pair(const std::string &base, PairTexts &texts) {
  if (!settle_cut_off_save(base))
    return false;
  const bool unfit = entry_kind(set_marker_name(text_file(base))) != EntryKind::none;
  constexpr int kMostReadings = 50;
  for (int i = 0; i < kMostReadings; ++i) {
    texts.text = read_text(base, texts.text_error);
    if (texts.text_error != 0)
      return true; // nothing else matters
    texts.pictures_kind = read_pictures(picture_file(base), texts.pictures_name, texts.pictures);
    int error = 0;
    if (read_text(base, error) == texts.text && error == 0 &&
        (unfit || entry_kind(set_marker_name(text_file(base))) == EntryKind::none))
      return true;
    if (!unfit && !settle_cut_off_save(base))
      return false;
  }
  orvek_errorf("Sorry! Another program is saving %s\n", text_file(base).c_str());
  return false;
}

int save_pair(const std::string &base) {
  const std::string pictures_name = picture_file(base);
  const FileLock lock(set_lock_name(text_file(base)));
  int saved = 0;
  if (lock.busy()) {
    orvek_errorf("Sorry! Another program is saving %s\n", text_file(base).c_str());
  } else if (is_as_left(pictures_name) && db_is_as_left()) {
    const std::string pictures = pictures_text();
    const std::string text = database_text();
    remove_unfinished(base, lock);
    const SetOutcome end = replace_files({{pictures_name, pictures}, {text_file(base), text}},
                                         set_marker_name(text_file(base)));
    if (end.outcome != SaveOutcome::saved && end.file == 1)
      report_commit(end);
    else
      saved = report_pictures(pictures_name, pictures, end);
    if (saved != 0)
      note_commit(text);
  } else {
    orvek_errorf("Sorry! Another program has just saved %s\n", text_file(base).c_str());
  }
  if (saved == 0)
    DisplayResponse("Unable to save graphs\n");
  return saved;
}

} // namespace velora
