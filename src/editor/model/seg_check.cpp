// Bringing pictures in line with the symbol table after a database and its pictures were loaded.
#include <string_view>
#include <unordered_set>

#include "core/symbols.h"
#include "editor/model/needs.h"
#include "editor/model/seg_file.h"
#include "editor/model/wininfo.h"
#include "platform/response.h"

namespace velora {

namespace {

bool is_constructor_or_type(const symbol *sym) {
  return sym->stype == kConstructor || sym->stype == kTypeOp || sym->stype == kEnumType ||
         sym->stype == kNonlexType;
}

} // namespace

void OrvekVeloraConsistencyCheck() {
  std::unordered_set<std::string_view> names;
  for (const symbol *sym = Symbol_table; sym != nullptr; sym = sym->next)
    if (is_constructor_or_type(sym))
      names.emplace(sym->name, sym->name_len);
  if (names.empty())
    return;
  for (WinInfo *wi = gWinInfo; wi != nullptr; wi = wi->next) {
    if (wi->wtype == kConstructorsPicture || !names.contains(wi->name))
      continue;
    DisplayResponse("\nChecking Orvek and Velora constructors for congruency. . . ");
    wi->wtype = kConstructorsPicture;
  }
  for (const int kind : {1, 2, 3, 5})
    ReSetUpUserMenus(kind);
  DisplayResponse("\nOrvek and Velora constructors are synchronised.\n");
}

} // namespace velora
