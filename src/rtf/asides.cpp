#include "rtf/asides.h"

#include <algorithm>
#include <utility>

#include "base/ascii.h"

namespace lore {

namespace {

constexpr std::string_view kNoBreakSpace = "\u00A0";

void RemoveBlanks(std::string_view& utf8) {
    for (;;) {
        if (utf8.starts_with(' ') || utf8.starts_with('\t'))
            utf8.remove_prefix(1);
        else if (utf8.starts_with(kNoBreakSpace))
            utf8.remove_prefix(kNoBreakSpace.size());
        else
            return;
    }
}

/// Behind these a bracket opens without a blank.
bool IsGap(char last) {
    return last == ' ' || last == '\t' || last == '\n' || last == '[';
}

bool BeginsWord(char c) {
    return IsDigit(c) || IsLetter(c) || static_cast<unsigned char>(c) >= 0x80;
}

}  // namespace

void Asides::Begin(size_t depth) {
    if (!BeginsAt(depth))
        open_.push_back({depth});
}

bool Asides::End(size_t depth) {
    if (!BeginsAt(depth))
        return false;
    const bool hasText = open_.back().hasText;
    open_.pop_back();
    justClosed_ = justClosed_ || hasText;
    return hasText;
}

std::string Asides::Before(std::string_view& utf8, char last) {
    std::string before;
    Aside* const aside = open_.empty() ? nullptr : &open_.back();
    if (aside && !aside->hasText) {
        RemoveBlanks(utf8);
        if (utf8.empty())
            return before;
        aside->hasText = true;
        const char broken = TakeBreakAround();
        before = broken != 0 ? std::string{broken, '['} : IsGap(last) ? "[" : " [";
    } else if (aside && aside->pending != 0) {
        before = std::exchange(aside->pending, '\0');
    } else if (justClosed_ && BeginsWord(utf8.front())) {
        before = " ";
    }
    justClosed_ = false;
    return before;
}

/// The break that waits in the aside around the one that begins, or 0.
char Asides::TakeBreakAround() {
    const auto around =
        std::find_if(open_.rbegin() + 1, open_.rend(), [](const Aside& aside) { return aside.hasText; });
    return around == open_.rend() ? '\0' : std::exchange(around->pending, '\0');
}

void Asides::BreakWithin(TextBreak kind) {
    Aside& aside = open_.back();
    if (aside.hasText && aside.pending != '\n')
        aside.pending = CharacterOf(kind);
}

}  // namespace lore
