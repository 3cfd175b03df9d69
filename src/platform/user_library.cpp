// Finding the user's library and calling it. What differs between systems is in the two files
// user_library_posix.cpp and user_library_win32.cpp.
#include "platform/user_library.h"

#include <cstdlib>

#include "platform/response.h"

namespace velora {

namespace {

const VeloraUserTable *usable_table(void *symbol, std::string &why) {
  const auto function = reinterpret_cast<VeloraUserTableFunction>(symbol);
  const VeloraUserTable *table = function();
  if (table == nullptr || table->version != VELORA_USER_VERSION || table->user_fun == nullptr ||
      table->user_free == nullptr) {
    why = "its table is not of this version";
    return nullptr;
  }
  return table;
}

const VeloraUserTable *load_table() {
  const char *file = std::getenv("VELORA_USER_LIBRARY");
  if (file == nullptr || *file == '\0')
    return nullptr;
  std::string why;
  void *symbol = load_library_symbol(file, "velora_user_table", why);
  const VeloraUserTable *table = symbol == nullptr ? nullptr : usable_table(symbol, why);
  if (table == nullptr)
    BeepMsgef(0, "Warning: cannot use the library %s: %s\n", file, why.c_str());
  return table;
}

} // namespace

bool call_user_library(int number, const std::vector<std::string> &texts, std::string &answer) {
  static const VeloraUserTable *const table = load_table();
  if (table == nullptr)
    return false;
  std::vector<const char *> pointers;
  for (const std::string &text : texts)
    pointers.push_back(text.c_str());
  char *text = table->user_fun(number, pointers.data(), static_cast<int>(pointers.size()));
  if (text == nullptr)
    return false;
  answer = text;
  table->user_free(text);
  return true;
}

} // namespace velora
