// Fuzz target: any bytes can be opened as a database. What was read is committed, and what was
// committed reads back without an error and is committed again with the same lines.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "core/symbols.h"
#include "db/f_dbops.h"
#include "db/vel_dbop.h"
#include "front/putils.h"
#include "front/source.h"
#include "kit/start.h"
#include "network/links.h"
#include "platform/safe_file.h"
#include "shell/return_point.h"

namespace {

using namespace velora;

kit::FuzzConsole console;

// True when a name can run together with what stands behind it, as "#" and "'" do: such a name
// need not read back.
bool has_odd_name() {
  for (const symbol *s = Symbol_table; s != nullptr; s = s->next)
    if (std::string_view("#?'").find(s->name[0]) != std::string_view::npos)
      return true;
  return false;
}

// Opens, commits and closes the database x; false when something in it was not read or when it
// need not read back.
bool read_and_write() {
  console.polls = 0;
  console.warnings.clear();
  const int errors = gParseErrors;
  int saved = 0;
  run_command([&] { return saved = fdb_open_db("x") != 0 && fdb_commit_db() != 0; });
  const bool clean = errors == gParseErrors && console.warnings.empty() && !has_odd_name();
  run_command([] { return fdb_close_db(); });
  free_retired();
  pp_reset(true);
  return saved != 0 && clean;
}

std::vector<std::string> sorted_lines(const std::string &name) {
  std::string text;
  read_whole_file(name, text);
  std::istringstream in(text);
  std::vector<std::string> lines;
  for (std::string line; std::getline(in, line);)
    lines.push_back(line);
  std::sort(lines.begin(), lines.end());
  return lines;
}

void complain(const char *what) {
  std::fprintf(stderr, "%s\n%s", what, console.warnings.c_str());
  std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  static const bool started = (kit::start_fuzzing(console, "velora-fuzz-ddb"), true);
  (void)started;
  for (const auto &entry : std::filesystem::directory_iterator("."))
    std::filesystem::remove_all(entry.path());
  std::ofstream("x.ddb", std::ios::binary)
      .write(reinterpret_cast<const char *>(data), static_cast<std::streamsize>(size));
  const bool whole = read_and_write();
  kit::require_sound_pool();
  if (whole) {
    const std::vector<std::string> lines = sorted_lines("x.ddb");
    if (!read_and_write())
      complain("what was committed does not read back");
    if (sorted_lines("x.ddb") != lines)
      complain("what was committed changes when it is read back");
  }
  run_command([&] {
    scan_text_to_ARRAY({reinterpret_cast<const char *>(data), size});
    ARRAY.clear();
    return 1;
  });
  return 0;
}
