#include "edit/repair_notebook.h"

#include <map>
#include <set>

#include "classify/category_edit.h"
#include "edit/draft_store.h"
#include "edit/edit_fixture.h"
#include "edit/shared_numbers.h"
#include "notes/check_notebook.h"
#include "support/draft_reading.h"

namespace lore {
namespace {

/// A note with the number 5, written on a day in January 2021.
CNote Five(const std::string& guid, int32_t source, int day) {
    CNote note = TextNote(5, "Text of " + guid, {source});
    note.guid = guid;
    note.dateEdited = DateTime(2021, 1, day);
    return note;
}

class RepairNoteBookTest : public EditFixture {
protected:
    std::vector<Repair> Repaired() {
        OpenNoteBook repaired;
        repaired.paths = book.paths;
        const ReadContext context = world.Context();
        return RepairNoteBook(repaired, counters, context, faults);
    }
    std::vector<CNote> AllNotes() { return NotesOfFolder(book.paths.Notes(), world.Context(), faults); }
    std::map<std::string, std::string> AllFiles() const { return FilesBelow(book.paths.Folder()); }
    void ClearNotes() {
        for (const auto& entry : std::filesystem::directory_iterator(book.paths.Notes()))
            std::filesystem::remove(entry);
    }

    IdCounters counters{1000, 100, 100};
};

TEST_F(RepairNoteBookTest, NotesThatShareANumberGetNumbersOfTheirOwn) {
    const std::string first = "SRC0000001011.dat", second = "SRC0000001012.dat", stray = "copied.dat";
    const CNote cut = Five("{CUT}", 1011, 30), whole = Five("{A}", 1012, 9), shown = Five("{A}", 1011, 9),
                near = Five("{B}", 1011, 30), far = Five("{C}", 1012, 4);
    CNote other = TextNote(6, "Text of {G6}", {1011});
    const std::tuple<const char*, std::map<std::string, std::vector<CNote>>, size_t> cases[] = {
        {"in one file", {{first, {shown, other, near}}}, 3},
        {"in two files", {{first, {shown}}, {second, {far}}}, 2},
        {"three in two files", {{first, {shown, near}}, {second, {far}}}, 3},
        {"with a copy of the one that shows", {{first, {shown}}, {second, {far}}, {stray, {shown}}}, 2},
        {"with a copy of the other one", {{first, {shown}}, {second, {far}}, {stray, {far}}}, 2},
        {"twice in one file", {{first, {shown, other, shown}}, {second, {far, far}}}, 3},
        {"after a file that broke off", {{first, {cut}}, {second, {whole, whole}}}, 2},
        {"in a file of copies", {{first, {shown, other}}, {stray, {other, far, shown}}}, 3},
    };
    for (const auto& [what, before, count] : cases) {
        SCOPED_TRACE(what);
        ClearNotes();
        for (const auto& [name, notes] : before)
            folder.Put(name, notes);
        if (before.at(first).front().guid == cut.guid)
            PutBytes(book.paths.NoteFile(first), folder.Bytes(first).substr(0, folder.Bytes(first).size() - 5));
        const int highest = counters.MaxNoteID;
        EXPECT_FALSE(Repaired().empty());
        std::set<int32_t> ids;
        std::set<std::string> seen;
        for (const CNote& note : AllNotes()) {
            ids.insert(note.id);
            EXPECT_TRUE(seen.insert(note.guid).second) << "twice: " << note.guid;
            EXPECT_EQ(note.plainText, "Text of " + note.guid);
            EXPECT_TRUE(note.guid == "{A}" ? note.id == 5 : note.guid == "{G6}" ? note.id == 6 : note.id > highest);
            EXPECT_LE(note.id, counters.MaxNoteID);
        }
        EXPECT_EQ(ids.size(), count);
        EXPECT_EQ(seen.size(), count);
        EXPECT_EQ(Reloaded().TotalNoteCount(), count);
        EXPECT_THAT(CheckNoteBook(book.paths, world.Context(), faults), IsEmpty());
        const auto files = AllFiles();
        EXPECT_THAT(Repaired(), IsEmpty()) << "once more";
        EXPECT_EQ(AllFiles(), files);
        EXPECT_THAT(faults.faults, IsEmpty());
    }
}

TEST_F(RepairNoteBookTest, ARenumberedNoteIsToldAndItsFileIsKept) {
    folder.Put("SRC0000001011.dat", {Five("{A}", 1011, 9)});
    folder.Put("SRC0000001012.dat", {Five("{C}", 1012, 4)});
    const std::string before = folder.Bytes("SRC0000001012.dat");
    const std::vector<Repair> repairs = Repaired();
    ASSERT_EQ(repairs.size(), 1u);
    EXPECT_EQ(repairs[0].file, book.paths.NoteFile("SRC0000001012.dat").string());
    const int32_t id = NotesIn("SRC0000001012.dat").at(0).id;
    EXPECT_EQ(repairs[0].text,
              "note 5, hidden by another note of this number, has the number " + std::to_string(id) + " now");
    EXPECT_EQ(folder.Bytes("SRC0000001012.dat.kept"), before);
    EXPECT_FALSE(std::filesystem::exists(book.paths.NoteFile("SRC0000001011.dat.kept"))) << "it wasn't touched";
}

TEST_F(RepairNoteBookTest, CopiesOfANoteWithoutAGuidAreOneNote) {
    CNote old = Five("", 1011, 9), moved = Five("", 1012, 4);
    folder.Put("SRC0000001011.dat", {old});
    folder.Put("SRC0000001012.dat", {moved});
    const std::string before = folder.Bytes("SRC0000001012.dat");
    EXPECT_THAT(Repaired(), IsEmpty());
    EXPECT_EQ(folder.Bytes("SRC0000001012.dat"), before);
    moved.dateCreated = DateTime(2019, 1, 1);
    folder.Put("SRC0000001012.dat", {moved});
    EXPECT_EQ(Repaired().size(), 1u) << "made at another time, it is another note";
    EXPECT_THAT(IDsIn("SRC0000001011.dat"), ElementsAre(5));
    EXPECT_NE(IDsIn("SRC0000001012.dat").at(0), 5);
}

/// It counts as a copy of either, which aren't copies of each other.
TEST_F(RepairNoteBookTest, ANoteWithoutAGuidTakesNoneOfItsSecondAlong) {
    const CNote nameless = Five("", 1011, 5), a = Five("{A}", 1011, 6), b = Five("{B}", 1012, 7);
    CNote shown = Five("{SHOWN}", 1012, 30);
    shown.dateCreated = DateTime(2019, 1, 1);
    for (const auto& files : {std::map<std::string, std::vector<CNote>>{{"SRC0000001012.dat", {shown, b}},
                                                                        {"SRC0000001011.dat", {nameless, a}}},
                              {{"SRC0000001012.dat", {shown, b}}, {"SRC0000001011.dat", {a, nameless}}}}) {
        ClearNotes();
        for (const auto& [name, notes] : files)
            folder.Put(name, notes);
        EXPECT_EQ(Repaired().size(), 3u);
        std::map<std::string, std::string> texts;
        for (const CNote& note : AllNotes())
            texts[note.plainText] = note.guid;
        EXPECT_EQ(texts.size(), 4u);
        for (const char* const guid : {"{A}", "{B}", "{SHOWN}"})
            EXPECT_EQ(texts[std::string("Text of ") + guid], guid);
        EXPECT_EQ(Reloaded().TotalNoteCount(), 4u);
    }
}

TEST_F(RepairNoteBookTest, TheSyncLogAndTheDraftOfARenumberedNoteFollow) {
    const CNote shown = Five("{A}", 1011, 9), hidden = Five("{C}", 1012, 4);
    folder.Put("SRC0000001011.dat", {shown});
    folder.Put("SRC0000001012.dat", {hidden});
    SyncLog log;
    log.link.Linked = kStoredTrue;
    const DraftStore drafts(book.paths);
    for (const CNote& note : {shown, hidden}) {
        log.Add(NewSyncRecord(note, clock.now));
        Draft draft{note, note.dateEdited, clock.now};
        draft.note.rtfText = Rtf("Unsaved");
        ASSERT_TRUE(drafts.WriteDraft(draft).Ok());
    }
    ASSERT_TRUE(SaveSyncLogTo(book.paths.SyncLog(), log).Ok());
    EXPECT_EQ(Repaired().size(), 1u);
    const int32_t id = NotesIn("SRC0000001012.dat").at(0).id;
    EXPECT_NE(id, 5);
    log = StoredLog();
    ASSERT_EQ(log.Records().size(), 2u);
    EXPECT_EQ(log.FindSyncInfo("{A}")->NoteId, 5);
    EXPECT_EQ(log.FindSyncInfo("{C}")->NoteId, id);
    EXPECT_TRUE(log.link.IsLinked());
    ASSERT_EQ(drafts.ListDrafts().size(), 2u);
    for (const std::filesystem::path& path : drafts.ListDrafts()) {
        Draft draft;
        ASSERT_TRUE(ReadsDraft(path, world.Context(), draft));
        EXPECT_EQ(draft.note.id, draft.note.guid == "{A}" ? 5 : id);
        EXPECT_EQ(draft.note.rtfText, Rtf("Unsaved"));
    }
    EXPECT_EQ(Reloaded().index.AllIDs().Count(), 2u);
}

TEST_F(RepairNoteBookTest, ADamagedListOfCategoriesIsWrittenAnewAndKeptOnce) {
    const std::string whole = BytesOf(book.paths.Categories());
    CNote note = TextNote(7, "In places", {1011});
    note.categories[1] = PathOf({{5, "Places"}});
    Stored(note);
    const std::tuple<const char*, std::string, size_t> cases[] = {
        {"with more", whole + "junk", 1}, {"cut", whole.substr(0, whole.find("Places") - 40), 2}};
    for (const auto& [what, damaged, count] : cases) {
        SCOPED_TRACE(what);
        PutBytes(book.paths.Categories(), damaged);
        const std::vector<Repair> repairs = Repaired();
        ASSERT_EQ(repairs.size(), count);
        EXPECT_EQ(repairs[0].file, book.paths.Categories().string());
        EXPECT_THAT(repairs[0].text, testing::StartsWith("was written anew"));
        EXPECT_THAT(faults.faults, IsEmpty());
        const CNote stored = NotesIn("SRC0000001011.dat").at(0);
        const int32_t id = DeepestCategoryID(stored.categories[1]);
        EXPECT_EQ(NotePlaces(Reloaded().categories, 2).at(7)->id, id);
        EXPECT_EQ(Reloaded().categories.FindByID(id)->name, "Places");
        EXPECT_EQ(Reloaded().categories.FindRootByName(""), nullptr) << "made up after the end of the file";
        EXPECT_THAT(CheckNoteBook(book.paths, world.Context(), faults), IsEmpty());
        const std::filesystem::path kept = book.paths.Categories().string() + ".kept";
        EXPECT_EQ(BytesOf(kept), damaged);
        EXPECT_TRUE(Reloaded().categories.ReadWhole());
        std::filesystem::remove(kept);
        const auto files = AllFiles();
        EXPECT_THAT(Repaired(), IsEmpty()) << "once more";
        EXPECT_EQ(AllFiles(), files);
    }
}

TEST_F(RepairNoteBookTest, ANoteWithALostCategoryMovesHomeAndBothFilesAreKept) {
    CNote stray = TextNote(7, "Stray", {1011});
    stray.categories[0] = PathOf({{77, "Lost"}});
    CNote first = TextNote(9, "The first of its source", {1012});
    first.categories[0] = stray.categories[0];
    folder.Put("odd.dat", {stray, first});
    folder.Put("SRC0000001011.dat", {TextNote(8, "At home", {1011})});
    const std::string odd = folder.Bytes("odd.dat"), home = folder.Bytes("SRC0000001011.dat");
    const std::vector<Repair> repairs = Repaired();
    ASSERT_EQ(repairs.size(), 4u);
    EXPECT_EQ(repairs[0].text, "note 7 was moved to SRC0000001011.dat");
    EXPECT_EQ(repairs[2].text, "note 7 has its category of set 1 again");
    EXPECT_FALSE(std::filesystem::exists(book.paths.NoteFile("SRC0000001012.dat.kept"))) << "made by the repair";
    EXPECT_EQ(folder.Bytes("odd.dat.kept"), odd);
    EXPECT_EQ(folder.Bytes("SRC0000001011.dat.kept"), home);
}

TEST_F(RepairNoteBookTest, LostCategoriesComeBackEachWithItsOwnNotes) {
    counters.MaxCategoryID = 5;  // as if the settings had been lost too
    for (const int32_t lost : {6, 7, 8, 9}) {
        CNote note = TextNote(1000 + lost, "Kept", {1011});
        note.categories[0] = PathOf({{lost, "Old " + std::to_string(lost)}});
        Stored(note);
    }
    EXPECT_EQ(Repaired().size(), 4u);
    const OpenNoteBook now = Reloaded();
    for (const int32_t lost : {6, 7, 8, 9}) {
        const CProCategoryTree* const root = now.categories.FindRootByName("Old " + std::to_string(lost));
        ASSERT_TRUE(root);
        EXPECT_EQ(root->notes[0], LongList{1000 + lost});
    }
}

TEST_F(RepairNoteBookTest, WholeNotesThatAFileDoesNotCountComeBack) {
    const std::filesystem::path home = book.paths.NoteFile("SRC0000001011.dat");
    std::string bytes =
        NoteFileBytes(std::vector<CNote>{Five("{A}", 1011, 9), SourceNote(2, {1011}), SourceNote(3, {1011})});
    for (const int counted : {0, 1}) {
        for (const size_t cut : {0, 40}) {
            ClearNotes();
            bytes.replace(20, 16, "000000000000000" + std::to_string(counted));
            PutBytes(home, bytes.substr(0, bytes.size() - cut));
            EXPECT_THAT(Repaired(), testing::SizeIs(1));
            EXPECT_EQ(AllNotes().size(), cut ? 2u : 3u);
            EXPECT_THAT(Repaired(), IsEmpty()) << "once more";
        }
    }
    // An older copy and another note of its number stand elsewhere.
    ClearNotes();
    PutBytes(home, bytes.replace(35, 1, "0"));
    PutBytes(book.paths.NoteFile("DAY01011999.dat"), NoteFileBytes(std::vector<CNote>{Five("{A}", 1011, 1)}));
    PutBytes(book.paths.NoteFile("SRC0000001012.dat"), NoteFileBytes(std::vector<CNote>{Five("{B}", 1012, 1)}));
    EXPECT_FALSE(Repaired().empty());
    EXPECT_THAT(Repaired(), IsEmpty()) << "once more";
    std::map<std::string, int> days;
    for (const CNote& note : AllNotes())
        days[note.guid] += note.dateEdited.Day();
    EXPECT_EQ(days.size(), 4u);
    EXPECT_EQ(days["{A}"], 9);
    EXPECT_THAT(faults.faults, IsEmpty());
}

TEST_F(RepairNoteBookTest, AFileThatCantBeKeptOrIsDamagedKeepsItsNumbers) {
    const std::string name = "SRC0000001011.dat";
    for (const bool isKept : {false, true}) {
        const std::string rest = isKept ? "rest of a damaged note" : "";
        PutBytes(book.paths.NoteFile(name),
                 NoteFileBytes(std::vector<CNote>{Five("{A}", 1011, 9), Five("{B}", 1011, 3)}) + rest);
        const std::string before = folder.Bytes(name);
        OpenNoteBook loaded = Reloaded();
        const ReadContext context = world.Context();
        EXPECT_THAT(RenumberSharedNotes(FindSharedNumbers(loaded, context, faults), loaded, counters.MaxNoteID, context,
                                        faults, [&](const std::string&) { return isKept; }),
                    IsEmpty());
        EXPECT_EQ(folder.Bytes(name), before);
    }
}

}  // namespace
}  // namespace lore
