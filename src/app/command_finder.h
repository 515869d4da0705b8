#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace lore {

/// What a few letters can lead to. The order is that of equal matches.
/// A note stands in the current list, another note does not.
enum class FoundKind : uint8_t { Command, NoteBook, Category, Source, KeyWord, Note, OtherNote, Search };

/// One thing that can be found.
struct FindableItem {
    FoundKind kind = FoundKind::Command;
    std::string text;    ///< what is matched and shown
    std::string detail;  ///< shown beside it: a menu and a shortcut, a path
    int32_t id = -1;     ///< of the thing among those of its kind
};

/// An item that matches, with the characters of its text that do, in rising order.
struct FoundItem {
    size_t item = 0;
    int score = 0;
    std::vector<int> marks;
};

/// Finds things by a few letters of their words. Each word of what is typed has to stand in the text, its letters in
/// order but not side by side; letters that begin a word, that follow each other and that stand early count more. Case
/// and accents of the alphabet don't matter.
class CommandFinder {
public:
    void Clear() { items_.clear(), folded_.clear(); }
    void Add(FindableItem item);
    const std::vector<FindableItem>& Items() const { return items_; }

    /// The best matches, best first, at most `limit`; without a word the first items in the order in which they came.
    std::vector<FoundItem> Find(std::string_view typed, size_t limit) const;

private:
    std::vector<FindableItem> items_;
    std::vector<std::u32string> folded_;  // the texts as they are compared
};

}  // namespace lore
