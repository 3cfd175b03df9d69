// The calls of the operating system that touch files, one definition of each for each system
// (file_system_posix.cpp, file_system_win32.cpp). Only file_calls.cpp calls them: everything else
// goes through the functions of file_calls.h, where faults can be made on purpose.
//
// Each answers true, a descriptor or a count, or false or -1 with errno set.
#pragma once

#include <cstddef>
#include <string>

#include "platform/file_calls.h"

namespace velora::system_files {

// The characters that end the folder part of a path.
extern const char *const kSeparators;
// The folder under which programs keep a user's state; empty when there is none.
std::string state_base();

int open_to_read(const char *name);
int make(const char *name);
int open_channel(const char *name);
int open_to_append(const char *name, bool cut);
std::ptrdiff_t read(int fd, char *bytes, std::size_t count);
std::ptrdiff_t write(int fd, const char *bytes, std::size_t count);
bool sync(int fd);
bool close(int fd);
bool take_mode(int fd, const char *name, const char *of);
bool link(const char *from, const char *to);
bool rename(const char *from, const char *to);
bool remove(const char *name);
bool sync_folder(const char *folder);
int lock(const char *name);
EntryKind entry_kind(const char *name, bool follow);
bool is_protected(const char *name);

} // namespace velora::system_files
