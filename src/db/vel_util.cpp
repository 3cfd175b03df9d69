// The rules for base names and directories of databases.
#include "db/vel_util.h"

#include <filesystem>
#include <initializer_list>
#include <string_view>
#include <system_error>

#include "db/f_dbops.h"
#include "editor/model/needs.h"
#include "platform/desktop.h"
#include "platform/response.h"

namespace velora {

WindowId hControl = 0;

namespace {

std::string current_directory() {
  std::error_code error;
  return std::filesystem::current_path(error).string();
}

// Where the program was started, and where the base name of the current database counts from.
const std::string application_directory = current_directory();
std::string database_directory = application_directory;

// The name less the first of the endings that it has.
std::string without_ending(const std::string &name,
                           std::initializer_list<std::string_view> endings) {
  for (const std::string_view ending : endings)
    if (name.ends_with(ending))
      return name.substr(0, name.size() - ending.size());
  return name;
}

} // namespace

void Make_Base_Name(const std::string &name, std::string &base) {
  base = without_ending(name, {".ddb", ".DDB", ".seg", ".SEG", ".segs", ".SEGS"});
}

// Kept: the upper-case endings of picture files stay in the base name here.
void Setup_Global_DDB_name(const std::string &name) {
  gDDB_basename = without_ending(name, {".ddb", ".DDB", ".seg", ".segs"});
  database_directory = current_directory();
}

void Unset_DDB_name() {
  gDDB_basename.clear();
}

void Unset_DDB_Dir() {
  database_directory = application_directory;
}

void ChangeToDDBDir() {
  std::error_code error;
  std::filesystem::current_path(database_directory, error);
}

void SetControlWinName(const std::string &name) {
  if (hControl != 0)
    gDesktop->set_title(hControl, format_text("CONTROL [%s]", name.c_str()));
}

void setVeloraEye(const std::string &) {}

} // namespace velora
