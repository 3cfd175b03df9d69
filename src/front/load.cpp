// Loading of files: `lload`, the start-up libraries and the `load` built-in. Files nest; each is
// closed, and the former source put back, also when its loading is abandoned.
#include <cstdio>
#include <string>

#include "front/parse.h"
#include "front/parser.h"
#include "front/putils.h"
#include "front/source.h"
#include "platform/response.h"

namespace velora {

namespace {

struct LoadDepth {
  inline static int depth = 0;
  LoadDepth() { ++depth; }
  ~LoadDepth() { --depth; }
};

// Opens a file that can really be read: a directory opens on some systems, but cannot be.
std::FILE *open_readable(const std::string &fname) {
  std::FILE *file = std::fopen(fname.c_str(), "r");
  if (file == nullptr)
    return nullptr;
  const int c = std::getc(file);
  if (c == EOF && std::ferror(file) != 0) {
    std::fclose(file);
    return nullptr;
  }
  if (c != EOF)
    std::ungetc(c, file);
  return file;
}

} // namespace

int load_file(const std::string &fname, int silent) {
  const LoadDepth nested;
  if (LoadDepth::depth > kMostLoads)
    return refuse("Sorry! Files load each other too deeply: " + fname + "\n");
  std::FILE *file = open_readable(fname);
  if (file == nullptr) {
    if (silent == 0) {
      ++gParseErrors;
      orvek_errorf("Can't read from file %s", fname.c_str());
    }
    return 0;
  }
  {
    const FileSource source(file, fname);
    DisplayResponse("Loading: " + fname + ". . .");
    parse();
  }
  DisplayResponse(" Loaded.\n");
  return 1;
}

int p_load_file() {
  pp_get_token();
  if (pp_token != kTokString && pp_token != kTokName)
    return report_error("", "string or symbol file name");
  const std::string fname(pp_str_val, static_cast<std::size_t>(pp_str_len));
  // The command has been read to its end, also when the file cannot be read or the load is
  // abandoned.
  pp_statement_open = 0;
  load_file(fname, 0);
  if (reading_console() && pp_semicolon_follows() != 0)
    pp_get_token();
  pp_statement_open = 0;
  return 1;
}

} // namespace velora
