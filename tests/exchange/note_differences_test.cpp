#include "exchange/note_differences.h"

#include <gtest/gtest.h>
#include <ostream>

#include "bibliography/source_builder.h"
#include "notes/attachment_kind.h"
#include "notes/note_builder.h"

namespace lore {

void PrintTo(const DifferenceRow& row, std::ostream* stream) {
    *stream << row.name << " " << row.importText << " | " << row.databaseText;
}

namespace {

class NoteDifferences : public testing::Test {
protected:
    NoteDifferences() {
        SourceList sources;
        sources.AddTail(FullSource(1011));
        sources.AddTail(FullSource(1013));
        imported_ = MakeArchiveNote(FullNote(7), sources);
        imported_.sources[0].EmbeddedAuthors = {Author(1, "John", "Q", "Smith"), Author(2, "Mary", "", "Jones")};
        database_ = imported_;
    }
    std::vector<DifferenceRow> Rows() { return CompareForImport(imported_, database_).rows; }

    ArchiveNote imported_, database_;
};

TEST_F(NoteDifferences, SayHowFarApartTheDatesAre) {
    const struct {
        int64_t seconds;
        const char* span;
    } cases[] = {{-(2 * 86400 + 3 * 3600 + 4 * 60 + 5), "2 days, 3 hours, and 4 minutes OLDER"},
                 {59, "0 days, 0 hours, and 0 minutes NEWER"},
                 {86400 * 400 + 3599, "400 days, 0 hours, and 59 minutes NEWER"}};
    EXPECT_EQ(CompareForImport(imported_, database_).head, "");
    for (const auto& c : cases) {
        imported_.note.dateEdited = database_.note.dateEdited.PlusSeconds(c.seconds);
        EXPECT_EQ(CompareForImport(imported_, database_).head,
                  "The import note is " + std::string(c.span) + " than the same note currently in the database.");
    }
    database_.note.dateEdited = DateTime::Invalid();
    EXPECT_EQ(CompareForImport(imported_, database_).head, "");
    imported_.note.dateEdited = DateTime::Invalid();
    EXPECT_EQ(CompareForImport(imported_, database_).head, "");
}

TEST_F(NoteDifferences, ListWhatDiffersInTheirFixedOrder) {
    CNote& note = imported_.note;
    note.rtfText = "{\\rtf1 First\\par Third}";
    note.keyWords = "fog";
    note.borderColor = MakeRgb(255, 128, 7);
    note.attachments.pop_back();
    note.categories[0] = PathOf({{30, "Lights"}, {40, "Lenses"}});
    note.categories[1] = PathOf({{5, "Coast"}, {6, "North"}});
    note.categories[2] = {};
    note.sourceInfo = {{"{source 1011}", "p. 8"}};
    imported_.sources[0].FieldTexts[0].clear();
    imported_.sources.pop_back();
    const std::vector<DifferenceRow> expected = {
        {"Date Last Modified:", "01/02/2012  -  03:04:05 AM", "01/02/2012  -  03:04:05 AM"},
        {"Text Changed:", "11 characters", "12 characters"},
        {"Key Words Changed:", "fog", "lamp, Fresnel, fog \xFC"},
        {"Border Color Changed:", "R: 255, G: 128, B: 7", "R: 255, G: 128, B: 1"},
        {"Attached Files:", "A lamp", "A lamp; Site"},
        {"Category Set 2 Changed:", "", ""},
        {"         Level 1:", "Coast", ""},
        {"         Level 2:", "North", ""},
        {"Category Set 3 Changed:", "", ""},
        {"         Level 1:", "", "Places"},
        {"Source", "", ""},
        {"         Type:", "Letter", "Letter"},
        {"         Title:", "<UNTITLED>", "The Light\nof 1811"},
        {"         Publication:", "Harbor Press", "Harbor Press"},
        {"         Author(s):", "J.Q. Smith, M. Jones", "J.Q. Smith, M. Jones"},
        {"         Date:", "Spring 1998", "Spring 1998"},
        {"        Note Info:", "p. 8", ""},
        {"Source", "", ""},
        {"         Type:", "", "Letter"},
        {"         Title:", "", "The Light\nof 1811"},
        {"         Publication:", "", "Harbor Press"},
        {"         Author(s):", "", ""},
        {"         Date:", "", "Spring 1998"},
        {"        Note Info:", "", ""},
    };
    EXPECT_EQ(Rows(), expected);
}

TEST_F(NoteDifferences, LeaveOutAColourThatIsNearlyAlikeAndIdsOfCategories) {
    imported_.note.borderColor = MakeRgb(250, 128, 6);
    imported_.note.categories[0] = PathOf({{30, "Lights"}, {40, "Lenses"}});
    imported_.note.attachments[0].storedFile = "0000099.png";
    EXPECT_EQ(Rows().size(), 1u);
    imported_.note.attachments[0].title = "Another lamp";
    EXPECT_EQ(Rows().size(), 2u);
    imported_.note.attachments = database_.note.attachments;
    imported_.note.attachments[0].type = kPdfFile;
    EXPECT_EQ(Rows().size(), 2u);
}

TEST_F(NoteDifferences, ShowWhatSetsAttachmentsOfTheSameTitleApart) {
    const auto link = [](const char* title, const char* address) {
        return CAttachment{0, 1.0, title, "", address, kWebLink, false};
    };
    const auto picture = [](int32_t type, bool show) {
        return CAttachment{0, 1.0, "Lamp", "0000001.png", "C:\\lamp.png", type, show};
    };
    struct Case {
        std::vector<CAttachment> imported, database;
        std::string importText, databaseText;  // empty for no row
    };
    const Case cases[] = {
        {{link("Site", "http://a")}, {link("Site", "http://b")}, "Site (http://a)", "Site (http://b)"},
        {{link("", "http://a")}, {link("", "http://b")}, "http://a", "http://b"},
        {{link("Caf\xE9", "http://a")},
         {link("Caf\xE9", "http://\xCE\xB1")},
         "Caf\xE9 (http://a)",
         "Caf\xC3\xA9 (http://\xCE\xB1)"},
        {{picture(kImageFile, true)}, {picture(kImageFile, false)}, "Lamp (on the board)", "Lamp (not on the board)"},
        {{picture(kImageFile, false)}, {picture(kPdfFile, false)}, "Lamp (Image File)", "Lamp (Adobe PDF File)"},
        {{link("Site", "http://a"), link("Site", "http://b")},
         {link("Site", "http://b"), link("Site", "http://a")},
         "Site (http://a); Site (http://b)",
         "Site (http://b); Site (http://a)"},
        {{picture(kImageFile, true), link("Site", "http://a")},
         {link("Site", "http://b")},
         "Lamp; Site (http://a)",
         "Site (http://b)"},
        {{link("Lamp", "http://a")}, {picture(kPdfFile, false)}, "Lamp (Web Link)", "Lamp (Adobe PDF File)"},
        {{{0, 1.0, "", "1.png", "", kImageFile, false}, link("Site", "http://a")}, {}, "; Site", ""},
        {{link("Site", "http://a"), picture(kImageFile, true)},
         {link("Site", "http://a"), picture(kImageFile, true)},
         "",
         ""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.importText);
        imported_.note.attachments = c.imported;
        database_.note.attachments = c.database;
        const std::vector<DifferenceRow> rows = Rows();
        ASSERT_EQ(rows.size(), c.importText.empty() ? 1u : 2u);
        if (rows.size() > 1) {
            EXPECT_EQ(rows[1], (DifferenceRow{"Attached Files:", c.importText, c.databaseText}));
        }
    }
    imported_.note.attachments = database_.note.attachments = {picture(kImageFile, true)};
    imported_.note.attachments[0].sourceFile = "/home/lamp.png";
    EXPECT_EQ(Rows().size(), 1u) << "where a file came from tells nothing of it";
}

TEST_F(NoteDifferences, ColourTheLinesOfTheImportedTextOnly) {
    imported_.note.rtfText = "{\\rtf1\\ansi First\\par Second lamp}";
    const ImportDifferences found = CompareForImport(imported_, database_);
    EXPECT_EQ(found.text.lines, (std::vector<TextRange>{{6, 17}}));
    EXPECT_EQ(found.text.words, (std::vector<TextRange>{{12, 17}}));
    EXPECT_NE(found.importRtf.find("\\red255\\green142\\blue40"), std::string::npos);
    EXPECT_EQ(found.databaseRtf, database_.note.rtfText);
}

}  // namespace
}  // namespace lore
