// Narration, plots and the collector. What is narrated goes to the narrative window in plain form:
// texts without quotes, numbers without marks. Called by the dispatcher.
#include <cmath>

#include "core/events.h"
#include "eval/bi_support.h"
#include "eval/builtins/families.h"
#include "eval/graphics_windows.h"
#include "eval/plot.h"
#include "platform/desktop.h"
#include "platform/response.h"

namespace velora {

namespace {

// Sends what is printed to the narrative window while in scope.
class Narration {
public:
  Narration() : former_(gNarPrint) { gNarPrint = 1; }
  ~Narration() { gNarPrint = former_; }
  Narration(const Narration &) = delete;
  Narration &operator=(const Narration &) = delete;

private:
  int former_;
};

bool finite_number(const node *n, double *value) {
  if (n->type == kInteger)
    *value = n->val.i;
  else if (n->type == kReal)
    *value = static_cast<double>(n->val.r);
  else
    return false;
  return std::isfinite(*value);
}

// The two parts of a pair, or of a list of two; false when `n` is neither.
bool two_parts(const node *n, const node **first, const node **second) {
  if (!is_apply(n) || !is_apply(n->val.a.a1))
    return false;
  if (is_cons_node(n->val.a.a1->val.a.a1, kPair)) {
    *first = n->val.a.a1->val.a.a2;
    *second = n->val.a.a2;
    return true;
  }
  if (!is_cell(n) || !is_cell(cell_tail(n)) || !is_nil(cell_tail(cell_tail(n))))
    return false;
  *first = cell_head(n);
  *second = cell_head(cell_tail(n));
  return true;
}

// One element of the data: y, or x and y, or a name and y.
bool read_value(const node *n, PlotValue *value, bool *named) {
  *named = false;
  if (finite_number(n, &value->y))
    return true;
  const node *first = nullptr;
  const node *second = nullptr;
  if (!two_parts(n, &first, &second) || !finite_number(second, &value->y))
    return false;
  if (finite_number(first, &value->x))
    return true;
  *named = first->type == kString || first->type == kConstructorNode;
  if (first->type == kString)
    value->name = text_of(first);
  else if (*named)
    value->name = first->val.cs->name;
  return *named;
}

// The data of a plot; false unless it is a list of one sort of element, with at least one.
bool read_data(const node *list, PlotData *data) {
  for (; is_cell(list); list = cell_tail(list)) {
    CheckForUserEvents(800);
    PlotValue value;
    value.x = static_cast<double>(data->values.size() + 1);
    bool named = false;
    if (!read_value(cell_head(list), &value, &named))
      return false;
    if (!data->values.empty() && named != data->named)
      return false;
    data->named = named;
    data->values.push_back(std::move(value));
  }
  return !data->values.empty();
}

// The texts of a plot: a title, or a list of title and labels of the axes.
bool read_texts(const node *n, PlotTexts *texts) {
  if (n->type == kString) {
    texts->title = text_of(n);
    return true;
  }
  std::string *const places[] = {&texts->title, &texts->across, &texts->up};
  for (std::string *place : places) {
    if (!is_cell(n))
      break;
    if (cell_head(n)->type != kString)
      return false;
    *place = text_of(cell_head(n));
    n = cell_tail(n);
  }
  return is_nil(n);
}

bool read_kind(std::string_view name, PlotKind *kind) {
  if (name == "line")
    *kind = PlotKind::line;
  else if (name == "points")
    *kind = PlotKind::points;
  else if (name == "bar")
    *kind = PlotKind::bars;
  else
    return false;
  return true;
}

} // namespace

// plotit kind texts data draws a plot in a new graphics window.
int bi_plotit(node **stack, int) {
  const node *kind_name = force_arg(stack, 1, kString);
  PlotKind kind{};
  if (kind_name == nullptr || !read_kind(text_of(kind_name), &kind))
    return 0;
  full_evaluate(bi_arg(stack, 2));
  PlotTexts texts;
  if (!read_texts(bi_arg(stack, 2), &texts))
    return 0;
  const node *list = force_list(stack, 3);
  PlotData data;
  if (list == nullptr || !read_data(list, &data))
    return 0;
  BgrWinInfo *info = open_graphics(kPlotWidth, kPlotHeight);
  if (info != nullptr) {
    draw_plot(*info, kind, texts, data);
    gDesktop->invalidate(info->win);
  }
  return set_bool(stack[3], info != nullptr);
}

int bi_nar_open(node **stack, int) {
  return set_bool(stack[0], open_narrative() != 0);
}

int bi_nar_close(node **stack, int) {
  return set_bool(stack[0], close_narrative() != 0);
}

// nar_text x writes x to the narrative window, which opens if need be.
int bi_nar_text(node **stack, int) {
  if (gNarWind == 0 && open_narrative() == 0)
    return set_bool(stack[1], false);
  {
    const Narration narration;
    print(bi_arg(stack, 1));
  }
  return set_bool(stack[1], true);
}

// nar_line e1 ... en writes all of them, which may be none, and ends the line.
int bi_nar_line(node **stack, int spine_len) {
  if (gNarWind == 0 && open_narrative() == 0)
    return set_bool(stack[spine_len], false);
  {
    const Narration narration;
    for (int i = 1; i <= spine_len; ++i)
      print(bi_arg(stack, i));
    orvek_print("\n");
  }
  return set_bool(stack[spine_len], true);
}

int bi_gc(node **stack, int) {
  garbage_collect();
  return set_bool(stack[0], true);
}

} // namespace velora
