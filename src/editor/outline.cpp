// Telling a picture node by node, in the order of their numbers.
#include "editor/outline.h"

#include <vector>

#include "editor/model/vel_segs.h"

namespace velora {

namespace {

const char *kind_of(const Segm *seg) {
  switch (seg->type) {
  case kHexagon:
    return "hexagon";
  case kBox:
    return "box";
  case kJunction:
    return "junction";
  default:
    return "hold value";
  }
}

bool is_result(const WinInfo *wi, const Segm *seg) {
  return seg->segnum == 1 && wi->wtype != kNetworkPicture;
}

std::string short_name(const WinInfo *wi, const Segm *seg) {
  return is_result(wi, seg) ? "result"
                            : std::string(kind_of(seg)) + " " + std::to_string(seg->segnum);
}

} // namespace

std::string picture_outline(const WinInfo *wi) {
  std::string text = wi->name.empty() ? std::string("unnamed") : wi->name;
  text += ":";
  bool first = true;
  for (int slot = 1; slot < wi->seg_ments.slots(); ++slot) {
    const Segm *seg = wi->seg_ments[slot];
    if (seg == nullptr || !is_node(seg))
      continue;
    text += (first ? " " : "; ") + short_name(wi, seg);
    first = false;
    if (!seg->label.empty())
      text += " " + seg->label;
    if ((seg->status & kSelected) != 0)
      text += ", selected";
    const std::vector<Segm *> inputs = cyclic_order_types_of(seg);
    for (std::size_t i = 0; i < inputs.size(); ++i)
      text += (i > 0               ? ", "
               : inputs.size() > 1 ? ", inputs "
                                   : ", input ") +
              short_name(wi, arc_start(inputs[i]));
  }
  return first ? text + " empty" : text;
}

} // namespace velora
