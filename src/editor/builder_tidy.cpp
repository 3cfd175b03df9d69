// Tidying of built pictures. What a picture is to mean is known here from its clause, whatever the
// rules made of it: boxes are first set apart so that arguments and inputs stand in their order,
// and then laid out like any picture.
#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <map>

#include "core/events.h"
#include "editor/builder_records.h"
#include "editor/guard.h"
#include "editor/model/records.h"
#include "editor/model/vel_segs.h"
#include "editor/tidy.h"

namespace velora {

namespace {

// New numbers of a clause's variables: position i is ?i, those inside patterns follow.
class Renumbering {
public:
  explicit Renumbering(fdef_header_block &clause) : clause_(clause) {
    for (std::size_t i = 0; i < clause.lhs.size(); ++i)
      if (clause.lhs[i]->item_type == kTokVariable)
        numbers_.emplace(number_in(clause.lhs[i]->name), static_cast<int>(i));
    next_ = static_cast<int>(clause.lhs.size());
    for (fdef_block *item : clause.lhs)
      if (item->gathered)
        rewrite_pattern(item->name, true);
  }

  void apply() {
    std::vector<fdef_block *> open(clause_.lhs);
    open.push_back(clause_.rhs);
    while (!open.empty()) {
      fdef_block *item = open.back();
      open.pop_back();
      if (item->gathered)
        item->name = rewrite_pattern(item->name, false);
      else if (item->item_type == kTokVariable)
        item->name = renamed(item->name);
      open.insert(open.end(), item->params.begin(), item->params.end());
    }
  }

private:
  static int number_in(const std::string &variable) { return std::atoi(variable.c_str() + 1); }

  // A variable that the head does not have keeps its number.
  std::string renamed(const std::string &variable) const {
    const auto known = numbers_.find(number_in(variable));
    return known == numbers_.end() ? variable : "?" + std::to_string(known->second);
  }

  static bool begins_variable(const std::string &text, std::size_t at) {
    return text[at] == '?' && at + 1 < text.size() &&
           std::isdigit(static_cast<unsigned char>(text[at + 1])) != 0 &&
           (at == 0 || text[at - 1] == '~' || text[at - 1] == '(');
  }

  // A gathered pattern with its variables renumbered; when `collect`, they get numbers first.
  std::string rewrite_pattern(const std::string &text, bool collect) {
    std::string out;
    bool quoted = false;
    for (std::size_t at = 0; at < text.size();) {
      quoted ^= text[at] == '"';
      if (quoted || !begins_variable(text, at)) {
        out += text[at++];
        continue;
      }
      const std::size_t end = std::min(text.find_first_of("~()", at), text.size());
      const std::string variable = text.substr(at, end - at);
      if (collect && numbers_.try_emplace(number_in(variable), next_).second)
        ++next_;
      out += renamed(variable);
      at = end;
    }
    return out;
  }

  fdef_header_block &clause_;
  std::map<int, int> numbers_;
  int next_ = 0;
};

// Sets the boxes apart: each right of those with a lower number, arguments in their band, the rest
// below it in rows by their depth. So arguments and inputs are in order, since numbers are.
void set_apart(WinInfo &wi, const BuiltPicture &picture) {
  constexpr int kStep = 10;
  constexpr int kBand = 8;
  const int below = NodeHeight(&wi) + kStep;
  std::vector<int> depth(picture.segments.size() + 1);
  int deepest = 0;
  // A box is numbered after the one that it feeds; nonlex, which its type feeds, is no matter.
  for (const graph_block &block : picture.segments) {
    if (block.shape == kArc || block.forward.empty())
      continue;
    const auto line = static_cast<std::size_t>(block.forward.front());
    const auto fed = static_cast<std::size_t>(picture.segments[line - 1].forward.front());
    depth[static_cast<std::size_t>(block.number)] = fed < line ? depth[fed] + 1 : 0;
    deepest = std::max(deepest, depth[static_cast<std::size_t>(block.number)]);
  }
  for (const graph_block &block : picture.segments) {
    if (block.shape == kArc)
      continue;
    Segm *seg = wi.seg_ments[block.number];
    const bool argument = block.number > 1 && block.number <= 1 + picture.arguments;
    const int width = seg->ux - seg->lx;
    const int height = seg->uy - seg->ly;
    // Arguments go by their left sides, inputs by their middles.
    seg->lx = kStep * block.number - (argument ? 0 : width / 2);
    seg->ux = seg->lx + width;
    const int row = deepest - depth[static_cast<std::size_t>(block.number)];
    seg->ly = argument ? kBand : below + (height + kStep) * row;
    seg->uy = seg->ly + height;
  }
}

void take_places(BuiltPicture &picture, const WinInfo &wi) {
  for (graph_block &block : picture.segments) {
    const Segm *seg = wi.seg_ments[block.number];
    block.lx = seg->lx;
    block.ly = seg->ly;
    block.ux = seg->ux;
    block.uy = seg->uy;
  }
}

bool needs_tidying(Build &build, const BuiltPicture &picture) {
  std::string remark;
  WinInfo wi;
  read_back(picture, wi);
  return !layout_fault(&wi).empty() || !built_truly(build, picture, remark);
}

void tidy_built(Build &build, BuiltPicture &picture) {
  std::string remark;
  if (picture.source->stype == kTokFdef && !built_truly(build, picture, remark)) {
    Renumbering(picture.source->fdef).apply(); // what was read of it stays in its `text`
    picture = function_picture(build, *picture.source);
  }
  WinInfo wi;
  read_back(picture, wi);
  wi.wtype = picture.source->stype == kTokFdef ? kFunctionPicture : kConstructorsPicture;
  if (!picture.stood)
    set_apart(wi, picture);
  tidy_picture(&wi);
  take_places(picture, wi);
}

// Parameters by their numbers stand from left to right, whatever their names' lengths did to them.
bool arguments_in_order(const BuiltPicture &picture, const WinInfo &wi) {
  if (picture.stood)
    return true;
  const std::vector<Segm *> arguments = argument_nodes(&wi);
  return std::is_sorted(arguments.begin(), arguments.end(),
                        [](const Segm *a, const Segm *b) { return a->segnum < b->segnum; });
}

} // namespace

int count_untidy(const Build &build) {
  int untidy = 0;
  for (const BuiltPicture &picture : build.pictures) {
    CheckForUserEvents(0);
    WinInfo wi;
    read_back(picture, wi);
    untidy += !layout_fault(&wi).empty() || !arguments_in_order(picture, wi) ? 1 : 0;
  }
  return untidy;
}

void tidy_pictures(Build &build) {
  for (BuiltPicture &picture : build.pictures) {
    CheckForUserEvents(0);
    if (needs_tidying(build, picture))
      tidy_built(build, picture);
  }
}

} // namespace velora
