#include "edit/note_removal.h"

#include <cerrno>

#include "edit/edit_fixture.h"
#include "support/faults.h"
#include "support/scripted_background.h"

namespace lore {
namespace {

class NoteRemovalTest : public EditFixture {
protected:
    NoteRemovalTest() {
        CNote first = TextNote(1, "First", {1011});
        first.keyWords = "lamp";
        first.categories[0] = PathOf({{3, "Lights"}});
        first.attachments = {{0, 1.0, "A", "0000001.txt", "", 2, true}, {0, 1.0, "L", "", "http://x", 12, true}};
        Stored(first);
        Stored(TextNote(2, "Second", {1011}));
        Stored(TextNote(3, "Third"));
        PutBytes(book.paths.Attachments() / "0000001.txt", "attached");
    }
    std::filesystem::path Attached() const { return book.paths.Attachments() / "0000001.txt"; }
    static std::vector<int32_t> Ids(const DeletedNotes& deleted) { return Each(deleted.notes, &CNote::id); }
    ReadContext context = world.Context();
    NoteRemoval removal{book, context, faults, nullptr};
};

TEST_F(NoteRemovalTest, UndoBringsTheFilesBackByteForByte) {
    const std::string source = folder.Bytes("SRC0000001011.dat"), day = folder.Bytes("DAY01012020.dat");
    const DeletedNotes deleted = removal.DeleteNotes(LongList{2, 3, 99}, GoneFiles::Kept);
    const DeletedNotes more = removal.DeleteNotes(LongList{1}, GoneFiles::Kept);
    EXPECT_FALSE(std::filesystem::exists(Attached()));
    EXPECT_EQ(BytesOf(more.keptFiles / "0000001.txt"), "attached");
    for (const OpenNoteBook& picture : {std::cref(book).get(), Reloaded()})
        EXPECT_TRUE(picture.TotalNoteCount() == 0 && picture.keyWords.Count() == 0 &&
                    picture.sources.FindSourceByID(1011)->NoteIDs.IsEmpty() &&
                    picture.categories.FindByID(3)->notes[0].IsEmpty());
    removal.RestoreNotes(more);
    removal.RestoreNotes(deleted);
    EXPECT_EQ(folder.Bytes("SRC0000001011.dat"), source);
    EXPECT_EQ(folder.Bytes("DAY01012020.dat"), day);
    EXPECT_EQ(BytesOf(Attached()), "attached");
    EXPECT_EQ(book.keyWords.FindByName("lamp")->notes.Count(), 1u);
    EXPECT_TRUE(book.notesWithoutSource.Contains(3));
    NoteRemoval::DiscardKeptFiles(book.paths, faults);
    EXPECT_FALSE(std::filesystem::exists(KeptFilesFolder(book.paths)));
    EXPECT_THAT(faults.faults, IsEmpty());
}

TEST_F(NoteRemovalTest, AFileThatAnotherNoteNamesStaysForIt) {
    const std::tuple<const char*, int32_t, bool> cases[] = {
        {"0000001.txt", 2, true}, {"C:\\old\\0000001.txt", 1, true}, {"0000001.txt", 12, false}};
    int32_t id = 10;
    for (const auto& [name, type, keepsFile] : cases) {
        for (const GoneFiles files : {GoneFiles::Kept, GoneFiles::Deleted}) {
            const bool undoable = files == GoneFiles::Kept;
            SCOPED_TRACE(std::string(name) + (undoable ? " undoable" : " for good"));
            CNote first = TextNote(++id, "First", {1011}), other = TextNote(++id, "Other", {1012});
            first.attachments = {{0, 1.0, "A", "0000001.txt", "", 2, true}, {0, 1.0, "B", "0000002.txt", "", 2, true}};
            other.attachments = {{0, 1.0, "A", name, "", type, true}};
            removal.DeleteNotes(LongList{1}, GoneFiles::Deleted);
            Stored(first);
            Stored(other);
            PutBytes(Attached(), "attached");
            PutBytes(book.paths.Attachments() / "0000002.txt", "own");
            const DeletedNotes deleted = removal.DeleteNotes(LongList{first.id}, files);
            EXPECT_EQ(std::filesystem::exists(Attached()), keepsFile);
            EXPECT_FALSE(std::filesystem::exists(book.paths.Attachments() / "0000002.txt"));
            if (undoable) {
                EXPECT_FALSE(removal.RestoreNotes(deleted).Contains(first.id));
                EXPECT_EQ(BytesOf(Attached()), "attached");
                EXPECT_EQ(BytesOf(book.paths.Attachments() / "0000002.txt"), "own");
            }
            removal.DeleteNotes(LongList{first.id, other.id}, GoneFiles::Deleted);
            EXPECT_FALSE(std::filesystem::exists(Attached())) << "with the last note that names it";
            EXPECT_THAT(faults.faults, IsEmpty());
        }
    }
}

TEST_F(NoteRemovalTest, WithoutALookAtAllOtherNotesNoFileGoes) {
    const std::filesystem::path stray = book.paths.NoteFile("stray.dat");
    ScriptedBackground background;
    NoteRemoval beside(book, context, faults, nullptr, &background);
    const std::tuple<const char*, bool, bool, size_t> cases[] = {{"stopped", true, false, 1},
                                                                 {"a file can't be read", false, true, 2}};
    for (const auto& [what, stops, isBlocked, told] : cases) {
        for (const GoneFiles files : {GoneFiles::Kept, GoneFiles::Deleted}) {
            const bool undoable = files == GoneFiles::Kept;
            SCOPED_TRACE(std::string(what) + (undoable ? " undoable" : " for good"));
            background.stops = stops;
            if (isBlocked)
                std::filesystem::create_symlink(stray.filename(), stray);  // leads to itself
            const DeletedNotes deleted = beside.DeleteNotes(LongList{1}, files);
            EXPECT_THAT(Ids(deleted), ElementsAre(1));
            EXPECT_EQ(faults.faults.size(), told);
            EXPECT_EQ(BytesOf(Attached()), "attached");
            EXPECT_FALSE(removal.RestoreNotes(deleted).Contains(1));
            EXPECT_EQ(BytesOf(Attached()), "attached");
            Unblock(stray);
            faults.faults.clear();
        }
    }
    background.stops = false;
    background.texts.clear();
    beside.DeleteNotes(LongList{1}, GoneFiles::Kept);
    EXPECT_FALSE(std::filesystem::exists(Attached()));
    beside.DeleteNotes(LongList{2}, GoneFiles::Kept);
    EXPECT_EQ(background.texts.size(), 1u) << "without attachments there is nothing to look for";
    EXPECT_THAT(faults.faults, IsEmpty());
}

TEST_F(NoteRemovalTest, AFileThatCantBeLookedAtIsMissedAndComesBackLater) {
    const DeletedNotes deleted = removal.DeleteNotes(LongList{1}, GoneFiles::Kept);
    Unreadable kept(deleted.keptFiles / "0000001.txt");
    EXPECT_THAT(removal.RestoreNotes(deleted).withoutFiles.Values(), ElementsAre(1));
    EXPECT_EQ(faults.faults.size(), 1u);
    kept.End();
    EXPECT_TRUE(removal.RestoreFiles(deleted).IsEmpty());
    EXPECT_EQ(BytesOf(Attached()), "attached");
    EXPECT_EQ(faults.faults.size(), 1u);
}

TEST_F(NoteRemovalTest, FilesThatComeBackAreFlushedAndAFailureIsTold) {
    DeletedNotes deleted;
    size_t told = 0;
    const auto prepare = [&] {
        deleted = removal.DeleteNotes(LongList{1}, GoneFiles::Kept);
        faults.faults.clear();
    };
    const auto check = [&](const Unrestored& failed, bool) {
        EXPECT_FALSE(failed.Contains(1));
        EXPECT_EQ(BytesOf(Attached()), "attached");
        told += faults.faults.size();
    };
    EXPECT_GT(FailEachCall(
                  book.paths.Attachments(), EIO, false, prepare, [&] { return removal.RestoreNotes(deleted); }, check),
              1);
    EXPECT_EQ(told, 2u) << "their folder is opened and flushed";
}

TEST_F(NoteRemovalTest, ANoteWhoseFileCantBeWrittenStaysWhole) {
    Block(book.paths.NoteFile("SRC0000001011.dat"));
    EXPECT_THAT(Ids(removal.DeleteNotes(LongList{1, 3}, GoneFiles::Deleted)), ElementsAre(3));
    EXPECT_FALSE(faults.faults.empty());
    EXPECT_TRUE(book.index.Contains(1));
    EXPECT_TRUE(book.keyWords.FindByName("lamp"));
    EXPECT_TRUE(std::filesystem::exists(Attached()));
}

TEST_F(NoteRemovalTest, ALinkedNoteBookKeepsTheRecordAndMarksIt) {
    Link();
    book.syncLog.ReplaceSyncInfo({1, kStoredTrue, -1, false, "{G1}", "", {}, {}, {}, {}, {}});
    removal.DeleteNotes(LongList{1, 2}, GoneFiles::Deleted);
    const SyncLog read = StoredLog();
    ASSERT_EQ(read.Records().size(), 1u);
    EXPECT_TRUE(read.Records()[0].Changed);
    EXPECT_EQ(read.Records()[0].Change1, clock.now);
}

}  // namespace
}  // namespace lore
