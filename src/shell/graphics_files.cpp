// Graphics windows as files.
#include "shell/graphics_files.h"

#include <filesystem>
#include <string>

#include "editor/svg_canvas.h"
#include "eval/graphics_model.h"
#include "platform/response.h"
#include "platform/safe_file.h"

namespace velora {

int save_graphics(int window, const char *file) {
  const BgrWinInfo *info = find_graphics(window);
  if (info == nullptr) {
    orvek_errorf("There is no graphics window %d\n", window);
    return 0;
  }
  SvgCanvas canvas;
  draw_graphics(*info, canvas);
  std::string reason;
  if (!may_replace_protected(file))
    return 0;
  if (write_whole_file(file, canvas.document(graphics_extent(*info), graphics_title(*info)),
                       reason))
    return 1;
  orvek_errorf("Can't write %s\n", reason.c_str());
  return 0;
}

int save_all_graphics(const char *dir) {
  namespace fs = std::filesystem;
  std::error_code error;
  fs::create_directories(dir, error);
  int saved = 1;
  for (const BgrWinInfo *info = gBgrWinInfo.get(); info != nullptr; info = info->next.get()) {
    const std::string name = "graphics-" + std::to_string(info->window_id) + ".svg";
    if (save_graphics(info->window_id, (fs::path(dir) / name).string().c_str()) == 0)
      saved = 0;
  }
  return saved;
}

void list_graphics() {
  for (const BgrWinInfo *info = gBgrWinInfo.get(); info != nullptr; info = info->next.get())
    DisplayResponsef("%d: %s, %d primitives%s\n", info->window_id, graphics_title(*info).c_str(),
                     static_cast<int>(info->winPrims.size()), info == gBgrWind ? " (current)" : "");
}

} // namespace velora
