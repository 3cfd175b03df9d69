// Loading of files: `lload`, the start-up libraries and the `load` built-in. Files nest; each is
// read whole before its first command runs, and the former source is put back also when its loading
// is abandoned.
#include <cerrno>
#include <string>
#include <utility>

#include "core/events.h"
#include "front/parse.h"
#include "front/parser.h"
#include "front/putils.h"
#include "front/source.h"
#include "platform/response.h"
#include "platform/trust.h"
#include "platform/whole_file.h"

namespace velora {

namespace {

struct LoadDepth {
  inline static int depth = 0;
  LoadDepth() { ++depth; }
  ~LoadDepth() { --depth; }
};

// Where a loading was abandoned, for the return point to tell.
struct CutOffLoad {
  bool met = false;
  std::string name;
  long line = 0;
};
CutOffLoad cut_off;

// Stands while the commands of a file run. Of files that load each other the inner one counts: it
// holds the place. Of half a database its reader tells.
class Loading {
public:
  explicit Loading(std::string name) : name_(std::move(name)) {}
  ~Loading() {
    if (done_ || cut_off.met || DatabaseReading::depth > 0)
      return;
    cut_off.met = true;
    cut_off.name.swap(name_);
    cut_off.line = pp_line_number();
  }
  Loading(const Loading &) = delete;
  Loading &operator=(const Loading &) = delete;
  void done() { done_ = true; }

private:
  std::string name_;
  bool done_ = false;
};

// Tells that a file cannot be read, and why.
int cannot_read(const std::string &fname, int error, int silent) {
  poll_user_events(); // who stopped the reading knows why it ended
  if (silent != 0)
    return 0;
  ++gParseErrors;
  const std::string reason = file_error_text(fname, error);
  orvek_errorf("Can't read from file %s", fname.c_str());
  if (error != ENOENT)
    show_note("note: " + reason);
  return 0;
}

} // namespace

int load_file(const std::string &fname, int silent) {
  return load_file(fname, silent, {fname});
}

int load_file(const std::string &fname, int silent, const ShownName &shown) {
  std::string text;
  if (!read_whole_file(fname, text))
    return cannot_read(fname, errno, silent);
  return load_text(fname, std::move(text), shown);
}

int load_text(const std::string &fname, std::string text) {
  return load_text(fname, std::move(text), {fname});
}

int load_text(const std::string &fname, std::string text, const ShownName &shown) {
  const LoadDepth nested;
  if (LoadDepth::depth > kMostLoads)
    return refuse("Sorry! Files load each other too deeply: " + fname + "\n");
  if (LoadDepth::depth == 1)
    cut_off.met = false; // it may be the second try of one that ran out of space
  {
    const FileSource source(std::move(text), shown);
    Loading loading(shown.name);
    DisplayResponse("Loading: " + shown.name + ". . .");
    parse();
    loading.done();
  }
  DisplayResponse(" Loaded.\n");
  return 1;
}

void settle_cut_off_load() {
  if (std::exchange(cut_off.met, false))
    show_note("note: the loading of " + cut_off.name + " ended at line " +
              std::to_string(cut_off.line) + "; what was read before stays");
}

int p_load_file() {
  pp_get_token();
  if (pp_token != kTokString && pp_token != kTokName)
    return report_error("", "string or symbol file name");
  const std::string fname(pp_str_val, static_cast<std::size_t>(pp_str_len));
  // The command has been read to its end, also when the file cannot be read or the load is
  // abandoned.
  pp_statement_open = 0;
  // What the user types acts with the session's rights; what stands in a database asks.
  if (DatabaseReading::depth == 0 ||
      effect_is_allowed({"load the file", resolved_path(fname), false, false}))
    load_file(fname, 0);
  if (reading_console() && pp_semicolon_follows() != 0)
    pp_get_token();
  pp_statement_open = 0;
  return 1;
}

} // namespace velora
