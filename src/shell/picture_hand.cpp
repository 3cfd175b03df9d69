// The mouse and the keys in pictures: what the hand needs of the shell.
#include "shell/picture_hand.h"

#include "core/symbols.h"
#include "db/needs.h"
#include "editor/clause_form.h"
#include "editor/hand/hand.h"
#include "editor/needs.h"
#include "editor/symbol_state.h"
#include "platform/response.h"
#include "shell/desk_events.h"
#include "shell/picture_windows.h"
#include "shell/text_windows.h"
#include "shell/vel_wins.h"
#include "shell/x_menus.h"

namespace velora {

// Pictures stand still while a command runs: it may be about to change them.
bool picture_mouse(WinInfo *wi, const MouseEvent &event) {
  return !command_runs() && hand_mouse(wi, event);
}

bool picture_key(WinInfo *wi, const KeyEvent &event) {
  return !command_runs() && hand_key(wi, event);
}

void run_gesture(const std::function<void()> &end) {
  const auto whole = [&end] {
    end();
    register_picture_windows(); // a gesture may have opened one
    return 1;
  };
  if (command_runs())
    whole(); // a command ends what was begun before it
  else
    run_entry(whole);
}

// A function without a picture is shown as its text; one without clauses as its starting picture.
void open_function(const std::string &name) {
  if (name.empty())
    return;
  const SymbolState code = take_symbol_state(name);
  if (has_picture(name) || code.clauses.empty()) {
    ShowGraphic(name.c_str(), 0, nullptr);
    return;
  }
  std::string text = "fdec\n" + code.declaration + " ;\n;\nfdef\n";
  for (const std::string &clause : code.clauses)
    text += clause + " ;\n";
  show_code(text + ";\n");
}

void show_calls(WinInfo *wi, int arc) {
  const std::string caller = arc_start(wi->seg_ments[arc])->label;
  const std::string callee = arc_end(wi->seg_ments[arc])->label;
  const symbol *function = caller.empty() ? nullptr : find_symbol(caller.c_str(), 0);
  const symbol *called = callee.empty() ? nullptr : find_symbol(callee.c_str(), 0);
  std::vector<std::string> clauses;
  if (called != nullptr && function != nullptr &&
      (function->stype == kFunction || function->stype == kDbFunction))
    clauses = clauses_of(function->b.fc, called);
  if (clauses.empty()) {
    DisplayResponsef("No clause of %s calls %s\n", caller.c_str(), callee.c_str());
    show_bubble(wi, arc, "no such call in the code");
    return;
  }
  DisplayResponsef("%s calls %s:\n", caller.c_str(), callee.c_str());
  for (const std::string &clause : clauses)
    DisplayResponse("   " + clause + "\n");
  const std::size_t others = clauses.size() - 1;
  show_bubble(wi, arc, (others == 0 ? "" : format_text("1 of %zu: ", others + 1)) + clauses[0]);
}

} // namespace velora
