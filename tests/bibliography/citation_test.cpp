#include "bibliography/citation.h"

#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <sstream>

#include "base/text.h"
#include "bibliography/custom_type_list.h"
#include "bibliography/source_builder.h"
#include "bibliography/source_types.h"

namespace lore {
namespace {

std::vector<std::string> SplitAt(const std::string& line, char mark) {
    std::vector<std::string> parts(1);
    for (const char c : line) {
        if (c == mark)
            parts.emplace_back();
        else
            parts.back() += c;
    }
    return parts;
}

std::string SpansOf(const CSource& source) {
    std::ostringstream out;
    for (size_t i = 0; i < source.SpanKinds.Count(); ++i) {
        out << (i > 0 ? " " : "") << source.SpanKinds[i] << ':' << source.SpanStarts[i] << '-' << source.SpanEnds[i];
    }
    return out.str();
}

/// A file of sources and the citations that they must give.
class CitationFile {
public:
    explicit CitationFile(const std::string& path) : file_(path) {}

    /// Reads up to the next source, false at the end.
    bool NextSource(CSource& source) {
        for (std::vector<std::string> parts = Line(); parts[0] != "cite"; parts = Line()) {
            if (parts[0] == "slots")
                slots_[parts[1]].assign(parts.begin() + 2, parts.end());
            else if (parts[0] == "author")
                authors.AddAuthor(Author(authors.NextAuthorID(), parts[1], parts[2], parts[3]));
            else if (parts[0].empty())
                return false;
            else
                ADD_FAILURE() << "a line too many: " << parts[0];
        }
        source = SourceOf(line_);
        return true;
    }

    std::string Expected(const std::string& name) {
        const std::vector<std::string> parts = Line();
        EXPECT_EQ(parts[0], name);
        return parts.size() > 1 ? parts[1] : "";
    }

    const std::string& LastLine() const { return text_; }

    AuthorList authors;

private:
    const std::vector<std::string>& Line() {
        text_.clear();
        std::getline(file_, text_);
        return line_ = SplitAt(text_, '\t');
    }

    // cite, style, type, slots, bits of the slots that are set, date (0 none, 1 date, 2 year only, 3 typed, 4 both),
    // ids, limit
    CSource SourceOf(const std::vector<std::string>& parts) {
        CSource source;
        source.FormatStyle = std::stoi(parts[1]);
        source.SourceType = std::stoi(parts[2]);
        for (size_t slot = 0; slot < slots_[parts[3]].size(); ++slot) {
            if (std::stoi(parts[4]) >> slot & 1)
                source.FieldTexts[slot] = slots_[parts[3]][slot];
        }
        const int date = std::stoi(parts[5]);
        source.HasDate = date == 1 || date == 2 || date == 4;
        source.YearOnly = date == 2;
        source.UseDateText = date > 2;
        source.DateText = "Spring 1999";
        source.SourceDate = DateTime(1998, 5, 7);
        for (const std::string& id : SplitAt(parts[6], ',')) {
            if (!id.empty())
                source.AuthorIDs.AddTail(std::stoi(id));
        }
        source.AuthorsBeforeEtAl = std::stoi(parts[7]);
        return source;
    }

