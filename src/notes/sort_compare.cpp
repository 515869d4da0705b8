#include "notes/sort_compare.h"

#include <algorithm>

namespace lore {

namespace {

constexpr int32_t kLastUnsorted = 700;
constexpr int32_t kFirstDescending = 800;

bool CompareSourceTexts(const ListedNote& note, const ListedNote& other) {
    const Citations& own = SortCitations(note);
    const Citations& others = SortCitations(other);
    const size_t shared = std::min(own.size(), others.size());
    for (size_t i = 0; i < shared; ++i) {
        if (const int order = others[i].Folded().compare(own[i].Folded()); order != 0)
            return order < 0;
    }
    if (own.size() != others.size())
        return others.size() < own.size();
    return other.Created().IsEarlierOrEqual(note.Created());
}

bool ComparePaths(const ListedNote& note, const ListedNote& other) {
    const CProCategoryTree& own = SortPath(note);
    const CProCategoryTree& others = SortPath(other);
    if (others.IsLess(own))
        return true;
    if (others.IsSameTree(own))
        return other.Created().IsEarlierOrEqual(note.Created());
    // A note without a category goes first, and upwards it never stays before a path of the reserved category.
    return (others.id < 0 && own.id > 0) || (others.id == kUnassignedID && own.id < 0);
}

}  // namespace

SortBy SortKeyOf(int32_t sortId) {
    switch (sortId) {
        case kDateAddedUp:
        case kDateAddedDown:
            return SortBy::DateAdded;
        case kDateChangedUp:
        case kDateChangedDown:
            return SortBy::DateChanged;
        case kSourceUp:
        case kSourceDown:
            return SortBy::Sources;
        case kCategoryUp:
        case kCategoryDown:
            return SortBy::Categories;
        default:
            return SortBy::Nothing;
    }
}

bool IsSortingId(int32_t sortId) {
    return sortId > kLastUnsorted && sortId != kAddToTop && sortId != kAddToBottom;
}

bool IsDescendingId(int32_t sortId) {
    return sortId >= kFirstDescending;
}

bool CompareNotes(const ListedNote& note, const ListedNote& other, int32_t sortId) {
    switch (SortKeyOf(sortId)) {
        case SortBy::DateAdded:
            return other.Created().IsEarlierOrEqual(note.Created());
        case SortBy::DateChanged:
            return other.note->dateEdited.IsEarlierOrEqual(note.note->dateEdited);
        case SortBy::Sources:
            return CompareSourceTexts(note, other);
        case SortBy::Categories:
            return ComparePaths(note, other);
        case SortBy::Nothing:
            break;
    }
    return false;
}

const CProCategoryTree& SortPath(const ListedNote& note) {
    static const CProCategoryTree none;
    return note.sortPath ? *note.sortPath : none;
}

const Citations& SortCitations(const ListedNote& note) {
    static const Citations none;
    return note.citations ? *note.citations : none;
}

}  // namespace lore
