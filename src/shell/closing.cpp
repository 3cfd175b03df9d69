// What happens when the user closes a window or the main frame.
#include "core/symbols.h"
#include "db/f_dbops.h"
#include "db/recovery_file.h"
#include "db/vel_dbop.h"
#include "editor/model/wininfo.h"
#include "platform/response.h"
#include "shell/annotation.h"
#include "shell/graphics_windows.h"
#include "shell/picture_windows.h"
#include "shell/text_windows.h"
#include "shell/vel_wins.h"

namespace velora {

int CloseWindowProc(WindowId win) {
  switch (window_kind(win)) {
  case kControlWindow:
    DisplayResponse("You're not allowed to close CONTROL window\n");
    return 0;
  case kOrvekWindow:
    return close_orvek_window(win);
  case kGraphicsWindow:
    return close_graphics_window(win);
  case kAnnotationWindow:
    return CloseAnnotation();
  case kNarrativeWindow:
    return close_narrative_window();
  case kFunctionWindow:
  case kDataWindow:
  case kNetworkWindow:
    return close_picture_window(win);
  default:
    DoCloseWindow(win);
    return 1;
  }
}

int everything_saved() {
  AddAnnotation();
  const bool database_changed = gSymbolTableChanged != 0 || gSegsChanged != 0;
  return !database_changed && changed_pictures().empty() && unstored_texts().empty() &&
                 !narrative_unsaved()
             ? 1
             : 0;
}

int CloseFrameProc() {
  if (offer_to_save_pictures() == 0 || offer_to_store_texts() == 0 || may_lose_narrative() == 0 ||
      SaveDBChanges("Untitled1") == 0)
    return 0;
  remove_work(gDDB_basename); // whatever was not saved is given up
  CompleteDataBasePair();
  return 1;
}

} // namespace velora
