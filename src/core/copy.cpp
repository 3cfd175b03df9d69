// Making leaves of the query space and copying terms into it. Every copy is attached to its parent
// before its own parts are made, so a collection in between always sees a well-formed tree.
#include <array>
#include <utility>
#include <vector>

#include "core/events.h"
#include "core/needs.h"
#include "core/space.h"
#include "core/text.h"

namespace velora {

namespace {

node *new_leaf(std::uint8_t type) {
  node *n = take_node();
  n->type = type;
  n->quote = 0;
  n->val.a = {nullptr, nullptr};
  return n;
}

// Static nodes that another term may share: a whole combinator term, a leaf that nothing writes
// over, or the head of an application.
bool may_share(const node *n, bool as_head) {
  if ((n->flags & kStaticNode) == 0)
    return false;
  return (n->flags & (kTemplateNode | kShareLeaf)) != 0 ||
         (as_head && (n->flags & kShareHead) != 0);
}

enum class Sharing { where_allowed, never };

// What is still to be copied: a few pairs in place, since most terms are small, the rest on the
// heap.
class Open {
public:
  using Pair = std::pair<node *, const node *>;
  void push(node *to, const node *from) {
    if (count_ < few_.size())
      few_[count_++] = {to, from};
    else
      many_.emplace_back(to, from);
  }
  [[nodiscard]] bool empty() const { return count_ == 0; }
  Pair pop() {
    if (many_.empty())
      return few_[--count_];
    const Pair top = many_.back();
    many_.pop_back();
    return top;
  }

private:
  std::array<Pair, 24> few_;
  std::size_t count_ = 0;
  std::vector<Pair> many_;
};

// The one copying loop. `nuw` is reachable; `old` must be too when it lies in the query space.
void copy_into(node *nuw, const node *old, Sharing sharing, std::uint8_t quote) {
  Root top(nuw);
  Open open;
  open.push(nuw, old);
  while (!open.empty()) {
    CheckForUserEvents(0);
    const auto [to, from] = open.pop();
    to->type = from->type;
    to->quote = quote;
    to->val = from->val;
    if (!is_apply(from))
      continue;
    // The new node stands in the graph while its parts are made, and that may collect: until they
    // are there it has none.
    node *const parts[2] = {from->val.a.a1, from->val.a.a2};
    to->val.a = {nullptr, nullptr};
    for (int i = 0; i < 2; ++i) {
      if (parts[i] == nullptr)
        continue;
      node *copy = parts[i];
      if (sharing == Sharing::never || !may_share(parts[i], i == 0)) {
        copy = new_leaf(kInteger);
        open.push(copy, parts[i]);
      }
      (i == 0 ? to->val.a.a1 : to->val.a.a2) = copy;
    }
  }
}

} // namespace

node *LMakeInteger(std::int32_t i) {
  node *n = new_leaf(kInteger);
  n->val.i = i;
  return n;
}

node *LMakeReal(float r) {
  node *n = new_leaf(kReal);
  n->val.r = r;
  return n;
}

node *LMakeCharacter(char c) {
  node *n = new_leaf(kCharacter);
  n->val.c = c;
  return n;
}

// The text is made after the node, so that no collection comes between the two.
node *LMakeString(std::string_view text) {
  node *n = new_leaf(kInteger);
  char *str = new_text(text);
  n->type = kString;
  n->val.s.len = static_cast<int>(text.size());
  n->val.s.str = str;
  return n;
}

node *LMakeFunction(func_block *fc) {
  node *n = new_leaf(kFunctionNode);
  n->val.fc = fc;
  return n;
}

node *LMakeConstructor(cons_block *cs) {
  node *n = new_leaf(kConstructorNode);
  n->val.cs = cs;
  return n;
}

node *LMakeBuiltin(func_block *fc, int id) {
  note_built_in(id);
  node *n = new_leaf(kBuiltin);
  n->val.bi.fc = fc;
  n->val.bi.id = id;
  return n;
}

node *LMakeVariable(int v) {
  node *n = new_leaf(kVariable);
  n->val.v = v;
  return n;
}

node *LMakeName(symbol *s) {
  node *n = new_leaf(kName);
  n->val.sym = s;
  return n;
}

void LCopy_struct_rec(node *nuw, const node *old) {
  copy_into(nuw, old, Sharing::where_allowed, 0);
}

void LCopy_whole(node *nuw, const node *old, std::uint8_t quote) {
  copy_into(nuw, old, Sharing::never, quote);
}

node *LCopy(const node *old) {
  if (!is_apply(old)) {
    node *leaf = new_leaf(old->type);
    leaf->val = old->val;
    return leaf;
  }
  node *n = new_leaf(kInteger);
  LCopy_struct_rec(n, old);
  return n;
}

node *own_function_part(node *application) {
  node *fun = application->val.a.a1;
  if (fun == nullptr || !is_apply(fun) || (fun->flags & kStaticNode) == 0)
    return fun;
  Root held(application);
  node *copy = take_node();
  LCopy_whole(copy, fun, 0);
  application->val.a.a1 = copy;
  return copy;
}

} // namespace velora
