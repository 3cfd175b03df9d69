// Commands of the shell about single pictures: translating, running and drawing one.
#include <charconv>
#include <functional>
#include <utility>
#include <vector>

#include "editor/draw.h"
#include "editor/model/wininfo.h"
#include "editor/translate.h"
#include "editor/vel_cmp.h"
#include "platform/response.h"
#include "shell/save_actions.h"
#include "shell/terminal/colon.h"
#include "shell/terminal/db_commands.h"

namespace velora {

namespace {

bool read_component(const ColonWord &word, int &component) {
  const char *end = word.text.data() + word.text.size();
  const auto [stop, error] = std::from_chars(word.text.data(), end, component);
  return !word.quoted && error == std::errc() && stop == end && component >= 0;
}

// Takes a component's number off the end, if there is one behind a name; the rest is the name.
std::string take_name(std::vector<ColonWord> words, int &component) {
  if (words.size() > 1 && read_component(words.back(), component))
    words.pop_back();
  std::string name;
  for (const ColonWord &word : words)
    name += (name.empty() ? "" : " ") + word.text;
  return name;
}

// Runs `command` on a copy of a stored picture that no window shows, so that nothing is stored but
// by the command itself.
int on_hidden_copy(const std::vector<ColonWord> &words,
                   const std::function<int(WinInfo *)> &command) {
  int component = 0;
  const std::string name = take_name(words, component);
  const WinInfo *stored = FindStoredPicture(name, component);
  if (stored == nullptr) {
    orvek_errorf("There is no picture %d of %s\n", component, name.c_str());
    return 0;
  }
  WinInfo copy;
  copy.wtype = stored->wtype;
  CopyWinInfo(stored, &copy);
  return command(&copy);
}

// What Remove does in a window, for a picture that is named.
int remove_named(const WinInfo *wi, RemoveChoice choice) {
  if (wi->name == kNetworkName && wi->cmpnt == 0) {
    DisplayResponse("Network Component 0 must be retained for future updates\n");
    return 0;
  }
  // In a window too these are offered for function pictures with a clause alone.
  if (choice == kDestroyFunction && wi->wtype != kFunctionPicture) {
    orvek_errorf("Sorry! %s is no function\n", wi->name.c_str());
    return 0;
  }
  const bool code = choice == kRemoveCode || choice == kRemoveBoth;
  const bool has_clause = wi->wtype == kFunctionPicture && ExistOrvek(wi) != 0;
  if (code && !has_clause) {
    orvek_errorf("Sorry! %s has no clause with the left side of picture %d\n", wi->name.c_str(),
                 wi->cmpnt);
    return 0;
  }
  const bool picture_alone = choice == kRemovePicture && !has_clause;
  const int agreed = picture_alone ? confirm_picture_removal() : confirm_removal(choice);
  return agreed != 0 && remove_parts(wi, choice) >= 0 ? 1 : 0;
}

} // namespace

int colon_translate(const std::string &argument) {
  std::vector<ColonWord> words = colon_words(argument);
  const bool replaces = words.size() > 1 && words.back().text == "replace" && !words.back().quoted;
  if (!replaces)
    return on_hidden_copy(words, [](WinInfo *wi) { return translate_picture(wi, 0); });
  words.pop_back();
  return on_hidden_copy(words, [](WinInfo *wi) { return ReplaceComponent(wi, 0); });
}

int colon_evaluate(const std::string &argument) {
  return on_hidden_copy(colon_words(argument), GraphToQuery);
}

int colon_remove(const std::string &argument) {
  constexpr std::pair<const char *, RemoveChoice> kWords[] = {{"both", kRemoveBoth},
                                                              {"picture", kRemovePicture},
                                                              {"code", kRemoveCode},
                                                              {"all", kDestroyFunction}};
  std::vector<ColonWord> words = colon_words(argument);
  for (const auto &[word, choice] : kWords) {
    if (words.size() < 2 || words.back().text != word)
      continue;
    words.pop_back();
    return on_hidden_copy(words,
                          [chosen = choice](WinInfo *wi) { return remove_named(wi, chosen); });
  }
  return report_use(":remove NAME [N] picture|code|both|all");
}

int colon_draw(const std::string &argument) {
  std::vector<ColonWord> words = colon_words(argument);
  if (words.size() < 2)
    return report_use(":draw NAME [COMPONENT] FILE.svg");
  const std::string file = words.back().text;
  words.pop_back();
  int component = -1;
  const std::string name = take_name(words, component);
  return draw_to_svg(name.c_str(), component, file.c_str());
}

int draw_named_picture(const std::string &argument, const std::string &file) {
  int component = -1;
  const std::string name = take_name(colon_words(argument), component);
  return draw_to_svg(name.c_str(), component, file.c_str());
}

} // namespace velora
