#include "app/print_commands.h"

#include "app/app_world.h"
#include "bibliography/bibliography_file.h"
#include "bibliography/source_builder.h"
#include "bibliography/source_selection.h"
#include "notes/print_preview.h"
#include "support/matchers.h"
#include "support/noted_starts.h"
#include "support/scripted_background.h"

namespace lore {
namespace {

CSource Paper(int32_t id, const std::string& title) {
    CSource source = TitledSource(id, title, 2);
    source.AuthorIDs = {1};
    source.FieldTexts[1] = "Journal of Lights";
    return source;
}

/// The main NoteBook with two sources and three notes; 1 and 2 are in the list.
class PrintCommandsTest : public AppWorld {
protected:
    PrintCommandsTest() {
        ThreeAuthors().SaveAuthors(folder.paths.Authors());
        PutSources(folder.paths, {Paper(1011, "Lenses"), Paper(1012, "Amber")}, ThreeAuthors());
        CNote first = FullNote(1);
        first.sources = {1012, 4711, 1011};
        folder.Put("SRC0000001012.dat", {first});
        folder.Put("DAY01022020.dat", {DayNote(2, 2), DayNote(3, 2)});
        Start(app);
        app.ShowNotes(LongList{2, 1});
    }
    std::vector<PrintNote> HandedOver() {
        Loaded<PrintPreview> preview = LoadPrintPreview(Preview(), world.context);
        EXPECT_TRUE(preview.ReadWhole());
        return std::move(preview.value.notes);
    }
    std::filesystem::path Preview() const { return folder.data.PrintPreview(); }
    std::filesystem::path Bib() const { return folder.data.Bibliography(); }

