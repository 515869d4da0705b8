#include "notes/search_match.h"

#include <algorithm>
#include <utility>

#include "rtf/rtf.h"

namespace lore {

namespace {

template <typename Finders, typename Found>
size_t CountFound(const Finders& finders, Found found) {
    return static_cast<size_t>(std::count_if(finders.begin(), finders.end(), found));
}

}  // namespace

NoteMatcher::NoteMatcher(const NoteSearch& search) : search_(search) {
    for (const std::string& text : search.searchTerms) {
        const SearchTerm& term = terms_.emplace_back(SearchTerm::FromText(text));
        finders_.emplace_back(term.Utf8(), term.wholeWord);
        foldedFinders_.emplace_back(term);
    }
}

bool NoteMatcher::IsEnough(size_t foundTerms) const {
    return foundTerms > 0 && (search_.searchOperator != kAndOperator || foundTerms == terms_.size());
}

bool NoteMatcher::Matches(std::string_view plainText) const {
    return IsEnough(CountFound(finders_, [&](const TextFinder& finder) { return finder.Matches(plainText); }));
}

bool NoteMatcher::MatchesFolded(std::string_view folded) const {
    return IsEnough(CountFound(foldedFinders_,
                               [&](const FoldedFinder& finder) { return finder.Find(folded) != FoldedFinder::kNone; }));
}

std::vector<uint8_t> NoteMatcher::MatchSlices(const FoldedTexts& texts) const {
    const size_t count = texts.slices.size();
    std::vector<size_t> foundTerms(count);
    std::vector<uint8_t> found(count);
    for (const FoldedFinder& finder : foldedFinders_) {
        std::fill(found.begin(), found.end(), uint8_t{0});
        finder.MarkFound(texts, found);
        for (size_t i = 0; i < count; ++i)
            foundTerms[i] += found[i];
    }
    for (size_t i = 0; i < count; ++i)
        found[i] = IsEnough(foundTerms[i]);
    return found;
}

std::vector<TextRange> NoteMatcher::Hits(std::string_view plainText) const {
    std::vector<TextRange> hits;
    for (const TextFinder& finder : finders_) {
        const std::vector<TextRange> found = finder.FindAll(plainText);
        hits.insert(hits.end(), found.begin(), found.end());
    }
    std::sort(hits.begin(), hits.end(), [](const TextRange& a, const TextRange& b) {
        return std::pair(a.begin, a.end) < std::pair(b.begin, b.end);
    });
    return hits;
}

std::string NoteMatcher::MarkedRtf(std::string_view rtfText) const {
    return MarkRtf(rtfText, Hits(PlainText(rtfText)));
}

}  // namespace lore
