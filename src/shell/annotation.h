// The annotation window: free text beside a picture or one of its segments. Opened by the menu
// command; the text is stored when the window loses the focus or closes.
#pragma once

#include "editor/model/records.h"
#include "platform/desktop.h"

namespace velora {

// Opens the window (or brings it forward) with the annotation of the picture that last had the
// focus, or of its first selected segment. 1, or 0 without such a picture.
int open_annotation();
// Stores the text that was typed as the annotation of what is shown; the old text is replaced and
// the picture marked unclean. 1 when something changed.
int AddAnnotation();
// Stores what was typed and closes the window. Answers 1.
int CloseAnnotation();
// The focus goes to `win`: leaving the window stores its text, and a picture that gets the focus
// has its own annotation shown. Coming back to the window with a segment selected shows that one's,
// unless another was chosen before.
void annotation_focus(WindowId win);
// Shows the annotation of that window's picture, where the annotation window is open.
void ShowAnnotation(WindowId win);
// Brings the title of the annotation window, which names the picture and the segment, up to date.
void show_annotation_title();
// True for the picture whose annotation is shown.
bool shows_annotation_of(const WinInfo *wi);

} // namespace velora
