// The user menus: the names of functions, data types and network nodes that the Find menus offer.
// Called after pictures were loaded, saved or removed.
#include "editor/user_menus.h"

#include <set>
#include <string>
#include <vector>

#include "core/symbols.h"
#include "editor/model/needs.h"
#include "editor/model/wininfo.h"
#include "platform/desktop.h"

namespace velora {

namespace {

// As many as stand between two first command numbers.
constexpr std::size_t kMostNames = 990;

bool is_user_function(const symbol *sym) {
  return sym->stype == kFunction || sym->stype == kDbFunction;
}

bool is_user_type(const symbol *sym) {
  return sym->stype == kTypeOp || sym->stype == kEnumType || sym->stype == kNonlexType;
}

// The names declared and the names of stored pictures, each once, in alphabetical order.
std::vector<std::string> menu_names(bool types) {
  std::set<std::string> names;
  for (const symbol *sym = Symbol_table; sym != nullptr; sym = sym->next)
    if (types ? is_user_type(sym) : is_user_function(sym))
      names.emplace(sym->name);
  const int wtype = types ? kConstructorsPicture : kFunctionPicture;
  for (const WinInfo *wi = gWinInfo; wi != nullptr; wi = wi->next)
    if (wi->win == 0 && wi->wtype == wtype && !wi->name.empty())
      names.insert(wi->name);
  std::vector<std::string> list(names.begin(), names.end());
  if (list.size() > kMostNames)
    list.resize(kMostNames);
  return list;
}

} // namespace

void ReSetUpUserMenus(int kind) {
  for (const UserMenu &menu : kUserMenus)
    if (menu.kind == kind)
      gDesktop->set_user_menu(menu.bar, menu.header, menu_names(menu.types), menu.first_command);
}

void CreateUserMenus() {
  for (const UserMenu &menu : kUserMenus)
    ReSetUpUserMenus(menu.kind);
}

} // namespace velora
