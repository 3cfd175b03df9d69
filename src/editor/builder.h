// Pictures from text: the declarations and clauses of a database file become one picture for each
// type and each clause. The text is read by the builder's own parser; no symbol of the language is
// made or changed. Called by the menu command "Build Segments..." and by `:build`.
#pragma once

#include <string>

namespace velora {

// The whole command of the menu: asks where to, saves the text of the language windows there and
// builds its pictures. Progress and errors are told in the console.
void ddb_to_segs();

// What becomes of pictures whose boxes lie on each other or among the arguments: nothing, they are
// laid out anew, or the user is asked.
enum class Tidying { never, always, ask };

// Builds NAME.seg from NAME.ddb; the old picture file becomes its ".bak", and boxes that stood in
// it keep their places. Each picture that means something else than its text is told. 1, or 0
// after a message; abandons the command when a type or clause cannot be read, with the picture
// file as it was.
int build_segments(const std::string &name, Tidying tidying);

// Builds NAME.seg in the same way from the text of another file, which becomes NAME.ddb. Neither is
// written before the text was read and its pictures are made.
int build_from_file(const std::string &name, const std::string &file, const std::string &text,
                    Tidying tidying);

// Writes a text as NAME.ddb; the old file becomes its ".bak". 1 or 0, with a message either way.
int save_code(const std::string &name, const std::string &text);

// True when nothing of that name stands or is open, or the user wants it built over. `in_place`
// tells that the text stands already and stays.
bool may_build_over(const std::string &name, bool in_place);

} // namespace velora
