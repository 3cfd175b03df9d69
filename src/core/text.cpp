// The text registry: a header before each text counts the references of heap trees. Texts without
// any stand in a list of candidates that every collection looks through.
#include "core/text.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "core/needs.h"
#include "core/space.h"

namespace velora {

namespace {

struct TextHeader {
  std::uint32_t references;
  std::uint32_t epoch; // the collection that last found the text in use
  std::size_t slot;    // place among the candidates while `references` is 0
  std::size_t len;
};

// Frees what is still there when the program ends.
struct Candidates : std::vector<TextHeader *> {
  ~Candidates() {
    for (TextHeader *text : *this)
      std::free(text);
  }
};
Candidates candidates;
std::size_t held_texts = 0;
std::size_t bytes_in_use = 0;
std::size_t bytes_left = kMostTextBudget; // until the next collection

TextHeader *header_of(char *str) {
  return reinterpret_cast<TextHeader *>(str - sizeof(TextHeader));
}

void add_candidate(TextHeader *text) {
  text->slot = candidates.size();
  candidates.push_back(text);
}

void remove_candidate(const TextHeader *text) {
  candidates[text->slot] = candidates.back();
  candidates[text->slot]->slot = text->slot;
  candidates.pop_back();
}

} // namespace

void set_text_budget(std::size_t budget) {
  bytes_left = budget;
}

std::size_t text_bytes_in_use() {
  return bytes_in_use;
}

char *new_text(std::size_t len) {
  check_text_fits(len);
  if (len > bytes_left)
    collect_at_next_node();
  else
    bytes_left -= len;
  auto *text = static_cast<TextHeader *>(std::calloc(1, sizeof(TextHeader) + len + 1));
  if (text == nullptr)
    error_exit("Alloc_string failed");
  text->len = len;
  add_candidate(text);
  return reinterpret_cast<char *>(text + 1);
}

char *new_text(std::string_view source) {
  char *str = new_text(source.size());
  std::memcpy(str, source.data(), source.size());
  return str;
}

void hold_text(char *str) {
  if (str == nullptr)
    return;
  TextHeader *text = header_of(str);
  if (text->references++ == 0) {
    remove_candidate(text);
    ++held_texts;
  }
}

void drop_text(char *str) {
  if (str == nullptr)
    return;
  TextHeader *text = header_of(str);
  if (--text->references == 0) {
    add_candidate(text);
    --held_texts;
  }
}

void mark_text(char *str, unsigned epoch) {
  if (str != nullptr)
    header_of(str)->epoch = epoch;
}

void sweep_texts(unsigned epoch) {
  bytes_in_use = 0;
  std::size_t kept = 0;
  for (TextHeader *text : candidates) {
    if (text->epoch == epoch) {
      bytes_in_use += text->len;
      text->slot = kept;
      candidates[kept++] = text;
    } else {
      std::free(text);
    }
  }
  candidates.resize(kept);
}

std::size_t text_count() {
  return candidates.size() + held_texts;
}

} // namespace velora
