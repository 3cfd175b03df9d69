// Hiding nodes and what stands for them in the drawing.
#include "network/net_view.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

#include "core/events.h"
#include "core/symbols.h"
#include "db/f_dbops.h"
#include "db/removal.h"
#include "network/call_graph.h"
#include "network/net_util.h"

namespace velora {

namespace {

// The nodes of a picture that can be hidden.
template <typename Do> void each_node_of(const WinInfo *wi, Do what) {
  for (int slot = 1; slot <= wi->seg_ct; ++slot)
    if (Segm *seg = wi->seg_ments[slot]; seg != nullptr && is_node(seg))
      what(seg);
}

template <typename Fits> int hide_where(const WinInfo *wi, Fits fits) {
  int count = 0;
  each_node_of(wi, [&](Segm *seg) {
    if (is_hidden(seg) || !fits(seg))
      return;
    set_hidden(seg, true);
    seg->status &= ~kSelected;
    ++count;
  });
  return count;
}

// The visible nodes that a walk down from `start` meets first, over hidden nodes alone.
std::vector<const Segm *> beyond_hidden(const Segm *start) {
  std::vector<const Segm *> found;
  std::unordered_set<const Segm *> met;
  std::vector<const Segm *> open;
  const auto look = [&](const Segm *from, bool first) {
    for (const Segm *arc : from->segf_ptr) {
      const Segm *end = arc_end(arc);
      if (end == nullptr || (first && !is_hidden(end)) || !met.insert(end).second)
        continue;
      if (is_hidden(end))
        open.push_back(end);
      else if (end != start)
        found.push_back(end);
    }
  };
  look(start, true);
  while (!open.empty()) {
    const Segm *at = open.back();
    open.pop_back();
    look(at, false);
  }
  return found;
}

bool joined_directly(const Segm *from, const Segm *to) {
  return std::any_of(from->segf_ptr.begin(), from->segf_ptr.end(),
                     [to](const Segm *arc) { return arc_end(arc) == to; });
}

} // namespace

bool is_hidden(const Segm *seg) {
  return (seg->style & kHidden) != 0;
}

void set_hidden(Segm *seg, bool on) {
  seg->style = on ? seg->style | kHidden : seg->style & ~kHidden;
}

bool is_pinned(const Segm *seg) {
  return (seg->style & kPinned) != 0;
}

void set_pinned(Segm *seg, bool on) {
  seg->style = on ? seg->style | kPinned : seg->style & ~kPinned;
}

bool read_hidden_kinds(std::string_view words, unsigned &kinds) {
  kinds = 0;
  while (!words.empty()) {
    const std::string_view word = words.substr(0, words.find(','));
    if (word == "builtin")
      kinds |= kHideBuiltin;
    else if (word == "system")
      kinds |= kHideSystem;
    else if (word == "constructors")
      kinds |= kHideConstructors;
    else
      return false;
    words.remove_prefix(std::min(words.size(), word.size() + 1));
  }
  return kinds != 0;
}

bool name_is_of_kind(const std::string &name, unsigned kinds) {
  if ((kinds & kHideBuiltin) != 0 && name == "lambda")
    return true;
  const symbol *sym = name.empty() ? nullptr : find_symbol(name.c_str(), 0);
  if (sym == nullptr)
    return false;
  return ((kinds & kHideBuiltin) != 0 && sym->stype == kBuiltinFunction) ||
         ((kinds & kHideSystem) != 0 && sym->stype == kSysFunction) ||
         ((kinds & kHideConstructors) != 0 && (sym->stype & kConstructorBit) != 0 &&
          (sym->stype & kFunctionBit) == 0);
}

bool fits_pattern(std::string_view name, std::string_view pattern) {
  // On a mismatch the last `*` takes one letter more.
  std::size_t n = 0;
  std::size_t p = 0;
  std::size_t star = std::string_view::npos;
  std::size_t star_n = 0;
  while (n < name.size()) {
    if (p < pattern.size() && pattern[p] == '*') {
      star = p++;
      star_n = n;
    } else if (p < pattern.size() && (pattern[p] == '?' || pattern[p] == name[n])) {
      ++p;
      ++n;
    } else if (star != std::string_view::npos) {
      p = star + 1;
      n = ++star_n;
    } else {
      return false;
    }
  }
  while (p < pattern.size() && pattern[p] == '*')
    ++p;
  return p == pattern.size();
}

int hide_kinds(WinInfo *wi, unsigned kinds) {
  return hide_where(wi, [kinds](const Segm *seg) { return name_is_of_kind(seg->label, kinds); });
}

int hide_pattern(WinInfo *wi, std::string_view pattern) {
  return hide_where(wi, [pattern](const Segm *seg) { return fits_pattern(seg->label, pattern); });
}

int hide_selected(WinInfo *wi) {
  return hide_where(wi, [](const Segm *seg) { return (seg->status & kSelected) != 0; });
}

int hide_beyond(WinInfo *wi, int depth) {
  // Distance counts along arrows in either direction.
  std::unordered_set<const Segm *> near;
  std::vector<const Segm *> layer;
  for (const Segm *seg : selected_nodes(wi)) {
    near.insert(seg);
    layer.push_back(seg);
  }
  if (layer.empty())
    return 0;
  for (int step = 0; step < depth && !layer.empty(); ++step) {
    std::vector<const Segm *> next;
    const auto take = [&](const Segm *seg) {
      if (seg != nullptr && near.insert(seg).second)
        next.push_back(seg);
    };
    for (const Segm *seg : layer) {
      CheckForUserEvents(0);
      for (const Segm *arc : seg->segf_ptr)
        take(arc_end(arc));
      for (const Segm *arc : seg->segb_ptr)
        take(arc_start(arc));
    }
    layer = std::move(next);
  }
  return hide_where(wi, [&near](const Segm *seg) { return near.count(seg) == 0; });
}

int show_all(WinInfo *wi) {
  int count = 0;
  each_node_of(wi, [&count](Segm *seg) {
    count += is_hidden(seg) ? 1 : 0;
    set_hidden(seg, false);
  });
  return count;
}

std::vector<std::string> hidden_names(const WinInfo *wi) {
  std::vector<std::string> names;
  each_node_of(wi, [&names](const Segm *seg) {
    if (is_hidden(seg))
      names.push_back(seg->label);
  });
  return names;
}

NetworkView look_at_network(const WinInfo *wi) {
  NetworkView view;
  std::vector<const Segm *> shown;
  std::unordered_map<const Segm *, int> number;
  each_node_of(wi, [&](const Segm *seg) {
    if (is_hidden(seg))
      return;
    number.emplace(seg, static_cast<int>(shown.size()));
    shown.push_back(seg);
  });
  // Where each visible node leads: by its own arrows, and over hidden nodes where none of these
  // leads there.
  std::vector<std::vector<int>> next(shown.size());
  for (std::size_t i = 0; i < shown.size(); ++i) {
    CheckForUserEvents(0);
    for (const Segm *arc : shown[i]->segf_ptr)
      if (const auto end = number.find(arc_end(arc)); end != number.end())
        next[i].push_back(end->second);
    for (const Segm *end : beyond_hidden(shown[i]))
      if (!joined_directly(shown[i], end)) {
        view.skipped.emplace_back(shown[i], end);
        next[i].push_back(number.at(end));
      }
  }
  for (const std::vector<int> &group : circles_of(next)) {
    view.circles.emplace_back();
    for (const int member : group)
      view.circles.back().push_back(shown[static_cast<std::size_t>(member)]);
  }
  return view;
}

bool calls_itself(const std::string &name) {
  const symbol *sym = name.empty() ? nullptr : find_symbol(name.c_str(), 0);
  if (sym == nullptr || (sym->stype != kFunction && sym->stype != kDbFunction))
    return false;
  for (const defs_link *group = sym->b.fc->defs; group != nullptr; group = group->next)
    for (const rhs_link *clause = group->defs; clause != nullptr; clause = clause->next)
      if (rhs_tree_depends_on(sym, clause->original) != 0)
        return true;
  return false;
}

bool is_defined_nowhere(const std::string &name) {
  return Db_file != 0 && !name.empty() && name != "lambda" && name.find(' ') == std::string::npos &&
         find_symbol(name.c_str(), 0) == nullptr;
}

} // namespace velora
