#include "rtf/html_references.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <libxml/HTMLparser.h>

#include "base/ascii.h"
#include "base/text.h"
#include "rtf/encoding.h"
#include "rtf/hex.h"

namespace lore {

namespace {

/// A character reference that the parser would read in another way than browsers do; of length 0 if there is none.
struct Reference {
    size_t length = 0;
    char32_t character = 0;
};

/// Numbers that mean control characters stand for bytes of Windows-1252.
Reference NumberAt(std::string_view page) {
    constexpr uint32_t kFirst = 0x80, kLast = 0x9F;
    const bool isHex = page.size() > 2 && (page[2] == 'x' || page[2] == 'X');
    const uint32_t base = isHex ? 16 : 10;
    uint32_t number = 0;
    const size_t first = isHex ? 3 : 2;
    size_t end = first;
    for (; end < page.size(); ++end) {
        const int digit = HexValue(static_cast<unsigned char>(page[end]));
        if (digit < 0 || static_cast<uint32_t>(digit) >= base)
            break;
        number = std::min(number * base + static_cast<uint32_t>(digit), kLast + 1);
    }
    if (end == first)
        return {1, '&'};  // the parser would drop it
    if (number < kFirst || number > kLast)
        return {};
    end += page.substr(end).starts_with(';') ? 1 : 0;
    return {end, FromWindows1252(static_cast<unsigned char>(number))};
}

struct NewName {
    std::string_view name;
    char32_t character;
};
/// Names that the parser doesn't know yet: of them those that writers of pages use.
constexpr NewName kNewNames[] = {
    {"AMP", '&'},      {"COPY", 0xA9},    {"GT", '>'},        {"Hat", '^'},          {"LT", '<'},
    {"NewLine", '\n'}, {"QUOT", '"'},     {"REG", 0xAE},      {"TRADE", 0x2122},     {"Tab", '\t'},
    {"ast", '*'},      {"bsol", '\\'},    {"check", 0x2713},  {"checkmark", 0x2713}, {"colon", ':'},
    {"comma", ','},    {"commat", '@'},   {"cross", 0x2717},  {"dash", 0x2010},      {"dollar", '$'},
    {"equals", '='},   {"excl", '!'},     {"female", 0x2640}, {"grave", '`'},        {"hyphen", 0x2010},
    {"lbrace", '{'},   {"lbrack", '['},   {"lcub", '{'},      {"lowbar", '_'},       {"lpar", '('},
    {"lsqb", '['},     {"male", 0x2642},  {"num", '#'},       {"percnt", '%'},       {"period", '.'},
    {"phone", 0x260E}, {"plus", '+'},     {"quest", '?'},     {"rbrace", '}'},       {"rbrack", ']'},
    {"rcub", '}'},     {"rpar", ')'},     {"rsqb", ']'},      {"semi", ';'},         {"sol", '/'},
    {"star", 0x2606},  {"starf", 0x2605}, {"verbar", '|'},    {"vert", '|'},
};
static_assert(std::is_sorted(std::begin(kNewNames), std::end(kNewNames),
                             [](const NewName& a, const NewName& b) { return a.name < b.name; }));

Reference NewNameAt(std::string_view name) {
    const auto* const found = std::lower_bound(std::begin(kNewNames), std::end(kNewNames), name,
                                               [](const NewName& entry, std::string_view n) { return entry.name < n; });
    return found == std::end(kNewNames) || found->name != name ? Reference{}
                                                               : Reference{name.size() + 2, found->character};
}

bool IsOfName(char c) {
    return IsDigit(c) || IsLetter(c);
}

/// The names of the characters up to U+00FF count without ";" too: in text whatever follows, within a tag only where no
/// part of an address can be meant.
Reference NameAt(std::string_view page, bool inTag) {
    constexpr size_t kShortest = 2, kLongest = 6;
    constexpr unsigned kLastCharacter = 0xFF;
    const auto end = static_cast<size_t>(std::find_if_not(page.begin() + 1, page.end(), IsOfName) - page.begin());
    const char next = end < page.size() ? page[end] : ' ';
    if (next == ';')
        return NewNameAt(page.substr(1, end - 1));
    if (inTag && next == '=')
        return {};
    const size_t shortest = inTag ? std::max(end - 1, kShortest) : kShortest;
    for (size_t length = std::min(end - 1, kLongest); length >= shortest; --length) {
        const std::string name(page.substr(1, length));
        const htmlEntityDesc* const entity = htmlEntityLookup(reinterpret_cast<const xmlChar*>(name.c_str()));
        if (entity != nullptr && entity->value <= kLastCharacter && entity->value != '\'')
            return {length + 1, entity->value};
    }
    return {};
}

}  // namespace

std::string WithWholeReferences(std::string_view page) {
    std::string whole;
    whole.reserve(page.size());
    bool inTag = false;
    while (!page.empty()) {
        const std::string_view before = page.substr(0, page.find('&'));
        if (const size_t bracket = before.find_last_of("<>"); bracket != std::string_view::npos)
            inTag = before[bracket] == '<';
        whole.append(before);
        page.remove_prefix(before.size());
        if (page.empty())
            break;
        const Reference reference = page.substr(1).starts_with('#') ? NumberAt(page) : NameAt(page, inTag);
        if (reference.length > 0)
            whole.append("&#").append(std::to_string(static_cast<uint32_t>(reference.character))).append(";");
        else
            whole += '&';
        page.remove_prefix(std::max<size_t>(reference.length, 1));
    }
    return whole;
}

}  // namespace lore
