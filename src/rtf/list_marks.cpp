#include "rtf/list_marks.h"

#include <algorithm>

namespace lore {

namespace {

std::string Letters(int number) {
    std::string text;
    for (; number > 0; number = (number - 1) / 26)
        text.insert(text.begin(), static_cast<char>('a' + (number - 1) % 26));
    return text;
}

std::string Roman(int number) {
    static constexpr std::pair<int, const char*> kDigits[] = {
        {1000, "m"}, {900, "cm"}, {500, "d"}, {400, "cd"}, {100, "c"}, {90, "xc"}, {50, "l"},
        {40, "xl"},  {10, "x"},   {9, "ix"},  {5, "v"},    {4, "iv"},  {1, "i"}};
    if (number <= 0 || number > 3999)
        return std::to_string(number);
    std::string text;
    for (const auto& [value, digit] : kDigits)
        for (; number >= value; number -= value)
            text += digit;
    return text;
}

std::string Capital(std::string letters) {
    std::transform(letters.begin(), letters.end(), letters.begin(),
                   [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
    return letters;
}

}  // namespace

std::string MarkOf(const ParagraphFormat& format, int number) {
    static constexpr const char* kBullets[] = {"\u2022", "\u25e6", "\u25aa"};
    switch (format.list) {
        case ListKind::None:
            return {};
        case ListKind::Bullet:
            return kBullets[format.listLevel % 3];
        case ListKind::Decimal:
            return std::to_string(number) + '.';
        case ListKind::LowerLetter:
            return Letters(number) + '.';
        case ListKind::UpperLetter:
            return Capital(Letters(number)) + '.';
        case ListKind::LowerRoman:
            return Roman(number) + '.';
        case ListKind::UpperRoman:
            return Capital(Roman(number)) + '.';
    }
    return {};
}

int ListMarks::NextNumber(const ParagraphFormat& format) {
    if (format.list == ListKind::None)
        return 0;
    const std::pair<int32_t, int> key(format.listId, format.listLevel);
    // An item begins the deeper levels of its list anew.
    next_.erase(next_.upper_bound(key), next_.lower_bound({format.listId, 256}));
    const auto [entry, isFirst] = next_.try_emplace(key, format.listStart);
    return entry->second++;
}

}  // namespace lore
