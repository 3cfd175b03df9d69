// The names that can be typed into a picture: which are known, with their types, and what a typed
// text stands for. Also what inputs a node wants, so that those that are missing show.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "editor/model/records.h"

namespace velora {

// A row of the list of names.
struct KnownName {
  std::string name;
  std::string type; // what is shown beside it
  int tool = 0;     // what places it; 0 for an input that stands already
  int slot = 0;     // of that input
};

// Where what is typed will stand, and what it will be joined to.
struct Insertion {
  int into = 0;        // the node that it feeds, 0 for none
  int input = 0;       // as which input, counted from 0
  int fed_by = 0;      // the node that feeds it, 0 for none
  int arc = 0;         // the arrow that it goes into, 0 for none
  bool placed = false; // at a point that the user chose
  Point at;
};

// The types of the inputs of a function or constructor, and of its result; false when it is not
// declared. The picture's own name is declared by its inputs before it is by the code.
bool declared_inputs(const WinInfo *wi, const std::string &name, std::vector<std::string> &inputs,
                     std::string &result);
// The types of the inputs that a node wants, those that are there and those that are not; empty
// when that is not known.
std::vector<std::string> wanted_inputs(const WinInfo *wi, const Segm *node);
// Which of them are missing, counted from 0: those behind the ones that are there, but for arrows
// that were drawn for a later input before an earlier one was there.
std::vector<int> missing_inputs(const WinInfo *wi, const Segm *node);
// The place among the arrows at a node that input number `input` has or would have.
int place_of_input(const WinInfo *wi, const Segm *node, int input);
// Notes which input an arrow was drawn for.
void mean_input(Segm *arc, int input);

// True for a picture of constructors whose type has no name yet: what is typed is that.
bool type_is_unnamed(const WinInfo *wi);
// The rows of the list for a typed text, the best first: never empty for a text that is not. The
// last row takes the text as it is.
std::vector<KnownName> names_for(const WinInfo *wi, std::string_view typed);
// True when a blank behind the text cannot belong to it, so that it ends it.
bool is_whole_name(const WinInfo *wi, std::string_view typed);

} // namespace velora
