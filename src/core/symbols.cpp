// The symbol table: a list in order of entry, newest first, and a hash over the names.
#include "core/symbols.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string_view>
#include <unordered_map>

#include "core/clock.h"
#include "core/needs.h"
#include "platform/response.h"

namespace velora {

symbol *Symbol_table = nullptr;
int gSymbolTableChanged = 0;
std::uint64_t gClauseChanges = 0;
std::uint64_t gReductions = 0;
std::uint64_t gOtherChanges = 0;

namespace {

constexpr std::size_t kLongestName = 255;

std::unordered_map<std::string_view, symbol *> &names() {
  static std::unordered_map<std::string_view, symbol *> table;
  return table;
}

// Frees what is still retired when the program ends.
struct RetiredBlocks : std::vector<void *> {
  ~RetiredBlocks() {
    for (void *block : *this)
      std::free(block);
  }
};
RetiredBlocks retired;

std::string_view name_view(const char *name, std::size_t name_len) {
  return {name, name_len == 0 ? std::strlen(name) : name_len};
}

symbol *new_entry(std::string_view name) {
  auto *entry = static_cast<symbol *>(std::calloc(1, sizeof(symbol)));
  if (entry == nullptr)
    error_exit("Alloc failed");
  entry->name = static_cast<char *>(std::calloc(1, name.size() + 1));
  if (entry->name == nullptr) {
    std::free(entry);
    error_exit("Alloc_string failed");
  }
  std::memcpy(entry->name, name.data(), name.size());
  entry->name_len = static_cast<std::uint8_t>(name.size());
  return entry;
}

struct EntryFreer {
  void operator()(symbol *entry) const {
    std::free(entry->name);
    std::free(entry);
  }
};

// Edit distance of two names, or `most` + 1 when it is larger.
std::size_t spelling_distance(std::string_view a, std::string_view b, std::size_t most) {
  if (a.size() > b.size() + most || b.size() > a.size() + most)
    return most + 1;
  std::vector<std::size_t> row(b.size() + 1);
  for (std::size_t j = 0; j <= b.size(); ++j)
    row[j] = j;
  for (std::size_t i = 1; i <= a.size(); ++i) {
    std::size_t diagonal = row[0];
    row[0] = i;
    for (std::size_t j = 1; j <= b.size(); ++j) {
      const std::size_t above = row[j];
      row[j] = std::min({row[j - 1] + 1, above + 1, diagonal + (a[i - 1] == b[j - 1] ? 0 : 1)});
      diagonal = above;
    }
  }
  return row[b.size()];
}

} // namespace

symbol *insert_symbol(const char *name, std::size_t name_len) {
  const std::string_view wanted = name_view(name, name_len);
  if (wanted.empty() || wanted.size() > kLongestName) {
    BeepMsgef(1, "Sorry! A name has 1 to 255 characters, not %zu\n", wanted.size());
    return nullptr;
  }
  if (symbol *old = find_symbol(wanted.data(), wanted.size());
      old != nullptr && remove_symbol(old) == 0) {
    orvek_errorf("Cannot replace symbol %.*s\n", static_cast<int>(wanted.size()), wanted.data());
    return nullptr;
  }
  // What may fail for want of memory comes first; from `release` on nothing does, so the table and
  // the chain always hold the same entries.
  std::unique_ptr<symbol, EntryFreer> made(new_entry(wanted));
  names().emplace(std::string_view(made->name, made->name_len), made.get());
  symbol *entry = made.release();
  note_change();
  entry->next = Symbol_table;
  if (Symbol_table != nullptr)
    Symbol_table->prev = entry;
  Symbol_table = entry;
  gSymbolTableChanged = 1;
  return entry;
}

symbol *find_symbol(const char *name, std::size_t name_len) {
  const std::string_view wanted = name_view(name, name_len);
  if (wanted.size() > kLongestName)
    return nullptr;
  const auto found = names().find(wanted);
  return found == names().end() ? nullptr : found->second;
}

void detach_symbol(symbol *sym) {
  note_change();
  names().erase(std::string_view(sym->name, sym->name_len));
  (sym->prev != nullptr ? sym->prev->next : Symbol_table) = sym->next;
  if (sym->next != nullptr)
    sym->next->prev = sym->prev;
  sym->next = sym->prev = nullptr;
}

void unlink_symbol(symbol *sym) {
  detach_symbol(sym);
  retire_block(sym->name);
  retire_block(sym);
}

void retire_block(void *block) {
  if (block != nullptr)
    retired.push_back(block);
}

void free_retired() {
  for (void *block : retired)
    std::free(block);
  retired.clear();
}

std::vector<std::string> nearest_names(const std::string &name, std::size_t most) {
  const std::size_t farthest = name.size() <= 3 ? 1 : 2;
  std::vector<std::pair<std::size_t, std::string>> found;
  if (name.size() <= kLongestName)
    for (const symbol *s = Symbol_table; s != nullptr; s = s->next) {
      const std::string_view other(s->name, s->name_len);
      const std::size_t distance = spelling_distance(name, other, farthest);
      if (distance <= farthest && distance < other.size())
        found.emplace_back(distance, other);
    }
  std::sort(found.begin(), found.end());
  if (found.size() > most)
    found.resize(most);
  std::vector<std::string> result;
  for (auto &[distance, text] : found)
    result.push_back(std::move(text));
  return result;
}

} // namespace velora
