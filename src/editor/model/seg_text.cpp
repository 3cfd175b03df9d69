// The small texts of the segment file: labels and annotations, in and out.
#include "editor/model/seg_file.h"

#include <algorithm>

namespace velora {

namespace {

constexpr char kCodedOpen = 1;
constexpr char kCodedClose = 2;
constexpr char kCodedLineEnd = 3;

std::string_view without_final_line_end(std::string_view text) {
  if (!text.empty() && text.back() == '\n')
    text.remove_suffix(1);
  return text;
}

} // namespace

std::string label_to_file(std::string_view label) {
  std::string text(label.empty() ? std::string_view(" ") : label);
  for (char &c : text)
    if (c == ' ' || (c >= '\t' && c <= '\r') || c == '\0')
      c = '~';
  return text;
}

std::string label_from_file(std::string_view text) {
  std::string label(text);
  std::replace(label.begin(), label.end(), '~', ' ');
  return label;
}

int annotation_lines(std::string_view annot) {
  const std::string_view text = without_final_line_end(annot);
  return 1 + static_cast<int>(std::count(text.begin(), text.end(), '\n'));
}

void SaveAnnotation(std::string &out, std::string_view annot) {
  if (!annot.empty()) {
    out += " " + std::to_string(annotation_lines(annot)) + "\n";
    out += without_final_line_end(annot);
  }
  out += '\n';
}

std::string RestoreAnnotation(const std::vector<std::string_view> &text, std::size_t &at,
                              int lines) {
  std::string annot;
  for (; lines > 0 && at < text.size(); --lines) {
    annot += text[at++];
    annot += '\n';
  }
  return annot;
}

std::string AdjustAnnotation(std::string annot, int whichway) {
  constexpr char plain[] = {'<', '>', '\n'};
  constexpr char coded[] = {kCodedOpen, kCodedClose, kCodedLineEnd};
  const char *from = whichway == 1 ? plain : coded;
  const char *to = whichway == 1 ? coded : plain;
  for (char &c : annot)
    for (int i = 0; i < 3; ++i)
      if (c == from[i]) {
        c = to[i];
        break;
      }
  return annot;
}

} // namespace velora
