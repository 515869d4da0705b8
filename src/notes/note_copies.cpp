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

struct Choice {
    size_t chosen;  // the position of the best copy so far
    size_t file;    // the one that was met last
    int best = 0;   // the highest rank in that file
};

}  // namespace

std::vector<bool> ShownCopies(const std::vector<NoteCopy>& copies) {
    std::unordered_map<int32_t, Choice> choices;
    choices.reserve(copies.size());
    for (size_t i = 0; i < copies.size(); ++i) {
        const NoteCopy& copy = copies[i];
        const auto [entry, isFirst] = choices.try_emplace(copy.id, Choice{i, copy.file, Rank(copy)});
        if (isFirst)
            continue;
        // A file shows the first of its best copies of a note; the copies of a file stand side by side here.
        Choice& choice = entry->second;
        if (choice.file == copy.file && Rank(copy) <= choice.best)
            continue;
        choice.file = copy.file;
        choice.best = Rank(copy);
        if (IsBetter(copy, copies[choice.chosen]))
            choice.chosen = i;
    }
    std::vector<bool> shown(copies.size(), false);
    for (const auto& [id, choice] : choices)
        shown[choice.chosen] = true;
    return shown;
}

}  // namespace lore
