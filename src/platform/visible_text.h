// Text on its way to a terminal: what would act on the terminal instead of being read is shown as
// an escape, such as \x1b for the key Esc. Only terminals need it; files and pipes get the bytes.
#pragma once

#include <string>
#include <string_view>

namespace velora {

class VisibleText {
public:
  // What is to be sent for the next piece of text. The bytes of a letter may come one by one: they
  // are kept until the letter is whole.
  std::string add(std::string_view text);
  // What is still kept, when no more of it will come before something else is shown.
  std::string rest();

private:
  std::string begun_; // the first bytes of a letter
};

// The same for a whole text.
std::string visible(std::string_view text);

} // namespace velora
