#include "notes/note_copies.h"

#include <unordered_map>

namespace lore {

std::vector<bool> ShownCopies(const std::vector<NoteCopy>& copies) {
    std::unordered_map<int32_t, size_t> chosen;
    chosen.reserve(copies.size());
    for (size_t i = 0; i < copies.size(); ++i) {
        const auto [entry, isFirst] = chosen.try_emplace(copies[i].id, i);
        if (!isFirst && copies[i].isHome && !copies[entry->second].isHome)
            entry->second = i;
    }
    std::vector<bool> shown(copies.size(), false);
    for (const auto& [id, position] : chosen)
        shown[position] = true;
    return shown;
}

}  // namespace lore
