// The picture that a function begins with: its result and its inputs, from its declaration. Draws
// into a record that no window shows; a window takes it over as one step.
#include <string>

#include "core/print.h"
#include "core/symbols.h"
#include "editor/model/vel_segs.h"
#include "editor/model/wininfo.h"
#include "editor/vel_cmp.h"
#include "platform/text_measures.h"

namespace velora {

int draw_declaration(const std::string &name, WinInfo *wi) {
  const symbol *sym = find_symbol(name.c_str(), 0);
  if (sym == nullptr)
    return 0;
  if (sym->stype == kBuiltinFunction || sym->stype == kSysFunction) {
    print_symbol(name.c_str());
    return 0;
  }
  TypeNames inputs;
  std::string result;
  if ((sym->stype != kFunction && sym->stype != kDbFunction) || clause_count(name) > 0 ||
      get_intypes_of(name, inputs, 1) == 0 || get_outtype_of(name, result) == 0)
    return 0;
  ClearWinInfo(wi);
  if (setup_for_fdef(wi) == 0)
    return 0;
  wi->name = name;
  wi->seg_ments[kResultSlot]->label = result;
  const int height = NodeHeight(wi);
  const auto width = [wi](const std::string &text) {
    return measured_width(text, picture_font(wi));
  };
  int total = 0;
  for (const std::string &type : inputs)
    total += width(type) + height;
  const int gap = (picture_area(wi).width() - total) / (static_cast<int>(inputs.size()) + 1);
  int x = gap + height;
  for (const std::string &type : inputs) {
    const int slot = add_node(wi, kToolParameter, x, height);
    if (slot == 0)
      return 0;
    wi->seg_ments[slot]->label = type;
    x += width(type) + height + gap;
  }
  wi->saved = 0;
  return 1;
}

} // namespace velora
