#include "notes/search_prefilter.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <iterator>
#include <optional>

#include "base/ascii.h"
#include "base/text.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace lore {

// An ASCII character of the text stands in the RTF as itself, as \'xx or as \uN, and between two characters of a word
// there may be line ends, braces, control words and whole groups that aren't text. So a text that holds a term has in
// its RTF either an escape that stands for ASCII, a field that may, or the term's first character with the next one, or
// the beginning of such markup, right behind it. From there on MayStandAt follows the term and gives up (with true)
// where the markup gets difficult.

namespace {

/// Line ends, the backslash and braces; a few more bytes do no harm.
bool MayBeMarkup(char c) {
    const auto value = static_cast<signed char>(c);
    return value < 0x20 || (value | 0x20) > 'z';
}

#if defined(__SSE2__)
__m128i Load(const char* at) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
}

__m128i IsMarkup(__m128i bytes) {
    const __m128i lower = _mm_or_si128(bytes, _mm_set1_epi8(0x20));
    return _mm_or_si128(_mm_cmplt_epi8(bytes, _mm_set1_epi8(0x20)), _mm_cmpgt_epi8(lower, _mm_set1_epi8('z')));
}
#endif

/// Where a term may begin.
class TermStarts {
public:
    explicit TermStarts(std::string_view term)
        : first_(term[0]), second_(term.size() > 1 ? term[1] : '\0'), alone_(term.size() == 1) {
#if defined(__SSE2__)
        const auto foldOf = [](char c) { return _mm_set1_epi8(IsLetter(c) ? 0x20 : 0); };
        firsts_ = _mm_set1_epi8(first_);
        firstFold_ = foldOf(first_);
        seconds_ = _mm_set1_epi8(second_);
        secondFold_ = foldOf(second_);
        any_ = _mm_set1_epi8(alone_ ? -1 : 0);
#endif
    }

