// Storing and searching of text windows. Holds the text each language window had when it was last
// stored, so that closing loses nothing unasked, and the text last searched for.
#include "shell/text_windows.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <map>
#include <set>

#include "db/needs.h"
#include "editor/builder.h"
#include "editor/user_menus.h"
#include "front/cint.h"
#include "front/putils.h"
#include "platform/desktop.h"
#include "platform/response.h"
#include "platform/safe_file.h"
#include "shell/message_place.h"
#include "shell/picture_windows.h"
#include "shell/vel_wins.h"

namespace velora {

namespace {

constexpr const char *kOrvekTitle = "Orvek [%d of %d]";

std::map<WindowId, std::string> stored_texts;
std::string searched;

// Windows whose text was refused. What stands in such a window when it is closed is asked about,
// also when a step back has emptied it.
std::set<WindowId> refused;

bool is_stored(WindowId win) {
  return !refused.contains(win) && gDesktop->text_of(win) == stored_texts[win];
}

// The title that renumber_windows gives.
std::string title_of_orvek(WindowId win) {
  const std::vector<WindowId> wins = windows_of_kind(kOrvekWindow);
  const auto place = std::find(wins.begin(), wins.end(), win) - wins.begin() + 1;
  return format_text(kOrvekTitle, static_cast<int>(place), static_cast<int>(wins.size()));
}

bool write_text(const std::string &file, const std::string &text) {
  std::string reason;
  return write_whole_file(file, text, reason);
}

// The scratch file that a text is loaded from. It stands in the program's directory; where that
// cannot be written, or a file of that name stands there already, in a new folder among the
// temporary files. It is removed however the loading ends.
class Scratch {
public:
  explicit Scratch(const std::string &text) {
    if (!take(gAppDirectory, text) && make_folder())
      take(folder_ + "/", text);
  }
  ~Scratch() {
    if (!name_.empty())
      std::remove(name_.c_str());
    std::error_code failed;
    if (!folder_.empty())
      std::filesystem::remove(folder_, failed);
  }
  Scratch(const Scratch &) = delete;
  Scratch &operator=(const Scratch &) = delete;
  // Empty when the text could not be written.
  [[nodiscard]] const std::string &name() const { return name_; }

private:
  bool take(const std::string &folder, const std::string &text) {
    const std::string name = folder + "tmp.ddb";
    if (file_exists(name) || !write_text(name, text))
      return false;
    name_ = name;
    return true;
  }
  bool make_folder() {
    const std::string folder = new_temporary_name("");
    std::error_code failed;
    if (!folder.empty() && std::filesystem::create_directory(folder, failed))
      folder_ = folder;
    return !folder_.empty();
  }
  std::string name_;
  std::string folder_;
};

void forget(WindowId win) {
  stored_texts.erase(win);
  refused.erase(win);
  DoCloseWindow(win);
  renumber_windows(kOrvekWindow, kOrvekTitle);
}

// Asks what to do with a text that is not stored; 1 to go on, 0 to stay.
int offer_to_store(WindowId win) {
  gDesktop->focus_window(win);
  switch (PromptUser(format_text("Save Changes to: %s?", "Orvek Code"), {"Save", "Discard"})) {
  case 1:
    return StoreOrvekToDB(win);
  case 2:
    return 1;
  default:
    return 0;
  }
}

char lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

} // namespace

WindowId NewOrvekWindow() {
  const WindowId win = NewTextWindow(kOrvekWindow);
  if (win == 0) {
    orvek_error("NewOrvekWindow: mMALLOC failed");
    return 0;
  }
  stored_texts[win].clear();
  renumber_windows(kOrvekWindow, kOrvekTitle);
  return win;
}

WindowId show_code(const std::string &text) {
  for (const WindowId win : windows_of_kind(kOrvekWindow))
    if (gDesktop->text_of(win) == text) {
      gDesktop->focus_window(win);
      return win;
    }
  const WindowId win = NewOrvekWindow();
  if (win == 0)
    return 0;
  gDesktop->set_text(win, text);
  stored_texts[win] = gDesktop->text_of(win);
  return win;
}

int close_orvek_window(WindowId win) {
  if (!is_stored(win) && offer_to_store(win) == 0)
    return 0;
  forget(win);
  return 1;
}

int CloseOrvekWindows() {
  int closed = 0;
  for (const WindowId win : windows_of_kind(kOrvekWindow)) {
    if (!is_stored(win))
      continue;
    closed += gDesktop->text_of(win).empty() ? 0 : 1;
    forget(win);
  }
  if (closed > 0)
    DisplayResponsef("%d Orvek window%s closed: the text is stored\n", closed,
                     closed == 1 ? "" : "s");
  return windows_of_kind(kOrvekWindow).empty() ? 1 : 0;
}

std::vector<WindowId> unstored_texts() {
  std::vector<WindowId> found = windows_of_kind(kOrvekWindow);
  std::erase_if(found, is_stored);
  return found;
}

int offer_to_store_texts() {
  for (const WindowId win : unstored_texts())
    if (offer_to_store(win) == 0)
      return 0;
  return 1;
}

int StoreOrvekToDB(WindowId win) {
  const std::string text = gDesktop->text_of(win);
  const Scratch scratch(text);
  if (scratch.name().empty()) {
    DisplayResponse("Can't open tmp.ddb for write\n");
    return 0;
  }
  const int errors = gParseErrors;
  FaultWatch faults(win);
  const int loaded = fdb_load(scratch.name().c_str(), title_of_orvek(win).c_str());
  faults.mark();
  CreateUserMenus(); // what was declared before a fault counts as well
  refused.insert(win);
  if (loaded == 0) {
    DisplayResponse("Unable to load orvek code\n");
    return 0;
  }
  if (gParseErrors != errors) {
    BeepMsge("Sorry! Not all of the text could be stored; its window keeps it\n", 0);
    return 0;
  }
  refused.erase(win);
  stored_texts[win] = text;
  return 1;
}

void FreeOrvekWindows() {
  CloseOrvekWindows();
}

int BackupOrvekCode(std::string &name) {
  if (hControl == 0)
    return 1; // a program without windows has no such text
  const auto chosen = gDesktop->choose_file(true, "Extra Database Name?", "*.ddb");
  if (!chosen)
    return 0;
  // Kept: the last four characters go, whatever they are.
  name = chosen->substr(0, chosen->size() - std::min<std::size_t>(4, chosen->size()));
  if (!may_build_over(name, false))
    return 0;
  const std::string text = gOrvWind != 0 ? gDesktop->text_of(gOrvWind) : std::string();
  return save_code(name, text);
}

TextRange find_in_text(std::string_view text, std::string_view wanted, std::size_t from) {
  const auto same = [](char a, char b) { return lower(a) == lower(b); };
  const auto begin = text.begin() + static_cast<std::ptrdiff_t>(std::min(from, text.size()));
  auto at = std::search(begin, text.end(), wanted.begin(), wanted.end(), same);
  if (at == text.end())
    at = std::search(text.begin(), text.end(), wanted.begin(), wanted.end(), same);
  if (at == text.end() || wanted.empty())
    return {};
  const auto start = static_cast<std::size_t>(at - text.begin());
  return {start, start + wanted.size()};
}

int findSearchString(WindowId win, bool again) {
  if (!again || searched.empty()) {
    std::string wanted = searched;
    if (GetUserDialogText("Find what?", wanted) == 0 || wanted.empty())
      return 0;
    searched = wanted;
  }
  const TextRange found =
      find_in_text(gDesktop->text_of(win), searched, gDesktop->selection(win).end);
  if (found.end == found.start) {
    BeepMsgef(0, "Not found: %s\n", searched.c_str());
    return 0;
  }
  gDesktop->select_text(win, found);
  return 1;
}

bool has_searched() {
  return !searched.empty();
}

} // namespace velora
