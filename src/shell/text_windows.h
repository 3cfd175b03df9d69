// The language text windows: opening, storing their text to the database, closing, and searching in
// any text window. Called by the menu commands and by the database, which closes them after a save.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/desktop.h"

namespace velora {

// Opens a further language text window; 0 on failure.
WindowId NewOrvekWindow();
// Shows a piece of code in a language text window, one that shows it already or a further one; what
// is not changed in it counts as stored. The window, or 0 on failure.
WindowId show_code(const std::string &text);
// Closes the language text windows whose text is stored; 1 when none is left.
int CloseOrvekWindows();
// Closes one, asking first when its text is not stored; 1 when it closed.
int close_orvek_window(WindowId win);
// The language text windows whose text is not stored.
std::vector<WindowId> unstored_texts();
// Asks for each of them; 0 when the user went back.
int offer_to_store_texts();
// Loads the text of the window as declarations and clauses; 1 on success.
int StoreOrvekToDB(WindowId win);

// Where `wanted` stands in `text` behind `from`, or from the start when it does not; letters of
// either case match. An empty range when it is not there.
TextRange find_in_text(std::string_view text, std::string_view wanted, std::size_t from);
// Asks what to find (or takes the last text when `again`), and selects it in the window; 1 or 0.
int findSearchString(WindowId win, bool again);
// True when something has been searched for.
bool has_searched();

} // namespace velora
