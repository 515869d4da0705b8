#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "rtf/control_words.h"

namespace lore {

enum class TokenKind : uint8_t {
    End,
    Open,
    Close,
    Word,     ///< a control word; also a bare tab, and a line end behind a backslash, which means \par
    Symbol,   ///< a backslash and one other byte, which `byte` holds
    HexByte,  ///< \'xx, whose value `byte` holds
    Text,     ///< plain ASCII in `text`
    Bytes,    ///< bytes beyond ASCII in `text`
    Binary,   ///< \bin with its data in `text`
};

/// A piece of RTF. Its views live as long as the text that is cut.
struct Token {
    TokenKind kind = TokenKind::End;
    bool hasParameter = false;
    unsigned char byte = 0;
    int32_t parameter = 0;              ///< held to 32 bits
    const ControlWord* word = nullptr;  ///< null for a control word that the reader doesn't know
    std::string_view text;
    size_t begin = 0;  ///< position of the token's first byte
    size_t end = 0;
};

/// Cuts RTF into tokens, each in time linear to its length. Line ends between tokens mean nothing and are passed over.
class Tokenizer {
public:
    /// `rtf` must outlive the tokenizer.
    explicit Tokenizer(std::string_view rtf) : rtf_(rtf) {}

    const Token& Next();
    size_t Position() const { return at_; }
    std::string_view Source() const { return rtf_; }
    /// Goes on right before the brace that closes the group in which the next token stands, or at the end.
    void SkipGroup();

private:
    const Token& Finish(TokenKind kind);
    const Token& ReadEscape();
    const Token& ReadWord();
    const Token& ReadHexByte();
    const Token& ReadBinary();
    void ReadParameter();

    std::string_view rtf_;
    size_t at_ = 0;
    Token token_;
};

}  // namespace lore
