#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

#include "base/ascii.h"
#include "base/text.h"
#include "base/utf8.h"

namespace lore {

namespace {

/// Windows-1252 for the bytes 0x80 to 0x9F; the five holes keep their own number.
constexpr std::array<char16_t, 32> kWindows1252 = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                   0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                                   0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                   0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

constexpr char32_t kReplacement = 0xFFFD;

/// The byte of a character in Windows-1252, or -1.
int ToWindows1252(char32_t c) {
    if (c < 0x80 || (c >= 0xA0 && c <= 0xFF))
        return static_cast<int>(c);
    const auto found = std::find(kWindows1252.begin(), kWindows1252.end(), c);
    return found == kWindows1252.end() ? -1 : static_cast<int>(0x80 + (found - kWindows1252.begin()));
}

size_t AsciiPrefix(std::string_view bytes) {
    size_t at = 0;
    for (uint64_t block = 0; at + 8 <= bytes.size(); at += 8) {
        std::memcpy(&block, bytes.data() + at, 8);
        if (block & 0x8080808080808080u)
            break;
    }
    while (at < bytes.size() && static_cast<unsigned char>(bytes[at]) < 0x80)
        ++at;
    return at;
}

struct Decoded {
    char32_t character;
    size_t length;  ///< 0 if the bytes are no UTF-8
};

/// The character at the front of a text that isn't empty.
Decoded DecodeUtf8(std::string_view s) {
    // cppcheck-suppress containerOutOfBounds; callers look first
    const auto lead = static_cast<unsigned char>(s[0]);
    if (lead < 0x80)
        return {lead, 1};
    if (lead < 0xC2 || lead > 0xF4)
        return {kReplacement, 0};
    const size_t length = SequenceLength(s[0]);
    if (s.size() < length)
        return {kReplacement, 0};
    char32_t c = LeadBits(s[0], length);
    for (size_t i = 1; i < length; ++i) {
        if (!IsContinuation(s[i]))
            return {kReplacement, 0};
        c = WithNext(c, s[i]);
    }
    const bool overlong = (length == 3 && c < 0x800) || (length == 4 && c < 0x10000);
    if (overlong || (c >= 0xD800 && c <= 0xDFFF) || c > 0x10FFFF)
        return {kReplacement, 0};
    return {c, length};
}

}  // namespace

bool IsValidUtf8(std::string_view bytes) {
    while (true) {
        bytes.remove_prefix(AsciiPrefix(bytes));
        if (bytes.empty())
            return true;
        const size_t length = DecodeUtf8(bytes).length;
        if (length == 0)
            return false;
        bytes.remove_prefix(length);
    }
}

char32_t FromWindows1252(unsigned char byte) {
    return byte >= 0x80 && byte <= 0x9F ? kWindows1252[byte - 0x80u] : byte;
}

void AppendUtf8(std::string& utf8, char32_t c) {
    if ((c >= 0xD800 && c <= 0xDFFF) || c > 0x10FFFF)
        c = kReplacement;
    const auto tail = [&](int shift) { utf8 += static_cast<char>(0x80 | (c >> shift & 0x3F)); };
    if (c < 0x80) {
        utf8 += static_cast<char>(c);
    } else if (c < 0x800) {
        utf8 += static_cast<char>(0xC0 | c >> 6);
        tail(0);
    } else if (c < 0x10000) {
        utf8 += static_cast<char>(0xE0 | c >> 12);
        tail(6);
        tail(0);
    } else {
        utf8 += static_cast<char>(0xF0 | c >> 18);
        tail(12);
        tail(6);
        tail(0);
    }
}

std::string ToUtf8(std::string_view bytes) {
    if (IsValidUtf8(bytes))
        return std::string(bytes);
    std::string utf8;
    utf8.reserve(bytes.size() + bytes.size() / 4);
    for (const char byte : bytes)
        AppendUtf8(utf8, FromWindows1252(static_cast<unsigned char>(byte)));
    return utf8;
}

std::string FromUtf8(std::string_view utf8) {
    if (AsciiPrefix(utf8) == utf8.size())
        return std::string(utf8);
    std::string bytes;
    bytes.reserve(utf8.size());
    for (std::string_view rest = utf8; !rest.empty();) {
        const Decoded decoded = DecodeUtf8(rest);
        const int byte = decoded.length == 0 ? -1 : ToWindows1252(decoded.character);
        if (byte < 0)
            return std::string(utf8);
        bytes += static_cast<char>(byte);
        rest.remove_prefix(decoded.length);
    }
    return IsValidUtf8(bytes) ? std::string(utf8) : bytes;
}

std::u32string Utf8ToCodePoints(std::string_view utf8) {
    std::u32string text;
    text.reserve(utf8.size());
    while (!utf8.empty()) {
        const Decoded decoded = DecodeUtf8(utf8);
        text += decoded.character;
        utf8.remove_prefix(std::max<size_t>(decoded.length, 1));
    }
    return text;
}

std::string CodePointsToUtf8(std::u32string_view text) {
    std::string utf8;
    utf8.reserve(text.size());
    for (const char32_t c : text)
        AppendUtf8(utf8, c);
    return utf8;
}

std::u32string ToCodePoints(std::string_view bytes) {
    if (IsValidUtf8(bytes))
        return Utf8ToCodePoints(bytes);
    std::u32string text;
    text.reserve(bytes.size());
    for (const char byte : bytes)
        text += FromWindows1252(static_cast<unsigned char>(byte));
    return text;
}

size_t CharacterCount(std::string_view bytes) {
    return CharacterOfByte(bytes, bytes.size());
}

size_t ByteOfCharacter(std::string_view bytes, size_t character) {
    if (!IsValidUtf8(bytes))
        return std::min(character, bytes.size());
    size_t at = 0;
    for (; character > 0 && at < bytes.size(); --character)
        at += DecodeUtf8(bytes.substr(at)).length;
    return at;
}

size_t CharacterOfByte(std::string_view bytes, size_t byte) {
    byte = std::min(byte, bytes.size());
    if (!IsValidUtf8(bytes))
        return byte;
    return CountCharacters(bytes.substr(0, byte));
}

namespace {

/// Maps each letter; in Windows-1252 a letter whose partner has no place there stays.
std::string MapLetters(std::string_view bytes, char32_t (*map)(char32_t)) {
    std::string result;
    result.reserve(bytes.size());
    if (IsValidUtf8(bytes)) {
        for (std::string_view rest = bytes; !rest.empty();) {
            const Decoded decoded = DecodeUtf8(rest);
            AppendUtf8(result, map(decoded.character));
            rest.remove_prefix(decoded.length);
        }
        return result;
    }
    for (const char byte : bytes) {
        const int mapped = ToWindows1252(map(FromWindows1252(static_cast<unsigned char>(byte))));
        result += mapped < 0 ? byte : static_cast<char>(mapped);
    }
    return result;
}

}  // namespace

std::string ToLower(std::string_view bytes) {
    if (AsciiPrefix(bytes) != bytes.size())
        return MapLetters(bytes, LowerCharacter);
    std::string lower(bytes);
    std::transform(lower.begin(), lower.end(), lower.begin(), ToLowerAscii);
    return lower;
}

std::string ToUpper(std::string_view bytes) {
    return MapLetters(bytes, UpperCharacter);
}

int CompareNoCase(std::string_view a, std::string_view b) {
    return ToLower(a).compare(ToLower(b));
}

bool IsSameText(std::string_view a, std::string_view b) {
    return a == b || ToUtf8(a) == ToUtf8(b);
}

bool EqualNoCase(std::string_view a, std::string_view b) {
    if (AsciiPrefix(a) == a.size() || AsciiPrefix(b) == b.size())
        return CompareNoCase(a, b) == 0;
    return CompareNoCase(ToUtf8(a), ToUtf8(b)) == 0;
}

}  // namespace lore
