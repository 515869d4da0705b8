#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "rtf/mark.h"

namespace lore {

/// Where two texts differ, as ranges of characters.
struct TextDifferences {
    /// Lines of the first text that aren't equal to the line of the same number in the second one, without their ends.
    /// All lines beyond the last one of the second text are one range.
    std::vector<TextRange> lines;
    /// The words that one text alone has, however the lines have moved. They don't depend on `lines`.
    std::vector<TextRange> words, otherWords;
};

/// Compares two plain texts (UTF-8, lines parted by line feeds) in time that grows with their length: where they differ
/// in too many places, a stretch of lines counts as changed as a whole.
TextDifferences CompareTexts(std::string_view text, std::string_view other);

/// A stretch of one sequence that stands in place of a stretch of the other.
struct Hunk {
    size_t begin = 0, end = 0;
    size_t otherBegin = 0, otherEnd = 0;
    bool operator==(const Hunk&) const = default;
};

/// The smallest set of changes between two sequences of numbers; one hunk for all that is left if it takes more than
/// `mostChanges`.
std::vector<Hunk> CompareSequences(const std::vector<uint32_t>& a, const std::vector<uint32_t>& b, size_t mostChanges);

}  // namespace lore
