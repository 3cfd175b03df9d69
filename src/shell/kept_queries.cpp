// Reading and adding to the file of earlier queries.
#include "shell/kept_queries.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "platform/safe_file.h"
#include "platform/temp_names.h"

namespace velora {

namespace {

// A file that has grown beyond this is cut down when it is read.
constexpr std::size_t kMostLines = 4'000;

} // namespace

std::string kept_queries_file() {
  const std::string folder = state_folder();
  return folder.empty() ? std::string() : folder + "/history";
}

std::vector<std::string> kept_queries(const std::string &file, std::size_t most) {
  std::ifstream in(file, std::ios::binary);
  std::vector<std::string> lines;
  for (std::string line; std::getline(in, line);)
    if (!line.empty())
      lines.push_back(line);
  const bool too_many = lines.size() > kMostLines;
  lines.erase(lines.begin(),
              lines.end() - static_cast<std::ptrdiff_t>(std::min(lines.size(), most)));
  if (!too_many)
    return lines;
  in.close();
  SafeFile shorter(file);
  if (shorter.open())
    for (const std::string &line : lines)
      shorter.write(line + "\n");
  shorter.replace();
  return lines;
}

void keep_query(const std::string &file, const std::string &query) {
  namespace fs = std::filesystem;
  std::error_code error;
  const bool fresh = !fs::exists(file, error);
  std::ofstream out(file, std::ios::binary | std::ios::app);
  if (!out)
    return;
  if (fresh) // what one asks is nobody else's
    fs::permissions(file, fs::perms::owner_read | fs::perms::owner_write, error);
  std::string line = query;
  std::replace(line.begin(), line.end(), '\n', ' ');
  out << line << '\n';
}

} // namespace velora
