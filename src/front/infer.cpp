// Unification over declared types. The types of one question live in one vector and are named by
// their places in it, so nothing is freed one by one and a variable is bound by writing its place.
#include "front/infer.h"

#include <cstdint>
#include <map>
#include <unordered_set>
#include <vector>

#include "core/events.h"
#include "core/print.h"
#include "core/trees.h"
#include "platform/response.h"

namespace velora {

namespace {

using TypeId = std::uint32_t;

// A variable (bound to `to` once that is another place), a function from args[0] to args[1], a
// basic type, or a declared type with its arguments.
struct Type {
  enum Kind : std::uint8_t { variable, function, basic, declared } kind;
  std::uint8_t code = 0;
  const symbol *sym = nullptr;
  TypeId to = 0;
  std::vector<TypeId> args;
};

using Bindings = std::map<int, TypeId>;

class Inference {
public:
  explicit Inference(std::size_t most_nodes) : left_(most_nodes) {}

  TypeId infer(const node *n);
  // The same; an expression that does not fit in itself may have any type.
  TypeId infer_alone(const node *n);
  TypeId apply(TypeId fun, TypeId arg, const node *application, const node *argument);
  TypeId of_signature(const top_node *types);
  bool unify(TypeId a, TypeId b);
  std::string text(TypeId t);
  [[nodiscard]] bool clashed() const { return clashed_; }
  [[nodiscard]] const TypeClash &clash() const { return clash_; }
  void note_clash(const std::string &function, int argument, TypeId wanted, TypeId found,
                  const node *where);

private:
  TypeId add(Type type) {
    types_.push_back(std::move(type));
    return static_cast<TypeId>(types_.size() - 1);
  }
  TypeId fresh() {
    const TypeId id = add({Type::variable, 0, nullptr, 0, {}});
    types_[id].to = id;
    return id;
  }
  TypeId basic(std::uint8_t code) { return add({Type::basic, code, nullptr, 0, {}}); }
  TypeId arrow(TypeId from, TypeId to) { return add({Type::function, 0, nullptr, 0, {from, to}}); }
  TypeId find(TypeId t) {
    while (types_[t].kind == Type::variable && types_[t].to != t)
      t = types_[t].to;
    return t;
  }
  TypeId instance(const top_node *t, Bindings &variables);
  TypeId chain(const top_node *cell, Bindings &variables);
  TypeId variable_type(int number);
  TypeId leaf(const node *n);
  TypeId infer_lambda(const node *n);
  bool occurs(TypeId variable, TypeId in);
  void write(std::string &out, TypeId t, bool in_brackets);

