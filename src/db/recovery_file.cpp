// Writing, reading and offering of NAME.work. The file is a stranger's when its sum is not in the
// user's list: then it is opened like any other database that is not trusted.
#include "db/recovery_file.h"

#include <cerrno>
#include <charconv>
#include <set>

#include "core/symbols.h"
#include "db/commit.h"
#include "db/f_dbops.h"
#include "editor/model/seg_file.h"
#include "editor/model/wininfo.h"
#include "front/parser.h"
#include "platform/response.h"
#include "platform/safe_file.h"
#include "platform/trust.h"

namespace velora {

namespace {

constexpr std::string_view kFirstWord = "velora-work-1";

// The work files that the user wants to look at later; they are neither removed nor written over.
std::set<std::string> kept_for_later;

std::string stamp_word(const FileStamp &stamp) {
  return stamp.exists ? std::to_string(stamp.size) + ":" + stamp.sum : "absent";
}

// Takes the next word, up to a blank or the line's end, off `text`.
std::string_view next_word(std::string_view &text) {
  const std::size_t end = std::min(text.find_first_of(" \n"), text.size());
  const std::string_view word = text.substr(0, end);
  text.remove_prefix(std::min(end + 1, text.size()));
  return word;
}

bool read_number(std::string_view word, std::size_t &number) {
  const char *end = word.data() + word.size();
  const auto [stop, error] = std::from_chars(word.data(), end, number);
  return error == std::errc() && stop == end;
}

bool read_stamp(std::string_view word, FileStamp &stamp) {
  if (word == "absent")
    return true;
  const std::size_t colon = word.find(':');
  if (colon == std::string_view::npos)
    return false;
  std::size_t size = 0;
  stamp.exists = true;
  stamp.sum = word.substr(colon + 1);
  const bool good = read_number(word.substr(0, colon), size);
  stamp.size = size;
  return good;
}

// The first line, the text, the pictures, and a line of three digits for each picture.
std::string work_content() {
  const std::string text = database_text();
  const std::string pictures = work_pictures_text();
  const bool named = !gDDB_basename.empty();
  std::string content(kFirstWord);
  content += ' ' + (named ? stamp_word(stamp_of(gDDB_basename + File_ext)) : "absent");
  content += ' ' + (named ? stamp_word(stamp_of(gDDB_basename + ".seg")) : "absent");
  content += ' ' + std::to_string(text.size()) + ' ' + std::to_string(pictures.size()) + '\n';
  content += text + pictures + '\n';
  for (const WinInfo *wi = gWinInfo; wi != nullptr; wi = wi->next) {
    content += wi->win != 0 ? "1 " : "0 ";
    content += std::to_string(wi->saved) + ' ' + std::to_string(wi->clean) + '\n';
  }
  return content;
}

// Written safely, for its owner alone. Empty `reason` when it stands.
bool write_private(const std::string &name, const std::string &content, std::string &reason) {
  const std::string target = link_target(name);
  HiddenFile made;
  if (made.make(hidden_name(target, random_token(), "new")) && made.write(content) &&
      made.finish_private() && made.take(target))
    return true;
  reason = file_error_text(name, errno);
  return false;
}

// A name that is not being kept for later: NAME.work, NAME.work.2, ...
std::string free_work_name(const std::string &name) {
  std::string free = name;
  for (int i = 2; kept_for_later.contains(free); ++i)
    free = name + "." + std::to_string(i);
  return free;
}

} // namespace

std::string work_name(const std::string &base) {
  if (!base.empty())
    return base + ".work";
  const std::string folder = state_folder();
  return folder.empty() ? std::string() : folder + "/velora-unsaved.work";
}

std::string write_work() {
  const std::string content = work_content();
  std::string reason;
  for (const std::string &base : {gDDB_basename, std::string()}) {
    const std::string name = free_work_name(work_name(base));
    if (name.empty() || !write_private(name, content, reason))
      continue;
    if (!session_is_restricted())
      note_own_text(content);
    return name;
  }
  orvek_errorf("Sorry! The unsaved work cannot be kept: %s\n", reason.c_str());
  return {};
}

void remove_work(const std::string &base) {
  const std::string name = work_name(base);
  if (!name.empty() && !kept_for_later.contains(name) && entry_kind(name) == EntryKind::file)
    remove_file(name);
}

void close_work(const std::string &base) {
  remove_work(base);
  kept_for_later.erase(work_name(base));
}

bool read_work(const std::string &name, WorkFile &work) {
  if (name.empty() || entry_kind(name) != EntryKind::file || !read_whole_file(name, work.whole))
    return false;
  std::string_view rest = work.whole;
  std::size_t text_size = 0;
  std::size_t pictures_size = 0;
  if (next_word(rest) != kFirstWord || !read_stamp(next_word(rest), work.text_stamp) ||
      !read_stamp(next_word(rest), work.pictures_stamp) ||
      !read_number(next_word(rest), text_size) || !read_number(next_word(rest), pictures_size) ||
      text_size > rest.size() || pictures_size > rest.size() - text_size)
    return false;
  work.text = rest.substr(0, text_size);
  work.pictures = rest.substr(text_size, pictures_size);
  rest.remove_prefix(text_size + pictures_size);
  next_word(rest); // the end of the last line of the pictures
  while (!rest.empty()) {
    WorkPicture how;
    how.shown = next_word(rest) == "1";
    how.saved = next_word(rest) == "1" ? 1 : 0;
    how.clean = next_word(rest) == "1" ? 1 : 0;
    work.how.push_back(how);
  }
  return true;
}

WorkChoice offer_work(const std::string &base, WorkFile &work) {
  const std::string name = work_name(base);
  if (name.empty() || entry_kind(name) == EntryKind::none)
    return WorkChoice::none;
  const std::string shown = base.empty() ? "no database" : base;
  if (!gPersonAnswers || !read_work(name, work)) {
    show_note("note: unsaved work on " + shown + " stands in " + name);
    kept_for_later.insert(name);
    return WorkChoice::later;
  }
  const bool agrees = base.empty() || (work.text_stamp == stamp_of(base + File_ext) &&
                                       work.pictures_stamp == stamp_of(base + ".seg"));
  constexpr int kTake = 1;
  constexpr int kDiscard = 2;
  const int answer = PromptUser(format_text("Unsaved work on %s was found", shown.c_str()),
                                {agrees ? "Recover" : "Open as Copy", "Discard", "Later"});
  if (answer == kTake)
    return agrees ? WorkChoice::recover : WorkChoice::copy;
  if (answer == kDiscard) {
    remove_file(name);
    return WorkChoice::none;
  }
  kept_for_later.insert(name);
  return WorkChoice::later;
}

// The text goes the way of any database: what stands in it asks before it acts.
int take_work(const std::string &base, const WorkFile &work) {
  const std::string name = work_name(base);
  const bool pictures = restore_pictures(name, work.pictures) != 0;
  std::size_t i = 0;
  for (WinInfo *wi = gWinInfo; wi != nullptr && i < work.how.size(); wi = wi->next, ++i) {
    wi->saved = work.how[i].saved;
    wi->clean = work.how[i].clean;
  }
  note_database_read(name, work.whole);
  int text = 0;
  {
    const DatabaseReading reading;
    text = load_text(name, work.text);
  }
  gSymbolTableChanged = 1;
  gSegsChanged = 1;
  return pictures && text != 0 ? 1 : 0;
}

void offer_unnamed_work() {
  WorkFile work;
  if (offer_work("", work) == WorkChoice::recover && take_work("", work) != 0)
    remove_work("");
}

} // namespace velora
