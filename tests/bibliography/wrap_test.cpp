#include <gtest/gtest.h>

#include "bibliography/citation.h"

namespace lore {
namespace {

TEST(WrapCitation, BreaksAtBlanksAndIndentsEveryLineEnd) {
    const std::tuple<std::string, int, int32_t, std::string, int> cases[] = {
        {"The quick brown fox jumps over the lazy dog", 10, 2,
         "The quick\n  brown\n  fox\n  jumps\n  over the\n  lazy dog\n  ", 6},
        {"abcdefghij kl", 4, 2, "abcd\n  efgh\n  ij\n  kl\n  ", 4},
        {"abcd efgh", 4, 3, "abcd\n   e\n   f\n   g\n   h\n   ", 5},
        {"abcd efgh", 9, 3, "abcd efgh\n   ", 1},
        {"  abcd efgh ", 0, 1, "abcd efgh\n ", 1},
        {"abcd efgh", -3, 0, "abcd efgh\n", 1},
        {"one two three", 4, 9, "one\n         two three\n         ", 2},
        {"one  two", 4, 0, "one\ntwo\n", 2},
        {"ab   cd", 3, 0, "ab\ncd\n", 2},
        {"ab cd", 2, -7, "ab\ncd\n", 2},
        {"", 10, 3, "", 0},
        {" ", 10, 3, "", 0},
    };
    for (const auto& [text, width, indent, wanted, lines] : cases) {
        CSource source;
        source.IndentSpaces = indent;
        const WrappedCitation wrapped = WrapCitation(source, text, width);
        EXPECT_EQ(wrapped.text, wanted);
        EXPECT_EQ(wrapped.lines, lines) << text;
        EXPECT_EQ(source.IndentSpaces, std::max(indent, 0)) << "one below zero becomes zero in the source";
    }
}

TEST(WrapCitation, WidthCountsCharactersOfTheBytesAsTheyRead) {
    CSource source;
    source.IndentSpaces = 0;
    EXPECT_EQ(WrapCitation(source, "\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9 ab", 4).text,
              "\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\nab\n");
    EXPECT_EQ(WrapCitation(source, "\xC3\xA9\xC3\xA9\xC3\xA9", 2).text, "\xC3\xA9\xC3\xA9\n\xC3\xA9\n");
    EXPECT_EQ(WrapCitation(source, "\xE9\xE9\xE9\xE9", 2).text, "\xE9\xE9\n\xE9\xE9\n");
}

TEST(WrapCitation, HugeIndentOfADamagedRecordCostsLittle) {
    CSource source;
    source.IndentSpaces = 2000000000;
    const WrappedCitation wrapped = WrapCitation(source, std::string(100000, 'x'), 1);
    EXPECT_EQ(wrapped.lines, 100000);
    EXPECT_LT(wrapped.text.size(), 60000000u);
}

TEST(WrapCitation, SpansMoveWithTheIndentsBeforeThem) {
    CSource source;
    source.IndentSpaces = 2;
    source.FormattedText = "The quick brown fox jumps over the lazy dog";
    source.SpanKinds = {1, 2, 3};
    source.SpanStarts = {10, 0, 40};
    source.SpanEnds = {18, 8, 42};
    EXPECT_EQ(WrapSource(source, 10), 6);
    const auto spanned = [&](size_t i) {
        const auto start = static_cast<size_t>(source.SpanStarts[i]);
        return source.FormattedText.substr(start, static_cast<size_t>(source.SpanEnds[i]) - start + 1);
    };
    EXPECT_EQ(spanned(0), "brown\n  fox");
    EXPECT_EQ(spanned(1), "The quick");
    EXPECT_EQ(spanned(2), "dog");
}

/// What is drawn with the emphasis of the only span.
std::string Emphasised(const std::string& text, int32_t start, int32_t end, int width, int32_t indent) {
    CSource source;
    source.IndentSpaces = indent;
    source.FormattedText = text;
    source.SpanStarts = {start};
    source.SpanEnds = {end};
    const std::string wrapped = WrapCitation(source, text, width).text;
    WrapSource(source, width);
    EXPECT_EQ(source.FormattedText, wrapped);
    std::string emphasised;
    for (size_t at = 0; at < wrapped.size(); ++at)
        emphasised += EmphasisAt(source, static_cast<int32_t>(at)) == kEmphasisNone ? "" : wrapped.substr(at, 1);
    return emphasised;
}

TEST(WrapSource, SpansHoldTheSameLettersInWhatIsDrawn) {
    const std::tuple<std::string, int, int32_t, std::string, std::string> cases[] = {
        // text, width, indent, the span in the text, the span in the lines
        {"abcdefghij kl mn", 4, 2, "kl", "kl"},
        {"abcdefghij kl mn", 4, 0, "fg", "fg"},
        {"abcdefghij kl mn", 4, 2, "cdefghij", "cd\n  efgh\n  ij"},
        {"abcdefghij kl mn", 4, 2, "abcd", "abcd"},
        {"  one two three", 8, 3, "two", "two"},
        {"  one two three", 8, 3, "  one", "one"},
        {"one two  ", 4, 1, "two  ", "two"},
        {"one  two   three", 5, 0, "three", "three"},
        {"one  two   three", 7, 2, "one  ", "one"},
        {"one  two   three", 7, 2, "  two", "two"},
        {"one  two   three", 7, 2, "   ", ""},
        {"\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9 ab", 2, 1, "ab", "a\n b"},
        {"\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9 ab", 3, 0, "\xC3\xA9 ", "\xC3\xA9"},
        {"one two", 0, 3, "two", "two"},
    };
    for (const auto& [text, width, indent, span, wanted] : cases) {
        const auto start = static_cast<int32_t>(text.find(span));
        const auto end = start + static_cast<int32_t>(span.size()) - 1;
        EXPECT_EQ(Emphasised(text, start, end, width, indent), wanted) << text << " at " << width;
    }
}

TEST(WrapSource, SpansOutsideOfTheTextHoldNoLetterOfAnother) {
    const std::tuple<int32_t, int32_t, std::string> cases[] = {{-5, -1, ""},          {-5, 2, "one"}, {6, 99, "wo"},
                                                               {7, 9, "o"},           {8, 9, ""},     {40, 50, ""},
                                                               {5, INT32_MAX, "two"}, {3, 2, ""}};
    for (const auto& [start, end, wanted] : cases)
        EXPECT_EQ(Emphasised("one  two", start, end, 5, 2), wanted) << start << " to " << end;
    CSource none;
    none.SpanStarts = none.SpanEnds = {3};
    EXPECT_EQ(WrapSource(none, 4), 0);
}

TEST(WrapCitation, SpanListsOfDifferentLengthStayAsTheyAre) {
    CSource source;
    source.SpanStarts = {4};
    const WrappedCitation wrapped = WrapCitation(source, "ab cd ef", 3);
    EXPECT_EQ(wrapped.spanStarts, LongList{4});
    EXPECT_TRUE(wrapped.spanEnds.IsEmpty());
}

}  // namespace
}  // namespace lore