  std::vector<Type> types_;
  Bindings variables_; // of the expression
  std::map<TypeId, int> names_;
  std::size_t left_; // nodes that may still be looked at
  bool clashed_ = false;
  TypeClash clash_;
};

// --- declared types ----------------------------------------------------------------------------

TypeId Inference::chain(const top_node *cell, Bindings &variables) {
  const TypeId here = instance(cell->tnu.bia[0], variables);
  return cell->tnu.bia[1] == nullptr ? here : arrow(here, chain(cell->tnu.bia[1], variables));
}

// A type as it is declared, its variables standing for what `variables` says. `sym` agrees with
// every type.
TypeId Inference::instance(const top_node *t, Bindings &variables) {
  check_stack();
  if (t == nullptr || t->top_code == kTypeSym)
    return fresh();
  if ((t->top_code & kTypeVariable) != 0) {
    const int number = t->top_code & 0x7F;
    const auto at = variables.find(number);
    return at != variables.end() ? at->second : variables[number] = fresh();
  }
  if ((t->top_code & kTypeUser) != 0) {
    Type made{Type::declared, 0, t->tnu.u.s, 0, {}};
    for (unsigned i = 0; i < type_arg_count(t); ++i)
      made.args.push_back(instance(t->tnu.u.ua[i], variables));
    return add(std::move(made));
  }
  return t->top_code == kTypeArrow ? chain(t, variables) : basic(t->top_code);
}

TypeId Inference::of_signature(const top_node *types) {
  Bindings variables;
  return instance(types, variables);
}

// --- unification -------------------------------------------------------------------------------

// A type may stand in many places of another, in `pair ?0 ?0` of such pairs in more than can be
// walked, so each is looked into once.
bool Inference::occurs(TypeId variable, TypeId in) {
  std::vector<TypeId> open{in};
  std::unordered_set<TypeId> seen;
  while (!open.empty()) {
    const TypeId at = find(open.back());
    open.pop_back();
    if (at == variable)
      return true;
    if (seen.insert(at).second)
      open.insert(open.end(), types_[at].args.begin(), types_[at].args.end());
  }
  return false;
}

bool Inference::unify(TypeId a, TypeId b) {
  check_stack();
  CheckForUserEvents(0);
  a = find(a);
  b = find(b);
  if (a == b)
    return true;
  // A variable that would stand for a type with itself inside is left open: such terms can run.
  if (types_[a].kind == Type::variable)
    return occurs(a, b) || (types_[a].to = b, true);
  if (types_[b].kind == Type::variable)
    return unify(b, a);
  const Type left = types_[a];
  const Type right = types_[b];
  if (left.kind != right.kind || left.code != right.code || left.sym != right.sym ||
      left.args.size() != right.args.size())
    return false;
  for (std::size_t i = 0; i < left.args.size(); ++i)
    if (!unify(left.args[i], right.args[i]))
      return false;
  return true;
}

// --- expressions -------------------------------------------------------------------------------

TypeId Inference::variable_type(int number) {
  const auto at = variables_.find(number);
  return at != variables_.end() ? at->second : variables_[number] = fresh();
}

TypeId Inference::leaf(const node *n) {
  switch (n->type) {
  case kVariable:
    return variable_type(n->val.v);
  case kInteger:
    return basic(kTypeInt);
  case kCharacter:
    return basic(kTypeChar);
  case kReal:
    return basic(kTypeReal);
  case kString:
    return basic(kTypeStr);
  case kBuiltin:
    return n->val.bi.fc == nullptr ? fresh() : of_signature(n->val.bi.fc->types);
  case kFunctionNode:
    return n->val.fc == nullptr ? fresh() : of_signature(n->val.fc->types);
  case kConstructorNode:
    return n->val.cs == nullptr ? fresh() : of_signature(n->val.cs->types);
  default: // names of types, and what only the query space holds
    return fresh();
  }
}

bool is_lambda(const node *n) {
  return is_apply(n) && n->val.a.a1 != nullptr && is_apply(n->val.a.a1) &&
         n->val.a.a1->val.a.a1 != nullptr && n->val.a.a1->val.a.a1->type == kLambda &&
         n->val.a.a1->val.a.a2 != nullptr && n->val.a.a1->val.a.a2->type == kVariable;
}

// ((lambda ?v) body): inside the body ?v is a variable of its own.
TypeId Inference::infer_lambda(const node *n) {
  const int number = n->val.a.a1->val.a.a2->val.v;
  const auto outer = variables_.find(number);
  const bool hidden = outer != variables_.end();
  const TypeId hidden_type = hidden ? outer->second : 0;
  const TypeId from = variables_[number] = fresh();
  const TypeId to = infer(n->val.a.a2);
  if (hidden)
    variables_[number] = hidden_type;
  else
    variables_.erase(number);
  return arrow(from, to);
}

TypeId Inference::infer(const node *n) {
  check_stack();
  if (n == nullptr || left_ == 0 || clashed_)
    return fresh();
  --left_;
  if (!is_apply(n))
    return leaf(n);
  if ((n->flags & kTemplateNode) != 0 || n->val.a.a1 == nullptr)
    return fresh();
  if (is_lambda(n))
    return infer_lambda(n);
  const TypeId fun = infer(n->val.a.a1);
  const TypeId arg = infer(n->val.a.a2);
  return apply(fun, arg, n->val.a.a1, n->val.a.a2);
}

TypeId Inference::infer_alone(const node *n) {
  if (clashed_)
    return fresh();
  const TypeId type = infer(n);
  if (!clashed_)
    return type;
  clashed_ = false;
  return fresh();
}

// The head of a spine and how many arguments it has there.
const node *head_of(const node *n, int &arguments) {
  for (arguments = 0; n != nullptr && is_apply(n); n = n->val.a.a1)
    ++arguments;
  return n;
}

TypeId Inference::apply(TypeId fun, TypeId arg, const node *application, const node *argument) {
  if (clashed_)
    return fresh();
  fun = find(fun);
  int before = 0;
  const node *head = head_of(application, before);
  const std::string name = head == nullptr ? "" : leaf_text(head);
  if (types_[fun].kind == Type::function) {
    const TypeId wanted = types_[fun].args[0];
    const TypeId result = types_[fun].args[1];
    if (!unify(wanted, arg))
      note_clash(name, before + 1, wanted, arg, argument);
    return result;
  }
  const TypeId result = fresh();
  if (!unify(fun, arrow(arg, result)))
    note_clash(name, before + 1, fun, arg, argument);
  return result;
}

void Inference::note_clash(const std::string &function, int argument, TypeId wanted, TypeId found,
                           const node *where) {
  if (clashed_)
    return;
  clashed_ = true;
  clash_ = {function, argument, text(wanted), text(found), where};
}

// --- texts -------------------------------------------------------------------------------------

constexpr std::size_t kLongestText = 4000;

void Inference::write(std::string &out, TypeId t, bool in_brackets) {
  check_stack();
  if (out.size() > kLongestText)
    return;
  t = find(t);
  const Type type = types_[t];
  const bool bracket = in_brackets && (type.kind == Type::function || !type.args.empty());
  if (bracket)
    out += '(';
  if (type.kind == Type::variable) {
    const int number = names_.emplace(t, static_cast<int>(names_.size())).first->second;
    out += format_text("?%d", number);
  } else if (type.kind == Type::function) {
    write(out, type.args[0], types_[find(type.args[0])].kind == Type::function);
    out += " -> ";
    write(out, type.args[1], false);
  } else if (type.kind == Type::basic) {
    top_node plain{};
    plain.top_code = type.code;
    buffer_tspec(out, &plain);
  } else {
    out += type.sym->name;
    for (const TypeId arg : type.args) {
      out += ' ';
      write(out, arg, true);
    }
  }
  if (bracket)
    out += ')';
}

std::string Inference::text(TypeId t) {
  std::string out;
  write(out, t, false);
  if (out.size() > kLongestText)
    out.replace(kLongestText, std::string::npos, "...");
  return out;
}

TypeFinding finding_of(Inference &inference, TypeId type) {
  TypeFinding finding;
  finding.fits = !inference.clashed();
  if (finding.fits)
    finding.type = inference.text(type);
  else
    finding.clash = inference.clash();
  return finding;
}

constexpr std::size_t kAllNodes = ~std::size_t{0};
constexpr std::size_t kNodesOfCall = 2000;

} // namespace

TypeFinding type_of_expression(const node *expression) {
  Inference inference(kAllNodes);
  const TypeId type = inference.infer(expression);
  return finding_of(inference, type);
}

TypeFinding type_of_clause(const node *lhs, const node *rhs) {
  Inference inference(kAllNodes);
  const TypeId result = inference.infer(lhs);
  const TypeId body = inference.infer(rhs);
  if (!inference.clashed() && !inference.unify(result, body)) {
    int arguments = 0;
    const node *head = head_of(lhs, arguments);
    inference.note_clash(head == nullptr ? "" : leaf_text(head), 0, result, body, rhs);
  }
  return finding_of(inference, result);
}

TypeFinding type_of_call(const node *function_part, const node *last) {
  // What does not fit inside an argument, such as a list of unlike elements, is not what the call
  // itself lacks: such an argument counts as anything.
  Inference inference(kNodesOfCall);
  std::vector<const node *> applications;
  const node *head = function_part;
  for (; head != nullptr && is_apply(head); head = head->val.a.a1)
    applications.push_back(head);
  TypeId type = inference.infer(head);
  for (std::size_t i = applications.size(); i-- > 0;) {
    const node *argument = applications[i]->val.a.a2;
    type =
        inference.apply(type, inference.infer_alone(argument), applications[i]->val.a.a1, argument);
  }
  type = inference.apply(type, inference.infer_alone(last), function_part, last);
  return finding_of(inference, type);
}

// --- expressions as texts ----------------------------------------------------------------------

namespace {

class ExpressionWriter {
public:
  ExpressionWriter(std::size_t most, const node *part, std::size_t *place)
      : most_(most), part_(part), place_(place) {}
  void write(const node *n, bool argument);
  std::string out;

private:
  bool write_list(const node *n);
  std::size_t most_;
  const node *part_;
  std::size_t *place_;
};

// `n` as [a b c] when it is a list with an end.
bool ExpressionWriter::write_list(const node *n) {
  std::vector<const node *> elements;
  for (; part_of_list(n) != 0; n = n->val.a.a2)
    elements.push_back(n->val.a.a1->val.a.a2);
  if (elements.empty() || n->type != kConstructorNode)
    return false;
  out += '[';
  for (std::size_t i = 0; i < elements.size(); ++i) {
    if (i > 0)
      out += ' ';
    write(elements[i], true);
  }
  out += ']';
  return true;
}

void ExpressionWriter::write(const node *n, bool argument) {
  check_stack();
  if (n == nullptr || out.size() > most_)
    return;
  if (n == part_ && place_ != nullptr)
    *place_ = out.size();
  if (!is_apply(n)) {
    out += leaf_text(n);
    return;
  }
  if (write_list(n))
    return;
  if (argument)
    out += '(';
  write(n->val.a.a1, false);
  out += ' ';
  write(n->val.a.a2, true);
  if (argument)
    out += ')';
}

} // namespace

std::string expression_text(const node *root, std::size_t most, const node *part,
                            std::size_t *place) {
  ExpressionWriter writer(most, part, place);
  writer.write(root, false);
  if (writer.out.size() > most) {
    writer.out.resize(most);
    writer.out += "...";
  }
  return writer.out;
}

} // namespace velora
