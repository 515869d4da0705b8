#include "notes/search_prefilter.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <optional>

#include "base/ascii.h"
#include "base/text.h"
#include "notes/rtf_scan.h"
#include "notes/search_folded.h"

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

/// Whether a term may begin with these two bytes of a rich text.
bool MayStart(std::string_view term, char c, char next) {
    return ToLowerAscii(c) == term[0] && (term.size() == 1 || ToLowerAscii(next) == term[1] || MayBeMarkup(next));
}

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
    bool hasLeftGroup = false;  // behind which a break or a text may be a hidden one
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
            return hasLeftGroup;
        }
    }
    return matched == term.size();
}

/// Whether the letter at `at` surely belongs to a control word, and so to no text.
bool IsInControlWord(std::string_view rtf, size_t at) {
    constexpr size_t kLongest = 32;  // of the words that are told
    const size_t lowest = at - std::min(at, kLongest);
    while (at > lowest && IsLetter(rtf[at - 1]))
        --at;
    const size_t end = at;
    while (at > 0 && rtf[at - 1] == '\\')
        --at;
    return (end - at) % 2 == 1;
}

bool MayBeTextAt(std::string_view rtf, size_t at, std::string_view term) {
    return MayStandAt(rtf, term, at) && !(IsLetter(rtf[at]) && IsInControlWord(rtf, at));
}

bool MayHold(std::string_view rtf, std::string_view term) {
    size_t at = 0;
    if (AnyTermStart(rtf, at, term, MayBeTextAt))
        return true;
    for (; at < rtf.size(); ++at) {
        const char next = at + 1 < rtf.size() ? rtf[at + 1] : '\0';
        if (MayStart(term, rtf[at], next) && MayBeTextAt(rtf, at, term))
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
    // Bytes of a picture may look like the backslash of a control word.
    if (escape.starts_with("bin"))
        return escape.size() < 4 || !IsLetter(escape[3]);
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

bool HidesAsciiAt(std::string_view rtf, size_t at, std::string_view /*term*/) {
    constexpr size_t kLongestEscape = 20;
    return MayMakeAscii(rtf.substr(at + 1, kLongestEscape));
}

/// Whether an escape that begins with these bytes is worth a look.
bool MayConcernAscii(char c, char next) {
    return c == '\'' || c == 'u' || c == 'a' || c == 'c' || (c == 'f' && next == 'l') || (c == 'b' && next == 'i');
}

bool HidesAscii(std::string_view rtf) {
    size_t at = 0;
    if (AnyAsciiEscape(rtf, at, HidesAsciiAt))
        return true;
    for (; at + 1 < rtf.size(); ++at) {
        const char next = at + 2 < rtf.size() ? rtf[at + 2] : '\0';
        if (rtf[at] == '\\' && MayConcernAscii(rtf[at + 1], next) && HidesAsciiAt(rtf, at, {}))
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

/// The end of a term, at least four characters of it, that begins with the least frequent pair: where the term stands,
/// its end does, and there are fewer places to look at.
std::string RareEnd(std::string term) {
    constexpr size_t kShortest = 4;
    size_t rare = 0;
    const auto frequency = [&](size_t at) { return FrequencyInTexts(term[at]) + FrequencyInTexts(term[at + 1]); };
    for (size_t at = 1; at + kShortest <= term.size(); ++at) {
        if (frequency(at) < frequency(rare))
            rare = at;
    }
    return term.substr(rare);
}

}  // namespace

RtfPrefilter::RtfPrefilter(const NoteMatcher& matcher) : matcher_(matcher) {
    for (const SearchTerm& term : matcher.Terms()) {
        terms_.push_back(RareEnd(AsciiTerm(term)));
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
