// Built-ins of this family that are still to be written: they leave the expression as it is.
#include "eval/builtins/families.h"

namespace velora {

int bi_null(node **, int) { return 0; }
int bi_plus(node **, int) { return 0; }
int bi_minus(node **, int) { return 0; }
int bi_times(node **, int) { return 0; }
int bi_divide(node **, int) { return 0; }
int bi_remainder(node **, int) { return 0; }
int bi_equals(node **, int) { return 0; }
int bi_less(node **, int) { return 0; }
int bi_more(node **, int) { return 0; }
int bi_unequal(node **, int) { return 0; }
int bi_at_most(node **, int) { return 0; }
int bi_at_least(node **, int) { return 0; }
int bi_encode(node **, int) { return 0; }
int bi_decode(node **, int) { return 0; }
int bi_error(node **, int) { return 0; }
int bi_putchar(node **, int) { return 0; }
int bi_getchar(node **, int) { return 0; }
int bi_trace(node **, int) { return 0; }
int bi_greater(node **, int) { return 0; }
int bi_lesser(node **, int) { return 0; }
int bi_hold(node **, int) { return 0; }
int bi_holdn(node **, int) { return 0; }

} // namespace velora
