// What an export holds: the names gathered by the call links, and what they need besides.
#include "network/net_exp.h"

#include <algorithm>
#include <filesystem>

#include "core/events.h"
#include "core/needs.h"
#include "core/symbols.h"
#include "core/walks.h"
#include "db/f_dbops.h"
#include "db/vel_dbop.h"
#include "db/vel_util.h"
#include "editor/model/wininfo.h"
#include "front/type_names.h"
#include "network/links.h"
#include "network/net_util.h"
#include "platform/desktop.h"
#include "platform/response.h"
#include "platform/safe_file.h"

namespace velora {

namespace {

constexpr int kFilterFrom = 155;

bool is_exported_kind(const symbol *sym) {
  return sym->stype != kBuiltinFunction && sym->stype != kSysFunction;
}

bool is_users_own(const symbol *sym) {
  return (sym->stype & (kBuiltinBit | kSystemBit)) == 0 && sym->stype != kKindless;
}

void print_list(const char *title, const NameList &list) {
  std::string text = title;
  for (const std::string &name : list.names)
    text += name + ' ';
  DisplayResponse(text + '\n');
}

// Collects what the declarations of some names need beyond them.
class NeedFinder {
public:
  explicit NeedFinder(const ExportLists &lists) : have_(lists) {
    for (const std::string &name : lists.functions.names)
      open_.push_back(name);
  }

  ExportLists find() {
    while (!open_.empty()) {
      CheckForUserEvents(0);
      const std::string name = open_.back();
      open_.pop_back();
      if (const symbol *sym = find_symbol(name.c_str(), 0))
        look_at(sym);
    }
    return std::move(need_);
  }

private:
  void look_at(const symbol *sym) {
    if ((sym->stype & kFunctionBit) != 0) {
      need(find_symbol(sym->b.fc->name, 0)); // a second name needs the first
      look_at_type(sym->b.fc->types);
      for (const defs_link *group = sym->b.fc->defs; group != nullptr; group = group->next)
        look_at_group(*group);
    } else if ((sym->stype & kConstructorBit) != 0) {
      look_at_type(sym->b.cs->types);
    }
  }

  void look_at_group(const defs_link &group) {
    const auto note = [this](const node *n) {
      if (n->type == kFunctionNode)
        need(find_symbol(n->val.fc->name, 0));
      else if (n->type == kConstructorNode)
        need(find_symbol(n->val.cs->name, 0));
      else if (n->type == kName)
        need(n->val.sym);
      return false;
    };
    any_alternative(group.lhs_tree, note);
    for (const rhs_link *clause = group.defs; clause != nullptr; clause = clause->next)
      any_node(clause->original, note);
  }

  void look_at_type(const top_node *type) {
    std::vector<const top_node *> open{type};
    while (!open.empty()) {
      const top_node *tn = open.back();
      open.pop_back();
      if (tn == nullptr)
        continue;
      if (tn->top_code == kTypeArrow) {
        open.push_back(tn->tnu.bia[0]);
        open.push_back(tn->tnu.bia[1]);
      } else if (tn->top_code >= kTypeUser && tn->top_code < kTypeVariable) {
        need(tn->tnu.u.s);
        for (int i = 0; i < tn->top_code - kTypeUser; ++i)
          open.push_back(tn->tnu.u.ua[i]);
      }
    }
  }

  void need(const symbol *sym) {
    if (sym == nullptr || !is_users_own(sym))
      return;
    const bool type = (sym->stype & kTypeNameBit) != 0;
    const NameList &had = type ? have_.types : have_.functions;
    NameList &list = type ? need_.types : need_.functions;
    if (had.seen.count(sym->name) != 0 || list.seen.count(sym->name) != 0)
      return;
    NewNameToList(sym->name, list);
    if (!type)
      open_.emplace_back(sym->name);
  }

