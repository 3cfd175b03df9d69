// Showing stored pictures in windows. A record with a window is a copy of a stored one; what the
// user sees is drawn from the copy.
#include "shell/picture_windows.h"

#include <algorithm>
#include <climits>
#include <cstdlib>

#include "db/needs.h"
#include "editor/draw.h"
#include "editor/model/needs.h"
#include "editor/model/vel_segs.h"
#include "editor/model/wininfo.h"
#include "editor/user_menus.h"
#include "eval/needs.h"
#include "platform/response.h"
#include "shell/annotation.h"
#include "shell/vel_wins.h"

namespace velora {

namespace {

constexpr int kLeastText = 8;
constexpr int kMostText = 22;
// What is left free around a picture that a window scrolls over.
constexpr int kMargin = 20;
// Greater than the number of any component.
constexpr long kMostComponents = INT_MAX;

bool is_stored(const WinInfo *wi, const std::string &name) {
  return wi->win == 0 && wi->name == name;
}

// The stored record to load next, or null.
WinInfo *next_stored(const std::string &name, int cmpnt) {
  WinInfo *first = nullptr;
  for (WinInfo *wi = gWinInfo; wi != nullptr; wi = wi->next) {
    if (!is_stored(wi, name))
      continue;
    if (wi->cmpnt > cmpnt)
      return wi;
    if (first == nullptr)
      first = wi;
  }
  return first;
}

// How many stored pictures of that name have a number up to `highest`.
int count_components(const std::string &name, int highest) {
  int count = 0;
  for (const WinInfo *wi = gWinInfo; wi != nullptr; wi = wi->next)
    count += is_stored(wi, name) && wi->cmpnt <= highest ? 1 : 0;
  return count;
}

std::string picture_title(const WinInfo *wi) {
  if (wi->name.empty())
    return look_of(static_cast<WindowKind>(wi->wtype)).title;
  if (wi->cmpnt < 0)
    return wi->name;
  return format_text("%s [%d of %d]", wi->name.c_str(), count_components(wi->name, wi->cmpnt),
                     count_components(wi->name, INT_MAX));
}

std::vector<WindowId> picture_windows() {
  std::vector<WindowId> found;
  for (const ShellWindow &w : gWindows)
    if (PictureTypeWindow(w.id) != 0)
      found.push_back(w.id);
  return found;
}

void show_extent(const WinInfo *wi) {
  int width = 0;
  int height = 0;
  for (int i = 1; i < wi->seg_ments.slots(); ++i) {
    const Segm *seg = wi->seg_ments[i];
    if (seg == nullptr)
      continue;
    width = std::max({width, seg->lx, seg->ux});
    height = std::max({height, seg->ly, seg->uy});
  }
  gDesktop->set_extent(wi->win, width == 0 ? 0 : width + kMargin,
                       height == 0 ? 0 : height + kMargin);
}

void load_into(const WinInfo *stored, WinInfo *wi) {
  ClearWinInfo(wi);
  CopyWinInfo(stored, wi);
  wi->saved = 0;
  wi->clean = 1;
}

void change_text_size(WinInfo *wi, int size) {
  wi->txtsze = size;
  mark_changed(wi);
  redraw_picture(wi);
}

// Stores what can change in a shown picture: the copy goes back over the stored record.
int store_shown(WinInfo *wi) {
  for (WinInfo *stored = gWinInfo; stored != nullptr; stored = stored->next) {
    if (!is_stored(stored, wi->name) || stored->cmpnt != wi->cmpnt)
      continue;
    DisplayResponsef("replacing component %d of %s\n", wi->cmpnt, wi->name.c_str());
    CopyWinInfo(wi, stored);
    stored->saved = 1;
    wi->clean = 1;
    gSegsChanged = 1;
    return 1;
  }
  BeepMsge("Warning : no action determined\n", 0);
  return 0;
}

// Asks what to do with a picture; 1 to go on, 0 to stay.
int offer_to_save(WinInfo *wi) {
  const char *format =
      shows_annotation_of(wi) ? "Save (Annotation?) Changes to: %s?" : "Save Changes to: %s?";
  const char *name = wi->name.empty() ? "unnamed" : wi->name.c_str();
  const int choice = PromptUser(format_text(format, name), {"Save", "Discard", "Cancel"});
  return choice == kCancelled || (choice == 1 && store_shown(wi) == 0) ? 0 : 1;
}

// Asks whether another picture may take the place of changes; 1 when it may.
int may_overwrite(WinInfo *wi) {
  if (wi->clean != 0)
    return 1;
  const int choice =
      PromptUser("Unsaved changes in window", {"Commit first", "Overwrite contents"});
  return choice == kCancelled || (choice == 1 && store_shown(wi) == 0) ? 0 : 1;
}

// The first stored picture of that name, or the first data type that holds a box so labelled.
WinInfo *find_picture(const std::string &name) {
  if (WinInfo *named = next_stored(name, -1))
    return named;
  for (WinInfo *wi = gWinInfo; wi != nullptr; wi = wi->next) {
    if (wi->win != 0 || wi->wtype != kConstructorsPicture)
      continue;
    for (int i = 1; i < wi->seg_ments.slots(); ++i) {
      const Segm *seg = wi->seg_ments[i];
      if (seg != nullptr && (seg->type == kHexagon || seg->type == kBox) && seg->label == name)
        return wi;
    }
  }
  return nullptr;
}

} // namespace

WinInfo *picture_of(WindowId win) {
  WinInfo *wi = nullptr;
  return FindWinInfo(win, &wi) != 0 ? wi : nullptr;
}

bool picture_has_selection(WindowId win) {
  const WinInfo *wi = picture_of(win);
  for (int i = 1; wi != nullptr && i < wi->seg_ments.slots(); ++i)
    if (wi->seg_ments[i] != nullptr && (wi->seg_ments[i]->status & kSelected) != 0)
      return true;
  return false;
}

bool shows_network(WindowId win) {
  const WinInfo *wi = picture_of(win);
  return wi != nullptr && wi->wtype == kNetworkPicture && wi->seg_ments.slots() > 1;
}

void register_picture_windows() {
  for (const WinInfo *wi = gWinInfo; wi != nullptr; wi = wi->next)
    if (wi->win != 0)
      enter_window(wi->win, static_cast<WindowKind>(wi->wtype));
}

namespace {

WinInfo *new_picture_window(int wtype) {
  WinInfo *wi = NewWindow(wtype);
  register_picture_windows();
  return wi;
}

} // namespace

WinInfo *SetupNewWindow(int wtype) {
  WinInfo *wi = new_picture_window(wtype);
  if (wi != nullptr)
    gDesktop->focus_window(wi->win);
  return wi;
}

int GetNextComponent(WinInfo *wi, const std::string &name, int cmpnt) {
  AddAnnotation();
  if (may_overwrite(wi) == 0)
    return 0;
  const std::string wanted = name.empty() ? wi->name : name;
  if (wanted.empty())
    return 0;
  const WinInfo *stored = next_stored(wanted, name.empty() ? wi->cmpnt : cmpnt);
  if (stored == nullptr) {
    BeepMsgef(0, "Sorry! There is no picture of %s\n", wanted.c_str());
    return 0;
  }
  load_into(stored, wi);
  redraw_picture(wi);
  ShowAnnotation(wi->win);
  return 1;
}

int GetNumComponent(WinInfo *wi, const std::string &name) {
  std::string answer;
  const int given = GetUserDialogText("Component Number?", answer);
  const long number = given != 0 ? std::strtol(answer.c_str(), nullptr, 10) : 0;
  return GetNextComponent(wi, name, static_cast<int>(std::clamp(number, 0L, kMostComponents)) - 1);
}

int bigger_text_size(int size) {
  constexpr int kSteps[][2] = {{6, 8}, {8, 10}, {10, 12}, {12, 16}, {16, 22}};
  for (const auto &[from, to] : kSteps)
    if (size == from)
      return to;
  return std::clamp(size * 4 / 3, kLeastText, kMostText);
}

int smaller_text_size(int size) {
  constexpr int kSteps[][2] = {{10, 8}, {12, 10}, {16, 12}, {22, 16}};
  for (const auto &[from, to] : kSteps)
    if (size == from)
      return to;
  return std::clamp(size * 3 / 4, kLeastText, kMostText);
}

void BiggerText(WinInfo *wi) {
  change_text_size(wi, bigger_text_size(wi->txtsze));
}

void SmallerText(WinInfo *wi) {
  change_text_size(wi, smaller_text_size(wi->txtsze));
}

void mark_changed(WinInfo *wi) {
  wi->saved = 0;
  wi->clean = 0;
}

void draw_picture_window(WindowId win, Canvas &canvas) {
  WinInfo *wi = picture_of(win);
  if (wi == nullptr)
    return;
  DrawVeloraWindow(wi, canvas);
  show_extent(wi); // boxes may have grown to hold their labels
}

void redraw_picture(WinInfo *wi) {
  gDesktop->set_title(wi->win, picture_title(wi));
  show_extent(wi);
  gDesktop->invalidate(wi->win);
}

int close_picture_window(WindowId win) {
  AddAnnotation();
  WinInfo *wi = picture_of(win);
  if (wi != nullptr && wi->saved == 0 && offer_to_save(wi) == 0)
    return 0;
  RemoveWinInfo(win);
  DoCloseWindow(win);
  return 1;
}

std::vector<WindowId> changed_pictures() {
  std::vector<WindowId> found = picture_windows();
  std::erase_if(found, [](WindowId win) {
    const WinInfo *wi = picture_of(win);
    return wi == nullptr || wi->clean != 0;
  });
  return found;
}

int offer_to_save_pictures() {
  AddAnnotation();
  for (const WindowId win : changed_pictures()) {
    gDesktop->focus_window(win);
    if (offer_to_save(picture_of(win)) == 0)
      return 0;
  }
  return 1;
}

void close_all_pictures() {
  for (const WindowId win : picture_windows()) {
    RemoveWinInfo(win);
    DoCloseWindow(win);
  }
}

void CreateUserMenus() {
  for (const int kind : {1, 2, 3})
    ReSetUpUserMenus(kind);
}

int choose_user_item(int command, MenuBar bar) {
  const std::string name = gDesktop->menu_label(bar, command);
  WinInfo *wi = picture_of(previous);
  const UserMenu *menu = user_menu_of(bar);
  if (name.empty() || wi == nullptr || menu == nullptr || !menu->serves)
    return 0;
  return menu->types ? ShowGraphic(name.c_str(), 1, wi) : GetNextComponent(wi, name, -1);
}

int ShowGraphic(const char *name, int type, WinInfo *wi) {
  if (hControl == 0)
    return 0; // a program without windows
  const WinInfo *stored = find_picture(name);
  if (stored == nullptr) {
    BeepMsgef(0, "Sorry! There is no picture of %s\n", name);
    return 0;
  }
  if (wi == nullptr)
    wi = new_picture_window(stored->wtype); // the focus stays with what asked for it
  if (wi == nullptr)
    return 0;
  return GetNextComponent(wi, stored->name, type == 0 ? -1 : stored->cmpnt - 1);
}

int show_picture(const char *name) {
  return ShowGraphic(name, 0, nullptr);
}

} // namespace velora
