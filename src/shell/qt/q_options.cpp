// Reading the command line.
#include "shell/qt/q_options.h"

namespace velora::qt {

bool read_options(const std::vector<std::string> &words, Options &options, std::string &complaint) {
  bool only_names = false;
  for (std::size_t i = 0; i < words.size(); ++i) {
    const std::string &word = words[i];
    std::string *value = only_names               ? nullptr
                         : word == "--lib"        ? &options.lib_dir
                         : word == "--events"     ? &options.events
                         : word == "--screenshot" ? &options.screenshot
                                                  : nullptr;
    if (value != nullptr) {
      if (i + 1 == words.size()) {
        complaint = word + " needs a value";
        return false;
      }
      *value = words[++i];
    } else if (!only_names && word == "--") {
      only_names = true;
    } else if (!only_names && (word == "--help" || word == "-h")) {
      options.help = true;
    } else if (!only_names && word == "--no-notes") {
      options.notes = false;
    } else if (!only_names && word == "--version") {
      options.version = true;
    } else if (!only_names && word.starts_with("-") && word != "-") {
      complaint = "there is no option " + word;
      return false;
    } else if (!options.database.empty()) {
      complaint = "more than one database: " + word;
      return false;
    } else {
      options.database = word;
    }
  }
  return true;
}

const char *usage_text() {
  return "Use: velora-desktop [options] [DATABASE]\n"
         "  --events FILE          run a script of events in the windows, then end\n"
         "  --screenshot FILE.png  save a picture of the frame, then end\n"
         "  --no-notes             leave out the lines of help beside messages\n"
         "  --lib DIR              where bis.fdb, sys.fdb and user.fdb are\n"
         "  --help, --version\n";
}

} // namespace velora::qt