  const ExportLists &have_;
  ExportLists need_;
  std::vector<std::string> open_;
};

// Offers to add what is needed; 0 when the user gives the export up.
int offer_needed(ExportLists &lists) {
  const ExportLists needed = needed_for_export(lists);
  if (needed.functions.names.empty() && needed.types.names.empty())
    return 1;
  std::string names;
  for (const NameList *list : {&needed.types, &needed.functions})
    for (const std::string &name : list->names)
      names += ' ' + name;
  constexpr int kAdd = 1;
  const int choice =
      PromptUser("The new database will not load without:" + names, {"Add Them", "Leave Out"});
  if (choice == kCancelled)
    return 0;
  if (choice == kAdd) {
    for (const std::string &name : needed.functions.names)
      NewNameToList(name.c_str(), lists.functions);
    for (const std::string &name : needed.types.names)
      NewNameToList(name.c_str(), lists.types);
  }
  return 1;
}

// Links and declarations are read from the files, so unsaved work would be missing. 0 when the user
// gives the export up.
int offer_to_save_first() {
  if (gSymbolTableChanged == 0 && gSegsChanged == 0)
    return 1;
  constexpr int kSave = 1;
  const int choice = PromptUser("The export is made from the saved database, which has changed",
                                {"Save First", "Export Anyway"});
  if (choice == kCancelled)
    return 0;
  return choice == kSave ? SaveDataBase("Untitled") : 1;
}

// The same file, whatever way leads to it.
bool same_file(const std::string &a, const std::string &b) {
  std::error_code error;
  const std::filesystem::path one = std::filesystem::weakly_canonical(a, error);
  return !error && one == std::filesystem::weakly_canonical(b, error) && !error;
}

// The base of a new name; empty, after a message, when it is that of the open database.
std::string base_of_new(const std::string &name) {
  std::string base;
  Make_Base_Name(name, base);
  ChangeToDDBDir();
  if (!base.empty() && same_file(database_file(base), current_database_file())) {
    orvek_errorf("Sorry! %s is the database that is open\n", base.c_str());
    base.clear();
  }
  return base;
}

int export_under(const std::string &base, const NameList &functions, const NameList &types) {
  if (base.empty())
    return 0;
  if (functions.names.empty() && types.names.empty()) {
    DisplayResponse("Nothing to export!\n");
    return 0;
  }
  if (CreateExportDataBase(gDDB_basename, base, functions, types) == 0)
    return 0;
  DisplayResponse("New database built succesfully.\n");
  return 1;
}

} // namespace

void FindUserDefined(const std::string &name, NameList &functions, NameList &types) {
  const symbol *sym = name.empty() ? nullptr : find_symbol(name.c_str(), 0);
  if (sym == nullptr || !is_exported_kind(sym))
    return;
  NewNameToList(name.c_str(), functions);
  const auto add_base = [&types](const std::string &type) {
    const std::string base = GetBaseType(type);
    const symbol *of_type = base.empty() ? nullptr : find_symbol(base.c_str(), 0);
    if (of_type != nullptr && (of_type->stype & kBuiltinBit) == 0)
      NewNameToList(base.c_str(), types);
  };
  TypeNames inputs;
  if (get_intypes_of(name, inputs, 1) == 0)
    BeepMsgef(0, "Unable to find input types of %s\n", name.c_str());
  for (const std::string &type : inputs)
    add_base(type);
  std::string output;
  if (get_outtype_of(name, output) == 0)
    BeepMsgef(0, "Unable to find output type of %s\n", name.c_str());
  else
    add_base(output);
}

void gather_for_export(const std::string &name, ExportLists &lists) {
  FindUserDefined(name, lists.functions, lists.types);
  if (find_links(1) == nullptr)
    MakeFirstLinkage();
  const Links *set = find_links(bi_link_filters(kFilterFrom, 1, name));
  // Each name is looked up once, however many links mention it.
  NameList met;
  const auto add = [&](const std::string &linked) {
    if (met.seen.count(linked) != 0)
      return;
    NewNameToList(linked.c_str(), met);
    FindUserDefined(linked, lists.functions, lists.types);
  };
  for (const Pair &pair : set->ipr) {
    CheckForUserEvents(0);
    add(pair.first);
    add(pair.second);
  }
  print_list("All user-defined functions:- ", lists.functions);
  print_list("All user-defined types:- ", lists.types);
}

ExportLists needed_for_export(const ExportLists &lists) {
  return NeedFinder(lists).find();
}

int ExportToDataBase(const NameList &functions, const NameList &types) {
  const auto chosen = gDesktop->choose_file(true, "Extra Database Name?", "*.ddb");
  return chosen ? export_under(base_of_new(*chosen), functions, types) : 0;
}

int ExportNetNodes(WinInfo *wi) {
  if (offer_to_save_first() == 0)
    return 0;
  ExportLists lists;
  for (const Segm *seg : selected_nodes(wi))
    gather_for_export(seg->label, lists);
  return offer_needed(lists) != 0 ? ExportToDataBase(lists.functions, lists.types) : 0;
}

int export_names(const std::string &new_name, const std::vector<std::string> &names) {
  const std::string base = base_of_new(new_name);
  if (base.empty() || offer_to_save_first() == 0)
    return 0;
  ExportLists lists;
  for (const std::string &name : names)
    gather_for_export(name, lists);
  if (offer_needed(lists) == 0)
    return 0;
  constexpr int kYes = 1;
  if ((file_exists(database_file(base)) || file_exists(base + ".seg")) &&
      PromptUser(base + " exists. Write over it?", {"Yes", "No"}) != kYes)
    return 0;
  return export_under(base, lists.functions, lists.types);
}

} // namespace velora
