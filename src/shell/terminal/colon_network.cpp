// Commands of the shell about who calls whom: network, calls, callers, path, unused, export.
#include <algorithm>

#include "core/symbols.h"
#include "db/f_dbops.h"
#include "editor/model/wininfo.h"
#include "network/call_graph.h"
#include "network/net_exp.h"
#include "network/net_store.h"
#include "network/net_tidy.h"
#include "platform/response.h"
#include "shell/network_files.h"
#include "shell/terminal/colon.h"

namespace velora {

namespace {

std::vector<std::string> names_in(const std::string &argument) {
  std::vector<std::string> names;
  for (const ColonWord &word : colon_words(argument))
    names.push_back(word.text);
  return names;
}

bool refuse_without_links() {
  if (!gDDB_basename.empty())
    return false;
  BeepMsge("No database is open\n", 1);
  return true;
}

// Says that a name stands nowhere in the code.
bool refuse_unknown(const CurrentCalls &calls, const std::string &name) {
  if (calls.knows(name))
    return false;
  BeepMsgef(1, "No clause mentions %s\n", name.c_str());
  const std::vector<std::string> near = nearest_names(name, 3);
  std::string note;
  for (const std::string &candidate : near)
    note += ' ' + candidate;
  if (!note.empty())
    show_note("note: near it in spelling:" + note + "\n");
  return true;
}

std::string names_of(const CallGraph &graph, const std::vector<int> &numbers,
                     const char *between = " ") {
  std::string text;
  for (const int number : numbers)
    text += (text.empty() ? "" : between) + graph.name(number);
  return text;
}

int show_neighbours(const std::string &name, bool callees, const char *none) {
  const CurrentCalls calls = current_calls();
  if (refuse_unknown(calls, name))
    return 0;
  const int number = calls.graph.number(name);
  const std::vector<int> nobody;
  const std::vector<int> &found =
      number < 0 ? nobody : (callees ? calls.graph.callees(number) : calls.graph.callers(number));
  if (found.empty())
    DisplayResponsef(none, name.c_str());
  else
    DisplayResponse(names_of(calls.graph, found) + "\n");
  return 1;
}

// Sets the boxes of the stored network apart; without one it is made first.
int tidy_stored_network() {
  if (FindStoredPicture(kNetworkName, 0) == nullptr && StoreNetwork() == 0)
    return 0;
  const int moved = tidy_network(FindStoredPicture(kNetworkName, 0));
  if (moved > 0)
    gSegsChanged = 1;
  DisplayResponsef("%d functions moved\n", moved);
  return 1;
}

// Stores the network; its levels are as narrow as a window, so boxes may lie on others.
int store_network() {
  if (StoreNetwork() == 0)
    return 0;
  if (boxes_overlap(FindStoredPicture(kNetworkName, 0)))
    show_note("note: some functions lie on others; \":network tidy\" sets them apart\n");
  return 1;
}

void note_unsaved_code() {
  if (gSymbolTableChanged != 0)
    show_note("note: the network is that of the saved code; \":save\" saves what has changed\n");
}

} // namespace

int colon_network(const std::string &argument) {
  if (refuse_without_links())
    return 0;
  note_unsaved_code();
  if (argument.empty())
    return store_network();
  if (argument == "tidy")
    return tidy_stored_network();
  if (const WinInfo *stored = FindStoredPicture(kNetworkName, 0))
    return write_network_picture(stored, argument);
  NetworkRequest request;
  request.file = argument;
  return write_network(request);
}

int colon_calls(const std::string &argument) {
  return show_neighbours(argument, true, "%s calls nothing\n");
}

int colon_callers(const std::string &argument) {
  return show_neighbours(argument, false, "Nobody calls %s\n");
}

int colon_path(const std::string &argument) {
  const std::vector<std::string> words = names_in(argument);
  if (words.size() != 2)
    return report_use(":path A B");
  const CurrentCalls calls = current_calls();
  if (refuse_unknown(calls, words[0]) || refuse_unknown(calls, words[1]))
    return 0;
  const int from = calls.graph.number(words[0]);
  const int to = calls.graph.number(words[1]);
  const std::vector<int> way =
      from < 0 || to < 0 ? std::vector<int>{} : calls.graph.shortest_way(from, to);
  if (way.empty()) {
    DisplayResponsef("No calls lead from %s to %s\n", words[0].c_str(), words[1].c_str());
    return 1;
  }
  DisplayResponse(names_of(calls.graph, way, " -> ") + "\n");
  const std::vector<int> all = calls.graph.on_all_ways(from, to);
  if (all.size() > way.size())
    DisplayResponse("On all ways: " + names_of(calls.graph, all) + "\n");
  return 1;
}

int colon_unused(const std::string &argument) {
  const CurrentCalls calls = current_calls();
  const std::vector<std::string> words = names_in(argument);
  std::vector<int> roots;
  for (const std::string &word : words) {
    if (refuse_unknown(calls, word))
      return 0;
    if (const int number = calls.graph.number(word); number >= 0)
      roots.push_back(number);
  }
  const std::vector<bool> reached = calls.graph.reached(roots);
  // Without roots: whom nobody else calls. With roots: whom none of them reaches.
  const auto is_unused = [&](const std::string &name) {
    const int number = calls.graph.number(name);
    if (!words.empty())
      return std::find(words.begin(), words.end(), name) == words.end() &&
             (number < 0 || !reached[static_cast<std::size_t>(number)]);
    const std::vector<int> nobody;
    const std::vector<int> &callers = number < 0 ? nobody : calls.graph.callers(number);
    return std::all_of(callers.begin(), callers.end(),
                       [number](int caller) { return caller == number; });
  };
  std::string text;
  for (const std::string &name : calls.defined)
    if (is_unused(name))
      text += (text.empty() ? "" : " ") + name;
  DisplayResponse(text.empty() ? "Every function is used\n" : text + "\n");
  return 1;
}

int colon_export(const std::string &argument) {
  std::vector<std::string> words = names_in(argument);
  if (words.size() < 2)
    return report_use(":export NEW NAME...");
  if (refuse_without_links())
    return 0;
  const std::string new_name = words.front();
  words.erase(words.begin());
  for (const std::string &word : words)
    if (find_symbol(word.c_str(), 0) == nullptr) {
      BeepMsgef(1, "There is no %s\n", word.c_str());
      return 0;
    }
  return export_names(new_name, words);
}

} // namespace velora
