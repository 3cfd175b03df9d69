// What the commands of the text's Edit menu do in a picture. Called by those commands.
#pragma once

#include "editor/model/records.h"

namespace velora {

// Each answers 1 when the menus are to be adjusted, else 0.
int undo_picture(WinInfo *wi);
int redo_picture(WinInfo *wi);
int cut_in_picture(WinInfo *wi);
int copy_in_picture(WinInfo *wi);
int paste_in_picture(WinInfo *wi);
int clear_selection_in_picture(WinInfo *wi);

} // namespace velora
