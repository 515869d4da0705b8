#include <filesystem>
#include <gmock/gmock.h>
#include <string>
#include <utility>

#include "rtf/html_reader.h"
#include "rtf/html_style.h"
#include "rtf/html_writer.h"
#include "rtf/list_marks.h"
#include "rtf/rtf.h"
#include "rtf/rtf_check.h"
#include "rtf/rtf_files.h"
#include "rtf/table_grid.h"
#include "support/data_files.h"
#include "support/each.h"

namespace lore {
namespace {

using ::testing::ElementsAre;

using Case = std::pair<const char*, const char*>;

const HtmlLook kLook{"Times New Roman", 27};

/// The text with a mark around each run that looks unlike the surroundings: "*bold* /italic/ _underline_".
std::string Marked(const std::string& html) {
    const Document document = ReadHtml(html, kLook);
    std::string marked;
    for (size_t paragraph = 0; paragraph < document.paragraphs.size(); ++paragraph) {
        for (const TextRun& run : RunsOf(document, paragraph)) {
            const std::pair<bool, char> marks[] = {
                {run.format.bold, '*'},      {run.format.italic, '/'},
                {run.format.underline, '_'}, {run.format.strike, '-'},
                {run.format.link >= 0, '@'}, {run.format.position == ScriptPosition::Superscript, '^'},
                {run.format.allCaps, '!'},   {run.format.position == ScriptPosition::Subscript, ','},
                {run.format.smallCaps, '+'}};
            std::string text(TextOf(document, run));
            for (const auto& [on, mark] : marks) {
                if (on)
                    text = mark + text + mark;
            }
            marked += text;
        }
        marked += '|';
    }
    return marked;
}

/// Pages and the texts that they give.
void ExpectTexts(std::initializer_list<Case> cases) {
    for (const auto& [html, text] : cases) {
        EXPECT_EQ(ReadHtml(html, kLook).text, text) << html;
        EXPECT_EQ(WhatIsWrongWithPage(html), "") << html;
    }
}

TEST(Html, BlocksBecomeParagraphsAndBlanksFlow) {
    const Case cases[] = {
        {"plain", "plain|"},
        {"<p>one</p>\n\n<p>  two \n words </p>", "one|two words|"},
        {"<div>a<div>b</div>c</div>", "a|b|c|"},
        {"a<br>b<br/>", "a\nb|"},
        {"<p>a<br><br>b", "a\n\nb|"},
        {"<pre>a  b\n  c</pre>", "a  b\n  c|"},
        {"<pre>\n\na\n\nb\n\n</pre>c<pre>\r\nd</pre>", "|a\n\nb\n|c|d|"},
        {"a <b> b</b> c", "a *b* c|"},
        {"<p>a</p><script>x()</script><style>y</style><!-- z --><p>b</p>", "a|b|"},
        {"<title>no</title><body>yes", "yes|"},
        {"&lt;&eacute;&#x4e2d;&nbsp;&gt;", "<\u00e9\u4e2d\u00a0>|"},
        {"<p>unclosed <b>bold<p>next", "unclosed *bold*|*next*|"},
        {"<title>T</title><b>First</b> words", "*First* words|"},
        {"<meta charset=utf-8><b><p>Words</p></b>", "*Words*|"},
        {"<b>Head<p>x</b> tail</p><i>Next</i> one", "*Head*|*x*|tail|/Next/ one|"},
        {"<img src=\"http://far.example/x.png\" alt=\"A tower\">", "A tower|"},
        {"<p style=\"display:none\">hidden</p>seen", "seen|"},
        {"a<i style='display:none !important'>b</i><i style='visibility:hidden'>c</i>", "a|"},
        {"a<u style='mso-hide:none'>b</u><u style='display:none;display:inline'>c</u>", "a_bc_|"},
        {"<math><mi>a</mi><annotation encoding='application/x-tex'>\\a</annotation></math>", "a|"},
        {"<p style=\"visibility:hidden\">a</p><p style=\"mso-hide:all\">b</p><p style=\"display:block\">c", "c|"},
        {"<div hidden>a</div><p hidden style='display:block'>b<span style='display:block'>c</span>d", "b|c|d|"},
        {"<h3><button>Question</button></h3><button>c</button>", "*Question*|"},
        {"a\t\f\nb", "a b|"},
        {"", "|"}};
    for (const auto& [html, marked] : cases)
        EXPECT_EQ(Marked(html), marked) << html;
}

/// The first bytes of a PNG of 640 x 480, as a page holds them.
std::string PngAddress() {
    return "data:image/png;base64,iVBORw0KGgoAAAANSUhEUgAAAoAAAAHg";
}

TEST(Html, PicturesThatStandInThePageComeIn) {
    struct PictureCase {
        std::string html, marked;
        std::vector<std::pair<int, int>> goals;  // twips
    };
    const std::string png = PngAddress();
    const PictureCase cases[] = {
        {"a <img src=\"" + png + "\"> b", "", {{9000, 6750}}},
        {"<img width=100 src='" + png + "'>", "|", {{1500, 1125}}},
        {"<img width=10 height=30 src='" + png + "'><img height=48 src='" + png + "'>", "||", {{150, 450}, {960, 720}}},
        {"<img width=50% src='" + png + "'>", "|", {{9000, 6750}}},
        {"<img height=999999999 width=1 src='" + png + "'>", "|", {{15, 450000}}},
        {"<table><tr><td><img width=100 src='" + png + "'><td>b</table>", "|b|", {{1500, 1125}}},
        {"<img alt=x src='data:image/png;base64,!!!!'>", "x|", {}},
        {"<img alt=x src='data:image/png;base64,iVBO=Rw0KGgo'>", "x|", {}},
        {"<img alt=x src='data:image/png;base64,'>", "x|", {}},
        {"<img height=50% src='" + png + "'>", "|", {{9000, 6750}}},
        {" <img src='" + png + "'>a<br> <img width=100 src='" + png + "'>", "", {{9000, 6750}, {1500, 1125}}},
        // Parts of other kinds stand in front of the one that has the size.
        {"<img src='data:image/jpeg;base64,/9j/xAAEAQL/yAAEAQL/zAADAf/aAAL/wgARCAABAAI='>", "|", {{30, 15}}},
        {"<img alt=x src='data:image/gif;base64,R0lGODlh'>", "x|", {}},
        {"<img alt=x src='data:text/html;base64,R0lG'>", "x|", {}},
        {"<img alt=x src='data:image/png,R0lG'>", "x|", {}},
        {"<img alt=x src='data:image/png;chars8,R0lG'>", "x|", {}},
        {"<img alt=x src='data:image/jpeg;base64,/9j/AQADAP//4AADAAAAAAAAAAA='>", "x|", {}},
        {"<p style='display:none'><img src='" + png + "'></p>seen", "seen|", {}},
        {"<img src='data:image/jpeg;base64,/9j/4AAEAAD/wAARCAABAAI='>", "|", {{30, 15}}},
        {"<img alt=x src='data:image/jpeg;base64,/9j/4AAEAAD/'>", "x|", {}},
    };
    for (const PictureCase& c : cases) {
        SCOPED_TRACE(c.html);
        const Document document = ReadHtml(c.html, kLook);
        ASSERT_EQ(document.pictures.size(), c.goals.size());
        for (size_t i = 0; i < c.goals.size(); ++i)
            EXPECT_EQ(std::pair(document.pictures[i].goalWidth, document.pictures[i].goalHeight), c.goals[i]);
        if (c.goals.empty()) {
            EXPECT_EQ(Marked(c.html), c.marked);
        }
    }
    HtmlLook converting = kLook;
    converting.convert = [](const std::string& bytes) {
        Picture made;
        made.bytes = "made of " + bytes;
        made.width = made.height = 20;
        return std::optional(made);
    };
    const Document document = ReadHtml("<img src='data:image/gif;base64, R0lG\t O\r\nDlh'>", converting);
    ASSERT_EQ(document.pictures.size(), 1u);
    EXPECT_EQ(document.pictures[0].bytes, "made of GIF89a");
    EXPECT_EQ(document.pictures[0].goalWidth, 300);
    converting.convert = [](const std::string&) -> std::optional<Picture> { throw std::bad_alloc(); };
    EXPECT_THROW(ReadHtml("<img src='data:image/gif;base64,R0lGODlh'><p>b", converting), std::bad_alloc);
}

TEST(Html, LooksComeFromTagsAndInlineStyles) {
    const Case cases[] = {
        {"<b>b</b><strong>s</strong> <i>i</i> <em>e</em>", "*bs* /i/ /e/|"},
        {"<u>u</u><s>s</s><sup>2</sup>", "_u_-s-^2^|"},
        {"<span style=\"font-weight: 700; font-style:italic\">x</span>", "/*x*/|"},
        {"<b>a<span style=\"font-weight:normal\">b</span></b>", "*a*b|"},
        {"<i>a<span style=\"font-style:normal\">b</span></i><span style=\"font-style:oblique\">c", "/a/b/c/|"},
        {"<span style=\"text-decoration: underline line-through\">x</span>", "-_x_-|"},
        {"<a href=\"https://a.example/\">here</a> <a name=\"x\">there</a>", "@here@ there|"},
        {"<span style='vertical-align:super'>a<span style='vertical-align:baseline'>b</span></span>", "^a^b|"},
        {"<table><td style='vertical-align:sub'>a<a style='vertical-align: SUB'>b</a></table>", "a,b,|||"},
        {"<b style='font-variant:small-caps'>a<i style='font-variant:normal'>b</i></b>", "+*a*+/*b*/|"},
        {"<p style='text-transform:uppercase'>a<i style='text-transform:none'>b</i>", "!a!/b/|"},
        {"<div style='white-space:pre-wrap'>a  b\n c<span style='white-space:normal'>d  e</span></div>",
         "a  b\n cd e|"},
        {"<details><summary>a</summary>b</details><fieldset><legend>c</legend>d</fieldset>", "a|b|c|d|"},
        {"<i style='vertical-align:top'>a</i><i style='white-space:break-spaces'>b  c</i>", "/ab  c/|"},
        {"<i style='text-decoration:underline;text-decoration-skip-ink:none'>x</i>", "_/x/_|"},
        {"<b><p>a</p><hr></b><u><i><center>b</center><p>c</i></u><p>d", "*a*|*\u2014\u2014\u2014*|_/b/_|_/c/_|d|"},
        {"<a href=x><table><td>a</table>b<a href=y>c</a>d", "@a@||@b@@c@d|"},
        {"<i><table><td><b>a<td>b<tr><td>c<td><b>d</table>e", "/*a*/|/b/||/c/|/*d*/||/e/|"},
        {"<b style='display:none'>h<p>j</p></b>y", "y|"},
        {"<i style='font: BOLD 12px/1.5 Arial'>a</i><b style='/* c */font:italic 9pt b'>b<i style='font:menu'>c",
         "*a*/bc/|"},
        {"<h2>Head</h2>text", "*Head*|text|"}};
    for (const auto& [html, marked] : cases)
        EXPECT_EQ(Marked(html), marked) << html;
}

TEST(Html, ColorsSizesAndFontsAreRead) {
    const Document document = ReadHtml(
        "<p style='text-align:center'><span style=\"color:#c00; background-color: rgb(1, 2, 3); font-size:10pt; "
        "font-family: 'DejaVu Serif', serif\">x</span></p>",
        kLook);
    const TextRun& run = RunsOf(document, 0).front();
    EXPECT_EQ(run.format.color, (TextColor{204, 0, 0}));
    EXPECT_EQ(run.format.background, (TextColor{1, 2, 3}));
    EXPECT_EQ(run.format.halfPoints, 20);
    EXPECT_EQ(document.fonts[static_cast<size_t>(run.format.font)].name, "DejaVu Serif");
    EXPECT_EQ(document.paragraphs[0].format.align, ParagraphAlign::Center);
    using Color = std::pair<const char*, std::optional<TextColor>>;
    for (const auto& [text, color] :
         {Color{"nonsense", std::nullopt}, Color{"#ab", std::nullopt}, Color{"#12345", std::nullopt},
          Color{"#12345g", std::nullopt}, Color{"#", std::nullopt}, Color{" #A0b1C2 ", TextColor{160, 177, 194}},
          Color{"Teal", TextColor{0, 128, 128}}, Color{"rgb(999,0,255)", TextColor{255, 0, 255}},
          Color{"rgb(1,2)", std::nullopt}})
        EXPECT_EQ(ReadHtmlColor(text), color) << text;
    const std::pair<const char*, std::optional<int16_t>> sizes[] = {
        {"150%", 30},      {"2em", 40},           {"2rem", 48},           {"12px", 18},      {"1in", 144},
        {"10mm", 57},      {"0pt", std::nullopt}, {"-4pt", std::nullopt}, {"99999pt", 3276}, {"large", std::nullopt},
        {"", std::nullopt}};
    for (const auto& [text, size] : sizes)
        EXPECT_EQ(ReadInlineStyle(std::string("font-size:") + text, 20).halfPoints, size) << text;
    EXPECT_EQ(ReadInlineStyle("font-family: \"A B\", c", 20).font, "A B");
    EXPECT_EQ(ReadInlineStyle("font-family:'open", 20).font, "open");
    EXPECT_EQ(ReadInlineStyle("font-family: plain ,c", 20).font, "plain");
    EXPECT_EQ(ReadInlineStyle("font: small-caps 700 50% / 1.2 'A B', c", 20).font, "A B");
    EXPECT_EQ(ReadInlineStyle("text-decoration:none", 20).underline, false);
    EXPECT_EQ(ReadHtml("<mark>x", kLook).runs.front().format.background, (TextColor{255, 255, 0}));
    const std::pair<const char*, int> elements[] = {
        {"<font size=1>", 15}, {"<font size='+1'>", 27}, {"<font size=-9>", 15}, {"<font size=99>", 72},
        {"<font size=x>", 27}, {"<hr size=1><i>", 27},   {"<big>", 32},          {"<h3><small>", 23}};
    for (const auto& [element, size] : elements)
        EXPECT_EQ(ReadHtml(std::string(element) + "x", kLook).runs.back().format.halfPoints, size) << element;
    EXPECT_EQ(ReadInlineStyle(";;:;x", 20).halfPoints, std::nullopt);
}

TEST(Html, ListsKeepTheirLevelsAndMarks) {
    const Document document =
        ReadHtml("<ol start=3><li>a<ul><li>b</ul><li><p>c</p><p>d</p></ol><ol type=i><li>e</ol>f", kLook);
    std::vector<std::string> shape;
    for (const Paragraph& paragraph : document.paragraphs)
        shape.push_back(document.text.substr(paragraph.begin, paragraph.end - paragraph.begin) +
                        std::to_string(static_cast<int>(paragraph.format.list)) +
                        std::to_string(paragraph.format.listLevel));
    EXPECT_THAT(shape, ElementsAre("a20", "b11", "c20", "d00", "e50", "f00"));
    EXPECT_EQ(document.paragraphs[0].format.listStart, 3);
    EXPECT_EQ(document.paragraphs[0].format.listId, document.paragraphs[2].format.listId);
    EXPECT_NE(document.paragraphs[0].format.listId, document.paragraphs[4].format.listId);
    EXPECT_EQ(ReadHtml("<ol type=x><li>g", kLook).paragraphs[0].format.list, ListKind::Decimal);
    const std::pair<const char*, const char*> numbers[] = {
        {"<ol><li value=7>a<li>b<li value='2'><p>c<p>d<li>e</ol>", "a7 b8 c2 d0 e3 "},
        {"<ol start=3><li value=3>a<li value=4>b<ol><li value=1>c</ol><li value=5>d</ol>", "a3 b4 c1 d5 "},
        {"<ol><li>a<ol><li value=5>b<li>c</ol><li>d<li value=2000000000>e", "a1 b5 c6 d2 e32767 "},
        {"<ol start=x><li value=>a<li value=x>b<ul><li value=4>c", "a1 b2 c1 "},
    };
    for (const auto& [html, expected] : numbers) {
        const Document read = ReadHtml(html, kLook);
        ListMarks marks;
        std::string items;
        for (const Paragraph& paragraph : read.paragraphs)
            items += read.text.substr(paragraph.begin, paragraph.end - paragraph.begin) +
                     std::to_string(marks.NextNumber(paragraph.format)) + " ";
        EXPECT_EQ(items, expected) << html;
        EXPECT_LE(read.paragraphs.back().format.listId, 4) << "numbers that are theirs anyhow make no list";
    }
    const std::pair<const char*, std::vector<ListKind>> styles[] = {
        {"<ol style='list-style-type: upper-roman'><li>a<li>b", {ListKind::UpperRoman, ListKind::UpperRoman}},
        {"<ul style='list-style: inside none'><li>a", {ListKind::None}},
        {"<ol><li style='list-style-type:lower-latin'>a<li style='list-style-type:lower-alpha'>b<li>c",
         {ListKind::LowerLetter, ListKind::LowerLetter, ListKind::LowerLetter}},
        {"<ul><li>a<li style='list-style:none'>b<li style='list-style:katakana square'>c",
         {ListKind::Bullet, ListKind::None, ListKind::Bullet}},
        {"<p style='list-style-type:disc'>a", {ListKind::None}},
        {"<ul style='list-style: inside katakana'><li>a", {ListKind::Bullet}},
    };
    for (const auto& [html, kinds] : styles) {
        std::vector<ListKind> read;
        for (const Paragraph& paragraph : ReadHtml(html, kLook).paragraphs)
            read.push_back(paragraph.format.list);
        EXPECT_EQ(read, kinds) << html;
        EXPECT_EQ(WhatIsWrongWithPage(html), "") << html;
    }
}

TEST(Html, TablesBecomeRowsOfCellsHoweverTheyAreClosed) {
    for (const char* html : {"<table><tr><td>1</td><th>2</th></tr><tr><td colspan=2>3</td></tr></table>after",
                             "<table><tr><td>1<th>2<tr><td colspan=2>3</table>after"}) {
        const Document document = ReadHtml(html, kLook);
        EXPECT_EQ(document.text, "1\t2\t\n3\t\t\nafter") << html;
        EXPECT_EQ(document.rows.size(), 2u);
        for (const TableRow& row : document.rows)
            EXPECT_EQ(document.rowFormats[row.format].cells.size(), 2u);
        EXPECT_EQ(PlainText(WriteRtf(document)), document.text) << html;
    }
    EXPECT_EQ(ReadHtml("<table><tr><td>a<table><tr><td>b</table>c</table>", kLook).rows.size(), 2u);
    const Document spanned = ReadHtml(
        "<table><tr><td rowspan=3 colspan=2>a<td>b<tr>c<tr><tr><td>d<td rowspan=9>e<tr><td>f<td>g</table>", kLook);
    EXPECT_EQ(spanned.text, "a\t\tb\t\n\t\tc\t\n\t\td\te\t\nf\tg\t\n");
    const TableGrid grid = MakeTableGrid(spanned, std::vector<int32_t>{0, 1});
    EXPECT_EQ(std::pair(grid.rows[0][0].columnSpan, grid.rows[0][0].rowSpan), std::pair(2, 2));
    EXPECT_EQ(ReadHtml("</td></tr></table><td>x</td><tr>y</tr>", kLook).rows.size(), 0u);
}

TEST(Html, ACellEndsWithItsLastParagraph) {
    ExpectTexts({
        Case{"<table><tr><td><p>A</p></td><td><p>B</p><p>C</p> "
             "</td></tr><tr><td>D</td><td><div>E</div></td></tr></table>",
             "A\tB\nC\t\nD\tE\t\n"},
        Case{"<table><td><p></p><td><br><td>a<br><td><p>b</p><br><td><p>c</p>d</table>", "\t\ta\tb\n\tc\nd\t\n"},
        Case{"<p>a</p><table><td><td><p>b<p></table>", "a\n\tb\t\n"},
        Case{"<table><td><p>a</p><table><td><p>b</p></table><td><table><td>c</table><p>d</p></table>",
             "a\nb\t\n\tc\t\nd\t\n"},
        Case{"<table><td colspan=2><p>a</p><td><ul><li>b</ul></table>", "a\t\tb\t\n"},
    });
    const Document document = ReadHtml("<table><td colspan=2><p align=right>a</p></td></table>", kLook);
    EXPECT_EQ(document.paragraphs[0].format.align, ParagraphAlign::Right);
    EXPECT_EQ(document.paragraphs[1].format.align, ParagraphAlign::Left);
}

TEST(Html, OddPlacesOfTextAndBreaksKeepTheText) {
    ExpectTexts({Case{"<br>a<br><br>b<br>", "\na\n\nb"}, Case{"<table><tr>loose<td>cell</table>", "loose\tcell\t\n"},
                 Case{"<table><tr><td>open", "open\t\n"}, Case{"<p dir=RTL align=right>x", "x"},
                 Case{"a<hr>b", "a\n\u2014\u2014\u2014\nb"}, Case{"</p></i></none>a", "a"},
                 Case{"<!doctype html><!-- </p>x --> </div>a<p>b", "a\nb"},
                 Case{"<html><body>a</BODY ></html><p>b</html>c", "a\nb c"}, Case{"a</bodyx>b</", "ab"},
                 Case{"<!foo>a<![if !lists]>b<![endif]>c<![CDATA[d]]><!-->e<!--->f<!---->g<!a", "abcefg"},
                 Case{"<i title='<!x>'>a</i><script>b<!c</script>d<title><!</title>e", "ade"},
                 Case{"a</br <i>>b<q>c<q>d</q></q></q>", "a\n>b\u201Cc\u2018d\u2019\u201D"}, Case{"a</body", "a"},
                 Case{"<div>x<script>var a=\"<div>r</div>\"; b();</script>y</div><p>z</p>", "xy\nz"},
                 Case{"a<style>b{c:url(\"d<svg></svg></styles>\")}</style>e<script/>f<script>g", "aef"},
                 Case{"a<? x ?>b", "ab"}, Case{"</", ""}, Case{"<!-- open", ""}});
    const ParagraphFormat format = ReadHtml("<p dir=RTL align=right>x", kLook).paragraphs[0].format;
    EXPECT_TRUE(format.rightToLeft);
    EXPECT_EQ(format.align, ParagraphAlign::Right);
}

TEST(Html, NamesAndAddressesHoldNoControlCharacters) {
    const Document document = ReadHtml("<a href=' http://a\x02\n/b'><font face=' A\x02;B\n'>x</font></a>", kLook);
    ASSERT_EQ(document.runs.size(), 1u);
    EXPECT_EQ(document.links, std::vector<std::string>{"http://a/b"});
    EXPECT_EQ(FontNameOf(document, document.runs[0].format), "A,B");
    EXPECT_EQ(WhatIsWrongWith(document), "");
}

TEST(Html, HoldsForWhatFuzzingFound) {
    for (const auto& path : CorpusFiles(LORE_TEST_DATA, "html"))
        EXPECT_EQ(WhatIsWrongWithPage(ReadBytes(path)), "") << path;
}

TEST(Html, BytesAreReadAsTheyAre) {
    for (const char* bytes :
         {"caf\xc3\xa9", "caf\xe9", "<meta charset=iso-8859-1>caf\xe9", "<meta charset=iso-8859-1>caf\xc3\xa9",
          "\xef\xbb\xbf<p>caf\xc3\xa9", "\xef\xbb\xbf<p>caf\xe9", "<meta charset=utf-8>caf\xe9"})
        EXPECT_EQ(ReadHtml(bytes, kLook).text, "caf\u00e9") << bytes;
    EXPECT_EQ(ReadHtml("\xef\xbb\xbf", kLook).text, "");
}

TEST(Html, NoEncodingThatAPageNamesCostsItsText) {
    ExpectTexts({{"<meta charset=koi8-r>\xd4\xc5\xd3\xd4", "\u0442\u0435\u0441\u0442"},
                 {"<meta content='text/html; CHARSET=\"Latin1\"'>\x93q\x94 \x81", "\u201cq\u201d \u0081"},
                 {"<meta name=x><META CHARSET = us-ascii><meta charset='us-ascii'/>\x93q\x94", "\u201cq\u201d"},
                 // One byte that is wrong doesn't take the others along.
                 {"<meta charset=utf-8>caf\xc3\xa9 \x93q\x94 caf\xc3\xa9 \xe2\x80",
                  "caf\u00e9 \u201cq\u201d caf\u00e9 \u00e2\u20ac"},
                 {"<meta charset=shift_jis>a \x82\xa0\xff b \x82", "a \u3042\ufffd b \ufffd"},
                 {"<meta charset=gb2312>\xc4\xe3 \x81\x40", "\u4f60 \u4e02"},
                 {"<meta charset=euc-kr>\xb0\xa1 \x81\x41", "\uac00 \uac02"},
                 {"<meta charset=iso-2022-jp>\x1b$B$\"\x1b(B", "\u3042"},
                 {"<?xml version='1.0' encoding='iso-8859-2'?>\xb3", "\u0142"},
                 // The name can't be true.
                 {"<meta charset=utf-16>caf\xe9", "caf\u00e9"},
                 {"<meta charset=ebcdic-cp-us>caf\xe9", "caf\u00e9"},
                 {"<meta charset=utf-7>caf\xe9 +AOk-", "caf\u00e9 +AOk-"},
                 {"<meta charset=nobody's>\x93q\x94", "\u201cq\u201d"},
                 {"<meta charset=>caf\xe9", "caf\u00e9"},
                 {"<p>charset=koi8-r</p>caf\xe9", "charset=koi8-r\ncaf\u00e9"}});
}

TEST(Html, CharacterReferencesReadAsInOldPages) {
    ExpectTexts(
        {{"&#147;&#x85;&#X94;&#00150;", "\u201c\u2026\u201d\u2013"},
         {"&#128 &#151x &#x9fz", "\u20ac \u2014x \u0178z"},
         {"&#127;&#129;&#160;&#1500;&#x993;", "\u007f\u0081\u00a0\u05dc\u0993"},
         {"&#99999999999999999147;a", "a"},
         {"a &# b &#x &#", "a &# b &#x &#"},
         {"&copy 2020, &copy2020 &nbsp&nbsp;x", "\u00a9 2020, \u00a92020 \u00a0\u00a0x"},
         {"&eacutet&eacute &frac12 AT&T R&ampD &lt&gt&quot", "\u00e9t\u00e9 \u00bd AT&T R&D <>\""},
         {"&ltb&gt &amp;copy &#38;copy;", "<b> &copy &copy;"},
         {"&comma;&lbrace;&check;&AMP;&LT;&COMMA;&comma", ",{\u2713&<&COMMA;&comma"},
         // Names above U+00FF need their end, as does what the parser doesn't know.
         {"&hellip &hellip; &apos &sup &notin; &nothing; &no &", "&hellip \u2026 &apos &sup \u2209 &nothing; &no &"}});
    const Document document =
        ReadHtml("1 &lt 2<a href='http://a/?b=1&copy=2&region=3&reg&amp;c=&#150;'>x&copy=</a>", kLook);
    EXPECT_EQ(document.links, std::vector<std::string>{"http://a/?b=1&copy=2&region=3\u00ae&c=\u2013"});
    EXPECT_EQ(document.text, "1 < 2x\u00a9=");
}

TEST(Html, DeepAndLongPagesEndInTime) {
    const std::string link = "<a href='" + std::string(60'000, 'a') + "'>";
    const std::pair<std::string, const char*> pages[] = {{"", "<div>"},
                                                         {"", "<table><tr><td>"},
                                                         {"<table>", "<tr><td colspan=1000000>"},
                                                         {"<pre>", "\n"},
                                                         {"<table><tr>", "<td>x"},
                                                         {"<table><td colspan=99 rowspan=1000000>x", "<tr>x"},
                                                         {link, "<p>x"},
                                                         {"", "<ol><li>x</ol>"},
                                                         {"<b>", "<li value=5>x"},
                                                         {link, "<b>x</b>y"},
                                                         {"", "<!>x"},
                                                         {"", "x<script>"},
                                                         {"", "<p><b>x"},
                                                         {"<table>", "<td><b>x"},
                                                         {"x", "</br"}};
    for (const auto& [begin, part] : pages) {
        const Document document = ReadHtml(begin + Repeated(part, 100'000) + "x", kLook);
        const std::string rtf = WriteRtf(document);
        EXPECT_LT(rtf.size(), 16'000'000u) << part;
        EXPECT_EQ(PlainText(rtf), document.text) << part;
        EXPECT_NE(document.text, "") << part;
    }
    std::string attributes;
    for (int i = 0; i < 100'000; ++i)
        attributes += (i % 2 == 0 ? " a" : "='>'b") + std::to_string(i);
    const Document document = ReadHtml("<a href = \"b>\"" + attributes + "><!-- <i c='-->d", kLook);
    EXPECT_EQ(document.text, "d");
    EXPECT_EQ(document.links, std::vector<std::string>{"b>"});
}

}  // namespace
}  // namespace lore
