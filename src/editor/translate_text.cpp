// The texts of function pictures: clause, left side, query, declaration. Pure: reads the picture
// and writes the record of the translation, nothing else.
#include "editor/translate.h"

#include <algorithm>

#include "editor/picture_walk.h"
#include "platform/response.h"

namespace velora {

namespace {

// Moves the places noted from `first` on, when their text goes behind something else.
void shift_places(Translation &t, std::size_t first, std::size_t by) {
  for (std::size_t i = first; i < t.places.size(); ++i) {
    t.places[i].from += by;
    t.places[i].to += by;
  }
}

// An expression that was walked ends without the blank that it begins with where nothing stands
// before it; the box next to the result is written without brackets.
int write_top_box(PictureWalk &walk, const Segm *box, const std::string &name) {
  walk.t->places.push_back({box->segnum, walk.out->size(), walk.out->size()});
  const std::size_t place = walk.t->places.size() - 1;
  *walk.out += name;
  walk.path.push_back({box, {}});
  const int result = walk_inputs(walk, box);
  walk.path.pop_back();
  walk.t->places[place].to = walk.out->size();
  return result;
}

bool fail_at(Translation &t, const Segm *node, const char *message) {
  t.selected.push_back(node->segnum);
  return t.tell(message, 3, node->segnum);
}

// The body of the clause, from what feeds the result.
bool write_body(PictureWalk &walk, const Segm *feeder) {
  Translation &t = *walk.t;
  switch (feeder->type) {
  case kHexagon: {
    const int i = input_number(walk, feeder);
    const std::string label(feeder->label);
    t.places.push_back({feeder->segnum, 0, 0});
    if (i >= 0 && is_variable_input(walk, i)) {
      *walk.out = "?" + std::to_string(i);
    } else {
      if (CheckValid(label, t, feeder->segnum) == 0) {
        t.selected.push_back(feeder->segnum);
        return label_of(feeder).empty() &&
               t.tell("Sorry! A value of this picture is blank\n", 1, feeder->segnum);
      }
      *walk.out = " (" + label + ")";
    }
    t.places.back().to = walk.out->size();
    return true;
  }
  case kBox: {
    const std::string_view label = label_of(feeder);
    return write_top_box(walk, feeder, label.empty() ? walk.wi->name : std::string(label)) ==
           kWalked;
  }
  case kJunction:
    return fail_at(t, feeder, "ERROR: Junction should not link directly to output\n");
  default:
    return fail_at(t, feeder, "ERROR: Hold_Value should not link directly to output\n");
  }
}

// Writes the left side: a variable where the label is the declared type, else the label. Tells each
// input with its declared type before it is written.
bool write_left_side(PictureWalk &walk) {
  Translation &t = *walk.t;
  t.lhs = walk.wi->name;
  for (std::size_t i = 0; i < walk.inputs.size(); ++i) {
    const Segm *input = walk.wi->seg_ments[walk.inputs[i]];
    t.tell("act par " + input->label + ", fm par " +
               (i < walk.formals->size() ? (*walk.formals)[i] : "") + "\n",
           kPlainText, input->segnum);
    const std::size_t from = t.lhs.size() + 1;
    if (is_variable_input(walk, static_cast<int>(i))) {
      t.lhs += " ?" + std::to_string(i);
    } else if (CheckValid(input->label, t, input->segnum) != 0) {
      t.lhs += " (" + input->label + ")";
    } else {
      t.selected.push_back(input->segnum);
      return label_of(input).empty() &&
             t.tell("Sorry! An input of this picture is blank\n", 1, input->segnum);
    }
    t.places.push_back({input->segnum, from, t.lhs.size()});
  }
  return true;
}

bool counts_agree(const PictureWalk &walk) {
  return walk.inputs.size() == walk.formals->size() ||
         walk.t->tell("ERROR: Incorrect number of Parameters\n", 1);
}

PictureWalk start_walk(const WinInfo *wi, const TypeNames *formals, std::string &out,
                       Translation &t) {
  return PictureWalk{wi, make_input_numbers(wi), formals, nullptr, &out, &t, {}, {}};
}

} // namespace

bool Translation::tell(std::string message, int level, int segnum) {
  if (!quiet && level == kPlainText)
    DisplayResponse(message);
  else if (!quiet)
    BeepMsge(message, level);
  messages.push_back({std::move(message), level, segnum});
  return false;
}

int segment_at(const Translation &t, std::size_t position) {
  const TextPlace *best = nullptr;
  for (const TextPlace &place : t.places)
    if (place.from <= position && position < place.to &&
        (best == nullptr || place.to - place.from <= best->to - best->from))
      best = &place;
  return best == nullptr ? 0 : best->segnum;
}

const TextPlace *place_of(const Translation &t, int segnum) {
  const auto found = std::find_if(t.places.begin(), t.places.end(),
                                  [segnum](const TextPlace &p) { return p.segnum == segnum; });
  return found == t.places.end() ? nullptr : &*found;
}

bool picture_clause(const WinInfo *wi, const TypeNames &formals, Translation &t, bool count_fits) {
  const Segm *result = wi->seg_ments[kResultSlot];
  if (result == nullptr || result->segb_ptr.empty()) {
    t.tell("No path back from result\n", 1, kResultSlot);
    return t.tell("Incomplete function declaration\n", 1);
  }
  if (result->segb_ptr.size() > 1)
    return t.tell("Output is result of more than one function\n", 3, kResultSlot);
  PictureWalk walk = start_walk(wi, &formals, t.rhs, t);
  if (count_fits && !counts_agree(walk))
    return false;
  if (!write_left_side(walk))
    return false;
  const std::size_t inputs = t.places.size();
  const Segm *feeder = arc_start(result->segb_ptr.front());
  if (feeder == nullptr || !write_body(walk, feeder))
    return false;
  t.text = t.lhs + " ::= " + t.rhs;
  shift_places(t, inputs, t.lhs.size() + 5);
  return true;
}

bool picture_clause(const WinInfo *wi, const TypeNames &formals, std::string &lhs, std::string &rhs,
                    std::string &why) {
  Translation t;
  t.quiet = true;
  const bool done = CheckJunctionLinks(wi, t) != 0 && picture_clause(wi, formals, t);
  lhs = t.lhs;
  rhs = t.rhs;
  why.clear();
  for (const PictureMessage &message : t.messages)
    if (message.level != kPlainText && why.empty())
      why = message.text;
  return done;
}

int picture_lhs(const WinInfo *wi, const TypeNames &formals, Translation &t) {
  PictureWalk walk = start_walk(wi, &formals, t.rhs, t);
  return counts_agree(walk) && write_left_side(walk) ? 1 : -1;
}

bool picture_query(const WinInfo *wi, Translation &t, const InputValues &values) {
  const Segm *result = wi->seg_ments[kResultSlot];
  if (result == nullptr || result->segb_ptr.empty())
    return t.tell("ERROR: No path to result\n", 3, kResultSlot);
  if (result->segb_ptr.size() > 1)
    return t.tell("ERROR: More than one path to result\n", 3, kResultSlot);
  PictureWalk walk = start_walk(wi, nullptr, t.text, t);
  walk.values = &values;
  const Segm *feeder = arc_start(result->segb_ptr.front());
  if (feeder == nullptr)
    return false;
  if (feeder->type == kBox && label_of(feeder).empty())
    return t.tell("ERROR: Blank function node\n", 3, feeder->segnum);
  if (feeder->type == kHexagon) {
    std::string value = feeder->label;
    for (const auto &[slot, text] : values)
      if (slot == feeder->segnum)
        value = text;
    t.text = " (" + value + ")";
    t.places.push_back({feeder->segnum, 1, t.text.size()});
    return true;
  }
  if (!write_body(walk, feeder)) {
    t.text.clear();
    t.places.clear();
    return false;
  }
  return true;
}

std::string picture_declaration(const WinInfo *wi) {
  std::string text = wi->name + " ::= ";
  for (const std::string &type : make_input_list(wi))
    text += type + " -> ";
  const Segm *result = wi->seg_ments[kResultSlot];
  return result == nullptr ? text : text + std::string(label_of(result));
}

} // namespace velora
