#include "notebooks/copy_notes.h"

#include "bibliography/source_builder.h"
#include "notebooks/notebooks_world.h"
#include "notes/check_notebook.h"
#include "support/matchers.h"
#include "support/note_reading.h"

namespace lore {
namespace {

CSource Source(int32_t id, const std::string& guid, LongList authors, int32_t type = 1) {
    CSource source = TitledSource(id, "Title of " + guid, type);
    source.SourceGUID = guid;
    source.AuthorIDs = std::move(authors);
    return source;
}

/// The main NoteBook with sources, types and categories, and a target that knows one of the sources and authors by
/// another number.
struct CopyNotesTest : NoteBooksWorld, testing::Test {
    CDatabase target = Add("Target", 7, {DayNote(500)});
    IdCounters counters{1000, 50, 100};
    bool syncEngaged = false;
    size_t notesWhenSaved = 99;
    int32_t categoryWhenSaved = 0;
    std::function<void()> whenSaved = [] {};

    CopyNotesTest() {
        AuthorList authors;
        authors.AddAuthor(Author(1, "", "", "Fresnel"));
        authors.AddAuthor(Author(2, "", "", "Smeaton"));
        authors.SaveAuthors(PathsOf(main).Authors());
        const CCustomSourceField title{CCustomSourceField::Title, CCustomSourceField::Period, "Title", ""};
        const CCustomSourceType type{-1, "{T1}", "Logbook", {title}, context.nowUtc};
        CustomTypeList types;
        types.AddType(type);
        types.SaveTypes(PathsOf(main).SourceTypes());
        CSource logbook = Source(1012, "{S2}", {2, 1}, 1101);
        logbook.CustomTypeCopy = type;
        PutSources(PathsOf(main), {Source(1011, "{S1}", {1}), logbook}, authors);

        AuthorList others;
        others.AddAuthor(Author(40, "", "", "Fresnel"));
        others.SaveAuthors(PathsOf(target).Authors());
        PutSources(PathsOf(target), {Source(1300, "{S1}", {40})}, others);
        PutCategories(PathsOf(target), {PathOf({{9, "Lights"}})});

        CNote note = FullNote(1);
        note.sources = {1012, 1011, 4444};
        note.attachments[0].storedFile = "0000003.PNG";
        PutBytes(PathsOf(main).Attachments() / "0000003.PNG", "picture");
        PutBytes(PathsOf(target).Attachments() / "0000041.txt", "other");
        PutNotes(main, {note, DayNote(2, 9)});
    }

