#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace lore {

/// Writes RTF token by token, with a blank after a control word only where the next token needs it.
class RtfOutput {
public:
    void Open() { Mark('{'); }
    void Close() { Mark('}'); }
    void Word(std::string_view name);
    void Word(std::string_view name, int32_t parameter);
    /// \* and the word.
    void Starred(std::string_view name);
    /// RTF as it stands.
    void Raw(std::string_view rtf);
    void NewLine() { Raw("\r\n"); }
    /// Characters: ASCII as it is, the rest as \'xx where `western` says that those are read as Windows-1252, else as
    /// \uN with a fallback of one character. A line feed is a line break.
    void Text(std::string_view utf8, bool western = false);
    /// Characters in a font of symbols: its bytes for those that it has, \uN for others.
    void Symbols(std::string_view utf8, std::string_view font);
    void Hex(std::string_view bytes);

    const std::string& Rtf() const { return rtf_; }
    std::string Take() { return std::move(rtf_); }

private:
    void Mark(char c);
    void Character(char32_t c, bool western);
    void Byte(unsigned char byte);
    void Unit(uint32_t unit);
    bool Escape(std::string_view utf8, size_t& at);

    std::string rtf_;
    bool afterWord_ = false;
};

}  // namespace lore
