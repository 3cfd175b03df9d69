// A desktop program without a desktop: the real shell on a recorder, with the language running.
#pragma once

#include <algorithm>
#include <string>

#include "db/vel_util.h"
#include "editor/model/wininfo.h"
#include "eval/graphics_windows.h"
#include "front/cint.h"
#include "kit/language.h"
#include "shell/console_window.h"
#include "shell/desk_events.h"
#include "shell/vel_wins.h"
#include "shell/x_menus.h"

namespace velora::kit {

class DeskTest : public Language {
protected:
  void SetUp() override {
    Language::SetUp();
    gConsole = &gDesktopConsole;
    gConsolePrompt = 1;
    NewTextWindow(kControlWindow);
    wait_for_query();
    AdjustMenus();
  }

  void TearDown() override {
    while (!gWindows.empty())
      leave_window(gWindows.back().id);
    while (gBgrWinInfo != nullptr)
      RemoveGraphicWinInfo(gBgrWinInfo.get());
    FreeAllPictures();
    gDesktopConsole.clear();
    gNarWind = 0;
    previous = 0;
    gSegsChanged = 0;
    gConsolePrompt = 0;
    gConsole = &console();
    Language::TearDown();
  }

  // What the user does: types or pastes into the console, chooses a command, closes a window.
  void type(const std::string &text) {
    desktop().windows[hControl].typed += text;
    text_changed(hControl);
  }
  void choose(int command) { menu_chosen(command, desktop().bar); }

  const std::string &shown() { return desktop().windows[hControl].text; }
  // What the console showed since the last call.
  std::string news() {
    const std::string text = shown().substr(std::min(seen_, shown().size()));
    seen_ = shown().size();
    return text;
  }
  bool logged(const std::string &part) {
    return desktop().log_text().find(part) != std::string::npos;
  }
  bool item_on(int command) { return desktop().items[command]; }

private:
  std::size_t seen_ = 0;
};

} // namespace velora::kit
