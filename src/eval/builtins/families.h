// Every built-in function of the system, by family. Each takes the spine (stack[0] the built-in's
// own node, stack[i] the application to its i-th argument) with its length, already checked against
// the arity rule of its row, and answers 1 when it rewrote the expression, else 0.
#pragma once

#include "core/records.h"

namespace velora {

// The dispatcher's own: arithmetic on two numbers, comparison, codes, errors, tracing.
int bi_null(node **stack, int spine_len);
int bi_plus(node **stack, int spine_len);
int bi_minus(node **stack, int spine_len);
int bi_times(node **stack, int spine_len);
int bi_divide(node **stack, int spine_len);
int bi_remainder(node **stack, int spine_len);
int bi_equals(node **stack, int spine_len);
int bi_less(node **stack, int spine_len);
int bi_more(node **stack, int spine_len);
int bi_unequal(node **stack, int spine_len);
int bi_at_most(node **stack, int spine_len);
int bi_at_least(node **stack, int spine_len);
int bi_encode(node **stack, int spine_len);
int bi_decode(node **stack, int spine_len);
int bi_error(node **stack, int spine_len);
int bi_putchar(node **stack, int spine_len);
int bi_getchar(node **stack, int spine_len);
int bi_trace(node **stack, int spine_len);
int bi_greater(node **stack, int spine_len);
int bi_lesser(node **stack, int spine_len);
int bi_hold(node **stack, int spine_len);
int bi_holdn(node **stack, int spine_len);

// Lists.
int bi_explode(node **stack, int spine_len);
int bi_foldr(node **stack, int spine_len);
int bi_foldl(node **stack, int spine_len);
int bi_map(node **stack, int spine_len);
int bi_length(node **stack, int spine_len);
int bi_append(node **stack, int spine_len);
int bi_drop(node **stack, int spine_len);
int bi_filter(node **stack, int spine_len);
int bi_factors(node **stack, int spine_len);
int bi_index(node **stack, int spine_len);
int bi_insert(node **stack, int spine_len);
int bi_list_of_int(node **stack, int spine_len);
int bi_max(node **stack, int spine_len);
int bi_min(node **stack, int spine_len);
int bi_mkset(node **stack, int spine_len);
int bi_replicate(node **stack, int spine_len);
int bi_sort(node **stack, int spine_len);
int bi_take(node **stack, int spine_len);
int bi_until(node **stack, int spine_len);
int bi_takewhile(node **stack, int spine_len);
int bi_iterate(node **stack, int spine_len);
int bi_zip(node **stack, int spine_len);
int bi_combine(node **stack, int spine_len);
int bi_makelist(node **stack, int spine_len);
int bi_repeat(node **stack, int spine_len);
int bi_tag(node **stack, int spine_len);
int bi_member(node **stack, int spine_len);

// Mathematical functions, combinators and matrices.
int bi_sqrt(node **stack, int spine_len);
int bi_log10(node **stack, int spine_len);
int bi_rand(node **stack, int spine_len);
int bi_srand(node **stack, int spine_len);
int bi_sin(node **stack, int spine_len);
int bi_cos(node **stack, int spine_len);
int bi_tan(node **stack, int spine_len);
int bi_asin(node **stack, int spine_len);
int bi_acos(node **stack, int spine_len);
int bi_atan(node **stack, int spine_len);
int bi_exp(node **stack, int spine_len);
int bi_log(node **stack, int spine_len);
int bi_power(node **stack, int spine_len);
int bi_odd(node **stack, int spine_len);
int bi_not(node **stack, int spine_len);
int bi_comb_i(node **stack, int spine_len);
int bi_comb_k(node **stack, int spine_len);
int bi_comb_s(node **stack, int spine_len);
int bi_comb_b(node **stack, int spine_len);
int bi_comb_c(node **stack, int spine_len);
int bi_mat_solve(node **stack, int spine_len);
int bi_mat_plus(node **stack, int spine_len);
int bi_mat_minus(node **stack, int spine_len);
int bi_mat_times(node **stack, int spine_len);
int bi_even(node **stack, int spine_len);
int bi_mat_trans(node **stack, int spine_len);

// Strings and conversions.
int bi_inttovar(node **stack, int spine_len);
int bi_vartoint(node **stack, int spine_len);
int bi_implode(node **stack, int spine_len);
int bi_fix(node **stack, int spine_len);
int bi_inttobool(node **stack, int spine_len);
int bi_booltoint(node **stack, int spine_len);
int bi_isbitype(node **stack, int spine_len);
int bi_symtostr(node **stack, int spine_len);
int bi_exptolist(node **stack, int spine_len);
int bi_listtoexp(node **stack, int spine_len);
int bi_exptolistq(node **stack, int spine_len);
int bi_strtosym(node **stack, int spine_len);
int bi_float(node **stack, int spine_len);
int bi_findstr(node **stack, int spine_len);
int bi_countstr(node **stack, int spine_len);
int bi_str_to_words(node **stack, int spine_len);
int bi_words_to_str(node **stack, int spine_len);
int bi_str_to_int(node **stack, int spine_len);
int bi_int_to_str(node **stack, int spine_len);
int bi_str_to_real(node **stack, int spine_len);
int bi_real_to_str(node **stack, int spine_len);
int bi_str_to_words_tab(node **stack, int spine_len);
int bi_str_concat(node **stack, int spine_len);
int bi_str_head(node **stack, int spine_len);
int bi_str_tail(node **stack, int spine_len);
int bi_str_reverse(node **stack, int spine_len);
int bi_str_tag(node **stack, int spine_len);
int bi_str_cons(node **stack, int spine_len);

// Evaluation control, definitions at run time, the clock.
int bi_matchq(node **stack, int spine_len);
int bi_permuteN(node **stack, int spine_len);
int bi_match(node **stack, int spine_len);
int bi_list_fdefs(node **stack, int spine_len);
int bi_assertl(node **stack, int spine_len);
int bi_deny(node **stack, int spine_len);
int bi_dump(node **stack, int spine_len);
int bi_known(node **stack, int spine_len);
int bi_ftypes(node **stack, int spine_len);
int bi_assert(node **stack, int spine_len);
int bi_argeval(node **stack, int spine_len);
int bi_delay(node **stack, int spine_len);
int bi_alias(node **stack, int spine_len);
int bi_assertq(node **stack, int spine_len);
int bi_print(node **stack, int spine_len);
int bi_compose(node **stack, int spine_len);
int bi_assertql(node **stack, int spine_len);
int bi_denyall(node **stack, int spine_len);
int bi_assertlfdec(node **stack, int spine_len);
int bi_time_year(node **stack, int spine_len);
int bi_time_month(node **stack, int spine_len);
int bi_time_dayofmonth(node **stack, int spine_len);
int bi_time_hour(node **stack, int spine_len);
int bi_time_minute(node **stack, int spine_len);
int bi_time_second(node **stack, int spine_len);
int bi_time_dayofweek(node **stack, int spine_len);
int bi_sysbeep(node **stack, int spine_len);
int bi_quote(node **stack, int spine_len);
int bi_eval(node **stack, int spine_len);
int bi_list_fdefs_eval(node **stack, int spine_len);
int bi_remember(node **stack, int spine_len);
int bi_apply(node **stack, int spine_len);
int bi_seq_left(node **stack, int spine_len);
int bi_seq_right(node **stack, int spine_len);
int bi_tdefs(node **stack, int spine_len);
int bi_prog(node **stack, int spine_len);
int bi_prog1(node **stack, int spine_len);
int bi_progN(node **stack, int spine_len);
int bi_gr_dialog(node **stack, int spine_len);
int bi_forget(node **stack, int spine_len);
int bi_assertlcdec(node **stack, int spine_len);
int bi_user_fun(node **stack, int spine_len);
int bi_throw(node **stack, int spine_len);
int bi_catch(node **stack, int spine_len);

// Reading and writing text files by name.
int bi_file_open_read(node **stack, int spine_len);
int bi_file_open_write(node **stack, int spine_len);
int bi_file_close(node **stack, int spine_len);
int bi_file_read_line(node **stack, int spine_len);
int bi_file_read_word(node **stack, int spine_len);
int bi_file_read_char(node **stack, int spine_len);
int bi_file_write_line(node **stack, int spine_len);
int bi_file_write_string(node **stack, int spine_len);
int bi_file_write_char(node **stack, int spine_len);
int bi_file_files(node **stack, int spine_len);

// Whole files of lines and of tab-separated tables.
int bi_file_filter(node **stack, int spine_len);
int bi_file_takewhile(node **stack, int spine_len);
int bi_file_map(node **stack, int spine_len);
int bi_file_fold(node **stack, int spine_len);
int bi_file_to_list(node **stack, int spine_len);
int bi_list_to_file(node **stack, int spine_len);
int bi_table_to_file(node **stack, int spine_len);
int bi_file_to_table(node **stack, int spine_len);
int bi_file_cut(node **stack, int spine_len);
int bi_lfile_to_tfile(node **stack, int spine_len);

// The Bayesian classifier.
int bi_prob_learn(node **stack, int spine_len);
int bi_prob_setclass(node **stack, int spine_len);
int bi_prob_getclass(node **stack, int spine_len);
int bi_prob_setcond(node **stack, int spine_len);
int bi_prob_getcond(node **stack, int spine_len);
int bi_prob_classify(node **stack, int spine_len);
int bi_prob_reset(node **stack, int spine_len);
int bi_prob_setfeat(node **stack, int spine_len);
int bi_prob_getfeat(node **stack, int spine_len);

// Graphics windows, grid maps, plots and narration.
int bi_gr_open(node **stack, int spine_len);
int bi_gr_close(node **stack, int spine_len);
int bi_gr_moveto(node **stack, int spine_len);
int bi_gr_lineto(node **stack, int spine_len);
int bi_gr_framerect(node **stack, int spine_len);
int bi_gr_frameoval(node **stack, int spine_len);
int bi_gr_forecolor(node **stack, int spine_len);
int bi_gr_backcolor(node **stack, int spine_len);
int bi_gr_fillrect(node **stack, int spine_len);
int bi_gr_filloval(node **stack, int spine_len);
int bi_gr_frametri(node **stack, int spine_len);
int bi_gr_filltri(node **stack, int spine_len);
int bi_gr_text(node **stack, int spine_len);
int bi_gr_delay(node **stack, int spine_len);
int bi_mp_sq(node **stack, int spine_len);
int bi_mp_tri(node **stack, int spine_len);
int bi_mp_cir(node **stack, int spine_len);
int bi_mp_ftri(node **stack, int spine_len);
int bi_nar_open(node **stack, int spine_len);
int bi_nar_close(node **stack, int spine_len);
int bi_nar_text(node **stack, int spine_len);
int bi_nar_line(node **stack, int spine_len);
int bi_mp_sqc(node **stack, int spine_len);
int bi_mp_csq(node **stack, int spine_len);
int bi_mp_reset(node **stack, int spine_len);
int bi_gr_clear(node **stack, int spine_len);
int bi_mp_grid(node **stack, int spine_len);
int bi_mp_line(node **stack, int spine_len);
int bi_mp_move(node **stack, int spine_len);
int bi_gr_dlineto(node **stack, int spine_len);
int bi_mp_dline(node **stack, int spine_len);
int bi_mp_last(node **stack, int spine_len);
int bi_plotit(node **stack, int spine_len);
int bi_gr_displaypict(node **stack, int spine_len);
int bi_gr_setcurrwin(node **stack, int spine_len);
int bi_gc(node **stack, int spine_len);

// Databases and types at run time.
int bi_all(node **stack, int spine_len);
int bi_nlcreate(node **stack, int spine_len);
int bi_create(node **stack, int spine_len);
int bi_open(node **stack, int spine_len);
int bi_commit(node **stack, int spine_len);
int bi_close(node **stack, int spine_len);
int bi_load(node **stack, int spine_len);
int bi_newtdec(node **stack, int spine_len);

// The function network.
int bi_link_build(node **stack, int spine_len);
int bi_link_ffrom(node **stack, int spine_len);
int bi_link_fto(node **stack, int spine_len);
int bi_link_show(node **stack, int spine_len);

} // namespace velora
