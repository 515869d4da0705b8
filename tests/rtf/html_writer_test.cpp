#include "rtf/html_writer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/text.h"
#include "rtf/append_document.h"
#include "rtf/list_marks.h"
#include "rtf/office_rtf.h"
#include "rtf/rtf.h"
#include "rtf/rtf_check.h"
#include "rtf/rtf_files.h"

namespace lore {
namespace {

using testing::HasSubstr;
using testing::Not;

/// What stands in the body of the page for a rich text.
std::string BodyOf(const std::string& rtf) {
    const std::string html = WriteHtml(ReadRtf(rtf), "t");
    const size_t begin = html.find("<body>\n") + 7;
    return html.substr(begin, html.find("</body>") - begin);
}

size_t CountOf(const std::string& part, const std::string& body) {
    return ReplaceAll(body, part, part + "#").size() - body.size();
}

/// The characters of a page that are text, without white space.
std::string TextOfPage(std::string_view body) {
    std::string text;
    bool inTag = false;
    for (const char c : body) {
        inTag = inTag ? c != '>' : c == '<';
        if (!inTag && c != '>' && Trim(std::string_view(&c, 1)) == std::string_view(&c, 1))
            text += c;
    }
    const std::pair<const char*, const char*> escapes[] = {
        {"&lt;", "<"}, {"&gt;", ">"}, {"&quot;", "\""}, {"&amp;", "&"}};
    for (const auto& [escape, character] : escapes)
        text = ReplaceAll(text, escape, character);
    return ReplaceAll(text, "[picture]", "");
}

TEST(HtmlWriter, SaysOnlyWhatDiffersFromPlainText) {
    const std::pair<const char*, const char*> kCases[] = {
        {"{\\rtf1 a < b & \"c\"}", "<p>a &lt; b &amp; &quot;c&quot;</p>\n"},
        {"{\\rtf1 a{\\b b}c}", "<p>a<span style=\"font-weight:bold\">b</span>c</p>\n"},
        {"{\\rtf1{\\ul\\strike x}}", "<p><span style=\"text-decoration:underline line-through\">x</span></p>\n"},
        {"{\\rtf1{\\ulhwave a\\ulldash b\\ulthd c\\ulthdash d\\ulthdashd e\\ulthdashdd f\\ulthldash g\\ululdbwave h}}",
         "<p><span style=\"text-decoration:underline\">abcdefgh</span></p>\n"},
        {"{\\rtf1\\fs27 x}", "<p><span style=\"font-size:13.5pt\">x</span></p>\n"},
        {"{\\rtf1{\\colortbl;\\red255\\green0\\blue10;}\\cf1 x}", "<p><span style=\"color:#ff000a\">x</span></p>\n"},
        {"{\\rtf1{\\colortbl;\\red255;}\\chcbpat1 x\\plain y}",
         "<p><span style=\"background-color:#ff0000\">x</span>y</p>\n"},
        {"{\\rtf1 H{\\sub 2}O}", "<p>H<span style=\"vertical-align:sub\">2</span>O</p>\n"},
        {"{\\rtf1\\qc\\li300\\fi-150\\sa60 x\\par}",
         "<p style=\"margin-left:20px;text-indent:-10px;margin-bottom:4px;text-align:center\">x</p>\n"},
        {"{\\rtf1 a\\line b\\page c}", "<p>a<br>b</p>\n<p style=\"page-break-before:always\">c</p>\n"},
        {"{\\rtf1\\sl360\\slmult1 x\\par\\pard\\sl240\\slmult1 y}", "<p style=\"line-height:150%\">x</p>\n<p>y</p>\n"},
        {"no rich text", "<p><br></p>\n"},
    };
    for (const auto& [rtf, expected] : kCases)
        EXPECT_EQ(BodyOf(rtf), expected) << rtf;
    EXPECT_THAT(WriteHtml({}, "<Notes> & more"), HasSubstr("<title>&lt;Notes&gt; &amp; more</title>"));
}

TEST(HtmlWriter, AFontNameCantLeaveItsAttribute) {
    const std::string body = BodyOf("{\\rtf1{\\fonttbl{\\f0 A'\\\\;x:url(javascript)\"><script>;}}\\f0 x}");
    EXPECT_THAT(body, Not(HasSubstr("<script>")));
    EXPECT_THAT(body, Not(HasSubstr("A'")));
}

TEST(HtmlWriter, OnlyLinksThatMayBeOpenedAreAlive) {
    const auto linkTo = [](const std::string& address) {
        return BodyOf("{\\rtf1{\\field{\\*\\fldinst HYPERLINK \"" + address + "\"}{\\fldrslt go}}}");
    };
    EXPECT_THAT(linkTo("https://a.b/?c=1&d=2"), HasSubstr("<a href=\"https://a.b/?c=1&amp;d=2\">"));
    EXPECT_THAT(linkTo("mailto:a@b.c"), HasSubstr("<a href=\"mailto:a@b.c\">"));
    for (const char* address : {"javascript:alert(1)", "file:///etc/passwd", "data:text/html,x", "nothing"})
        EXPECT_THAT(linkTo(address), Not(HasSubstr("<a"))) << address;
}

TEST(HtmlWriter, NestsListsAndGoesOnCounting) {
    DocumentBuilder builder;
    const auto item = [&](const char* text, ListKind kind, int level, int32_t list) {
        ParagraphFormat format;
        format.list = kind;
        format.listLevel = static_cast<uint8_t>(level);
        format.listId = list;
        builder.AddText(text, {});
        builder.EndParagraph(format);
    };
    item("a", ListKind::Decimal, 0, 1);
    item("b", ListKind::Bullet, 1, 1);
    item("c", ListKind::Decimal, 0, 1);
    builder.AddText("between", {});
    builder.EndParagraph({});
    item("d", ListKind::Decimal, 0, 1);
    item("e", ListKind::UpperRoman, 2, 2);
    const std::string html = WriteHtml(builder.Finish({}, true), "");
    const std::string body = html.substr(html.find("<body>\n") + 7);
    EXPECT_THAT(body, HasSubstr("<ol style=\"list-style-type:decimal;margin:0\"><li>a<ul "
                                "style=\"list-style-type:circle;margin:0\"><li>b</li></ul>\n</li>\n<li>c</li></ol>\n"
                                "<p>between</p>\n<ol start=\"3\""));
    EXPECT_EQ(CountOf("<ol", body), 4u);
    EXPECT_EQ(CountOf("</ol>", body), 4u);
}

TEST(HtmlWriter, TablesKeepTheirCellsAndSpans) {
    const std::string body = BodyOf(
        "{\\rtf1\\trowd\\clmgf\\clbrdrt\\brdrs\\cellx1500\\clmrg\\cellx3000\\cellx4500\\intbl wide\\cell\\cell "
        "c\\cell\\row"
        "\\trowd\\cellx1500\\cellx3000\\cellx4500\\intbl 1\\cell 2\\par\\par two\\cell 3\\cell\\row\\pard behind}");
    EXPECT_THAT(body, HasSubstr("<td width=\"200\" colspan=\"2\""));
    EXPECT_THAT(
        body, HasSubstr("<td width=\"100\"><p>2</p>\n<p><br></p>\n<p>two</p>\n</td><td width=\"100\"><p>3</p>\n</td>"));
    EXPECT_THAT(body, HasSubstr("</table>\n<p>behind</p>\n"));
}

TEST(HtmlWriter, CellsThatGoOnBelowAreOne) {
    const auto row = [](std::string_view merge, std::string_view text) {
        return "\\trowd" + std::string(merge) + "\\cellx1500\\cellx3000\\intbl " + std::string(text) +
               "\\cell x\\cell\\row";
    };
    const std::string body = BodyOf("{\\rtf1" + row("\\clvmgf", "tall") + row("\\clvmrg", "") + row("\\clvmrg", "") +
                                    row("", "own") + row("\\clvmrg", "alone") + "\\pard behind}");
    EXPECT_THAT(body, HasSubstr("<td width=\"100\" rowspan=\"3\"><p>tall</p>"));
    EXPECT_THAT(body, HasSubstr("<p>own</p>\n</td><td"));
    // Nothing begins above it: it is a cell like any other.
    EXPECT_THAT(body, HasSubstr("<td width=\"100\"><p>alone</p>"));
    EXPECT_EQ(CountOf("<td", body), 8u);
}

TEST(HtmlWriter, WordsInCellsWithoutAPlaceAreThere) {
    const auto row = [](const std::string& format, const std::string& text) {
        return "\\trowd" + format + "\\intbl " + text + "\\row";
    };
    std::string edges;
    for (int r = 0; r < 9; ++r) {
        std::string cells, texts;
        for (int c = 0; c < 9; ++c) {
            cells += "\\cellx" + std::to_string(1000 * c + 100 * r + 500);
            texts += "x\\cell ";
        }
        edges += row(cells, texts);
    }
    const std::string open = "\\trowd\\cellx1500\\cellx3000\\cellx4500\\intbl a";
    const std::string rows[] = {
        row("\\clmgf\\cellx1000\\clmrg\\cellx2000", "a\\cell b\\cell"),
        row("\\clvmgf\\cellx1000", "a\\cell") + row("\\clvmrg\\cellx1000", "b\\cell") +
            row("\\clvmrg\\cellx1000", "\\itap2 c\\nestcell\\pard\\intbl\\cell"),
        row("\\cellx1000\\cellx1000\\cellx900", "a\\cell b\\cell c\\cell"),
        row("\\cellx0\\cellx0", "a\\cell b\\cell") + row("\\cellx1000\\cellx2000", "c\\cell d\\cell"),
        row("", "a\\cell b\\cell") + row("\\cellx1000", "c\\cell"), edges, "\\trowd\\intbl a\\row\\pard b",
        // Rows that break off.
        "\\trowd\\cellx900\\cellx900\\intbl a\\row", open, open + "\\cell b", open + "\\cell\\row\\pard b",
        open + "\\par\\row\\pard b", open + "\\pard\\par b", open + "\\cell\\page b\\cell\\row c",
        row("\\cellx900", "a\\cell") + "\\intbl\\itap2 b\\nestcell{\\*\\nesttableprops\\trowd\\cellx9\\nestrow}c"};
    for (const std::string& body : rows) {
        const std::string rtf = "{\\rtf1" + body + "\\pard}";
        std::string text = PlainText(rtf);
        std::erase_if(text, [](char c) { return c < 'a'; });
        EXPECT_EQ(TextOfPage(BodyOf(rtf)), text) << rtf;
    }
    EXPECT_THAT(BodyOf("{\\rtf1" + rows[0] + "}"), HasSubstr("<td width=\"66\"><p>b</p>"));
    EXPECT_THAT(BodyOf("{\\rtf1" + rows[2] + "}"), HasSubstr("<td width=\"40\"><p>c</p>"));
}

TEST(HtmlWriter, APictureStandsWithinThePageAtItsSize) {
    Picture picture;
    picture.bytes = std::string("\x89PNG\0\xff!", 7);
    picture.goalWidth = 1500;
    picture.goalHeight = 750;
    picture.scaleX = 50;
    DocumentBuilder builder;
    builder.AddPicture(picture, {});
    picture.kind = PictureKind::Wmf;
    builder.AddPicture(picture, {});
    const std::string html = WriteHtml(builder.Finish({}, false), "");
    EXPECT_THAT(html,
                HasSubstr("<img alt=\"\" width=\"50\" height=\"50\" src=\"data:image/png;base64,iVBORwD/IQ==\">"));
    EXPECT_THAT(html, HasSubstr("[picture]"));
    picture.goalWidth = picture.scaleX = 0;
    picture.width = 254;  // hundredths of a millimetre, or pixels
    EXPECT_EQ(SizeOnPaper(picture).width, 144);
    picture.kind = PictureKind::Png;
    EXPECT_EQ(SizeOnPaper(picture).width, 254 * 15);
}

TEST(AppendDocument, KeepsFontsLinksTablesAndListsApart) {
    const Document first = ReadRtf(
        "{\\rtf1{\\fonttbl{\\f0 Arial;}{\\f1 Courier New;}}\\f1 one{\\field{\\*\\fldinst HYPERLINK "
        "\"http://a\"}{\\fldrslt link}}\\par\\trowd\\cellx900\\intbl cell\\cell\\row}");
    const Document second =
        ReadRtf("{\\rtf1{\\fonttbl{\\f0 Courier New;}{\\f1 Arial;}}\\f1 two\\par{\\*\\pn\\pnlvlbody\\pndec}item\\par}");
    DocumentBuilder builder;
    int32_t nextList = 1;
    for (const Document* const document : {&second, &first, &second})
        AppendDocument(builder, *document, nextList);
    const Document joined = builder.Finish({}, true);
    EXPECT_EQ(joined.text.substr(0, 12), "two\nitem\none");
    EXPECT_THAT(joined.text, HasSubstr("cell\t\n"));
    EXPECT_EQ(joined.fonts.size(), 2u);
    EXPECT_EQ(FontNameOf(joined, joined.runs.front().format), "Arial");
    EXPECT_EQ(FontNameOf(joined, joined.runs.back().format), "Arial");
    ListMarks marks;
    std::vector<std::string> numbers;
    for (const Paragraph& paragraph : joined.paragraphs) {
        if (const std::string mark = marks.NextMark(paragraph.format); !mark.empty())
            numbers.push_back(mark);
    }
    EXPECT_EQ(numbers, (std::vector<std::string>{"1.", "1."})) << "each text counts for itself";
}

TEST(AppendDocument, KeepsAllOfEachFile) {
    for (const auto& path : RtfFiles()) {
        SCOPED_TRACE(path.filename());
        const Document document = ReadRtf(ReadBytes(path));
        DocumentBuilder builder;
        int32_t nextList = 1;
        AppendDocument(builder, document, nextList);
        AppendDocument(builder, document, nextList);
        const Document twice = builder.Finish({}, true);
        // The last paragraph ends like any other one when something follows it.
        EXPECT_EQ(twice.text, document.text + '\n' + document.text);
        ASSERT_EQ(twice.paragraphs.size(), document.paragraphs.size() * 2);
        EXPECT_EQ(twice.rows.size(), document.rows.size() * 2);
        EXPECT_EQ(twice.runs.size(), document.runs.size() * 2);
        EXPECT_EQ(twice.pictures.size(), document.pictures.size() * 2);
        EXPECT_EQ(WhatIsWrongWith(twice), "");
        for (size_t i = 0; i < document.paragraphs.size(); ++i) {
            ParagraphFormat format = twice.paragraphs[i].format;
            format.listId = document.paragraphs[i].format.listId;
            EXPECT_EQ(format, document.paragraphs[i].format) << i;
        }
    }
}

TEST(HtmlWriter, HoldsTheTextOfEachFile) {
    for (const auto& path : RtfFiles()) {
        const std::string rtf = ReadBytes(path);
        std::string text = PlainText(rtf);
        std::erase_if(text, [](char c) { return Trim(std::string_view(&c, 1)).empty(); });
        EXPECT_EQ(TextOfPage(BodyOf(rtf)), text) << path.filename();
    }
}

TEST(OfficeRtf, HasAPaperButNoOlderMarksAndReadsBack) {
    DocumentBuilder builder;
    ParagraphFormat format;
    format.list = ListKind::UpperRoman;
    format.listId = 2;
    builder.AddText("item", {});
    const Document document = builder.Finish(format, false);
    EXPECT_THAT(WriteRtf(document), HasSubstr("\\pnucrm"));
    EXPECT_THAT(WriteOfficeRtf(document), HasSubstr("\\listoverride\\"));
    EXPECT_THAT(WriteOfficeRtf(document), Not(HasSubstr("\\pn")));
    EXPECT_THAT(WriteOfficeRtf(document), HasSubstr("\\paperw11906\\paperh16838\\margl1134"));
    EXPECT_THAT(WriteRtf(document), Not(HasSubstr("\\paperw")));
    EXPECT_THAT(WriteOfficeRtf(document), Not(HasSubstr("\\landscape")));
    EXPECT_THAT(WriteOfficeRtf(document, {.width = 20000}), HasSubstr("\\landscape"));
    const Document read = ReadRtf(WriteOfficeRtf(document));
    EXPECT_EQ(read.text, "item");
    EXPECT_EQ(read.paragraphs[0].format.list, ListKind::UpperRoman);
}

TEST(ListMarks, CountInEveryKind) {
    using Case = std::tuple<ListKind, int, const char*>;
    for (const auto& [kind, number, mark] :
         {Case{ListKind::None, 1, ""}, Case{ListKind::Bullet, 9, "\u2022"}, Case{ListKind::Decimal, 12, "12."},
          Case{ListKind::LowerLetter, 28, "ab."}, Case{ListKind::UpperLetter, 26, "Z."},
          Case{ListKind::LowerRoman, 1994, "mcmxciv."}, Case{ListKind::LowerRoman, 0, "0."},
          Case{ListKind::UpperRoman, 4, "IV."}, Case{ListKind::UpperRoman, 4000, "4000."},
          Case{ListKind::LowerRoman, 4000, "4000."}}) {
        ParagraphFormat format;
        format.list = kind;
        EXPECT_EQ(MarkOf(format, number), mark);
    }
}

}  // namespace
}  // namespace lore
