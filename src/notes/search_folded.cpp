#include "notes/search_folded.h"

#include <bit>
#include <cstring>

#include "base/byte_block.h"
#include "base/text.h"
#include "base/utf8.h"

namespace lore {

namespace {

constexpr char kSeparator = '\xFF';  // in no UTF-8 text
constexpr std::string_view kFrequent = " etaoinshrdlcumwfgypbvk.,xjqz";

bool IsWordCharacterAt(std::string_view text, size_t at) {
    return text[at] != kSeparator && IsWordCharacter(FirstCharacter(text.substr(at)));
}

/// The first position from `from` on of a byte beyond ASCII.
size_t AsciiEnd(std::string_view text, size_t from) {
    constexpr uint64_t kHighBits = 0x8080808080808080;
    uint64_t block;
    for (; from + sizeof block <= text.size(); from += sizeof block) {
        std::memcpy(&block, text.data() + from, sizeof block);
        if ((block & kHighBits) != 0)
            break;
    }
    while (from < text.size() && static_cast<unsigned char>(text[from]) < 0x80)
        ++from;
    return from;
}

/// Lower-cases a text without bytes beyond ASCII, eight bytes at a time.
void FoldAscii(char* text, size_t length) {
    constexpr uint64_t kOnes = 0x0101010101010101;
    uint64_t block;
    size_t at = 0;
    for (; at + sizeof block <= length; at += sizeof block) {
        std::memcpy(&block, text + at, sizeof block);
        // Each sum reaches the high bit of its byte: from 'A' on, and after 'Z'.
        const uint64_t upper = (block + kOnes * (0x80 - 'A')) & ~(block + kOnes * (0x7F - 'Z')) & (kOnes * 0x80);
        block |= upper >> 2;
        std::memcpy(text + at, &block, sizeof block);
    }
    for (; at < length; ++at)
        text[at] = static_cast<char>(text[at] | (text[at] >= 'A' && text[at] <= 'Z' ? 0x20 : 0));
}

#if defined(LORE_BYTE_BLOCKS)
/// One bit for each position of a block at which both bytes stand.
unsigned PairMask(const char* first, ByteBlock firstByte, const char* second, ByteBlock secondByte) {
    return ((ByteBlock::Of(first) == firstByte) & (ByteBlock::Of(second) == secondByte)).Mask();
}
#endif

}  // namespace

size_t FrequencyInTexts(char byte) {
    const auto value = static_cast<unsigned char>(byte);
    if (value >= 0xC0)  // begins every letter of whole scripts
        return kFrequent.size();
    if (value >= 0x80)
        return kFrequent.size() / 2;
    const size_t place = kFrequent.find(byte);
    return place == std::string_view::npos ? 0 : kFrequent.size() - place;
}

void AppendFolded(std::string& folded, std::string_view utf8) {
    for (size_t i = 0; i < utf8.size();) {
        const size_t end = AsciiEnd(utf8, i);
        const size_t from = folded.size();
        folded.append(utf8, i, end - i);
        FoldAscii(folded.data() + from, end - i);
        for (i = end; i < utf8.size() && static_cast<unsigned char>(utf8[i]) >= 0x80; i += SequenceLength(utf8[i]))
            AppendUtf8(folded, FoldCase(FirstCharacter(utf8.substr(i))));
    }
}

void FoldedTexts::Add(int32_t id, uint32_t record, std::string_view plainText) {
    const auto begin = static_cast<uint32_t>(bytes.size());
    AppendFolded(bytes, plainText);
    slices.push_back({id, record, begin, static_cast<uint32_t>(bytes.size())});
    bytes += kSeparator;
}

std::string_view FoldedTexts::TextOf(const Slice& slice) const {
    return std::string_view(bytes).substr(slice.begin, slice.end - slice.begin);
}

FoldedFinder::FoldedFinder(const SearchTerm& term) : wholeWord_(term.wholeWord) {
    // A term never spans paragraphs.
    if (term.folded.find(U'\n') != std::u32string::npos)
        return;
    needle_ = term.Utf8();
    for (size_t i = 1; i < needle_.size(); ++i) {
        if (FrequencyInTexts(needle_[i]) < FrequencyInTexts(needle_[rare_]))
            rare_ = i;
    }
    second_ = rare_ == 0 ? needle_.size() - 1 : 0;
    for (size_t i = 0; i < needle_.size(); ++i) {
        if (i != rare_ && FrequencyInTexts(needle_[i]) < FrequencyInTexts(needle_[second_]))
            second_ = i;
    }
}

size_t FoldedFinder::FindBytes(std::string_view folded, size_t from) const {
#if defined(LORE_BYTE_BLOCKS)
    constexpr size_t kStep = 64;
    const char* const data = folded.data();
    const ByteBlock rare = ByteBlock::All(needle_[rare_]), second = ByteBlock::All(needle_[second_]);
    for (; from + needle_.size() + kStep <= folded.size(); from += kStep) {
        uint64_t mask = 0;
        for (size_t part = 0; part < kStep; part += ByteBlock::kSize) {
            const char* const at = data + from + part;
            mask |= uint64_t{PairMask(at + rare_, rare, at + second_, second)} << part;
        }
        for (; mask != 0; mask &= mask - 1) {
            const size_t hit = from + static_cast<size_t>(std::countr_zero(mask));
            if (std::memcmp(data + hit, needle_.data(), needle_.size()) == 0)
                return hit;
        }
    }
#endif
    return folded.find(needle_, from);
}

bool FoldedFinder::IsWholeWord(std::string_view folded, size_t begin) const {
    const size_t end = begin + needle_.size();
    if (end < folded.size() && IsWordCharacterAt(folded, end))
        return false;
    if (begin == 0)
        return true;
    size_t before = begin - 1;
    while (before > 0 && IsContinuation(folded[before]))
        --before;
    return !IsWordCharacterAt(folded, before);
}

size_t FoldedFinder::Find(std::string_view folded, size_t from) const {
    if (needle_.empty())
        return kNone;
    size_t hit = FindBytes(folded, from);
    while (hit != kNone && wholeWord_ && !IsWholeWord(folded, hit))
        hit = FindBytes(folded, hit + 1);
    return hit;
}

void FoldedFinder::MarkFound(const FoldedTexts& texts, std::vector<uint8_t>& found) const {
    size_t hit = Find(texts.bytes);
    for (size_t i = 0; i < texts.slices.size() && hit != kNone; ++i) {
        const FoldedTexts::Slice& slice = texts.slices[i];
        if (hit >= slice.end)
            continue;
        if (hit < slice.begin)
            hit = Find(texts.bytes, slice.begin);
        if (hit >= slice.end)  // kNone too
            continue;
        found[i] = 1;
        hit = Find(texts.bytes, slice.end);
    }
}

}  // namespace lore
