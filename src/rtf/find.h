#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "rtf/document.h"

namespace lore {

/// Characters (code points) of a plain text, the end exclusive.
struct TextRange {
    size_t begin = 0;
    size_t end = 0;
    bool operator==(const TextRange&) const = default;
};

/// A search term, made ready once for many texts. Case is ignored by simple folding of single characters.
class TextFinder {
public:
    /// `term`: UTF-8. A whole word has no word character on either side. An empty term, or one with a line feed (which
    /// would span paragraphs), is found nowhere.
    TextFinder(std::string_view term, bool whole_word);

    /// Whether the term stands anywhere in `text` (valid UTF-8).
    bool Matches(std::string_view text) const;
    /// All hits from front to back; each next search starts at the end of the last hit.
    std::vector<TextRange> FindAll(std::string_view text) const;

private:
    struct Hit {
        size_t begin;
        size_t end;
    };
    static constexpr size_t kNone = static_cast<size_t>(-1);

    Hit FindFrom(std::string_view text, size_t start) const;
    Hit FindPlain(std::string_view text, size_t start) const;
    size_t MatchBackward(std::string_view text, size_t end) const;
    size_t MatchForward(std::string_view text, size_t begin, size_t from) const;
    bool IsWholeWord(std::string_view text, Hit hit) const;
    void ChooseAnchor();

    std::u32string term_;
    bool whole_word_;
    size_t anchor_ = kNone;
    size_t anchor_offset_ = 0;
    unsigned char anchor_bytes_[2] = {0, 0};
};

/// The background colour of search hits.
inline constexpr TextColor kSearchMark{255, 142, 40};

/// Sets the background colour of ranges of Document::text. Ranges may overlap and may stand in any order; what lies
/// beyond the text is passed over.
void SetBackground(Document& document, std::vector<TextRange> ranges, TextColor color);

/// The RTF with a background colour on ranges of its plain text (as PlainText gives it). Everything else stays byte for
/// byte as it stood, also what a Document can't hold: the marks are put as groups around the characters. Only a file
/// whose colour table can't be added to is written anew from its document.
std::string MarkRtf(std::string_view rtf, std::vector<TextRange> ranges, TextColor color = kSearchMark);

}  // namespace lore
