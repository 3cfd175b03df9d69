// The parts of the segment file's reader: the lines with their numbers, the list of what is wrong
// with them, and the two kinds of line. Private to the segment file.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace velora {

// The lines of a file and how far they have been read.
struct SegLines {
  std::vector<std::string_view> lines;
  std::size_t at = 0;
  bool cut_off = false; // the last line has no line end

  [[nodiscard]] bool done() const { return at >= lines.size(); }
  [[nodiscard]] std::size_t left() const { return lines.size() - at; }
};
// Cuts a text into lines; where the first line ends in CR LF, so do all.
SegLines split_lines(std::string_view text);

// What was found wrong with a file.
class DamageList {
public:
  explicit DamageList(std::string file) : file_(std::move(file)) {}
  // `line` counts from 0.
  void add(std::size_t line, std::string what);
  [[nodiscard]] bool empty() const { return found_.empty(); }
  // Reports all in the order of their lines, the first ones by text and the rest by their number.
  void report();

private:
  struct Damage {
    std::size_t line;
    std::string what;
  };
  std::string file_;
  std::vector<Damage> found_;
};

// The annotation part at the end of a line: a text in the older form, or a count of lines.
struct AnnotationMark {
  std::string text;
  int lines = 0;
};

// "name cmpnt seg_ct wtype txtsze".
struct WindowLine {
  std::string name;
  int cmpnt = 0;
  int seg_ct = 0;
  int wtype = 0;
  int txtsze = 0;
  AnnotationMark annot;
};

// "label segnum type style lx ly ux uy".
struct SegmentLine {
  std::string label;
  int segnum = 0;
  int type = 0;
  int style = 0;
  int box[4] = {0, 0, 0, 0};
  AnnotationMark annot;
};

// False when the line is not of that form. Anything behind the form is not accepted.
bool parse_window_line(std::string_view line, WindowLine &parsed);
bool parse_segment_line(std::string_view line, SegmentLine &parsed);
// The numbers of a link line "B3B7"; false when it holds anything else.
bool parse_link_line(std::string_view line, char mark, std::vector<int> &numbers);

inline bool is_end_mark(std::string_view line) {
  return line.starts_with("$$$$");
}
inline bool is_empty_slot(std::string_view line) {
  return line.starts_with("~~~~~~");
}

} // namespace velora
