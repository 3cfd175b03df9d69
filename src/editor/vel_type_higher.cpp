// Calls of functions that take functions: what the function argument takes and gives is held
// against the other arguments and the result. The law is the signature itself: a variable of it
// stands for one type throughout a call.
#include <array>

#include "editor/picture_walk.h"
#include "editor/vel_type.h"
#include "platform/response.h"

namespace velora {

namespace {

struct HigherOrderCall {
  const Segm *box;
  std::string name;
  BoxParameters parameters;
};

// True when an argument can be a function.
bool is_function(const TypeTerm &type) {
  return type.head == kArrowHead || agrees_with_all(type);
}

// All arguments, and the result where its type is drawn, against the signature.
void check_signature(TypeCheck &check, const HigherOrderCall &call) {
  TypeNames declared;
  std::string result;
  if (get_intypes_of(call.name, declared, 1) == 0 || get_outtype_of(call.name, result) == 0)
    return;
  TypeBindings bound;
  const auto clash = [&](const TypeTerm &one, const TypeTerm &other) {
    CheckTypesCompatible(check, call.name, one, other, call.box->segnum);
  };
  for (std::size_t i = 0; i < declared.size() && i < call.parameters.size(); ++i)
    bind_types(read_type(declared[i]), call.parameters[i].type, bound, clash);
  if (call.parameters.size() != declared.size() || call.box->segf_ptr.empty())
    return;
  const Segm *receiver = arc_end(call.box->segf_ptr.front());
  if (receiver == nullptr || receiver->type != kHexagon)
    return;
  const std::string label(label_of(receiver));
  if (TypeIsKnown(label) != 0)
    bind_types(read_type(result), read_type(label), bound, clash);
}

void check_functions(TypeCheck &check, const HigherOrderCall &call, std::size_t functions) {
  for (std::size_t i = 0; i < functions && i < call.parameters.size(); ++i)
    if (!is_function(call.parameters[i].type)) {
      check.t->tell("Can't get function parameter of " + call.name + "\n", 1, call.box->segnum);
      return;
    }
  check_signature(check, call);
}

void MapCheck(TypeCheck &check, const HigherOrderCall &call) {
  check_functions(check, call, 1);
}
void FoldCheck(TypeCheck &check, const HigherOrderCall &call) {
  check_functions(check, call, 1);
}
void IterateCheck(TypeCheck &check, const HigherOrderCall &call) {
  check_functions(check, call, 2);
}
void SortCheck(TypeCheck &check, const HigherOrderCall &call) {
  check_functions(check, call, 1);
}
void PermuteCheck(TypeCheck &check, const HigherOrderCall &call) {
  check_functions(check, call, 1);
}
// Two functions and what they are applied to: each one's result is what the one before it takes.
void ComposeCheck(TypeCheck &check, const HigherOrderCall &call) {
  if (call.parameters.size() < 2)
    check.t->tell("No.parameters for compose is " + std::to_string(call.parameters.size()) + "\n",
                  1, call.box->segnum);
  else
    check_functions(check, call, 2);
}

struct HigherOrderRow {
  std::string_view name;
  void (*check)(TypeCheck &, const HigherOrderCall &);
};
constexpr std::array<HigherOrderRow, 7> kRows{{{"map", MapCheck},
                                               {"foldr", FoldCheck},
                                               {"foldl", FoldCheck},
                                               {"compose", ComposeCheck},
                                               {"iterate", IterateCheck},
                                               {"sort", SortCheck},
                                               {"permute", PermuteCheck}}};

} // namespace

void CheckTypesCompatible(TypeCheck &check, const std::string &fname, const TypeTerm &par1,
                          const TypeTerm &par2, int segnum) {
  if (types_agree(par1, par2))
    return;
  check.t->tell("WARNING: For function " + fname + ", " + type_text(par1) + " and " +
                    type_text(par2) + " are not compatible\n",
                1, segnum);
}

void HigherOrderTypeCheck(TypeCheck &check, const Segm *box) {
  const std::string name = called_name(check, box);
  for (const HigherOrderRow &row : kRows) {
    if (row.name != name)
      continue;
    HigherOrderCall call{box, name, {}};
    if (GetParNames(check, box, call.parameters) == 0)
      return;
    if (call.parameters.empty()) {
      check.t->tell("There are no parameters of " + name + "\n", 1, box->segnum);
      return;
    }
    for (std::size_t i = 0; i < call.parameters.size(); ++i)
      if (call.parameters[i].from_box == 0 && call.parameters[i].label.empty())
        check.t->tell("Can't get parameter " + std::to_string(i + 1) + " for " + name + "\n", 1,
                      box->segnum);
    row.check(check, call);
    return;
  }
}

} // namespace velora
