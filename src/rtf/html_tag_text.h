#pragma once

#include <algorithm>
#include <string_view>

namespace lore {

// How tags are written, for what looks at a page before the parser does.

constexpr std::string_view kTagBlanks = " \t\r\n\f", kTagEnds = " \t\r\n\f/>";

/// The place behind the next attribute of a tag, or that of the tag's bracket.
inline size_t BehindAttribute(std::string_view page, size_t at) {
    const auto next = [&](size_t found) { return std::min(found, page.size()); };
    at = next(page.find_first_not_of(" \t\r\n\f/", at));
    if (page.substr(at).starts_with('>'))
        return at;
    at = next(page.find_first_of(" \t\r\n\f/>=", std::min(at + 1, page.size())));
    const size_t sign = next(page.find_first_not_of(kTagBlanks, at));
    if (!page.substr(sign).starts_with('='))
        return at;
    const size_t value = next(page.find_first_not_of(kTagBlanks, sign + 1));
    const std::string_view rest = page.substr(value);
    if (rest.starts_with('"') || rest.starts_with('\''))
        return next(next(page.find(rest.front(), value + 1)) + 1);
    return next(page.find_first_of(" \t\r\n\f>", value));
}

}  // namespace lore
