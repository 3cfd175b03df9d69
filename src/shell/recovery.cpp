// The clock of unsaved work. Whether anything changed is seen by a number made of what every change
// moves: the clauses, the newest symbol, the stored pictures and the changes of the shown ones.
#include "shell/recovery.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "core/symbols.h"
#include "db/f_dbops.h"
#include "db/recovery_file.h"
#include "editor/history.h"
#include "editor/model/wininfo.h"
#include "platform/clock.h"
#include "platform/response.h"
#include "shell/picture_windows.h"

namespace velora {

namespace {

constexpr std::int64_t kPause = 2000;
constexpr std::int64_t kLatest = 10000;

struct Recovery {
  std::uint64_t seen = 0;         // what stood at the last look
  std::int64_t first_change = -1; // of those that are not written; -1 for none
  std::int64_t last_change = 0;
  bool soon = false;
  bool looked = false;
  bool written = false; // the work file holds work of this session
};
Recovery recovery;

bool anything_unsaved() {
  return gSymbolTableChanged != 0 || gSegsChanged != 0 || !changed_pictures().empty();
}

void mix(std::uint64_t &sum, std::uint64_t value) {
  sum = (sum ^ value) * 0x100000001B3ULL;
}

std::uint64_t state_of_work() {
  std::uint64_t sum = 0xCBF29CE484222325ULL;
  mix(sum, gClauseChanges);
  mix(sum, reinterpret_cast<std::uintptr_t>(Symbol_table));
  mix(sum, static_cast<std::uint64_t>(gSymbolTableChanged) * 2 +
               static_cast<std::uint64_t>(gSegsChanged));
  for (WinInfo *wi = gWinInfo; wi != nullptr; wi = wi->next) {
    mix(sum, static_cast<std::uint64_t>(wi->seg_ct) * 4 + static_cast<std::uint64_t>(wi->clean));
    mix(sum, static_cast<std::uint64_t>(wi->cmpnt));
    if (wi->win != 0)
      mix(sum, history_of(wi).changes);
  }
  return sum;
}

} // namespace

void recovery_look() {
  const std::int64_t now = now_ms();
  if (const std::uint64_t state = state_of_work(); state != recovery.seen || !recovery.looked) {
    recovery.seen = state;
    recovery.looked = true;
    recovery.last_change = now;
    if (recovery.first_change < 0)
      recovery.first_change = now;
  }
  if (recovery.first_change < 0)
    return;
  // Saved, discarded, or taken back to what is saved: nobody is to be asked about what was written.
  if (!anything_unsaved()) {
    recovery.first_change = -1;
    recovery.soon = false;
    if (recovery.written)
      remove_work(gDDB_basename);
    recovery.written = false;
    return;
  }
  const bool due = recovery.soon || now - recovery.last_change >= kPause ||
                   now - recovery.first_change >= kLatest;
  if (!due)
    return;
  recovery.first_change = -1;
  recovery.soon = false;
  recovery.written = !write_work().empty();
}

void recovery_at_end() {
  if (anything_unsaved())
    write_work();
}

void recovery_soon() {
  recovery.soon = true;
}

namespace {

// The records that take_work made of shown pictures: no window has them, and they are not stored.
std::vector<WinInfo *> recovered_pictures() {
  std::vector<WinInfo *> shown;
  for (WinInfo *wi = gWinInfo; wi != nullptr; wi = wi->next)
    if (wi->win == 0 && wi->saved == 0)
      shown.push_back(wi);
  for (WinInfo *wi : shown)
    if (wi->name.find_first_not_of(' ') == std::string::npos)
      wi->name.clear(); // a file has no empty names
  return shown;
}

} // namespace

void show_recovered_pictures() {
  for (WinInfo *was : recovered_pictures()) {
    WinInfo *wi = SetupNewWindow(was->wtype);
    if (wi == nullptr)
      return;
    CopyWinInfo(was, wi);
    wi->saved = 0;
    wi->clean = was->clean;
    RemovePicture(was);
    redraw_picture(wi);
  }
}

void store_recovered_pictures() {
  for (WinInfo *was : recovered_pictures()) {
    int number = 0;
    bool is_view = false;
    if (was->name.empty())
      was->name = was->wtype == kNetworkPicture ? kNetworkName : "recovered";
    for (const WinInfo *wi = gWinInfo; wi != nullptr; wi = wi->next) {
      if (wi == was || wi->win != 0 || wi->saved == 0 || wi->name != was->name)
        continue;
      is_view = is_view || (was->clean != 0 && wi->cmpnt == was->cmpnt);
      number = std::max(number, wi->cmpnt + 1);
    }
    if (is_view) {
      RemovePicture(was);
      continue;
    }
    was->cmpnt = number;
    was->saved = 1;
    was->clean = 1;
    gSegsChanged = 1;
    show_note(format_text("note: what was being drawn of %s is its picture %d now, not translated",
                          was->name.c_str(), number));
  }
}

void forget_recovery() {
  recovery = Recovery{};
}

} // namespace velora
