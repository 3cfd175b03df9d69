// The guard between text and pictures: tells where a picture says something else than the text.
// Clauses are compared as trees up to the names of variables, types by their declarations. Called
// by the builder, and by `:components`.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "core/records.h"
#include "editor/builder_records.h"
#include "editor/model/records.h"

namespace velora {

// What a picture means, read quietly: a clause, or declarations joined by "; ". `text` is empty
// when it means nothing, and `why` says what is wrong then.
struct PictureMeaning {
  std::string text;
  std::string why;
};
PictureMeaning meaning_of_function(const WinInfo *wi, const std::vector<std::string> &formals);
PictureMeaning meaning_of_type(const WinInfo *wi, std::vector<std::string> &declarations);

// A name and types in the form in which declarations are compared: each type as the tree it is, so
// that brackets count where they change it and nowhere else.
std::string declaration_form(const std::string &name, const std::vector<std::string> &types);
// The same of a text "NAME ::= T0 -> T1".
std::string declaration_form(const std::string &declaration);

// The picture as it will be when it is read back from its file.
void read_back(const BuiltPicture &picture, WinInfo &wi);
// True when a built picture means what its text says; otherwise `remark` gets the lines to show.
bool built_truly(Build &build, const BuiltPicture &picture, std::string &remark);

// How a stored picture and the text stand to each other.
enum class ComponentState { same, picture_newer, text_newer, no_picture };
const char *name_of(ComponentState state);

// The state of one function or type, and the numbers of the components that differ.
struct ComponentReport {
  ComponentState state = ComponentState::same;
  std::vector<int> differ;
};

// Compares the stored pictures with the code in memory. Made anew for each look at them.
class ComponentSurvey {
public:
  ComponentSurvey();
  // For a function or type of the user.
  [[nodiscard]] ComponentReport report(const symbol *sym) const;

private:
  const std::vector<WinInfo *> &pictures_of(const std::string &name) const;
  void differs(ComponentReport &report, const WinInfo *wi, bool picture_newer) const;
  ComponentReport report_function(const std::string &name, const func_block *function) const;
  ComponentReport report_type(const std::string &name) const;

  bool pictures_newer_;
  std::map<std::string, std::vector<WinInfo *>> pictures_;       // by name, in the order of numbers
  std::map<std::string, std::vector<std::string>> constructors_; // forms, by type
};

} // namespace velora
