// Writing the segment file. Everything that could make the file unreadable is refused before
// anything is written; the file is replaced only when the new one is whole.
#include "editor/model/seg_file.h"

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

// Asks before a file that another program changed is replaced.
bool may_replace(const std::string &fname) {
  const auto known = known_stamps.find(full_name(fname));
  if (known == known_stamps.end())
    return true;
  const FileStamp now = stamp_of(fname);
  if (!now.exists || now == known->second)
    return true;
  const std::string question =
      format_text("%s was changed by another program. Overwrite it?", fname.c_str());
  return PromptUser(question, {"Overwrite", "Cancel"}) == 1;
}

// Copies aside a file that could not be read whole, so that no save can lose the rest.
bool damaged_copy_is_kept(const std::string &fname) {
  const auto found = damaged_files.find(full_name(fname));
  if ((found == damaged_files.end() && gReadingAbandoned == 0) || !file_exists(fname))
    return true;
  std::string copy = fname + ".damaged";
  for (int number = 2; file_exists(copy); ++number)
    copy = format_text("%s.damaged.%d", fname.c_str(), number);
  std::string text;
  SafeFile out(copy);
  if (read_whole_file(fname, text) && out.open())
    out.write(text);
  if (out.replace() != SaveOutcome::saved) {
    orvek_errorf("%s could not be read whole and cannot be kept as %s: %s\n", fname.c_str(),
                 copy.c_str(), out.reason().c_str());
    return false;
  }
  DisplayResponsef("What could not be read of %s is kept in %s\n", fname.c_str(), copy.c_str());
  if (found != damaged_files.end())
    damaged_files.erase(found);
  gReadingAbandoned = 0;
  return true;
}

void write_links(SafeFile &out, char mark, const std::vector<Segm *> &links) {
  std::string line;
  for (const Segm *linked : links) {
    line += mark;
    line += std::to_string(linked->segnum);
  }
  line += '\n';
  out.write(line);
}

void write_segment(SafeFile &out, const Segm *seg) {
  if (seg == nullptr) {
    out.write("~~~~~~\n");
    return;
  }
  out.write(label_to_file(seg->label));
  out.printf(" %d %d %d %d %d %d %d", seg->segnum, seg->type, seg->style, seg->lx, seg->ly, seg->ux,
             seg->uy);
  SaveAnnotation(out, seg->annot);
  write_links(out, 'B', seg->segb_ptr);
  write_links(out, 'F', seg->segf_ptr);
}

void write_picture(SafeFile &out, WinInfo *wi) {
  if (is_network(wi))
    wi->wtype = kNetworkPicture;
  out.write(label_to_file(wi->name));
  out.printf(" %d %d %d %d", wi->cmpnt, wi->seg_ct, wi->wtype, wi->txtsze);
  SaveAnnotation(out, wi->annot);
  for (int slot = 1; slot <= wi->seg_ct; ++slot)
    write_segment(out, wi->seg_ments[slot]);
}

int report(const SafeFile &out, SaveOutcome outcome) {
  switch (outcome) {
  case SaveOutcome::saved:
    setVeloraEye(out.name());
    note_segment_file(out.name());
    return 1;
  case SaveOutcome::cannot_keep_old:
    orvek_errorf("Can't remove old backup file %s\n", out.backup_name().c_str());
    return 0;
  case SaveOutcome::cannot_open:
    orvek_error("Can't open .seg file for write\n");
    return 0;
  case SaveOutcome::cannot_write:
  case SaveOutcome::cannot_replace:
    orvek_errorf("Can't write %s: %s\n", out.name().c_str(), out.reason().c_str());
    return 0;
  }
  return 0;
}

} // namespace

void note_segment_file(const std::string &fname) {
  known_stamps[full_name(fname)] = stamp_of(fname);
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

int SaveAll(const std::string &fname) {
  if (!can_be_written() || !may_replace(fname) || !damaged_copy_is_kept(fname))
    return 0;
  SafeFile out(fname);
  if (out.open()) {
    for (WinInfo *wi = gWinInfo; wi != nullptr; wi = wi->next) {
      if (wi->saved == 0)
        continue;
      CleanUpSegments(wi);
      if (wi->seg_ct > 0)
        write_picture(out, wi);
    }
    out.write(kEndMark);
  }
  return report(out, out.replace());
}

int fdb_create_segs(const std::string &name) {
  const std::string fname = name + ".seg";
  if (file_exists(fname)) {
    DisplayResponsef("Segment File %s already exists\n", fname.c_str());
    return 0;
  }
  SafeFile out(fname);
  if (out.open())
    out.write(kEndMark);
  if (out.replace() != SaveOutcome::saved) {
    DisplayResponsef("Failed to create segment file: %s\n", fname.c_str());
    return 0;
  }
  note_segment_file(fname);
  DisplayResponsef("Created: %s\n", fname.c_str());
  setVeloraEye(fname);
  return 1;
}

} // namespace velora
