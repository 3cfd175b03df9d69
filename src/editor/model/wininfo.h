// The list of picture records: making, finding, emptying, copying and freeing them. Called by the
// segment file, the components, the network and the windows of the shell.
#pragma once

#include <string>

#include "editor/model/records.h"

namespace velora {

// The first picture record; stored components and shown pictures in order of creation.
extern WinInfo *gWinInfo;
// Set to 1 when a stored picture changes; cleared by a save.
extern int gSegsChanged;

// Appends a fresh record of a kind for a window (0 for a stored picture). Answers 1 and sets `wi`.
int NewWinInfo(WindowId window, int type, WinInfo **wi);
// The record of a window; 1 and `wi` set, or 0.
int FindWinInfo(WindowId window, WinInfo **wi);
// The first record of that name and component number; 1 and `wi` set, or 0.
int PictureExists(const std::string &fname, int cmpnt, WinInfo **wi);
// The first stored component (no window's) of that name and number, or null. A script that asks for
// one after another takes linear time.
WinInfo *FindStoredPicture(const std::string &name, int cmpnt);
// Frees the segments and makes the record fresh again; its kind and window stay.
int ClearWinInfo(WinInfo *wi);
// Copies name, component, text size, window size, annotation and segments. Answers 1.
int CopyWinInfo(const WinInfo *from, WinInfo *to);
// Moves a record of the list to stand directly behind another one, or with `to_front` before all;
// with neither it stays.
void move_picture_behind(WinInfo *wi, WinInfo *in_front, bool to_front);
// Unlinks a record and frees it with its segments.
void RemovePicture(WinInfo *wi);
// Removes the record of a window; 1 when there was one.
int RemoveWinInfo(WindowId window);
// Opens a picture window of a kind, cascaded, and appends its fresh record; the record, or null
// when no window could be made.
WinInfo *NewWindow(int wtype);
// Where the last of them was placed.
Rect newest_window_place();

// Removes every record.
void FreeAllPictures();

} // namespace velora
