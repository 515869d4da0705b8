#include "notes/note_copies.h"

#include <unordered_map>

namespace lore {

namespace {

int Rank(const NoteCopy& copy) {
    return (copy.isWhole ? 2 : 0) + (copy.isHome ? 1 : 0);
}

/// Anywhere but at home a copy is of no use, however new it is. Within a file no write leaves two copies, and what
/// stands first is what shows.
bool IsBetter(const NoteCopy& copy, const NoteCopy& other) {
    if (Rank(copy) != Rank(other))
        return Rank(copy) > Rank(other);
    return copy.file != other.file && copy.isHome && copy.isWhole && copy.edited > other.edited;
}

/// A file shows the first of its best copies of a note; its notes stand side by side here.
bool HasBetterBefore(const std::vector<NoteCopy>& copies, size_t i) {
    for (size_t j = i; j-- > 0 && copies[j].file == copies[i].file;) {
        if (copies[j].id == copies[i].id && Rank(copies[j]) >= Rank(copies[i]))
            return true;
    }
    return false;
}

}  // namespace

std::vector<bool> ShownCopies(const std::vector<NoteCopy>& copies) {
    std::unordered_map<int32_t, size_t> chosen;
    chosen.reserve(copies.size());
    for (size_t i = 0; i < copies.size(); ++i) {
        const auto [entry, isFirst] = chosen.try_emplace(copies[i].id, i);
        if (!isFirst && IsBetter(copies[i], copies[entry->second]) && !HasBetterBefore(copies, i))
            entry->second = i;
    }
    std::vector<bool> shown(copies.size(), false);
    for (const auto& [id, position] : chosen)
        shown[position] = true;
    return shown;
}

}  // namespace lore
