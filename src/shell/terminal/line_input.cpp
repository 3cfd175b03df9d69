// Lines from descriptors and from texts. Long lines arrive in pieces and cost linear time.
#include "shell/terminal/line_input.h"

#include <cerrno>
#include <poll.h>
#include <unistd.h>
#include <utility>

#include "front/putils.h"
#include "front/source.h"
#include "platform/interrupt.h"
#include "platform/response.h"

namespace velora {

Got LineInput::next(std::string &line, const std::string &prompt) {
  const Got got = read(line, prompt);
  ends_in_a_row_ = got == Got::end ? ends_in_a_row_ + 1 : 0;
  return got;
}

Got StreamInput::fill() {
  buffer_.erase(0, start_);
  start_ = 0;
  char piece[65536];
  ssize_t n = -1;
  // A signal just before the waiting would not end it, so the flag is looked at in between. Input
  // that was given up has no descriptor, for which one would wait without end.
  constexpr int kLookEvery = 100;
  pollfd input{fd_, POLLIN, 0};
  while (fd_ >= 0 && gInterrupted == 0 && ::poll(&input, 1, kLookEvery) == 0)
    continue;
  while (gInterrupted == 0 && (n = ::read(fd_, piece, sizeof piece)) < 0 && errno == EINTR)
    continue;
  if (n > 0) {
    buffer_.append(piece, static_cast<std::size_t>(n));
    return Got::line;
  }
  // The key may have come just as the input ended.
  return std::exchange(gInterrupted, 0) != 0 ? Got::interrupted : Got::end;
}

Got StreamInput::read(std::string &line, const std::string &) {
  line.clear();
  for (;;) {
    const std::size_t end = buffer_.find('\n', start_);
    if (end != std::string::npos) {
      line.append(buffer_, start_, end - start_);
      start_ = end + 1;
      return Got::line;
    }
    line.append(buffer_, start_);
    start_ = buffer_.size();
    const Got got = fill();
    if (got == Got::end && !line.empty())
      return Got::line;
    if (got != Got::line)
      return got;
    if (std::exchange(gInterrupted, 0) != 0)
      return Got::interrupted;
    if (line.size() >= kLongestLine) {
      fd_ = -1;
      ++gParseErrors;
      orvek_error("Sorry! A line of the input is too long\n");
      return Got::end;
    }
  }
}

int StreamInput::read_char() {
  const Got got = start_ == buffer_.size() ? fill() : Got::line;
  if (got == Got::interrupted)
    gInterrupted = 1;
  if (got != Got::line)
    return -1;
  return static_cast<unsigned char>(buffer_[start_++]);
}

TextInput::TextInput(const std::vector<std::string> &texts) {
  for (const std::string &text : texts) {
    std::size_t start = 0;
    for (std::size_t end; (end = text.find('\n', start)) != std::string::npos; start = end + 1)
      lines_.push_back(text.substr(start, end - start));
    lines_.push_back(text.substr(start));
  }
}

Got TextInput::read(std::string &line, const std::string &) {
  if (lines_.empty())
    return Got::end;
  line = std::move(lines_.front());
  lines_.pop_front();
  return Got::line;
}

} // namespace velora
