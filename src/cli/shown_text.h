#pragma once

#include <string>
#include <string_view>

namespace lore {

// A terminal obeys control characters, and what others wrote into an archive or a NoteBook may hold some. Nothing that
// comes from data is printed for a reader but through these; only bare texts and JSON are.

/// A text of the core as UTF-8 in one line, for a cell of a table or a place in a message: each control character, the
/// line feed and the tab among them, stands as "\x" with its two hexadecimal digits.
std::string Shown(std::string_view bytes);
/// The same for a text of several lines: line feeds, alone or after a carriage return, and tabs stay.
std::string ShownLines(std::string_view bytes);

}  // namespace lore
