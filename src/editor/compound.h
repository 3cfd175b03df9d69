// Steps that change stored pictures and code together: Commit, Replace, Remove, Redefine, Deny,
// Build, Create Network. Such a step holds the stored records of the names touched, and for each
// symbol touched its declaration and clauses, before and after; Undo puts them back whole.
//
// A command opens a CompoundStep around its work and tells it what it is going to touch. Changes of
// the shown picture inside it, through edit_picture, belong to the same step.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "editor/history.h"
#include "editor/model/records.h"
#include "editor/symbol_state.h"

namespace velora {

// The stored records of one name, in their order.
struct StoredPictures {
  std::string name;
  std::vector<PictureState> before;
  std::vector<PictureState> after;
};

struct SymbolChange {
  std::string name;
  SymbolState before;
  SymbolState after;
};

struct CompoundChange {
  std::vector<StoredPictures> pictures;
  std::vector<SymbolChange> symbols;
};

class CompoundStep {
public:
  // `wi` is the shown picture that the command acts on, or null: then Undo in the console takes the
  // step back.
  CompoundStep(WinInfo *wi, std::string what);
  // Records the step, when anything differs; also when the command is abandoned half way, so that
  // what it did can be taken back.
  ~CompoundStep();
  CompoundStep(const CompoundStep &) = delete;
  CompoundStep &operator=(const CompoundStep &) = delete;

  // To be called before the stored records of a name, or a symbol, change; a second call for the
  // same name does nothing.
  void touch_pictures(const std::string &name);
  void touch_symbol(const std::string &name);
  void touch(const std::string &name) {
    touch_pictures(name);
    touch_symbol(name);
  }

private:
  WinInfo *wi_;
  std::string what_;
  PictureState shown_before_;
  CompoundChange change_;
};

// For CompoundStep: changes of a picture in between belong to the step; at the end it is recorded.
void begin_compound(WinInfo *wi);
void end_compound(WinInfo *wi, const std::string &what, const PictureState &before,
                  std::shared_ptr<CompoundChange> change);

// Takes a compound change back or does it again: 1, or 0 after a message when the pictures or
// symbols have been changed by something else since.
int apply_compound(CompoundChange &change, bool back);

// Keeps a compound step whose window has closed.
void keep_orphan(const std::string &what, std::shared_ptr<CompoundChange> change);
// The newest compound step without a window, as the user calls it; empty for none.
std::string orphan_to_undo();
// Takes it back: 1, or 0 after a message.
int undo_orphan();
// Forgets all of them; when the database closes.
void forget_orphans();

} // namespace velora
