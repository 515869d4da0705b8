#include "rtf/symbol_font.h"

#include <algorithm>
#include <iterator>

#include "base/text.h"

namespace lore {

namespace {

constexpr int32_t kPrivateArea = 0xF000;

/// The Symbol font from 0x20 and from 0xA1 on; 0 for what it has no character of its own for.
constexpr char16_t kSymbolLow[] =
    u" !\u2200#\u2203%&\u220B()\u2217+,\u2212./0123456789:;<=>?"
    u"\u2245\u0391\u0392\u03A7\u0394\u0395\u03A6\u0393\u0397\u0399\u03D1\u039A\u039B\u039C\u039D\u039F"
    u"\u03A0\u0398\u03A1\u03A3\u03A4\u03A5\u03C2\u03A9\u039E\u03A8\u0396[\u2234]\u22A5_"
    u"\u203E\u03B1\u03B2\u03C7\u03B4\u03B5\u03C6\u03B3\u03B7\u03B9\u03D5\u03BA\u03BB\u03BC\u03BD\u03BF"
    u"\u03C0\u03B8\u03C1\u03C3\u03C4\u03C5\u03D6\u03C9\u03BE\u03C8\u03B6{|}\u223C";
constexpr char16_t kSymbolHigh[] =
    u"\u03D2\u2032\u2264\u2044\u221E\u0192\u2663\u2666\u2665\u2660\u2194\u2190\u2191\u2192\u2193"
    u"\u00B0\u00B1\u2033\u2265\u00D7\u221D\u2202\u2022\u00F7\u2260\u2261\u2248\u2026\u23D0\u23AF\u21B5"
    u"\u2135\u2111\u211C\u2118\u2297\u2295\u2205\u2229\u222A\u2283\u2287\u2284\u2282\u2286\u2208\u2209"
    u"\u2220\u2207\u00AE\u00A9\u2122\u220F\u221A\u22C5\u00AC\u2227\u2228\u21D4\u21D0\u21D1\u21D2\u21D3"
    u"\u25CA\u2329\u00AE\u00A9\u2122\u2211\u239B\u239C\u239D\u23A1\u23A2\u23A3\u23A7\u23A8\u23A9\u23AA"
    u"\uF0F0\u232A\u222B\u2320\u23AE\u2321\u239E\u239F\u23A0\u23A4\u23A5\u23A6\u23AB\u23AC\u23AD";
constexpr int32_t kFirstLow = 0x20, kFirstHigh = 0xA1;
static_assert(std::size(kSymbolLow) - 1 == 0x7F - kFirstLow && std::size(kSymbolHigh) - 1 == 0xFF - kFirstHigh);

struct Sign {
    int32_t number;
    char32_t character;
};
/// What texts take from Wingdings: faces, bullets, arrows, ticks.
constexpr Sign kWingdings[] = {
    {0x4A, 0x263A}, {0x4B, 0x1F610}, {0x4C, 0x2639}, {0x6C, 0x25CF}, {0x6E, 0x25A0}, {0x6F, 0x25A1},
    {0x71, 0x2751}, {0x75, 0x25C6},  {0x76, 0x2756}, {0xA7, 0x25AA}, {0xA8, 0x25FB}, {0xAB, 0x2605},
    {0xD8, 0x27A2}, {0xDF, 0x2190},  {0xE0, 0x2192}, {0xE1, 0x2191}, {0xE2, 0x2193}, {0xE8, 0x2794},
    {0xF3, 0x2B04}, {0xFB, 0x2717},  {0xFC, 0x2713}, {0xFD, 0x2612}, {0xFE, 0x2611},
};

char32_t OfSymbol(int32_t code) {
    if (code >= kFirstLow && code < 0x7F)
        return kSymbolLow[code - kFirstLow];
    if (code >= kFirstHigh && code < 0xFF)
        return kSymbolHigh[code - kFirstHigh];
    return code == 0xA0 ? char32_t{0x20AC} : 0;
}

char32_t OfWingdings(int32_t code) {
    const auto* const found = std::find_if(std::begin(kWingdings), std::end(kWingdings),
                                           [code](const Sign& sign) { return sign.number == code; });
    return found == std::end(kWingdings) ? 0 : found->character;
}

/// What a font shows for a number, or 0.
using Signs = char32_t (*)(int32_t code);

/// Null for a font of letters.
Signs SignsOf(std::string_view font) {
    if (EqualNoCase(font, "Symbol"))
        return OfSymbol;
    if (EqualNoCase(font, "Wingdings"))
        return OfWingdings;
    if (EqualNoCase(font.substr(0, 9), "Wingdings") || EqualNoCase(font, "Webdings"))
        return [](int32_t) { return char32_t{0}; };
    return nullptr;
}

char32_t SignOf(Signs signs, int32_t code) {
    const char32_t known = code == 0x20 ? U' ' : signs(code);
    return known != 0 ? known : static_cast<char32_t>(kPrivateArea + code);
}

}  // namespace

bool IsSymbolFont(const DocumentFont& font) {
    constexpr int32_t kSymbolCharset = 2;
    return font.charset == kSymbolCharset && SignsOf(font.name) != nullptr;
}

bool IsPrivateSign(char32_t character) {
    return character >= char32_t{kPrivateArea} + 0x20 && character <= char32_t{kPrivateArea} + 0xFF;
}

char32_t SymbolCharacter(std::string_view font, int32_t number) {
    const bool isPrivate = number >= kPrivateArea && number <= kPrivateArea + 0xFF;
    const int32_t code = isPrivate ? number - kPrivateArea : number;
    const bool isSurrogate = code >= 0xD800 && code <= 0xDFFF;
    if (code < 0x20 || code > 0x10FFFF || isSurrogate)
        return 0;
    if (code > 0xFF)
        return static_cast<char32_t>(code);
    if (const Signs signs = SignsOf(font))
        return SignOf(signs, code);
    return isPrivate ? static_cast<char32_t>(number) : FromWindows1252(static_cast<unsigned char>(code));
}

unsigned char SymbolByte(std::string_view font, char32_t character) {
    const Signs signs = SignsOf(font);
    for (int32_t code = 0x20; signs != nullptr && code <= 0xFF; ++code) {
        if (SignOf(signs, code) == character)
            return static_cast<unsigned char>(code);
    }
    return 0;
}

}  // namespace lore
