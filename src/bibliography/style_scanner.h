#pragma once

#include <cstdint>
#include <string_view>

#include "bibliography/citation_spans.h"

namespace lore {

/// Takes a recipe apart into its words while the program is compiled.
class StyleScanner {
protected:
    explicit constexpr StyleScanner(std::string_view text) : rest_(text) {}

    static constexpr void Require(bool condition) {
        if (!condition)
            throw "a recipe is written wrongly";
    }

    constexpr void SkipSpace() {
        while (!rest_.empty() && (rest_[0] == ' ' || rest_[0] == '\n'))
            rest_.remove_prefix(1);
    }

    constexpr bool AtEnd() {
        SkipSpace();
        return rest_.empty();
    }

    constexpr bool Sees(std::string_view word) {
        SkipSpace();
        return rest_.starts_with(word);
    }

    constexpr bool Take(std::string_view word) {
        if (!Sees(word))
            return false;
        rest_.remove_prefix(word.size());
        return true;
    }

    constexpr std::string_view Text() {
        Require(Take("{"));
        const size_t end = rest_.find('}');
        Require(end != std::string_view::npos);
        const std::string_view text = rest_.substr(0, end);
        rest_.remove_prefix(end + 1);
        return text;
    }

    constexpr uint8_t Slot() {
        SkipSpace();
        Require(!rest_.empty() && rest_[0] >= '0' && rest_[0] <= '8');
        const char digit = rest_[0];
        rest_.remove_prefix(1);
        return static_cast<uint8_t>(digit - '0');
    }

    constexpr int32_t Kind() {
        if (Take("italic"))
            return kItalic;
        if (Take("bold"))
            return kBold;
        Require(Take("underline"));
        return kUnderline;
    }

private:
    std::string_view rest_;
};

}  // namespace lore
