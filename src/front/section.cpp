// What was begun inside a section that does not belong there.
#include "front/section.h"

#include <cctype>

#include "core/symbols.h"
#include "front/notes.h"
#include "front/parse.h"
#include "front/putils.h"
#include "front/source.h"
#include "platform/trust.h"

namespace velora {

namespace {

bool begins_section(int token) {
  return token == kTokTdec || token == kTokCdec || token == kTokFdec || token == kTokFdef;
}

// A statement of every section defines something, so what calls a function and does not is a query.
bool looks_like_query() {
  if (pp_token == kTokOpen || pp_token == kTokOpenList)
    return !definition_follows();
  if (pp_token != kTokName || definition_follows() || variable_follows())
    return false;
  const symbol *s = find_symbol(pp_str_val, static_cast<std::size_t>(pp_str_len));
  return s != nullptr && (s->stype & kFunctionBit) != 0;
}

} // namespace

Section::Section() : keyword_(pp_start), line_(pp_line_number()) {}

void Section::note_unclosed() const {
  // Of a database that ends early its reader tells.
  if (DatabaseReading::depth == 0 && (pp_file != nullptr || reading_console()))
    advise(Note::section_unclosed, {keyword_, std::to_string(line_)});
}

SectionStatement::SectionStatement(const Section &section)
    : section_(section), first_(pp_token),
      command_(pp_token == kTokName && *pp_start == ':' &&
               std::isalpha(static_cast<unsigned char>(pp_start[1])) != 0),
      query_(looks_like_query()) {}

void SectionStatement::note_misplaced() const {
  if (command_)
    advise(Note::command_in_section);
  else if (begins_section(first_) || first_ == kTokLload || first_ == kTokLambda)
    advise(Note::section_open, {section_.keyword_, std::to_string(section_.line_)});
  else if (query_)
    advise(Note::query_in_section);
}

} // namespace velora
