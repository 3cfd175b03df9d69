// The search for the functions whose clauses mention a symbol. Called by the removal of symbols.
#pragma once

#include <vector>

#include "core/records.h"

namespace velora {

// The three ways in which a symbol can be referred to and removed.
enum class Family { function, constructor, type, none };

Family family_of(const symbol *sym);

// The functions other than `sym` with a clause that mentions the function or constructor `sym`, in
// table order. One search walks every clause; a second one, while the clauses are the same, makes
// an index of all mentions, so that a series of replacements stays linear.
std::vector<symbol *> functions_that_mention(const symbol *sym);

// Keeps the index good while the block of `sym` is freed: made before, it takes what the index
// holds of `sym` out of it afterwards. Other changes of clauses make the index stale.
class KeptIndex {
public:
  explicit KeptIndex(const symbol *sym);
  ~KeptIndex();
  KeptIndex(const KeptIndex &) = delete;
  KeptIndex &operator=(const KeptIndex &) = delete;

private:
  const symbol *sym_;
  const void *block_;
  bool searched_; // nothing changed since the last search
  bool indexed_;  // nor since the index was made
};

} // namespace velora
