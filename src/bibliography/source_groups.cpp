#include "bibliography/source_groups.h"

#include <unordered_map>

#include "bibliography/citation_field.h"

namespace lore {

std::string_view GroupKey(const CSource& source, SourceGrouping grouping) {
    switch (grouping) {
        case SourceGrouping::Publication:
            return FieldText(source, 1);
        case SourceGrouping::Author:
            return source.AuthorText;
        default:
            return FieldText(source, 0);
    }
}

std::vector<SourceGroup> GroupSources(const SourceList& sources, SourceGrouping grouping) {
    std::vector<SourceGroup> groups;
    std::unordered_map<std::string_view, size_t> byKey;
    for (size_t i = 0; i < sources.Count(); ++i) {
        const std::string_view key = GroupKey(sources[i], grouping);
        const auto [entry, isNew] = byKey.try_emplace(key, groups.size());
        if (isNew)
            groups.push_back({.key = std::string(key), .positions = {}});
        SourceGroup& group = groups[entry->second];
        group.positions.push_back(i);
        group.noteCount += sources[i].NoteIDs.Count();
    }
    return groups;
}

}  // namespace lore
