// The commands of the File and Query menus. They pair the database operations with the windows that
// show what is in memory.
#include <filesystem>
#include <string_view>

#include "core/space.h"
#include "core/symbols.h"
#include "db/vel_dbop.h"
#include "editor/builder.h"
#include "editor/compound.h"
#include "editor/draw.h"
#include "editor/model/wininfo.h"
#include "editor/user_menus.h"
#include "eval/graphics_model.h"
#include "platform/desktop.h"
#include "platform/response.h"
#include "shell/commands.h"
#include "shell/console_lines.h"
#include "shell/console_window.h"
#include "shell/gate.h"
#include "shell/graphics_files.h"
#include "shell/picture_windows.h"
#include "shell/recovery.h"
#include "shell/vel_wins.h"

namespace velora {

namespace {

constexpr const char *kNewName = "Untitled1";

// The file name with an ending when it has none.
std::string with_ending(const std::string &file, const char *ending) {
  return std::filesystem::path(file).has_extension() ? file : file + ending;
}

// What a picture or graphics window shows, as an SVG file.
int save_drawing(WindowId win, const char *file) {
  if (const WinInfo *wi = picture_of(win))
    return save_svg(wi, file);
  const BgrWinInfo *info = FindGraphicWinInfo(win);
  return info == nullptr ? 0 : save_graphics(info->window_id, file);
}

} // namespace

int NewDataBaseCommand() {
  OpenNewDataBase(kNewName);
  CreateUserMenus();
  return 1;
}

int OpenCommand() {
  OpenDataBaseFile();
  show_recovered_pictures();
  CreateUserMenus();
  return 1;
}

int CloseDataBaseCommand() {
  if (offer_to_save_pictures() == 0 || SaveDBChanges(kNewName) == 0)
    return 0;
  close_all_pictures();
  ResetVelora();
  gSymbolTableChanged = 0; // nothing is left that could be saved
  gSegsChanged = 0;
  CreateUserMenus();
  return 1;
}

int SaveDataBaseCommand() {
  if (offer_to_commit_pictures() == 0)
    return 0;
  return SaveDataBase(kNewName), 1;
}

int ImportCommand() {
  IncludeDataBase();
  CreateUserMenus();
  return 1;
}

int BuildSegmentsCommand() {
  const CompoundStep step(nullptr, "Build Segments");
  ddb_to_segs();
  return 1;
}

int SaveCopyCommand() {
  BackupDataBase();
  return 1;
}

int SaveWinAsPICT() {
  return SaveWindowAs(".bmp");
}

int SaveWindowAs(const char *ending) {
  const WindowId win = previous;
  if (win == 0)
    return 0;
  const auto chosen = gDesktop->choose_file(true, "Save Window", std::string("*") + ending);
  if (!chosen)
    return 0;
  const std::string file = with_ending(*chosen, ending);
  if (std::string_view(ending) == ".svg") {
    if (save_drawing(win, file.c_str()) == 0)
      return 0;
  } else if (!gDesktop->save_bitmap(win, file)) {
    orvek_errorf("Can't write to %s\n", file.c_str());
    return 0;
  }
  DisplayResponsef("Window saved in file %s\n", file.c_str());
  return 1;
}

int SaveControlTextCommand() {
  const auto chosen = gDesktop->choose_file(true, "Save CONTROL Text", "*.txt");
  if (!chosen)
    return 0;
  const std::string file = with_ending(*chosen, ".txt");
  if (gDesktopConsole.text().save_log(file) == 0) {
    orvek_errorf("Can't write to %s\n", file.c_str());
    return 0;
  }
  DisplayResponsef("CONTROL text saved in file %s\n", file.c_str());
  return 1;
}

int QuitCommand() {
  close_afterwards(0);
  return 0;
}

int QueryCommand() {
  leave_section();
  return AskForQuery();
}

int IncreaseSpaceCommand() {
  return resize_free_list(2), 1;
}

int DecreaseSpaceCommand() {
  return resize_free_list(1), 1;
}

int ResetSpaceCommand() {
  return resize_free_list(0), 1;
}

} // namespace velora
