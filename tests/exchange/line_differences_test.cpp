#include "exchange/line_differences.h"

#include <chrono>
#include <gtest/gtest.h>
#include <random>
#include <string>

#include "base/text.h"

namespace lore {
namespace {

std::string Marked(std::string_view text, const std::vector<TextRange>& ranges) {
    std::u32string characters = Utf8ToCodePoints(text), out;
    size_t at = 0;
    for (const TextRange& range : ranges) {
        out += characters.substr(at, range.begin - at) + U"[" +
               characters.substr(range.begin, range.end - range.begin) + U"]";
        at = range.end;
    }
    return CodePointsToUtf8(out + characters.substr(at));
}

struct Case {
    const char *imported, *database;
    const char *lines, *words, *otherWords;
};

TEST(TextDifferences, MarkLinesByNumberAndWordsWhereverTheyAre) {
    const Case cases[] = {
        {"same\ntext", "same\ntext", "same\ntext", "same\ntext", "same\ntext"},
        {"a red lamp", "a blue lamp", "[a red lamp]", "a [red] lamp", "a [blue] lamp"},
        {"one\ntwo\nthree", "one", "one\n[two\nthree]", "one\n[two\nthree]", "one"},
        {"one", "one\ntwo", "one", "one", "one\n[two]"},
        // A new line in front moves all others: each differs by its number, the words tell that one is new.
        {"new\none\ntwo", "one\ntwo", "[new]\n[one]\n[two]", "[new]\none\ntwo", "one\ntwo"},
        {"\xC3\xA9t\xC3\xA9 hot", "\xC3\xA9t\xC3\xA9 cold", "[\xC3\xA9t\xC3\xA9 hot]", "\xC3\xA9t\xC3\xA9 [hot]",
         "\xC3\xA9t\xC3\xA9 [cold]"},
        {"", "gone", "", "", "[gone]"},
        {"came", "", "[came]", "[came]", ""},
        {"a\n\nb", "a\nx\nb", "a\n\nb", "a\n\nb", "a\n[x]\nb"},
        {"keep, swap; keep", "keep: swap; keep", "[keep, swap; keep]", "keep[,] swap; keep", "keep[:] swap; keep"},
        {"trailing\n", "trailing", "trailing\n", "trailing\n", "trailing"},
        {"a\n\nb", "a\n", "a\n\n[b]", "a\n\n[b]", "a\n"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.imported) + " / " + c.database);
        const TextDifferences found = CompareTexts(c.imported, c.database);
        EXPECT_EQ(Marked(c.imported, found.lines), c.lines);
        EXPECT_EQ(Marked(c.imported, found.words), c.words);
        EXPECT_EQ(Marked(c.database, found.otherWords), c.otherWords);
    }
}

/// The length of the longest common subsequence, by the table.
size_t CommonLength(const std::vector<uint32_t>& a, const std::vector<uint32_t>& b) {
    std::vector<std::vector<size_t>> best(a.size() + 1, std::vector<size_t>(b.size() + 1));
    for (size_t i = 0; i < a.size(); ++i) {
        for (size_t j = 0; j < b.size(); ++j)
            best[i + 1][j + 1] = a[i] == b[j] ? best[i][j] + 1 : std::max(best[i][j + 1], best[i + 1][j]);
    }
    return best[a.size()][b.size()];
}

TEST(SequenceDifferences, AreTheFewestThatTurnOneIntoTheOther) {
    std::mt19937 random(4);
    for (int round = 0; round < 300; ++round) {
        std::vector<uint32_t> a(random() % 12), b(random() % 12);
        for (std::vector<uint32_t>* list : {&a, &b}) {
            for (uint32_t& value : *list)
                value = random() % 3;
        }
        std::vector<uint32_t> rebuilt;
        size_t at = 0, removed = 0;
        for (const Hunk& hunk : CompareSequences(a, b, 100)) {
            rebuilt.insert(rebuilt.end(), a.begin() + static_cast<ptrdiff_t>(at),
                           a.begin() + static_cast<ptrdiff_t>(hunk.begin));
            rebuilt.insert(rebuilt.end(), b.begin() + static_cast<ptrdiff_t>(hunk.otherBegin),
                           b.begin() + static_cast<ptrdiff_t>(hunk.otherEnd));
            removed += hunk.end - hunk.begin;
            at = hunk.end;
        }
        rebuilt.insert(rebuilt.end(), a.begin() + static_cast<ptrdiff_t>(at), a.end());
        ASSERT_EQ(rebuilt, b);
        ASSERT_EQ(removed, a.size() - CommonLength(a, b));
    }
}

TEST(SequenceDifferences, GiveUpOnTextsThatShareTooLittle) {
    std::vector<uint32_t> a(200000), b(200000);
    for (uint32_t i = 0; i < a.size(); ++i) {
        a[i] = i * 2;
        b[i] = i * 2 + 1;
    }
    a.front() = b.front() = a.back() = b.back() = 7;
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(CompareSequences(a, b, 300), (std::vector<Hunk>{{1, a.size() - 1, 1, b.size() - 1}}));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
}

}  // namespace
}  // namespace lore
