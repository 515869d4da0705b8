#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "rtf/mark.h"

namespace lore {

/// A search term, made ready once for many texts. Case is ignored by simple folding of single characters.
class TextFinder {
public:
    /// `term`: UTF-8. A whole word has no word character on either side. An empty term, or one with a line feed (which
    /// would span paragraphs), is found nowhere.
    TextFinder(std::string_view term, bool wholeWord);

    /// Whether the term stands anywhere in `text` (UTF-8).
    bool Matches(std::string_view text) const;
    /// All hits from front to back; each next search starts at the end of the last hit.
    std::vector<TextRange> FindAll(std::string_view text) const;

private:
    /// Bytes of the text; begin is kNone for no hit.
    struct Hit {
        size_t begin;
        size_t end;
    };
    /// A byte that every hit has at a fixed place: (byte | mask) == value.
    struct Anchor {
        size_t index = 0;   ///< character of the term whose last byte it is
        size_t length = 1;  ///< bytes of that character
        unsigned char mask = 0;
        unsigned char value = 0;
        int rarity = -1;  ///< the higher the rarer, below 0 for a character that can't be an anchor
    };
    static constexpr size_t kNone = static_cast<size_t>(-1);

    static Anchor AnchorOf(char32_t c, size_t index);
    void ChooseAnchors();
    Hit FindFrom(std::string_view text, size_t start) const;
    Hit FindByCharacters(std::string_view text, size_t start) const;
    size_t NextCandidate(std::string_view text, size_t at) const;
    size_t MatchBefore(std::string_view text, size_t start, size_t at) const;
    size_t MatchFrom(std::string_view text, size_t at, size_t index) const;
    bool IsAccepted(std::string_view text, Hit hit) const;

    std::u32string term_;
    bool wholeWord_;
    Anchor first_;         ///< the one of two anchors that stands in front
    Anchor second_;        ///< the same as first_ when there is only one
    size_t distance_ = 0;  ///< bytes from first_ to second_
};

}  // namespace lore
