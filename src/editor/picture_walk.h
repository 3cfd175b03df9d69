// The walk over a picture that prints the expression it draws, and what the walk is made of:
// junctions, inputs, labels. Reads the picture alone; shared by translation, type check and left
// sides of components.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "editor/translate.h"

namespace velora {

// A label without the blanks around it; empty for a label of blanks.
std::string_view label_of(const Segm *seg);

// Junctions. A sink has an arc that enters it, a source has none and stands for a sink.
inline bool is_sink(const Segm *seg) {
  return seg->type == kJunction && !seg->segb_ptr.empty();
}
// Checks that every source has its sink: 1, or 0 with a message and the faulty sources selected.
int CheckJunctionLinks(const WinInfo *wi, Translation &t);
// The sink that a junction stands for: itself, or the last one with an equal label, else the first
// of all; null when there is none.
const Segm *FindJunctionLink(const WinInfo *wi, const Segm *junction);

// The slots of the input nodes, left to right: what stands in the top band of the picture.
std::vector<int> make_input_numbers(const WinInfo *wi);
// Their labels, each in brackets when it has an arrow outside brackets.
TypeNames make_input_list(const WinInfo *wi);

// 1 for a text whose brackets and quotes are closed; otherwise 0, with a message for each kind that
// is not. An empty text is 0 without one.
int CheckValid(std::string_view text, Translation &t, int segnum = 0);

// Answers of the walk, else a cycle was found and its distance is answered.
inline constexpr int kWalked = -2;
inline constexpr int kWalkFailed = -1;

// What a walk needs to know, and where it stands.
struct PictureWalk {
  const WinInfo *wi;
  std::vector<int> inputs;   // slots of the input nodes
  const TypeNames *formals;  // null for a query, where every label is written as it is
  const InputValues *values; // what is written for inputs instead; may be null
  std::string *out;          // receives the text
  Translation *t;
  // The nodes that are open, each with the arcs that led to it from the one before.
  struct Step {
    const Segm *node;
    std::vector<const Segm *> arcs;
  };
  std::vector<Step> path;
  // The sinks that junctions stand for, as far as they were looked for.
  std::unordered_map<const Segm *, const Segm *> links;
};

// Prints the expression that feeds an arc's end: the walk goes on from the arc's start.
int get_type_from(PictureWalk &walk, const Segm *arc);
// Prints the arguments of a box or hold that has been written and closes nothing.
int walk_inputs(PictureWalk &walk, const Segm *node);
// The position of a slot among the inputs; -1 when it is none.
int input_number(const PictureWalk &walk, const Segm *node);
// True when the label of input `i` is the declared type, so that it is a variable.
bool is_variable_input(const PictureWalk &walk, int i);

} // namespace velora
