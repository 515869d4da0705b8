#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace lore {

/// Searches notes for a text: the first line of the input is what was typed, each further line is the rich text of a
/// note, or its body where it doesn't begin with a brace. What was typed must be parsed as a plain search for the
/// operators parses it, and hits must be those of a search character by character. Gives what is wrong, or nothing.
std::string CheckSearchHits(std::string_view input);

/// That, and marks must colour the hits and change no text, and the texts in memory, the note file in `folder` and its
/// bytes must give the same notes.
std::string CheckSearch(std::string_view input, const std::filesystem::path& folder);

}  // namespace lore
