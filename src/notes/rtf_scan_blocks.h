#pragma once

// The passes of rtf_scan.h a block at a time. One file includes this for each size of a block, and so defines them.

#include "base/byte_block.h"
#include "notes/rtf_scan.h"

#if defined(LORE_BYTE_BLOCKS)

namespace LORE_BYTE_BLOCKS {

namespace {

ByteBlock IsOneOf(ByteBlock bytes, char a, char b) {
    return (bytes == ByteBlock::All(a)) | (bytes == ByteBlock::All(b));
}

/// A bit that makes a letter lower-case; none for any other character.
ByteBlock FoldOf(char c) {
    return ByteBlock::All(c >= 'a' && c <= 'z' ? 0x20 : 0);
}

bool AnyOf(unsigned places, std::string_view rtf, size_t at, std::string_view term, PlaceTest test) {
    for (; places != 0; places &= places - 1) {
        if (test(rtf, at + static_cast<size_t>(__builtin_ctz(places)), term))
            return true;
    }
    return false;
}

}  // namespace

bool AnyTermStart(std::string_view rtf, size_t& at, std::string_view term, PlaceTest test) {
    const bool isAlone = term.size() == 1;
    const char second = isAlone ? '\0' : term[1];
    const ByteBlock firsts = ByteBlock::All(term[0]), firstFold = FoldOf(term[0]);
    const ByteBlock seconds = ByteBlock::All(second), secondFold = FoldOf(second);
    const ByteBlock any = ByteBlock::All(isAlone ? -1 : 0);
    const ByteBlock space = ByteBlock::All(0x20), lastLetter = ByteBlock::All('z');
    for (; at + ByteBlock::kSize + 1 <= rtf.size(); at += ByteBlock::kSize) {
        const ByteBlock bytes = ByteBlock::Of(rtf.data() + at), next = ByteBlock::Of(rtf.data() + at + 1);
        // Line ends, the backslash and braces; a few more bytes do no harm.
        const ByteBlock isMarkup = (next < space) | (lastLetter < (next | space));
        const ByteBlock goesOn = ((next | secondFold) == seconds) | isMarkup | any;
        const unsigned places = (((bytes | firstFold) == firsts) & goesOn).Mask();
        if (places != 0 && AnyOf(places, rtf, at, term, test))
            return true;
    }
    return false;
}

bool AnyAsciiEscape(std::string_view rtf, size_t& at, PlaceTest test) {
    for (; at + ByteBlock::kSize + 2 <= rtf.size(); at += ByteBlock::kSize) {
        const ByteBlock escape = ByteBlock::Of(rtf.data() + at) == ByteBlock::All('\\');
        if (escape.Mask() == 0)
            continue;
        const ByteBlock next = ByteBlock::Of(rtf.data() + at + 1), third = ByteBlock::Of(rtf.data() + at + 2);
        const ByteBlock field = (next == ByteBlock::All('f')) & (third == ByteBlock::All('l'));
        const ByteBlock binary = (next == ByteBlock::All('b')) & (third == ByteBlock::All('i'));
        const ByteBlock concerns = IsOneOf(next, '\'', 'u') | IsOneOf(next, 'a', 'c') | field | binary;
        const unsigned places = (escape & concerns).Mask();
        if (places != 0 && AnyOf(places, rtf, at, {}, test))
            return true;
    }
    return false;
}

}  // namespace LORE_BYTE_BLOCKS

#endif