    std::ifstream file_;
    std::string text_;
    std::vector<std::string> line_;
    std::map<std::string, std::vector<std::string>> slots_;
};

TEST(Citation, EveryStyleAndTypeGivesTheTextsAndSpansOfTheExpectedFile) {
    CitationFile file(LORE_TEST_DATA "/bibliography/citations.txt");
    CSource source;
    std::map<std::pair<int, int>, int> cells;
    while (file.NextSource(source)) {
        SCOPED_TRACE(file.LastLine());
        const std::string text = file.Expected("text"), author = file.Expected("authors"),
                          spans = file.Expected("spans");
        for (int time = 0; time < 2; ++time) {
            FormatSource(source, file.authors);
            EXPECT_EQ(source.FormattedText, text);
            EXPECT_EQ(source.AuthorText, author);
            EXPECT_EQ(SpansOf(source), spans);
        }
        ++cells[{source.FormatStyle, source.SourceType}];
    }
    EXPECT_EQ(cells.size(), 98u);
}

TEST(Citation, StylesOutsideTheTableAreEmptyAndUnknownTypesKeepTheirText) {
    const std::tuple<int32_t, int32_t, const char*> cases[] = {
        {14, 1, ""}, {-1, 7, ""}, {1, 9, "kept"}, {1, 0, "kept"}, {1, 1000, "kept"}, {1, -5, "kept"}, {1, 1001, ""}};
    for (const auto& [style, type, text] : cases) {
        CSource source;
        source.FormatStyle = style;
        source.SourceType = type;
        source.FieldTexts[0] = "Title";
        source.FormattedText = "kept";
        source.SpanKinds = source.SpanStarts = source.SpanEnds = {1};
        FormatSource(source, {});
        EXPECT_EQ(source.FormattedText, text) << style << " " << type;
        EXPECT_EQ(SpansOf(source), "");
    }
}

TEST(Citation, IdBehindARemovedAuthorStaysForOneMoreFormatSoThatManyUnknownAreHalvedAtEach) {
    const AuthorList authors = ThreeAuthors();
    CSource source;
    source.AuthorIDs = {1, 8, 9, 2};
    FormatSource(source, authors);
    EXPECT_EQ(source.AuthorIDs, (LongList{1, 9, 2}));
    EXPECT_EQ(source.AuthorText, "Smith JQ, et al.");
    FormatSource(source, authors);
    EXPECT_EQ(source.AuthorIDs, (LongList{1, 2}));
    EXPECT_EQ(source.AuthorText, "Smith JQ, & Jones M.");
    std::vector<int32_t> ids(200000, 77);
    source.AuthorIDs = LongList(std::move(ids));
    FormatSource(source, {});
    EXPECT_EQ(source.AuthorIDs.Count(), 100000u);
}

TEST(Citation, ListOfAuthorsThatNoRecordHoldsEndsEarlier) {
    for (const size_t length : {size_t{100}, kMaxStringLength - 20, kMaxStringLength - 2, kMaxStringLength + 1}) {
        AuthorList authors;
        authors.AddAuthor(Author(1, "Ada", "", std::string(length, 'x')));
        authors.AddAuthor(Author(2, "John", "Q", "Smith"));
        for (const LongList& ids : {LongList{1}, LongList{1, 2}, LongList{2, 1, 2}}) {
            for (int32_t style = 0; style < kStyleCount; ++style) {
                CSource source;
                source.FormatStyle = style;
                source.AuthorIDs = ids;
                FormatSource(source, authors);
                const std::string& text = source.AuthorText;
                EXPECT_LE(text.size(), kMaxStringLength) << length << " style " << style;
                const bool isCut = ToUpper(text.substr(text.size() - std::min<size_t>(text.size(), 6))) == "ET AL.";
                EXPECT_FALSE(isCut && length == 100) << style;
                EXPECT_TRUE(isCut || length <= kMaxStringLength) << style;
            }
        }
    }
}

TEST(Citation, DateTextFillsSlotTwoEvenInAShortList) {
    CSource source;
    source.FieldTexts = {"Title"};
    source.HasDate = true;
    source.SourceDate = DateTime(1998, 5, 7);
    FormatSource(source, {});
    EXPECT_EQ(source.FieldTexts, (std::vector<std::string>{"Title", "", "1998"}));
    EXPECT_EQ(source.FormattedText, "Title. 1998. ");
    source.SourceDate = DateTime::Invalid();
    FormatSource(source, {});
    EXPECT_EQ(source.FormattedText, "Title. Invalid DateTime. ");
}

TEST(Citation, TextsOfBothFormsJoinToOneThatReads) {
    AuthorList authors;
    authors.AddAuthor(Author(1, "Zo\xEB", "", "M\xFCller"));  // Windows-1252
    authors.AddAuthor(Author(2, "\xE9", "", "\xC5\x81uk"));   // one name of each form
    authors.AddAuthor(Author(3, "Jan", "", "\xC5\x81uk"));    // UTF-8
    const std::tuple<LongList, std::string, std::string, std::string, std::string> cases[] = {
        {{1}, "\xE9t\xE9", "M\xFCller Z. \xE9t\xE9. ", "M\xFCller Z.", "1:10-12"},
        {{1}, "\xE6\x97\xA5\xE6\x9C\xAC", "M\xC3\xBCller Z. \xE6\x97\xA5\xE6\x9C\xAC. ", "M\xFCller Z.", "1:11-16"},
        {{2}, "Dover", "\xC5\x81uk \xC3\xA9. Dover. ", "\xC5\x81uk \xC3\xA9.", "1:9-13"},
        {{1, 3}, "\xE9t\xE9", "M\xFCller Z, et al. \xE9t\xE9. ", "M\xFCller Z, et al.", "1:17-19"},
        {{3, 1},
         "\xE9t\xE9",
         "\xC5\x81uk J, & M\xC3\xBCller Z. \xC3\xA9t\xC3\xA9. ",
         "\xC5\x81uk J, & M\xC3\xBCller Z.",
         "1:21-25"},
        {{3}, "Dover", "\xC5\x81uk J. Dover. ", "\xC5\x81uk J.", "1:8-12"}};
    for (const auto& [ids, title, text, authorText, spans] : cases) {
        CSource source;
        source.AuthorIDs = ids;
        source.AuthorsBeforeEtAl = ids[0] == 1 ? 1 : 6;
        source.FieldTexts[0] = title;
        FormatSource(source, authors);
        EXPECT_EQ(source.FormattedText, text);
        EXPECT_EQ(source.AuthorText, authorText);
        EXPECT_EQ(SpansOf(source), spans);
        EXPECT_EQ(source.FieldTexts[0], title);
    }
}

CSource OfCustomType() {
    CSource source;
    source.SourceType = 1101;
    source.AuthorIDs = {1};
    source.HasDate = true;
    source.SourceDate = DateTime(1998, 5, 7);
    source.FieldTexts = {"Lights"};
    source.CustomTypeCopy = MakeCustomType(DateTime());
    source.CustomTypeCopy.fields[3].value = "Box 17";
    return source;
}

TEST(CustomCitation, FieldsFollowTheirOrderWithTheirEndMarks) {
    CSource source = OfCustomType();
    FormatSource(source, ThreeAuthors());
    EXPECT_EQ(source.FormattedText, "Smith JQ; 1998, May 07. Lights. Box 17. ");
    EXPECT_EQ(source.AuthorText, "Smith JQ");
    EXPECT_EQ(source.FieldTexts.size(), 1u);

    std::vector<CCustomSourceField>& fields = source.CustomTypeCopy.fields;
    fields[0].end = CCustomSourceField::None;
    fields[1].end = CCustomSourceField::Colon;
    fields[2].end = 99;
    fields[3].kind = 17;
    FormatSource(source, ThreeAuthors());
    EXPECT_EQ(source.FormattedText, "Smith JQ 1998, May 07: Lights ");
}

TEST(CustomCitation, FlagsGiveTheEightKindsOfEmphasis) {
    const int kinds[] = {-1, 1, 2, 5, 3, 6, 4, 7};
    for (unsigned flags = 0; flags < 8; ++flags) {
        CSource source = OfCustomType();
        for (CCustomSourceField& field : source.CustomTypeCopy.fields) {
            field.italics = flags & 1u;
            field.bold = flags & 2u;
            field.underline = flags & 4u;
        }
        FormatSource(source, ThreeAuthors());
        const std::string k = std::to_string(kinds[flags]);
        EXPECT_EQ(SpansOf(source), flags == 0 ? "" : k + ":0-7 " + k + ":10-21 " + k + ":24-29 " + k + ":32-37");
    }
}

TEST(CustomCitation, DamagedTypeWithManyLongFieldsStaysSmall) {
    CSource source = OfCustomType();
    source.FieldTexts[0] = std::string(100000, 'x');
    source.CustomTypeCopy.fields.assign(20000, {CCustomSourceField::Title, 1, "", "", true, false, false});
    FormatSource(source, {});
    EXPECT_LT(source.FormattedText.size(), 700000u);
}

TEST(CitationField, OnlyABareNumberBecomesAnOrdinalThatFollowsItsLastTwoDigits) {
    const std::map<std::string, std::string> fields = {
        {"", ""},           {"0", "<0th>"},     {"1", "<1st>"},     {"2", "<2nd>"},     {"3", "<3rd>"},
        {"4", "<4th>"},     {"11", "<11th>"},   {"12", "<12th>"},   {"13", "<13th>"},   {"21", "<21st>"},
        {"22", "<22nd>"},   {"103", "<103rd>"}, {"111", "<111th>"}, {"112", "<112th>"}, {"1 ", "<1 th>"},
        {"2/3", "<2/3rd>"}, {"3'", "<3'th>"},   {"3rd", "<3rd>"},   {"3.", "<3.>"},     {"1x", "<1x>"}};
    for (const auto& [text, result] : fields) {
        std::string out;
        AppendField(out, text, "<", ">", true);
        EXPECT_EQ(out, result);
    }
}

TEST(CitationField, ABlankIsAText) {
    CSource source;
    EXPECT_EQ(FieldText(source, 99), "");
    source.FieldTexts[14] = " ";
    EXPECT_TRUE(HasField(source, 14));
    EXPECT_FALSE(HasField(source, 15));
}

TEST(CitationSpan, FirstPlaceCountsAndOneLetterHasNone) {
    const char* const cases[][3] = {{"Dover", "Dover J. Dover.", "1:0-4"},
                                    {" Lights ", "The Lights.", "1:4-9"},
                                    {"A", "An A.", ""},
                                    {"AB", "AB", "1:0-1"},
                                    {"x", "", ""},
                                    {" ", "a b", ""},
                                    {"absent", "The Lights.", ""},
                                    {"\xC3\xA9", "\xC3\xA9t\xC3\xA9", ""},
                                    {"\xE9", "\xE9t\xE9", ""},
                                    {"\xC3\xA9t", "\xC3\xA9t\xC3\xA9", "1:0-2"}};
    for (const auto& [text, citation, spans] : cases) {
        CSource source;
        MarkText(source, text, kItalic, citation);
        EXPECT_EQ(SpansOf(source), spans) << text;
    }
}

TEST(CitationSpan, FirstSpanThatHoldsAPositionDecides) {
    CSource source;
    source.SpanStarts = {2, 4, 10};
    source.SpanEnds = {5, 8, 10};
    source.SpanKinds = {kBold, kUnderline};
    const int32_t expected[] = {-1, -1, 2, 2, 2, 2, 3, 3, 3, -1, 1, -1};
    for (int32_t i = 0; i < 12; ++i)
        EXPECT_EQ(EmphasisAt(source, i), expected[i]) << i;
}

}  // namespace
}  // namespace lore
