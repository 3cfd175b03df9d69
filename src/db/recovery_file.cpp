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
#include "platform/interrupt.h"
#include "platform/response.h"
#include "platform/safe_file.h"
#include "platform/trust.h"

namespace velora {

namespace {

constexpr std::string_view kFirstWord = "velora-work-1";

// The work files that the user wants to look at later; they are neither removed nor written over.
std::set<std::string> kept_for_later;
// Those that hold work of this session: it wrote them, or took them up.
std::set<std::string> held;

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
  content += ' ' + (named ? stamp_word(stamp_of(current_database_file())) : "absent");
  content += ' ' + (named ? stamp_word(stamp_of(gDDB_basename + ".seg")) : "absent");
  content += ' ' + std::to_string(text.size()) + ' ' + std::to_string(pictures.size()) + '\n';
  content += text + pictures + '\n';
  for (const WinInfo *wi = gWinInfo; wi != nullptr; wi = wi->next) {
    content += wi->win != 0 ? "1 " : "0 ";
    content += std::to_string(wi->saved) + ' ' + std::to_string(wi->clean) + '\n';
  }
  return content;
}

// Written safely, for its owner alone. It takes the place of a link: who gave the database to the
// user may have put one there, and the work is written without a question. False with the cause in
// `reason`.
bool write_private(const std::string &name, const std::string &content, std::string &reason) {
  HiddenFile made;
  if (made.make(hidden_name(name, random_token(), "new")) && made.write(content) &&
      made.finish_private() && made.take(name))
    return true;
  reason = file_error_text(name, errno);
  return false;
}

// The name of the work file number `i` of a base name: NAME.work, NAME.work.2, ...
std::string numbered(const std::string &name, int i) {
  return i == 1 ? name : name + "." + std::to_string(i);
}

// The first of them that is not being kept for later.
std::string free_work_name(const std::string &name) {
  int i = 1;
  while (kept_for_later.contains(numbered(name, i)))
    ++i;
  return name.empty() ? name : numbered(name, i);
}

void remove_unless_kept(const std::string &name) {
  if (!name.empty() && !kept_for_later.contains(name) && entry_kind(name) == EntryKind::file)
    remove_file(name);
}

} // namespace

std::string work_name(const std::string &base) {
  if (!base.empty())
    return base + ".work";
  const std::string folder = state_folder();
  return folder.empty() ? std::string() : folder + "/velora-unsaved.work";
}

std::string write_work() {
  // A request to end the program may come twice, and the second must not stop this.
  const InterruptHold whole;
  const std::string content = work_content();
  std::string reason;
  for (const std::string &base : {gDDB_basename, std::string()}) {
    const std::string name = free_work_name(work_name(base));
    if (name.empty() || !write_private(name, content, reason))
      continue;
    if (!session_is_restricted())
      note_own_text(content);
    held.insert(name);
    return name;
  }
  orvek_errorf("Sorry! The unsaved work cannot be kept: %s\n", reason.c_str());
  return {};
}

void remove_work(const std::string &base) {
  if (!base.empty())
    remove_unless_kept(work_name(base));
  for (const std::string &name : held)
    remove_unless_kept(name);
  held.clear();
}

void close_work(const std::string &base) {
  remove_work(base);
  const std::string name = work_name(base);
  std::erase_if(kept_for_later, [&](const std::string &kept) { return kept.starts_with(name); });
}

