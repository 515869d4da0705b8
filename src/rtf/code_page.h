#pragma once

#include <array>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

struct UConverter;

namespace lore {

constexpr int kWesternPage = 1252;

/// The Windows code page of a font's character set; `documentPage` for the sets without one of their own.
int CodePageOfCharset(int charset, int documentPage);

/// Whether characters of the code page may take more than one byte.
bool IsMultiByte(int codePage);
/// The number of bytes, 1 to 4, that a character of a multi-byte code page takes whose first bytes these are, as far as
/// they tell; at least one byte.
size_t CharacterLength(int codePage, std::string_view begin);
/// Whether this byte can follow in such a character; otherwise the character is broken and the byte begins another one.
bool MayContinue(int codePage, std::string_view begin, char next);

/// Turns bytes of code pages into UTF-8. Bytes without a character become U+FFFD; an unknown code page reads as 1252.
class CodePageDecoder {
public:
    CodePageDecoder();
    ~CodePageDecoder();
    CodePageDecoder(const CodePageDecoder&) = delete;
    CodePageDecoder& operator=(const CodePageDecoder&) = delete;

    /// The character of one byte in a code page that isn't multi-byte.
    char32_t Decode(int codePage, unsigned char byte);
    /// One character of a multi-byte code page.
    void Append(int codePage, std::string_view bytes, std::string& utf8);

private:
    struct Page;
    Page& PageOf(int codePage);

    std::vector<std::unique_ptr<Page>> pages_;
};

}  // namespace lore
