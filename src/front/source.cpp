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
std::string pp_velora_buffer;
std::size_t pp_velora_pos = 0;

namespace {

std::string source_name;
long line_number = 0;
bool nul_noted = false;
int statement_depth = 0;
const char *pending_prompt = nullptr;

// The recording of a console statement. `from` counts characters of the current line.
struct Recording {
  bool on = false;
  bool paused = false;
  std::string text;
  std::size_t from = 0;
};
Recording recording;

void record_upto(const char *upto) {
  const char *start = pp_line_buffer.data() + recording.from;
  if (upto > start)
    recording.text.append(start, upto);
}

// Makes `line` (without its end) the current line.
void install_line(const char *text, std::size_t length) {
  if (recording.on && !recording.paused)
    record_upto(pp_line_buffer.data() + pp_line_buffer.size() - 1);
  recording.from = 0;
  pp_line_buffer.resize(length + 2);
  std::copy_n(text, length, pp_line_buffer.data());
  pp_line_buffer[length] = '\n';
  pp_line_buffer[length + 1] = '\0';
  pp_pos = pp_line_buffer.data();
  ++line_number;
}

// NUL bytes become blanks; one note a source says so.
void blank_nuls(std::string &line) {
  if (line.find('\0') == std::string::npos)
    return;
  std::replace(line.begin(), line.end(), '\0', ' ');
  if (!nul_noted)
    show_note("note: NUL bytes in " + (source_name.empty() ? "the input" : source_name) +
              " are read as blanks");
  nul_noted = true;
}

void trim_line_end(std::string &line) {
  if (!line.empty() && line.back() == '\n')
    line.pop_back();
  if (!line.empty() && line.back() == '\r')
    line.pop_back();
}

// Some editors put this before the first letter of a file in UTF-8.
constexpr const char *kByteOrderMark = "\xEF\xBB\xBF";

// Reading a line may be interrupted only when it is very long: a declaration may be half made.
constexpr std::size_t kLongLine = std::size_t{1} << 20;

void grow_line(std::string &line, int c) {
  line.push_back(static_cast<char>(c));
  if (line.size() % kLongLine != 0)
    return;
  poll_user_events();
  if (line.size() >= kLongestLine) {
    line = std::string();
    error_exit(("Sorry! A line of " + source_name + " is too long\n").c_str());
  }
}

int get_file_line() {
  static std::string line;
  line.clear();
  int c = std::getc(pp_file);
  if (c == EOF)
    return 0;
  for (; c != EOF && c != '\n'; c = std::getc(pp_file))
    grow_line(line, c);
  if (c == '\n')
    trim_line_end(line);
  if (line_number == 0 && line.starts_with(kByteOrderMark))
    line.erase(0, std::strlen(kByteOrderMark));
  blank_nuls(line);
  install_line(line.data(), line.size());
  return 1;
}

int get_console_line() {
  std::string line;
  if (pp_refill(line, pending_prompt) == 0)
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
  return pp_file == nullptr && pp_refill != nullptr && statement_depth == 0;
}

const std::string &pp_source_name() {
  return source_name;
}

long pp_line_number() {
  return line_number;
}

std::string pp_line_text() {
  std::string text(pp_line_buffer.begin(), pp_line_buffer.end());
  const auto at = [&](const char *p) -> char & {
    return text[static_cast<std::size_t>(p - pp_line_buffer.data())];
  };
  if (pp_hidden_quote != nullptr)
    at(pp_hidden_quote) = '"';
  at(pp_pos) = pp_last_char;
  text.resize(text.size() - 2);
  std::replace(text.begin(), text.end(), '\0', ' ');
  return text;
}

void pp_set_prompt(const char *prompt) {
  pending_prompt = prompt;
}

void pp_drop_prompt() {
  pending_prompt = nullptr;
}

void pp_begin_record() {
  recording = Recording{};
  recording.on = true;
  recording.from = static_cast<std::size_t>(pp_start - pp_line_buffer.data());
}

std::string pp_take_record() {
  record_upto(pp_at_end != 0 ? pp_line_buffer.data() + pp_line_buffer.size() - 2 : pp_start);
  std::string text = std::move(recording.text);
  recording = Recording{};
  return text;
}

std::string pp_recorded_statement() {
  if (!recording.on || recording.paused)
    return {};
  const std::string line = pp_line_text();
  const std::string text = recording.text + line.substr(std::min(recording.from, line.size()));
  bool quoted = false;
  for (std::size_t i = recording.text.size(); i < text.size(); ++i) {
    if (text[i] == '"')
      quoted = !quoted;
    else if (!quoted && text[i] == '\'' && i + 2 < text.size() && text[i + 2] == '\'')
      i += 2; // a character literal
    else if (!quoted && text[i] == ';')
      return text.substr(0, i);
  }
  return {};
}

void pp_record_pause(const char *upto) {
  if (!recording.on)
    return;
  record_upto(upto);
  recording.text += ' ';
  recording.paused = true;
}

void pp_record_resume(const char *from) {
  recording.paused = false;
  recording.from = static_cast<std::size_t>(from - pp_line_buffer.data());
}

namespace {

// Puts the value of a global aside; it comes back when this goes out of scope.
template <typename T> class Aside {
public:
  explicit Aside(T &place) : place_(place), value_(std::move(place)) {}
  ~Aside() { place_ = std::move(value_); }
  Aside(const Aside &) = delete;
  Aside &operator=(const Aside &) = delete;

private:
  T &place_;
  T value_;
};

// A file that is read again goes on with its next line.
struct NextLineOfFile {
  ~NextLineOfFile() {
    if (pp_file != nullptr)
      pp_flush();
  }
};

} // namespace

// Everything that a switch of the source puts aside.
struct SourceState {
  NextLineOfFile last; // first here, so done when all the others are back
  Aside<std::vector<char>> line{pp_line_buffer};
  Aside<char *> pos{pp_pos};
  Aside<char> last_char{pp_last_char};
  Aside<char *> hidden{pp_hidden_quote};
  Aside<std::FILE *> file{pp_file};
  Aside<int> token{pp_token};
  Aside<char *> start{pp_start};
  Aside<int> len{pp_len};
  Aside<int> at_end{pp_at_end};
  Aside<int> open{pp_statement_open};
  Aside<int> open_string{pp_open_string};
  Aside<char *> str_val{pp_str_val};
  Aside<int> str_len{pp_str_len};
  Aside<std::string> buffer{pp_velora_buffer};
  Aside<std::size_t> buffer_pos{pp_velora_pos};
  Aside<std::string> name{source_name};
  Aside<long> number{line_number};
  Aside<bool> noted{nul_noted};
  Aside<int> depth{statement_depth};
  Aside<const char *> prompt{pending_prompt};
  Aside<Recording> record{recording};
};

namespace {

// An empty line before the first of a source, so that the first token is looked for on a new one.
void start_source() {
  pp_line_buffer = {'\n', '\0'};
  pp_pos = pp_line_buffer.data();
  pp_last_char = '\n';
  pp_hidden_quote = nullptr;
  pp_token = kTokEnd;
  pp_start = pp_str_val = pp_line_buffer.data() + 1;
  pp_len = pp_str_len = 0;
  pp_at_end = pp_statement_open = pp_open_string = 0;
  pp_velora_buffer.clear();
  pp_velora_pos = 0;
  source_name.clear();
  line_number = 0;
  nul_noted = false;
  pending_prompt = nullptr;
  recording = Recording{};
}

} // namespace

void pp_reset(bool forget_line) {
  if (!reading_console() || forget_line) {
    pp_file = nullptr;
    statement_depth = 0;
    start_source();
  }
  recording = Recording{};
  pending_prompt = nullptr;
}

FileSource::FileSource(std::FILE *file, const std::string &name)
    : former_(std::make_unique<SourceState>()), file_(file) {
  start_source();
  pp_file = file;
  statement_depth = 0;
  source_name = name;
}

FileSource::~FileSource() {
  std::fclose(file_);
}

StatementSource::StatementSource(std::string text) : former_(std::make_unique<SourceState>()) {
  start_source();
  pp_file = nullptr;
  ++statement_depth;
  pp_velora_buffer = std::move(text);
}

StatementSource::~StatementSource() = default;

} // namespace velora
