// The pages of help of the Bayesian classifier.
#include "eval/help.h"

namespace velora {

namespace {

constexpr const char *kDays =
    R"(prob_learn [["sky" "wind" "do"] ["sun" "calm" "walk"] ["sun" "wild" "walk"] )"
    R"(["rain" "calm" "stay"] ["rain" "wild" "stay"] ["sun" "calm" "walk"] )"
    R"(["snow" "wild" "stay"]])";

constexpr HelpRow kRows[] = {
    {"prob_learn",
     "?0 -> bool",
     "Learns from a table, a list of rows or the name of a file with tabs between the fields. A "
     "row "
     "has the values of the features in order and the class at its end. When no features are named "
     "yet, the first row names them. False, learning nothing, when the file cannot be read or a "
     "row "
     "has the wrong number of fields.",
     {{kDays, "True"}, {"prob_getfeat", R"([ "sky" "wind" ])"}},
     "tables that hold values without a text."},
    {"prob_classify",
     "list ?0 -> list (pair str real)",
     "The classes with their probabilities given the values of the features, the most probable "
     "first (naive Bayes with Laplace smoothing). A value that was never seen says nothing.",
     {{kDays, "True"},
      {R"(prob_classify ["sun" "calm"])",
       R"([ ( Pair "walk" #r0.857143) ( Pair "stay" #r0.142857) ])"}},
     "a list of another length than the features, or when no class is known."},
    {"prob_setfeat",
     "list ?0 -> bool",
     "Names the features, and forgets what was learnt of others. False when a name is there twice.",
     {{R"(prob_setfeat ["sky" "wind"])", "True"}},
     "names without a text."},
    {"prob_getfeat",
     "list str",
     "The names of the features.",
     {{R"(prob_setfeat ["sky" "wind"])", "True"}, {"prob_getfeat", R"([ "sky" "wind" ])"}},
     nullptr},
    {"prob_setclass",
     "?0 -> real -> bool",
     "Sets the probability of a class by hand; it stands before the one learnt.",
     {{R"(prob_setclass "walk" #r0.25)", "True"}},
     "numbers below 0 or above 1."},
    {"prob_getclass",
     "?0 -> real",
     "The probability of a class: the one set, or the share of its rows.",
     {{kDays, "True"}, {R"(prob_getclass "walk")", "#r0.500000"}},
     "a class that is not known."},
    {"prob_setcond",
     "?0 -> ?1 -> ?2 -> real -> bool",
     "prob_setcond feature value class p sets by hand how probable the value of the feature is in "
     "the class. False when there is no such feature.",
     {{R"(prob_setfeat ["sky"])", "True"},
      {R"(prob_setcond "sky" "sun" "walk" #r0.9)", "True"},
      {R"(prob_getcond "sky" "sun" "walk")", "#r0.900000"}},
     "numbers below 0 or above 1."},
    {"prob_getcond",
     "?0 -> ?1 -> ?2 -> real",
     "prob_getcond feature value class is how probable the value of the feature is in the class: "
     "the number set, or (n + 1) / (m + v) for n rows of the class's m with that value, and v "
     "different values of the feature.",
     {{kDays, "True"}, {R"(prob_getcond "sky" "sun" "stay")", "#r0.166667"}},
     "a feature, value or class that is not known."},
    {"prob_reset",
     "bool",
     "Forgets features, classes and all that was learnt or set.",
     {{"prob_reset", "True"}, {"prob_getfeat", "nil"}},
     nullptr},
};

} // namespace

constinit const std::span<const HelpRow> help_classifier = kRows;

} // namespace velora
