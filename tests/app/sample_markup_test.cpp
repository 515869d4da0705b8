#include "app/sample_markup.h"

#include <gtest/gtest.h>
#include <string>

#include "app/sample_files.h"
#include "rtf/rtf.h"

namespace lore {
namespace {

std::string_view NoPicture(std::string_view) {
    return {};
}

Document Read(std::string_view text) {
    return ReadSampleMarkup("T", text, NoPicture);
}

const TextRun* RunWith(const Document& document, std::string_view text) {
    for (const TextRun& run : document.runs)
        if (TextOf(document, run) == text)
            return &run;
    return nullptr;
}

TEST(SampleMarkup, GivesThePlainTextOfEveryBlock) {
    const std::pair<const char*, const char*> cases[] = {
        {"", "T"},
        {"one\ntwo\n\nthree\n", "T\none two\nthree"},
        {"# Head\ntext", "T\nHead\ntext"},
        {"- a\n- b\n\n1. c\n12. d", "T\na\nb\nc\nd"},
        {"1.5 is no item\n2 neither", "T\n1.5 is no item 2 neither"},
        {"> verse one\n> verse two\n\n> other", "T\nverse one\nverse two\nother"},
        {"| a | b |\n|---|---|\n| c |\n\nend", "T\na\tb\t\nc\t\t\nend"},
        {"| a |", "T\na\t\n"},
        {"![gone](none.png)\nnext", "T\nnext"},
        {"a \\*b\\* [c](http://example.org/) [d] (e)", "T\na *b* c [d] (e)"},
        {"***x*** **y *z* y** __u__", "T\nx y z y u"},
    };
    for (const auto& [markup, text] : cases) {
        const Document document = Read(markup);
        EXPECT_EQ(document.text, text) << markup;
        EXPECT_EQ(PlainText(WriteRtf(document)), text) << markup;
    }
}

TEST(SampleMarkup, TurnsMarksOnAndOff) {
    const Document document = Read("a**b*c*d** __e__ f");
    const std::tuple<const char*, bool, bool, bool> runs[] = {{"b", true, false, false},
                                                              {"c", true, true, false},
                                                              {"d", true, false, false},
                                                              {"e", false, false, true},
                                                              {" f", false, false, false}};
    for (const auto& [text, bold, italic, underline] : runs) {
        const TextRun* run = RunWith(document, text);
        ASSERT_NE(run, nullptr) << text;
        EXPECT_EQ(run->format.bold, bold) << text;
        EXPECT_EQ(run->format.italic, italic) << text;
        EXPECT_EQ(run->format.underline, underline) << text;
    }
}

TEST(SampleMarkup, KeepsLinksListsTablesAndDirectionsThroughRichText) {
    const Document document = ReadRtf(WriteRtf(
        Read("[site](https://example.org/a)\n\n1. x\n2. y\n\n1. z\n\n>> שלום\n\n| h |\n|---|\n| long cell |\n\nend")));
    const TextRun* link = RunWith(document, "site");
    ASSERT_NE(link, nullptr);
    EXPECT_EQ(document.links.at(link->format.link), "https://example.org/a");
    const auto& paragraphs = document.paragraphs;
    EXPECT_EQ(paragraphs[2].format.list, ListKind::Decimal);
    EXPECT_EQ(paragraphs[2].format.listId, paragraphs[3].format.listId);
    EXPECT_NE(paragraphs[3].format.listId, paragraphs[4].format.listId);
    EXPECT_LT(paragraphs[2].format.spaceAfter, paragraphs[3].format.spaceAfter);
    EXPECT_TRUE(paragraphs[5].format.rightToLeft);
    EXPECT_EQ(document.rows.size(), 2u);
    EXPECT_TRUE(RunWith(document, "h")->format.bold);
    EXPECT_FALSE(RunWith(document, "long cell")->format.bold);
}

TEST(SampleMarkup, PutsPicturesIntoTheText) {
    const std::string_view png = SampleFileBytes("pictures/fresnel-lens.png");
    const Document document = ReadRtf(WriteRtf(
        ReadSampleMarkup("T", "![lens](a.png)", [&](std::string_view name) { return name == "a.png" ? png : ""; })));
    ASSERT_EQ(document.pictures.size(), 1u);
    EXPECT_EQ(document.pictures[0].kind, PictureKind::Png);
    EXPECT_TRUE(document.pictures[0].bytes == png);
    EXPECT_EQ(document.pictures[0].width, 680);
}

}  // namespace
}  // namespace lore
