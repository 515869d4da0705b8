#include "edit/draft_store.h"

#include <cerrno>

#include "base/file_copy.h"
#include "edit/edit_fixture.h"

namespace lore {
namespace {

class DraftStoreTest : public EditFixture {
protected:
    static Draft DraftOf(const CNote& note) { return {note, note.dateEdited, DateTime(2026, 3, 14, 9, 0, 0)}; }
    std::filesystem::path Write(const Draft& draft) {
        EXPECT_TRUE(store.WriteDraft(draft).Ok());
        return store.ListDrafts().at(0);
    }
    Draft Read(const std::filesystem::path& path) {
        Loaded<Draft> loaded = DraftStore::ReadDraft(path, world.Context());
        result = loaded.file;
        isRead = loaded.ReadWhole();
        return std::move(loaded.value);
    }
    DraftStore store{book.paths};
    FileResult result;
    bool isRead = false;
};

TEST_F(DraftStoreTest, ADraftComesBackAsItWasWhateverItsSize) {
    Draft written = DraftOf(FullNote(12));
    written.note.plainText = std::string("a\n\0\x1A\r\nb", 8);
    written.note.rtfText.assign(2 * kLargestRtf, '\n');
    written.syncTicked = true;
    const Draft read = Read(Write(written));
    ASSERT_TRUE(isRead);
    EXPECT_EQ(read.note.plainText, written.note.plainText);
    EXPECT_EQ(read.note.rtfText, written.note.rtfText);
    EXPECT_EQ(read.baseEdited, written.baseEdited);
    EXPECT_EQ(read.written, written.written);
    EXPECT_TRUE(read.syncTicked);
    EXPECT_FALSE(DraftDiffers(read, &written.note));
    EXPECT_EQ(read.note.id, 12);
    EXPECT_EQ(Reloaded().TotalNoteCount(), 0u) << "no reader of notes meets it";
}

TEST_F(DraftStoreTest, ANoteThatWasNeverSavedStaysNew) {
    CNote note = FullNote(1);
    note.id = -1;
    note.dateEdited = {};
    const Draft read = Read(Write(DraftOf(note)));
    ASSERT_TRUE(isRead);
    EXPECT_EQ(read.note.id, -1);
    EXPECT_EQ(read.note.guid, note.guid);
    EXPECT_TRUE(DraftDiffers(read, nullptr));
}

TEST_F(DraftStoreTest, EachNoteHasOneDraftAndItsFilesGoWithIt) {
    CNote a = FullNote(1), b = FullNote(2);
    Write(DraftOf(a));
    Write(DraftOf(b));
    a.keyWords = "later";
    Write(DraftOf(a));
    std::filesystem::path kept;
    ASSERT_TRUE(store.KeepFile(a.guid, "Picture 1.png", "png", kept).Ok());
    EXPECT_EQ(store.ListDrafts().size(), 2u);
    EXPECT_EQ(Read(store.ListDrafts()[0]).note.keyWords, "later");
    EXPECT_TRUE(store.RemoveDraft(a.guid).Ok());
    EXPECT_TRUE(store.RemoveDraft(a.guid).Ok()) << "one that isn't there is no failure";
    EXPECT_FALSE(std::filesystem::exists(kept));
    EXPECT_EQ(Read(store.ListDrafts().at(0)).note.id, 2);
    EXPECT_TRUE(store.RemoveDraft(b.guid).Ok());
    EXPECT_FALSE(std::filesystem::exists(store.Folder()));
}

TEST_F(DraftStoreTest, NothingTakesThePlaceOfANoteBookThatIsGone) {
    std::filesystem::remove_all(book.paths.Folder());
    std::filesystem::path kept;
    EXPECT_EQ(store.WriteDraft(DraftOf(FullNote(1))).error, ENOENT);
    EXPECT_EQ(store.KeepFile("guid", "Picture 1.png", "png", kept).error, ENOENT);
    EXPECT_FALSE(std::filesystem::exists(book.paths.Folder()));
}

TEST_F(DraftStoreTest, AHostileGuidLeadsNowhereElse) {
    for (const std::string guid : {"../../../up", "", "{a/b\\c}", "..", "\xFF\xFE"}) {
        CNote note = FullNote(1);
        note.guid = guid;
        const std::filesystem::path path = Write(DraftOf(note));
        EXPECT_EQ(path.parent_path(), store.Folder()) << guid;
        EXPECT_TRUE(store.RemoveDraft(guid).Ok());
        EXPECT_THAT(store.ListDrafts(), IsEmpty()) << guid;
    }
}

TEST_F(DraftStoreTest, ADamagedDraftIsRefusedWhereverItBreaksAndCanBeSetAside) {
    const std::filesystem::path path = Write(DraftOf(FullNote(1)));
    const std::string whole = BytesOf(path);
    const std::filesystem::path other = store.Folder() / "other.draft";
    for (size_t size = 0; size < whole.size(); ++size) {
        PutBytes(other, whole.substr(0, size));
        Read(other);
        EXPECT_FALSE(isRead) << "cut at " << size;
        EXPECT_TRUE(result.Ok()) << "it was read, and is damaged";
    }
    PutBytes(other, whole + "x");
    Read(other);
    EXPECT_FALSE(isRead);
    for (const std::string sizes :
         {"1 2000000000 1 1", "1 18446744073709551615 1 2", "-1 2 3 4", "1 2 3", "99999999999999999999 1 1 1"}) {
        PutBytes(other, "LoreDraft 1\n\n\n" + sizes + "\nabc");
        Read(other);
        EXPECT_FALSE(isRead) << sizes;
    }
    for (const std::string bytes : {"first", "second"}) {
        PutBytes(other, bytes);
        EXPECT_TRUE(SetAside(other).Ok());
    }
    EXPECT_THAT(store.ListDrafts(), ElementsAre(path));
    EXPECT_EQ(BytesOf(other.string() + ".kept") + BytesOf(other.string() + ".2.kept"), "firstsecond");
}

TEST_F(DraftStoreTest, ADraftThatCantBeReadIsNoDamagedOne) {
    const std::filesystem::path loop = store.Folder() / "loop.draft";
    std::filesystem::create_directories(store.Folder());
    std::filesystem::create_symlink(loop.filename(), loop);
    EXPECT_EQ(Read(loop).note.id, Draft().note.id);
    EXPECT_FALSE(isRead);
    EXPECT_EQ(result.error, ELOOP);
}

TEST_F(DraftStoreTest, ARestoredDraftSavesOverItsNoteOrAsANewOne) {
    CNote stored = TextNote(5, "Old", {1011});
    Stored(stored);
    CNote changed = stored;
    changed.rtfText = Rtf("Changed");
    changed.keyWords = "fog";
    const Draft draft = Read(Write(DraftOf(changed)));
    EXPECT_TRUE(DraftDiffers(draft, &stored));
    FixedNoteText text(draft.note.rtfText);
    EditNoteSession session = EditNoteSession::ForDraft(world, draft, &stored);
    ASSERT_EQ(session.SaveNote(text), SaveOutcome::Saved);
    EXPECT_THAT(IDsIn("SRC0000001011.dat"), ElementsAre(5));
    EXPECT_EQ(NotesIn("SRC0000001011.dat").at(0).keyWords, "fog");

    settings.Set(Option::MaxNoteID, 1000);
    EditNoteSession orphan = EditNoteSession::ForDraft(world, draft, nullptr);
    ASSERT_EQ(orphan.SaveNote(text), SaveOutcome::Saved);
    EXPECT_EQ(orphan.note.id, 1001) << "the note was deleted since: its draft is a new one";
}

}  // namespace
}  // namespace lore
