// Built-ins of this family that are still to be written: they leave the expression as it is.
#include "eval/builtins/families.h"

namespace velora {

int bi_prob_learn(node **, int) { return 0; }
int bi_prob_setclass(node **, int) { return 0; }
int bi_prob_getclass(node **, int) { return 0; }
int bi_prob_setcond(node **, int) { return 0; }
int bi_prob_getcond(node **, int) { return 0; }
int bi_prob_classify(node **, int) { return 0; }
int bi_prob_reset(node **, int) { return 0; }
int bi_prob_setfeat(node **, int) { return 0; }
int bi_prob_getfeat(node **, int) { return 0; }

} // namespace velora
