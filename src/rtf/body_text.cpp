#include <algorithm>
#include <utility>

#include "base/text.h"
#include "rtf/body_reader.h"
#include "rtf/hex.h"
#include "rtf/symbol_font.h"

namespace lore {

namespace {

constexpr size_t kLongestInstruction = 65536;
constexpr char32_t kReplacement = 0xFFFD;

bool IsHighSurrogate(int64_t c) {
    return c >= 0xD800 && c <= 0xDBFF;
}
bool IsLowSurrogate(int64_t c) {
    return c >= 0xDC00 && c <= 0xDFFF;
}

}  // namespace

/// Takes the token, or the first part of it, for the fallback of a Unicode character. False if something is left.
bool BodyReader::SkipAsFallback(const Token& token) {
    if (token.kind == TokenKind::Open || token.kind == TokenKind::Close || token.kind == TokenKind::End) {
        fallback_ = 0;
        return false;
    }
    if (token.kind != TokenKind::Text && token.kind != TokenKind::Bytes) {
        --fallback_;
        PassFallback(token.begin, token.end);
        return true;
    }
    const size_t skipped = std::min(token.text.size(), static_cast<size_t>(fallback_));
    fallback_ -= static_cast<int32_t>(skipped);
    PassFallback(token.begin, token.begin + skipped);
    if (skipped == token.text.size())
        return true;
    const std::string_view rest = token.text.substr(skipped);
    const size_t begin = token.begin + skipped;
    if (token.kind == TokenKind::Bytes)
        AddBytes(rest, begin, token.end);
    else
        AddAscii(rest, begin, token.end);
    return true;
}

void BodyReader::PassFallback(size_t begin, size_t end) {
    halfEnd_ = end;
    OnFallback(begin, end);
}

/// The bytes of a character stand in adjoining tokens, or it is broken.
void BodyReader::EndPart(const Token& token) {
    // The second byte may be one that has to be escaped.
    const bool isEscaped =
        token.kind == TokenKind::Symbol && (token.byte == '\\' || token.byte == '{' || token.byte == '}');
    const bool isBytes = token.kind == TokenKind::Text || token.kind == TokenKind::Bytes ||
                         token.kind == TokenKind::HexByte || isEscaped;
    if (!isBytes)
        FlushPart();
}

void BodyReader::FlushPart() {
    if (part_.empty())
        return;
    part_.clear();
    EmitCharacter(kReplacement, partBegin_, partBegin_ + 1);
}

/// Where other text, or the text of another place, begins, a first half has no second one: it is put before that.
void BodyReader::FlushHalf(size_t at) {
    if (std::exchange(highSurrogate_, 0) != 0)
        EmitCharacter(kReplacement, at, at);
}

void BodyReader::Unicode(const Token& token) {
    const size_t begin = token.begin;
    const size_t end = token.end;
    int64_t c = token.parameter;
    if (c < 0)
        c += 0x10000;
    fallback_ = Current().fallbackLength;
    if (highSurrogate_ != 0 && IsLowSurrogate(c)) {
        const auto high = std::exchange(highSurrogate_, 0);
        // With words or braces in between, the character is where its second half is, and looks like that.
        const bool adjoins = Trim(Source().substr(halfEnd_, begin - halfEnd_)).empty();
        EmitCharacter(0x10000 + ((high - 0xD800) << 10) + (static_cast<char32_t>(c) - 0xDC00),
                      adjoins ? halfBegin_ : begin, end);
        return;
    }
    if (IsHighSurrogate(c)) {
        FlushHalf(begin);
        highSurrogate_ = static_cast<char32_t>(c);
        halfBegin_ = begin;
        halfEnd_ = end;
        return;
    }
    const bool valid = c >= 0 && c <= 0x10FFFF && !IsLowSurrogate(c);
    EmitCharacter(valid ? MeantSign(static_cast<char32_t>(c), end) : kReplacement, begin, end);
}

/// Of a font of signs, a number of the private area and the byte behind it that stands in for it mean the same.
char32_t BodyReader::MeantSign(char32_t c, size_t end) const {
    const std::string* const symbols = fallback_ > 0 && IsPrivateSign(c) ? CurrentSymbols() : nullptr;
    if (symbols == nullptr)
        return c;
    std::string byte;
    AppendHexByte(byte, static_cast<unsigned char>(c & 0xFF));
    return EqualNoCase(Source().substr(end, byte.size()), byte) ? SymbolCharacter(*symbols, static_cast<int32_t>(c))
                                                                : c;
}

void BodyReader::AddAscii(std::string_view text, size_t begin, size_t end) {
    if (part_.empty() && CurrentSymbols() == nullptr)
        Emit(text, begin, end);
    else
        AddBytes(text, begin, end);
}

void BodyReader::AddByte(const Token& token) {
    const char byte = static_cast<char>(token.byte);
    AddBytes(std::string_view(&byte, 1), token.begin, token.end);
}

void BodyReader::AddBytes(std::string_view bytes, size_t begin, size_t end) {
    const int page = CurrentPage();
    if (!isMultiByte_ || CurrentSymbols() != nullptr) {
        AddSingleBytes(page, bytes, begin, end);
        return;
    }
    const bool escaped = end - begin != bytes.size();
    for (size_t i = 0; i < bytes.size(); ++i) {
        const size_t byteBegin = escaped ? begin : begin + i;
        if (!part_.empty() && !MayContinue(page, part_, bytes[i]))
            FlushPart();
        if (part_.empty())
            partBegin_ = byteBegin;
        part_ += bytes[i];
        if (part_.size() < CharacterLength(page, part_))
            continue;
        scratch_.clear();
        if (part_.size() > 1 || static_cast<unsigned char>(part_[0]) >= 0x80)
            decoder_.Append(page, part_, scratch_);
        else
            scratch_ = part_;
        part_.clear();
        const char32_t c = Utf8ToCodePoints(scratch_)[0];
        EmitCharacter(c, partBegin_, escaped ? end : byteBegin + 1);
    }
}

void BodyReader::AddSingleBytes(int page, std::string_view bytes, size_t begin, size_t end) {
    const std::string* const symbols = CurrentSymbols();
    const auto decode = [&](char byte) {
        const auto code = static_cast<unsigned char>(byte);
        return symbols != nullptr && code >= 0x20 ? SymbolCharacter(*symbols, code) : decoder_.Decode(page, code);
    };
    if (bytes.size() == 1) {
        EmitCharacter(decode(bytes[0]), begin, end);
        return;
    }
    scratch_.clear();
    for (const char byte : bytes)
        AppendUtf8(scratch_, decode(byte));
    Emit(scratch_, begin, end);
}

void BodyReader::EmitCharacter(char32_t c, size_t begin, size_t end) {
    if (c == '\n' || c == '\r' || c == '\v') {
        Break(TextBreak::Line);
        return;
    }
    if (c < 0x20 && c != '\t')
        return;
    std::string utf8;
    AppendUtf8(utf8, c);
    Emit(utf8, begin, end);
}

void BodyReader::Emit(std::string_view utf8, size_t begin, size_t end) {
    FlushHalf(begin);
    const Destination destination = Current().destination;
    if (Shows())
        Show(utf8, begin, end);
    else if (destination == Destination::Body)
        Hide(utf8);
    else if (destination == Destination::FontTable)
        ReadFontName(utf8);
    else if (destination != Destination::FieldInstruction)
        OnOther(destination, utf8);
    else if (instruction_.size() < kLongestInstruction)
        instruction_.append(utf8);
}

/// A shape or an object is kept whole, with what isn't shown in it.
void BodyReader::Hide(std::string_view utf8) {
    if (!Current().inShape)
        OnHidden(utf8);
}

void BodyReader::Show(std::string_view utf8, size_t begin, size_t end) {
    // Blanks alone don't make a text box.
    shown_ += !Current().inShape || utf8.find_first_not_of(" \t") != std::string_view::npos ? 1 : 0;
    if (!asides_.IsIdle()) {
        const std::string_view whole = utf8;
        const std::string before = asides_.Before(utf8, last_);
        if (utf8.empty())
            return;
        // More than one character: each is one byte.
        begin += CharacterCount(whole.substr(0, whole.size() - utf8.size()));
        Insert(before, begin);
    }
    afterParagraph_ = false;
    hasNewPicture_ = false;
    last_ = utf8.back();
    OnText(utf8, begin, end);
}

void BodyReader::Insert(std::string_view utf8, size_t at) {
    if (utf8.empty())
        return;
    last_ = utf8.back();
    OnText(utf8, at, at);
}

bool BodyReader::Shows() const {
    const Group& group = groups_.back();
    return group.destination == Destination::Body && !group.hidden && !group.deleted;
}

/// The name of the font whose signs bytes are now; null for none. What isn't shown is kept without its font.
const std::string* BodyReader::CurrentSymbols() const {
    if (symbolFonts_.empty() || !Shows())
        return nullptr;
    const auto found = symbolFonts_.find(Current().font);
    return found == symbolFonts_.end() ? nullptr : &found->second;
}

int BodyReader::CurrentPage() {
    const int font = Current().destination == Destination::FontTable ? tableFont_ : Current().font;
    if (page_ == 0 || pageFont_ != font) {
        page_ = fontPages_.PageOf(font);
        pageFont_ = font;
        isMultiByte_ = IsMultiByte(page_);
    }
    return page_;
}

}  // namespace lore
