// The records of the language: symbols, types, expressions, clauses and decision trees. Every
// level above uses exactly these; nothing here does any work.
#pragma once

#include <cstddef>
#include <cstdint>

namespace velora {

struct symbol;
struct node;
struct top_node;
struct rhs_link;
struct clause_code;

// Kinds of a symbol (stype). Bits 1 to 6 are the kind, bit 7 marks a built-in, bit 0 a system
// function.
enum SymbolKind : std::uint8_t {
  kKindless = 0x00,
  kTypeOp = 0x08,
  kEnumType = 0x0C,
  kNonlexType = 0x0E,
  kConstructor = 0x10,
  kFunction = 0x20,
  kDbFunction = 0x60,
  kSysFunction = 0x21,
  kBuiltinTypeOp = 0x88,
  kBuiltinEnum = 0x8C,
  kBuiltinConstructor = 0x90,
  kBuiltinFunction = 0xA0
};
inline constexpr std::uint8_t kKindMask = 0x7E;
inline constexpr std::uint8_t kBuiltinBit = 0x80;
inline constexpr std::uint8_t kSystemBit = 0x01;
inline constexpr std::uint8_t kFunctionBit = 0x20;
inline constexpr std::uint8_t kConstructorBit = 0x10;
inline constexpr std::uint8_t kTypeNameBit = 0x08;
inline constexpr std::uint8_t kEnumBit = 0x04;

// Codes of a type tree (top_code). 0x40 + n is a user type with n arguments, 0x80 + v variable ?v.
enum TypeCode : std::uint8_t {
  kTypeInt = 9,
  kTypeChar = 10,
  kTypeReal = 11,
  kTypeStr = 12,
  kTypeLstr = 13,
  kTypeSym = 14,
  kTypeArrow = 16,
  kTypeUser = 0x40,
  kTypeVariable = 0x80
};

// Codes of an expression node (type).
enum NodeType : std::uint8_t {
  kApply = 0,
  kApplyLeft = 1,  // an application while the collector is in its function part
  kApplyRight = 2, // an application while the collector is in its argument part
  kVariable = 8,
  kLambda = 10,
  kBuiltin = 16,
  kFunctionNode = 17,
  kConstructorNode = 18,
  kInteger = 33,
  kCharacter = 34,
  kReal = 35,
  kString = 36,
  kName = 38,
  kCombI = 64,
  kCombK = 65,
  kCombS = 66,
  kCombB = 67,
  kCombC = 68
};

// A type operator.
struct top_block {
  std::uint8_t arity; // number of type arguments, 0..255
};

// An enumerated type: its constants, chained through cons_block.link in order of declaration.
// Both ends are null for a type without values.
struct enum_block {
  symbol *head;
  symbol *tail;
};

// A constructor. `name` is shared with its symbol.
struct cons_block {
  char *name;
  top_node *types;
  std::uint8_t arity; // number of arrows in `types`
  symbol *link;       // next constant of the same enumerated type
};

// A function. `name` is shared with its symbol.
struct func_block {
  char *name;
  top_node *types;
  struct defs_link *defs; // clause groups, null while the function has no clauses
  std::uint8_t arity;
  std::int16_t max_var; // highest variable of any clause, -1 for none; a built-in's number
  struct match_plan *plan = nullptr; // the matcher's own view of `defs`, dropped when they change
};

// An entry of the symbol table. `name` is the entry's own copy, NUL-terminated.
struct symbol {
  std::uint8_t name_len; // 1..255
  std::uint8_t stype;
  char *name;
  union {
    enum_block *en;
    top_block *tp;
    func_block *fc;
    cons_block *cs;
  } b;
  symbol *next; // next older entry
  symbol *prev; // next newer entry, null at the head
};

// A node of a type tree. An arrow cell uses `bia`: the type at this position and the next cell
// (null at the result). A user type uses `u`; `ua` has as many entries as the code says.
struct top_node {
  std::uint8_t top_code;
  union {
    top_node *bia[2];
    struct {
      symbol *s;
      top_node *ua[1];
    } u;
  } tnu;
};

// Flags of a node outside the query space's own bookkeeping.
enum NodeFlag : std::uint8_t {
  kHeapNode = 1,     // lives on the heap: a parsed expression or a clause
  kStaticNode = 2,   // belongs to compiled clause code: shared by the query space, never written
  kTemplateNode = 4, // the root of a static combinator term; `aux` is its number
  kShareLeaf = 8,    // a static leaf that no evaluation ever writes over
  kShareHead = 16    // a static leaf that may be shared as the function part of an application
};

// An expression node, 24 bytes. In the query space `mark` is the collection that last reached it.
// `quote` non-zero makes the reducer return the node once as it stands.
struct node {
  std::uint8_t type;
  std::uint8_t quote;
  std::uint8_t mark;
  std::uint8_t flags;
  std::uint32_t aux;
  union {
    std::int32_t i;
    char c;
    float r;
    symbol *sym;
    int v;
    struct {
      int len;
      char *str; // a text of the registry (core/text.h)
    } s;
    func_block *fc;
    cons_block *cs;
    struct {
      func_block *fc;
      int id;
    } bi;
    struct {
      node *a1;
      node *a2;
    } a;
  } val;
};
static_assert(sizeof(node) == 24);

// One alternative at one position of a group's decision tree. For an application, n.val.a.a1 and
// a2 point to the choice_node lists of its two parts (see choice_list).
struct choice_node {
  node n;
  std::uint32_t mask; // bit k: clause k of the group passes through this alternative
  choice_node *next;
};

inline choice_node *choice_list(node *part) {
  return reinterpret_cast<choice_node *>(part);
}
inline node *as_part(choice_node *list) {
  return reinterpret_cast<node *>(list);
}

// One clause body. `rhs` and `original` are separate heap trees that share no node; every string
// leaf of either holds one reference to its text.
struct rhs_link {
  int max_var;    // highest variable of the head, -1 for none
  node *rhs;      // the body as combinators
  node *original; // the body as written
  rhs_link *next;
  clause_code *code; // the reducer's compiled form, made at the first call; null until then
};

// A group of at most 16 clauses.
inline constexpr int kGroupSize = 16;
struct defs_link {
  rhs_link *defs;
  defs_link *next;
  choice_node *lhs_tree;
  // Hashes of the clauses' heads, so that an equal head is found fast: of every clause, or of none
  // (`hashed` 0), which is what anyone who rewrites a group must say.
  std::uint32_t hashed = 0;
  std::uint32_t head_hash[kGroupSize] = {};
};

inline bool is_apply(const node *n) {
  return n->type == kApply;
}

} // namespace velora
