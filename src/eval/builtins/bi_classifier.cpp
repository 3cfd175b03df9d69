// The classifier built-ins: one naive Bayes model that the program holds from query to query.
// Called by the dispatcher with the spine. Names of features and classes, and values, are given as
// values that have a text (strings, numbers, characters, constructors) and compared by that text.
//
// A table's rows have the values in the order of the features and the class at the end. When no
// features have been named, the first row names them (its last field, the heading of the classes,
// is passed over). A table is learnt whole or not at all.
#include <algorithm>
#include <optional>

#include "core/events.h"
#include "eval/bi_support.h"
#include "eval/builtins/bayes.h"
#include "eval/builtins/bi_cast.h"
#include "eval/builtins/families.h"
#include "eval/builtins/table_rows.h"
#include "eval/builtins/text_files.h"
#include "platform/response.h"

namespace velora {

namespace {

BayesModel gBayes;

// The text of the i-th argument; 0 when its value has none.
int text_arg(node **stack, int i, std::string &text) {
  full_evaluate(bi_arg(stack, i));
  return value_text(bi_arg(stack, i), text);
}

// The texts of a list of values; 0 when it is no list or a value has none.
int texts_of(const node *list, TableRow &texts) {
  texts.clear();
  if (list == nullptr || !is_list(list))
    return 0;
  for (const node *cell = list; is_cell(cell); cell = cell_tail(cell)) {
    texts.emplace_back();
    if (!value_text(cell_head(cell), texts.back()))
      return 0;
  }
  return 1;
}

// The i-th argument as a probability; none when it is no number from 0 to 1.
std::optional<double> probability_arg(node **stack, int i) {
  const node *p = force_number(stack, i);
  if (p == nullptr)
    return std::nullopt;
  double value = p->type == kInteger ? p->val.i : static_cast<double>(p->val.r);
  return value >= 0.0 && value <= 1.0 ? std::optional<double>(value) : std::nullopt;
}

// A table on its way into the model, which it reaches by keep() alone.
class Lesson {
public:
  // Takes one row, passing over a blank one; 0, after a message, when it does not fit.
  int take(const TableRow &row) {
    CheckForUserEvents(800);
    if (row.empty() || (row.size() == 1 && row[0].empty()))
      return 1;
    ++rows_;
    if (rows_ == 1 && learnt_.features().empty())
      return take_heading(row);
    if (!names_.empty() && is_heading(row))
      return 1;
    if (learnt_.learn(row))
      return 1;
    DisplayResponsef("Row %d: %d fields found where %d are expected\n", rows_,
                     static_cast<int>(row.size()), static_cast<int>(learnt_.features().size()) + 1);
    return 0;
  }
  int keep() {
    gBayes = std::move(learnt_);
    return 1;
  }

private:
  // A table that is learnt after another begins with the names of the features too.
  [[nodiscard]] bool is_heading(const TableRow &row) const {
    return row.size() == names_.size() + 1 && std::equal(names_.begin(), names_.end(), row.begin());
  }
  int take_heading(const TableRow &row) {
    if (learnt_.set_features({row.begin(), row.end() - 1}))
      return 1;
    DisplayResponse("A feature is named twice\n");
    return 0;
  }
  BayesModel learnt_ = gBayes;
  const std::vector<std::string> names_ = gBayes.features(); // known before this table
  int rows_ = 0;
};

int learn_file(node *target, const std::string &name) {
  if (!file_name_fits(name))
    return set_bool(target, false);
  LineSource source(name.c_str());
  if (!source.is_open()) {
    DisplayResponsef("Cannot read file %s\n", name.c_str());
    return set_bool(target, false);
  }
  Lesson lesson;
  std::string line;
  while (source.next(line))
    if (!lesson.take(split_row(line)))
      return set_bool(target, false);
  return set_bool(target, lesson.keep());
}

int learn_list(node *target, const node *table) {
  Lesson lesson;
  TableRow row;
  for (const node *cell = table; is_cell(cell); cell = cell_tail(cell)) {
    if (!texts_of(cell_head(cell), row))
      return 0;
    if (!lesson.take(row))
      return set_bool(target, false);
  }
  return set_bool(target, lesson.keep());
}

int set_probability(node *target, std::optional<double> p) {
  return p ? set_real(target, static_cast<float>(*p)) : 0;
}

} // namespace

// From the name of a file with a table, or from a list of rows.
int bi_prob_learn(node **stack, int) {
  full_evaluate(bi_arg(stack, 1));
  const node *table = bi_arg(stack, 1);
  if (table->type == kString)
    return learn_file(stack[1], std::string(text_of(table)));
  return is_list(table) ? learn_list(stack[1], table) : 0;
}

int bi_prob_setclass(node **stack, int) {
  std::string name;
  if (!text_arg(stack, 1, name))
    return 0;
  std::optional<double> p = probability_arg(stack, 2);
  return p ? set_bool(stack[2], gBayes.set_class(name, *p)) : 0;
}

int bi_prob_getclass(node **stack, int) {
  std::string name;
  if (!text_arg(stack, 1, name))
    return 0;
  return set_probability(stack[1], gBayes.class_probability(name));
}

// prob_setcond feature value class p; False when there is no such feature.
int bi_prob_setcond(node **stack, int) {
  std::string feature, value, name;
  if (!text_arg(stack, 1, feature) || !text_arg(stack, 2, value) || !text_arg(stack, 3, name))
    return 0;
  std::optional<double> p = probability_arg(stack, 4);
  return p ? set_bool(stack[4], gBayes.set_conditional(feature, value, name, *p)) : 0;
}

int bi_prob_getcond(node **stack, int) {
  std::string feature, value, name;
  if (!text_arg(stack, 1, feature) || !text_arg(stack, 2, value) || !text_arg(stack, 3, name))
    return 0;
  return set_probability(stack[3], gBayes.conditional(feature, value, name));
}

// The list of Pair class probability, most probable first.
int bi_prob_classify(node **stack, int) {
  TableRow values;
  if (!texts_of(force_list(stack, 1), values))
    return 0;
  BayesModel::Ranking ranking = gBayes.classify(values);
  if (ranking.empty())
    return 0;
  ListBuilder list;
  for (const auto &[name, probability] : ranking) {
    Root pair(LMakeConstructor(bi_cons_table[kPair].cs));
    Root part(LMakeString(name));
    pair = LMakeApplyNode(pair, part);
    part = LMakeReal(static_cast<float>(probability));
    pair = LMakeApplyNode(pair, part);
    list.add_shared(pair);
  }
  return list.write_over(stack[1]);
}

int bi_prob_reset(node **stack, int) {
  gBayes = BayesModel();
  return set_bool(stack[0], true);
}

// Names the features; what was learnt of others is forgotten. False when a name is there twice.
int bi_prob_setfeat(node **stack, int) {
  TableRow names;
  if (!texts_of(force_list(stack, 1), names))
    return 0;
  return set_bool(stack[1], gBayes.set_features(names));
}

int bi_prob_getfeat(node **stack, int) {
  ListBuilder list;
  for (const std::string &name : gBayes.features())
    list.add_string(name);
  return list.write_over(stack[0]);
}

} // namespace velora
