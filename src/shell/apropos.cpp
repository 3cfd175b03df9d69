// Looking for names. A name that is meant comes first, then names that hold the word, then pages
// whose sentences have a word that begins with it.
#include "shell/apropos.h"

#include <algorithm>
#include <cctype>
#include <sstream>

#include "core/symbols.h"
#include "eval/help.h"
#include "shell/name_help.h"

namespace velora {

namespace {

std::string lower(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return text;
}

std::vector<std::string> words_of(const std::string &text) {
  std::istringstream in(text);
  std::vector<std::string> words;
  for (std::string word; in >> word;)
    words.push_back(word);
  return words;
}

// True when a word of `sentence` begins with `start`.
bool mentions(const std::string &sentence, const std::string &start) {
  const std::string text = lower(sentence);
  for (std::size_t at = text.find(start); at != std::string::npos; at = text.find(start, at + 1))
    if (at == 0 || std::isalnum(static_cast<unsigned char>(text[at - 1])) == 0)
      return true;
  return false;
}

class Finder {
public:
  void add(const std::string &name);
  std::vector<FoundName> found;
};

void Finder::add(const std::string &name) {
  for (const FoundName &row : found)
    if (row.name == name)
      return;
  const HelpRow *page = find_help(name);
  const symbol *s = find_symbol(name.c_str(), name.size());
  if (page != nullptr)
    found.push_back({name, page->sentence});
  else if (s != nullptr)
    found.push_back({name, declaration_text(*s)});
}

} // namespace

const std::vector<AproposRow> &apropos_rows() {
  static const std::vector<AproposRow> rows{
      {"length size len count number", "$ countstr"},
      {"element item nth at get lookup position", "! index member head last"},
      {"if then else condition case choose switch when ternary", "if"},
      {"loop while for do repeat", "map foldl until iterate takewhile repeat list_of_int"},
      {"reduce accumulate inject fold", "foldl foldr"},
      {"apply each foreach transform", "map @ flatmap"},
      {"print show output write display puts echo", "print nar_text file_write_line putchar"},
      {"input read ask prompt stdin", "getchar gr_dialog file_read_line file_to_list"},
      {"join concatenate concat plus glue", "append concat str_concat words_to_str"},
      {"split tokenize words", "str_to_words explode"},
      {"substring slice part", "findstr take drop str_head str_tail"},
      {"push cons prepend add", ": insert append"},
      {"empty null nothing none undefined", "null nil"},
      {"equal equals == same", "="},
      {"modulo mod remainder rest", "% tail"},
      {"random dice", "rand srand"},
      {"first car begin", "head first"},
      {"cdr tail", "tail"},
      {"contains in has elem", "member findstr"},
      {"unique distinct set duplicates", "mkset"},
      {"order sorted", "sort insert"},
      {"mean", "average"},
      {"absolute", "abs"},
      {"negative minus", "neg -"},
      {"square root pow exponent", "sqrt power exp"},
      {"range sequence numbers from to", "list_of_int range"},
      {"tuple pair record struct dictionary key value", "Pair first second assert"},
      {"lambda anonymous closure function", "@ map compose"},
      {"let local variable share", "HOLD HOLDN"},
      {"exception try raise", "catch throw error"},
      {"parse number convert string cast", "str_to_int str_to_real int_to_str real_to_str"},
      {"ascii code ord chr", "encode decode"},
      {"boolean true false", "True False not && ||"},
      {"time date now today clock", "time_hour time_minute time_second time_year"},
      {"sleep wait pause", "delay"},
      {"draw picture line circle", "gr_open gr_moveto gr_lineto gr_frameoval gr_fillrect"},
      {"plot chart curve", "plotit"},
      {"define store remember fact database", "assert remember deny list_fdefs"},
      {"undefine delete remove", "deny denyall forget"},
      {"evaluate run", "eval"},
      {"sequence steps then", "prog prog1 progN"},
      {"compose pipe chain", "compose B"},
      {"classify learn bayes", "prob_learn prob_classify"},
      {"open file load import include", "load open file_open_read"},
      {"save close", "commit close"},
  };
  return rows;
}

std::vector<FoundName> find_about(const std::string &word) {
  const std::string wanted = lower(word);
  Finder finder;
  if (wanted.empty())
    return {};
  for (const AproposRow &row : apropos_rows()) {
    const std::vector<std::string> words = words_of(row.words);
    if (std::find(words.begin(), words.end(), wanted) != words.end())
      for (const std::string &name : words_of(row.names))
        finder.add(name);
  }
  for (const symbol *s = Symbol_table; s != nullptr; s = s->next)
    if (lower(s->name).find(wanted) != std::string::npos)
      finder.add(s->name);
  for (const HelpFamily &family : help_families())
    for (const HelpRow &row : family.rows)
      if (wanted.size() > 2 && mentions(row.sentence, wanted))
        finder.add(row.name);
  return finder.found;
}

} // namespace velora
