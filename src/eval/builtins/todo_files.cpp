// Built-ins of this family that are still to be written: they leave the expression as it is.
#include "eval/builtins/families.h"

namespace velora {

int bi_file_open_read(node **, int) { return 0; }
int bi_file_open_write(node **, int) { return 0; }
int bi_file_close(node **, int) { return 0; }
int bi_file_read_line(node **, int) { return 0; }
int bi_file_read_word(node **, int) { return 0; }
int bi_file_read_char(node **, int) { return 0; }
int bi_file_write_line(node **, int) { return 0; }
int bi_file_write_string(node **, int) { return 0; }
int bi_file_write_char(node **, int) { return 0; }
int bi_file_files(node **, int) { return 0; }

} // namespace velora
