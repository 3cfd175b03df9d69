// Built-ins of this family that are still to be written: they leave the expression as it is.
#include "eval/builtins/families.h"

namespace velora {

int bi_sqrt(node **, int) { return 0; }
int bi_log10(node **, int) { return 0; }
int bi_rand(node **, int) { return 0; }
int bi_srand(node **, int) { return 0; }
int bi_sin(node **, int) { return 0; }
int bi_cos(node **, int) { return 0; }
int bi_tan(node **, int) { return 0; }
int bi_asin(node **, int) { return 0; }
int bi_acos(node **, int) { return 0; }
int bi_atan(node **, int) { return 0; }
int bi_exp(node **, int) { return 0; }
int bi_log(node **, int) { return 0; }
int bi_power(node **, int) { return 0; }
int bi_odd(node **, int) { return 0; }
int bi_not(node **, int) { return 0; }
int bi_comb_i(node **, int) { return 0; }
int bi_comb_k(node **, int) { return 0; }
int bi_comb_s(node **, int) { return 0; }
int bi_comb_b(node **, int) { return 0; }
int bi_comb_c(node **, int) { return 0; }
int bi_mat_solve(node **, int) { return 0; }
int bi_mat_plus(node **, int) { return 0; }
int bi_mat_minus(node **, int) { return 0; }
int bi_mat_times(node **, int) { return 0; }
int bi_even(node **, int) { return 0; }
int bi_mat_trans(node **, int) { return 0; }

} // namespace velora