    CopyResult Copy(const LongList& ids, const CDatabase& to) {
        OpenNoteBook from = Open(main);
        CNoteList list;
        for (const CNote& note : FindNotes(from.index, ids, context, faults))
            list.AddNote(note);
        return CopyNotesToNoteBook(list, to, Job(from));
    }
    CopyJob Job(const OpenNoteBook& from) {
        return {from, data, counters, context, {prompts, progress, faults}, syncEngaged, [this] {
                    notesWhenSaved = NotesIn(target).size();
                    categoryWhenSaved = counters.MaxCategoryID;
                    whenSaved();
                }};
    }
    std::vector<CNote> NotesIn(const CDatabase& noteBook) {
        return NotesOfFolder(PathsOf(noteBook).Notes(), context, faults);
    }
    std::set<std::string> Attachments() const { return NamesIn(PathsOf(target).Attachments()); }
};

TEST_F(CopyNotesTest, ANoteBookWithoutCategoriesTakesTheNextNumberToo) {
    std::filesystem::remove(PathsOf(target).Categories());
    EXPECT_THAT(Copy({1}, target).ids.Values(), ElementsAre(1001));
    EXPECT_EQ(counters.MaxNoteID, 1001);
}

TEST_F(CopyNotesTest, BringsSourcesAuthorsTypesCategoriesAndFilesUnderTheTargetsIds) {
    const CopyResult result = Copy({1, 2}, target);
    EXPECT_EQ(result.copied, 2);
    EXPECT_THAT(result.ids.Values(), ElementsAre(1001, 1002));
    EXPECT_EQ(counters.MaxNoteID, 1002);
    EXPECT_EQ(notesWhenSaved, 1u) << "the counters are stored before a note bears their ids";
    EXPECT_THAT(progress.messages,
                ElementsAre("Loading *Target* NoteBook.........(may take a few moments)",
                            "Copying notes to *Target* NoteBook....", "Copying notes to *Target* NoteBook....1 of 2",
                            "Copying notes to *Target* NoteBook....2 of 2"));
    const OpenNoteBook book = Open(target);
    ASSERT_EQ(book.sources.Count(), 2u);
    const CSource* const added = book.sources.FindSourceByGUID("{S2}");
    ASSERT_TRUE(added);
    EXPECT_EQ(added->SourceID, 1301);
    EXPECT_EQ(added->SourceType, 1101);
    EXPECT_THAT(added->AuthorIDs.Values(), ElementsAre(51, 40));
    EXPECT_EQ(book.types.FindTypeByGUID("{T1}")->name, "Logbook");
    EXPECT_EQ(*book.index.FindPath(1001), book.paths.NoteFile("SRC0000001301.dat").string());
    EXPECT_EQ(*book.index.FindPath(1002), book.paths.NoteFile("DAY01092020.dat").string());
    const CNote copy = FindNotes(book.index, {1001}, context, faults).at(0);
    const CNote original = NotesIn(main).back();
    EXPECT_EQ(copy.guid, original.guid);
    EXPECT_EQ(copy.rtfText, original.rtfText);
    EXPECT_EQ(copy.dateEdited, original.dateEdited);
    EXPECT_THAT(copy.sources.Values(), ElementsAre(1301, 1300));
    EXPECT_EQ(copy.categories[0].id, 9) << "the category that was there";
    EXPECT_EQ(copy.categories[0].children.at(0).name, "Lenses");
    EXPECT_EQ(book.categories.FindByID(copy.categories[2].id)->name, "Places");
    EXPECT_GT(book.categories.HighestID(), 50);
    EXPECT_GE(categoryWhenSaved, book.categories.HighestID());
    EXPECT_EQ(copy.attachments[0].storedFile, "0000042.PNG");
    EXPECT_EQ(BytesOf(book.paths.Attachments() / "0000042.PNG"), "picture");
    EXPECT_EQ(copy.attachments[1].sourceFile, "http://example.org");
    EXPECT_FALSE(std::filesystem::exists(book.paths.SyncLog()));
    EXPECT_THAT(faults.faults, IsEmpty());
}

TEST_F(CopyNotesTest, SecondCopyTakesThePlaceOfTheFirstAndDoublesNothing) {
    Copy({1}, target);
    NoteBookPaths paths = PathsOf(target);
    CNote first = FindNotes(Open(target).index, {1001}, context, faults).at(0);
    first.sourceInfo = {{"{S2}", "only here"}, {"{S9}", "of a source that the copy lacks"}};
    PutBytes(paths.NoteFile("SRC0000001301.dat"), NoteFileBytes({&first, 1}));
    const std::string sources = BytesOf(paths.Sources()), categories = BytesOf(paths.Categories());
    EXPECT_THAT(Copy({1}, target).ids.Values(), ElementsAre(1002));
    const OpenNoteBook book = Open(target);
    EXPECT_EQ(book.TotalNoteCount(), 2u);
    EXPECT_FALSE(book.index.FindPath(1001));
    EXPECT_EQ(BytesOf(paths.Sources()), sources);
    EXPECT_EQ(BytesOf(paths.Categories()), categories);
    EXPECT_THAT(Attachments(), ElementsAre("0000041.txt", "0000043.PNG"));
    const CNote copy = FindNotes(book.index, {1002}, context, faults).at(0);
    ASSERT_EQ(copy.sourceInfo.size(), 3u) << "the note's own two and one of the replaced note";
    EXPECT_EQ(copy.sourceInfo[2].text, "only here");
}

TEST_F(CopyNotesTest, OfNotesWithItsGuidACopyReplacesThoseThatHoldItsText) {
    CNote own = DayNote(600, 3), copied = DayNote(601, 4), replaced = DayNote(599, 5);
    own.rtfText = "{\\rtf1 own words}";
    for (CNote* const note : {&replaced, &own, &copied})
        note->guid = DayNote(2, 9).guid;
    PutNotes(target, {replaced, own, copied});
    EXPECT_EQ(Copy({2}, target).copied, 1);
    EXPECT_THAT(Each(NotesIn(target), &CNote::id), UnorderedElementsAre(500, 600, 1001));
}

TEST_F(CopyNotesTest, ANoteOfTheTargetThatWasEditedLaterStaysAndIsTold) {
    Copy({1, 2}, target);
    const std::filesystem::path file = PathsOf(target).NoteFile("SRC0000001301.dat");
    CNote other = FindNotes(Open(target).index, {1001}, context, faults).at(0);
    const DateTime edited = other.dateEdited;
    other.dateEdited = edited.PlusSeconds(1);
    other.rtfText = "{\\rtf1 newer}";
    const std::string newer = NoteFileBytes({&other, 1});
    PutBytes(file, newer);
    const CopyResult result = Copy({1, 2}, target);
    EXPECT_EQ(result.copied, 1);
    EXPECT_EQ(result.newer, 1);
    EXPECT_THAT(result.ids.Values(), ElementsAre(1003));
    EXPECT_THAT(prompts.seen,
                ElementsAre("Notes Not Copied: Target has newer forms of  *1*  of the notes. They stay as "
                            "they are, and these notes were not copied."));
    EXPECT_EQ(BytesOf(file), newer);
    EXPECT_THAT(Attachments(), ElementsAre("0000041.txt", "0000042.PNG"));
    EXPECT_EQ(Copy({1}, target).copied, 0);
    EXPECT_EQ(prompts.seen.size(), 2u);
    EXPECT_EQ(counters.MaxNoteID, 1003) << "no number for a note that stays behind";
    EXPECT_EQ(BytesOf(file), newer);
    for (const int earlier : {0, 1}) {
        other.dateEdited = edited.PlusSeconds(-earlier);
        PutBytes(file, NoteFileBytes({&other, 1}));
        EXPECT_EQ(Copy({1}, target).copied, 1);
        EXPECT_EQ(NotesOfFile(file, context).at(0).dateEdited, edited);
    }
    EXPECT_EQ(prompts.seen.size(), 2u);
    EXPECT_THAT(faults.faults, IsEmpty());
}

TEST_F(CopyNotesTest, AFileThatAnotherNoteOfTheTargetNamesStaysWhenItsNoteIsReplaced) {
    Copy({1}, target);
    CNote other = DayNote(600, 6);
    other.attachments.push_back({0, 1.0, "Shared", "0000042.PNG", "", 1, true});
    PutNotes(target, {other});
    EXPECT_THAT(Copy({1}, target).ids.Values(), ElementsAre(1002));
    EXPECT_THAT(Attachments(), ElementsAre("0000041.txt", "0000042.PNG", "0000043.PNG"));
    EXPECT_THAT(faults.faults, IsEmpty());
}

TEST_F(CopyNotesTest, LinkedTargetIsLoggedWhileSyncIsEngaged) {
    SyncLog log;
    log.link.Linked = kStoredTrue;
    log.link.OnlineNoteBookID = 5;
    log.Add({77, kStoredTrue, 88, true, "{G2}", "", {}, {}, {}, {}, {}});
    SaveSyncLogTo(PathsOf(target).SyncLog(), log);
    const std::string before = BytesOf(PathsOf(target).SyncLog());
    Copy({2}, target);
    EXPECT_EQ(BytesOf(PathsOf(target).SyncLog()), before);
    syncEngaged = true;
    Copy({1, 2}, target);
    LoadSyncLogFrom(PathsOf(target).SyncLog(), log);
    ASSERT_EQ(log.Records().size(), 2u);
    const CSyncInfo& replaced = *log.FindSyncInfo("{G2}");
    EXPECT_EQ(replaced.NoteId, 1003);
    EXPECT_EQ(replaced.OnlineNoteId, 88) << "the online note is still the same one";
    EXPECT_EQ(replaced.NoteFile, "DAY01092020.dat");
    EXPECT_EQ(replaced.SourcesChanged, context.nowUtc);
    EXPECT_EQ(log.Records()[1].NoteId, 1002);
}

TEST_F(CopyNotesTest, NothingIsDoneWithoutNotesOrATargetOrIntoTheSameNoteBook) {
    CDatabase none = target;
    none.id = 0;
    EXPECT_EQ(Copy({}, target).copied, -1);
    EXPECT_EQ(Copy({1}, none).copied, -1);
    EXPECT_EQ(Copy({1}, main).copied, -1);
    EXPECT_THAT(progress.messages, IsEmpty());
    EXPECT_EQ(counters.MaxNoteID, 1000);
}

TEST_F(CopyNotesTest, NothingIsCopiedUnlessAllOfTheTargetCouldBeRead) {
    Copy({1}, target);
    const NoteBookPaths paths = PathsOf(target);
    const std::string sources = BytesOf(paths.Sources());
    for (const std::filesystem::path& unread : {paths.NoteFile("SRC0000001301.dat"), paths.Notes(), paths.Sources()}) {
        SCOPED_TRACE(unread);
        Unreadable nobody(unread);
        faults.faults.clear();
        EXPECT_EQ(Copy({1, 2}, target).copied, -1);
        ASSERT_GE(faults.faults.size(), 2u);
        EXPECT_EQ(faults.faults.back().what, "The notes could not be copied");
        nobody.End();
        EXPECT_THAT(Attachments(), ElementsAre("0000041.txt", "0000042.PNG"));
        EXPECT_EQ(BytesOf(paths.Sources()), sources);
        EXPECT_EQ(counters.MaxNoteID, 1001);
    }
    faults.faults.clear();
    EXPECT_THAT(Copy({1}, target).ids.Values(), ElementsAre(1002));
    EXPECT_EQ(NotesIn(target).size(), 2u) << "it took the place of the first copy";
    EXPECT_THAT(faults.faults, IsEmpty());
}

TEST_F(CopyNotesTest, FilesOfACopyThatFailsGoAndNoneGetsTheNumberOfAFileThatANoteNames) {
    // A folder stands where the copy of the note with a file belongs.
    std::filesystem::create_directories(PathsOf(target).NoteFile("SRC0000001301.dat"));
    EXPECT_EQ(Copy({1, 2}, target).copied, 1);
    EXPECT_THAT(Attachments(), ElementsAre("0000041.txt"));
    CNote other = DayNote(600, 6);
    other.attachments.push_back({0, 1.0, "Lost", "0000042.PNG", "", 1, true});
    PutNotes(target, {other});
    std::filesystem::remove(PathsOf(target).NoteFile("SRC0000001301.dat"));
    EXPECT_EQ(Copy({1, 2}, target).copied, 2);
    EXPECT_THAT(Attachments(), ElementsAre("0000041.txt", "0000043.PNG"));
}

TEST_F(CopyNotesTest, ListThatCannotBeWrittenStopsTheCopy) {
    whenSaved = [this] {
        std::filesystem::remove(PathsOf(target).Sources());
        std::filesystem::create_directories(PathsOf(target).Sources());
    };
    EXPECT_EQ(Copy({1}, target).copied, -1);
    EXPECT_EQ(NotesIn(target).size(), 1u);
    EXPECT_THAT(Attachments(), ElementsAre("0000041.txt"));
    ASSERT_FALSE(faults.faults.empty());
    EXPECT_EQ(faults.faults[0].what, "The sources could not be written");
}

TEST_F(CopyNotesTest, FileThatCannotBeWrittenStopsTheCopy) {
    std::filesystem::remove_all(PathsOf(target).Attachments());
    PutBytes(PathsOf(target).Attachments(), "no folder");
    const std::string sources = BytesOf(PathsOf(target).Sources());
    EXPECT_EQ(Copy({2, 1}, target).copied, -1);
    EXPECT_EQ(NotesIn(target).size(), 1u);
    EXPECT_EQ(BytesOf(PathsOf(target).Sources()), sources);
    EXPECT_EQ(faults.faults.size(), 2u) << "the folder could not be made, and no file could go there";
}

TEST_F(CopyNotesTest, ACopyCanBeStoppedUntilTheListsAreWrittenAndLeavesNothing) {
    struct StoppedProgress : ScriptedProgress {
        bool Cancelled() const override { return asked++ >= stopsAt; }
        int stopsAt = 0;
        mutable int asked = 0;
    };
    const OpenNoteBook from = Open(main);
    CNoteList list;
    for (const CNote& note : FindNotes(from.index, {1, 2}, context, faults))
        list.AddNote(note);
    const std::string sources = BytesOf(PathsOf(target).Sources());
    for (int point = 0; point < 3; ++point) {
        StoppedProgress stopped;
        stopped.stopsAt = point;
        const CopyJob stoppable{
            from, data, counters, context, {prompts, stopped, faults}, false, Job(from).storeCounters};
        EXPECT_EQ(CopyNotesToNoteBook(list, target, stoppable).copied, -1) << point;
        EXPECT_EQ(stopped.shown, 0);
        EXPECT_THAT(Attachments(), ElementsAre("0000041.txt")) << point;
        EXPECT_EQ(BytesOf(PathsOf(target).Sources()), sources);
        EXPECT_EQ(NotesIn(target).size(), 1u);
    }
    EXPECT_EQ(Copy({1, 2}, target).copied, 2);
}

TEST_F(CopyNotesTest, MissingFileIsToldAndTheNoteNamesAFileThatNoneWillBe) {
    std::filesystem::remove(PathsOf(main).Attachments() / "0000003.PNG");
    EXPECT_EQ(Copy({1}, target).copied, 1);
    ASSERT_EQ(faults.faults.size(), 1u);
    const CNote copy = FindNotes(Open(target).index, {1001}, context, faults).at(0);
    EXPECT_EQ(copy.attachments[0].storedFile, "0000000.PNG");
    EXPECT_THAT(Each(CheckNoteBook(PathsOf(target), context, faults), &Finding::kind),
                Contains(FindingKind::AttachmentMissing));
    PutBytes(PathsOf(main).Attachments() / "0000003.PNG", "picture");
    Copy({1}, target);
    const std::set<std::string> files = Attachments();
    std::filesystem::remove(PathsOf(main).Attachments() / "0000003.PNG");
    Copy({1}, target);
    EXPECT_EQ(Attachments(), files) << "the file that the replaced note had goes on with the copy";
    EXPECT_THAT(Each(CheckNoteBook(PathsOf(target), context, faults), &Finding::kind),
                testing::Not(Contains(FindingKind::AttachmentMissing)));
}

TEST_F(CopyNotesTest, BoardCommandFindsTheTargetByIdAndSaysWhenItIsDone) {
    const OpenNoteBook from = Open(main);
    const CNote note = FindNotes(from.index, {2}, context, faults).at(0);
    EXPECT_EQ(CopyNoteToNoteBook(note, Stored(), main.guid, 12345, Job(from)).copied, -1);
    EXPECT_EQ(CopyNoteToNoteBook(note, Stored(), main.guid, 7, Job(from)).copied, 1);
    EXPECT_EQ(progress.messages.front(), "Loading note to copy.....");
    EXPECT_THAT(prompts.seen, ElementsAre("Finished!: Your note has been successfully copied to Target!"));
    const OpenNoteBook other = Open(target);
    EXPECT_EQ(CopyNoteToNoteBook(DayNote(500), Stored(), main.guid, 2112, Job(other)).copied, 1);
    EXPECT_EQ(prompts.seen.back(), "Finished!: Your note has been successfully copied to LorebinderMain!");
}

}  // namespace
}  // namespace lore
