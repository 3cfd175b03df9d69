// Reading the segment file. A sound file is read as it stands; of a damaged one every picture and
// segment that can be made out is kept, each damaged place is reported, and the file is noted so
// that the next save first keeps it aside.
#include "editor/model/seg_file.h"

#include <cerrno>
#include <string>
#include <unordered_map>
#include <unordered_set>

#include "core/needs.h"
#include "editor/model/needs.h"
#include "editor/model/seg_build.h"
#include "editor/model/seg_reader.h"
#include "editor/model/wininfo.h"
#include "platform/desktop.h"
#include "platform/response.h"

namespace velora {

namespace {

// A progress mark is shown for the first picture and every so many further ones.
constexpr int kProgressStep = 20;

// Beyond it a number is no component number.
constexpr int kHighestComponent = 1000000;

std::string picture_key(const std::string &name, int cmpnt) {
  return name + '\n' + std::to_string(cmpnt);
}

bool can_be_picture(const WindowLine &window) {
  return window.wtype >= kFunctionPicture && window.wtype <= kNetworkPicture &&
         window.cmpnt >= -1 && window.cmpnt <= kHighestComponent;
}

// The reading of one file. Records are found through an index, so that a file of many pictures is
// read in linear time; as in PictureExists the first record of a name and number counts.
class FileReader {
public:
  FileReader(const std::string &fname, std::string_view text)
      : lines_(split_lines(text)), damage_(fname) {
    for (WinInfo *wi = gWinInfo; wi != nullptr; wi = wi->next)
      known_.emplace(picture_key(wi->name, wi->cmpnt), wi);
  }

  // A reading that leaves the list alone: what it reads goes to `aside`.
  FileReader(std::string_view text, std::vector<std::unique_ptr<WinInfo>> &aside)
      : lines_(split_lines(text)), damage_(""), aside_(&aside) {}

  int read();
  DamageList &damage() { return damage_; }

private:
  int read_picture(const WindowLine &window, std::size_t window_at);
  std::string read_annotation(const AnnotationMark &mark, std::size_t at);
  std::vector<SegEntry> read_entries(const WindowLine &window, std::size_t window_at);
  bool read_entry(SegEntry &entry);
  void read_links(char mark, std::vector<int> &numbers);
  bool skip_to_entry(int slot, int count, int &found);
  void skip_to_picture();
  WinInfo *record_for(const WindowLine &window, std::size_t window_at);
  bool at_picture_or_end() const;
  void check_end(bool ended);

