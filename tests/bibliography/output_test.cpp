#include <gtest/gtest.h>

#include "base/text.h"
#include "bibliography/odt_package.h"
#include "bibliography/output_links.h"
#include "bibliography/output_selection.h"
#include "bibliography/output_writers.h"
#include "bibliography/source_builder.h"
#include "rtf/rtf.h"

namespace lore {
namespace {

struct Span {
    int32_t kind, start, end;  // bytes, both inclusive
};

CSource Cited(std::string text, std::initializer_list<Span> spans = {}, int32_t indent = 3) {
    CSource source = CitationOnly(1, std::move(text));
    source.IndentSpaces = indent;
    for (const Span& span : spans) {
        source.SpanKinds.AddTail(span.kind);
        source.SpanStarts.AddTail(span.start);
        source.SpanEnds.AddTail(span.end);
    }
    return source;
}

BibliographyDocument DocumentOf(std::initializer_list<CSource> sources) {
    SourceList list;
    for (const CSource& source : sources)
        list.AddTail(source);
    return MakeBibliographyDocument(list);
}

std::string EmphasisText(const BibliographyEntry& entry) {
    std::string text;
    for (const EmphasisRange& range : entry.emphasis)
        text += std::to_string(range.kind) + ":" + std::to_string(range.begin) + "-" + std::to_string(range.end) + " ";
    return text;
}

/// What stands between two marks of a text, the first time.
std::string Between(const std::string& text, const std::string& begin, const std::string& end) {
    const size_t from = text.find(begin);
    if (from == std::string::npos)
        return "(no " + begin + ")";
    return text.substr(from + begin.size(), text.find(end, from + begin.size()) - from - begin.size());
}

std::string HtmlOf(const CSource& source) {
    return Between(BibliographyAsHtml(DocumentOf({source})), "<body>\n", "</body>");
}

const char kSixScripts[] =
    "Gr\u00E9millon \u03A6\u03AC\u03C1\u03BF\u03C2 \u041C\u0430\u044F\u043A "
    "\u05DE\u05D2\u05D3\u05DC\u05D5\u05E8 \u0645\u0646\u0627\u0631\u0629 \u71C8\u5854";

TEST(BibliographyDocument, PartsSpansThatOverlapSoThatTheFirstHolds) {
    struct Case {
        const char* what;
        std::initializer_list<Span> spans;
        const char* expected;
    };
    const Case kCases[] = {
        {"apart", {{1, 0, 1}, {2, 4, 5}}, "1:0-2 2:4-6 "},
        {"a later one around the first", {{1, 3, 4}, {2, 1, 7}}, "2:1-3 1:3-5 2:5-8 "},
        {"a later one within the first", {{2, 1, 7}, {1, 3, 4}}, "2:1-8 "},
        {"a chain", {{3, 0, 3}, {4, 2, 5}, {5, 4, 8}}, "3:0-4 4:4-6 5:6-9 "},
        {"two of a kind side by side", {{1, 0, 1}, {1, 2, 3}}, "1:0-4 "},
        {"a kind that is none hides what lies under it", {{9, 2, 3}, {1, 0, 5}}, "1:0-2 1:4-6 "},
        {"ends outside of the text", {{1, -5, 1}, {2, 8, 2'000'000'000}, {3, 50, 60}}, "1:0-2 2:8-10 "},
        {"an end before the start", {{1, 5, 2}}, ""},
    };
    for (const Case& c : kCases)
        EXPECT_EQ(EmphasisText(DocumentOf({Cited("0123456789", c.spans)}).entries[0]), c.expected) << c.what;
}

TEST(BibliographyDocument, TakesAListOfSpansWithoutKindsAsItalic) {
    CSource source = Cited("0123456789", {{2, 0, 1}, {2, 4, 5}});
    source.SpanKinds = {2};
    EXPECT_EQ(EmphasisText(DocumentOf({source}).entries[0]), "2:0-2 1:4-6 ");
}

TEST(BibliographyDocument, CountsCharactersInBothFormsOfText) {
    const BibliographyDocument document =
        DocumentOf({Cited("\u71C8\u5854 abc", {{1, 0, 5}, {2, 7, 9}}), Cited("\xC9\xE9 abc", {{1, 0, 1}, {2, 3, 5}})});
    EXPECT_EQ(EmphasisText(document.entries[0]), "1:0-2 2:3-6 ");
    EXPECT_EQ(EmphasisText(document.entries[1]), "1:0-2 2:3-6 ");
    EXPECT_EQ(document.entries[1].text, "\u00C9\u00E9 abc");
}

TEST(BibliographyDocument, MakesOneLineOfATextAndMovesItsSpans) {
    const auto entry =
        DocumentOf({Cited(" \n The Light\nof\t1811 \x01", {{1, 3, 17}, {2, 0, 1}, {2, 19, 22}})}).entries[0];
    EXPECT_EQ(entry.text, "The Light of 1811");
    EXPECT_EQ(EmphasisText(entry), "1:0-15 2:16-17 ");
    EXPECT_EQ(DocumentOf({Cited(" \n ", {{1, 0, 2}})}).entries[0].text, "");
}

TEST(BibliographyDocument, BoundsWhatDamagedRecordsAskFor) {
    EXPECT_EQ(DocumentOf({Cited("a", {}, 2'000'000'000)}).entries[0].indentSpaces, kMostIndentSpaces);
    EXPECT_EQ(DocumentOf({Cited("a", {}, -7)}).entries[0].indentSpaces, 0);
    CSource crowded = Cited(std::string(200'000, 'x'));
    for (int32_t i = 0; i < 100'000; ++i) {
        crowded.SpanKinds.AddTail(1 + i % 7);
        crowded.SpanStarts.AddTail(i);
        crowded.SpanEnds.AddTail(199'999);
    }
    const BibliographyDocument document = DocumentOf({crowded});
    EXPECT_EQ(EmphasisText(document.entries[0]), "1:0-200000 ");
    EXPECT_EQ(PiecesOf(document.entries[0]).size(), 1u);
}

TEST(BibliographyDocument, KnowsTheDirectionByTheFirstLetter) {
    const std::pair<const char*, bool> kCases[] = {{"Smith \u05DE\u05D2", false},
                                                   {"\u05DE\u05D2 Smith", true},
                                                   {"12. (\u0645\u0646\u0627\u0631\u0629", true},
                                                   {"\u71C8 \u05DE\u05D2", false},
                                                   {"1984.", false},
                                                   {"", false}};
    for (const auto& [text, expected] : kCases)
        EXPECT_EQ(DocumentOf({Cited(text)}).entries[0].rightToLeft, expected) << text;
}

TEST(BibliographyLinks, LeaveOutTheSentenceAround) {
    const std::pair<const char*, const char*> kCases[] = {
        {"see https://a.b/c?d=1&e=2 (accessed", "https://a.b/c?d=1&e=2"},
        {"http://a.b/c.", "http://a.b/c"},
        {"(ftp://a.b/c).", "ftp://a.b/c"},
        {"https://a.b/Fog_(sound) x", "https://a.b/Fog_(sound)"},
        {"(https://a.b/Fog_(sound)).", "https://a.b/Fog_(sound)"},
        {"<https://a.b/c>", "https://a.b/c"},
        {"\u201Chttps://a.b/\u71C8\u201D", "https://a.b/\u71C8"},
        {"https://a.b, https://c.d", "https://a.b|https://c.d"},
        {"https://a.b/http://c.d/e", "https://a.b/http://c.d/e"},
        {"xhttps://a.b", ""},
        {"javascript://a.b", ""},
        {"https://", ""},
        {"https://... and ://", ""},
        {"", ""},
    };
    for (const auto& [text, expected] : kCases) {
        const std::u32string characters = Utf8ToCodePoints(text);
        std::string found;
        for (const LinkRange& link : FindLinks(characters))
            found +=
                (found.empty() ? "" : "|") + CodePointsToUtf8(characters.substr(link.begin, link.end - link.begin));
        EXPECT_EQ(found, expected) << text;
    }
}

TEST(BibliographyHtml, EscapesTextAndAddressesAndHangsTheIndentOnTheSideWhereLinesBegin) {
    EXPECT_EQ(
        HtmlOf(Cited("<b>\"A\" & 'B'</b> https://a.b/?c=\"", {}, 0)),
        "<p>&lt;b&gt;&quot;A&quot; &amp; 'B'&lt;/b&gt; <a href=\"https://a.b/?c=\">https://a.b/?c=</a>&quot;</p>\n");
    EXPECT_EQ(HtmlOf(Cited("x https://a.b/?c&d<e", {}, 0)),
              "<p>x <a href=\"https://a.b/?c&amp;d\">https://a.b/?c&amp;d</a>&lt;e</p>\n");
    EXPECT_EQ(HtmlOf(Cited("a", {}, 5)), "<p style=\"margin-left: 40px; text-indent: -40px\">a</p>\n");
    EXPECT_EQ(HtmlOf(Cited("\u05DE", {}, 1)),
              "<p dir=\"rtl\" style=\"margin-right: 8px; text-indent: -8px\">\u05DE</p>\n");
}

TEST(BibliographyHtml, NestsTheTagsOfEveryKind) {
    const char* const kExpected[] = {"<em>b</em>",
                                     "<strong>b</strong>",
                                     "<u>b</u>",
                                     "<strong><u>b</u></strong>",
                                     "<strong><em>b</em></strong>",
                                     "<em><u>b</u></em>",
                                     "<strong><em><u>b</u></em></strong>"};
    for (int32_t kind = 1; kind <= 7; ++kind)
        EXPECT_EQ(HtmlOf(Cited("abc", {{kind, 1, 1}}, 0)), std::string("<p>a") + kExpected[kind - 1] + "c</p>\n");
    EXPECT_EQ(HtmlOf(Cited("a http://b.c", {{1, 6, 9}}, 0)),
              "<p>a <a href=\"http://b.c\">http</a><a href=\"http://b.c\"><em>://b</em></a>"
              "<a href=\"http://b.c\">.c</a></p>\n");
}

TEST(BibliographyText, WrapsCharactersOfAllScriptsWithHangingIndentsAndPartsEntries) {
    const std::string words =
        "twelve chars twelve chars twelve chars twelve chars twelve chars twelve chars twelve end ";
    EXPECT_EQ(BibliographyAsText(DocumentOf({Cited(words, {}, 4), Cited("short", {}, 10), Cited("no indent", {}, 0)})),
              "twelve chars twelve chars twelve chars twelve chars twelve chars twelve chars\n"
              "    twelve end\n\nshort\n\nno indent\n");
    const std::string text = BibliographyAsText(DocumentOf({Cited(Repeated("\u71C8", 100), {}, 2)}));
    EXPECT_EQ(CharacterCount(text.substr(0, text.find('\n'))), 80u);
    EXPECT_EQ(CharacterCount(text), 100u + 1 + 2 + 1);
}

TEST(BibliographyRtf, ReadsBackAsTheSameTextWithItsLooksAndLinks) {
    const std::string text = std::string(kSixScripts) + " {\\b} https://a.b/c.";
    const Document document =
        ReadRtf(BibliographyAsRtf(DocumentOf({Cited(text, {{5, 0, 9}}, 3), Cited("Next", {}, 0)})));
    EXPECT_EQ(document.text, text + "\nNext");
    ASSERT_EQ(document.paragraphs.size(), 2u);
    EXPECT_EQ(document.paragraphs[0].format.leftIndent, 360);
    EXPECT_EQ(document.paragraphs[0].format.firstIndent, -360);
    EXPECT_EQ(document.paragraphs[1].format.leftIndent, 0);
    const TextRun& first = document.runs.front();
    EXPECT_EQ(std::string(TextOf(document, first)), "Gr\u00E9millon");
    EXPECT_TRUE(first.format.bold && first.format.italic && !first.format.underline);
    ASSERT_EQ(document.links, std::vector<std::string>{"https://a.b/c"});
    std::string linked;
    for (const TextRun& run : document.runs)
        linked += run.format.link == 0 ? TextOf(document, run) : "";
    EXPECT_EQ(linked, "https://a.b/c");
}

TEST(BibliographyWriters, TellOfficeProgramsOfThePaper) {
    BibliographyDocument document = DocumentOf({Cited("Letter paper")});
    EXPECT_NE(BibliographyAsRtf(document).find("\\paperw11906\\paperh16838\\margl1134"), std::string::npos);
    document.paper = {15840, 12240, 720, 1440, 1080, 360};
    EXPECT_NE(BibliographyAsRtf(document).find(
                  "\\paperw15840\\paperh12240\\margl720\\margr1080\\margt1440\\margb360\\landscape"),
              std::string::npos);
    EXPECT_NE(
        EndOdtStyles(document.paper)
            .find("fo:page-width=\"792pt\" fo:page-height=\"612pt\" fo:margin-left=\"36pt\" fo:margin-top=\"72pt\" "
                  "fo:margin-right=\"54pt\" fo:margin-bottom=\"18pt\" style:print-orientation=\"landscape\""),
        std::string::npos);
}

TEST(BibliographyWriters, GiveAWholeFileForAnEmptyBibliography) {
    const BibliographyDocument empty;
    EXPECT_EQ(BibliographyAsText(empty), "");
    EXPECT_NE(BibliographyAsHtml(empty).find("<body>\n</body>\n</html>\n"), std::string::npos);
    EXPECT_EQ(PlainText(BibliographyAsRtf(empty)), "");
    EXPECT_TRUE(BibliographyAsOdt(empty));
}

TEST(BibliographyWriters, AreFoundByTheEndingIgnoringCase) {
    for (const char* ending : {"txt", "html", "rtf", "odt", "ODT", "Html"})
        EXPECT_TRUE(FindBibliographyWriter(ending)) << ending;
    for (const char* ending : {"", "dat", "pdf", "htm", "doc", "odtx"})
        EXPECT_FALSE(FindBibliographyWriter(ending)) << ending;
}

SourceList ThreeSources() {
    SourceList list;
    for (const auto& [id, text] : {std::pair(11, "cc"), std::pair(12, "AA"), std::pair(13, "bb")})
        list.AddTail(CitationOnly(id, text));
    return list;
}

TEST(BibliographySelection, SortsOrKeepsTheOrderGiven) {
    const std::tuple<LongList, bool, std::vector<int32_t>> kCases[] = {
        {{}, true, {12, 13, 11}},   {{}, false, {11, 12, 13}},       {{13, 11}, true, {13, 11}},
        {{11, 13}, true, {13, 11}}, {{13, 99, 11}, false, {13, 11}}, {{99}, true, {}}};
    for (const auto& [ids, sorted, expected] : kCases)
        EXPECT_EQ(IdsOf(SelectSources(ThreeSources(), AuthorList(), {ids, {}, {}, {}, sorted})), expected);
}

TEST(BibliographySelection, HoldsValuesToTheirLimitsInCopiesOnly) {
    const SourceList sources = ThreeSources();
    const std::array<std::array<int32_t, 4>, 4> kCases = {
        {{-3, 0, 0, 1}, {0, 0, 1, 1}, {10, 10, 15, 15}, {11, 10, 99, 15}}};
    for (const auto& [indent, indentHeld, etAl, etAlHeld] : kCases) {
        const SourceList set = SelectSources(sources, AuthorList(), {{}, 9, indent, etAl, true});
        for (const CSource& source : set) {
            EXPECT_EQ(source.FormatStyle, 9);
            EXPECT_EQ(source.IndentSpaces, indentHeld);
            EXPECT_EQ(source.AuthorsBeforeEtAl, etAlHeld);
        }
    }
    EXPECT_EQ(RecordOf(sources[0]), RecordOf(ThreeSources()[0]));
    EXPECT_EQ(SelectSources(sources, AuthorList(), {})[0].IndentSpaces, CSource().IndentSpaces);
}

TEST(BibliographySelection, SortsByFormattingAsSavingDoesAgain) {
    SourceList list;
    CSource source = FullSource(20);
    source.AuthorIDs = {98, 99, 1};
    list.AddTail(source);
    EXPECT_EQ(SelectSources(list, ThreeAuthors(), {{}, {}, {}, {}, false})[0].AuthorIDs, source.AuthorIDs);
    EXPECT_EQ(SelectSources(list, ThreeAuthors(), {})[0].AuthorIDs, LongList({99, 1}));
}

TEST(BibliographySelection, KeepsSourcesOfEqualIdsApartWhenItSorts) {
    SourceList list;
    list.AddTail(CitationOnly(5, "b"));
    list.AddTail(CitationOnly(5, "a"));
    EXPECT_EQ(Each(SelectSources(list, AuthorList(), {}), &CSource::FormattedText),
              (std::vector<std::string>{"a", "b"}));
}

}  // namespace
}  // namespace lore
