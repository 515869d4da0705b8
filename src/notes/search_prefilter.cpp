#include "notes/search_prefilter.h"

#include <algorithm>
#include <bit>
#include <charconv>

#include "base/text.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace lore {

// An ASCII character of the text stands in the RTF as itself, as \'xx or as \uN, and between two characters of a word
// there may be line ends, braces, control words and whole groups that aren't text. So a text that holds a term has in
// its RTF either an escape that stands for ASCII, or the term's first character with the next one, or the beginning of
// such markup, right behind it. From there on MayStandAt follows the term and gives up (with true) where the markup
// gets difficult.

namespace {

bool IsLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

char ToLowerAscii(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 0x20) : c;
}

/// Line ends, the backslash and braces; a few more bytes do no harm.
bool MayBeMarkup(char c) {
    return static_cast<unsigned char>(c) < 0x20 || (static_cast<unsigned char>(c & 0xDF) - 0x5BU) <= 2;
}

#if defined(__SSE2__)
__m128i Load(const char* at) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
}

__m128i IsAtMost(__m128i bytes, char limit) {
    return _mm_cmpeq_epi8(_mm_min_epu8(bytes, _mm_set1_epi8(limit)), bytes);
}

/// Letters compare without regard to case: `fold` is 0x20 for a letter, else 0.
__m128i IsCharacter(__m128i bytes, char character, char fold) {
    return _mm_cmpeq_epi8(_mm_or_si128(bytes, _mm_set1_epi8(fold)), _mm_set1_epi8(character));
}

__m128i IsMarkup(__m128i bytes) {
    const __m128i upper = _mm_and_si128(bytes, _mm_set1_epi8(static_cast<char>(0xDF)));
    const __m128i braces = IsAtMost(_mm_sub_epi8(upper, _mm_set1_epi8(0x5B)), 2);
    return _mm_or_si128(braces, IsAtMost(bytes, 0x1F));
}
#endif

/// Walks over pairs of neighbouring bytes. `Pairs` tells for one pair (Matches) and for 16 at once (Mask) which ones
/// are worth a visit; true as soon as `visit` gives true for the position of one. The last byte's neighbour is a zero
/// byte.
template <typename Pairs, typename Visit>
bool AnyPair(std::string_view bytes, const Pairs& pairs, Visit visit) {
    size_t at = 0;
#if defined(__SSE2__)
    for (; at + 17 <= bytes.size(); at += 16) {
        auto mask = static_cast<unsigned>(_mm_movemask_epi8(pairs.Mask(Load(&bytes[at]), Load(&bytes[at + 1]))));
        for (; mask != 0; mask &= mask - 1) {
            if (visit(at + static_cast<size_t>(std::countr_zero(mask))))
                return true;
        }
    }
#endif
    for (; at < bytes.size(); ++at) {
        if (pairs.Matches(bytes[at], at + 1 < bytes.size() ? bytes[at + 1] : '\0') && visit(at))
            return true;
    }
    return false;
}

/// Where a term may begin.
struct TermStarts {
    explicit TermStarts(std::string_view term)
        : first(term[0]), second(term.size() > 1 ? term[1] : '\0'), alone(term.size() == 1) {}

    bool Matches(char c, char next) const {
        return ToLowerAscii(c) == first && (alone || ToLowerAscii(next) == second || MayBeMarkup(next));
    }
#if defined(__SSE2__)
    __m128i Mask(__m128i bytes, __m128i next) const {
        const __m128i starts = IsCharacter(bytes, first, FoldOf(first));
        return alone ? starts
                     : _mm_and_si128(starts, _mm_or_si128(IsCharacter(next, second, FoldOf(second)), IsMarkup(next)));
    }
    static char FoldOf(char c) {
        return IsLetter(c) ? 0x20 : 0;
    }
#endif

    char first, second;
    bool alone;
};

/// The escapes that MayMakeAscii looks at.
struct Escapes {
    static bool Matches(char c, char next) {
        return c == '\\' && (next == '\'' || next == 'u' || next == 'a' || next == 'c');
    }
#if defined(__SSE2__)
    static __m128i Mask(__m128i bytes, __m128i next) {
        const __m128i quoteOrU = _mm_or_si128(IsCharacter(next, '\'', 0), IsCharacter(next, 'u', 0));
        const __m128i page = _mm_or_si128(IsCharacter(next, 'a', 0), IsCharacter(next, 'c', 0));
        return _mm_and_si128(IsCharacter(bytes, '\\', 0), _mm_or_si128(quoteOrU, page));
    }
#endif
};

enum class Step { GoesOn, Breaks, Unclear };

