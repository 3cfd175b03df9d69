// Built-ins of this family that are still to be written: they leave the expression as it is.
#include "eval/builtins/families.h"

namespace velora {

int bi_gr_open(node **, int) { return 0; }
int bi_gr_close(node **, int) { return 0; }
int bi_gr_moveto(node **, int) { return 0; }
int bi_gr_lineto(node **, int) { return 0; }
int bi_gr_framerect(node **, int) { return 0; }
int bi_gr_frameoval(node **, int) { return 0; }
int bi_gr_forecolor(node **, int) { return 0; }
int bi_gr_backcolor(node **, int) { return 0; }
int bi_gr_fillrect(node **, int) { return 0; }
int bi_gr_filloval(node **, int) { return 0; }
int bi_gr_frametri(node **, int) { return 0; }
int bi_gr_filltri(node **, int) { return 0; }
int bi_gr_text(node **, int) { return 0; }
int bi_gr_delay(node **, int) { return 0; }
int bi_mp_sq(node **, int) { return 0; }
int bi_mp_tri(node **, int) { return 0; }
int bi_mp_cir(node **, int) { return 0; }
int bi_mp_ftri(node **, int) { return 0; }
int bi_nar_open(node **, int) { return 0; }
int bi_nar_close(node **, int) { return 0; }
int bi_nar_text(node **, int) { return 0; }
int bi_nar_line(node **, int) { return 0; }
int bi_mp_sqc(node **, int) { return 0; }
int bi_mp_csq(node **, int) { return 0; }
int bi_mp_reset(node **, int) { return 0; }
int bi_gr_clear(node **, int) { return 0; }
int bi_mp_grid(node **, int) { return 0; }
int bi_mp_line(node **, int) { return 0; }
int bi_mp_move(node **, int) { return 0; }
int bi_gr_dlineto(node **, int) { return 0; }
int bi_mp_dline(node **, int) { return 0; }
int bi_mp_last(node **, int) { return 0; }
int bi_plotit(node **, int) { return 0; }
int bi_gr_displaypict(node **, int) { return 0; }
int bi_gr_setcurrwin(node **, int) { return 0; }
int bi_gc(node **, int) { return 0; }

} // namespace velora
