// The built-ins that work on whole files: lines as strings without their line ends, tables as rows
// of fields between tabs. Called by the dispatcher with the spine.
//
// Files are passed through line by line. What a line needs in the query space is garbage when the
// next one is read, so the size of a file does not matter. An output file follows the rule of
// file_open_write for existing files, and appears only when all of it has been written: a pass that
// is refused, fails or is interrupted takes its lines back.
#include <string>

#include "core/events.h"
#include "eval/bi_support.h"
#include "eval/builtins/bi_cast.h"
#include "eval/builtins/families.h"
#include "eval/builtins/table_rows.h"
#include "eval/builtins/text_files.h"
#include "platform/response.h"

namespace velora {

namespace {

// Texts are not counted in the query space; after so many bytes of lines a collection is due.
constexpr std::size_t kTextBetweenCollections = std::size_t{16} << 20;

int string_arg(node **stack, int i, std::string &text) {
  const node *s = force_arg(stack, i, kString);
  if (s == nullptr)
    return 0;
  text = text_of(s);
  return 1;
}

int can_read(const LineSource &source, const std::string &name) {
  if (!source.is_open())
    DisplayResponsef("Cannot read file %s\n", name.c_str());
  return source.is_open() ? 1 : 0;
}

int open_sink(LineSink &sink, const std::string &name) {
  return file_name_fits(name) ? sink.open(name) : 0;
}

// Ends a pass: the output is kept when the input was read to its end.
int end_pass(const LineSource &source, const std::string &in, LineSink &sink) {
  return source.failed(in) ? 0 : sink.commit();
}

// The two ends of a pass from one file to another.
struct Pass {
  Pass(const std::string &in, const std::string &out) : source(in.c_str()) {
    if (!file_name_fits(in) || !can_read(source, in))
      return;
    if (same_file(in, out) && may_write_again(out))
      DisplayResponse("Safer not to write onto the file being read\n");
    else
      open = open_sink(sink, out) != 0;
  }
  LineSource source;
  LineSink sink;
  bool open = false;
};

// The function argument of a pass, applied to one line after the other.
class LineFunction {
public:
  explicit LineFunction(node *fun) : fun_(fun), special_(ContainVarParFun(fun)) {
    if (!special_)
      full_evaluate(fun);
  }
  // The unevaluated application of the function to a line; not yet reachable.
  node *apply(const std::string &line) {
    bytes_ += line.size();
    if (bytes_ > kTextBetweenCollections) {
      garbage_collect();
      bytes_ = 0;
    }
    Root text(LMakeString(line));
    return special_ ? apply_copies(fun_, text) : LMakeApplyNode(fun_, text);
  }

private:
  node *fun_; // an argument on the spine
  int special_;
  std::size_t bytes_ = 0;
};

// file_filter and file_takewhile: the lines for which the test is True, all or those up to the
// first for which it is not.
int filter_lines(node **stack, bool stop_at_first) {
  std::string in, out, line;
  if (!string_arg(stack, 2, in) || !string_arg(stack, 3, out))
    return 0;
  LineFunction test(bi_arg(stack, 1));
  Pass pass(in, out);
  if (!pass.open)
    return set_bool(stack[3], false);
  while (pass.source.next(line)) {
    Root result(test.apply(line));
    evaluate(result);
    if (result->type != kConstructorNode)
      return 0;
    if (is_true(result) && !pass.sink.write_line(line))
      break;
    if (stop_at_first && !is_true(result))
      break;
  }
  return set_bool(stack[3], end_pass(pass.source, in, pass.sink));
}

// The fields of a list of values that have texts; 0 for any other value.
int row_of_values(const node *list, TableRow &row) {
  row.clear();
  if (!is_list(list))
    return 0;
  for (const node *cell = list; is_cell(cell); cell = cell_tail(cell)) {
    std::string text;
    if (!value_text(cell_head(cell), text) || !fits_field(text))
      return 0;
    row.push_back(text);
  }
  return 1;
}

// The line that stands for one element of a list of strings, or for one row of a table.
int line_of(const node *element, bool table, std::string &line) {
  TableRow row;
  if (!table && element->type == kString) {
    line = text_of(element);
    return 1;
  }
  if (!table || !row_of_values(element, row))
    return 0;
  line = join_row(row);
  return 1;
}

// Every element is looked at before the file is touched.
int write_list(node **stack, bool table) {
  const node *list = force_list(stack, 1);
  std::string out, line;
  if (list == nullptr || !string_arg(stack, 2, out))
    return 0;
  for (const node *cell = list; is_cell(cell); cell = cell_tail(cell))
    if (!line_of(cell_head(cell), table, line))
      return 0;
  LineSink sink;
  if (!open_sink(sink, out))
    return set_bool(stack[2], false);
  for (const node *cell = list; is_cell(cell); cell = cell_tail(cell)) {
    CheckForUserEvents(800);
    line_of(cell_head(cell), table, line);
    if (!sink.write_line(line))
      break;
  }
  return set_bool(stack[2], sink.commit());
}

// The file named by an argument, opened; 0 when it is no string or cannot be read.
int open_source(const std::string &name, LineSource &source) {
  if (!file_name_fits(name))
    return 0;
  source = LineSource(name.c_str());
  return can_read(source, name);
}

} // namespace

int bi_file_filter(node **stack, int) {
  return filter_lines(stack, false);
}

int bi_file_takewhile(node **stack, int) {
  return filter_lines(stack, true);
}

int bi_file_map(node **stack, int) {
  std::string in, out, line;
  if (!string_arg(stack, 2, in) || !string_arg(stack, 3, out))
    return 0;
  LineFunction fun(bi_arg(stack, 1));
  Pass pass(in, out);
  if (!pass.open)
    return set_bool(stack[3], false);
  while (pass.source.next(line)) {
    Root result(fun.apply(line));
    evaluate(result);
    if (result->type != kString)
      return 0;
    if (!pass.sink.write_line(text_of(result)))
      break;
  }
  return set_bool(stack[3], end_pass(pass.source, in, pass.sink));
}

// file_fold op z name = op line_n (... (op line_1 z)), the order of foldl.
int bi_file_fold(node **stack, int) {
  std::string name, line;
  LineSource source;
  if (!string_arg(stack, 3, name) || !open_source(name, source))
    return 0;
  LineFunction op(bi_arg(stack, 1));
  Root value(bi_arg(stack, 2));
  while (source.next(line)) {
    Root applied(op.apply(line));
    value = LMakeApplyNode(applied, value);
    evaluate(value);
  }
  return source.failed(name) ? 0 : set_copy(stack[3], value);
}

int bi_file_to_list(node **stack, int) {
  std::string name, line;
  LineSource source;
  if (!string_arg(stack, 1, name) || !open_source(name, source))
    return 0;
  ListBuilder lines;
  while (source.next(line))
    lines.add_string(line);
  return source.failed(name) ? 0 : lines.write_over(stack[1]);
}

int bi_list_to_file(node **stack, int) {
  return write_list(stack, false);
}

int bi_table_to_file(node **stack, int) {
  return write_list(stack, true);
}

int bi_file_to_table(node **stack, int) {
  std::string name, line;
  LineSource source;
  if (!string_arg(stack, 1, name) || !open_source(name, source))
    return 0;
  ListBuilder table;
  while (source.next(line)) {
    ListBuilder row;
    for (const std::string &field : split_row(line))
      row.add_string(field);
    table.add_list(row);
  }
  return source.failed(name) ? 0 : table.write_over(stack[1]);
}

// file_cut first last in out: the lines numbered first to last, the first line being 1.
int bi_file_cut(node **stack, int) {
  const node *first = force_arg(stack, 1, kInteger);
  const node *last = force_arg(stack, 2, kInteger);
  std::string in, out, line;
  if (first == nullptr || last == nullptr || first->val.i < 1 || !string_arg(stack, 3, in) ||
      !string_arg(stack, 4, out))
    return 0;
  Pass pass(in, out);
  if (!pass.open)
    return set_bool(stack[4], false);
  while (pass.source.lines_read() < last->val.i && pass.source.next(line))
    if (pass.source.lines_read() >= first->val.i && !pass.sink.write_line(line))
      break;
  return set_bool(stack[4], end_pass(pass.source, in, pass.sink));
}

// From a file of printed lists, one a line, to a table.
int bi_lfile_to_tfile(node **stack, int) {
  std::string in, out, line;
  if (!string_arg(stack, 1, in) || !string_arg(stack, 2, out))
    return 0;
  Pass pass(in, out);
  if (!pass.open)
    return set_bool(stack[2], false);
  while (pass.source.next(line))
    if (!pass.sink.write_line(join_row(list_line_fields(line))))
      break;
  return set_bool(stack[2], end_pass(pass.source, in, pass.sink));
}

} // namespace velora
