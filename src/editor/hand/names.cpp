// Looking names up: the symbol table, the picture's own name and its inputs.
#include "editor/hand/names.h"

#include <algorithm>
#include <cctype>

#include "core/print.h"
#include "core/symbols.h"
#include "editor/history.h"
#include "editor/model/vel_segs.h"
#include "editor/picture_walk.h"
#include "front/brackets.h"
#include "platform/response.h"

namespace velora {

namespace {

constexpr std::size_t kMostRows = 12;
// The types that no symbol stands for.
constexpr std::string_view kPlainTypes[] = {"int", "str", "real", "char", "sym"};
constexpr char kTheType[] = "the type that is declared";

bool is_function(const symbol *sym) {
  return (sym->stype & kFunctionBit) != 0;
}
bool is_constructor(const symbol *sym) {
  return (sym->stype & kConstructorBit) != 0 && !is_function(sym);
}
bool is_type(const symbol *sym) {
  return (sym->stype & kTypeNameBit) != 0 && !is_function(sym) && !is_constructor(sym);
}

const top_node *type_of(const symbol *sym) {
  if (is_function(sym) && sym->b.fc != nullptr)
    return sym->b.fc->types;
  return is_constructor(sym) && sym->b.cs != nullptr ? sym->b.cs->types : nullptr;
}

std::string one_type(const top_node *type) {
  std::string text;
  buffer_tspec(text, type);
  const std::size_t first = text.find_first_not_of(' ');
  const std::size_t last = text.find_last_not_of(' ');
  return first == std::string::npos ? std::string() : text.substr(first, last - first + 1);
}

// The positions of a signature: all but the last are inputs.
std::vector<std::string> positions(const top_node *types) {
  std::vector<std::string> found;
  for (; types != nullptr && types->top_code == kTypeArrow; types = types->tnu.bia[1])
    found.push_back(one_type(types->tnu.bia[0]));
  if (types != nullptr)
    found.push_back(one_type(types));
  return found;
}

std::string arrows(const std::vector<std::string> &inputs, const std::string &result) {
  std::string text;
  for (const std::string &input : inputs)
    text += input + " -> ";
  return text + result;
}

// The tool that draws a type.
int type_tool(const WinInfo *wi) {
  return wi->wtype == kFunctionPicture ? kToolParameter : kToolType;
}

// The tool that draws a symbol in a kind of picture; 0 when it is not drawn there.
int tool_for(const WinInfo *wi, const symbol *sym) {
  if (wi->wtype == kNetworkPicture)
    return is_function(sym) ? kToolFunction : 0;
  // A picture of constructors declares new ones.
  if (is_constructor(sym) && wi->wtype == kConstructorsPicture)
    return 0;
  if (is_constructor(sym)) {
    const bool constant = positions(type_of(sym)).size() < 2;
    return constant ? kToolHexagon : kToolConstructor;
  }
  if (is_type(sym))
    return type_tool(wi);
  return is_function(sym) && wi->wtype == kFunctionPicture ? kToolFunction : 0;
}

bool is_literal(std::string_view text) {
  return !text.empty() &&
         (text[0] == '#' || text[0] == '"' || text[0] == '\'' || text[0] == '[' || text[0] == '(');
}

// The input that "?2" names; -1 when the text names none.
int input_number(std::string_view text) {
  if (text.size() < 2 || text.size() > 5 || text[0] != '?')
    return -1;
  int number = 0;
  for (const char c : text.substr(1)) {
    if (std::isdigit(static_cast<unsigned char>(c)) == 0)
      return -1;
    number = number * 10 + (c - '0');
  }
  return number;
}

void add_inputs(const WinInfo *wi, std::string_view typed, std::vector<KnownName> &rows) {
  if (wi->wtype != kFunctionPicture || typed[0] != '?')
    return;
  int number = 0;
  for (const int slot : make_input_numbers(wi)) {
    const std::string name = format_text("?%d", number++);
    if (name.starts_with(typed))
      rows.push_back({name, wi->seg_ments[slot]->label, 0, slot});
  }
}

// Names that begin with what was typed, the shorter first; then those that hold it.
void add_symbols(const WinInfo *wi, const std::string &typed, std::vector<KnownName> &rows) {
  std::vector<KnownName> holding;
  std::vector<KnownName> beginning;
  for (const symbol *sym = Symbol_table; sym != nullptr; sym = sym->next) {
    const std::string name = sym->name;
    const std::size_t found = name.find(typed);
    const int tool = found == std::string::npos || name == wi->name ? 0 : tool_for(wi, sym);
    if (tool == 0)
      continue;
    const std::vector<std::string> types = positions(type_of(sym));
    std::string text = types.empty() ? "type" : types.back();
    if (types.size() > 1)
      text = arrows({types.begin(), types.end() - 1}, types.back());
    (found == 0 ? beginning : holding).push_back({name, text, tool, 0});
  }
  for (const std::string_view type : kPlainTypes)
    if (type.starts_with(typed) && wi->wtype != kNetworkPicture)
      beginning.push_back({std::string(type), "type", type_tool(wi), 0});
  const auto shorter = [](const KnownName &a, const KnownName &b) {
    return a.name.size() != b.name.size() ? a.name.size() < b.name.size() : a.name < b.name;
  };
  std::sort(beginning.begin(), beginning.end(), shorter);
  std::sort(holding.begin(), holding.end(), shorter);
  rows.insert(rows.end(), beginning.begin(), beginning.end());
  rows.insert(rows.end(), holding.begin(), holding.end());
}

// What a text that nothing declares is taken for.
KnownName as_typed(const WinInfo *wi, const std::string &typed) {
  if (is_literal(typed) && wi->wtype == kFunctionPicture)
    return {typed, "value", kToolHexagon, 0};
  const std::string head = typed.substr(0, typed.find(' '));
  const symbol *sym = find_symbol(head.c_str(), head.size());
  if (sym != nullptr && is_type(sym) && wi->wtype != kNetworkPicture)
    return {typed, "type", tool_for(wi, sym), 0};
  if (wi->wtype == kConstructorsPicture) {
    const std::string own = wi->seg_ments[1] != nullptr ? wi->seg_ments[1]->label : "";
    const bool type = head == own.substr(0, own.find(' ')) || typed[0] == '?' || typed[0] == '(';
    return {typed, type ? "type" : "new constructor", type ? kToolType : kToolConstructor, 0};
  }
  return {typed, "new function", kToolFunction, 0};
}

// A literal that has ended: brackets closed, quotes closed.
bool is_closed(std::string_view text) {
  if (text.starts_with('\'') && text.size() < 3)
    return false; // the character may be a blank
  BracketScan scan;
  scan.step_over(text);
  return !scan.unfinished();
}

} // namespace

bool declared_inputs(const WinInfo *wi, const std::string &name, std::vector<std::string> &inputs,
                     std::string &result) {
  inputs.clear();
  const symbol *sym = name.empty() ? nullptr : find_symbol(name.c_str(), name.size());
  std::vector<std::string> types = sym != nullptr ? positions(type_of(sym)) : inputs;
  if (!types.empty()) {
    result = types.back();
    types.pop_back();
    inputs = std::move(types);
    return true;
  }
  if (wi->wtype != kFunctionPicture || name.empty() || name != wi->name)
    return false;
  for (const int slot : make_input_numbers(wi))
    inputs.push_back(wi->seg_ments[slot]->label);
  result = wi->seg_ments[1] != nullptr ? wi->seg_ments[1]->label : "";
  return true;
}

std::vector<std::string> wanted_inputs(const WinInfo *wi, const Segm *node) {
  std::vector<std::string> inputs;
  std::string result;
  if (wi->wtype != kFunctionPicture || node->type != kBox)
    return inputs;
  const bool blank = node->label.find_first_not_of(' ') == std::string::npos;
  declared_inputs(wi, blank ? wi->name : node->label, inputs, result);
  return inputs;
}

namespace {

// The input that each arrow at a node is, in their order: the one that it was drawn for where the
// arrows before it and behind it leave room for that.
std::vector<int> inputs_there(const Segm *node, int wanted) {
  std::vector<int> inputs;
  const std::vector<Segm *> arcs = cyclic_order_types_of(node);
  const auto count = static_cast<int>(arcs.size());
  for (int i = 0; i < count; ++i) {
    const auto meant =
        static_cast<int>((arcs[static_cast<std::size_t>(i)]->status & kMeantMask) >> kMeantShift) -
        1;
    const int first = inputs.empty() ? 0 : inputs.back() + 1;
    const int last = std::max(first, wanted - (count - i));
    inputs.push_back(std::clamp(meant, first, last));
  }
  return inputs;
}

} // namespace

std::vector<int> missing_inputs(const WinInfo *wi, const Segm *node) {
  const auto wanted = static_cast<int>(wanted_inputs(wi, node).size());
  const std::vector<int> there = inputs_there(node, wanted);
  std::vector<int> missing;
  for (int input = 0; input < wanted; ++input)
    if (std::find(there.begin(), there.end(), input) == there.end())
      missing.push_back(input);
  return missing;
}

int place_of_input(const WinInfo *wi, const Segm *node, int input) {
  const std::vector<int> there =
      inputs_there(node, static_cast<int>(wanted_inputs(wi, node).size()));
  return static_cast<int>(std::lower_bound(there.begin(), there.end(), input) - there.begin());
}

void mean_input(Segm *arc, int input) {
  arc->status = (arc->status & ~kMeantMask) |
                ((static_cast<unsigned>(input + 1) << kMeantShift) & kMeantMask);
}

bool type_is_unnamed(const WinInfo *wi) {
  const Segm *type = wi->seg_ments[1];
  return wi->wtype == kConstructorsPicture &&
         (type == nullptr || type->label.find_first_not_of(' ') == std::string::npos);
}

std::vector<KnownName> names_for(const WinInfo *wi, std::string_view typed) {
  std::vector<KnownName> rows;
  if (typed.empty())
    return rows;
  const std::string text(typed);
  if (type_is_unnamed(wi))
    return {{text, kTheType, kToolType, 1}};
  add_inputs(wi, typed, rows);
  if (wi->wtype == kFunctionPicture && wi->name.starts_with(text)) {
    std::vector<std::string> inputs;
    std::string result;
    declared_inputs(wi, wi->name, inputs, result);
    rows.push_back({wi->name, arrows(inputs, result), kToolRecursive, 0});
  }
  if (!is_literal(typed) && typed[0] != '?')
    add_symbols(wi, text, rows);
  const auto exact = std::find_if(rows.begin(), rows.end(),
                                  [&](const KnownName &row) { return row.name == text; });
  if (exact != rows.end()) {
    std::rotate(rows.begin(), exact, exact + 1);
    if (rows.size() > kMostRows)
      rows.resize(kMostRows);
    return rows;
  }
  if (rows.size() > kMostRows - 1)
    rows.resize(kMostRows - 1);
  if (input_number(typed) < 0 || wi->wtype != kFunctionPicture)
    rows.push_back(as_typed(wi, text));
  return rows;
}

bool is_whole_name(const WinInfo *wi, std::string_view typed) {
  if (type_is_unnamed(wi))
    return false;
  if (is_literal(typed))
    return is_closed(typed);
  const std::vector<KnownName> rows = names_for(wi, typed);
  // A type may go on with its arguments.
  return !rows.empty() && rows.front().name == typed && rows.front().type != "type" &&
         rows.front().tool != kToolParameter && rows.front().tool != kToolType;
}

} // namespace velora
