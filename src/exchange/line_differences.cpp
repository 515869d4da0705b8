#include "exchange/line_differences.h"

#include <algorithm>
#include <string>
#include <unordered_map>

#include "base/text.h"

namespace lore {

namespace {

/// Steps are at most this number times the length of the texts.
constexpr size_t kMostChanges = 300;

/// Pieces of a text by their characters.
struct Pieces {
    std::vector<TextRange> ranges;
    std::vector<uint32_t> numbers;  // equal for equal pieces
};

/// Gives equal pieces equal numbers.
class Numbers {
public:
    uint32_t Of(std::u32string_view piece) {
        return numbers_.emplace(std::u32string(piece), static_cast<uint32_t>(numbers_.size())).first->second;
    }

private:
    std::unordered_map<std::u32string, uint32_t> numbers_;
};

void AddPiece(Pieces& pieces, std::u32string_view text, size_t begin, size_t end, Numbers& numbers) {
    pieces.ranges.push_back({begin, end});
    pieces.numbers.push_back(numbers.Of(text.substr(begin, end - begin)));
}

Pieces LinesOf(std::u32string_view text, Numbers& numbers) {
    Pieces lines;
    for (size_t begin = 0; begin <= text.size();) {
        const size_t end = std::min(text.find(U'\n', begin), text.size());
        AddPiece(lines, text, begin, end, numbers);
        begin = end + 1;
    }
    return lines;
}

/// The words of a stretch, and every other character by itself.
Pieces WordsOf(std::u32string_view text, size_t begin, size_t end, Numbers& numbers) {
    Pieces words;
    while (begin < end) {
        size_t next = begin + 1;
        if (IsWordCharacter(text[begin])) {
            while (next < end && IsWordCharacter(text[next]))
                ++next;
        }
        AddPiece(words, text, begin, next, numbers);
        begin = next;
    }
    return words;
}

void AddRange(std::vector<TextRange>& ranges, TextRange range) {
    if (!ranges.empty() && ranges.back().end == range.begin)
        ranges.back().end = range.end;
    else
        ranges.push_back(range);
}

std::vector<TextRange> DifferingLines(const Pieces& lines, const Pieces& other, size_t length) {
    std::vector<TextRange> ranges;
    const size_t both = std::min(lines.ranges.size(), other.ranges.size());
    for (size_t i = 0; i < both; ++i) {
        if (lines.numbers[i] != other.numbers[i] && lines.ranges[i].begin < lines.ranges[i].end)
            ranges.push_back(lines.ranges[i]);
    }
    if (lines.ranges.size() > both && lines.ranges[both].begin < length)
        ranges.push_back({lines.ranges[both].begin, length});
    return ranges;
}

/// The characters of lines, with the ends between them.
TextRange Stretch(const Pieces& lines, size_t begin, size_t end) {
    return begin == end ? TextRange{} : TextRange{lines.ranges[begin].begin, lines.ranges[end - 1].end};
}

void MarkWords(const Pieces& words, size_t begin, size_t end, std::vector<TextRange>& ranges) {
    for (size_t i = begin; i < end; ++i)
        AddRange(ranges, words.ranges[i]);
}

/// Finds the changes by trying one more of them each time, and following from each end what is equal.
class ChangeFinder {
public:
    ChangeFinder(const uint32_t* a, size_t aSize, const uint32_t* b, size_t bSize)
        : a_(a), b_(b), aSize_(static_cast<ptrdiff_t>(aSize)), bSize_(static_cast<ptrdiff_t>(bSize)) {}

