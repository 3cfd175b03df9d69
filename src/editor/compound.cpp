// Recording compound steps, and taking them back. A change is applied only when everything that it
// touched stands as it left it.
#include "editor/compound.h"

#include <algorithm>

#include "editor/edit.h"
#include "editor/model/wininfo.h"
#include "editor/needs.h"
#include "editor/user_menus.h"
#include "platform/file_set.h"
#include "platform/response.h"
#include "platform/whole_file.h"

namespace velora {

namespace {

struct Orphan {
  std::string what;
  std::shared_ptr<CompoundChange> change;
};
std::vector<Orphan> orphans;

// The innermost step that is open.
CompoundStep *open_step = nullptr;

std::optional<std::string> contents_of(const std::string &file) {
  std::string text;
  return read_whole_file(file, text) ? std::optional(std::move(text)) : std::nullopt;
}

// The name of what does not stand as the change left it; empty when everything does.
std::string changed_since(const CompoundChange &change, bool back) {
  for (const StoredChange &pictures : change.pictures)
    if (!stands_as_left(pictures, back))
      return pictures.name;
  for (const FileChange &file : change.files)
    if (contents_of(file.file) != (back ? file.after : file.before))
      return file.file;
  return symbol_changed_since(change.symbols, back);
}

// A file that was not there goes again; the others are replaced safely.
int put_file(const FileChange &change, bool back) {
  const std::optional<std::string> &wanted = back ? change.before : change.after;
  std::string reason;
  const bool put =
      wanted ? write_with_backup(change.file, *wanted, reason) : remove_file(change.file);
  if (!put)
    orvek_errorf("Can't write %s\n", reason.empty() ? change.file.c_str() : reason.c_str());
  return put ? 1 : 0;
}

// What shows the names that stand: the menus of the user, and the titles with their numbers.
void show_names() {
  CreateUserMenus();
  stored_pictures_changed();
}

// The code goes first, since it may be refused, and then nothing else changes.
int put_all(const CompoundChange &change, bool back, const WinInfo *acting) {
  int whole = put_changes(change.symbols, back);
  if (whole == 0)
    return 0;
  for (const StoredChange &pictures : change.pictures) {
    put_stored(pictures, back);
    follow_numbers(pictures, back, acting);
    gSegsChanged = 1;
  }
  for (const FileChange &file : change.files)
    whole = put_file(file, back) != 0 && whole != 0 ? 1 : 0;
  show_names();
  return whole;
}

} // namespace

CompoundStep::CompoundStep(WinInfo *wi, std::string what)
    : wi_(wi), what_(std::move(what)), outer_(open_step) {
  if (wi != nullptr)
    shown_before_ = state_of(wi);
  begin_compound(wi);
  open_step = this;
}

void CompoundStep::touch_pictures(const std::string &name) {
  for (const StoredPictures &pictures : pictures_)
    if (pictures.name == name)
      return;
  pictures_.push_back(take_stored(name));
}

void CompoundStep::touch_code() {
  if (!code_)
    code_ = take_code();
}

void touch_file(const std::string &file) {
  if (open_step == nullptr)
    return;
  std::vector<FileChange> &files = open_step->files_;
  if (std::none_of(files.begin(), files.end(),
                   [&file](const FileChange &known) { return known.file == file; }))
    files.push_back({file, contents_of(file), {}});
}

CompoundChange CompoundStep::changes_so_far() const {
  CompoundChange change;
  for (const StoredPictures &before : pictures_) {
    StoredChange pictures = stored_change(StoredPictures(before), take_stored(before.name));
    if (!is_nothing(pictures))
      change.pictures.push_back(std::move(pictures));
  }
  if (code_)
    change.symbols = code_changes(*code_, take_code());
  for (const FileChange &file : files_)
    if (auto after = contents_of(file.file); after != file.before)
      change.files.push_back({file.file, file.before, std::move(after)});
  return change;
}

void CompoundStep::take_back() {
  if (const CompoundChange change = changes_so_far(); !change.empty())
    put_all(change, true, wi_);
}

CompoundStep::~CompoundStep() {
  open_step = outer_;
  auto change = std::make_shared<CompoundChange>(changes_so_far());
  if (change->empty())
    change = nullptr;
  else
    for (const StoredChange &pictures : change->pictures)
      follow_numbers(pictures, false, wi_);
  const bool other_names =
      change != nullptr && (!change->pictures.empty() || !change->symbols.empty());
  if (wi_ != nullptr)
    end_compound(wi_, what_, shown_before_, std::move(change));
  else if (change != nullptr)
    keep_orphan(what_, std::move(change));
  if (other_names)
    show_names();
}

int apply_compound(const CompoundChange &change, bool back, const WinInfo *acting) {
  const std::string changed = changed_since(change, back);
  if (!changed.empty()) {
    BeepMsgef(1, "Sorry! %s has been changed since: nothing was changed\n", changed.c_str());
    return 0;
  }
  return put_all(change, back, acting);
}

void keep_orphan(const std::string &what, std::shared_ptr<CompoundChange> change) {
  orphans.push_back({what, std::move(change)});
}

std::string orphan_to_undo() {
  return orphans.empty() ? std::string() : orphans.back().what;
}

int undo_orphan() {
  if (orphans.empty() || apply_compound(*orphans.back().change, true, nullptr) == 0)
    return 0;
  orphans.pop_back();
  return 1;
}

void forget_orphans() {
  orphans.clear();
}

} // namespace velora
