// What is drawn at the inputs of a box, and which types it has.
#include <algorithm>

#include "core/events.h"
#include "core/symbols.h"
#include "editor/model/vel_segs.h"
#include "editor/picture_walk.h"
#include "editor/vel_type.h"
#include "front/parse.h"
#include "front/source.h"

namespace velora {

namespace {

// The type that remains of a signature when `given` arguments are applied.
TypeTerm applied_type(const std::string &name, std::size_t given) {
  TypeNames in;
  std::string out;
  if (get_intypes_of(name, in, 1) == 0 || get_outtype_of(name, out) == 0)
    return {};
  TypeTerm type = read_type(out);
  for (std::size_t i = in.size(); i > given; --i) {
    TypeTerm function{kArrowHead, {}};
    function.args.push_back(read_type(in[i - 1]));
    function.args.push_back(std::move(type));
    type = std::move(function);
  }
  // More arguments than declared: nothing is known of the result.
  return given > in.size() ? TypeTerm{} : type;
}

class Collector {
public:
  Collector(const TypeCheck &check, BoxParameters &out) : check_(check), out_(out) {}

  bool inputs_of(const Segm *node) {
    for (const Segm *arc : cyclic_order_types_of(node))
      if (!add(arc_start(arc)))
        return false;
    return true;
  }

private:
  // What stands at the end of an arc. Holds and blank hexagons are looked through; a junction
  // stands for all that enters its sink.
  bool add(const Segm *node) {
    for (;;) {
      check_stack();
      if (node == nullptr || ++steps_ > kMostSteps)
        return false;
      if (node->type == kJunction) {
        const Segm *sink = FindJunctionLink(check_.wi, node);
        return sink != nullptr && inputs_of(sink);
      }
      const bool typed = node->type == kHexagon && TypeIsKnown(std::string(label_of(node))) != 0;
      if (node->type == kBox || typed || node->segb_ptr.empty())
        break;
      node = arc_start(node->segb_ptr.front());
    }
    out_.push_back(parameter(node));
    return true;
  }

  BoxParameter parameter(const Segm *node) const {
    BoxParameter found;
    found.label = label_of(node);
    if (node->type != kBox) {
      if (node->type == kHexagon && !found.label.empty())
        found.type = type_of_value(found.label);
      return found;
    }
    found.from_box = node->segnum;
    const std::string name = called_name(check_, node);
    if (find_symbol(name.c_str(), 0) != nullptr) {
      found.type = applied_type(name, node->segb_ptr.size());
    } else if (!node->segf_ptr.empty()) {
      const Segm *receiver = arc_end(node->segf_ptr.front());
      if (receiver != nullptr && receiver->type == kHexagon)
        found.type = read_type(label_of(receiver));
    }
    return found;
  }

  static constexpr int kMostSteps = 100'000;
  const TypeCheck &check_;
  BoxParameters &out_;
  int steps_ = 0;
};

// The number of items on the outermost level of an expression.
std::size_t count_items(const std::string &text) {
  const StatementSource source(text + "\n");
  std::size_t count = 0;
  int open = 0;
  while (pp_get_token() != kTokEnd || pp_at_end == 0) {
    const bool opens = pp_token == kTokOpen || pp_token == kTokOpenList;
    const bool closes = pp_token == kTokClose || pp_token == kTokCloseList;
    count += open == 0 && !closes ? 1 : 0;
    open += opens ? 1 : closes ? -1 : 0;
  }
  return count;
}

} // namespace

TypeTerm type_of_value(std::string_view text) {
  const std::string value(bare_type(text));
  if (value.empty() || (value[0] == '?' && VariableType(value) != 0))
    return {};
  if (TypeIsKnown(value) != 0)
    return read_type(value);
  if (value[0] == '[')
    return {"list", {TypeTerm{}}};
  const StatementSource source(value + "\n");
  switch (pp_get_token()) {
  case kTokInteger:
    return {"int", {}};
  case kTokRealLit:
    return {"real", {}};
  case kTokCharacter:
    return {"char", {}};
  case kTokString:
    return {"str", {}};
  case kTokName:
    break;
  default:
    return {};
  }
  const std::string head = pp_start;
  if (find_symbol(head.c_str(), 0) == nullptr)
    return {value, {}}; // whatever it is, it is no type that is known
  return applied_type(head, count_items(value) - 1);
}

int GetParNames(const TypeCheck &check, const Segm *box, BoxParameters &parameters) {
  parameters.clear();
  return Collector(check, parameters).inputs_of(box) ? 1 : 0;
}

namespace {

// The boxes that feed inputs declared as functions, found by one walk over the picture.
std::set<int> boxes_given_as_functions(const TypeCheck &check) {
  std::set<int> given;
  for (int slot = kResultSlot; slot <= check.wi->seg_ct; ++slot) {
    CheckForUserEvents(83);
    const Segm *taker = check.wi->seg_ments[slot];
    if (taker == nullptr || taker->type != kBox)
      continue;
    TypeNames declared;
    BoxParameters drawn;
    if (get_intypes_of(called_name(check, taker), declared, 1) == 0 ||
        GetParNames(check, taker, drawn) == 0)
      continue;
    for (std::size_t i = 0; i < std::min(drawn.size(), declared.size()); ++i)
      if (drawn[i].from_box != 0 && read_type(declared[i]).head == kArrowHead)
        given.insert(drawn[i].from_box);
  }
  return given;
}

} // namespace

bool is_given_as_function(TypeCheck &check, const Segm *box) {
  for (const Segm *arc : box->segf_ptr) {
    const Segm *taker = arc_end(arc);
    if (taker != nullptr && taker->type == kHexagon &&
        read_type(label_of(taker)).head == kArrowHead)
      return true;
  }
  if (!check.given_as_functions)
    check.given_as_functions = boxes_given_as_functions(check);
  return check.given_as_functions->contains(box->segnum);
}

} // namespace velora
