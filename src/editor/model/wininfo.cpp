// The list of picture records. Appending is quick because the last record is remembered; nobody
// else changes the list.
#include "editor/model/wininfo.h"

#include <new>
#include <unordered_map>

#include "editor/model/vel_segs.h"
#include "platform/desktop.h"
#include "platform/response.h"
#include "platform/window_maker.h"

namespace velora {

WinInfo *gWinInfo = nullptr;
int gSegsChanged = 0;

namespace {

WinInfo *last_picture = nullptr;

// The stored components by name and number, made anew after the list has changed. Names are
// changed by others, so what is found here is looked at again.
std::unordered_map<std::string, WinInfo *> stored_pictures;
bool list_changed = true;

std::string key_of(const std::string &name, int cmpnt) {
  return std::to_string(cmpnt) + ' ' + name;
}

bool is_stored_as(const WinInfo *wi, const std::string &name, int cmpnt) {
  return wi->win == 0 && wi->cmpnt == cmpnt && wi->name == name;
}

void index_stored_pictures() {
  stored_pictures.clear();
  for (WinInfo *wi = gWinInfo; wi != nullptr; wi = wi->next)
    if (wi->win == 0)
      stored_pictures.emplace(key_of(wi->name, wi->cmpnt), wi);
  list_changed = false;
}

// Picture windows made so far, for cascading.
int windows_made = 0;

// Where NewWindow placed the last of them.
Rect newest_place;

} // namespace

int NewWinInfo(WindowId window, int type, WinInfo **wi) {
  auto *fresh = new (std::nothrow) WinInfo;
  *wi = fresh;
  if (fresh == nullptr) {
    orvek_error("NewWinInfo: mMALLOC failed");
    return 0;
  }
  fresh->win = window;
  fresh->wtype = static_cast<short>(type);
  if (window != 0) {
    const Rect inside = gDesktop->client_rect(window);
    fresh->wth = inside.width();
    fresh->ht = inside.height();
  }
  (last_picture != nullptr ? last_picture->next : gWinInfo) = fresh;
  last_picture = fresh;
  list_changed = true;
  return 1;
}

int FindWinInfo(WindowId window, WinInfo **wi) {
  for (*wi = gWinInfo; *wi != nullptr && window != 0; *wi = (*wi)->next)
    if ((*wi)->win == window)
      return 1;
  *wi = nullptr;
  return 0;
}

int PictureExists(const std::string &fname, int cmpnt, WinInfo **wi) {
  for (*wi = gWinInfo; *wi != nullptr; *wi = (*wi)->next)
    if ((*wi)->cmpnt == cmpnt && (*wi)->name == fname)
      return 1;
  return 0;
}

WinInfo *FindStoredPicture(const std::string &name, int cmpnt) {
  if (list_changed)
    index_stored_pictures();
  const auto known = stored_pictures.find(key_of(name, cmpnt));
  if (known != stored_pictures.end() && is_stored_as(known->second, name, cmpnt))
    return known->second;
  for (WinInfo *wi = gWinInfo; wi != nullptr; wi = wi->next)
    if (is_stored_as(wi, name, cmpnt)) {
      list_changed = true; // it has got its name since
      return wi;
    }
  return nullptr;
}

int ClearWinInfo(WinInfo *wi) {
  wi->name.clear();
  wi->cmpnt = -1;
  wi->seg_ct = 0;
  wi->saved = 1;
  wi->clean = 1;
  wi->txtsze = 12;
  wi->annot.clear();
  wi->seg_ments.clear();
  return 1;
}

int CopyWinInfo(const WinInfo *from, WinInfo *to) {
  SegmArray copies;
  int slots = 0;
  if (CopySegments(from->seg_ments, from->seg_ct + 1, copies, &slots) == 0)
    return 0;
  to->name = from->name;
  to->cmpnt = from->cmpnt;
  to->txtsze = from->txtsze;
  to->wth = from->wth;
  to->ht = from->ht;
  to->annot = from->annot;
  to->seg_ments = std::move(copies);
  to->seg_ct = slots - 1;
  return 1;
}

Rect newest_window_place() {
  return newest_place;
}

WinInfo *NewWindow(int wtype) {
  newest_place = first_place(static_cast<WindowKind>(wtype), windows_made);
  const WindowId window = make_window(static_cast<WindowKind>(wtype), windows_made++);
  WinInfo *wi = nullptr;
  if (window == 0 || NewWinInfo(window, wtype, &wi) == 0)
    return nullptr;
  return wi;
}

namespace {

// Takes a record out of the list and leaves it to the caller.
void unlink_picture(WinInfo *wi) {
  WinInfo *before = nullptr;
  for (WinInfo *at = gWinInfo; at != wi; at = at->next)
    before = at;
  (before != nullptr ? before->next : gWinInfo) = wi->next;
  if (last_picture == wi)
    last_picture = before;
  list_changed = true;
}

} // namespace

void move_picture_behind(WinInfo *wi, WinInfo *in_front, bool to_front) {
  if ((in_front == nullptr && !to_front) || in_front == wi)
    return;
  unlink_picture(wi);
  WinInfo *&place = to_front ? gWinInfo : in_front->next;
  wi->next = place;
  place = wi;
  if (wi->next == nullptr)
    last_picture = wi;
}

void RemovePicture(WinInfo *wi) {
  for (const WinInfo *at = gWinInfo; at != nullptr; at = at->next) {
    if (at != wi)
      continue;
    unlink_picture(wi);
    delete wi;
    return;
  }
}

int RemoveWinInfo(WindowId window) {
  WinInfo *wi = nullptr;
  if (FindWinInfo(window, &wi) == 0)
    return 0;
  RemovePicture(wi);
  return 1;
}

void FreeAllPictures() {
  while (gWinInfo != nullptr) {
    WinInfo *next = gWinInfo->next;
    delete gWinInfo;
    gWinInfo = next;
  }
  last_picture = nullptr;
  list_changed = true;
}

} // namespace velora
