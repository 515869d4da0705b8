#include "rtf/find.h"

#include <algorithm>
#include <bit>
#include <memory>
#include <unicode/uset.h>
#include <unicode/utf8.h>

#include "base/text.h"
#include "base/utf8.h"
#include "rtf/byte_scan.h"

namespace lore {

namespace {

/// Letters of running text from the most frequent on; a rarer one gives fewer places to look at.
constexpr std::string_view kByFrequency = " etaoinsrhldcumfpgwybvkxjqz";
constexpr int kUnlistedRarity = 20;

/// All characters that fold to the same as `folded`, as UTF-8.
std::vector<std::string> CaseVariants(char32_t folded) {
    const std::unique_ptr<USet, decltype(&uset_close)> set(
        uset_open(static_cast<UChar32>(folded), static_cast<UChar32>(folded)), &uset_close);
    uset_closeOver(set.get(), USET_CASE_INSENSITIVE);
    std::vector<std::string> variants;
    for (int32_t i = 0; i < uset_size(set.get()); ++i) {
        const UChar32 c = uset_charAt(set.get(), i);
        if (c >= 0 && FoldCase(static_cast<char32_t>(c)) == folded)
            AppendUtf8(variants.emplace_back(), static_cast<char32_t>(c));
    }
    return variants;
}

char32_t NextCharacter(std::string_view text, size_t& at) {
    UChar32 c = 0;
    U8_NEXT_OR_FFFD(text.data(), at, text.size(), c);
    return static_cast<char32_t>(c);
}

char32_t CharacterBefore(std::string_view text, size_t start, size_t& at) {
    --at;
    for (int more = 3; more > 0 && at > start && IsContinuation(text[at]); --more)
        --at;
    size_t from = at;
    return NextCharacter(text, from);
}

}  // namespace

TextFinder::TextFinder(std::string_view term, bool wholeWord) : term_(Utf8ToCodePoints(term)), wholeWord_(wholeWord) {
    if (term_.find(U'\n') != std::u32string::npos)
        term_.clear();
    std::transform(term_.begin(), term_.end(), term_.begin(), FoldCase);
    ChooseAnchors();
}

TextFinder::Anchor TextFinder::AnchorOf(char32_t c, size_t index) {
    const std::vector<std::string> variants = CaseVariants(c);
    Anchor anchor;
    anchor.index = index;
    if (variants.empty())
        return anchor;
    anchor.length = variants[0].size();
    for (const std::string& variant : variants) {
        if (variant.size() != anchor.length)
            return anchor;
        anchor.mask |= static_cast<unsigned char>(variant.back() ^ variants[0].back());
    }
    anchor.value = static_cast<unsigned char>(variants[0].back()) | anchor.mask;
    const size_t rank = kByFrequency.find(static_cast<char>(c));
    anchor.rarity = c < 0x80 && rank != std::string_view::npos ? static_cast<int>(rank) : kUnlistedRarity;
    anchor.rarity -= 8 * std::max(0, std::popcount(anchor.mask) - 1);
    return anchor;
}

/// The rarest character, and beside it the rarest one whose distance in bytes is the same in every hit.
void TextFinder::ChooseAnchors() {
    std::vector<Anchor> anchors;
    for (size_t i = 0; i < term_.size(); ++i)
        anchors.push_back(AnchorOf(term_[i], i));
    const auto rarer = [](const Anchor& a, const Anchor& b) { return a.rarity < b.rarity; };
    const auto best = std::max_element(anchors.begin(), anchors.end(), rarer);
    if (best == anchors.end() || best->rarity < 0)
        return;
    const auto fixed = [](const Anchor& anchor) { return anchor.rarity >= 0; };
    const auto end = std::find_if_not(best, anchors.end(), fixed);
    auto begin = best;
    while (begin != anchors.begin() && fixed(*(begin - 1)))
        --begin;
    auto other = best;
    for (auto at = begin; at != end; ++at) {
        if (at != best && (other == best || rarer(*other, *at)))
            other = at;
    }
    const auto [front, back] = std::minmax(best, other);
    first_ = *front;
    second_ = *back;
    for (auto at = front; at != back; ++at)
        distance_ += (at + 1)->length;
}

bool TextFinder::Matches(std::string_view text) const {
    return FindFrom(text, 0).begin != kNone;
}

std::vector<TextRange> TextFinder::FindAll(std::string_view text) const {
    std::vector<TextRange> hits;
    size_t characters = 0;
    size_t counted = 0;
    for (Hit hit = FindFrom(text, 0); hit.begin != kNone; hit = FindFrom(text, hit.end)) {
        characters += CountCharacters(text.substr(counted, hit.begin - counted));
        hits.push_back({characters, characters + term_.size()});
        characters += term_.size();
        counted = hit.end;
    }
    return hits;
}

TextFinder::Hit TextFinder::FindFrom(std::string_view text, size_t start) const {
    if (term_.empty())
        return {kNone, kNone};
    if (first_.rarity < 0)
        return FindByCharacters(text, start);
    const size_t lead = first_.length - 1;
    for (size_t at = start + lead; (at = NextCandidate(text, at)) != kNone; ++at) {
        if (IsContinuation(text[at - lead]))
            continue;  // amid a character
        const Hit hit{MatchBefore(text, start, at - lead), MatchFrom(text, at - lead, first_.index)};
        if (hit.begin != kNone && hit.end != kNone && IsAccepted(text, hit))
            return hit;
    }
    return {kNone, kNone};
}

/// For the few terms all of whose characters have forms of several lengths.
TextFinder::Hit TextFinder::FindByCharacters(std::string_view text, size_t start) const {
    for (size_t at = start; at < text.size(); NextCharacter(text, at)) {
        const Hit hit{at, MatchFrom(text, at, 0)};
        if (hit.end != kNone && IsAccepted(text, hit))
            return hit;
    }
    return {kNone, kNone};
}

/// The next place from `at` on that has both anchor bytes.
size_t TextFinder::NextCandidate(std::string_view text, size_t at) const {
    if (text.size() < distance_)
        return kNone;
    const size_t end = text.size() - distance_;
#if defined(LORE_BYTE_BLOCKS)
    const auto matching = [](const char* bytes, const Anchor& anchor) {
        const ByteBlock masked = ByteBlock::Of(bytes) | ByteBlock::All(static_cast<char>(anchor.mask));
        return masked == ByteBlock::All(static_cast<char>(anchor.value));
    };
    for (; at + ByteBlock::kSize <= end; at += ByteBlock::kSize) {
        const ByteBlock both = matching(text.data() + at, first_) & matching(text.data() + at + distance_, second_);
        const unsigned found = both.Mask();
        if (found != 0)
            return at + static_cast<size_t>(std::countr_zero(found));
    }
#endif
    const auto is = [&text](size_t place, const Anchor& anchor) {
        return (static_cast<unsigned char>(text[place]) | anchor.mask) == anchor.value;
    };
    for (; at < end; ++at) {
        if (is(at, first_) && is(at + distance_, second_))
            return at;
    }
    return kNone;
}

/// The begin of a hit whose first anchor character stands at `at`, if the characters before it match.
size_t TextFinder::MatchBefore(std::string_view text, size_t start, size_t at) const {
    for (size_t i = first_.index; i > 0; --i) {
        if (at <= start || FoldCase(CharacterBefore(text, start, at)) != term_[i - 1])
            return kNone;
    }
    return at;
}

/// The end of a hit whose character `index` stands at `at`, if it and the characters behind it match.
size_t TextFinder::MatchFrom(std::string_view text, size_t at, size_t index) const {
    for (; index < term_.size(); ++index) {
        if (at >= text.size() || FoldCase(NextCharacter(text, at)) != term_[index])
            return kNone;
    }
    return at;
}

bool TextFinder::IsAccepted(std::string_view text, Hit hit) const {
    if (!wholeWord_)
        return true;
    if (hit.begin > 0 && IsWordCharacter(CharacterBefore(text, 0, hit.begin)))
        return false;
    return hit.end == text.size() || !IsWordCharacter(NextCharacter(text, hit.end));
}

}  // namespace lore
