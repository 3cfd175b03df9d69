// The pages of help of databases and types at run time.
#include "eval/help.h"

namespace velora {

namespace {

constexpr HelpRow kRows[] = {
    {"create",
     "str -> bool",
     "Makes an empty database file of that name with \".ddb\" behind it; False when there is one.",
     {{R"(create "demo")", "Created: demo.ddb\nTrue"},
      {R"(create "demo")", "Database: demo already exists\nFalse"}},
     nullptr},
    {"open",
     "str -> bool",
     "Reads a database file; its code is then what commit writes. False when the file cannot be "
     "read or a database is open.",
     {{R"(create "demo")", "Created: demo.ddb\nTrue"},
      {R"(open "demo")", "Loading demo.ddb. . . Loaded\nTrue"},
      {"close", "True"}},
     nullptr},
    {"commit",
     "bool",
     "Writes the user's declarations and clauses to the file of the open database; the file as it "
     "was stays as its \".bak\".",
     {{R"([(create "demo") (open "demo") commit close])",
       "[ Created: demo.ddb\nTrue Loading demo.ddb. . . Loaded\nTrue True True ]"}},
     nullptr},
    {"close",
     "bool",
     "Forgets the open database and all of the user's declarations and clauses, without saving "
     "them.",
     {{"fdec f ::= int ; ; close", "True"}},
     nullptr},
    {"load",
     "str -> bool",
     "Reads a file of declarations, clauses and queries; False when it cannot be opened.",
     {{R"(list_to_file ["+ #1 #2 ;"] "sum.tmp")", "True"},
      {R"(load "sum.tmp")", "Loading: sum.tmp. . .#3 Loaded.\nTrue"}},
     "anything but a string."},
    {"newtdec",
     "str -> str -> bool",
     "Declares a type of that name. The kind is \"enum\" or \"nonlex\" for a type of constants, or "
     "\"typeop # N\" for one that takes N types.",
     {{R"(newtdec "shade" "enum")", "True"}, {R"(newtdec "couple" "typeop # 2")", "True"}},
     "other kinds, texts of more than 80 characters, and names that may not be replaced."},
    {"nlcreate",
     "sym -> str -> ?0",
     "A new constant of an enumerated type, behind those it has. Characters that no name can hold "
     "become _.",
     {{R"(newtdec "shade" "enum")", "True"},
      {R"(nlcreate shade "dark-red")", "dark_red"},
      {"all shade", "[ dark_red ]"}},
     "anything but a user's type of constants and a string, texts that are not one name, and names "
     "that may not be replaced."},
    {"all",
     "?0 -> list ?1",
     "The constants of an enumerated type in the order of their declarations, one at a time as "
     "they "
     "are needed; of a constant, that one and those behind it.",
     {{"all bool", "[ True False ]"}, {"take #3 (all Green)", "[ Green Blue Cyan ]"}},
     "anything but an enumerated type or a constant."},
};

} // namespace

constinit const std::span<const HelpRow> help_database{kRows};

} // namespace velora
