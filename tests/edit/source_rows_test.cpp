#include "edit/source_rows.h"

#include "edit/edit_fixture.h"

namespace lore {
namespace {

class SourceRowsTest : public EditFixture {
protected:
    std::vector<int32_t> Ids() const {
        return Each(rows.Rows(), [](const SourceRow& row) { return row.source.SourceID; });
    }
    std::vector<std::string> Written() const {
        CNote note;
        note.sources = {7};
        note.sourceInfo = {{"old", "old"}};
        rows.WriteBack(note);
        auto pairs = Each(note.sources, [](int32_t id) { return std::to_string(id); });
        for (const CNoteSourceInfo& info : note.sourceInfo)
            pairs.push_back(info.key + "=" + info.text);
        return pairs;
    }
    SourceRows rows{book.sources, book.authors};
};

TEST_F(SourceRowsTest, InformationFollowsItsSourceWhateverTheOrderAndTheCase) {
    CNote note = SourceNote(1, {1012, 1011});
    note.sourceInfo = {{"{source-1011}", "p. 7"}};
    rows.Fill(note, true);
    EXPECT_THAT(Ids(), ElementsAre(1012, 1011));
    EXPECT_EQ(rows.LineText(0), "Click Here to Add Note Specific Info...");
    EXPECT_EQ(rows.LineText(1), "p. 7");
    EXPECT_THAT(Written(), ElementsAre("1012", "1011", "{source-1011}=p. 7"));
    EXPECT_NE(rows.Rows()[0].source.FormattedText.find("Title 1012"), std::string::npos);
}

TEST_F(SourceRowsTest, UnknownAndRepeatedSourcesAreDropped) {
    rows.Fill(SourceNote(1, {99, 1011, 1011, -5}), true);
    EXPECT_THAT(Ids(), ElementsAre(1011));
    EXPECT_THAT(Written(), ElementsAre("1011"));
}

TEST_F(SourceRowsTest, AListThatWasNotReadWholeCostsANoteNoSource) {
    book.sources.MarkIncomplete();
    const std::pair<LongList, std::vector<std::string>> cases[] = {
        {{1011, 99, 1012}, {"1011", "1012", "99", "{source-1011}=p. 7", "{GONE}= p. 4"}},
        {{99, 1011, 98}, {"99", "1011", "98", "{source-1011}=p. 7", "{GONE}= p. 4"}},
        {{-5, 99, 99}, {"99", "{GONE}= p. 4"}},
        {{1011}, {"1011", "{source-1011}=p. 7"}}};
    for (const auto& [stored, written] : cases) {
        CNote note = SourceNote(1, stored);
        note.sourceInfo = {{"{Source-1012}", ""}, {"{source-1011}", "p. 7"}, {"{GONE}", " p. 4"}};
        rows.Fill(note, true);
        EXPECT_EQ(Written(), written);
    }
    rows.Fill(SourceNote(1, {1011, 99}), true);
    rows.ClearSources();
    EXPECT_THAT(Written(), ElementsAre("99")) << "what no row shows can't be taken away";
}

TEST_F(SourceRowsTest, OnlyAnOpenedLineStoresItsTextTrimmed) {
    rows.Fill(SourceNote(1, {1011, 1012}), true);
    rows.SetText(0, "never opened");
    EXPECT_TRUE(rows.OpenLine(1));
    rows.SetText(1, "  p. 9 \t");
    EXPECT_THAT(Written(), ElementsAre("1011", "1012", "{Source-1012}=p. 9"));
    rows.SetText(1, " \t ");
    EXPECT_THAT(Written(), ElementsAre("1011", "1012")) << "an emptied line removes the pair";
    EXPECT_EQ(rows.LineText(1), "Click Here to Add Note Specific Info...");
}

TEST_F(SourceRowsTest, InformationGoesOnToTheNewIdentityOfItsSource) {
    CNote note = SourceNote(1, {1011, 1012});
    note.sourceInfo = {{"{source-1011}", "p. 7"}};
    rows.Fill(note, true);
    CSource renamed = *book.sources.FindSourceByID(1011);
    renamed.SourceGUID = "{New}";
    book.sources.ReplaceSource(1011, renamed);
    rows.Refresh();
    EXPECT_THAT(Written(), ElementsAre("1011", "1012", "{New}=p. 7")) << "and a line without a key stays without";
}

TEST_F(SourceRowsTest, DisabledLinesKeepWhatTheyHold) {
    CNote note = SourceNote(1, {1011});
    note.sourceInfo = {{"{Source-1011}", "p. 7"}};
    rows.Fill(note, false);
    EXPECT_EQ(rows.LineText(0), "Note Specific Info Disabled");
    EXPECT_FALSE(rows.OpenLine(0));
    EXPECT_THAT(Written(), ElementsAre("1011", "{Source-1011}=p. 7"));
}

TEST_F(SourceRowsTest, ASourceIsAddedOnceAtTheEndAndAllRowsAreRenewed) {
    rows.Fill(SourceNote(1, {1012}), true);
    rows.OpenLine(0);
    rows.SetText(0, "kept");
    book.sources.FindSourceByID(1012)->FieldTexts[0] = "Another title";
    EXPECT_EQ(rows.AddSource(1011), 1u);
    EXPECT_EQ(rows.AddSource(1012), 0u);
    EXPECT_EQ(rows.AddSource(4), std::nullopt);
    EXPECT_THAT(Ids(), ElementsAre(1012, 1011));
    EXPECT_NE(rows.Rows()[0].source.FormattedText.find("Another title"), std::string::npos);
    EXPECT_EQ(rows.Rows()[0].text, "kept");
    EXPECT_EQ(book.sources.FindSourceByID(1012)->FormattedText.find("Another title"), std::string::npos)
        << "the NoteBook's own record stays";
}

TEST_F(SourceRowsTest, RemovingTheFirstMakesTheNextTheMainSource) {
    rows.Fill(SourceNote(1, {1012, 1011}), true);
    EXPECT_EQ(rows.SelectRow(1011), 1u);
    EXPECT_EQ(rows.SelectRow(1012), 0u);
    EXPECT_FALSE(rows.Rows()[1].selected);
    rows.RemoveSource(*rows.SelectedRow());
    EXPECT_EQ(rows.SelectedRow(), std::nullopt);
    EXPECT_THAT(Written(), ElementsAre("1011"));
    rows.ClearSources();
    EXPECT_TRUE(Written().empty());

    rows.Fill(SourceNote(1, {1012, 1011}), true);
    book.sources.RemoveSource(1012);
    rows.Refresh();
    EXPECT_THAT(Ids(), ElementsAre(1011)) << "a row goes with its source";
}

}  // namespace
}  // namespace lore
