// The table of the files that programs have opened by name. Slots live from a successful open to
// the close, or to the next open, of the same name; the end or failure of a query leaves them.
#pragma once

#include "eval/builtins/text_files.h"

namespace velora {

// One open file. The slot is free while `fp` is null; its old name may remain.
struct UserFileInfo {
  char name[kFileNameSize]; // exactly as the program gave it
  FileHandle fp;
  char mode; // 'r' reading, 'w' writing, 'a' appending
};

inline constexpr int kUserFiles = 15;
extern UserFileInfo gUserFile[kUserFiles];

// The slot of the open file of that name, or -1.
int find_file(const std::string &name);

// Opens `name` for reading (`how` 'r') or, under the safety rule, for writing ('w'); answers its
// slot, or -1 with the message that is due.
int open_file(const std::string &name, char how);

// Closes the open file of that name; 0 when there is none.
int close_file(const std::string &name);

} // namespace velora
