#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "rtf/control_words.h"

namespace lore {

/// Texts that stand beside the body: footnotes, comments, text boxes. They are read at their place, in brackets; this
/// says which characters that takes.
class Asides {
public:
    /// The group of that depth is one from here on.
    void Begin(size_t depth);
    /// Whether the group of that depth is one, not a group around it or within.
    bool BeginsAt(size_t depth) const { return !open_.empty() && open_.back().depth == depth; }
    /// A group closes: true if a bracket has to close with it.
    bool End(size_t depth);
    /// The end of the file ends one after the other.
    bool EndLast() { return !open_.empty() && End(open_.back().depth); }

    bool IsWithin() const { return !open_.empty(); }
    /// Whether nothing has to be put before text.
    bool IsIdle() const { return open_.empty() && !justClosed_; }
    /// What has to be put before text that follows on `last`; a line feed is a line break. Blanks that begin an aside
    /// are taken off the text.
    std::string Before(std::string_view& utf8, char last);
    /// A break within an aside, which becomes one of a line or a tab if more follows.
    void BreakWithin(TextBreak kind);
    /// A break of the body: what follows begins anew.
    void BreakOutside() { justClosed_ = false; }

private:
    struct Aside {
        size_t depth = 0;
        bool hasText = false;
        char pending = 0;
    };
    char TakeBreakAround();

    std::vector<Aside> open_;
    bool justClosed_ = false;
};

}  // namespace lore
