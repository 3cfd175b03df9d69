// Steps that change stored pictures and code together: Commit, Replace, Remove, Redefine, Deny,
// Create Network, Build. Such a step holds what differs in the stored pictures of the names
// touched, in the symbols and in the files touched, before and after; Undo puts it back whole.
//
// A command opens a CompoundStep around its work and tells it what it is going to touch. Changes of
// the shown picture inside it, through edit_picture, belong to the same step.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "editor/compound_pictures.h"
#include "editor/history.h"
#include "editor/model/records.h"
#include "editor/symbol_state.h"

namespace velora {

// The contents of a file; none where there was no file.
struct FileChange {
  std::string file;
  std::optional<std::string> before;
  std::optional<std::string> after;
};

struct CompoundChange {
  std::vector<StoredChange> pictures;
  std::vector<SymbolChange> symbols;
  std::vector<FileChange> files;
  [[nodiscard]] bool empty() const { return pictures.empty() && symbols.empty() && files.empty(); }
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

  // To be called before the stored records of a name, or any symbol, change; a second call does
  // nothing.
  void touch_pictures(const std::string &name);
  void touch_code();
  void touch(const std::string &name) {
    touch_pictures(name);
    touch_code();
  }
  // Puts back what the command has changed so far, but for the shown picture.
  void take_back();

private:
  friend void touch_file(const std::string &file);
  CompoundChange changes_so_far() const;

  WinInfo *wi_;
  std::string what_;
  PictureState shown_before_;
  std::vector<StoredPictures> pictures_;
  std::optional<CodeState> code_;
  std::vector<FileChange> files_;
  CompoundStep *outer_;
};

// To be called before a command writes a file: the step that is open, if any, takes the file back
// with the rest.
void touch_file(const std::string &file);

// For CompoundStep: changes of a picture in between belong to the step; at the end it is recorded.
void begin_compound(WinInfo *wi);
void end_compound(WinInfo *wi, const std::string &what, const PictureState &before,
                  std::shared_ptr<CompoundChange> change);

// Takes a compound change of `acting` (null when its window has closed) back or does it again: 1,
// or 0 after a message when something else has changed what it touched since.
int apply_compound(const CompoundChange &change, bool back, const WinInfo *acting);

// Keeps a compound step whose window has closed.
void keep_orphan(const std::string &what, std::shared_ptr<CompoundChange> change);
// The newest compound step without a window, as the user calls it; empty for none.
std::string orphan_to_undo();
// Takes it back: 1, or 0 after a message.
int undo_orphan();
// Forgets all of them; when the database closes.
void forget_orphans();

} // namespace velora
