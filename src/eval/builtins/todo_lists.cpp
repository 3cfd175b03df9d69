// Built-ins of this family that are still to be written: they leave the expression as it is.
#include "eval/builtins/families.h"

namespace velora {

int bi_explode(node **, int) { return 0; }
int bi_foldr(node **, int) { return 0; }
int bi_foldl(node **, int) { return 0; }
int bi_map(node **, int) { return 0; }
int bi_length(node **, int) { return 0; }
int bi_append(node **, int) { return 0; }
int bi_drop(node **, int) { return 0; }
int bi_filter(node **, int) { return 0; }
int bi_factors(node **, int) { return 0; }
int bi_index(node **, int) { return 0; }
int bi_insert(node **, int) { return 0; }
int bi_list_of_int(node **, int) { return 0; }
int bi_max(node **, int) { return 0; }
int bi_min(node **, int) { return 0; }
int bi_mkset(node **, int) { return 0; }
int bi_replicate(node **, int) { return 0; }
int bi_sort(node **, int) { return 0; }
int bi_take(node **, int) { return 0; }
int bi_until(node **, int) { return 0; }
int bi_takewhile(node **, int) { return 0; }
int bi_iterate(node **, int) { return 0; }
int bi_zip(node **, int) { return 0; }
int bi_combine(node **, int) { return 0; }
int bi_makelist(node **, int) { return 0; }
int bi_repeat(node **, int) { return 0; }
int bi_tag(node **, int) { return 0; }
int bi_member(node **, int) { return 0; }

} // namespace velora