  SegLines lines_;
  DamageList damage_;
  std::unordered_map<std::string, WinInfo *> known_;
  std::unordered_set<std::string> read_;
  std::vector<std::unique_ptr<WinInfo>> *aside_ = nullptr;
};

bool FileReader::at_picture_or_end() const {
  WindowLine window;
  const std::string_view line = lines_.lines[lines_.at];
  return is_end_mark(line) || parse_window_line(line, window);
}

// Passes over what is no picture, up to the next line that begins one or ends them.
void FileReader::skip_to_picture() {
  const std::size_t first = lines_.at++;
  while (!lines_.done() && !at_picture_or_end())
    ++lines_.at;
  damage_.add(first, lines_.at == first + 1 ? "the line belongs to no picture"
                                            : format_text("lines %zu to %zu belong to no picture",
                                                          first + 1, lines_.at));
}

std::string FileReader::read_annotation(const AnnotationMark &mark, std::size_t at) {
  if (!mark.text.empty())
    return mark.text;
  if (mark.lines >= 0 && static_cast<std::size_t>(mark.lines) <= lines_.left())
    return RestoreAnnotation(lines_.lines, lines_.at, mark.lines);
  damage_.add(at, format_text("an annotation of %d lines", mark.lines));
  return {};
}

void FileReader::read_links(char mark, std::vector<int> &numbers) {
  if (!lines_.done() && parse_link_line(lines_.lines[lines_.at], mark, numbers)) {
    ++lines_.at;
    return;
  }
  damage_.add(lines_.at, format_text("the %c links of a segment are missing", mark));
  SegmentLine segment;
  const bool other_line = lines_.done() || at_picture_or_end() ||
                          is_empty_slot(lines_.lines[lines_.at]) ||
                          parse_segment_line(lines_.lines[lines_.at], segment);
  if (!other_line)
    ++lines_.at;
}

// False, with nothing read, when no entry stands here.
bool FileReader::read_entry(SegEntry &entry) {
  entry.line = lines_.at;
  const std::string_view line = lines_.lines[lines_.at];
  // A label of six blanks looks like an empty slot but has its numbers behind it.
  if (parse_segment_line(line, entry.fields)) {
    ++lines_.at;
    entry.filled = true;
    entry.annot = read_annotation(entry.fields.annot, entry.line);
    read_links('B', entry.back);
    read_links('F', entry.forward);
    return true;
  }
  if (!is_empty_slot(line))
    return false;
  ++lines_.at;
  return true;
}

// Looks for the next line that can be segment `slot` or a later one of `count`; false when the
// picture ends before.
bool FileReader::skip_to_entry(int slot, int count, int &found) {
  for (; !lines_.done() && !at_picture_or_end(); ++lines_.at) {
    SegmentLine segment;
    if (parse_segment_line(lines_.lines[lines_.at], segment) && segment.segnum >= slot &&
        segment.segnum <= count) {
      found = segment.segnum;
      return true;
    }
  }
  return false;
}

std::vector<SegEntry> FileReader::read_entries(const WindowLine &window, std::size_t window_at) {
  // Every segment takes a line at least; a count beyond that says nothing about the picture.
  const bool counted =
      window.seg_ct >= 0 && static_cast<std::size_t>(window.seg_ct) <= lines_.left();
  if (!counted)
    damage_.add(window_at, format_text("a picture of %d segments", window.seg_ct));
  const int count = counted ? window.seg_ct : static_cast<int>(lines_.left());
  std::vector<SegEntry> entries(1);
  while (static_cast<int>(entries.size()) <= count) {
    if (lines_.done() || (!counted && at_picture_or_end()))
      break;
    SegEntry entry;
    if (read_entry(entry)) {
      entries.push_back(std::move(entry));
      continue;
    }
    const int slot = static_cast<int>(entries.size());
    damage_.add(lines_.at,
                format_text("segment %d of picture %s cannot be read", slot, window.name.c_str()));
    int found = 0;
    if (!skip_to_entry(slot, count, found))
      break;
    entries.resize(static_cast<std::size_t>(found));
  }
  if (counted && static_cast<int>(entries.size()) <= count && lines_.done())
    damage_.add(lines_.at, format_text("the file ends within picture %s", window.name.c_str()));
  return entries;
}

WinInfo *FileReader::record_for(const WindowLine &window, std::size_t window_at) {
  if (aside_ != nullptr) {
    aside_->push_back(std::make_unique<WinInfo>());
    aside_->back()->wtype = static_cast<short>(window.wtype);
    return aside_->back().get();
  }
  const std::string key = picture_key(window.name, window.cmpnt);
  if (!read_.insert(key).second)
    damage_.add(window_at, format_text("picture %s %d stands in the file before",
                                       window.name.c_str(), window.cmpnt));
  WinInfo *&wi = known_[key];
  if (wi != nullptr)
    ClearWinInfo(wi);
  else
    NewWinInfo(0, window.wtype, &wi);
  return wi;
}

// A picture is built aside and enters the list when it is whole.
int FileReader::read_picture(const WindowLine &window, std::size_t window_at) {
  WinInfo built;
  built.annot = read_annotation(window.annot, window_at);
  if (fill_picture(&built, read_entries(window, window_at), damage_) == 0)
    return 0;
  WinInfo *wi = record_for(window, window_at);
  if (wi == nullptr)
    return 0;
  wi->name = window.name;
  wi->cmpnt = window.cmpnt;
  wi->txtsze = window.txtsze;
  wi->annot = std::move(built.annot);
  wi->seg_ments = std::move(built.seg_ments);
  wi->seg_ct = built.seg_ct;
  if (wi->win != 0)
    gDesktop->invalidate(wi->win);
  return 1;
}

void FileReader::check_end(bool ended) {
  if (!ended)
    damage_.add(lines_.lines.size(), "the file ends without its end mark");
  for (; !lines_.done(); ++lines_.at)
    if (lines_.lines[lines_.at].find_first_not_of(" \t\r") != std::string_view::npos) {
      damage_.add(lines_.at, "text stands behind the end mark");
      break;
    }
}

int FileReader::read() {
  bool ended = false;
  for (int count = 0; !lines_.done() && !ended; ++count) {
    if (count % kProgressStep == 0 && gProgressDots != 0 && aside_ == nullptr)
      DisplayResponse(" .");
    const std::size_t at = lines_.at;
    WindowLine window;
    if (is_end_mark(lines_.lines[at])) {
      ended = true;
      ++lines_.at;
    } else if (!parse_window_line(lines_.lines[at], window) || !can_be_picture(window)) {
      skip_to_picture();
    } else {
      ++lines_.at;
      if (read_picture(window, at) == 0)
        return 0;
    }
  }
  check_end(ended);
  return 1;
}

std::string stem_of(const std::string &filename) {
  return filename.substr(0, filename.size() - std::min<std::size_t>(4, filename.size()));
}

bool create_empty(const std::string &filename) {
  DisplayResponsef("Can't open a %s seg file to read\n", stem_of(filename).c_str());
  DisplayResponsef("Trying to create %s. . .", filename.c_str());
  std::string reason;
  // A file that is there but cannot be read must not be replaced by an empty one.
  if (file_exists(filename) || !write_whole_file(filename, "$$$$", reason)) {
    DisplayResponsef("Failed to create %s\n", filename.c_str());
    return false;
  }
  setVeloraEye(filename);
  DisplayResponse(" Done\n");
  return true;
}

} // namespace

std::vector<std::unique_ptr<WinInfo>> pictures_of_text(std::string_view text) {
  std::vector<std::unique_ptr<WinInfo>> pictures;
  if (FileReader(text, pictures).read() == 0)
    error_exit("Alloc failed");
  return pictures;
}

PicturesFound read_pictures(const std::string &filename, std::string &found, std::string &text) {
  const std::string stem = stem_of(filename);
  for (const std::string &name : {filename, stem + ".segs", stem + ".SEG", stem + ".SEGS"}) {
    found = name;
    if (!file_exists(name))
      continue;
    if (read_plain_file(name, text))
      return PicturesFound::whole;
    const std::string reason = file_error_text(name, errno);
    DisplayResponsef("Can't open %s to read\n", name.c_str());
    show_note("note: " + reason);
    return PicturesFound::unreadable;
  }
  found = filename;
  return PicturesFound::missing;
}

int restore_pictures(const std::string &found, const std::string &text) {
  // An abandoned reading must not lead to a save over what it did not reach.
  gReadingAbandoned = 1;
  DisplayResponse("Loading picture segments. . .");
  FileReader reader(found, text);
  if (reader.read() == 0)
    return 0;
  DisplayResponse(" Loaded\n");
  reader.damage().report();
  note_segment_file(found, text);
  note_damaged_file(found, !reader.damage().empty());
  gReadingAbandoned = 0;
  return 1;
}

int RestoreAll(const std::string &filename) {
  gReadingAbandoned = 1;
  std::string found;
  std::string text;
  PicturesFound kind = read_pictures(filename, found, text);
  if (kind == PicturesFound::missing && create_empty(filename))
    kind = read_pictures(filename, found, text);
  gReadingAbandoned = 0;
  return kind == PicturesFound::whole ? restore_pictures(found, text) : 0;
}

} // namespace velora