bool IsOneOf(std::string_view word, std::initializer_list<std::string_view> words) {
    return std::find(words.begin(), words.end(), word) != words.end();
}

/// What the escape at `at` does to the word around it; steps over it.
Step StepOverEscape(std::string_view rtf, size_t& at) {
    const size_t begin = ++at;
    while (at < rtf.size() && IsLetter(rtf[at]))
        ++at;
    const std::string_view word = rtf.substr(begin, at - begin);
    if (word.empty()) {
        const char symbol = begin < rtf.size() ? rtf[begin] : '\0';
        return symbol == '~' || symbol == '-' || symbol == '_' ? Step::Breaks : Step::Unclear;
    }
    while (at < rtf.size() && (rtf[at] == '-' || (rtf[at] >= '0' && rtf[at] <= '9')))
        ++at;
    if (at < rtf.size() && rtf[at] == ' ')
        ++at;
    if (IsOneOf(word, {"par", "line", "tab", "cell", "row"}))
        return Step::Breaks;
    return IsOneOf(word, {"b", "i", "ul", "ulnone", "f", "fs", "cf", "cb", "highlight", "lang", "strike"})
               ? Step::GoesOn
               : Step::Unclear;
}

bool MayStandAt(std::string_view rtf, std::string_view term, size_t at) {
    size_t matched = 0;
    while (at < rtf.size() && matched < term.size()) {
        const char c = rtf[at];
        if (c == '{')
            return true;
        if (c == '\\') {
            const Step step = StepOverEscape(rtf, at);
            if (step != Step::GoesOn)
                return step == Step::Unclear;
        } else if (c == '}' || static_cast<unsigned char>(c) < 0x20) {
            ++at;
        } else if (ToLowerAscii(c) == term[matched]) {
            ++at;
            ++matched;
        } else {
            return false;
        }
    }
    return matched == term.size();
}

bool MayHold(std::string_view rtf, std::string_view term) {
    return AnyPair(rtf, TermStarts(term), [&](size_t at) { return MayStandAt(rtf, term, at); });
}

bool IsKnownCodePage(int64_t page) {
    return page == 0 || page == 437 || page == 850 || page == 852 || page == 866 || (page >= 874 && page <= 950) ||
           (page >= 1250 && page <= 1258) || page == 10000;
}

/// True for an escape that may stand for an ASCII character, or makes others do so.
bool MayMakeAscii(std::string_view escape) {
    const auto numberAt = [&](size_t from, int base) {
        int64_t number = -1;
        std::from_chars(escape.data() + from, escape.data() + escape.size(), number, base);
        return number;
    };
    if (escape.starts_with('\''))
        return escape.size() > 1 && escape[1] < '8';
    if (escape.starts_with("ansicpg"))
        return !IsKnownCodePage(numberAt(7, 10));
    if (escape.starts_with("cpg"))
        return !IsKnownCodePage(numberAt(3, 10));
    if (!escape.starts_with('u') || escape.size() < 2 || IsLetter(escape[1]))
        return false;
    const int64_t number = numberAt(1, 10);
    const auto c = static_cast<char32_t>(number < 0 ? number + 0x10000 : number);
    return FoldCase(c & 0x1FFFFF) < 0x80;
}

bool HidesAscii(std::string_view rtf) {
    constexpr size_t kLongestEscape = 20;
    return AnyPair(rtf, Escapes(), [&](size_t at) { return MayMakeAscii(rtf.substr(at + 1, kLongestEscape)); });
}

/// The term in ASCII, or nothing if the bytes of an RTF can't be compared with it.
std::string AsciiTerm(const SearchTerm& term) {
    std::string ascii;
    for (const char32_t c : term.folded) {
        if (c < 0x20 || c >= 0x7F || c == '\\' || c == '{' || c == '}')
            return {};
        ascii += static_cast<char>(c);
    }
    return ascii;
}

}  // namespace

RtfPrefilter::RtfPrefilter(const NoteMatcher& matcher) : matcher_(matcher) {
    for (const SearchTerm& term : matcher.Terms()) {
        terms_.push_back(AsciiTerm(term));
        anyTells_ = anyTells_ || !terms_.back().empty();
    }
}

bool RtfPrefilter::MayMatch(std::string_view rtf) const {
    if (!anyTells_)
        return true;
    const auto possible = std::count_if(terms_.begin(), terms_.end(),
                                        [&](const std::string& term) { return term.empty() || MayHold(rtf, term); });
    return matcher_.IsEnough(static_cast<size_t>(possible)) || HidesAscii(rtf);
}

}  // namespace lore
