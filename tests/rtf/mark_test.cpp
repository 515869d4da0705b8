#include "rtf/mark.h"

#include <gtest/gtest.h>

#include "base/text.h"
#include "rtf/find.h"
#include "rtf/rtf.h"
#include "rtf/rtf_files.h"

namespace lore {
namespace {

/// The characters with the marks' colour, hits parted by "|".
std::string MarkedText(const Document& document) {
    std::string marked;
    for (const TextRun& run : document.runs) {
        if (run.format.background == kSearchMark)
            marked += std::string(TextOf(document, run)) + '|';
    }
    return marked;
}

TEST(MarkRtf, PutsTheColorOnTheHitsAndKeepsAllElse) {
    const struct {
        std::string_view rtf, term, marked;
    } cases[] = {
        {"{\\rtf1{\\fonttbl{\\f0 A;}}{\\colortbl;\\red1\\green2\\blue3;}a cat b}", "cat",
         "{\\rtf1{\\fonttbl{\\f0 A;}}{\\colortbl;\\red1\\green2\\blue3;\\red255\\green142\\blue40;}a "
         "{\\chcbpat2\\cb2\\highlight2 cat} b}"},
        {"{\\rtf1\\ansi{\\fonttbl{\\f0 A;}}c\\'e9t}", "\xC3\xA9",
         "{\\rtf1\\ansi{\\fonttbl{\\f0 A;}}{\\colortbl ;\\red255\\green142\\blue40;}c{\\chcbpat1\\cb1\\highlight1 "
         "\\'e9}t}"},
        {"{\\rtf1 c{\\b a}t}", "CAT",
         "{\\rtf1 {\\colortbl ;\\red255\\green142\\blue40;}{\\chcbpat1\\cb1\\highlight1 c}{\\b "
         "{\\chcbpat1\\cb1\\highlight1 a}}{\\chcbpat1\\cb1\\highlight1 t}}"},
        {"{\\rtf1\\u233\\'e9x}", "\xC3\xA9x",
         "{\\rtf1{\\colortbl ;\\red255\\green142\\blue40;}{\\chcbpat1\\cb1\\highlight1 \\u233\\'e9x}}"},
        {"{\\rtf1 a\\u-10179?\\u-8704?b}", "\xF0\x9F\x98\x80",
         "{\\rtf1 {\\colortbl ;\\red255\\green142\\blue40;}a{\\chcbpat1\\cb1\\highlight1 \\u-10179?\\u-8704?}b}"},
        {"{\\rtf1{\\colortbl;\\red1;}\\cf3 a cat}", "cat",
         "{\\rtf1{\\colortbl;\\red1;;;\\red255\\green142\\blue40;}\\cf3 a {\\chcbpat4\\cb4\\highlight4 cat}}"},
        {"\r\n{\\rtf1 {\\*\\kept cat}cat{\\v cat}}\r\n", "cat",
         "\r\n{\\rtf1 {\\colortbl ;\\red255\\green142\\blue40;}{\\*\\kept cat}{\\chcbpat1\\cb1\\highlight1 cat}{\\v "
         "cat}}\r\n"},
    };
    for (const auto& c : cases) {
        const auto hits = TextFinder(c.term, false).FindAll(PlainText(c.rtf));
        EXPECT_EQ(MarkRtf(c.rtf, hits), c.marked);
        EXPECT_EQ(MarkedText(ReadRtf(c.marked)), MarkedText([&] {
                      Document document = ReadRtf(c.rtf);
                      SetBackground(document, hits, kSearchMark);
                      return document;
                  }()));
    }
}

TEST(MarkRtf, WritesAFileAnewThatTakesNoGroups) {
    const std::string_view odd[] = {"{\\rtf1 a cat{\\colortbl;\\red9\\green9\\blue9;}}",
                                    "{\\rtf1{\\colortbl;}{\\colortbl;\\red1;}a cat}",
                                    "{\\rtf1{\\colortbl;\\red1}a cat}",
                                    "{\\rtf1\\u-10179?cat\\u-10179?}",
                                    "{\\rtf1 \\u233\r\n?cat",
                                    "{\\rtfx cat{\\rtf1 }}",
                                    "{\\rtf1{\\colortbl\\info}cat}",
                                    "{\\rtf1{\\colortbl;}\\cf2000000 cat}",
                                    "{\\rtfx{\\object\\rtf1}cat}"};
    for (std::string_view rtf : odd) {
        const std::string text = PlainText(rtf);
        const std::string marked = MarkRtf(rtf, TextFinder("cat", false).FindAll(text));
        EXPECT_EQ(PlainText(marked), text) << rtf;
        EXPECT_EQ(MarkedText(ReadRtf(marked)), "cat|") << rtf;
    }
}

TEST(MarkRtf, LeavesTheFileAloneWithoutHits) {
    const std::string rtf = Rtf("abc\\par");
    EXPECT_EQ(MarkRtf(rtf, {}), rtf);
    EXPECT_EQ(MarkRtf(rtf, {{2, 2}, {5, 3}, {90, 99}}), rtf);
    EXPECT_EQ(MarkRtf("no rtf", {{0, 2}}), "no rtf");
}

TEST(SetBackground, SplitsRunsAndTakesAnyOrder) {
    const Document document = ReadRtf(Rtf("ab{\\b cd}ef\\par\\'e9gh"));
    const struct {
        std::vector<TextRange> ranges;
        std::string_view marked;
    } cases[] = {{{{1, 5}}, "b|cd|e|"},     {{{8, 9}, {0, 1}}, "a|g|"},          {{{0, 3}, {2, 4}, {4, 4}}, "ab|cd|"},
                 {{{5, 8}}, "f|\xC3\xA9|"}, {{{0, 99}}, "ab|cd|ef|\xC3\xA9gh|"}, {{{50, 99}}, ""},
                 {{{0, 1}, {1, 2}}, "ab|"}};
    for (const auto& c : cases) {
        Document marked = document;
        SetBackground(marked, c.ranges, kSearchMark);
        EXPECT_EQ(MarkedText(marked), c.marked);
        EXPECT_EQ(marked.text, document.text);
        EXPECT_EQ(MarkedText(ReadRtf(WriteRtf(marked))), c.marked);
    }
}

}  // namespace
}  // namespace lore
