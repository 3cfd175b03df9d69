// The list of trusted sums. The newest stand last; the oldest are dropped when it grows long.
#include "platform/trusted_sums.h"

#include <algorithm>
#include <vector>

#include "platform/safe_file.h"
#include "platform/temp_names.h"

namespace velora {

namespace {

constexpr std::size_t kMostSums = 10000;
constexpr std::size_t kSumLength = 64;

struct SumList {
  bool read = false;
  std::vector<std::string> sums;
};
SumList list;

std::string list_name() {
  const std::string folder = state_folder();
  return folder.empty() ? std::string() : folder + "/trusted";
}

// The sums of the file; a line that is none is passed over.
std::vector<std::string> sums_of_file() {
  std::vector<std::string> sums;
  const std::string name = list_name();
  std::string text;
  if (name.empty() || !read_whole_file(name, text))
    return sums;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = std::min(text.find('\n', at), text.size());
    if (end - at == kSumLength)
      sums.push_back(text.substr(at, end - at));
    at = end + 1;
  }
  return sums;
}

bool holds(const std::vector<std::string> &sums, const std::string &sum) {
  return std::find(sums.begin(), sums.end(), sum) != sums.end();
}

void read_list() {
  if (!list.read)
    list.sums = sums_of_file();
  list.read = true;
}

} // namespace

bool is_trusted_sum(const std::string &sum) {
  read_list();
  return holds(list.sums, sum);
}

void trust_sum(const std::string &sum) {
  if (is_trusted_sum(sum))
    return;
  list.sums.push_back(sum);
  // Another run may have added to the file since it was read.
  std::vector<std::string> all = sums_of_file();
  if (!holds(all, sum))
    all.push_back(sum);
  if (all.size() > kMostSums)
    all.erase(all.begin(), all.end() - static_cast<std::ptrdiff_t>(kMostSums));
  std::string text;
  for (const std::string &each : all)
    text += each + '\n';
  std::string reason;
  if (const std::string name = list_name(); !name.empty())
    write_whole_file(name, text, reason);
}

void forget_trusted_sums() {
  list = {};
}

} // namespace velora
