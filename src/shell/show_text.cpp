// From a node to its text: the picture is translated without a word or a change, and the window
// with the clause gets the place that the translation remembers as its selection.
#include "shell/show_text.h"

#include <string>

#include "editor/picture_walk.h"
#include "editor/translate.h"
#include "front/type_names.h"
#include "platform/desktop.h"
#include "platform/response.h"
#include "shell/text_windows.h"

namespace velora {

int show_text_of(WinInfo *wi, int slot) {
  if (wi->wtype != kFunctionPicture)
    return 0;
  TypeNames formals;
  if (get_intypes_of(wi->name, formals, 1) == 0)
    formals = make_input_list(wi);
  Translation t;
  t.quiet = true;
  if (!picture_clause(wi, formals, t)) {
    for (const PictureMessage &message : t.messages)
      if (message.level != kPlainText)
        BeepMsge(message.text, message.level);
    show_findings(wi, t);
    return 0;
  }
  const std::string section = "fdef\n";
  const WindowId win = show_code(section + t.text + " ;\n;\n");
  const TextPlace *place = place_of(t, slot);
  if (win == 0 || place == nullptr)
    return win != 0 ? 1 : 0;
  gDesktop->select_text(win, {section.size() + place->from, section.size() + place->to});
  return 1;
}

} // namespace velora
