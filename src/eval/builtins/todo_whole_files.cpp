// Built-ins of this family that are still to be written: they leave the expression as it is.
#include "eval/builtins/families.h"

namespace velora {

int bi_file_filter(node **, int) { return 0; }
int bi_file_takewhile(node **, int) { return 0; }
int bi_file_map(node **, int) { return 0; }
int bi_file_fold(node **, int) { return 0; }
int bi_file_to_list(node **, int) { return 0; }
int bi_list_to_file(node **, int) { return 0; }
int bi_table_to_file(node **, int) { return 0; }
int bi_file_to_table(node **, int) { return 0; }
int bi_file_cut(node **, int) { return 0; }
int bi_lfile_to_tfile(node **, int) { return 0; }

} // namespace velora
