// What a network picture shows and hides: nodes can be hidden without being deleted, and the view
// tells what stands for them. Called by the filters, the drawing and the exports.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "editor/model/records.h"

namespace velora {

// Hidden nodes stay in the picture and its file; nothing of them is drawn.
bool is_hidden(const Segm *seg);
void set_hidden(Segm *seg, bool on);
// Pinned nodes stay where they are when the picture is tidied.
bool is_pinned(const Segm *seg);
void set_pinned(Segm *seg, bool on);

// The kinds of names that can be hidden together.
enum HiddenKind : unsigned { kHideBuiltin = 1, kHideSystem = 2, kHideConstructors = 4 };
// Reads "builtin,system,constructors"; false for any other word.
bool read_hidden_kinds(std::string_view words, unsigned &kinds);

// Whether a name is of one of the kinds; a name that is no symbol is of none.
bool name_is_of_kind(const std::string &name, unsigned kinds);
// Whether a name fits a pattern with `*` for any letters and `?` for one.
bool fits_pattern(std::string_view name, std::string_view pattern);

// Hide the boxes of some kinds, those that fit a pattern, or those farther than `depth` arrows
// from the selected ones. Selected nodes are never hidden by their distance. Each answers how many
// were hidden.
int hide_kinds(WinInfo *wi, unsigned kinds);
int hide_pattern(WinInfo *wi, std::string_view pattern);
int hide_beyond(WinInfo *wi, int depth);
int hide_selected(WinInfo *wi);
// Shows every hidden node again; answers how many there were.
int show_all(WinInfo *wi);
// The labels of the hidden nodes, in slot order.
std::vector<std::string> hidden_names(const WinInfo *wi);

// What is drawn of a network beside its visible nodes and the arcs between them.
struct NetworkView {
  // Pairs of visible nodes that are joined only by ways over hidden ones.
  std::vector<std::pair<const Segm *, const Segm *>> skipped;
  // Groups of visible nodes that call each other in a circle.
  std::vector<std::vector<const Segm *>> circles;
};
NetworkView look_at_network(const WinInfo *wi);

// The functions of the symbol table whose clauses mention themselves.
bool calls_itself(const std::string &name);
// A name that is mentioned but is no symbol of the open database.
bool is_defined_nowhere(const std::string &name);

} // namespace velora
