#include "rtf/wide_text.h"

#include <algorithm>

#include "base/text.h"
#include "rtf/encoding.h"

namespace lore {

namespace {

struct WideForm {
    const char* name;
    std::string_view mark;
    size_t width;
    bool isBig;
};

/// Those of four bytes first: the mark of one begins with that of one of two.
constexpr WideForm kForms[] = {{"UTF-32LE", {"\xFF\xFE\0\0", 4}, 4, false},
                               {"UTF-32BE", {"\0\0\xFE\xFF", 4}, 4, true},
                               {"UTF-16LE", "\xFF\xFE", 2, false},
                               {"UTF-16BE", "\xFE\xFF", 2, true}};

/// The units of a text: bytes past the last whole one aren't among them.
class Units {
public:
    Units(std::string_view bytes, const WideForm& form) : bytes_(bytes), form_(form) {}

    size_t Count() const { return bytes_.size() / form_.width; }
    char32_t At(size_t position) const {
        char32_t unit = 0;
        for (size_t i = 0; i < form_.width; ++i) {
            const size_t byte = form_.isBig ? i : form_.width - 1 - i;
            unit = unit << 8 | static_cast<unsigned char>(bytes_[position * form_.width + byte]);
        }
        return unit;
    }
    template <typename Is>
    size_t CountOf(Is is) const {
        size_t count = 0;
        for (size_t i = 0; i < Count(); ++i)
            count += is(At(i)) ? 1 : 0;
        return count;
    }

private:
    std::string_view bytes_;
    const WideForm& form_;
};

/// A control character that no text has.
bool IsOdd(char32_t c) {
    constexpr char32_t kEscape = 0x1B;
    return c < 0x20 && (c < '\t' || c > '\r') && c != kEscape;
}

/// Whether a four-byte unit is a character of the planes that have any.
bool IsCharacter(char32_t c) {
    constexpr char32_t kEnd = 0x40000, kTags = 0xE0000, kTagsEnd = 0xE0200;
    return (c < kEnd || (c >= kTags && c < kTagsEnd)) && (c < 0xD800 || c > 0xDFFF) && !IsOdd(c);
}

/// Whether a text without a mark that isn't empty is surely of that form. Letters in pairs are other letters in two
/// bytes a character, so that it takes bytes that no text has, or nearly all characters below U+0100.
bool IsSurely(std::string_view bytes, const WideForm& form) {
    const Units units(bytes, form);
    if (bytes.size() % form.width != 0)
        return false;
    if (form.width == 4)
        return units.CountOf(IsCharacter) == units.Count();
    const bool hasOddBytes =
        std::any_of(bytes.begin(), bytes.end(), [](char c) { return c != 0 && IsOdd(static_cast<unsigned char>(c)); });
    const size_t narrow = units.CountOf([](char32_t c) { return c < 0x100; });
    // Read in the other order, all characters below U+0100 end in a zero byte.
    const size_t usual = units.CountOf([](char32_t c) { return (c & 0xFF) != 0 && !IsOdd(c); });
    if (usual < units.Count() || (!hasOddBytes && narrow * 10 < units.Count() * 9))
        return false;
    const std::optional<std::string> text = DecodedFrom(form.name, bytes);
    return text && text->find("\uFFFD") == std::string::npos;
}

/// A few are only left out of what is stored.
bool IsFullOfZeros(std::string_view bytes) {
    constexpr size_t kFull = 16;  // one of so many bytes
    const auto zeros = static_cast<size_t>(std::count(bytes.begin(), bytes.end(), '\0'));
    return zeros > 1 && zeros * kFull >= bytes.size();
}

}  // namespace

std::optional<std::string> WithoutWideCharacters(std::string_view bytes) {
    for (const WideForm& form : kForms) {
        if (bytes.starts_with(form.mark))
            return DecodedFrom(form.name, bytes.substr(form.mark.size()));
    }
    if (!IsFullOfZeros(bytes))
        return std::string(bytes);
    for (const WideForm& form : kForms) {
        if (IsSurely(bytes, form))
            return DecodedFrom(form.name, bytes);
    }
    return std::nullopt;
}

}  // namespace lore
