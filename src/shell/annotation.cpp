// Showing and storing annotations. Holds the picture and segment shown, by window and slot so that
// a picture that is gone is never touched, and the text as it was shown.
#include "shell/annotation.h"

#include "editor/edit.h"
#include "editor/model/wininfo.h"
#include "platform/desktop.h"
#include "shell/picture_windows.h"
#include "shell/vel_wins.h"

namespace velora {

namespace {

WindowId shown_window = 0; // the picture's window
int shown_segment = 0;     // 0 for the picture itself
std::string shown_text;

int first_selected(const WinInfo *wi) {
  for (int slot = 1; slot < wi->seg_ments.slots(); ++slot)
    if (const Segm *seg = wi->seg_ments[slot]; seg != nullptr && (seg->status & kSelected) != 0)
      return slot;
  return 0;
}

// The text that the window stands for; null when the picture or segment is gone.
std::string *shown_annotation() {
  WinInfo *wi = picture_of(shown_window);
  if (wi == nullptr)
    return nullptr;
  if (shown_segment == 0)
    return &wi->annot;
  Segm *seg = shown_segment < wi->seg_ments.slots() ? wi->seg_ments[shown_segment] : nullptr;
  return seg == nullptr ? nullptr : &seg->annot;
}

void show(const WinInfo *wi, WindowId win) {
  shown_window = win;
  shown_segment = first_selected(wi);
  shown_text = *shown_annotation();
  gDesktop->set_text(gAnnWind, shown_text);
  shown_text = gDesktop->text_of(gAnnWind);
  show_annotation_title();
}

} // namespace

void show_annotation_title() {
  const WinInfo *wi = picture_of(shown_window);
  if (gAnnWind == 0 || wi == nullptr)
    return;
  std::string title = std::string(look_of(kAnnotationWindow).title) + ": " +
                      (wi->name.empty() ? "unnamed" : picture_title(wi));
  if (const Segm *seg = wi->seg_ments[shown_segment]; seg != nullptr)
    title += ", " + seg->label;
  gDesktop->set_title(gAnnWind, title);
}

int open_annotation() {
  const WindowId picture = previous;
  const WinInfo *wi = picture_of(picture);
  if (wi == nullptr)
    return 0;
  if (gAnnWind == 0 && NewTextWindow(kAnnotationWindow) == 0)
    return 0;
  show(wi, picture);
  gDesktop->focus_window(gAnnWind);
  return 1;
}

int AddAnnotation() {
  std::string *text = gAnnWind == 0 ? nullptr : shown_annotation();
  if (text == nullptr)
    return 0;
  const std::string typed = gDesktop->text_of(gAnnWind);
  if (typed == shown_text)
    return 0;
  shown_text = typed;
  edit_picture(picture_of(shown_window), "Annotation", [text, &typed] { *text = typed; });
  return 1;
}

int CloseAnnotation() {
  AddAnnotation();
  const WindowId win = gAnnWind;
  shown_window = 0;
  DoCloseWindow(win);
  return 1;
}

void annotation_focus(WindowId win) {
  if (gAnnWind == 0)
    return;
  AddAnnotation();
  if (win != gAnnWind)
    ShowAnnotation(win);
  else if (shown_segment == 0)
    ShowAnnotation(shown_window); // a segment may have been selected since
}

void ShowAnnotation(WindowId win) {
  if (const WinInfo *wi = picture_of(win); gAnnWind != 0 && wi != nullptr)
    show(wi, win);
}

bool shows_annotation_of(const WinInfo *wi) {
  return gAnnWind != 0 && wi != nullptr && picture_of(shown_window) == wi;
}

} // namespace velora
