// Recording compound steps, and taking them back. A change is applied only when everything that it
// touched stands as it left it.
#include "editor/compound.h"

#include <algorithm>

#include "editor/edit.h"
#include "editor/model/needs.h"
#include "editor/model/wininfo.h"
#include "editor/needs.h"
#include "platform/response.h"

namespace velora {

namespace {

struct Orphan {
  std::string what;
  std::shared_ptr<CompoundChange> change;
};
std::vector<Orphan> orphans;

std::vector<PictureState> stored_states(const std::string &name) {
  std::vector<PictureState> states;
  for (const WinInfo *wi = gWinInfo; wi != nullptr; wi = wi->next)
    if (wi->win == 0 && wi->name == name) {
      states.push_back(state_of(wi));
      states.back().selected.clear();
    }
  return states;
}

bool same_picture(const PictureState &a, const PictureState &b) {
  return a.fields == b.fields && a.slots == b.slots;
}

bool same_pictures(const std::vector<PictureState> &a, const std::vector<PictureState> &b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), same_picture);
}

// Gives the stored records of a name these states: those that stand are filled in their order, what
// is too many goes, what is missing is appended.
void put_stored(const std::string &name, const std::vector<PictureState> &states) {
  std::size_t filled = 0;
  for (WinInfo *wi = gWinInfo; wi != nullptr;) {
    WinInfo *next = wi->next;
    if (wi->win == 0 && wi->name == name) {
      if (filled < states.size())
        restore_state(wi, states[filled++]);
      else
        RemovePicture(wi);
    }
    wi = next;
  }
  for (; filled < states.size(); ++filled) {
    WinInfo *wi = nullptr;
    if (NewWinInfo(0, states[filled].fields.wtype, &wi) == 0)
      return;
    restore_state(wi, states[filled]);
  }
  gSegsChanged = 1;
}

// The name of what does not stand as the change left it; empty when everything does. A symbol's
// neighbours may have changed meanwhile, so its place does not count.
std::string changed_since(const CompoundChange &change, bool back) {
  for (const StoredPictures &pictures : change.pictures)
    if (!same_pictures(stored_states(pictures.name), back ? pictures.after : pictures.before))
      return pictures.name;
  for (const SymbolChange &symbol : change.symbols) {
    SymbolState now = take_symbol_state(symbol.name);
    const SymbolState &left = back ? symbol.after : symbol.before;
    now.newer = left.newer;
    if (!(now == left))
      return symbol.name;
  }
  return {};
}

} // namespace

CompoundStep::CompoundStep(WinInfo *wi, std::string what) : wi_(wi), what_(std::move(what)) {
  if (wi != nullptr)
    shown_before_ = state_of(wi);
  begin_compound(wi);
}

void CompoundStep::touch_pictures(const std::string &name) {
  for (const StoredPictures &pictures : change_.pictures)
    if (pictures.name == name)
      return;
  change_.pictures.push_back({name, stored_states(name), {}});
}

void CompoundStep::touch_symbol(const std::string &name) {
  for (const SymbolChange &symbol : change_.symbols)
    if (symbol.name == name)
      return;
  change_.symbols.push_back({name, take_symbol_state(name), {}});
}

CompoundStep::~CompoundStep() {
  for (StoredPictures &pictures : change_.pictures)
    pictures.after = stored_states(pictures.name);
  for (SymbolChange &symbol : change_.symbols)
    symbol.after = take_symbol_state(symbol.name);
  std::erase_if(change_.pictures, [](const StoredPictures &pictures) {
    return same_pictures(pictures.before, pictures.after);
  });
  std::erase_if(change_.symbols, [](const SymbolChange &s) { return s.before == s.after; });
  std::shared_ptr<CompoundChange> change;
  if (!change_.pictures.empty() || !change_.symbols.empty())
    change = std::make_shared<CompoundChange>(std::move(change_));
  if (wi_ != nullptr)
    end_compound(wi_, what_, shown_before_, std::move(change));
  else if (change != nullptr)
    keep_orphan(what_, std::move(change));
}

int apply_compound(CompoundChange &change, bool back) {
  const std::string changed = changed_since(change, back);
  if (!changed.empty()) {
    BeepMsgef(1, "Sorry! %s has been changed since: nothing was changed\n", changed.c_str());
    return 0;
  }
  for (const StoredPictures &pictures : change.pictures)
    put_stored(pictures.name, back ? pictures.before : pictures.after);
  // Declarations go in the order of their making, and are taken back the other way round.
  const auto put = [back](const SymbolChange &symbol) {
    return put_symbol_state(symbol.name, back ? symbol.before : symbol.after) != 0;
  };
  const bool whole = back ? std::all_of(change.symbols.rbegin(), change.symbols.rend(), put)
                          : std::all_of(change.symbols.begin(), change.symbols.end(), put);
  for (const int kind : {1, 2, 3})
    ReSetUpUserMenus(kind);
  return whole ? 1 : 0;
}

void keep_orphan(const std::string &what, std::shared_ptr<CompoundChange> change) {
  orphans.push_back({what, std::move(change)});
}

std::string orphan_to_undo() {
  return orphans.empty() ? std::string() : orphans.back().what;
}

int undo_orphan() {
  if (orphans.empty() || apply_compound(*orphans.back().change, true) == 0)
    return 0;
  orphans.pop_back();
  return 1;
}

void forget_orphans() {
  orphans.clear();
}

} // namespace velora
