// Showing stored pictures in windows. A record with a window is a copy of a stored one; what the
// user sees is drawn from the copy.
#include "shell/picture_windows.h"

#include <algorithm>
#include <climits>
#include <cstdlib>

#include "db/needs.h"
#include "editor/compound.h"
#include "editor/draw.h"
#include "editor/edit.h"
#include "editor/hand/hand.h"
#include "editor/model/vel_segs.h"
#include "editor/model/wininfo.h"
#include "editor/needs.h"
#include "editor/user_menus.h"
#include "editor/vel_cmp.h"
#include "eval/needs.h"
#include "network/net_store.h"
#include "network/net_util.h"
#include "platform/desktop.h"
#include "platform/response.h"
#include "shell/annotation.h"
#include "shell/fresh_hint.h"
#include "shell/save_actions.h"
#include "shell/vel_wins.h"

namespace velora {

namespace {

constexpr int kLeastText = 8;
constexpr int kMostText = 22;
// What is left free around a picture that a window scrolls over.
constexpr int kMargin = 8;
// Greater than the number of any component.
constexpr long kMostComponents = INT_MAX;

// The stored record to load next, or null.
WinInfo *next_stored(const std::string &name, int cmpnt) {
  const std::vector<WinInfo *> all = stored_components(name);
  const auto next = std::find_if(all.begin(), all.end(),
                                 [cmpnt](const WinInfo *wi) { return wi->cmpnt > cmpnt; });
  return next != all.end() ? *next : all.empty() ? nullptr : all.front();
}

// The mark of a picture with something to save.
constexpr const char *kUnsavedMark = " *";

std::vector<WindowId> picture_windows() {
  std::vector<WindowId> found;
  for (const ShellWindow &w : gWindows)
    if (PictureTypeWindow(w.id) != 0)
      found.push_back(w.id);
  return found;
}

// The origin belongs to it, however far from there the picture lies.
void show_extent(const WinInfo *wi) {
  const Rect drawn = layout_extent(lay_out_picture(wi));
  const Rect all{std::min(0, drawn.left), std::min(0, drawn.top), std::max(0, drawn.right),
                 std::max(0, drawn.bottom)};
  const auto with_margin = [](int side, int margin) { return side == 0 ? 0 : side + margin; };
  gDesktop->set_extent(wi->win,
                       {with_margin(all.left, -kMargin), with_margin(all.top, -kMargin),
                        with_margin(all.right, kMargin), with_margin(all.bottom, kMargin)});
}

void load_into(const WinInfo *stored, WinInfo *wi) {
  ClearWinInfo(wi);
  CopyWinInfo(stored, wi);
  wi->saved = 0;
  wi->clean = 1;
}

// Asks what to do with a picture; 1 to go on, 0 to stay. A window that is to close stays after the
// actions that ask for a name, so that the picture is seen under its new one.
int offer_to_save(WinInfo *wi, bool closing) {
  const char *format =
      shows_annotation_of(wi) ? "Save (Annotation?) Changes to: %s?" : "Save Changes to: %s?";
  const char *name = wi->name.empty() ? "unnamed" : wi->name.c_str();
  const int choice = PromptUser(format_text(format, name), {"Save", "Discard", "Cancel"});
  if (choice != 1)
    return choice != kCancelled;
  const int saved = SaveWindowAction(wi);
  return closing ? saved : save_action_stored();
}

bool commit_first(WinInfo *wi) {
  SaveWindowAction(wi);
  return save_action_stored();
}

// Asks whether another picture may take the place of changes; 1 when it may.
int may_overwrite(WinInfo *wi) {
  if (wi->clean != 0)
    return 1;
  const int choice =
      PromptUser("Unsaved changes in window", {"Commit first", "Overwrite contents"});
  return choice != kCancelled && (choice != 1 || commit_first(wi)) ? 1 : 0;
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

std::string picture_title(const WinInfo *wi) {
  const char *mark = wi->clean == 0 ? kUnsavedMark : "";
  if (wi->name.empty())
    return std::string(look_of(static_cast<WindowKind>(wi->wtype)).title) + mark;
  if (wi->cmpnt < 0)
    return wi->name + mark;
  const std::vector<WinInfo *> all = stored_components(wi->name);
  const auto place = std::count_if(
      all.begin(), all.end(), [wi](const WinInfo *stored) { return stored->cmpnt <= wi->cmpnt; });
  return format_text("%s [%d of %d]%s", wi->name.c_str(), static_cast<int>(place),
                     static_cast<int>(all.size()), mark);
}

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
  if (wi == nullptr || wi->wtype != kNetworkPicture)
    return false;
  for (int slot = 1; slot <= wi->seg_ct; ++slot)
    if (const Segm *seg = wi->seg_ments[slot]; seg != nullptr && is_node(seg))
      return true;
  return false;
}

bool shows_network_window(WindowId win) {
  const WinInfo *wi = picture_of(win);
  return wi != nullptr && wi->wtype == kNetworkPicture;
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

int ShowFdec(const std::string &name, WinInfo *wi) {
  WinInfo drawn;
  drawn.wth = picture_area(wi).width();
  drawn.ht = picture_area(wi).height();
  if (wi->wtype != kFunctionPicture || draw_declaration(name, &drawn) == 0) {
    BeepMsgef(0, "Sorry! There is no picture of %s\n", name.c_str());
    return 0;
  }
  forget_hand(wi);
  edit_picture(wi, "Get " + name, [&] { load_into(&drawn, wi); },
               {.own_flags = true, .settle = false});
  ShowAnnotation(wi->win);
  return 1;
}

int GetNextComponent(WinInfo *wi, const std::string &name, int cmpnt) {
  AddAnnotation();
  if (may_overwrite(wi) == 0)
    return 0;
  const std::string wanted = name.empty() ? wi->name : name;
  if (wanted.empty())
    return 0;
  const WinInfo *stored = next_stored(wanted, name.empty() ? wi->cmpnt : cmpnt);
  if (stored == nullptr && wi->wtype == kNetworkPicture) {
    StoreNetwork();
    stored = next_stored(kNetworkName, -1);
  }
  if (stored == nullptr)
    return ShowFdec(wanted, wi);
  forget_hand(wi);
  edit_picture(wi, "Get " + wanted, [&] { load_into(stored, wi); },
               {.own_flags = true, .settle = false});
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

void mark_changed(WinInfo *wi) {
  wi->saved = 0;
  wi->clean = 0;
}

void draw_picture_window(WindowId win, Canvas &canvas) {
  const WinInfo *wi = picture_of(win);
  if (wi == nullptr)
    return;
  draw_fresh_hint(wi, canvas);
  const PictureLayout layout = lay_out_picture(wi);
  draw_layout(wi, layout, canvas);
  draw_hand(wi, layout, canvas);
}

void picture_changed(WinInfo *wi) {
  if (wi->win != 0)
    redraw_picture(wi);
}

void stored_pictures_changed() {
  for (const WindowId win : picture_windows())
    if (const WinInfo *wi = picture_of(win); wi != nullptr)
      gDesktop->set_title(win, picture_title(wi));
  show_annotation_title();
}

void redraw_picture(WinInfo *wi) {
  gDesktop->set_title(wi->win, picture_title(wi));
  if (shows_annotation_of(wi))
    show_annotation_title();
  show_extent(wi);
  gDesktop->invalidate(wi->win);
}

int close_picture_window(WindowId win) {
  AddAnnotation();
  WinInfo *wi = picture_of(win);
  if (wi != nullptr && wi->saved == 0 && wi->clean == 0 && offer_to_save(wi, true) == 0)
    return 0;
  forget_hand(wi);
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
    if (offer_to_save(picture_of(win), false) == 0)
      return 0;
  }
  return 1;
}

int offer_to_commit_pictures() {
  AddAnnotation();
  const std::vector<WindowId> changed = changed_pictures();
  if (changed.empty())
    return 1;
  constexpr int kGoThrough = 1;
  const int choice = PromptUser(format_text("%zu pictures are not committed", changed.size()),
                                {"Go Through Them", "Save Without"});
  if (choice != kGoThrough)
    return choice != kCancelled;
  for (const WindowId win : changed) {
    gDesktop->focus_window(win);
    if (WinInfo *wi = picture_of(win); wi != nullptr && !commit_first(wi))
      return 0;
  }
  return 1;
}

void close_all_pictures() {
  for (const WindowId win : picture_windows()) {
    forget_hand(picture_of(win));
    RemoveWinInfo(win);
    DoCloseWindow(win);
  }
  // The steps of their windows were about a database that goes now.
  forget_orphans();
}

int FindAndDisplayStructure(const std::string &name, WinInfo *wi) {
  return ShowGraphic(name.c_str(), 1, wi);
}

int choose_user_item(int command, MenuBar bar) {
  const std::string name = gDesktop->menu_label(bar, command);
  WinInfo *wi = picture_of(previous);
  const UserMenu *menu = user_menu_of(bar);
  if (name.empty() || wi == nullptr || menu == nullptr || !menu->serves)
    return 0;
  if (wi->wtype == kNetworkPicture)
    return edit_picture(wi, "Add " + name, [&] { Add_Net_Node(wi, name); }) ? 1 : 0;
  return menu->types ? FindAndDisplayStructure(name, wi) : GetNextComponent(wi, name, -1);
}

namespace {

// Makes a window that stands at `place` as large as its picture needs, within the frame.
void grow_to_picture(const WinInfo *wi, const Rect &place) {
  const Rect drawn = layout_extent(lay_out_picture(wi));
  const Rect inside = gDesktop->client_rect(wi->win);
  const Rect area = gDesktop->work_area();
  const int wider = drawn.right - std::min(0, drawn.left) + kMargin - inside.width();
  const int higher = drawn.bottom - std::min(0, drawn.top) + kMargin - inside.height();
  // What finds no room to the right or below finds it on the other side, as far as the frame goes.
  const auto grow = [](int &low, int &high, int by, int room) {
    if (by <= 0)
      return;
    const int size = std::max(high - low, std::min(high - low + by, room));
    low = std::max(0, std::min(low, room - size));
    high = low + size;
  };
  Rect grown = place;
  grow(grown.left, grown.right, wider, area.width());
  grow(grown.top, grown.bottom, higher, area.height());
  if (!(grown == place))
    gDesktop->place_window(wi->win, grown);
}

// Shows the starting picture of a declared function, in a new window when none is given: which is
// opened only when there is something to show in it.
int show_declaration(const std::string &name, WinInfo *wi) {
  WinInfo probe;
  if (wi != nullptr && wi->wtype == kFunctionPicture)
    return may_overwrite(wi) != 0 ? ShowFdec(name, wi) : 0;
  if (draw_declaration(name, &probe) == 0) {
    BeepMsgef(0, "Sorry! There is no picture of %s\n", name.c_str());
    return 0;
  }
  WinInfo *fresh = new_picture_window(kFunctionPicture);
  return fresh != nullptr ? ShowFdec(name, fresh) : 0;
}

} // namespace

int ShowGraphic(const char *name, int type, WinInfo *wi) {
  if (hControl == 0)
    return 0; // a program without windows
  const WinInfo *stored = find_picture(name);
  if (stored == nullptr) {
    gConsole->beep();
    return show_declaration(name, wi);
  }
  const bool fresh = wi == nullptr;
  if (fresh)
    wi = new_picture_window(stored->wtype); // the focus stays with what asked for it
  if (wi == nullptr)
    return 0;
  const int loaded = GetNextComponent(wi, stored->name, type == 0 ? -1 : stored->cmpnt - 1);
  if (fresh && loaded != 0)
    grow_to_picture(wi, newest_window_place());
  return loaded;
}

bool has_picture(const std::string &name) {
  return find_picture(name) != nullptr;
}

int show_picture(const char *name) {
  return ShowGraphic(name, 0, nullptr);
}

} // namespace velora
