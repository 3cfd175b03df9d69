// Built-ins of this family that are still to be written: they leave the expression as it is.
#include "eval/builtins/families.h"

namespace velora {

int bi_inttovar(node **, int) { return 0; }
int bi_vartoint(node **, int) { return 0; }
int bi_implode(node **, int) { return 0; }
int bi_fix(node **, int) { return 0; }
int bi_inttobool(node **, int) { return 0; }
int bi_booltoint(node **, int) { return 0; }
int bi_isbitype(node **, int) { return 0; }
int bi_symtostr(node **, int) { return 0; }
int bi_exptolist(node **, int) { return 0; }
int bi_listtoexp(node **, int) { return 0; }
int bi_exptolistq(node **, int) { return 0; }
int bi_strtosym(node **, int) { return 0; }
int bi_float(node **, int) { return 0; }
int bi_findstr(node **, int) { return 0; }
int bi_countstr(node **, int) { return 0; }
int bi_str_to_words(node **, int) { return 0; }
int bi_words_to_str(node **, int) { return 0; }
int bi_str_to_int(node **, int) { return 0; }
int bi_int_to_str(node **, int) { return 0; }
int bi_str_to_real(node **, int) { return 0; }
int bi_real_to_str(node **, int) { return 0; }
int bi_str_to_words_tab(node **, int) { return 0; }
int bi_str_concat(node **, int) { return 0; }
int bi_str_head(node **, int) { return 0; }
int bi_str_tail(node **, int) { return 0; }
int bi_str_reverse(node **, int) { return 0; }
int bi_str_tag(node **, int) { return 0; }
int bi_str_cons(node **, int) { return 0; }

} // namespace velora
