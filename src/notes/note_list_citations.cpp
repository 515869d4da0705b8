#include "notes/note_list_citations.h"

#include <utility>

#include "bibliography/citation.h"

namespace lore {

std::shared_ptr<const Citations> CitationTexts::For(const CNote& note) {
    if (note.sources.IsEmpty())
        return nullptr;
    const auto [known, isNew] = citations_.try_emplace(note.sources.Values());
    if (!isNew)
        return known->second;
    auto citations = std::make_shared<Citations>();
    citations->reserve(note.sources.Count());
    for (const int32_t id : note.sources) {
        if (const std::optional<CitationText>& text = TextOf(id))
            citations->push_back(*text);
    }
    if (!citations->empty())
        known->second = std::move(citations);
    return known->second;
}

ListedNote CitationTexts::Listed(CNote note) {
    auto citations = For(note);
    auto path = PathOf(note);
    return {std::make_shared<CNote>(std::move(note)), std::move(citations), std::move(path)};
}

std::shared_ptr<const CProCategoryTree> CitationTexts::PathOf(const CNote& note) {
    const CProCategoryTree* const path = FindSortPath(note);
    if (!path)
        return nullptr;
    const auto [known, isNew] = paths_.try_emplace(path->Identity());
    if (isNew)
        known->second = CopySortPath(note);
    return known->second;
}

const std::optional<CitationText>& CitationTexts::TextOf(int32_t sourceId) {
    const auto [entry, isNew] = texts_.try_emplace(sourceId);
    const CSource* const source = isNew ? sources_.FindSourceByID(sourceId) : nullptr;
    if (source) {
        CSource copy = *source;
        FormatSource(copy, authors_);
        entry->second.emplace(std::move(copy.FormattedText));
    }
    return entry->second;
}

}  // namespace lore
