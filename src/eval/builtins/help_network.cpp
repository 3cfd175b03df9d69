// The pages of help of the function network.
#include "eval/help.h"

namespace velora {

namespace {

constexpr const char *kSaved =
    R"(fdec a ::= int -> int ; b ::= int -> int ; ; fdef a ?0 ::= b ?0 ; b ?0 ::= ?0 ; ; )"
    R"([(create "net") (open "net") commit])";
constexpr const char *kSavedAnswer =
    "[ Created: net.ddb\nTrue Loading net.ddb. . . Loaded\nTrue True ]";

constexpr HelpRow kRows[] = {
    {"link_build",
     "linkage",
     "The call links of the open database, read from its file: which names the clauses of each "
     "function mention. They are read once, until the database is saved from a menu or closed.",
     {{kSaved, kSavedAnswer}, {"link_build", "( Linkage #1)"}, {"close", "True"}},
     nullptr},
    {"link_ffrom",
     "linkage -> sym -> linkage",
     "The links among a set that can be reached from a function: what it calls, what that calls, "
     "and so on.",
     {{kSaved, kSavedAnswer},
      {"[(link_show (link_ffrom link_build a)) (link_show (link_ffrom link_build b))]",
       "[ True False ]"},
      {"close", "True"}},
     "a set that is not a Linkage, and what is not a name."},
    {"link_fto",
     "linkage -> sym -> linkage",
     "The links among a set that lead to a function: what calls it, what calls that, and so on.",
     {{kSaved, kSavedAnswer},
      {"[(link_show (link_fto link_build a)) (link_show (link_fto link_build b))]",
       "[ False True ]"},
      {"close", "True"}},
     "a set that is not a Linkage, and what is not a name."},
    {"link_show",
     "linkage -> bool",
     "Shows a set of links as a picture of boxes in levels; False when the set is empty.",
     {{kSaved, kSavedAnswer}, {"link_show link_build", "True"}, {"close", "True"}},
     "a set that is not a Linkage."},
};

} // namespace

constinit const std::span<const HelpRow> help_network{kRows};

} // namespace velora
