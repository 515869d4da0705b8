#pragma once

#include <memory>
#include <optional>
#include <string>
#include <unordered_map>

#include "bibliography/author_list.h"
#include "bibliography/source_list.h"
#include "notes/note_list_entry.h"

namespace lore {

/// Gives notes the texts of their sources when they enter a list. Each source is formatted once, on a copy. The lists
/// must outlive it and stay as they are.
class CitationTexts {
public:
    CitationTexts(const SourceList& sources, const AuthorList& authors) : sources_(sources), authors_(authors) {}

    /// Null for a note without sources that the NoteBook knows.
    std::shared_ptr<const Citations> For(const CNote& note);
    ListedNote Listed(CNote note);

private:
    const std::optional<std::string>& TextOf(int32_t sourceId);

    const SourceList& sources_;
    const AuthorList& authors_;
    std::unordered_map<int32_t, std::optional<std::string>> texts_;  // none for an unknown source
};

}  // namespace lore
