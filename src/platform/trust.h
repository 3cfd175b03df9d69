// What a database of a stranger may do. Looking is safe, effects need trust, one's own work is
// trusted silently.
//
// Reading a database that is not trusted makes the session restricted: built-ins that write files,
// call the user's library or open, make, save and close databases first ask, or are refused where
// nobody can be asked. The restriction ends at the return point after the command that closed the
// last such database, never inside a query.
//
// Trusted are the libraries and examples that came with the program, and texts whose sum stands in
// the user's list: those the user said so of, and those the program wrote in a session that was not
// restricted.
#pragma once

#include <string>
#include <string_view>

namespace velora {

// True when every database is trusted (the option --trust).
extern bool gTrustAll;
// True when a person answers questions; set by the programs.
extern bool gPersonAnswers;
// How often an effect was refused; a script in which that happened has failed.
extern int gRefusals;

// The files under `folder` came with the program.
void trust_folder(const std::string &folder);

// Called with the text of a database before its first command runs.
void note_database_read(const std::string &file, std::string_view text);
// Called when all code and pictures of databases have left the memory.
void note_databases_closed();
// Called with a database's text that the program has written.
void note_own_text(std::string_view text);
// Called at the return point.
void settle_trust();

bool session_is_restricted();
// The databases that make it so, for messages: "x.ddb, y.ddb".
std::string restricting_databases();
// What is said of them: "x.ddb is not trusted", "x.ddb, y.ddb are not trusted".
std::string why_restricted();
// Trusts these databases, now and later: the session is not restricted any more.
void lift_restriction();

// An effect that somebody wants. `what` completes "wants to ...", such as "write the file"; `path`
// is what it concerns and may be empty.
struct EffectWish {
  std::string what;
  std::string path;
  bool remember = false; // an answer of Once holds for further wishes that are `remembered`
  bool remembered = false;
};
// True when it may happen; asks where that is possible. What is refused is told in a line.
bool effect_is_allowed(const EffectWish &wish);
// Refuses what no answer can allow, and tells so; false when it was the same as the last refusal of
// this command, which is told once.
bool refuse_effect(const std::string &why);

// The path with links and dots resolved as far as it exists, absolute.
std::string resolved_path(const std::string &name);

// True when `path` (as resolved_path gives it) lies in `folder` or below it.
bool lies_in(const std::string &path, const std::string &folder);

// In scope while a database's text is read.
class DatabaseReading {
public:
  DatabaseReading() { ++depth; }
  ~DatabaseReading() { --depth; }
  DatabaseReading(const DatabaseReading &) = delete;
  DatabaseReading &operator=(const DatabaseReading &) = delete;
  inline static int depth = 0;
};

} // namespace velora
