#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "bibliography/author_list.h"
#include "bibliography/source_list.h"
#include "notes/note_list_entry.h"

namespace lore {

/// Gives notes what hangs on them in a list: the texts of their sources and the path that they are sorted by. Each
/// source is formatted once, on a copy, and notes of equal sources or equal paths share theirs. The lists must outlive
/// it and stay as they are.
class CitationTexts {
public:
    CitationTexts(const SourceList& sources, const AuthorList& authors) : sources_(sources), authors_(authors) {}

    /// Null for a note without sources that the NoteBook knows.
    std::shared_ptr<const Citations> For(const CNote& note);
    ListedNote Listed(CNote note);

private:
    const std::optional<CitationText>& TextOf(int32_t sourceId);
    std::shared_ptr<const CProCategoryTree> PathOf(const CNote& note);

    const SourceList& sources_;
    const AuthorList& authors_;
    std::unordered_map<int32_t, std::optional<CitationText>> texts_;                  // none for an unknown source
    std::map<std::vector<int32_t>, std::shared_ptr<const Citations>> citations_;      // by the ids of the sources
    std::unordered_map<std::string, std::shared_ptr<const CProCategoryTree>> paths_;  // by Identity
};

}  // namespace lore
