#include "rtf/rtf_output.h"

#include <algorithm>
#include <charconv>
#include <unicode/utf8.h>

#include "base/text.h"
#include "rtf/byte_scan.h"
#include "rtf/hex.h"
#include "rtf/symbol_font.h"

namespace lore {

namespace {

constexpr size_t kPictureLine = 64;

void AppendNumber(std::string& rtf, int32_t number) {
    char digits[12];
    const auto end = std::to_chars(digits, digits + sizeof digits, number).ptr;
    rtf.append(digits, end);
}

/// The byte of a character in Windows-1252, or 0.
unsigned char WesternByte(char32_t c) {
    if (c >= 0xA0 && c <= 0xFF)
        return static_cast<unsigned char>(c);
    for (unsigned byte = 0x80; byte < 0xA0; ++byte) {
        if (FromWindows1252(static_cast<unsigned char>(byte)) == c)
            return static_cast<unsigned char>(byte);
    }
    return 0;
}

}  // namespace

void RtfOutput::Mark(char c) {
    rtf_ += c;
    afterWord_ = false;
}

void RtfOutput::Word(std::string_view name) {
    rtf_ += '\\';
    rtf_ += name;
    afterWord_ = true;
}

void RtfOutput::Word(std::string_view name, int32_t parameter) {
    Word(name);
    AppendNumber(rtf_, parameter);
}

void RtfOutput::Starred(std::string_view name) {
    rtf_ += "\\*";
    Word(name);
}

void RtfOutput::Raw(std::string_view rtf) {
    rtf_ += rtf;
    afterWord_ = false;
}

void RtfOutput::Text(std::string_view utf8, bool western) {
    for (size_t at = 0; at < utf8.size();) {
        const size_t end = FindByte<TextEndBytes>(utf8, at);
        if (end > at) {
            if (afterWord_)
                rtf_ += ' ';
            afterWord_ = false;
            rtf_ += utf8.substr(at, end - at);
            at = end;
        } else if (!Escape(utf8, at)) {
            UChar32 c = 0;
            U8_NEXT_OR_FFFD(utf8.data(), at, utf8.size(), c);
            Character(static_cast<char32_t>(c), western);
        }
    }
}

void RtfOutput::Symbols(std::string_view utf8, std::string_view font) {
    for (const char32_t c : Utf8ToCodePoints(utf8)) {
        const unsigned char byte = c < 0x20 ? static_cast<unsigned char>(c) : SymbolByte(font, c);
        const char ascii = static_cast<char>(byte);
        if (byte == 0)
            Character(c, false);
        else if (byte < 0x80)
            Text(std::string_view(&ascii, 1));
        else
            Byte(byte);
    }
}

bool RtfOutput::Escape(std::string_view utf8, size_t& at) {
    const char c = utf8[at];
    if (static_cast<unsigned char>(c) >= 0x80)
        return false;
    ++at;
    if (c == '\t' || c == '\n') {
        Word(c == '\t' ? "tab" : "line");
    } else if (MarkBytes::Holds(static_cast<unsigned char>(c))) {
        rtf_ += '\\';
        Mark(c);
    }
    return true;
}

void RtfOutput::Character(char32_t c, bool western) {
    const unsigned char byte = western ? WesternByte(c) : 0;
    if (c == 0xA0 || c == 0xAD || c == 0x2011)
        rtf_ += c == 0xA0 ? "\\~" : c == 0xAD ? "\\-" : "\\_";
    else if (byte != 0)
        Byte(byte);
    else if (c < 0x10000)
        Unit(c);
    else {
        Unit(0xD800 + ((c - 0x10000) >> 10));
        Unit(0xDC00 + ((c - 0x10000) & 0x3FF));
    }
    afterWord_ = false;
}

void RtfOutput::Byte(unsigned char byte) {
    AppendHexByte(rtf_, byte);
    afterWord_ = false;
}

void RtfOutput::Unit(uint32_t unit) {
    rtf_ += "\\u";
    AppendNumber(rtf_, static_cast<int16_t>(unit));
    // Some readers take what stands right behind the number for a part of it, and drop a character more.
    rtf_ += " ?";
}

void RtfOutput::Hex(std::string_view bytes) {
    for (size_t at = 0; at < bytes.size(); at += kPictureLine) {
        NewLine();
        for (char byte : bytes.substr(at, kPictureLine))
            AppendHex(rtf_, static_cast<unsigned char>(byte));
    }
}

}  // namespace lore
