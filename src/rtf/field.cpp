#include "rtf/field.h"

#include <cstdlib>

#include "base/text.h"
#include "rtf/symbol_font.h"

namespace lore {

namespace {

constexpr std::string_view kLinkField = "HYPERLINK";
constexpr std::string_view kSymbolField = "SYMBOL";

/// Takes the next word or quoted text off the front; within quotes a backslash makes the next quote or backslash plain.
std::string TakeWord(std::string_view& text, bool& quoted) {
    text = TrimLeft(text);
    quoted = text.starts_with('"');
    size_t i = quoted ? 1 : 0;
    std::string word;
    for (; i < text.size(); ++i) {
        const char c = text[i];
        if (quoted ? c == '"' : c == ' ')
            break;
        if (quoted && c == '\\' && i + 1 < text.size() && (text[i + 1] == '\\' || text[i + 1] == '"'))
            ++i;
        word += text[i];
    }
    text.remove_prefix(std::min(i + 1, text.size()));
    return word;
}

std::string Quoted(std::string_view text) {
    return '"' + ReplaceAll(ReplaceAll(text, "\\", "\\\\"), "\"", "\\\"") + '"';
}

}  // namespace

std::string LinkTarget(std::string_view instruction) {
    bool quoted = false;
    if (!EqualNoCase(TakeWord(instruction, quoted), kLinkField))
        return {};
    std::string address;
    std::string place;
    for (instruction = TrimLeft(instruction); !instruction.empty(); instruction = TrimLeft(instruction)) {
        std::string word = TakeWord(instruction, quoted);
        if (quoted || !word.starts_with('\\')) {
            if (address.empty())
                address = std::move(word);
        } else if (word == "\\l") {
            place = "#" + TakeWord(instruction, quoted);
        } else if (word == "\\o" || word == "\\t") {
            TakeWord(instruction, quoted);
        }
    }
    return address + place;
}

char32_t FieldSymbol(std::string_view instruction) {
    bool quoted = false;
    if (!EqualNoCase(TakeWord(instruction, quoted), kSymbolField))
        return 0;
    const std::string number = TakeWord(instruction, quoted);
    std::string font;
    for (instruction = TrimLeft(instruction); !instruction.empty(); instruction = TrimLeft(instruction)) {
        if (TakeWord(instruction, quoted) == "\\f")
            font = TakeWord(instruction, quoted);
    }
    const bool isHex = number.starts_with("0x") || number.starts_with("0X");
    return SymbolCharacter(font,
                           isHex ? static_cast<int32_t>(std::strtol(number.c_str(), nullptr, 16)) : ParseInt(number));
}

std::string LinkInstruction(std::string_view target) {
    const std::string field(kLinkField);
    return target.starts_with('#') ? field + " \\l " + Quoted(target.substr(1)) : field + ' ' + Quoted(target);
}

}  // namespace lore
