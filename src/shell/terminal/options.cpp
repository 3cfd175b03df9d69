// Reads the command line against one table of options; the text of --help comes from the same
// table. Called by main.
#include "shell/terminal/options.h"

#include <charconv>
#include <limits>

#include "eval/evaluate.h"
#include "network/net_view.h"

namespace velora {

namespace {

// Reads the whole of `text` as a number from 1 to `most`.
bool read_number(const std::string &text, std::int64_t most, std::int64_t &number) {
  const char *end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  return error == std::errc() && stop == end && number >= 1 && number <= most;
}

bool take_space(Options &o, const std::string &value) {
  std::int64_t n = 0;
  if (!read_number(value, std::numeric_limits<std::int32_t>::max(), n))
    return false;
  o.space = static_cast<std::int32_t>(n);
  return true;
}

bool take_max_space(Options &o, const std::string &value) {
  return read_number(value, std::numeric_limits<std::int32_t>::max(), o.max_space);
}

bool take_nesting(Options &o, const std::string &value) {
  std::int64_t n = 0;
  if (!read_number(value, kMostNesting, n))
    return false;
  o.nesting = static_cast<int>(n);
  return true;
}

bool take_seconds(Options &o, const std::string &value) {
  std::int64_t n = 0;
  constexpr std::int64_t kDay = 86400;
  if (!read_number(value, kDay, n))
    return false;
  o.seconds = static_cast<int>(n);
  return true;
}

bool take_depth(Options &o, const std::string &value) {
  std::int64_t n = 0;
  if (!read_number(value, std::numeric_limits<std::int32_t>::max(), n))
    return false;
  o.network.depth = static_cast<int>(n);
  return true;
}

bool take_notes(Options &o, const std::string &value) {
  o.notes = value != "none";
  o.answer_notes = value == "all";
  return value == "all" || value == "messages" || value == "none";
}

struct OptionRow {
  const char *name;
  const char *argument; // null for an option without one
  const char *help;
  bool (*take)(Options &, const std::string &value);
};

constexpr OptionRow kOptionTable[] = {
    {"--batch", nullptr, "read commands from standard input, without prompts",
     [](Options &o, const std::string &) { return o.batch = true; }},
    {"--eval", "QUERY", "print the answer of QUERY and end; may be repeated",
     [](Options &o, const std::string &v) { return o.queries.push_back(v), true; }},
    {"--draw", "NAME",
     "draw picture NAME, or \"NAME N\", of the database into the file named by -o, and end",
     [](Options &o, const std::string &v) { return o.draw = v, !v.empty(); }},
    {"-o", "FILE.svg", "the file that --draw writes",
     [](Options &o, const std::string &v) { return o.draw_file = v, !v.empty(); }},
    {"--events", "FILE", "use the windows of the desktop as an event script says, without a screen",
     [](Options &o, const std::string &v) { return o.events = v, !v.empty(); }},
    {"--network", "FILE", "write who calls whom into FILE.svg, .dot, .graphml or .csv, and end",
     [](Options &o, const std::string &v) { return o.network.file = v, is_network_file(v); }},
    {"--from", "NAME", "of the network, only what NAME reaches",
     [](Options &o, const std::string &v) { return o.network.from = v, !v.empty(); }},
    {"--to", "NAME", "of the network, only what reaches NAME",
     [](Options &o, const std::string &v) { return o.network.to = v, !v.empty(); }},
    {"--depth", "N", "no farther than N calls from these", take_depth},
    {"--hide", "KINDS", "leave out of the network: builtin,system,constructors",
     [](Options &o, const std::string &v) { return read_hidden_kinds(v, o.network.hide); }},
    {"--tidy", nullptr, "lay the network out with few crossings and nothing overlapping",
     [](Options &o, const std::string &) { return o.network.tidy = true; }},
    {"--lib", "DIR", "the folder of bis.fdb and sys.fdb",
     [](Options &o, const std::string &v) { return o.lib_dir = v, !v.empty(); }},
    {"--space", "NODES", "size of the query space at the start", take_space},
    {"--max-space", "NODES", "how far the query space may grow (default: half the memory)",
     take_max_space},
    {"--nesting", "N", "how deep evaluations may nest, 1 to 10000 (default: 120)", take_nesting},
    {"--timeout", "S", "stop every command that takes longer than S seconds", take_seconds},
    {"--strict", nullptr, "end with status 3 when an answer holds a call that stayed as it is",
     [](Options &o, const std::string &) { return o.strict = true; }},
    {"--test", "FILE", "run the queries of FILE, hold their answers against those in it, and end",
     [](Options &o, const std::string &v) { return o.test = v, !v.empty(); }},
    {"--graphics-dir", "DIR", "write every graphics window as a picture at the end",
     [](Options &o, const std::string &v) { return o.graphics_dir = v, !v.empty(); }},
    {"--trust", nullptr, "let databases write files and open others without asking",
     [](Options &o, const std::string &) { return o.trust = true; }},
    {"--notes", "all|messages|none",
     "give notes to messages and to answers that stay as they are, to messages, or no notes",
     take_notes},
    {"--no-notes", nullptr, "the same as --notes none",
     [](Options &o, const std::string &) { return take_notes(o, "none"); }},
    {"--version", nullptr, "print the version and end",
     [](Options &o, const std::string &) { return o.version = true; }},
    {"--builtins-page", nullptr, "print the page of all built-ins (docs/builtins.md) and end",
     [](Options &o, const std::string &) { return o.builtins_page = true; }},
    {"--help", nullptr, "print this text and end",
     [](Options &o, const std::string &) { return o.help = true; }},
};

const OptionRow *find_option(const std::string &name) {
  for (const OptionRow &row : kOptionTable) {
    if (name == row.name)
      return &row;
  }
  return nullptr;
}

bool read_database(const std::string &word, Options &options, std::string &complaint) {
  if (!options.database.empty()) {
    complaint = "more than one database: " + word;
    return false;
  }
  options.database = word;
  return true;
}

// Reads the option at words[i], moving `i` to its last word.
bool read_option(const std::vector<std::string> &words, std::size_t &i, Options &options,
                 std::string &complaint) {
  const std::size_t sign = words[i].find('=');
  const std::string name = words[i].substr(0, sign);
  const OptionRow *row = find_option(name);
  if (row == nullptr || (row->argument == nullptr && sign != std::string::npos)) {
    complaint = "unknown option: " + words[i];
    return false;
  }
  std::string value;
  if (sign != std::string::npos) {
    value = words[i].substr(sign + 1);
  } else if (row->argument != nullptr) {
    if (i + 1 == words.size()) {
      complaint = name + " wants " + row->argument;
      return false;
    }
    value = words[++i];
  }
  if (row->take(options, value))
    return true;
  complaint = name + " cannot be " + (value.empty() ? "empty" : value);
  return false;
}

} // namespace

namespace {

// Options that only make sense together.
bool fit_together(const Options &options, std::string &complaint) {
  const NetworkRequest &network = options.network;
  const bool narrowed = !network.from.empty() || !network.to.empty();
  if (network.file.empty() ? narrowed || network.hide != 0 || network.tidy || network.depth >= 0
                           : options.database.empty() || !options.draw.empty()) {
    complaint = "a network is written with --network FILE DATABASE";
    return false;
  }
  if (network.depth >= 0 && !narrowed) {
    complaint = "--depth wants --from NAME or --to NAME";
    return false;
  }
  if (options.draw.empty() == options.draw_file.empty() &&
      (options.draw.empty() || !options.database.empty()))
    return true;
  complaint = "a picture is drawn with --draw NAME -o FILE.svg DATABASE";
  return false;
}

} // namespace

bool read_options(const std::vector<std::string> &words, Options &options, std::string &complaint) {
  bool only_names = false;
  for (std::size_t i = 0; i < words.size(); ++i) {
    const std::string &word = words[i];
    if (!only_names && word == "--")
      only_names = true;
    else if (only_names || word.empty() || word[0] != '-') {
      if (!read_database(word, options, complaint))
        return false;
    } else if (!read_option(words, i, options, complaint)) {
      return false;
    }
  }
  return fit_together(options, complaint);
}

std::string usage_text() {
  std::string text = "Use: velora [options] [DATABASE]\n\n"
                     "Starts Velora, opens the database if one is named and reads commands.\n\n";
  for (const OptionRow &row : kOptionTable) {
    std::string left = std::string("  ") + row.name;
    if (row.argument != nullptr)
      left += std::string(" ") + row.argument;
    left.resize(std::max<std::size_t>(left.size() + 2, 22), ' ');
    text += left + row.help + "\n";
  }
  return text +
         "\nExit status: 0 all went well, 1 some command failed, 2 wrong use, 3 an answer stayed\n"
         "as it is (--strict), 13 or 19 the libraries or the query space could not be had,\n"
         "130 interrupted.\n";
}

} // namespace velora
