// Pairs and link sets. Names are looked up through hashes; the order of every list is that of the
// file.
#include "network/links.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

#include "core/events.h"
#include "db/f_dbops.h"
#include "db/needs.h"
#include "db/vel_util.h"
#include "editor/model/wininfo.h"
#include "network/net_lay.h"
#include "platform/desktop.h"

namespace velora {

PairList ipairs;
std::vector<std::unique_ptr<Links>> links;

namespace {

constexpr int kFilterFrom = 155;

// The pairs of a set that leave each name (or that enter it), by position.
using PairIndex = std::unordered_map<std::string_view, std::vector<std::size_t>>;

PairIndex index_pairs(const PairList &pairs, bool by_first) {
  PairIndex index;
  for (std::size_t i = 0; i < pairs.size(); ++i)
    index[by_first ? pairs[i].first : pairs[i].second].push_back(i);
  return index;
}

// Walks depth first from `name`; each pair met is copied, later ones to the front. A name is
// entered once.
PairList filter_pairs(const PairList &pairs, const std::string &name, bool forward) {
  static const std::vector<std::size_t> none;
  const PairIndex index = index_pairs(pairs, forward);
  const auto pairs_of = [&index](std::string_view at) -> const std::vector<std::size_t> & {
    const auto found = index.find(at);
    return found == index.end() ? none : found->second;
  };
  struct Visit {
    const std::vector<std::size_t> *out;
    std::size_t next;
  };
  // The names that were entered and not left yet, each with the next of its pairs to look at.
  PairList result;
  std::unordered_set<std::string_view> visited{name};
  std::vector<Visit> open{{&pairs_of(name), 0}};
  while (!open.empty()) {
    CheckForUserEvents(0);
    Visit &visit = open.back();
    if (visit.next == visit.out->size()) {
      open.pop_back();
      continue;
    }
    const Pair &pair = pairs[(*visit.out)[visit.next++]];
    result.push_back(pair);
    const std::string_view onward = forward ? pair.second : pair.first;
    if (visited.insert(onward).second)
      open.push_back({&pairs_of(onward), 0});
  }
  // Each pair would have been put before the ones met earlier.
  std::reverse(result.begin(), result.end());
  return result;
}

// A window for a shown network. In programs without windows a record alone: one that an earlier
// call left, or a fresh one.
WinInfo *network_record() {
  if (hControl != 0)
    return NewWindow(kNetworkPicture);
  for (WinInfo *wi = gWinInfo; wi != nullptr; wi = wi->next)
    if (wi->name == kNetworkName && wi->cmpnt == -1 && wi->win == 0)
      return ClearWinInfo(wi) != 0 ? wi : nullptr;
  WinInfo *wi = nullptr;
  return NewWinInfo(0, kNetworkPicture, &wi) != 0 ? wi : nullptr;
}

} // namespace

void ARRAY_to_ipairs() {
  ipairs.clear();
  for (const ArrayEntry &entry : ARRAY)
    for (const std::string &mention : entry.mentions)
      ipairs.push_back({entry.name, 0, "~", mention, 0, 0});
}

void remove_self_recursions(int recbit) {
  std::unordered_set<std::string> recursive;
  for (const Pair &pair : ipairs)
    if (pair.first == pair.second)
      recursive.insert(pair.first);
  std::erase_if(ipairs, [](const Pair &pair) { return pair.first == pair.second; });
  for (Pair &pair : ipairs) {
    if (recursive.erase(pair.first) != 0)
      pair.f_status |= recbit;
    if (recursive.erase(pair.second) != 0)
      pair.s_status |= recbit;
  }
}

void remove_duplicates() {
  std::unordered_set<std::string> met;
  std::erase_if(ipairs, [&met](const Pair &pair) {
    return !met.insert(pair.first + ' ' + pair.second).second;
  });
}

void MakeFirstLinkage() {
  scan_file_to_ARRAY(current_database_file());
  ARRAY_to_ipairs();
  ARRAY.clear();
  remove_self_recursions(kCallsItself);
  remove_duplicates();
  links.clear();
  links.push_back(std::make_unique<Links>(Links{1, std::move(ipairs)}));
  ipairs.clear();
}

Links *find_links(int num) {
  return num >= 1 && num <= static_cast<int>(links.size())
             ? links[static_cast<std::size_t>(num) - 1].get()
             : nullptr;
}

int bi_link_filters(int op, int num, const std::string &name) {
  const Links *from = find_links(num);
  if (from == nullptr)
    return 0;
  PairList narrowed = filter_pairs(from->ipr, name, op == kFilterFrom);
  const int id = links.back()->id + 1;
  links.push_back(std::make_unique<Links>(Links{id, std::move(narrowed)}));
  return id;
}

int bi_link_show(int num) {
  const Links *shown = find_links(num);
  if (shown == nullptr || shown->ipr.empty())
    return 0;
  ipairs = shown->ipr;
  FixNetNodeLevels();
  WinInfo *wi = network_record();
  if (wi == nullptr)
    return 0;
  wi->seg_ct = do_layout(wi->seg_ments);
  wi->name = kNetworkName;
  wi->saved = 0;
  if (wi->win != 0)
    gDesktop->invalidate(wi->win);
  return 1;
}

void free_linkages() {
  links.clear();
}

} // namespace velora
