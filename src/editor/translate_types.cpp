// Pictures of constructors. Segment 1 is the type; the double boxes with one arc into it are its
// constructors, what feeds a box its arguments in order. A bold box names a file that holds the
// constructors, and an arc from the type to a node labelled "nonlex" makes the type non-lexical.
#include <algorithm>
#include <set>

#include "core/print.h"
#include "core/symbols.h"
#include "editor/model/vel_segs.h"
#include "editor/picture_walk.h"
#include "editor/translate.h"
#include "front/cint.h"
#include "front/parse.h"
#include "front/source.h"
#include "platform/response.h"
#include "platform/safe_file.h"

namespace velora {

namespace {

// The variables of a type in order of first appearance.
void collect_variables(const std::string &type, TypeNames &variables) {
  const StatementSource source(type + "\n");
  while (pp_get_token() != kTokEnd || pp_at_end == 0) {
    if (pp_token != kTokVariable)
      continue;
    const std::string name = "?" + std::to_string(pp_int_val);
    if (std::find(variables.begin(), variables.end(), name) == variables.end())
      variables.push_back(name);
  }
}

// True when an arc leads into the type, straight or through a junction and its sink.
bool leads_to_type(const WinInfo *wi, const Segm *node, const Segm *type) {
  if (node == type)
    return true;
  if (node->type != kJunction)
    return false;
  for (int slot = 1; slot <= wi->seg_ct; ++slot) {
    const Segm *source = wi->seg_ments[slot];
    if (source == nullptr || source->type != kJunction || FindJunctionLink(wi, source) != node)
      continue;
    for (const Segm *arc : source->segf_ptr)
      if (arc_end(arc) == type)
        return true;
  }
  return false;
}

// The labels that feed a box, in order: through junctions, not through anything else.
bool argument_types(const WinInfo *wi, const Segm *box, TypeNames &types, Translation &t) {
  for (const Segm *arc : cyclic_order_types_of(box)) {
    const Segm *node = arc_start(arc);
    if (node->type == kJunction) {
      const Segm *sink = FindJunctionLink(wi, node);
      // A sink that is fed by a junction again would lead round and round.
      for (const Segm *entering : cyclic_order_types_of(sink)) {
        if (arc_start(entering)->type == kJunction || label_of(arc_start(entering)).empty())
          return t.tell("Failure to get inputs\n", 1, box->segnum);
        types.emplace_back(label_of(arc_start(entering)));
      }
      continue;
    }
    if (label_of(node).empty())
      return t.tell("Failure to get inputs\n", 1, box->segnum);
    types.emplace_back(label_of(node));
  }
  return true;
}

// A constructor of the picture before the type's variables are known.
struct Drawn {
  const Segm *box;
  TypeNames arguments;
};

bool read_box(const WinInfo *wi, const Segm *box, const Segm *type, Structures &out,
              std::vector<Drawn> &drawn, Translation &t) {
  const std::string label(label_of(box));
  if (shape_style(box) == kBold) {
    if (!box->segb_ptr.empty())
      return t.tell("Error: input to imported list of constructors\n", 3, box->segnum);
    out.import = label;
    return true;
  }
  if (shape_style(box) != kDouble)
    return true;
  if (box->segf_ptr.empty())
    return t.tell("Error - no output type for " + label + "\n", 3, box->segnum);
  if (box->segf_ptr.size() > 1)
    return t.tell("Error - multiple output types for " + label + "\n", 3, box->segnum);
  const Segm *end = arc_end(box->segf_ptr.front());
  if (!leads_to_type(wi, end, type)) {
    if (end->type != kJunction)
      return true; // an argument of another box, or something else that is drawn beside
    t.selected.push_back(end->segnum);
    return t.tell("Please join Junction to output type\n", 3, end->segnum);
  }
  if (!reads_as_name(label))
    return t.tell("Sorry! " + (label.empty() ? "A constructor without a name" : label) +
                      " is not a valid name\n",
                  3, box->segnum);
  drawn.push_back({box, {}});
  return argument_types(wi, box, drawn.back().arguments, t);
}

// Sets the type's base, and its result type with the variables of the constructors where the label
// has none.
void settle_base(Structures &out, const std::string &label, const std::vector<Drawn> &drawn,
                 bool nonlex, Translation &t) {
  TypeNames variables;
  TypeNames used;
  collect_variables(label, variables);
  bool constants = !drawn.empty() || !out.import.empty();
  for (const Drawn &constructor : drawn) {
    constants = constants && constructor.arguments.empty();
    for (const std::string &argument : constructor.arguments)
      collect_variables(argument, used);
  }
  out.result = label;
  if (variables.empty()) {
    variables = used;
    for (const std::string &name : variables)
      out.result += " " + name;
  } else if (std::any_of(used.begin(), used.end(), [&variables](const std::string &name) {
               return std::find(variables.begin(), variables.end(), name) == variables.end();
             })) {
    t.tell("WARNING: Type definition may have incorrect operands\n", 1, kResultSlot);
  }
  out.operands = static_cast<int>(variables.size());
  if (nonlex) {
    out.base = out.type + " ::= nonlex";
    out.operands = -1;
  } else if (constants && variables.empty()) {
    out.base = out.type + " ::= enum";
    out.operands = -1;
  } else {
    out.base = out.type + " ::= typeop #" + std::to_string(out.operands);
  }
}

// Nodes that are joined to nothing are graphs of their own.
bool all_joined(const WinInfo *wi, Translation &t) {
  for (int slot = kResultSlot + 1; slot <= wi->seg_ct; ++slot) {
    const Segm *seg = wi->seg_ments[slot];
    // An imported list needs no arc: its box says all.
    if (seg == nullptr || is_arc(seg) || !seg->segb_ptr.empty() || !seg->segf_ptr.empty() ||
        (seg->type == kBox && shape_style(seg) == kBold))
      continue;
    return t.tell("Error: disjoint graphs found in window\n", 3, slot);
  }
  return true;
}

bool is_nonlex(const Segm *type) {
  return std::any_of(type->segf_ptr.begin(), type->segf_ptr.end(), [](const Segm *arc) {
    return arc_end(arc) != nullptr && label_of(arc_end(arc)) == "nonlex";
  });
}

} // namespace

bool picture_structures(const WinInfo *wi, Structures &out, Translation &t) {
  const Segm *type = wi->seg_ments[kResultSlot];
  const std::string label(type == nullptr ? std::string_view() : bare_type(label_of(type)));
  out.type = GetBaseType(label);
  if (type == nullptr || is_arc(type) || out.type.empty())
    return t.tell("Error: no output type found in window\n", 3, kResultSlot);
  if (!all_joined(wi, t))
    return false;
  std::vector<Drawn> drawn;
  for (int slot = kResultSlot + 1; slot <= wi->seg_ct; ++slot) {
    const Segm *seg = wi->seg_ments[slot];
    if (seg != nullptr && seg->type == kBox && !read_box(wi, seg, type, out, drawn, t))
      return false;
  }
  // Constructors are declared in the order in which they are drawn, from left to right.
  std::stable_sort(drawn.begin(), drawn.end(), [](const Drawn &a, const Drawn &b) {
    return a.box->box().centre().x < b.box->box().centre().x;
  });
  settle_base(out, label, drawn, is_nonlex(type), t);
  for (const Drawn &constructor : drawn) {
    const std::string name(label_of(constructor.box));
    std::string text = name + " ::=";
    for (const std::string &argument : constructor.arguments)
      text += " (" + argument + ") ->";
    out.constructors.push_back({name, text + " " + out.result, constructor.box->segnum});
  }
  return true;
}

bool picture_structures(const WinInfo *wi, std::vector<std::string> &declarations,
                        std::string &why) {
  Translation t;
  t.quiet = true;
  Structures structures;
  declarations.clear();
  why.clear();
  if (CheckJunctionLinks(wi, t) == 0 || !picture_structures(wi, structures, t)) {
    why = t.messages.empty() ? "" : t.messages.front().text;
    return false;
  }
  declarations.push_back(structures.base);
  for (const Structures::Constructor &constructor : structures.constructors)
    declarations.push_back(constructor.declaration);
  return true;
}

namespace {

// Declares the type unless it stands: then it keeps its base.
bool declare_type(const Structures &drawn, Translation &t) {
  const symbol *sym = find_symbol(drawn.type.c_str(), 0);
  if (sym != nullptr && (sym->stype & kTypeNameBit) != 0) {
    const bool operands = (sym->stype & kEnumBit) == 0;
    if (operands && sym->b.tp != nullptr && drawn.operands >= 0 &&
        drawn.operands != sym->b.tp->arity)
      t.tell("WARNING: Type definition may have incorrect operands\n", 1, kResultSlot);
    return true;
  }
  if (cint_tdec(drawn.base) == 0) {
    t.tell("Warning: Cannot define " + drawn.type + " as a new data type\n", 1, kResultSlot);
    return t.tell("Error in datatype declaration\n", 3, kResultSlot);
  }
  t.declaration = drawn.base;
  t.tell(drawn.type + " defined as a new data type\n", kPlainText, kResultSlot);
  return true;
}

// Declares one constructor. One that stands with the same signature is left as it is; another
// signature is a question.
bool declare_constructor(const Structures::Constructor &drawn, Translation &t) {
  const symbol *old = find_symbol(drawn.name.c_str(), 0);
  if (old != nullptr && (old->stype & kConstructorBit) == 0)
    old = nullptr;
  if (old != nullptr) {
    if (same_signature(old, drawn.declaration))
      return true;
    constexpr int kYes = 1;
    const std::string question =
        drawn.name + " is declared as " + tspecs_text(signature_of(old)) + ". Declare it anew?";
    const int answer = PromptUser(question, {"Yes", "No"});
    if (answer != kYes)
      return answer != kCancelled;
  }
  if (create_cdec(drawn.declaration, drawn.name.c_str(), old) == 0)
    return false;
  t.text += (t.text.empty() ? "" : "\n") + drawn.declaration;
  return true;
}

// Takes the constants of an enumerated type from a file, word by word.
bool import_constructors(const Structures &drawn, Translation &t) {
  std::string words;
  if (!read_whole_file(drawn.import, words))
    return t.tell("Can't open enumerated list for read\n", 3);
  int taken = 0;
  std::size_t at = 0;
  constexpr std::string_view kBlanks = " \t\r\n";
  while ((at = words.find_first_not_of(kBlanks, at)) != std::string::npos) {
    const std::size_t end = std::min(words.find_first_of(kBlanks, at), words.size());
    const std::string name = words.substr(at, end - at);
    at = end;
    const Structures::Constructor constant{name, name + " ::= " + drawn.result, 0};
    if (!reads_as_name(name) || !declare_constructor(constant, t))
      break;
    ++taken;
  }
  if (taken == 0)
    return t.tell("Sorry! No constructor definitions in file " + drawn.import + "\n", 1);
  t.tell("Good! Constructors of type " + drawn.type + " have been taken from file " + drawn.import +
             "\n",
         kPlainText);
  return at >= words.size() || words.find_first_not_of(kBlanks, at) == std::string::npos;
}

} // namespace

int get_structures(WinInfo *wi, Translation &t) {
  Structures drawn;
  if (!picture_structures(wi, drawn, t) || !declare_type(drawn, t))
    return 0;
  if (drawn.constructors.empty() && drawn.import.empty() && !is_nonlex(wi->seg_ments[kResultSlot]))
    t.tell("No Constructors linked to output datatype\n", 1, kResultSlot);
  for (const Structures::Constructor &constructor : drawn.constructors)
    if (!declare_constructor(constructor, t))
      return 0;
  return drawn.import.empty() || import_constructors(drawn, t) ? 1 : 0;
}

} // namespace velora