    ReadWorld world;
    ScriptedBackground background;
    NotedStarts companions;
    CLorebinderApp app{folder.folder.Path(), [this] {
                           AppPorts ports = Ports();
                           ports.background = &background;
                           ports.companions = &companions;
                           return ports;
                       }()};
};

TEST_F(PrintCommandsTest, TheListIsHandedOverWithItsSourcesAsTheyAreCitedNow) {
    app.NoteBook().sources.FindSourceByID(1011)->FieldTexts[0] = "Prisms";
    EXPECT_TRUE(PrintCurrentNotes(app));
    EXPECT_THAT(companions.started, ElementsAre("PrintSave"));
    EXPECT_THAT(background.texts, ElementsAre(testing::_, "Preparing Preview...."))
        << "after the load of the last list";
    EXPECT_TRUE(BytesOf(Preview()).starts_with("000000000000000511.560000000000000002"));
    const std::vector<PrintNote> notes = HandedOver();
    ASSERT_EQ(notes.size(), 2u);
    EXPECT_EQ(notes[0].note.id, 2);
    EXPECT_EQ(notes[1].note.sources, LongList({1012, 4711, 1011})) << "the record stands as in its file";
    ASSERT_EQ(notes[1].sources.size(), 2u) << "the unknown one isn't written";
    EXPECT_EQ(notes[1].sources[0].SourceID, 1012);
    EXPECT_NE(notes[1].sources[1].FormattedText.find("\"Prisms.\""), std::string::npos);
    EXPECT_EQ(notes[1].sources[1].SpanKinds, LongList({1}));
    EXPECT_THAT(prompts.seen, IsEmpty());
}

TEST_F(PrintCommandsTest, NotesAreReadFromTheirFilesAndThoseThatAreUnknownAreToldAndLeftOut) {
    folder.Put("DAY01022020.dat", {WithKeyWords(DayNote(2, 2), "changed elsewhere"), DayNote(3, 2)});
    EXPECT_TRUE(PrintNotes(app, LongList{3, 99, 2, -5}));
    const std::vector<PrintNote> notes = HandedOver();
    ASSERT_EQ(notes.size(), 2u);
    EXPECT_EQ(notes[1].note.keyWords, "changed elsewhere");
    ASSERT_EQ(faults.faults.size(), 1u);
    EXPECT_EQ(faults.faults[0].what, "2 notes were left out of the print");
    EXPECT_EQ(faults.faults[0].reason, "this NoteBook has no note with the number 99, -5");
    LongList none;
    for (int32_t id = 100; id < 120; ++id)
        none.AddTail(id);
    EXPECT_FALSE(PrintNotes(app, none));
    ASSERT_EQ(faults.faults.size(), 2u);
    EXPECT_TRUE(faults.faults[1].reason.ends_with("108, 109 ...")) << faults.faults[1].reason;
    EXPECT_THAT(companions.started, ElementsAre("PrintSave")) << "nothing to print starts nothing";
}

TEST_F(PrintCommandsTest, AnEmptyListIsToldAndWritesNothing) {
    app.ClearList();
    EXPECT_FALSE(PrintCurrentNotes(app));
    EXPECT_THAT(prompts.seen, ElementsAre("Invalid Notes: Unable to save, there are no notes in the current list."));
    EXPECT_THAT(companions.started, IsEmpty());
    EXPECT_FALSE(std::filesystem::exists(Preview()));
}

TEST_F(PrintCommandsTest, WithoutAHandOverNothingIsStarted) {
    const std::tuple<const char*, bool, bool, bool, size_t> cases[] = {
        {"a folder in the place of the files", true, false, true, 1},
        {"stopped by the user", false, true, true, 0},
        {"note files that can't be read", false, false, false, 1}};
    for (const auto& [what, isBlocked, stops, hasNoteFiles, told] : cases) {
        SCOPED_TRACE(what);
        std::filesystem::remove_all(Preview());
        faults.faults.clear();
        background.stops = stops;
        if (isBlocked)
            std::filesystem::create_directories(Preview() / "full");
        if (!hasNoteFiles) {
            std::filesystem::remove(folder.paths.NoteFile("DAY01022020.dat"));
            std::filesystem::create_directory(folder.paths.NoteFile("DAY01022020.dat"));
        }
        EXPECT_FALSE(PrintNotes(app, LongList{2}));
        EXPECT_EQ(faults.faults.size(), told);
        EXPECT_THAT(companions.started, IsEmpty());
        EXPECT_FALSE(std::filesystem::is_regular_file(Preview()));
    }
}

TEST_F(PrintCommandsTest, ABibliographyHoldsTheSelectedSourcesAsTheyWereSet) {
    const std::string before = BytesOf(folder.paths.Sources());
    SourceSelection dialog(app.NoteBook().sources, app.NoteBook().authors);
    EXPECT_FALSE(CreateBibliography(app, dialog.Selected()));
    EXPECT_FALSE(std::filesystem::exists(Bib()));
    dialog.SetIndividual(false);
    dialog.SetStyle(9);
    dialog.SelectAll();
    EXPECT_TRUE(CreateBibliography(app, dialog.Selected()));
    EXPECT_THAT(companions.started, ElementsAre("PrintSave|" + Bib().string()));
    EXPECT_THAT(background.texts, ElementsAre(testing::_, "Preparing Sources...."))
        << "after the load of the last list";
    EXPECT_TRUE(BytesOf(Bib()).starts_with("0000000011.5600000000000000000000002"));
    const Loaded<SourceList> loaded = LoadBibliography(Bib(), world.context);
    ASSERT_TRUE(loaded.ReadWhole());
    const SourceList& read = loaded.value;
    ASSERT_EQ(read.Count(), 2u);
    EXPECT_EQ(read[0].SourceID, 1012) << "in the order of the list";
    for (const CSource& source : read) {
        EXPECT_EQ(source.FormatStyle, 9);
        EXPECT_TRUE(source.FormattedText.starts_with("Smith, J. Q.")) << source.FormattedText;
        EXPECT_EQ(source.SpanStarts.Count(), source.SpanEnds.Count());
    }
    EXPECT_EQ(BytesOf(folder.paths.Sources()), before);
    EXPECT_EQ(app.NoteBook().sources[0].FormatStyle, 1);
}

TEST_F(PrintCommandsTest, FailuresOfTheBibliographyAreTold) {
    const SourceList& sources = app.NoteBook().sources;
    companions.failure = "No such file or directory";
    EXPECT_FALSE(CreateBibliography(app, sources));
    EXPECT_THAT(Each(faults.faults, &Fault::reason), ElementsAre("No such file or directory"));
    Block(Bib());
    EXPECT_FALSE(CreateBibliography(app, sources));
    EXPECT_EQ(faults.faults.size(), 2u);
    EXPECT_EQ(companions.started.size(), 1u);
}

TEST_F(PrintCommandsTest, TheSettingsStandInTheStoreBeforeTheProgramStarts) {
    app.GetSettings().Set(Option::ShowKeyWords, 0);
    EXPECT_TRUE(PrintCurrentNotes(app));
    EXPECT_EQ(store.Get("Options", "ShowKeyWords"), "0");
    EXPECT_EQ(store.Get("Options", "Database"), app.NoteBook().database.guid);
}

}  // namespace
}  // namespace lore
