#include "rtf/html_style.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

#include "base/text.h"

namespace lore {

namespace {

struct NamedColor {
    std::string_view name;
    TextColor color;
};
constexpr NamedColor kColors[] = {
    {"black", {0, 0, 0}},       {"silver", {192, 192, 192}}, {"gray", {128, 128, 128}}, {"grey", {128, 128, 128}},
    {"white", {255, 255, 255}}, {"maroon", {128, 0, 0}},     {"red", {255, 0, 0}},      {"purple", {128, 0, 128}},
    {"fuchsia", {255, 0, 255}}, {"magenta", {255, 0, 255}},  {"green", {0, 128, 0}},    {"lime", {0, 255, 0}},
    {"olive", {128, 128, 0}},   {"yellow", {255, 255, 0}},   {"navy", {0, 0, 128}},     {"blue", {0, 0, 255}},
    {"teal", {0, 128, 128}},    {"aqua", {0, 255, 255}},     {"cyan", {0, 255, 255}},   {"orange", {255, 165, 0}}};

struct SizeUnit {
    std::string_view name;
    double halfPoints;  // of one; 0: relative to the surroundings
    double relative = 0;
};
constexpr SizeUnit kUnits[] = {{"pt", 2.0},    {"px", 1.5},   {"rem", 24.0}, {"em", 0, 1.0},
                               {"%", 0, 0.01}, {"in", 144.0}, {"cm", 56.7},  {"mm", 5.67}};

constexpr std::array<std::string_view, 4> kAligns = {"left", "center", "right", "justify"};

std::optional<TextColor> ReadHexColor(std::string_view digits) {
    unsigned value = 0;
    if ((digits.size() != 3 && digits.size() != 6) ||
        digits.find_first_not_of("0123456789abcdef") != std::string_view::npos ||
        std::sscanf(std::string(digits).c_str(), "%x", &value) != 1)
        return std::nullopt;
    const auto part = [&](unsigned shift, unsigned mask, unsigned times) {
        return static_cast<uint8_t>((value >> shift & mask) * times);
    };
    if (digits.size() == 3)
        return TextColor{part(8, 15, 17), part(4, 15, 17), part(0, 15, 17)};
    return TextColor{part(16, 255, 1), part(8, 255, 1), part(0, 255, 1)};
}

std::optional<int16_t> ReadSize(std::string_view text, int halfPoints) {
    for (const SizeUnit& unit : kUnits) {
        if (!text.ends_with(unit.name))
            continue;
        const double number = ParseDouble(text.substr(0, text.size() - unit.name.size()));
        const double size = number * (unit.halfPoints > 0 ? unit.halfPoints : unit.relative * halfPoints);
        return size >= 1 ? std::optional(static_cast<int16_t>(std::min(size + 0.5, double{kMostHalfPoints})))
                         : std::nullopt;
    }
    return std::nullopt;
}

std::optional<int16_t> ReadFontSize(std::string_view text) {
    constexpr std::array<int16_t, 7> kSizes = {15, 20, 24, 27, 36, 48, 72};
    constexpr int kUsual = 3, kLargest = static_cast<int>(kSizes.size());
    if (text.find_first_of("0123456789") == std::string_view::npos)
        return std::nullopt;
    const bool isRelative = text.starts_with('+') || text.starts_with('-');
    const int size = std::clamp(ParseInt(text), -kLargest, kLargest) + (isRelative ? kUsual : 0);
    return kSizes[static_cast<size_t>(std::clamp(size, 1, kLargest) - 1)];
}

/// The first of a list of families, without its quotes.
std::string_view FirstFamily(std::string_view text) {
    std::string_view first = Trim(text.substr(0, text.find(',')));
    if (first.size() >= 2 && (first.front() == '"' || first.front() == '\''))
        first = first.substr(1, first.find(first.front(), 1) - 1);
    return first;
}

void SetDecoration(HtmlStyle& style, std::string_view value) {
    if (value.find("underline") != std::string_view::npos)
        style.underline = true;
    if (value.find("line-through") != std::string_view::npos)
        style.strike = true;
    if (value.find("none") != std::string_view::npos)
        style.underline = style.strike = false;
}

bool IsBold(std::string_view weight) {
    constexpr int kBoldFrom = 600;
    return weight.starts_with("bold") || ParseInt(weight) >= kBoldFrom;
}

bool IsItalic(std::string_view slope) {
    return slope == "italic" || slope == "oblique";
}

/// Weight, slope, size and family in one. Without a size it says nothing.
void SetFont(HtmlStyle& style, std::string_view written, int halfPoints) {
    bool bold = false, italic = false, smallCaps = false;
    std::optional<int16_t> size;
    while (!size && !written.empty()) {
        const std::string word = ToLower(written.substr(0, written.find_first_of(" \t\r\n\f/")));
        size = ReadSize(word, halfPoints);
        bold = bold || (!size && IsBold(word));
        italic = italic || IsItalic(word);
        smallCaps = smallCaps || word == "small-caps";
        written = TrimLeft(written.substr(std::max<size_t>(word.size(), 1)));
    }
    if (!size)
        return;
    style.bold = bold;
    style.italic = italic;
    style.smallCaps = smallCaps;
    style.halfPoints = size;
    // The height of a line.
    if (written.starts_with('/')) {
        written = TrimLeft(written.substr(1));
        written.remove_prefix(std::min(written.find_first_of(" \t\r\n\f"), written.size()));
    }
    style.font = FirstFamily(written);
}

struct NamedDisplay {
    std::string_view name;
    HtmlDisplay display;
};
constexpr NamedDisplay kDisplays[] = {{"none", HtmlDisplay::None},       {"block", HtmlDisplay::Block},
                                      {"flow-root", HtmlDisplay::Block}, {"flex", HtmlDisplay::Block},
                                      {"grid", HtmlDisplay::Block},      {"list-item", HtmlDisplay::Block},
                                      {"table", HtmlDisplay::Block}};

HtmlDisplay ReadDisplay(std::string_view value) {
    const auto* const named = std::find_if(std::begin(kDisplays), std::end(kDisplays),
                                           [&](const NamedDisplay& entry) { return entry.name == value; });
    return named == std::end(kDisplays) ? HtmlDisplay::Other : named->display;
}

struct NamedList {
    std::string_view name;
    ListKind kind;
};
constexpr NamedList kLists[] = {{"disc", ListKind::Bullet},
                                {"circle", ListKind::Bullet},
                                {"square", ListKind::Bullet},
                                {"decimal", ListKind::Decimal},
                                {"lower-alpha", ListKind::LowerLetter},
                                {"lower-latin", ListKind::LowerLetter},
                                {"upper-alpha", ListKind::UpperLetter},
                                {"upper-latin", ListKind::UpperLetter},
                                {"lower-roman", ListKind::LowerRoman},
                                {"upper-roman", ListKind::UpperRoman},
                                {"none", ListKind::None}};

/// The first word that names a kind, as the shorthand may hold others.
std::optional<ListKind> ReadList(std::string_view value) {
    while (!value.empty()) {
        const std::string_view word = value.substr(0, value.find(' '));
        const auto* const named = std::find_if(std::begin(kLists), std::end(kLists),
                                               [&](const NamedList& list) { return list.name == word; });
        if (named != std::end(kLists))
            return named->kind;
        value = TrimLeft(value.substr(word.size()));
    }
    return std::nullopt;
}

void SetPosition(HtmlStyle& style, std::string_view value) {
    if (value == "super" || value == "sub" || value == "baseline")
        style.position = value == "super" ? ScriptPosition::Superscript
                         : value == "sub" ? ScriptPosition::Subscript
                                          : ScriptPosition::Baseline;
}

void SetVariant(HtmlStyle& style, std::string_view name, std::string_view value) {
    if (name.starts_with("font-variant"))
        style.smallCaps = value.find("small-caps") != std::string_view::npos;
    else if (name == "text-transform")
        style.allCaps = value == "uppercase";
    else if (name == "white-space")
        style.keepsBlanks = value == "pre" || value == "pre-wrap" || value == "break-spaces";
    else if (name == "list-style-type" || name == "list-style")
        style.list = ReadList(value);
    else if (name == "vertical-align")
        SetPosition(style, value);
}

void SetProperty(HtmlStyle& style, std::string_view name, std::string_view value, std::string_view written,
                 int halfPoints) {
    if (name == "font-weight")
        style.bold = IsBold(value);
    else if (name == "font-style")
        style.italic = IsItalic(value);
    else if (name == "font")
        SetFont(style, written, halfPoints);
    else if (name == "text-decoration" || name == "text-decoration-line")
        SetDecoration(style, value);
    else if (name == "color")
        style.color = ReadHtmlColor(value);
    else if (name == "background-color" || name == "background")
        style.background = ReadHtmlColor(value);
    else if (name == "font-size")
        style.halfPoints = ReadSize(value, halfPoints);
    else if (name == "font-family")
        style.font = FirstFamily(written);
    else if (name == "text-align")
        style.align = ReadHtmlAlign(value);
    else if (name == "display")
        style.display = ReadDisplay(value);
    else if (name == "visibility")
        style.invisible = value == "hidden";
    else if (name == "mso-hide")
        style.officeHides = value == "all";
    else
        SetVariant(style, name, value);
}

std::string WithoutComments(std::string_view css) {
    std::string without;
    while (!css.empty()) {
        const size_t begin = std::min(css.find("/*"), css.size());
        without.append(css.substr(0, begin));
        css.remove_prefix(begin);
        const size_t end = css.find("*/", 2);
        css.remove_prefix(end == std::string_view::npos ? css.size() : end + 2);
    }
    return without;
}

}  // namespace

std::optional<TextColor> ReadHtmlColor(std::string_view text) {
    const std::string value = ToLower(Trim(text));
    if (value.starts_with('#'))
        return ReadHexColor(std::string_view(value).substr(1));
    unsigned red = 0, green = 0, blue = 0;
    if (std::sscanf(value.c_str(), "rgb(%3u ,%3u ,%3u", &red, &green, &blue) == 3)
        return TextColor{static_cast<uint8_t>(std::min(red, 255u)), static_cast<uint8_t>(std::min(green, 255u)),
                         static_cast<uint8_t>(std::min(blue, 255u))};
    const auto* const named = std::find_if(std::begin(kColors), std::end(kColors),
                                           [&](const NamedColor& color) { return color.name == value; });
    return named == std::end(kColors) ? std::nullopt : std::optional(named->color);
}

int16_t SizeIn(const HtmlTag& tag, std::string_view size, int16_t surroundings) {
    if (tag.halfPoints > 0)
        return tag.halfPoints;
    if (tag.name == "font")
        return ReadFontSize(Trim(size)).value_or(surroundings);
    return static_cast<int16_t>(std::clamp(std::lround(surroundings * tag.scale), 1L, long{kMostHalfPoints}));
}

std::optional<ParagraphAlign> ReadHtmlAlign(std::string_view text) {
    const std::string value = ToLower(Trim(text));
    const auto* const found = std::find(kAligns.begin(), kAligns.end(), value);
    return found == kAligns.end() ? std::nullopt : std::optional(static_cast<ParagraphAlign>(found - kAligns.begin()));
}

void GiveLook(const HtmlStyle& style, CharFormat& chars) {
    chars.bold = style.bold.value_or(chars.bold);
    chars.italic = style.italic.value_or(chars.italic);
    chars.underline = style.underline.value_or(chars.underline);
    chars.strike = style.strike.value_or(chars.strike);
    chars.smallCaps = style.smallCaps.value_or(chars.smallCaps);
    chars.allCaps = style.allCaps.value_or(chars.allCaps);
    chars.halfPoints = style.halfPoints.value_or(chars.halfPoints);
}

HtmlStyle ReadInlineStyle(std::string_view text, int halfPoints) {
    HtmlStyle style;
    const std::string declarations = WithoutComments(text);
    std::string_view css = declarations;
    while (!css.empty()) {
        const std::string_view piece = css.substr(0, css.find(';'));
        css.remove_prefix(std::min(piece.size() + 1, css.size()));
        const size_t colon = piece.find(':');
        if (colon == std::string_view::npos)
            continue;
        const std::string_view value = piece.substr(colon + 1);
        const std::string_view written = Trim(value.substr(0, value.find('!')));  // "!important" decides nothing here
        SetProperty(style, ToLower(Trim(piece.substr(0, colon))), ToLower(written), written, halfPoints);
    }
    return style;
}

}  // namespace lore
