// Built-ins of this family that are still to be written: they leave the expression as it is.
#include "eval/builtins/families.h"

namespace velora {

int bi_matchq(node **, int) { return 0; }
int bi_permuteN(node **, int) { return 0; }
int bi_match(node **, int) { return 0; }
int bi_list_fdefs(node **, int) { return 0; }
int bi_assertl(node **, int) { return 0; }
int bi_deny(node **, int) { return 0; }
int bi_dump(node **, int) { return 0; }
int bi_known(node **, int) { return 0; }
int bi_ftypes(node **, int) { return 0; }
int bi_assert(node **, int) { return 0; }
int bi_argeval(node **, int) { return 0; }
int bi_delay(node **, int) { return 0; }
int bi_alias(node **, int) { return 0; }
int bi_assertq(node **, int) { return 0; }
int bi_print(node **, int) { return 0; }
int bi_compose(node **, int) { return 0; }
int bi_assertql(node **, int) { return 0; }
int bi_denyall(node **, int) { return 0; }
int bi_assertlfdec(node **, int) { return 0; }
int bi_time_year(node **, int) { return 0; }
int bi_time_month(node **, int) { return 0; }
int bi_time_dayofmonth(node **, int) { return 0; }
int bi_time_hour(node **, int) { return 0; }
int bi_time_minute(node **, int) { return 0; }
int bi_time_second(node **, int) { return 0; }
int bi_time_dayofweek(node **, int) { return 0; }
int bi_sysbeep(node **, int) { return 0; }
int bi_quote(node **, int) { return 0; }
int bi_eval(node **, int) { return 0; }
int bi_list_fdefs_eval(node **, int) { return 0; }
int bi_remember(node **, int) { return 0; }
int bi_apply(node **, int) { return 0; }
int bi_seq_left(node **, int) { return 0; }
int bi_seq_right(node **, int) { return 0; }
int bi_tdefs(node **, int) { return 0; }
int bi_prog(node **, int) { return 0; }
int bi_prog1(node **, int) { return 0; }
int bi_progN(node **, int) { return 0; }
int bi_gr_dialog(node **, int) { return 0; }
int bi_forget(node **, int) { return 0; }
int bi_assertlcdec(node **, int) { return 0; }
int bi_user_fun(node **, int) { return 0; }
int bi_throw(node **, int) { return 0; }
int bi_catch(node **, int) { return 0; }

} // namespace velora