    /// Marks what stands in both; false if that takes more than `most` changes.
    bool Run(size_t most, std::vector<bool>& aKept, std::vector<bool>& bKept) {
        for (ptrdiff_t changes = 0; changes <= static_cast<ptrdiff_t>(most); ++changes) {
            rows_.emplace_back(static_cast<size_t>(2 * changes + 1));
            for (ptrdiff_t diagonal = -changes; diagonal <= changes; diagonal += 2) {
                const ptrdiff_t x = Follow(Start(changes, diagonal), diagonal);
                At(changes, diagonal) = x;
                if (x >= aSize_ && x - diagonal >= bSize_) {
                    WalkBack(changes, aKept, bKept);
                    return true;
                }
            }
        }
        return false;
    }

private:
    ptrdiff_t& At(ptrdiff_t changes, ptrdiff_t diagonal) {
        return rows_[static_cast<size_t>(changes)][static_cast<size_t>(diagonal + changes)];
    }
    bool GoesDown(ptrdiff_t changes, ptrdiff_t diagonal) {
        return diagonal == -changes ||
               (diagonal != changes && At(changes - 1, diagonal - 1) < At(changes - 1, diagonal + 1));
    }
    /// Where a path of so many changes enters a diagonal.
    ptrdiff_t Start(ptrdiff_t changes, ptrdiff_t diagonal) {
        if (changes == 0)
            return 0;
        return GoesDown(changes, diagonal) ? At(changes - 1, diagonal + 1) : At(changes - 1, diagonal - 1) + 1;
    }
    ptrdiff_t Follow(ptrdiff_t x, ptrdiff_t diagonal) const {
        while (x < aSize_ && x - diagonal < bSize_ && a_[x] == b_[x - diagonal])
            ++x;
        return x;
    }
    void WalkBack(ptrdiff_t changes, std::vector<bool>& aKept, std::vector<bool>& bKept) {
        ptrdiff_t x = aSize_, diagonal = aSize_ - bSize_;
        for (;; --changes) {
            const ptrdiff_t start = Start(changes, diagonal);
            for (; x > start; --x)
                aKept[static_cast<size_t>(x - 1)] = bKept[static_cast<size_t>(x - 1 - diagonal)] = true;
            if (changes == 0)
                return;
            const bool down = GoesDown(changes, diagonal);
            diagonal += down ? 1 : -1;
            x = At(changes - 1, diagonal);
        }
    }

    const uint32_t* a_;
    const uint32_t* b_;
    ptrdiff_t aSize_, bSize_;
    std::vector<std::vector<ptrdiff_t>> rows_;  // how far each diagonal was reached, for each number of changes
};

std::vector<Hunk> HunksOf(const std::vector<bool>& aKept, const std::vector<bool>& bKept, size_t shift) {
    std::vector<Hunk> hunks;
    for (size_t i = 0, j = 0; i < aKept.size() || j < bKept.size(); ++i, ++j) {
        Hunk hunk{i + shift, 0, j + shift, 0};
        while (i < aKept.size() && !aKept[i])
            ++i;
        while (j < bKept.size() && !bKept[j])
            ++j;
        hunk.end = i + shift;
        hunk.otherEnd = j + shift;
        if (hunk.begin != hunk.end || hunk.otherBegin != hunk.otherEnd)
            hunks.push_back(hunk);
    }
    return hunks;
}

}  // namespace

std::vector<Hunk> CompareSequences(const std::vector<uint32_t>& a, const std::vector<uint32_t>& b, size_t mostChanges) {
    const size_t shorter = std::min(a.size(), b.size());
    const auto front = static_cast<size_t>(
        std::mismatch(a.begin(), a.begin() + static_cast<ptrdiff_t>(shorter), b.begin()).first - a.begin());
    size_t back = 0;
    while (back < shorter - front && a[a.size() - 1 - back] == b[b.size() - 1 - back])
        ++back;
    const size_t aSize = a.size() - front - back, bSize = b.size() - front - back;
    std::vector<bool> aKept(aSize), bKept(bSize);
    if (aSize > 0 && bSize > 0)
        ChangeFinder(a.data() + front, aSize, b.data() + front, bSize).Run(mostChanges, aKept, bKept);
    return HunksOf(aKept, bKept, front);
}

TextDifferences CompareTexts(std::string_view text, std::string_view other) {
    const std::u32string a = Utf8ToCodePoints(text), b = Utf8ToCodePoints(other);
    Numbers numbers;
    const Pieces aLines = LinesOf(a, numbers), bLines = LinesOf(b, numbers);
    TextDifferences differences;
    differences.lines = DifferingLines(aLines, bLines, a.size());
    for (const Hunk& hunk : CompareSequences(aLines.numbers, bLines.numbers, kMostChanges)) {
        const TextRange stretch = Stretch(aLines, hunk.begin, hunk.end);
        const TextRange bPart = Stretch(bLines, hunk.otherBegin, hunk.otherEnd);
        const Pieces aWords = WordsOf(a, stretch.begin, stretch.end, numbers);
        const Pieces bWords = WordsOf(b, bPart.begin, bPart.end, numbers);
        for (const Hunk& change : CompareSequences(aWords.numbers, bWords.numbers, kMostChanges)) {
            MarkWords(aWords, change.begin, change.end, differences.words);
            MarkWords(bWords, change.otherBegin, change.otherEnd, differences.otherWords);
        }
    }
    return differences;
}

}  // namespace lore
