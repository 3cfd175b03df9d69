// The file built-ins: files named by their path, opened at first use and found again by name.
// Called by the dispatcher with the spine; owns the table of open files.
#include "eval/builtins/bi_files.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "core/events.h"
#include "eval/bi_support.h"
#include "eval/builtins/families.h"
#include "platform/response.h"
#include "platform/whole_file.h"

namespace velora {

UserFileInfo gUserFile[kUserFiles];

namespace {

// What one reading of a line or a word takes at most.
constexpr std::size_t kMostRead = 4999;

// The text of the last reading, kept so that its memory is.
std::string gUserWord;

// The name given as first argument; 0 when it is not a string.
int file_name(node **stack, std::string &name) {
  const node *s = force_arg(stack, 1, kString);
  if (s == nullptr)
    return 0;
  name = text_of(s);
  return 1;
}

// The file to read from, opened now if it is not yet; null when it is being written or cannot be
// read.
std::FILE *reading_file(node **stack) {
  std::string name;
  if (!file_name(stack, name))
    return nullptr;
  int slot = find_file(name);
  if (slot < 0)
    slot = open_file(name, 'r');
  if (slot < 0 || gUserFile[slot].mode != 'r')
    return nullptr;
  return gUserFile[slot].fp.get();
}

// True when the last reading met an error, which is no end of the file; tells so.
bool reading_failed(std::FILE *fp, node **stack) {
  if (std::ferror(fp) == 0)
    return false;
  const int error = errno;
  std::clearerr(fp);
  poll_user_events(); // a wait that the user ended is no failure
  const std::string name(text_of(bi_arg(stack, 1)));
  DisplayResponsef("Cannot read file %s\n", name.c_str());
  show_note("note: " + file_error_text(name, error));
  return true;
}

// The slot of the file named by the first argument if it is open for writing, else -1.
int writing_slot(const std::string &name) {
  int slot = find_file(name);
  return slot >= 0 && gUserFile[slot].mode != 'r' ? slot : -1;
}

// Text reaches the file at once, so that the answer is true and nothing is lost with the program.
int put_text(node *target, int slot, std::string_view text) {
  std::FILE *fp = gUserFile[slot].fp.get();
  bool written = std::fwrite(text.data(), 1, text.size(), fp) == text.size();
  if (std::fflush(fp) != 0 || !written) {
    DisplayResponsef("Cannot write to file %s\n", gUserFile[slot].name);
    std::clearerr(fp);
    return set_bool(target, false);
  }
  return set_bool(target, true);
}

// Forcing the value may close the file, so it is looked up again afterwards.
int write_value(node **stack, NodeType type, std::string_view ending) {
  std::string name;
  if (!file_name(stack, name))
    return 0;
  if (writing_slot(name) < 0)
    return set_bool(stack[2], false);
  const node *value = force_arg(stack, 2, type);
  if (value == nullptr)
    return 0;
  int slot = writing_slot(name);
  if (slot < 0)
    return set_bool(stack[2], false);
  std::string text = type == kString ? std::string(text_of(value)) : std::string(1, value->val.c);
  text += ending;
  return put_text(stack[2], slot, text);
}

int open_named(node **stack, char how) {
  std::string name;
  if (!file_name(stack, name))
    return 0;
  close_file(name);
  return set_bool(stack[1], open_file(name, how) >= 0);
}

} // namespace

int find_file(const std::string &name) {
  for (int slot = 0; slot < kUserFiles; ++slot)
    if (gUserFile[slot].fp != nullptr && name == gUserFile[slot].name)
      return slot;
  return -1;
}

int open_file(const std::string &name, char how) {
  if (!file_name_fits(name))
    return -1;
  if (how != 'r' && output_is_safe(name) == 0)
    return -1;
  auto slot = std::find_if(std::begin(gUserFile), std::end(gUserFile),
                           [](const UserFileInfo &file) { return file.fp == nullptr; });
  if (slot == std::end(gUserFile)) {
    DisplayResponse("Too many files open, trying closing one\n");
    return -1;
  }
  char mode = 'r';
  FileHandle fp = how == 'r' ? open_text(name.c_str()) : open_output(name, mode);
  if (fp == nullptr)
    return -1;
  std::memcpy(slot->name, name.c_str(), name.size() + 1);
  slot->fp = std::move(fp);
  slot->mode = mode;
  return static_cast<int>(slot - gUserFile);
}

int close_file(const std::string &name) {
  int slot = find_file(name);
  if (slot < 0)
    return 0;
  gUserFile[slot].fp.reset();
  return 1;
}

int bi_file_open_read(node **stack, int) {
  return open_named(stack, 'r');
}

int bi_file_open_write(node **stack, int) {
  return open_named(stack, 'w');
}

int bi_file_close(node **stack, int) {
  std::string name;
  if (!file_name(stack, name))
    return 0;
  return set_bool(stack[1], close_file(name));
}

int bi_file_read_line(node **stack, int) {
  std::FILE *fp = reading_file(stack);
  if (fp == nullptr)
    return 0;
  read_line(fp, gUserWord, kMostRead);
  return reading_failed(fp, stack) ? 0 : set_string(stack[1], gUserWord);
}

int bi_file_read_word(node **stack, int) {
  std::FILE *fp = reading_file(stack);
  if (fp == nullptr)
    return 0;
  read_word(fp, gUserWord, kMostRead);
  return reading_failed(fp, stack) ? 0 : set_string(stack[1], gUserWord);
}

// The end of the file is no failure: it answers the character that EOF becomes as a char, 255.
int bi_file_read_char(node **stack, int) {
  std::FILE *fp = reading_file(stack);
  if (fp == nullptr)
    return 0;
  const int c = read_char(fp);
  if (reading_failed(fp, stack))
    return 0;
  return set_char(stack[1], c == EOF ? '\xFF' : static_cast<char>(c));
}

int bi_file_write_line(node **stack, int) {
  return write_value(stack, kString, "\n");
}

int bi_file_write_string(node **stack, int) {
  return write_value(stack, kString, "");
}

int bi_file_write_char(node **stack, int) {
  return write_value(stack, kCharacter, "");
}

int bi_file_files(node **stack, int) {
  ListBuilder names;
  for (const UserFileInfo &file : gUserFile)
    if (file.fp != nullptr && file.name[0] != '\0')
      names.add_string(file.name);
  return names.write_over(stack[0]);
}

} // namespace velora
