// Writing nodes as expressions. Shared nodes are written out at each use, so the text is bounded; a
// cycle ends where it closes.
#include "editor/hand/node_text.h"

#include <algorithm>
#include <set>

#include "core/events.h"
#include "editor/model/vel_segs.h"
#include "editor/picture_walk.h"

namespace velora {

namespace {

constexpr std::size_t kLongestText = 1 << 16;

class Writer {
public:
  Writer(const WinInfo *wi, std::string &text)
      : wi_(wi), text_(text), arguments_(make_input_numbers(wi)) {}

  void write(const Segm *node, bool inner) {
    check_stack();
    if (text_.size() > kLongestText || !open_.insert(node).second) {
      text_ += "...";
      return;
    }
    const auto argument = std::find(arguments_.begin(), arguments_.end(), node->segnum);
    const std::vector<Segm *> arcs = cyclic_order_types_of(node);
    if (argument != arguments_.end() && wi_->wtype == kFunctionPicture)
      text_ += "?" + std::to_string(argument - arguments_.begin());
    else if (node->type == kBox)
      write_call(node, arcs, inner && !arcs.empty());
    else if (!arcs.empty())
      write(arc_start(arcs.front()), inner); // what passes a value on
    else
      text_ += node->label;
    open_.erase(node);
  }

private:
  void write_call(const Segm *node, const std::vector<Segm *> &arcs, bool bracketed) {
    const bool blank = node->label.find_first_not_of(' ') == std::string::npos;
    text_ += bracketed ? "(" : "";
    text_ += blank ? wi_->name : node->label;
    for (const Segm *arc : arcs) {
      text_ += ' ';
      write(arc_start(arc), true);
    }
    text_ += bracketed ? ")" : "";
  }

  const WinInfo *wi_;
  std::string &text_;
  std::vector<int> arguments_;
  std::set<const Segm *> open_;
};

} // namespace

std::string text_of_nodes(const WinInfo *wi, const std::vector<int> &slots) {
  const std::set<int> chosen(slots.begin(), slots.end());
  std::string text;
  for (const int slot : slots) {
    const Segm *node = wi->seg_ments[slot];
    const bool feeds =
        std::any_of(node->segf_ptr.begin(), node->segf_ptr.end(), [&](const Segm *arc) {
          return arc_end(arc) != nullptr && chosen.contains(arc_end(arc)->segnum);
        });
    if (feeds)
      continue;
    text += text.empty() ? "" : "\n";
    Writer(wi, text).write(node, false);
  }
  return text;
}

} // namespace velora
