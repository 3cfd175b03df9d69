// The text panes of a desktop: the console, language texts, the narrative and annotations. One of
// the four roles that make up a Desktop. Texts are UTF-8, their places bytes.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "platform/desk_windows.h"

namespace velora {

// What the Edit menu asks of the text window that has the focus.
enum class EditCommand { undo, cut, copy, paste, clear };

struct EditState {
  bool can_undo = false;
  bool can_paste = false;
  bool selected = false;
};

// A stretch of a window's text, in bytes of what text_of answers.
struct TextRange {
  std::size_t start = 0;
  std::size_t end = 0;
  friend bool operator==(const TextRange &, const TextRange &) = default;
};

// In a text that is appended: a line end for showing only, which copying leaves out.
inline constexpr char kSoftBreak = '\r';

// A place in a text that has a fault, and what is wrong there.
struct TextMark {
  TextRange range;
  std::string message;
  friend bool operator==(const TextMark &, const TextMark &) = default;
};

class DeskTexts {
public:
  virtual ~DeskTexts() = default;
  // The text of a text window (console, ORVEK, narrative, annotation), without soft breaks.
  virtual std::string text_of(WindowId win) = 0;
  virtual void set_text(WindowId win, std::string_view text) = 0;
  // Appends a text that may hold soft breaks; the stretches `standing_out` of it, in order, are
  // messages that beeped and are shown so.
  virtual void append_text(WindowId win, std::string_view text,
                           const std::vector<TextRange> &standing_out) = 0;
  // The console's text has two parts: what was appended, and behind it what the user typed since.
  // These read and replace the typed part; set_text and append_text leave it standing behind.
  virtual std::string typed_text(WindowId win) = 0;
  virtual void set_typed_text(WindowId win, std::string_view text) = 0;
  // Takes lines away from the front of the appended text, as many as leave `keep` characters or
  // more, soft breaks not counted; answers how many characters went, soft breaks among them.
  virtual std::size_t drop_front(WindowId win, std::size_t keep) = 0;
  // Puts a text in front of the appended one, in place of what went from there.
  virtual void prepend_text(WindowId win, std::string_view text) = 0;
  // How many characters of a line are in sight; 0 when that is not known.
  virtual std::size_t columns(WindowId win) = 0;
  virtual EditState edit_state(WindowId win) = 0;
  virtual void edit(WindowId win, EditCommand command) = 0;
  virtual TextRange selection(WindowId win) = 0;
  // Selects a stretch of text and scrolls it into view.
  virtual void select_text(WindowId win, TextRange range) = 0;
  // Marks faults in a language text in place of those marked before; none to clear them.
  virtual void mark_faults(WindowId win, const std::vector<TextMark> &marks) = 0;
};

} // namespace velora
