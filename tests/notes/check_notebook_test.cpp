#include "notes/check_notebook.h"

#include "bibliography/source_builder.h"
#include "notes/attachment_kind.h"
#include "notes/note_builder.h"
#include "notes/notebook_list.h"
#include "support/each.h"
#include "support/matchers.h"

namespace lore {
namespace {

/// A NoteBook with one source, a few categories, an attachment and a note that uses them.
class CheckedNoteBook : public NoteBookTest {
protected:
    CheckedNoteBook() {
        PutSources(disk.paths, {TitledSource(1011, ""), TitledSource(1013, "")});
        PutCategories(disk.paths, {PathOf({{3, "Lights"}, {4, "Lenses"}}), PathOf({{9, "Places"}})});
        PutBytes(disk.paths.Attachments() / "0000001.png", "picture");
        PutBytes(disk.paths.SyncLog(), "-1, -1, , , , ,\r\n");
        PutBytes(disk.paths.LastViewList(), RawRecord().Ints({1, 5}).Bytes());
        disk.Put("SRC0000001011.dat", {FullNote(5)});
    }
    /// "kind file text" of every finding.
    std::vector<std::string> Findings() {
        return Each(CheckNoteBook(disk.paths, world.context, faults), [](const Finding& finding) {
            return std::string(FindingKindName(finding.kind)) + " " + FileOf(finding) + ": " + finding.text;
        });
    }
    static std::string FileOf(const Finding& finding) {
        return std::filesystem::path(finding.file).filename().string();
    }
};

TEST_F(CheckedNoteBook, NamesWhatIsMissing) {
    CNote note = DayNote(7);
    note.sources = {1011, 99};
    note.categories[1] = PathOf({{3, "Lights"}, {44, "Gone"}});
    note.attachments.push_back({0, 1.0, "", "0000009.txt", "", 2, true});
    note.attachments.push_back({0, 1.0, "", "link", "http://example.org", 12, false});
    disk.Put("SRC0000001011.dat", {FullNote(5), note});
    PutBytes(disk.paths.Attachments() / "0000002.txt", "x");
    EXPECT_THAT(Findings(),
                testing::ElementsAre(
                    "source-missing SRC0000001011.dat: note 7 names source 99, which is missing",
                    "category-missing SRC0000001011.dat: note 7 is filed in set 2 under category 44, which is missing",
                    "attachment-missing SRC0000001011.dat: note 7 names attachment 0000009.txt, which is missing",
                    "attachment-unused 0000002.txt: no note names the file"));
}

TEST_F(CheckedNoteBook, NamesNotesThatStandTwiceOrInAWrongFile) {
    disk.Put("DAY01012020.dat", {FullNote(5), DayNote(8)});
    disk.Put("xdat", {DayNote(9, 2)});
    EXPECT_THAT(Findings(), testing::ElementsAre(
                                "note-in-wrong-file DAY01012020.dat: note 5 belongs in SRC0000001011.dat",
                                "note-twice DAY01012020.dat: note 5 stands twice; the copy in SRC0000001011.dat shows",
                                "note-in-wrong-file xdat: note 9 belongs in DAY01022020.dat"));
}

TEST_F(CheckedNoteBook, TellsNotesThatShareANumberFromCopies) {
    const std::string twice = "note-twice DAY01022020.dat: note 8 stands twice; the copy in DAY01012020.dat shows",
                      shared =
                          "number-shared DAY01022020.dat: note 8 is hidden by another note of this number, the one in "
                          "DAY01012020.dat";
    // The GUID of the note in the second day's file, the day when it was made, and whether it is a copy.
    const std::tuple<std::string, int, bool> cases[] = {
        {"{G8}", 2, true}, {"{Other}", 2, false}, {"{Other}", 1, false}, {"", 1, true}, {"", 2, false}};
    for (const auto& [guid, day, isCopy] : cases) {
        SCOPED_TRACE(guid + " made on day " + std::to_string(day));
        CNote shown = DayNote(8, 1), hidden = DayNote(8, day);
        shown.dateEdited = DateTime(2021, 1, 1);
        hidden.guid = guid;
        if (guid.empty())
            shown.guid.clear();
        disk.Put("DAY01012020.dat", {shown});
        disk.Put("DAY01022020.dat", {hidden});
        EXPECT_THAT(Findings(), testing::Contains(isCopy ? twice : shared));
        EXPECT_THAT(Findings(), testing::Not(testing::Contains(isCopy ? shared : twice)));
    }
}

TEST_F(CheckedNoteBook, NamesDamagedFilesAndTextsOverTheLimit) {
    CNote tooLong = DayNote(1);
    tooLong.rtfText = std::string(kMaxStringLength + 1, 'x');
    tooLong.attachments.emplace_back();
    tooLong.attachments[0].type = kWebLink;
    tooLong.attachments[0].title = tooLong.rtfText;
    disk.Put("DAY01012020.dat", {tooLong});
    PutBytes(disk.paths.NoteFile("SRC0000001011.dat"), NoteFileBytes(std::vector<CNote>{FullNote(5)}) + "1");
    PutBytes(disk.paths.Categories(), BytesOf(disk.paths.Categories()) + "0");
    PutBytes(disk.paths.LastViewList(), RawRecord().Ints({3, 5}).Bytes());
    PutBytes(disk.paths.SyncLog(), "-1, -1, ");
    PutBytes(disk.paths.Authors(), RawRecord().Real(11.56).Int(2).Bytes());
    PutBytes(disk.paths.SourceTypes(), RawRecord().Real(11.56).Int(0).Text(tooLong.rtfText).Bytes());
    const std::string damaged = ": the file is short or damaged";
    EXPECT_THAT(Findings(),
                testing::ElementsAre("text-too-long DAY01012020.dat: note 1 has a rich text of 500001 bytes, over the "
                                     "limit of 500000",
                                     "text-too-long DAY01012020.dat: note 1 has a name of an attachment of 500001 "
                                     "bytes, over the limit of 500000",
                                     "damaged-file SRC0000001011.dat" + damaged, "damaged-file Authors.dat" + damaged,
                                     "damaged-file SourceTypes.dat" + damaged, "damaged-file Categories.dat" + damaged,
                                     "damaged-file LastViewList.dat" + damaged, "damaged-file Sync.dat" + damaged));
}

TEST_F(CheckedNoteBook, NamesFilesThatHoldWhatNoRecordShows) {
    CNote numberless = FullNote(5);
    numberless.id = -5;
    const std::string notes = disk.Bytes("SRC0000001011.dat"), sources = BytesOf(disk.paths.Sources());
    const std::string log = BytesOf(disk.paths.SyncLog());
    PutSources(disk.paths, {TitledSource(1011, ""), TitledSource(1013, ""), TitledSource(0, "")});
    const std::string withNumberless = BytesOf(disk.paths.Sources());
    PutBytes(disk.paths.Sources(), sources);
    const auto with = [](std::string bytes, size_t at, char byte) {
        bytes.at(at) = byte;
        return bytes;
    };
    const std::tuple<std::filesystem::path, std::string, std::string, const char*> cases[] = {
        {disk.paths.NoteFile("SRC0000001011.dat"), notes, with(notes, notes.find("Fresnel"), '\0'),
         "holds a byte that cuts a text or the file"},
        {disk.paths.NoteFile("SRC0000001011.dat"), notes, notes + "\x1A" + notes,
         "holds a byte that cuts a text or the file"},
        {disk.paths.NoteFile("SRC0000001011.dat"), notes, NoteFileBytes(std::vector<CNote>{FullNote(5), numberless}),
         "holds a record without a number"},
        {disk.paths.Sources(), sources, sources + "\x1A" + "more", "is short or damaged"},
        {disk.paths.Sources(), sources, withNumberless, "holds a record without a number"},
        {disk.paths.SyncLog(), log, log + "5, 2112\x1A" + log, "is short or damaged"},
        {disk.paths.SyncLog(), log, log + std::string("5, \0 2112,\n", 11), "is short or damaged"},
    };
    for (const auto& [file, whole, damaged, says] : cases) {
        PutBytes(file, damaged);
        EXPECT_THAT(Findings(),
                    testing::ElementsAre("damaged-file " + file.filename().string() + ": the file " + says));
        PutBytes(file, whole);
    }
    EXPECT_THAT(Findings(), testing::IsEmpty());
}

TEST_F(CheckedNoteBook, IsCheckedWithAllOthersOfTheDataRoot) {
    SaveDatabases(disk.data.DatabasesFile(), {{-1, 0, "", "DB000007", "", {}, ""}, MainNoteBook("{MAIN}")});
    const NoteBookPaths paths(disk.data, "DB000007");
    CreateNoteBookFolders(paths);
    PutBytes(paths.NoteFile("a.dat"), "");
    PutBytes(disk.paths.Attachments() / "0000002.txt", "x");
    PutBytes(disk.data.DatabasesFile(), BytesOf(disk.data.DatabasesFile()) + "0");
    EXPECT_THAT(Each(CheckData(disk.data, world.context, faults), &FileOf),
                testing::ElementsAre("Databases.dat", "0000002.txt", "a.dat"));
}

}  // namespace
}  // namespace lore
