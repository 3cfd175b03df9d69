// The commands of network windows: filters, hiding, roots, the stored network, function pictures,
// export. Each change of a shown network is one step that Undo takes back; what changes stored
// pictures is one compound step.
#include <algorithm>
#include <charconv>

#include "core/needs.h"
#include "editor/compound.h"
#include "editor/edit.h"
#include "editor/make_picture.h"
#include "editor/model/wininfo.h"
#include "network/call_graph.h"
#include "network/net_exp.h"
#include "network/net_store.h"
#include "network/net_tidy.h"
#include "network/net_util.h"
#include "network/net_view.h"
#include "platform/desktop.h"
#include "platform/response.h"
#include "shell/commands.h"
#include "shell/network_files.h"
#include "shell/picture_windows.h"
#include "shell/vel_wins.h"

namespace velora {

namespace {

WinInfo *shown_network() {
  return picture_of(previous);
}

// Grows the shown network; in new windows it stays as it is.
int expand(const char *what, int choice) {
  WinInfo *wi = shown_network();
  int without_links = 0;
  edit_picture(wi, what, [&] { without_links = ExpandNetNodes(wi, choice); });
  register_picture_windows();
  if (without_links != 0)
    error_exit("There are no links in the Network");
  return 1;
}

int prune(const char *what, int choice) {
  WinInfo *wi = shown_network();
  edit_picture(wi, what, [&] { DelLowestFuns(wi, choice); });
  return 1;
}

// Runs a change that hides nodes, and says how many.
template <typename Hide> int hide(const char *what, Hide change) {
  WinInfo *wi = shown_network();
  int count = 0;
  edit_picture(wi, what, [&] { count = change(wi); });
  DisplayResponsef("%d functions hidden\n", count);
  return 1;
}

std::string joined(const std::vector<std::string> &names) {
  std::string text;
  for (const std::string &name : names)
    text += (text.empty() ? "" : " ") + name;
  return text;
}

void say_names(const char *title, const std::vector<std::string> &names) {
  DisplayResponse(title + (names.empty() ? std::string("none") : joined(names)) + "\n");
}

// The labels of the selected nodes.
std::vector<std::string> selected_names(const WinInfo *wi) {
  std::vector<std::string> names;
  for (const Segm *seg : selected_nodes(wi))
    names.push_back(seg->label);
  return names;
}

std::vector<std::string> names_of(const CallGraph &graph, const std::vector<int> &numbers) {
  std::vector<std::string> names;
  for (const int number : numbers)
    names.push_back(graph.name(number));
  return names;
}

// Selects the nodes of these names, and nothing else.
void select_names(WinInfo *wi, const std::vector<std::string> &names) {
  for (int slot = 1; slot <= wi->seg_ct; ++slot) {
    Segm *seg = wi->seg_ments[slot];
    if (seg == nullptr)
      continue;
    const bool on =
        is_node(seg) && std::find(names.begin(), names.end(), seg->label) != names.end();
    seg->status = on ? seg->status | kSelected : seg->status & ~kSelected;
  }
  gDesktop->invalidate(wi->win);
}

} // namespace

int DeleteBuiltinsCommand() {
  return prune("Delete Built-in and System Functions", kBuiltinAndSystem);
}

int DeleteConstructorsCommand() {
  return prune("Delete Constructors", kConstructorsOnly);
}

int DeleteLowestCommand() {
  return prune("Delete Lowest Level Functions", kAllLowest);
}

int ChildrenCommand() {
  return expand("Children", kChildren);
}

int DescendantsCommand() {
  return expand("Descendants", kDescendants);
}

int DescendantsInNewWindowCommand() {
  return expand("Descendants", kDescendantsInNewWindow);
}

int ParentsCommand() {
  return expand("Parents", kParents);
}

int AncestorsCommand() {
  return expand("Ancestors", kAncestors);
}

int AncestorsInNewWindowCommand() {
  return expand("Ancestors", kAncestorsInNewWindow);
}

int ExportCommand() {
  return ExportNetNodes(shown_network());
}

int RootFunctionsCommand() {
  WinInfo *wi = shown_network();
  edit_picture(wi, "All Root Functions", [&] { DisplayRootNodes(wi); });
  return 1;
}

int CreateNetworkCommand() {
  WinInfo *wi = shown_network();
  CompoundStep step(wi, "Create Network");
  step.touch_pictures(kNetworkName);
  if (StoreNetwork() == 0 || GetNextComponent(wi, kNetworkName, -1) == 0)
    return 0;
  if (boxes_overlap(wi))
    DisplayResponse("Some functions lie on others. Tidy in the Edit menu sets them apart.\n");
  return 1;
}

int CreateFunctionsCommand() {
  WinInfo *wi = shown_network();
  CompoundStep step(wi, "Create Functions");
  for (const Segm *seg : functions_without_picture(wi).nodes)
    step.touch_pictures(seg->label);
  NetworkToFunctions(wi);
  return 1;
}

int HideBuiltinsCommand() {
  return hide("Hide Built-in and System Functions",
              [](WinInfo *wi) { return hide_kinds(wi, kHideBuiltin | kHideSystem); });
}

int HideConstructorsCommand() {
  return hide("Hide Constructors", [](WinInfo *wi) { return hide_kinds(wi, kHideConstructors); });
}

int HideSelectedCommand() {
  return hide("Hide Selection", [](WinInfo *wi) { return hide_selected(wi); });
}

int HidePatternCommand() {
  std::string pattern;
  if (GetUserDialogText("Names to hide (* and ? stand for any letters)?", pattern) == 0 ||
      pattern.empty())
    return 0;
  return hide("Hide Names", [&pattern](WinInfo *wi) { return hide_pattern(wi, pattern); });
}

int HideFarCommand() {
  std::string answer;
  if (GetUserDialogText("How many arrows away from the selection may stay?", answer) == 0)
    return 0;
  int depth = 0;
  const char *end = answer.data() + answer.size();
  if (std::from_chars(answer.data(), end, depth).ptr != end || depth < 0 || answer.empty()) {
    BeepMsge("Sorry! That is no number of arrows\n", 0);
    return 0;
  }
  return hide("Hide What Is Far", [depth](WinInfo *wi) { return hide_beyond(wi, depth); });
}

int ListHiddenCommand() {
  say_names("Hidden: ", hidden_names(shown_network()));
  return 1;
}

int ShowAllCommand() {
  WinInfo *wi = shown_network();
  edit_picture(wi, "Show All", [&] { show_all(wi); });
  return 1;
}

int PinCommand() {
  WinInfo *wi = shown_network();
  edit_picture(wi, "Pin", [&] {
    // Pins all that are selected; when all are pinned, unpins them.
    const std::vector<Segm *> nodes = selected_nodes(wi);
    const bool on = !std::all_of(nodes.begin(), nodes.end(), is_pinned);
    for (Segm *seg : nodes)
      set_pinned(seg, on);
  });
  return 1;
}

int PathCommand() {
  WinInfo *wi = shown_network();
  const std::vector<std::string> names = selected_names(wi);
  if (names.size() != 2) {
    BeepMsge("Sorry! Select the two functions first\n", 0);
    return 0;
  }
  const CurrentCalls calls = current_calls();
  int from = calls.graph.number(names[0]);
  int to = calls.graph.number(names[1]);
  std::vector<int> way;
  if (from >= 0 && to >= 0 && (way = calls.graph.shortest_way(from, to)).empty()) {
    std::swap(from, to); // whichever calls the other
    way = calls.graph.shortest_way(from, to);
  }
  if (way.empty()) {
    DisplayResponsef("No calls lead from %s to %s or back\n", names[0].c_str(), names[1].c_str());
    return 1;
  }
  say_names("Shortest way: ", names_of(calls.graph, way));
  const std::vector<std::string> all = names_of(calls.graph, calls.graph.on_all_ways(from, to));
  say_names("On all ways: ", all);
  select_names(wi, all);
  return 1;
}

int CallersCommand() {
  const CurrentCalls calls = current_calls();
  for (const std::string &name : selected_names(shown_network()))
    if (const int number = calls.graph.number(name); number >= 0) {
      say_names((name + " calls: ").c_str(), names_of(calls.graph, calls.graph.callees(number)));
      say_names((name + " is called by: ").c_str(),
                names_of(calls.graph, calls.graph.callers(number)));
    }
  return 1;
}

int UnreachedCommand() {
  WinInfo *wi = shown_network();
  const CurrentCalls calls = current_calls();
  std::vector<int> roots;
  for (const std::string &name : selected_names(wi))
    if (const int number = calls.graph.number(name); number >= 0)
      roots.push_back(number);
  const std::vector<bool> reached = calls.graph.reached(roots);
  std::vector<std::string> names;
  for (const std::string &name : calls.defined)
    if (const int number = calls.graph.number(name);
        number < 0 || !reached[static_cast<std::size_t>(number)])
      names.push_back(name);
  say_names("Not reached from the selection: ", names);
  return 1;
}

int CirclesCommand() {
  WinInfo *wi = shown_network();
  const CurrentCalls calls = current_calls();
  const std::vector<std::vector<int>> circles = calls.graph.circles();
  std::vector<std::string> all;
  for (const std::vector<int> &circle : circles) {
    const std::vector<std::string> names = names_of(calls.graph, circle);
    say_names("Call each other: ", names);
    all.insert(all.end(), names.begin(), names.end());
  }
  if (circles.empty())
    DisplayResponse("No functions call each other in a circle\n");
  select_names(wi, all);
  return 1;
}

int WriteNetworkCommand() {
  const auto chosen =
      gDesktop->choose_file(true, "Write Network (.svg, .dot, .graphml, .csv)", "*.*");
  return chosen ? write_network_picture(shown_network(), *chosen) : 0;
}

} // namespace velora
