#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "notes/note_list_entry.h"
#include "notes/search_folded.h"
#include "notes/search_query.h"
#include "rtf/find.h"

namespace lore {

/// A parsed search made ready for many notes. Safe to use from several threads.
class NoteMatcher : public NoteMarker {
public:
    explicit NoteMatcher(const NoteSearch& search);

    const NoteSearch& Search() const { return search_; }
    const std::vector<SearchTerm>& Terms() const { return terms_; }

    /// True for a count of found terms that makes a note a result: all for AND, one otherwise; never none.
    bool IsEnough(size_t foundTerms) const;
    /// Whether a plain text (UTF-8) is a result.
    bool Matches(std::string_view plainText) const;
    /// The same for a folded text.
    bool MatchesFolded(std::string_view folded) const;
    /// One 1 for each slice that is a result.
    std::vector<uint8_t> MatchSlices(const FoldedTexts& texts) const;
    /// All hits of all terms in a plain text, by their begin. Characters, the end exclusive.
    std::vector<TextRange> Hits(std::string_view plainText) const;
    /// The rich text with the background of the hits coloured.
    std::string MarkedRtf(std::string_view rtfText) const override;

private:
    NoteSearch search_;
    std::vector<SearchTerm> terms_;
    std::vector<TextFinder> finders_;
    std::vector<FoldedFinder> foldedFinders_;
};

}  // namespace lore
