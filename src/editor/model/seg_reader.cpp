// Taking the lines of a segment file apart. Nothing here changes a picture.
#include "editor/model/seg_reader.h"

#include <algorithm>
#include <charconv>

#include "editor/model/seg_file.h"
#include "front/putils.h"
#include "platform/response.h"

namespace velora {

namespace {

// Damage beyond so many places is only counted.
constexpr std::size_t kMostReports = 12;
// The longest annotation in the older form.
constexpr std::size_t kLongestOldAnnotation = 1024;

bool is_space(char c) {
  return c == ' ' || (c >= '\t' && c <= '\r');
}

// Reads the fields of one line from left to right.
class Fields {
public:
  explicit Fields(std::string_view line) : rest_(line) {}

  bool word(std::string &text) {
    skip_space();
    std::size_t length = 0;
    while (length < rest_.size() && !is_space(rest_[length]))
      ++length;
    if (length == 0 || length > kLongestLabel)
      return false;
    text = label_from_file(rest_.substr(0, length));
    rest_.remove_prefix(length);
    return true;
  }

  bool number(int &value) {
    skip_space();
    std::string_view digits = rest_;
    if (digits.starts_with('+'))
      digits.remove_prefix(1);
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (error != std::errc() || (end != digits.data() + digits.size() && !is_space(*end)))
      return false;
    rest_.remove_prefix(static_cast<std::size_t>(end - rest_.data()));
    return true;
  }

  // Nothing, the number of lines that follow, or in the older form "<" text ">".
  bool annotation(AnnotationMark &mark) {
    skip_space();
    if (rest_.starts_with('<')) {
      const std::string_view text =
          rest_.substr(1, std::min(rest_.find('>', 1), kLongestOldAnnotation + 1) - 1);
      mark.text = AdjustAnnotation(std::string(text), 2);
      return true;
    }
    return rest_.empty() || (number(mark.lines) && at_end());
  }

private:
  void skip_space() {
    while (!rest_.empty() && is_space(rest_.front()))
      rest_.remove_prefix(1);
  }
  bool at_end() {
    skip_space();
    return rest_.empty();
  }

  std::string_view rest_;
};

} // namespace

SegLines split_lines(std::string_view text) {
  SegLines all;
  const std::size_t first = text.find('\n');
  const bool dos = first != std::string_view::npos && first > 0 && text[first - 1] == '\r';
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    std::string_view line = text.substr(0, end);
    if (dos && line.ends_with('\r'))
      line.remove_suffix(1);
    all.lines.push_back(line);
    all.cut_off = end == std::string_view::npos;
    text.remove_prefix(all.cut_off ? text.size() : end + 1);
  }
  return all;
}

void DamageList::add(std::size_t line, std::string what) {
  found_.push_back({line, std::move(what)});
}

void DamageList::report() {
  if (!found_.empty())
    ++gParseErrors; // the command that read the file has failed in part
  std::stable_sort(found_.begin(), found_.end(),
                   [](const Damage &a, const Damage &b) { return a.line < b.line; });
  for (std::size_t i = 0; i < found_.size() && i < kMostReports; ++i)
    orvek_errorf("Damaged segment file %s, line %zu: %s\n", file_.c_str(), found_[i].line + 1,
                 found_[i].what.c_str());
  if (found_.size() > kMostReports)
    orvek_errorf("Damaged segment file %s: %zu more places\n", file_.c_str(),
                 found_.size() - kMostReports);
}

bool parse_window_line(std::string_view line, WindowLine &parsed) {
  Fields fields(line);
  return fields.word(parsed.name) && fields.number(parsed.cmpnt) && fields.number(parsed.seg_ct) &&
         fields.number(parsed.wtype) && fields.number(parsed.txtsze) &&
         fields.annotation(parsed.annot);
}

bool parse_segment_line(std::string_view line, SegmentLine &parsed) {
  Fields fields(line);
  if (!fields.word(parsed.label) || !fields.number(parsed.segnum) || !fields.number(parsed.type) ||
      !fields.number(parsed.style))
    return false;
  for (int &corner : parsed.box)
    if (!fields.number(corner))
      return false;
  return fields.annotation(parsed.annot);
}

bool parse_link_line(std::string_view line, char mark, std::vector<int> &numbers) {
  while (!line.empty() && is_space(line.back()))
    line.remove_suffix(1);
  while (!line.empty()) {
    int number = 0;
    const char *end = line.data() + line.size();
    if (line.front() != mark)
      return false;
    const auto [next, error] = std::from_chars(line.data() + 1, end, number);
    if (error != std::errc())
      return false;
    numbers.push_back(number);
    line.remove_prefix(static_cast<std::size_t>(next - line.data()));
  }
  return true;
}

} // namespace velora