bool read_work(const std::string &name, WorkFile &work) {
  work = WorkFile{};
  work.name = name;
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

namespace {

// The question about one work file; `none` when it was discarded.
WorkChoice offer_file(const std::string &base, const std::string &name, WorkFile &work) {
  const std::string shown = base.empty() ? "no database" : base;
  if (!gPersonAnswers || !read_work(name, work)) {
    show_note("note: unsaved work on " + shown + " stands in " + name);
    return WorkChoice::later;
  }
  const bool agrees = base.empty() || (work.text_stamp == stamp_of(database_file(base)) &&
                                       work.pictures_stamp == stamp_of(base + ".seg"));
  constexpr int kTake = 1;
  constexpr int kDiscard = 2;
  const int answer = PromptUser(format_text("Unsaved work on %s was found", shown.c_str()),
                                {agrees ? "Recover" : "Open as Copy", "Discard", "Later"});
  if (answer == kTake)
    return agrees ? WorkChoice::recover : WorkChoice::copy;
  if (answer != kDiscard)
    return WorkChoice::later;
  remove_file(name);
  return WorkChoice::none;
}

} // namespace

WorkChoice offer_work(const std::string &base, WorkFile &work) {
  const std::string first = work_name(base);
  WorkChoice choice = WorkChoice::none;
  if (first.empty())
    return choice;
  for (int i = 1; i == 1 || entry_kind(numbered(first, i)) == EntryKind::file; ++i) {
    const std::string name = numbered(first, i);
    if (entry_kind(name) == EntryKind::none || kept_for_later.contains(name))
      continue;
    choice = offer_file(base, name, work);
    if (choice == WorkChoice::recover || choice == WorkChoice::copy)
      return choice;
    if (choice == WorkChoice::later)
      kept_for_later.insert(name);
  }
  return choice;
}

namespace {

// The stored record of that name and number that memory holds already; null when there is none.
WinInfo *stored_before(const std::vector<WinInfo *> &before, const WinInfo &picture) {
  for (WinInfo *wi : before)
    if (wi->cmpnt == picture.cmpnt && wi->name == picture.name)
      return wi;
  return nullptr;
}

void take_picture(WinInfo &picture, const WorkPicture &how, const std::vector<WinInfo *> &before) {
  const bool was_shown = how.shown || how.saved == 0;
  if (how.shown && picture.seg_ct == 0 && picture.annot.empty())
    return; // an empty window
  WinInfo *wi = was_shown ? nullptr : stored_before(before, picture);
  if (wi == nullptr && NewWinInfo(0, picture.wtype, &wi) == 0)
    return;
  wi->name = picture.name;
  wi->cmpnt = picture.cmpnt;
  wi->txtsze = picture.txtsze;
  wi->annot = std::move(picture.annot);
  wi->seg_ments = std::move(picture.seg_ments);
  wi->seg_ct = picture.seg_ct;
  wi->saved = was_shown ? 0 : 1;
  wi->clean = how.clean;
}

// Each picture becomes a record of its own: one that was shown may have the name and the number of
// the stored one that it was loaded from.
void take_pictures(const WorkFile &work) {
  std::vector<WinInfo *> before;
  for (WinInfo *wi = gWinInfo; wi != nullptr; wi = wi->next)
    if (wi->win == 0 && wi->saved != 0)
      before.push_back(wi);
  const auto pictures = pictures_of_text(work.pictures);
  if (pictures.size() != work.how.size())
    show_note(format_text("note: %s is damaged: %zu of %zu pictures could be read",
                          work.name.c_str(), pictures.size(), work.how.size()));
  constexpr WorkPicture kStored{false, 1, 1};
  for (std::size_t i = 0; i < pictures.size(); ++i)
    take_picture(*pictures[i], i < work.how.size() ? work.how[i] : kStored, before);
}

} // namespace

// The text goes the way of any database: what stands in it asks before it acts.
int take_work(const WorkFile &work) {
  OpeningGuard taking(work.name, OpeningGuard::Means::open);
  take_pictures(work);
  note_database_read(work.name, work.whole);
  int text = 0;
  {
    const DatabaseReading reading;
    text = load_text(work.name, work.text);
  }
  taking.done();
  held.insert(work.name);
  gSymbolTableChanged = 1;
  gSegsChanged = 1;
  return text != 0 ? 1 : 0;
}

void offer_unnamed_work() {
  WorkFile work;
  if (offer_work("", work) == WorkChoice::recover)
    take_work(work);
}

void forget_work_files() {
  kept_for_later.clear();
  held.clear();
}

} // namespace velora
