#include "notes/note_list_citations.h"

#include <utility>

#include "bibliography/citation.h"

namespace lore {

std::shared_ptr<const Citations> CitationTexts::For(const CNote& note) {
    if (note.sources.IsEmpty())
        return nullptr;
    auto citations = std::make_shared<Citations>();
    citations->reserve(note.sources.Count());
    for (const int32_t id : note.sources) {
        if (const std::optional<std::string>& text = TextOf(id))
            citations->push_back(*text);
    }
    return citations->empty() ? nullptr : citations;
}

ListedNote CitationTexts::Listed(CNote note) {
    auto citations = For(note);
    return {std::make_shared<CNote>(std::move(note)), std::move(citations), nullptr};
}

const std::optional<std::string>& CitationTexts::TextOf(int32_t sourceId) {
    const auto [entry, isNew] = texts_.try_emplace(sourceId);
    const CSource* const source = isNew ? sources_.FindSourceByID(sourceId) : nullptr;
    if (source) {
        CSource copy = *source;
        FormatSource(copy, authors_);
        entry->second = std::move(copy.FormattedText);
    }
    return entry->second;
}

}  // namespace lore
