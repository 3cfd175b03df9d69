// The notes: lines beside a message or an answer that say what the next step may be. Every note
// stands once, in the table of notes.cpp, and whoever has one to give names it. A note never takes
// the place of a message and changes nothing; `--no-notes` leaves them all out.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace velora {

enum class Note {
  // Beside an answer that stayed as it is.
  no_clauses,
  too_few,
  too_many,
  no_function,
  lines_joined,
  argument_type,
  left_as_it_stands,
  no_clause_fits,
  nesting,
  // Beside literals and texts.
  swallowed,
  tab_swallowed,
  point_in_integer,
  open_text,
  bracket_open,
  // Beside declarations and clauses.
  clauses_lost,
  more_arguments,
  unbound_variable,
  unknown_type,
  type_meant,
  type_arguments,
  type_in_brackets,
  declare_first,
  pattern_variable,
  sign_missing,
  values_of_type,
  // Beside what is typed in the wrong place.
  section_open,
  section_unclosed,
  rest_unread,
  query_in_section,
  command_in_section,
  clause_outside,
  declaration_outside,
  bare_word,
  // Beside files and checks.
  comments_dropped,
  drawing_seen,
  type_clash,
  body_clash,
  count
};

// Shows a note with its words put in, in order, where its text has "%s".
void advise(Note which, const std::vector<std::string> &words = {});
// The text of a note, without "note: ", for those who check that each is explained.
const char *note_pattern(Note which);

// "1 argument", "3 arguments".
std::string counted(std::size_t count, const char *thing);

} // namespace velora
