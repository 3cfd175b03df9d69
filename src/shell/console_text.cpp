// Collecting, showing and logging of the console's text. Called by console_window; talks to the
// CONTROL window through the desktop and owns the log file, which goes when the program ends.
#include "shell/console_text.h"

#include <algorithm>
#include <chrono>
#include <filesystem>

#include "shell/vel_wins.h"

namespace velora {

namespace {

constexpr const char *kCutNotice = "[earlier text: File, Save CONTROL Text...]\n";

std::string new_log_name() {
  std::error_code failed;
  const auto folder = std::filesystem::temp_directory_path(failed);
  if (failed)
    return {};
  const auto now = std::chrono::system_clock::now().time_since_epoch().count();
  return (folder / ("velora-" + std::to_string(now) + ".log")).string();
}

bool continues_character(char c) {
  return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

// The place where the last `characters` characters of `text` begin, moved on to a line's start
// when one is near.
std::size_t tail_start(std::string_view text, std::size_t characters) {
  std::size_t at = text.size();
  while (at > 0 && characters > 0)
    if (!continues_character(text[--at]))
      --characters;
  const std::size_t line = text.substr(at, 10'000).find('\n');
  return at == 0 || line == std::string_view::npos ? at : at + line + 1;
}

} // namespace

std::size_t count_characters(std::string_view text) {
  return static_cast<std::size_t>(
      std::count_if(text.begin(), text.end(), [](char c) { return !continues_character(c); }));
}

ConsoleText::~ConsoleText() {
  if (log_ == nullptr)
    return;
  log_.reset();
  std::remove(log_name_.c_str());
}

void ConsoleText::append(std::string_view text) {
  waiting_ += text;
}

void ConsoleText::append_message(std::string_view text, int level) {
  flush();
  to_log(text);
  const std::string shown = for_window(text);
  shown_ += count_characters(shown);
  gDesktop->append_message(hControl, shown, level);
}

void ConsoleText::flush() {
  if (waiting_.empty())
    return;
  std::string text;
  text.swap(waiting_);
  to_log(text);
  std::string_view rest = text;
  if (rest.size() > kMostCharacters && count_characters(rest) > kMostCharacters) {
    rest.remove_prefix(tail_start(rest, kKeptCharacters));
    gDesktop->set_text(hControl, kCutNotice);
    shown_ = count_characters(kCutNotice);
    column_ = 0;
  }
  const std::string shown = for_window(rest);
  shown_ += count_characters(shown);
  gDesktop->append_text(hControl, shown);
  make_room();
}

void ConsoleText::make_room() {
  if (shown_ <= kMostCharacters)
    return;
  shown_ -= std::min(shown_, gDesktop->drop_front(hControl, kKeptCharacters));
}

void ConsoleText::clear() {
  flush();
  gDesktop->set_text(hControl, "");
  shown_ = 0;
  column_ = 0;
}

// Breaks lines that are longer than a text control bears.
std::string ConsoleText::for_window(std::string_view text) {
  const std::size_t limit = text.size() > kBulk ? kLongestBulkLine : kLongestShownLine;
  std::string shown;
  shown.reserve(text.size() + text.size() / limit + 1);
  for (const char c : text) {
    const bool too_long = column_ >= limit + limit / 4 && !continues_character(c);
    if (too_long && c != '\n') {
      shown += '\n';
      column_ = 0;
    }
    shown += c;
    ++column_;
    if (c == ' ' && column_ >= limit)
      shown += '\n';
    if (shown.back() == '\n')
      column_ = 0;
  }
  return shown;
}

// The log file is made when there is something to keep.
void ConsoleText::to_log(std::string_view text) {
  if (log_name_.empty()) {
    log_name_ = new_log_name();
    log_.reset(std::fopen(log_name_.c_str(), "w+b"));
  }
  if (log_ != nullptr && std::fwrite(text.data(), 1, text.size(), log_.get()) != text.size())
    log_.reset(); // the disk is full: the window still has the newest part
}

int ConsoleText::save_log(const std::string &file) {
  flush();
  if (log_ == nullptr || std::fflush(log_.get()) != 0)
    return 0;
  std::unique_ptr<std::FILE, CloseFile> out(std::fopen(file.c_str(), "wb"));
  if (out == nullptr)
    return 0;
  std::rewind(log_.get());
  std::string piece(1 << 16, '\0');
  bool good = true;
  for (std::size_t n; (n = std::fread(piece.data(), 1, piece.size(), log_.get())) > 0;)
    good = std::fwrite(piece.data(), 1, n, out.get()) == n && good;
  std::fseek(log_.get(), 0, SEEK_END);
  return std::fclose(out.release()) == 0 && good ? 1 : 0;
}

} // namespace velora
