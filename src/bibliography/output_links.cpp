#include "bibliography/output_links.h"

#include <algorithm>

#include "base/text.h"

namespace lore {

namespace {

constexpr std::u32string_view kSchemes[] = {U"http", U"https", U"ftp"};
constexpr std::u32string_view kMark = U"://";
constexpr std::u32string_view kEnds =
    U" \u00A0\u2003\u2009\u202F\u3000<>\"\u00AB\u00BB\u201C\u201D\u201E\u3001\u3002\uFF0C\uFF09\uFF1B";
constexpr std::u32string_view kSentenceMarks = U".,;:!?'\u2019";

/// Where the address begins whose mark stands at a position; that position if there is no known scheme before it.
size_t SchemeBegin(std::u32string_view text, size_t mark) {
    for (const std::u32string_view scheme : kSchemes) {
        if (!text.substr(0, mark).ends_with(scheme))
            continue;
        const size_t begin = mark - scheme.size();
        if (begin == 0 || !IsWordCharacter(text[begin - 1]))
            return begin;
    }
    return mark;
}

/// Without what closes the sentence or a bracket that was opened outside.
size_t CutSentence(std::u32string_view text, size_t begin, size_t end) {
    const std::u32string_view link = text.substr(begin, end - begin);
    auto unopened = std::count(link.begin(), link.end(), U')') - std::count(link.begin(), link.end(), U'(');
    while (end > begin) {
        const char32_t last = text[end - 1];
        if (last == U')' && unopened > 0)
            --unopened;
        else if (last != U']' && last != U'}' && kSentenceMarks.find(last) == std::u32string_view::npos)
            break;
        --end;
    }
    return end;
}

}  // namespace

std::vector<LinkRange> FindLinks(std::u32string_view text) {
    std::vector<LinkRange> links;
    for (size_t mark = text.find(kMark); mark != std::u32string_view::npos;) {
        const size_t host = mark + kMark.size();
        const size_t begin = SchemeBegin(text, mark);
        size_t next = host;
        if (begin < mark) {
            next = std::min(text.find_first_of(kEnds, host), text.size());
            if (const size_t end = CutSentence(text, host, next); end > host)
                links.push_back({begin, end});
        }
        mark = text.find(kMark, next);
    }
    return links;
}

}  // namespace lore
