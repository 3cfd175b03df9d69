// Matrices: lists of rows of numbers. mat_plus and mat_minus work on the lists themselves; the
// others copy the values into an array of single-precision numbers and build a new list.
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <new>
#include <vector>

#include "core/clock.h"
#include "core/events.h"
#include "eval/bi_support.h"
#include "eval/builtins/bi_maths.h"
#include "eval/builtins/families.h"
#include "platform/response.h"

namespace velora {

namespace {

// Rows and columns of a matrix argument; no rows when it is none.
struct Shape {
  std::size_t rows = 0;
  std::size_t cols = 0;
  friend bool operator==(const Shape &, const Shape &) = default;
};

// Number of the numbers in a row; 0 when something else stands among them.
std::size_t row_length(const node *row) {
  if (is_list(row) == 0)
    return 0;
  std::size_t length = 0;
  for (; is_cell(row); row = cell_tail(row), ++length) {
    CheckForUserEvents(800);
    if (!is_number(cell_head(row)))
      return 0;
  }
  return length;
}

// Forces the i-th argument and looks at it: rows of numbers, all of the length of the first, at
// least one of each.
Shape mat_verify(node **stack, int i) {
  const node *matrix = force_list(stack, i);
  Shape shape;
  if (matrix == nullptr || !is_cell(matrix))
    return {};
  shape.cols = row_length(cell_head(matrix));
  for (; is_cell(matrix); matrix = cell_tail(matrix), ++shape.rows)
    if (row_length(cell_head(matrix)) != shape.cols)
      return {};
  return shape.cols == 0 ? Shape{} : shape;
}

// Kept: every real that enters a matrix is rounded to six decimals.
float rounded(float r) {
  char text[64];
  std::snprintf(text, sizeof text, "%f", static_cast<double>(r));
  return std::strtof(text, nullptr);
}

// A work array of rows. Empty when there was no memory for it, which has been reported.
class Matrix {
public:
  explicit Matrix(Shape shape)
      : cols_(shape.cols), cells_(new (std::nothrow) float[shape.rows * shape.cols]()) {
    if (cells_ == nullptr)
      DisplayResponse("Warning: Query too large for matrix functions\n");
  }
  explicit operator bool() const { return cells_ != nullptr; }
  float *operator[](std::size_t row) { return cells_.get() + row * cols_; }

private:
  std::size_t cols_;
  std::unique_ptr<float[]> cells_;
};

void mat_store(const node *list, Matrix &matrix) {
  for (std::size_t j = 0; is_cell(list); list = cell_tail(list), ++j) {
    float *place = matrix[j];
    for (const node *cell = cell_head(list); is_cell(cell); cell = cell_tail(cell)) {
      CheckForUserEvents(800); // the rounding takes its time
      const node *value = cell_head(cell);
      *place++ = value->type == kInteger ? static_cast<float>(value->val.i) : rounded(value->val.r);
    }
  }
}

} // namespace

// --- sums in place -----------------------------------------------------------------------------

namespace {

bool is_shared_code(const node *n) {
  return (n->flags & kStaticNode) != 0;
}

bool owns_cells(const node *list) {
  for (; is_cell(list); list = cell_tail(list))
    if (is_shared_code(list) || is_shared_code(list->val.a.a1))
      return false;
  return true;
}

node *with_own_cells(const node *list) {
  ListBuilder own;
  for (; is_cell(list); list = cell_tail(list))
    own.add_shared(cell_head(list));
  return own.finish();
}

// The matrix itself when its cells may be written; else one that shares the rows that may be.
node *own_matrix(node *matrix) {
  Root own(owns_cells(matrix) ? matrix : with_own_cells(matrix));
  for (node *cell = own; is_cell(cell); cell = cell_tail(cell))
    if (!owns_cells(cell_head(cell)))
      cell->val.a.a1->val.a.a2 = with_own_cells(cell_head(cell));
  return own;
}

// Every element of the second matrix gives way to the sum or difference, in the cell where it
// stands, so whoever holds that matrix sees the result.
int add_in_place(node **stack, int op) {
  const Shape shape = mat_verify(stack, 1);
  if (shape.rows == 0 || mat_verify(stack, 2) != shape)
    return 0;
  const Root own(own_matrix(bi_arg(stack, 2)));
  if (!is_shared_code(stack[2]))
    stack[2]->val.a.a2 = own;
  const node *left = bi_arg(stack, 1);
  for (node *right = own; is_cell(right); right = cell_tail(right), left = cell_tail(left)) {
    const node *a = cell_head(left);
    for (node *b = cell_head(right); is_cell(b); b = cell_tail(b), a = cell_tail(a)) {
      CheckForUserEvents(800);
      node *result = LMakeInteger(0);
      bi_arith(op, cell_head(a), cell_head(b), result);
      b->val.a.a1->val.a.a2 = result;
      note_change();
    }
  }
  return set_copy(stack[2], own);
}

} // namespace

int bi_mat_plus(node **stack, int) {
  return add_in_place(stack, kPlusOp);
}
int bi_mat_minus(node **stack, int) {
  return add_in_place(stack, kMinusOp);
}

// --- product and transposition -----------------------------------------------------------------

int bi_mat_times(node **stack, int) {
  const Shape a = mat_verify(stack, 1);
  if (a.rows == 0)
    return 0;
  const Shape b = mat_verify(stack, 2);
  if (b.rows != a.cols)
    return 0;
  Matrix gMMult1(a);
  Matrix gMMult2(b);
  if (!gMMult1 || !gMMult2)
    return 0;
  mat_store(bi_arg(stack, 1), gMMult1);
  mat_store(bi_arg(stack, 2), gMMult2);
  ListBuilder rows;
  for (std::size_t j = 0; j < a.rows; ++j) {
    ListBuilder row;
    for (std::size_t k = 0; k < b.cols; ++k) {
      CheckForUserEvents(800);
      float sum = gMMult1[j][0] * gMMult2[0][k];
      for (std::size_t i = 1; i < a.cols; ++i)
        sum += gMMult1[j][i] * gMMult2[i][k];
      row.add_real(sum);
    }
    rows.add_list(row);
  }
  return rows.write_over(stack[2]);
}

// The elements keep their kinds.
int bi_mat_trans(node **stack, int) {
  const Shape shape = mat_verify(stack, 1);
  if (shape.rows == 0)
    return 0;
  std::vector<const node *> cursors;
  for (const node *cell = bi_arg(stack, 1); is_cell(cell); cell = cell_tail(cell))
    cursors.push_back(cell_head(cell));
  ListBuilder rows;
  for (std::size_t k = 0; k < shape.cols; ++k) {
    ListBuilder row;
    for (const node *&cursor : cursors) {
      CheckForUserEvents(800);
      row.add_shared(cell_head(cursor));
      cursor = cell_tail(cursor);
    }
    rows.add_list(row);
  }
  return rows.write_over(stack[1]);
}

// --- linear systems ----------------------------------------------------------------------------

namespace {

// A pivot must be larger than this.
constexpr double gDELTA = 1e-6;

enum Outcome { kSolved, kUnderdetermined, kConflict };

bool is_pivot(float value) {
  return std::fabs(static_cast<double>(value)) > gDELTA;
}

// Brings an entry that can be divided by to the diagonal of column k; false when there is none.
bool find_pivot(Matrix &gMatrix, Shape shape, std::size_t k) {
  for (std::size_t j = k; j < shape.rows; ++j) {
    if (!is_pivot(gMatrix[j][k]))
      continue;
    if (j != k)
      std::swap_ranges(gMatrix[j], gMatrix[j] + shape.cols, gMatrix[k]);
    return true;
  }
  return false;
}

// row j = row j - (entry / pivot) * pivot row, for every other row j.
void eliminate_column(Matrix &gMatrix, Shape shape, std::size_t k) {
  for (std::size_t j = 0; j < shape.rows; ++j) {
    CheckForUserEvents(800);
    if (j == k || gMatrix[j][k] == 0)
      continue;
    const float factor = gMatrix[j][k] / gMatrix[k][k];
    for (std::size_t i = 0; i < shape.cols; ++i)
      gMatrix[j][i] -= factor * gMatrix[k][i];
  }
}

// Gauss-Jordan elimination. A system with fewer rows than unknowns is left as it is.
Outcome eliminate(Matrix &gMatrix, Shape shape) {
  if (shape.cols > shape.rows + 1)
    return kUnderdetermined;
  for (std::size_t k = 0; k + 1 < shape.cols; ++k) {
    if (!find_pivot(gMatrix, shape, k))
      return kConflict;
    eliminate_column(gMatrix, shape, k);
  }
  Outcome outcome = kSolved;
  for (std::size_t k = 0; k + 1 < shape.cols; ++k) {
    if (gMatrix[k][k] != 0)
      continue;
    if (gMatrix[k][shape.cols - 1] != 0)
      return kConflict;
    outcome = kUnderdetermined;
  }
  return outcome;
}

// [ [x1 x2 ...] ], each right-hand side divided by its diagonal entry.
int write_solutions(node *target, Matrix &gMatrix, Shape shape) {
  ListBuilder solutions;
  for (std::size_t k = 0; k + 1 < shape.cols; ++k)
    solutions.add_real(gMatrix[k][shape.cols - 1] / gMatrix[k][k]);
  ListBuilder result;
  result.add_list(solutions);
  return result.write_over(target);
}

// [ nil row row ... ], each row divided by its pivot where it has one.
int write_reduced_rows(node *target, Matrix &gMatrix, Shape shape) {
  ListBuilder result;
  ListBuilder none;
  result.add_list(none);
  for (std::size_t j = 0; j < shape.rows; ++j) {
    const float pivot = j + 1 < shape.cols && gMatrix[j][j] != 0 ? gMatrix[j][j] : 1;
    ListBuilder row;
    for (std::size_t i = 0; i < shape.cols; ++i)
      row.add_real(gMatrix[j][i] / pivot);
    result.add_list(row);
  }
  return result.write_over(target);
}

} // namespace

int bi_mat_solve(node **stack, int) {
  const Shape shape = mat_verify(stack, 1);
  if (shape.rows == 0)
    return 0;
  Matrix gMatrix(shape);
  if (!gMatrix)
    return 0;
  mat_store(bi_arg(stack, 1), gMatrix);
  switch (eliminate(gMatrix, shape)) {
  case kSolved:
    return write_solutions(stack[1], gMatrix, shape);
  case kUnderdetermined:
    return write_reduced_rows(stack[1], gMatrix, shape);
  default:
    DisplayResponse("No solution, conflicting data\n");
    return 0;
  }
}

} // namespace velora
