// Writing the segment file. Everything that could make the file unreadable is refused before
// anything is written; the text is made in memory and replaces the file as a whole.
#include "editor/model/seg_file.h"

#include <cerrno>
#include <filesystem>
#include <map>
#include <set>

#include "editor/model/needs.h"
#include "editor/model/vel_segs.h"
#include "editor/model/wininfo.h"
#include "platform/response.h"

namespace velora {

int gReadingAbandoned = 0;

namespace {

constexpr const char *kEndMark = "$$$$";

// How each file looked when it was last read or written, and those that could not be read whole; by
// full name.
std::map<std::string, FileStamp> known_stamps;
std::set<std::string> damaged_files;

std::string full_name(const std::string &fname) {
  std::error_code error;
  const std::filesystem::path path = std::filesystem::absolute(fname, error);
  return error ? fname : path.lexically_normal().string();
}

bool is_network(const WinInfo *wi) {
  return wi->name.starts_with(kNetworkName);
}

bool goes_to_file(const WinInfo *wi) {
  return wi->saved != 0 && wi->seg_ct > 0;
}

bool fits(const WinInfo *wi, const char *what, const std::string &text) {
  if (text.size() <= kLongestLabel)
    return true;
  orvek_errorf("The %s \"%s\" of picture %s is longer than the %zu characters that a segment file "
               "can hold\n",
               what, text.c_str(), wi->name.c_str(), kLongestLabel);
  return false;
}

// 1 when the file can carry every name and label; else all that it cannot are reported.
bool can_be_written() {
  bool good = true;
  for (const WinInfo *wi = gWinInfo; wi != nullptr; wi = wi->next) {
    if (!goes_to_file(wi))
      continue;
    good &= fits(wi, "name", wi->name);
    if (wi->name.starts_with(kEndMark)) {
      orvek_errorf("A picture cannot be named %s: in a segment file that ends the pictures\n",
                   wi->name.c_str());
      good = false;
    }
    for (int slot = 1; slot <= wi->seg_ct; ++slot)
      if (const Segm *seg = wi->seg_ments[slot]; seg != nullptr)
        good &= fits(wi, "label", seg->label);
  }
  return good;
}

// Asks before a file that another program changed is replaced. What the user wants replaced is then
// known, so that the same change is not asked about twice.
bool may_replace(const std::string &fname) {
  if (is_as_left(fname))
    return true;
  const bool was_read = known_stamps[full_name(fname)].exists;
  const std::string question =
      format_text(was_read ? "%s was changed by another program. Overwrite it?"
                           : "%s was not read. Overwrite it?",
                  fname.c_str());
  if (PromptUser(question, {"Overwrite", "Cancel"}) != 1)
    return false;
  known_stamps[full_name(fname)] = stamp_of(fname);
  return true;
}

// Copies aside a file that could not be read whole, so that no save can lose the rest.
bool damaged_copy_is_kept(const std::string &fname) {
  const auto found = damaged_files.find(full_name(fname));
  if ((found == damaged_files.end() && gReadingAbandoned == 0) || !file_exists(fname))
    return true;
  std::string text;
  if (!read_plain_file(fname, text)) {
    orvek_errorf("%s could not be read whole and cannot be kept as %s: %s\n", fname.c_str(),
                 (fname + ".damaged").c_str(), file_error_text(fname, errno).c_str());
    return false;
  }
  if (!keep_damaged_copy(fname, text))
    return false;
  if (found != damaged_files.end())
    damaged_files.erase(found);
  gReadingAbandoned = 0;
  return true;
}

void add_links(std::string &out, char mark, const std::vector<Segm *> &links) {
  for (const Segm *linked : links)
    out += mark + std::to_string(linked->segnum);
  out += '\n';
}

void add_segment(std::string &out, const Segm *seg) {
  if (seg == nullptr) {
    out += "~~~~~~\n";
    return;
  }
  out += label_to_file(seg->label);
  out += format_text(" %d %d %d %d %d %d %d", seg->segnum, seg->type, seg->style, seg->lx, seg->ly,
                     seg->ux, seg->uy);
  SaveAnnotation(out, seg->annot);
  add_links(out, 'B', seg->segb_ptr);
  add_links(out, 'F', seg->segf_ptr);
}

void write_picture(std::string &out, WinInfo *wi) {
  if (is_network(wi))
    wi->wtype = kNetworkPicture;
  out += picture_block(wi);
}

} // namespace

std::string picture_block(const WinInfo *wi) {
  std::string out = label_to_file(wi->name);
  const int wtype = is_network(wi) ? int{kNetworkPicture} : wi->wtype;
  out += format_text(" %d %d %d %d", wi->cmpnt, wi->seg_ct, wtype, wi->txtsze);
  SaveAnnotation(out, wi->annot);
  for (int slot = 1; slot <= wi->seg_ct; ++slot)
    add_segment(out, wi->seg_ments[slot]);
  return out;
}

void note_segment_file(const std::string &fname, std::string_view text) {
  known_stamps[full_name(fname)] = stamp_of_text(text);
}

void note_unread_segment_file(const std::string &fname) {
  known_stamps[full_name(fname)] = {};
}

void note_damaged_file(const std::string &fname, bool damaged) {
  if (damaged)
    damaged_files.insert(full_name(fname));
  else
    damaged_files.erase(full_name(fname));
}

void forget_segment_files() {
  known_stamps.clear();
  damaged_files.clear();
  gReadingAbandoned = 0;
}

bool is_as_left(const std::string &fname) {
  const auto known = known_stamps.find(full_name(fname));
  if (known == known_stamps.end())
    return true;
  const FileStamp now = stamp_of(fname);
  return !now.exists || now == known->second;
}

bool may_save_pictures(const std::string &fname) {
  return can_be_written() && may_replace(fname) && may_replace_protected(fname) &&
         damaged_copy_is_kept(fname);
}

std::string pictures_text() {
  std::string text;
  for (WinInfo *wi = gWinInfo; wi != nullptr; wi = wi->next) {
    if (wi->saved == 0)
      continue;
    CleanUpSegments(wi);
    if (wi->seg_ct > 0)
      write_picture(text, wi);
  }
  return text + kEndMark;
}

std::string work_pictures_text() {
  std::string text;
  for (WinInfo *wi = gWinInfo; wi != nullptr; wi = wi->next)
    write_picture(text, wi);
  return text + kEndMark;
}

int report_pictures(const std::string &fname, const std::string &text, const SetOutcome &end) {
  switch (end.outcome) {
  case SaveOutcome::saved:
    setVeloraEye(fname);
    note_segment_file(fname, text);
    return 1;
  case SaveOutcome::cannot_keep_old:
    orvek_errorf("Can't remove old backup file %s.bak\n", link_target(fname).c_str());
    show_note("note: " + end.reason);
    return 0;
  case SaveOutcome::cannot_open:
    orvek_error("Can't open .seg file for write\n");
    show_note("note: " + end.reason);
    return 0;
  case SaveOutcome::cannot_write:
  case SaveOutcome::cannot_replace:
    orvek_errorf("Can't write %s\n", end.reason.c_str());
    return 0;
  }
  return 0;
}

int SaveAll(const std::string &fname) {
  if (!may_save_pictures(fname))
    return 0;
  const FileLock lock(set_lock_name(fname));
  if (lock.busy()) {
    orvek_errorf("Sorry! Another program is saving %s\n", fname.c_str());
    return 0;
  }
  const std::string text = pictures_text();
  return report_pictures(fname, text, replace_files({{fname, text}}, ""));
}

int fdb_create_segs(const std::string &name) {
  const std::string fname = name + ".seg";
  if (file_exists(fname)) {
    DisplayResponsef("Segment File %s already exists\n", fname.c_str());
    return 0;
  }
  std::string reason;
  if (!write_whole_file(fname, kEndMark, reason)) {
    DisplayResponsef("Failed to create segment file: %s\n", fname.c_str());
    show_note("note: " + reason);
    return 0;
  }
  note_segment_file(fname, kEndMark);
  DisplayResponsef("Created: %s\n", fname.c_str());
  setVeloraEye(fname);
  return 1;
}

} // namespace velora
