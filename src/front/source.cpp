// The sources of the tokenizer's lines. Owns the line buffer's filling, the nesting of sources and
// the raw text of console statements. Whatever a source object put aside comes back when it goes
// out of scope, so an abandoned command leaves no half-read source behind.
#include "front/source.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "core/events.h"
#include "core/needs.h"
#include "front/parse.h"
#include "platform/response.h"

namespace velora {

int (*pp_refill)(std::string &line, const char *prompt) = nullptr;
namespace {

void record_upto(const char *upto) {
  const char *start = pp_line_buffer.data() + gReading.record.from;
  if (upto > start)
    gReading.record.text.append(start, upto);
}

// Makes `line` (without its end) the current line.
void install_line(const char *text, std::size_t length) {
  if (gReading.record.on && !gReading.record.paused)
    record_upto(pp_line_buffer.data() + pp_line_buffer.size() - 1);
  gReading.record.from = 0;
  pp_line_buffer.resize(length + 2);
  std::copy_n(text, length, pp_line_buffer.data());
  pp_line_buffer[length] = '\n';
  pp_line_buffer[length + 1] = '\0';
  pp_pos = pp_line_buffer.data();
  ++gReading.line_number;
}

// NUL bytes become blanks; one note a source says so.
void blank_nuls(std::string &line) {
  if (line.find('\0') == std::string::npos)
    return;
  std::replace(line.begin(), line.end(), '\0', ' ');
  if (!gReading.nul_noted)
    show_note("note: NUL bytes in " +
              (gReading.source_name.empty() ? "the input" : gReading.source_name) +
              " are read as blanks");
  gReading.nul_noted = true;
}

void trim_line_end(std::string &line) {
  if (!line.empty() && line.back() == '\n')
    line.pop_back();
  if (!line.empty() && line.back() == '\r')
    line.pop_back();
}

int get_file_line() {
  const std::string &text = *pp_file;
  if (gReading.file_pos >= text.size())
    return 0;
  const std::size_t start = gReading.file_pos;
  const std::size_t end = std::min(text.find('\n', start), text.size());
  if (end - start >= kLongestLine)
    error_exit(("Sorry! A line of " + gReading.source_name + " is too long\n").c_str());
  gReading.file_pos = end + 1;
  std::string line = text.substr(start, end - start);
  if (end < text.size() && line.ends_with('\r'))
    line.pop_back();
  if (gReading.line_number == 0 && line.starts_with(kByteOrderMark))
    line.erase(0, kByteOrderMark.size());
  blank_nuls(line);
  install_line(line.data(), line.size());
  return 1;
}

int get_console_line() {
  std::string line;
  if (pp_refill(line, gReading.pending_prompt) == 0)
    return 0;
  trim_line_end(line);
  blank_nuls(line);
  install_line(line.data(), line.size());
  return 1;
}

} // namespace

int pp_get_line() {
  if (pp_file != nullptr)
    return get_file_line();
  if (reading_console())
    return get_console_line();
  return get_velora_line();
}

int get_velora_line() {
  if (pp_velora_pos >= pp_velora_buffer.size())
    return 0;
  const std::size_t end =
      std::min(pp_velora_buffer.find('\n', pp_velora_pos), pp_velora_buffer.size());
  install_line(pp_velora_buffer.data() + pp_velora_pos, end - pp_velora_pos);
  pp_velora_pos = end + 1;
  return 1;
}

bool reading_console() {
  return pp_file == nullptr && pp_refill != nullptr && !gReading.from_buffer;
}

const std::string &pp_source_name() {
  return gReading.source_name;
}

std::string pp_place(long line, std::size_t column) {
  const std::string number = std::to_string(line);
  if (gReading.source_is_window)
    return gReading.source_name + ", line " + number;
  return gReading.source_name + ":" + number + ":" + std::to_string(column);
}

long pp_line_number() {
  return gReading.line_number;
}

bool pp_rest_of_file() {
  return pp_file != nullptr &&
         pp_file->find_first_not_of(" \t\r\n", gReading.file_pos) != std::string::npos;
}

std::size_t pp_line_length() {
  return pp_line_buffer.size() - 2;
}

// Two characters of the buffer may stand covered by the ends of tokens.
std::string pp_line_part(std::size_t from, std::size_t to) {
  to = std::min(to, pp_line_length());
  if (from >= to)
    return {};
  const char *const begin = pp_line_buffer.data();
  std::string text(begin + from, begin + to);
  const auto uncover = [&](const char *p, char c) {
    const auto at = static_cast<std::size_t>(p - begin);
    if (at >= from && at < to)
      text[at - from] = c;
  };
  if (pp_hidden_quote != nullptr)
    uncover(pp_hidden_quote, '"');
  uncover(pp_pos, pp_last_char);
  std::replace(text.begin(), text.end(), '\0', ' ');
  return text;
}

std::string pp_line_text() {
  return pp_line_part(0, pp_line_length());
}

void pp_set_prompt(const char *prompt) {
  gReading.pending_prompt = prompt;
}

void pp_drop_prompt() {
  gReading.pending_prompt = nullptr;
}

void pp_begin_record() {
  gReading.record = StatementRecord{};
  gReading.record.on = true;
  gReading.record.from = static_cast<std::size_t>(pp_start - pp_line_buffer.data());
}

std::string pp_take_record() {
  record_upto(pp_at_end != 0 ? pp_line_buffer.data() + pp_line_buffer.size() - 2 : pp_start);
  std::string text = std::move(gReading.record.text);
  gReading.record = StatementRecord{};
  return text;
}

std::string pp_recorded_statement() {
  if (!gReading.record.on || gReading.record.paused)
    return {};
  // The statement is looked for in pieces of the line, each as long as all before it.
  constexpr std::size_t kPiece = 256;
  std::string text = gReading.record.text;
  std::size_t from = gReading.record.from;
  std::size_t i = text.size();
  bool quoted = false;
  do {
    const std::size_t to = std::min(pp_line_length(), from + std::max(kPiece, text.size()));
    text += pp_line_part(from, to);
    from = std::max(from, to);
    const bool whole = from >= pp_line_length();
    for (; i + (whole ? 0 : 2) < text.size(); ++i) {
      if (text[i] == '"')
        quoted = !quoted;
      else if (!quoted && text[i] == '\'' && i + 2 < text.size() && text[i + 2] == '\'')
        i += 2; // a character literal
      else if (!quoted && text[i] == ';')
        return text.substr(0, i);
    }
  } while (from < pp_line_length());
  return {};
}

void pp_record_pause(const char *upto) {
  if (!gReading.record.on)
    return;
  record_upto(upto);
  gReading.record.text += ' ';
  gReading.record.paused = true;
}

void pp_record_resume(const char *from) {
  gReading.record.paused = false;
  gReading.record.from = static_cast<std::size_t>(from - pp_line_buffer.data());
}

namespace {

// Puts what is being read aside; what is read next begins with an empty line, so that its first
// token is looked for on a new one.
Tokenizer put_aside() {
  return std::exchange(gReading, Tokenizer{});
}

// A file that is read again goes on with its next line.
void go_on_with(Tokenizer &former) {
  gReading = std::move(former);
  if (pp_file != nullptr)
    pp_flush();
}

} // namespace

void Tokenizer::start_over() {
  line_buffer.resize(2);
  line_buffer[0] = '\n';
  line_buffer[1] = '\0';
  pos = line_buffer.data();
  start = str_val = line_buffer.data() + 1;
  last_char = '\n';
  hidden_quote = nullptr;
  token = kTokEnd;
  len = str_len = 0;
  at_end = statement_open = open_string = skipping = 0;
  file = nullptr;
  velora_buffer.clear();
  velora_pos = 0;
  from_buffer = false;
  source_name.clear();
  source_is_window = false;
  line_number = 0;
  nul_noted = false;
  pending_prompt = nullptr;
  record = StatementRecord{};
}

void pp_reset(bool forget_line) {
  if (!reading_console() || forget_line)
    gReading.start_over();
  gReading.record = StatementRecord{};
  gReading.pending_prompt = nullptr;
}

FileSource::FileSource(std::string text, const ShownName &shown)
    : former_(put_aside()), text_(std::move(text)) {
  pp_file = &text_;
  gReading.source_name = shown.name;
  gReading.source_is_window = shown.is_window;
}

FileSource::~FileSource() {
  go_on_with(former_);
}

StatementSource::StatementSource(std::string text) : former_(put_aside()) {
  gReading.from_buffer = true;
  pp_velora_buffer = std::move(text);
}

StatementSource::~StatementSource() {
  go_on_with(former_);
}

TextBeside::TextBeside(std::string text, std::string name) {
  own_.from_buffer = true;
  own_.velora_buffer = std::move(text);
  own_.source_name = std::move(name);
}

TextBeside::Turn::Turn(TextBeside &text)
    : text_(text), former_(std::exchange(gReading, std::move(text.own_))) {}

TextBeside::Turn::~Turn() {
  text_.own_ = std::exchange(gReading, std::move(former_));
}

} // namespace velora
