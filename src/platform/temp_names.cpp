// Random tokens, temporary and hidden names.
#include "platform/temp_names.h"

#include <filesystem>
#include <random>
#include <system_error>
#include <vector>

#include "platform/file_calls.h"
#include "platform/file_system.h"

namespace velora {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kTokenLength = 16;

bool is_token(const std::string &text) {
  return text.size() == kTokenLength &&
         text.find_first_not_of("0123456789abcdef") == std::string::npos;
}

// True for ".FILE.TOKEN.ENDING" with an ending of ours.
bool is_leftover(const std::string &name, const std::string &start) {
  if (!name.starts_with(start) || name.size() < start.size() + kTokenLength + 1)
    return false;
  const std::string ending = name.substr(start.size() + kTokenLength);
  return is_token(name.substr(start.size(), kTokenLength)) &&
         (ending == ".new" || ending == ".old" || ending == ".bak" || ending == ".mark");
}

} // namespace

std::string random_token() {
  constexpr char kDigits[] = "0123456789abcdef";
  std::random_device source;
  std::string token;
  while (token.size() < kTokenLength)
    token += kDigits[source() & 15u];
  return token;
}

std::string new_temporary_name(const std::string &ending) {
  std::error_code failed;
  const fs::path folder = fs::temp_directory_path(failed);
  return failed ? std::string() : (folder / ("velora-" + random_token() + ending)).string();
}

std::string hidden_name(const std::string &file, const std::string &token,
                        const std::string &ending) {
  return folder_of(file) + "." + file_part(file) + "." + token + "." + ending;
}

void remove_leftovers(const std::string &file) {
  const std::string start = "." + file_part(file) + ".";
  std::error_code error;
  std::vector<std::string> found;
  for (fs::directory_iterator at(folder_of(file), error), end; !error && at != end;
       at.increment(error)) {
    const std::string name = at->path().filename().string();
    if (is_leftover(name, start) && entry_kind(at->path().string()) == EntryKind::file)
      found.push_back(at->path().string());
  }
  for (const std::string &name : found)
    remove_file(name);
}

std::string state_folder() {
  const std::string base = system_files::state_base();
  if (base.empty())
    return {};
  const fs::path folder = fs::path(base) / "velora";
  std::error_code error;
  fs::create_directories(folder, error);
  return error ? std::string() : folder.string();
}

} // namespace velora
