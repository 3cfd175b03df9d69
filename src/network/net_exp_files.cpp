// The two files of an export, made from the text of the old ones. Lines of any length are copied
// byte for byte.
#include <algorithm>
#include <cctype>

#include "core/events.h"
#include "db/f_dbops.h"
#include "db/pair_file.h"
#include "db/vel_util.h"
#include "editor/model/seg_reader.h"
#include "network/net_exp.h"
#include "platform/response.h"
#include "platform/safe_file.h"
#include "platform/trust.h"

namespace velora {

namespace {

bool is_blank(char c) {
  return std::isspace(static_cast<unsigned char>(c)) != 0;
}

bool in_list(std::string_view word, const NameList &list) {
  return list.seen.count(std::string(word)) != 0;
}

// Lines of a text, each with its line end.
class Lines {
public:
  explicit Lines(std::string_view text) : rest_(text) {}
  [[nodiscard]] bool done() const { return rest_.empty(); }
  std::string_view next() {
    const std::size_t end = std::min(rest_.find('\n'), rest_.size() - 1);
    const std::string_view line = rest_.substr(0, end + 1);
    rest_.remove_prefix(end + 1);
    return line;
  }

private:
  std::string_view rest_;
};

// Follows texts, characters and comments over the lines of a section, so that a `;` or "/*" in
// them means nothing.
class EntryReader {
public:
  // Looks through a line; true when its last character outside comments is a `;`.
  bool ends_entry(std::string_view line) {
    char last = ' ';
    for (std::size_t i = 0; i < line.size(); ++i) {
      if (in_comment_) {
        if (line.substr(i, 2) == "*/") {
          in_comment_ = false;
          ++i;
        }
      } else if (in_text_) {
        in_text_ = line[i] != '"';
      } else if (line[i] == '\'' && i + 2 < line.size() && line[i + 2] == '\'') {
        last = '\'';
        i += 2;
      } else if (line.substr(i, 2) == "/*" && (i == 0 || is_blank(line[i - 1]))) {
        in_comment_ = true;
        ++i;
      } else {
        in_text_ = line[i] == '"';
        last = is_blank(line[i]) ? last : line[i];
      }
    }
    return last == ';' && !in_text_;
  }
  [[nodiscard]] bool in_comment() const { return in_comment_; }

private:
  bool in_comment_ = false;
  bool in_text_ = false;
};

// The first blank-delimited word; empty for an empty line.
std::string_view Give_Word_Of_String(std::string_view line) {
  std::size_t start = 0;
  while (start < line.size() && is_blank(line[start]))
    ++start;
  std::size_t end = start;
  while (end < line.size() && !is_blank(line[end]))
    ++end;
  return line.substr(start, end - start);
}

// A section's heading stands alone on its line.
bool is_heading(std::string_view line, std::string_view heading) {
  const std::string_view word = Give_Word_Of_String(line);
  const auto behind = static_cast<std::size_t>(word.data() + word.size() - line.data());
  return word == heading && Give_Word_Of_String(line.substr(behind)).empty();
}

// Copies the entries of one section, up to the line that begins with `;`.
void copy_entries(Lines &lines, const NameList &list, std::string &out) {
  EntryReader reader;
  while (!lines.done()) {
    CheckForUserEvents(0);
    std::string_view line = lines.next();
    const bool commented = reader.in_comment();
    const std::string_view word = Give_Word_Of_String(line);
    if (!commented && word.starts_with(';'))
      return;
    bool ended = reader.ends_entry(line);
    if (commented || word.empty() || word.starts_with("/*"))
      continue; // a comment between entries belongs to none
    const bool kept = in_list(word, list);
    for (;;) {
      if (kept)
        out += line;
      if (ended || lines.done())
        break;
      line = lines.next();
      ended = reader.ends_entry(line);
    }
  }
}

// How many lines behind a segment's line belong to it.
int lines_of_segment(std::string_view line) {
  SegmentLine fields;
  constexpr int kLinkLines = 2;
  return parse_segment_line(line, fields) ? fields.annot.lines + kLinkLines : kLinkLines;
}

void copy_lines(Lines &lines, int count, bool kept, std::string &out) {
  for (; count > 0 && !lines.done(); --count) {
    const std::string_view line = lines.next();
    if (kept)
      out += line;
  }
}

std::string_view without_end(std::string_view line) {
  while (!line.empty() && (line.back() == '\n' || line.back() == '\r'))
    line.remove_suffix(1);
  return line;
}

// Puts a file in place; false after a message.
bool put_file(const std::string &name, const std::string &text) {
  std::string reason;
  if (write_whole_file(name, text, reason)) {
    setVeloraEye(name);
    note_own_text(text);
    return true;
  }
  orvek_errorf("Unable to open %s for writing!\n", name.c_str());
  show_note("note: " + reason);
  return false;
}

} // namespace

std::string Copy_DDB_Sections(std::string_view source, std::string_view heading,
                              const NameList &list) {
  DisplayResponse("Copying ");
  DisplayResponse(heading);
  std::string out(heading);
  const std::string_view wanted = without_end(heading);
  Lines lines(source);
  while (!lines.done()) {
    const std::string_view line = lines.next();
    if (is_heading(line, wanted))
      copy_entries(lines, list, out);
  }
  return out + ";\n";
}

std::string Copy_SEGS_Pictures(std::string_view source, const NameList &types,
                               const NameList &functions) {
  DisplayResponse("Copying the segments.\n");
  std::string out;
  Lines lines(source);
  while (!lines.done()) {
    CheckForUserEvents(0);
    const std::string_view line = lines.next();
    WindowLine header;
    if (is_end_mark(line))
      break;
    if (!parse_window_line(without_end(line), header))
      continue;
    const std::string name = label_from_file(header.name);
    const bool kept = in_list(name, types) || in_list(name, functions);
    if (kept)
      out += line;
    copy_lines(lines, header.annot.lines, kept, out);
    for (int slot = 1; slot <= header.seg_ct && !lines.done(); ++slot) {
      const std::string_view segment = lines.next();
      if (kept)
        out += segment;
      if (!is_empty_slot(segment))
        copy_lines(lines, lines_of_segment(without_end(segment)), kept, out);
    }
  }
  return out + "$$$$";
}

int CreateExportDataBase(const std::string &oldname, const std::string &newname,
                         const NameList &functions, const NameList &types) {
  DisplayResponse("Opening database files\n");
  ChangeToDDBDir();
  PairTexts old;
  if (!read_pair(oldname, old))
    return 0;
  if (old.text_error != 0) {
    orvek_errorf("Unable to open %s%s for reading!\n", oldname.c_str(), File_ext);
    return 0;
  }
  std::string copied = Copy_DDB_Sections(old.text, "tdec\n", types);
  for (const char *heading : {"cdec\n", "fdec\n", "fdef\n"})
    copied += Copy_DDB_Sections(old.text, heading, functions);
  if (!put_file(newname + File_ext, copied))
    return 0;
  DisplayResponse("Closing database files.\n");
  DisplayResponse("Opening segments files\n");
  if (old.pictures_kind != PicturesFound::whole) {
    orvek_errorf("Unable to open %s.seg (or .segs) for reading!\n", oldname.c_str());
    return 0;
  }
  if (!put_file(newname + ".seg", Copy_SEGS_Pictures(old.pictures, types, functions)))
    return 0;
  DisplayResponse("Closing segments files.\n");
  return 1;
}

} // namespace velora
