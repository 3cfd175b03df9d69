// Statements held in strings. The console, the code windows, the translator of pictures and the
// built-ins that assert feed Orvek text through these.
#pragma once

#include <string>

#include "core/records.h"

namespace velora {

// The text of the query that runs, so that it can be run again in a larger space.
extern std::string gQuery;
// Non-zero while the console waits for a query.
extern int greqQuery;
// Non-zero makes cint_query show the prompt "\nQUERY> " after the answer.
extern int gConsolePrompt;

// Each reads one statement, without its closing semicolon, from `text`: a type declaration, a
// function or constructor declaration, a clause, a query. 1 or 0; cint_query answers the result of
// printing. What was being read goes on afterwards.
int cint_tdec(const std::string &text);
int cint_fdec(const std::string &text);
int cint_cdec(const std::string &text);
int cint_fdef(const std::string &text);
// The menus are off while the query runs.
int cint_query(const std::string &text);

// Runs a listing, a load or a query, as a file would hold it. 1 or 0.
int cint_command(const std::string &text);

// The parser calls that the above make, with the first token of the statement read here.
int fdb_tdec();
int fdb_fdec();
int fdb_cdec();
int fdb_fdef();
int fdb_query();
// Loads a file; `title` is that of the window whose text it holds, or null.
int fdb_load(const char *fname, const char *title = nullptr);

// Declares a function or constructor for a picture and tells how it went, by `label`; `old_sym`
// non-null means a declaration again. 1 or 0.
int create_fdec(const std::string &text, const char *label, const symbol *old_sym);
int create_cdec(const std::string &text, const char *label, const symbol *old_sym);

// What is wrong with the brackets and quotes of a query text: "Unmatched square brackets\n",
// "Unmatched round brackets\n", "Unmatched double quotes\n", or null when nothing is.
const char *query_fault(const std::string &text);

// Reads and runs one whole command from the console (pp_refill). 1 done, 0 failed, -1 at the end
// of input. An empty statement counts as done. The text of a query is left in gQuery.
int p_console_command();

// Set when p_console_command refused a query for its brackets or quotes. Who typed it is asked to
// type it again; whoever does so puts this back to 0.
extern int gRetypeQuery;

} // namespace velora
