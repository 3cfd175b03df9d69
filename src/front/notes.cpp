// The table of notes. Called by the parsers, by the notes beside answers and by the shell.
#include "front/notes.h"

#include <iterator>
#include <string_view>

#include "platform/response.h"

namespace velora {

namespace {

struct NoteRow {
  Note which;
  const char *text;
};

constexpr NoteRow kNotes[] = {
    {Note::no_clauses, "%s is declared and has no clauses; the section fdef gives it some"},
    {Note::too_few, "%s takes %s and has %s here, so it waits for more"},
    {Note::too_many, "%s takes %s and has %s here; a call that is an argument stands in brackets"},
    {Note::no_function, "%s is no function; a call begins with its function, as in (+ #1 #2)"},
    {Note::lines_joined, "several lines were read as one query; each query ends with a semicolon"},
    {Note::argument_type, "argument %s of %s is to be %s and is %s"},
    {Note::left_as_it_stands, "%s leaves as it stands: %s"},
    {Note::no_clause_fits, "no clause of %s fits; the nearest is %s"},
    {Note::nesting, "evaluations may nest %s deep; \":nesting 1000\" allows more, and a fold or an "
                    "argument that gathers the result nests less"},
    {Note::swallowed, "%s is read as %s; a blank parts a number from what follows"},
    {Note::tab_swallowed, "%s is read as %s; a tab does not end a number, a blank does"},
    {Note::point_in_integer, "%s is read as %s; reals are written #r%s"},
    {Note::open_text, "this text has no closing quote on its line"},
    {Note::bracket_open, "this %s has no closing %s in its statement"},
    {Note::clauses_lost, "%s is declared again and has lost its %s"},
    {Note::more_arguments, "%s is declared with %s and this clause has %s"},
    {Note::unbound_variable, "?%s stands for nothing: no pattern of this clause binds it"},
    {Note::unknown_type, "%s is no type; the basic ones are int, real, char, str and sym"},
    {Note::type_meant, "%s is no type; did you mean %s?"},
    {Note::type_arguments, "the type %s takes %s"},
    {Note::type_in_brackets, "a type with arguments stands in brackets within another, as in list "
                             "(list int)"},
    {Note::declare_first,
     "a function is declared before it gets clauses: fdec %s ::= int -> int ; ;"},
    {Note::pattern_variable, "variables of a clause are written ?0, ?1: %s ?0 ::= ..."},
    {Note::sign_missing, "between the head of a clause and its body stands ::="},
    {Note::values_of_type,
     "a type of values is made in two steps: tdec %s ::= enum ; ; and cdec %s ::= %s ; ;"},
    {Note::section_open, "the section %s of line %s is not closed; a lone semicolon closes it"},
    {Note::section_unclosed, "the section %s of line %s is not closed at the end"},
    {Note::rest_unread, "a lone semicolon outside a section ends the reading of a file; nothing "
                        "behind line %s of %s is read"},
    {Note::query_in_section,
     "queries are typed behind QUERY>; a lone semicolon closes this section"},
    {Note::command_in_section,
     "commands are typed behind QUERY>; a lone semicolon closes this section"},
    {Note::clause_outside, "a clause stands in a section: fdef %s ::= ... ; ;"},
    {Note::declaration_outside, "a declaration stands in a section: fdec %s ::= ... ; ;"},
    {Note::bare_word, "commands begin with a colon: %s"},
    {Note::comments_dropped, "saving leaves out the comments of %s; %s.bak keeps them"},
    {Note::drawing_seen, "\":graphics save %s drawing.svg\" writes the drawing as a picture; the "
                         "desktop program shows it"},
    {Note::type_clash, "argument %s of %s is to be %s and is %s here"},
    {Note::body_clash, "%s is to give %s and this clause gives %s"},
};

constexpr bool in_order() {
  for (std::size_t i = 0; i < std::size(kNotes); ++i)
    if (kNotes[i].which != static_cast<Note>(i))
      return false;
  return true;
}
static_assert(std::size(kNotes) == static_cast<std::size_t>(Note::count));
static_assert(in_order(), "the table stands in the order of the names");

} // namespace

const char *note_pattern(Note which) {
  return kNotes[static_cast<std::size_t>(which)].text;
}

void advise(Note which, const std::vector<std::string> &words) {
  std::string_view rest = note_pattern(which);
  std::string text("note: ");
  for (const std::string &word : words) {
    const std::size_t at = rest.find("%s");
    if (at == std::string_view::npos)
      break;
    text.append(rest.substr(0, at)).append(word);
    rest.remove_prefix(at + 2);
  }
  show_note(text.append(rest));
}

std::string counted(std::size_t count, const char *thing) {
  return std::to_string(count) + " " + thing + (count == 1 ? "" : "s");
}

} // namespace velora
