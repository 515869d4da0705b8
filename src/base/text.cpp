#include "base/text.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <limits>
#include <unicode/uchar.h>
#include <vector>

#include "base/ascii.h"

namespace lore {

namespace {

constexpr std::string_view kWhiteSpace = " \t\n\v\f\r";
constexpr char32_t kPlaneSize = 0x10000;

/// One answer for each character of the first plane, worked out once.
template <typename Value, typename Answer>
std::vector<Value> FirstPlane(Answer answer) {
    std::vector<Value> table(kPlaneSize);
    for (char32_t c = 0; c < kPlaneSize; ++c)
        table[c] = static_cast<Value>(answer(static_cast<UChar32>(c)));
    return table;
}

UChar32 Fold(UChar32 c) {
    return u_foldCase(c, U_FOLD_CASE_DEFAULT);
}

bool BelongsToWord(UChar32 c) {
    return u_isalnum(c) || c == '_' || (U_GET_GC_MASK(c) & U_GC_M_MASK) != 0;
}

}  // namespace

char32_t LowerCharacter(char32_t c) {
    return static_cast<char32_t>(u_tolower(static_cast<UChar32>(c)));
}

char32_t UpperCharacter(char32_t c) {
    return static_cast<char32_t>(u_toupper(static_cast<UChar32>(c)));
}

char32_t FoldCase(char32_t c) {
    static const std::vector<char32_t> table = FirstPlane<char32_t>(Fold);
    return c < kPlaneSize ? table[c] : static_cast<char32_t>(Fold(static_cast<UChar32>(c)));
}

bool IsWordCharacter(char32_t c) {
    static const std::vector<uint8_t> table = FirstPlane<uint8_t>(BelongsToWord);
    return c < kPlaneSize ? table[c] != 0 : BelongsToWord(static_cast<UChar32>(c));
}

std::string_view TrimLeft(std::string_view text) {
    const size_t from = text.find_first_not_of(kWhiteSpace);
    return from == std::string_view::npos ? std::string_view{} : text.substr(from);
}

std::string_view TrimRight(std::string_view text) {
    return text.substr(0, text.find_last_not_of(kWhiteSpace) + 1);
}

std::string_view Trim(std::string_view text) {
    return TrimLeft(TrimRight(text));
}

std::string_view TakeLine(std::string_view& text) {
    const std::string_view line = text.substr(0, text.find('\n'));
    text.remove_prefix(std::min(line.size() + 1, text.size()));
    return line;
}

int ParseInt(std::string_view text) {
    text = TrimLeft(text);
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+'))
        text.remove_prefix(1);
    // Nearly all digits of a number field are zeros in front.
    text.remove_prefix(std::min(text.find_first_not_of('0'), text.size()));
    constexpr int64_t kBeyond = int64_t{std::numeric_limits<int32_t>::max()} + 1;
    int64_t value = 0;
    for (size_t i = 0; i < text.size() && IsDigit(text[i]); ++i)
        value = std::min(value * 10 + (text[i] - '0'), kBeyond);
    return static_cast<int>(negative ? -value : std::min(value, kBeyond - 1));
}

double ParseDouble(std::string_view text) {
    text = TrimLeft(text);
    if (text.starts_with('+'))
        text.remove_prefix(1);
    const size_t first = text.starts_with('-') ? 1 : 0;
    if (first >= text.size() || (!IsDigit(text[first]) && text[first] != '.'))
        return 0.0;
    double value = 0.0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

std::string_view LastPathComponent(std::string_view path) {
    return path.substr(path.find_last_of("/\\") + 1);
}

std::string_view FileExtension(std::string_view path) {
    const std::string_view name = LastPathComponent(path);
    const size_t point = name.rfind('.');
    return point == std::string_view::npos ? std::string_view{} : name.substr(point + 1);
}

std::string CleanText(std::string_view bytes) {
    std::string clean(bytes);
    std::erase_if(clean, [](char c) { return c == '\0' || c == '\x1A'; });
    return clean;
}

std::string ReplaceAll(std::string_view text, std::string_view from, std::string_view to) {
    std::string result;
    result.reserve(text.size());
    size_t at = 0;
    for (size_t hit = text.find(from); hit != std::string_view::npos; hit = text.find(from, at)) {
        result.append(text, at, hit - at).append(to);
        at = hit + from.size();
    }
    return result.append(text, at);
}

}  // namespace lore
