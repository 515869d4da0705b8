#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "notes/search_query.h"

namespace lore {

/// How often a byte is likely to stand in a folded text; the more, the higher.
size_t FrequencyInTexts(char byte);

/// Appends a text (valid UTF-8) with each character case-folded, so that positions in characters stay.
void AppendFolded(std::string& folded, std::string_view utf8);

/// Case-folded plain texts of the notes of one file in one piece of memory.
struct FoldedTexts {
    struct Slice {
        int32_t id = 0;
        uint32_t record = 0;  ///< its number among the notes of the file
        uint32_t begin = 0;
        uint32_t end = 0;
    };
    std::string bytes;  ///< behind each text stands a byte that no text holds
    std::vector<Slice> slices;

    void Add(int32_t id, uint32_t record, std::string_view plainText);
    std::string_view TextOf(const Slice& slice) const;
};

/// Finds one term in folded texts, at about the speed of memory.
class FoldedFinder {
public:
    static constexpr size_t kNone = static_cast<size_t>(-1);

    explicit FoldedFinder(const SearchTerm& term);

    /// The byte position of the first hit at or behind `from`, kNone if there is none.
    size_t Find(std::string_view folded, size_t from = 0) const;
    /// Sets found[i] to 1 for each slice that holds the term.
    void MarkFound(const FoldedTexts& texts, std::vector<uint8_t>& found) const;

private:
    size_t FindBytes(std::string_view folded, size_t from) const;
    bool IsWholeWord(std::string_view folded, size_t begin) const;

    std::string needle_;
    bool wholeWord_;
    size_t rare_ = 0, second_ = 0;  // positions in the needle of the two bytes that texts hold least often
};

}  // namespace lore