    bool Matches(char c, char next) const {
        return ToLowerAscii(c) == first_ && (alone_ || ToLowerAscii(next) == second_ || MayBeMarkup(next));
    }
#if defined(__SSE2__)
    __m128i Mask(__m128i bytes, __m128i next) const {
        const __m128i starts = _mm_cmpeq_epi8(_mm_or_si128(bytes, firstFold_), firsts_);
        const __m128i goesOn = _mm_cmpeq_epi8(_mm_or_si128(next, secondFold_), seconds_);
        return _mm_and_si128(starts, _mm_or_si128(_mm_or_si128(goesOn, any_), IsMarkup(next)));
    }
#endif

private:
    char first_, second_;
    bool alone_;
#if defined(__SSE2__)
    __m128i firsts_, firstFold_, seconds_, secondFold_, any_;  // letters compare without regard to case
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
    const auto isDigitAt = [&](size_t place) { return place < rtf.size() && rtf[place] >= '0' && rtf[place] <= '9'; };
    if (at < rtf.size() && rtf[at] == '-' && isDigitAt(at + 1))
        ++at;
    while (isDigitAt(at))
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
    bool hasLeftGroup = false;  // behind which a break may be a hidden one
    while (at < rtf.size() && matched < term.size()) {
        const char c = rtf[at];
        if (c == '{')
            return true;
        if (c == '\\') {
            const Step step = StepOverEscape(rtf, at);
            if (step != Step::GoesOn)
                return step == Step::Unclear || hasLeftGroup;
        } else if (c == '}' || static_cast<unsigned char>(c) < 0x20) {
            hasLeftGroup = hasLeftGroup || c == '}';
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
    const TermStarts starts(term);
    size_t at = 0;
#if defined(__SSE2__)
    for (; at + 17 <= rtf.size(); at += 16) {
        auto mask = static_cast<unsigned>(_mm_movemask_epi8(starts.Mask(Load(&rtf[at]), Load(&rtf[at + 1]))));
        for (; mask != 0; mask &= mask - 1) {
            if (MayStandAt(rtf, term, at + static_cast<size_t>(std::countr_zero(mask))))
                return true;
        }
    }
#endif
    for (; at < rtf.size(); ++at) {
        const char next = at + 1 < rtf.size() ? rtf[at + 1] : '\0';
        if (starts.Matches(rtf[at], next) && MayStandAt(rtf, term, at))
            return true;
    }
    return false;
}

/// The code pages in which a byte beyond ASCII is never an ASCII character.
bool IsKnownCodePage(int64_t page) {
    constexpr int64_t kPages[] = {437, 850, 852, 866, 874, 932, 936, 949, 950, 10000};
    return std::find(std::begin(kPages), std::end(kPages), page) != std::end(kPages) || (page >= 1250 && page <= 1258);
}

/// The number behind an escape's word, whose first bytes `escape` holds; nothing if it may go on beyond them.
std::optional<int64_t> NumberBehind(std::string_view escape, size_t wordLength) {
    int64_t number = -1;
    const char* const end = escape.data() + escape.size();
    const auto result = std::from_chars(escape.data() + wordLength, end, number);
    return result.ptr == end ? std::nullopt : std::optional(number);
}

/// True for an escape that may stand for an ASCII character, or makes others do so.
bool MayMakeAscii(std::string_view escape) {
    constexpr std::string_view kPageWords[] = {"ansicpg", "cpg"};
    if (escape.starts_with('\''))
        return escape.size() < 2 || escape[1] < '8';
    for (const std::string_view word : kPageWords) {
        if (escape.starts_with(word))
            return !IsKnownCodePage(NumberBehind(escape, word.size()).value_or(-1));
    }
    // A field may stand for any character, unless it is a link.
    if (escape.starts_with("fldinst"))
        return escape.find("HYPERLINK") == std::string_view::npos;
    if (!escape.starts_with('u') || escape.size() < 2 || IsLetter(escape[1]))
        return false;
    const std::optional<int64_t> number = NumberBehind(escape, 1);
    if (!number)
        return true;
    const auto c = static_cast<char32_t>(*number + (*number < 0 ? 0x10000 : 0));
    return FoldCase(c & 0x1FFFFF) < 0x80;
}

/// Whether an escape that begins with these bytes is worth a look.
bool MayConcernAscii(char c, char next) {
    return c == '\'' || c == 'u' || c == 'a' || c == 'c' || (c == 'f' && next == 'l');
}

bool HidesAscii(std::string_view rtf) {
    constexpr size_t kLongestEscape = 20;
    size_t at = 0;
#if defined(__SSE2__)
    const auto equal = [](__m128i bytes, char c) { return _mm_cmpeq_epi8(bytes, _mm_set1_epi8(c)); };
    for (; at + 18 <= rtf.size(); at += 16) {
        const __m128i next = Load(&rtf[at + 1]);
        const __m128i field = _mm_and_si128(equal(next, 'f'), equal(Load(&rtf[at + 2]), 'l'));
        const __m128i other = _mm_or_si128(_mm_or_si128(equal(next, '\''), equal(next, 'u')),
                                           _mm_or_si128(equal(next, 'a'), equal(next, 'c')));
        const __m128i concerns = _mm_or_si128(other, field);
        auto mask = static_cast<unsigned>(_mm_movemask_epi8(_mm_and_si128(equal(Load(&rtf[at]), '\\'), concerns)));
        for (; mask != 0; mask &= mask - 1) {
            if (MayMakeAscii(rtf.substr(at + static_cast<size_t>(std::countr_zero(mask)) + 1, kLongestEscape)))
                return true;
        }
    }
#endif
    for (; at + 1 < rtf.size(); ++at) {
        const char next = at + 2 < rtf.size() ? rtf[at + 2] : '\0';
        if (rtf[at] == '\\' && MayConcernAscii(rtf[at + 1], next) && MayMakeAscii(rtf.substr(at + 1, kLongestEscape)))
            return true;
    }
    return false;
}

/// The term in ASCII, or nothing if the bytes of an RTF can't be compared with it: brackets may be those that a text
/// beside the body is read in.
std::string AsciiTerm(const SearchTerm& term) {
    std::string ascii;
    for (const char32_t c : term.folded) {
        if (c < 0x20 || c >= 0x7F || std::u32string_view(U"\\{}[]").find(c) != std::u32string_view::npos)
            return {};
        ascii += static_cast<char>(c);
    }
    // A blank may be the one that is put behind such a text.
    return ascii.starts_with(' ') ? std::string() : ascii;
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
