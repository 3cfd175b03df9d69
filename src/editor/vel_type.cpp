// Names, inputs and results of function boxes. What the check wants changed in the picture is
// gathered and carried out in one place at its end.
#include "editor/vel_type.h"

#include <algorithm>

#include "core/events.h"
#include "core/symbols.h"
#include "editor/draw.h"
#include "editor/edit.h"
#include "editor/picture_walk.h"
#include "front/cint.h"
#include "platform/response.h"

namespace velora {

namespace {

constexpr const char *kLambdaName = "lambda";
constexpr std::string_view kUnchecked[] = {kLambdaName, "assert",   "assertq",  "makelist",
                                           "compose",   "permuteN", "remember", "prog",
                                           "prog1",     "progN",    "nar_line"};
constexpr std::string_view kUncheckedFamily = "mp_";

const Segm *first_receiver(const Segm *box) {
  return box->segf_ptr.empty() ? nullptr : arc_end(box->segf_ptr.front());
}

void expand_box(TypeCheck &check, const Segm *box) {
  check.expanded.push_back(box->segnum);
}

bool any_unknown(const BoxParameters &parameters) {
  return std::any_of(parameters.begin(), parameters.end(),
                     [](const BoxParameter &p) { return p.type.head.empty(); });
}

// Carries out what the check wants changed. The only place that writes to the picture.
void apply_changes(WinInfo *wi, const TypeCheck &check) {
  if (check.changes.empty())
    return;
  const auto apply = [wi, &check] {
    for (const BoxChange &change : check.changes) {
      Segm *box = wi->seg_ments[change.slot];
      if (!change.label.empty())
        box->label = change.label;
      if (change.shape >= 0)
        set_shape_style(box, change.shape);
    }
  };
  if (wi->win != 0)
    edit_picture(wi, "Check Types", apply);
  else
    apply(); // a copy that no window shows
}

int check_every_box(TypeCheck &check) {
  for (const auto step : {CheckFunctionBox, TypeCheckFunction})
    for (int slot = kResultSlot + 1; slot <= check.wi->seg_ct; ++slot) {
      CheckForUserEvents(83);
      const Segm *seg = check.wi->seg_ments[slot];
      if (seg != nullptr && seg->type == kBox && step(check, seg) == 0)
        return 0;
    }
  return 1;
}

// One drawn input against one declared type.
void compare_input(TypeCheck &check, const Segm *box, const BoxParameter &drawn,
                   const std::string &declared) {
  const bool blank = drawn.from_box == 0 && drawn.label.empty();
  if (VariableType(declared) != 0 || blank || types_agree(drawn.type, read_type(declared)))
    return;
  const std::string shown = drawn.from_box != 0 ? type_text(drawn.type) : drawn.label;
  const char *warning = drawn.from_box != 0 ? "WARNING: " : "Warning: ";
  if (drawn.from_box != 0)
    expand_box(check, box);
  check.t->tell(warning + called_name(check, box) + " has parameter " + shown + " when " +
                    declared + " expected\n",
                1, box->segnum);
}

} // namespace

std::string called_name(const TypeCheck &check, const Segm *box) {
  const std::string_view label = label_of(box);
  return label.empty() ? check.wi->name : std::string(label);
}

bool SpecialCase(const std::string &name) {
  return name.starts_with(kUncheckedFamily) ||
         std::find(std::begin(kUnchecked), std::end(kUnchecked), name) != std::end(kUnchecked);
}

int function_input_check(WinInfo *wi, int checkfdef, Translation &t) {
  TypeCheck check{wi, checkfdef != 0, &t, {}, {}, {}};
  const int result = check_every_box(check);
  t.expanded = check.expanded;
  apply_changes(wi, check);
  return result;
}

int CheckFunctionBox(TypeCheck &check, const Segm *box) {
  const std::string label(label_of(box));
  if (label == kLambdaName)
    return check.defining ||
           check.t->tell("ERROR: Cannot use lambda inside Query\n", 3, box->segnum);
  const bool bold = shape_style(box) == kBold;
  if (label.empty() && !bold)
    return check.t->tell("Blank Function Name\n", 3, box->segnum);
  if (label.empty()) {
    // A query changes nothing of the picture.
    if (check.defining)
      check.changes.push_back({box->segnum, -1, check.wi->name});
  } else if (bold && label != check.wi->name) {
    check.t->tell("Warning: Mis-match between " + label + " and " + check.wi->name + "\n", 1,
                  box->segnum);
  }
  if (box->segf_ptr.size() != 1)
    expand_box(check, box);
  if (find_symbol(called_name(check, box).c_str(), 0) != nullptr)
    return 1;
  const Segm *receiver = first_receiver(box);
  if (receiver != nullptr && (receiver->type == kHexagon || receiver->type == kHoldValue))
    return 1;
  expand_box(check, box);
  return check.t->tell("Please insert output type for " + called_name(check, box) + "\n", 1,
                       box->segnum);
}

int TypeCheckFunction(TypeCheck &check, const Segm *box) {
  const std::string name = called_name(check, box);
  if (SpecialCase(name))
    return 1;
  const symbol *sym = find_symbol(name.c_str(), 0);
  if (typecheck_inputs(check, box, sym) == 0)
    return 0;
  typecheck_output(check, box);
  HigherOrderTypeCheck(check, box);
  sym = find_symbol(name.c_str(), 0); // it may have been declared meanwhile
  if (sym == nullptr)
    return 1;
  const int shape = (sym->stype & kConstructorBit) != 0 ? kDouble
                    : name == check.wi->name            ? kBold
                                                        : kPlain;
  if (shape != shape_style(box) && check.defining)
    check.changes.push_back({box->segnum, shape, ""});
  return 1;
}

int typecheck_inputs(TypeCheck &check, const Segm *box, const symbol *sym) {
  const std::string name = called_name(check, box);
  TypeNames declared;
  if (sym != nullptr && get_intypes_of(name, declared, 1) == 0)
    return check.t->tell("Unable to find input types of " + name + "\n", 3, box->segnum);
  BoxParameters drawn;
  if (GetParNames(check, box, drawn) == 0)
    return 0;
  if (sym == nullptr) {
    // A query declares nothing: the parser will say that the name is not known.
    if (!check.defining)
      return 1;
    if (!any_unknown(drawn))
      return create_dec_from_graph(check, box, drawn);
    return check.t->tell("Unknown types still exist for " + name + "\n", 1, box->segnum);
  }
  for (std::size_t i = 0; i < std::min(drawn.size(), declared.size()); ++i)
    compare_input(check, box, drawn[i], declared[i]);
  if (drawn.size() > declared.size())
    return check.t->tell("Error: MORE input parameters for " + name + " than expected\n", 3,
                         box->segnum);
  // A box without inputs is a function that is handed on as a value, and so is one with some of
  // them where a function is taken.
  if (!drawn.empty() && drawn.size() < declared.size() && !is_given_as_function(check, box))
    check.t->tell("Warning: LESS input parameters for " + name + " than expected\n", 1,
                  box->segnum);
  return 1;
}

void typecheck_output(TypeCheck &check, const Segm *box) {
  const Segm *receiver = first_receiver(box);
  if (receiver == nullptr || receiver->type == kBox || receiver->type == kJunction)
    return;
  const std::string label(label_of(receiver));
  // The label of a hold names the value; only one that is a type says anything of it.
  if (receiver->type == kHoldValue && TypeIsKnown(label) == 0)
    return;
  const std::string name = called_name(check, box);
  std::string declared;
  if (label.empty())
    check.t->tell("WARNING: Blank name for output type of " + name + "\n", 3, receiver->segnum);
  else if (get_outtype_of(name, declared) == 0)
    check.t->tell("WARNING: Unable to find output type of " + name + "\n", 3, box->segnum);
  else if (VariableType(declared) == 0 && !types_agree(read_type(label), read_type(declared)))
    check.t->tell("WARNING: " + name + " has output " + label + " when " + declared + " expected\n",
                  1, box->segnum);
}

int create_dec_from_graph(TypeCheck &check, const Segm *box, const BoxParameters &parameters) {
  const std::string name = called_name(check, box);
  const Segm *receiver = first_receiver(box);
  const std::string result(receiver == nullptr ? std::string_view() : label_of(receiver));
  std::string text = name + " ::= ";
  bool known = TypeIsKnown(result) != 0;
  for (const BoxParameter &parameter : parameters) {
    const std::string type = type_text(parameter.type);
    known = known && TypeIsKnown(type) != 0;
    text += (parameter.type.head == kArrowHead ? "(" + type + ")" : type) + " -> ";
  }
  if (!known)
    return check.t->tell("Unknown types still exist for " + name + "\n", 1, box->segnum);
  std::string near;
  for (const std::string &other : nearest_names(name, 3))
    near += (near.empty() ? "" : ", ") + other;
  if (!near.empty())
    show_note("note: near it: " + near);
  constexpr int kYes = 1;
  if (PromptUser(name + " is not declared. Declare it from this picture?", {"Yes", "No"}) != kYes)
    return 0;
  return create_fdec(text + result, name.c_str(), nullptr);
}

} // namespace velora
