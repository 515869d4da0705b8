#include "exchange/import_notes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "base/text.h"
#include "classify/category_edit.h"
#include "exchange/exchange_world.h"
#include "exchange/raw_zip.h"
#include "notes/attachment_kind.h"
#include "notes/check_notebook.h"
#include "support/note_reading.h"

namespace lore {
namespace {

using Lines = std::vector<std::string>;
using Names = std::set<std::string>;

constexpr char kAskSync[] =
    "Sync Import Notes?? The current NoteBook is linked to an Online NoteBook, do you wish sync these import notes "
    "with the Online NoteBook?";

/// A note without what belongs to one NoteBook: ids and names of stored files.
std::string Portable(CNote note, const OpenNoteBook& book) {
    note.id = 1;
    std::string sources;
    LongList numbers;
    for (const int32_t id : note.sources) {
        const CSource* const source = book.sources.FindSourceByID(id);
        sources += source ? source->SourceGUID + source->FormattedText : "?";
        numbers.AddTail(static_cast<int32_t>(numbers.Count()) + 1);
    }
    note.sources = numbers;
    for (CAttachment& attachment : note.attachments) {
        attachment.storedFile = std::string(FileExtension(attachment.storedFile));
        if (attachment.type != kWebLink)
            attachment.sourceFile.clear();
    }
    for (CProCategoryTree& path : note.categories) {
        for (CProCategoryTree* node = &path; node; node = node->children.empty() ? nullptr : &node->children.front())
            node->id = node->parentID = 0;
    }
    return RecordOf(note) + sources;
}

class ImportNotesTest : public testing::Test {
protected:
    ImportNotesTest() {
        FillBook(from_);
        EXPECT_EQ(from_.Export(archive_, from_.Notes()), 2);
        from_.progress.messages.clear();
    }
    /// A record file that announces `count` notes.
    std::string Records(size_t count, const std::vector<ArchiveNote>& entries) const {
        RecordWriter stream;
        WriteArchiveHead(stream, DateTime(2026, 1, 1), static_cast<int32_t>(count));
        for (const ArchiveNote& entry : entries)
            WriteArchiveNote(stream, entry, from_.book.authors);
        return stream.DiskBytes();
    }
    /// The same as others write it: with plain notes behind what stands first.
    std::string PlainRecords(const std::vector<ArchiveNote>& first, const std::vector<CNote>& notes) const {
        RecordWriter stream;
        for (const CNote& note : notes)
            WriteNote(&stream, note);
        return Records(first.size() + notes.size(), first) + stream.DiskBytes();
    }
    ArchiveNote AllSources() { return MakeSourcesNote(from_.book.sources, from_.world.context.now); }
    void PutArchive(const std::string& records, const std::vector<RawEntry>& files = {}) {
        std::vector<RawEntry> entries = {File("folder\\_ExpNotes.dat", records)};
        entries.insert(entries.end(), files.begin(), files.end());
        PutBytes(archive_, RawZip(entries));
    }
    /// An archive of these notes with these files, and the sources of the exporting NoteBook.
    void MakeArchive(const std::vector<CNote>& notes, const std::vector<RawEntry>& files) {
        std::vector<ArchiveNote> entries;
        for (const CNote& note : notes)
            entries.push_back(MakeArchiveNote(note, from_.book.sources));
        PutArchive(Records(notes.size(), entries), files);
    }
    static RawEntry File(std::string name, std::string bytes) {
        RawEntry entry;
        entry.name = std::move(name);
        entry.bytes = std::move(bytes);
        return entry;
    }
    static CNote WithFile(int32_t id, const std::string& stored) {
        CNote note = DayNote(id);
        note.attachments.push_back({0, 1.0, "The file", stored, "/etc/passwd", 2, false});
        return note;
    }

    TempFolder folder_;
    std::filesystem::path archive_ = folder_ / "a.lbe";
    ExchangeBook from_, to_;
    TestChooser chooser_;
};

TEST_F(ImportNotesTest, OlderFormsDontTakeThePlaceOfManyNotesWithoutAQuestion) {
    struct Case {
        int older, all;
        bool asks;
    };
    for (const Case& c : {Case{2, 10, false}, Case{3, 10, true}, Case{1, 4, true}, Case{0, 1, false}}) {
        ExchangeBook book;
        std::vector<CNote> archived, stored;
        for (int i = 1; i <= c.all; ++i) {
            archived.push_back(DayNote(i, 5));
            stored.push_back(DayNote(i, 5));
            stored.back().dateEdited = i <= c.older ? DateTime(2030, 1, 1) : DateTime(2010, 1, 1);
        }
        EXPECT_EQ(from_.Export(archive_, archived), c.all);
        book.folder.Put("DAY01052020.dat", stored);
        book.Load();
        EXPECT_EQ(book.Import(archive_, chooser_).result, c.asks ? ImportOutcome::kNothing : c.all);
        EXPECT_EQ(book.prompts.seen.size(), c.asks ? 1u : 0u) << c.older << " of " << c.all;
        EXPECT_EQ(book.reloads, c.asks ? 0 : 1);
        if (!c.asks)
            continue;
        EXPECT_THAT(book.prompts.seen[0], testing::HasSubstr("*" + std::to_string(c.older) + "*  of the  *"));
        book.prompts.answers = {PromptAnswer::Yes};
        EXPECT_EQ(book.Import(archive_, chooser_).result, c.all);
    }
}

TEST_F(ImportNotesTest, AnEmptyNoteBookGetsTheSameNotes) {
    PutBytes(to_.Attachment("0000041.txt"), "there before");
    to_.counters.MaxNoteID = 500;
    const ImportOutcome outcome = to_.Import(archive_, chooser_);
    EXPECT_EQ(outcome.result, 2);
    EXPECT_EQ(to_.progress.steps, 4) << "each note is read, and brought in";
    EXPECT_EQ(outcome.ids, (LongList{501, 502}));
    EXPECT_EQ(chooser_.seen, (Lines{" 1. - <NEW NOTE>    ", " 2. - <NEW NOTE>    "}));
    EXPECT_EQ(to_.progress.messages, (Lines{"Decompressing export file...", "Reading in notes...",
                                            "Loading existing notes...(may take a few moments)",
                                            "Integrating notes into database...", "Cleaning up temp files..."}));
    EXPECT_EQ(to_.progress.shown, 0);
    EXPECT_TRUE(to_.prompts.seen.empty());
    EXPECT_TRUE(to_.faults.faults.empty());
    EXPECT_EQ(to_.reloads, 1);
    EXPECT_FALSE(std::filesystem::exists(to_.folder.data.ImportTemp()));
    const std::vector<CNote> before = from_.Notes(), after = to_.Notes();
    ASSERT_EQ(after.size(), 2u);
    for (size_t i = 0; i < 2; ++i)
        EXPECT_EQ(Portable(after[i], to_.book), Portable(before[i], from_.book)) << i;
    EXPECT_EQ(to_.AttachmentNames(), (Names{"0000041.txt", "0000042.txt", "0000043.png"}));
    EXPECT_EQ(BytesOf(to_.Attachment("0000043.png")), "a picture");
    EXPECT_EQ(to_.book.sources.Count(), 2u) << "only those that the notes name";
    EXPECT_EQ(to_.book.types.Count(), 1u);
    const CNote& full = after.back();
    EXPECT_EQ(to_.book.categories.FindByID(DeepestCategoryID(full.categories[0]))->name, "Lenses");
    EXPECT_TRUE(to_.book.categories.FindByID(DeepestCategoryID(full.categories[0]))->notes[0].Contains(full.id));
    EXPECT_TRUE(to_.book.sources.FindSourceByID(full.sources[0])->NoteIDs.Contains(full.id));
}

TEST_F(ImportNotesTest, TextsOverTheLimitStayBehindAndAreTold) {
    from_.book.sources.FindSourceByID(1011)->FieldTexts[1] = std::string(kMaxStringLength + 1, 'x');
    from_.book.sources.FindSourceByID(1013)->FieldTexts[1] = std::string(kMaxStringLength, 'x');
    CNote note = DayNote(9), other = DayNote(10);
    note.sources = {1011, 1013};
    note.sourceInfo = {{"{SOURCE 1013}", std::string(kMaxStringLength + 2, 'x')}, {"{Other}", "p. 7"}};
    other.sources = {1011};
    MakeArchive({note, other}, {});
    EXPECT_EQ(to_.Import(archive_, chooser_).result, 2);
    ASSERT_EQ(to_.faults.faults.size(), 2u) << "a source of two notes is told once";
    EXPECT_THAT(to_.faults.faults[0].what,
                testing::HasSubstr("The source 1011 was left out: its field FieldTexts holds a text of 500001 bytes"));
    EXPECT_THAT(to_.faults.faults[1].what, testing::HasSubstr("note 9 says of one of its sources was left out"));
    ASSERT_EQ(to_.book.sources.Count(), 1u);
    EXPECT_EQ(to_.book.sources[0].SourceGUID, "{SOURCE 1013}");
    EXPECT_EQ(to_.book.sources[0].NoteIDs.Count(), 1u);
    EXPECT_EQ(to_.book.notesWithoutSource.Count(), 1u);
    EXPECT_TRUE(CheckNoteBook(to_.folder.paths, to_.world.context, to_.faults).empty());
}

TEST_F(ImportNotesTest, ANoteWithATextOverTheLimitIsNoRow) {
    const std::string tooLong(kMaxStringLength + 1, 'x');
    const std::pair<const char*, std::function<void(CNote&)>> cases[] = {
        {"plain text", [&](CNote& note) { note.plainText = note.rtfText = tooLong; }},
        {"rich text", [&](CNote& note) { note.rtfText = tooLong; }},
        {"line of key words", [&](CNote& note) { note.keyWords = tooLong; }},
        {"GUID", [&](CNote& note) { note.guid = tooLong; }},
        {"category",
         [&](CNote& note) {
             note.categories[1] = PathOf({{3, "Lights"}, {4, tooLong}});
         }},
        {"name of an attachment", [&](CNote& note) {
             note.attachments = {{0, 1.0, tooLong, "", "http://a", 12, false}};
         }}};
    CNote other = DayNote(10);
    other.rtfText = std::string(kMaxStringLength, 'x');
    for (const auto& [name, spoil] : cases) {
        SCOPED_TRACE(name);
        ExchangeBook to;
        TestChooser chooser;
        CNote note = DayNote(9);
        spoil(note);
        MakeArchive({note, other}, {});
        EXPECT_EQ(to.Import(archive_, chooser).result, 1);
        EXPECT_EQ(chooser.seen.size(), 1u);
        ASSERT_EQ(to.faults.faults.size(), 1u);
        EXPECT_THAT(to.faults.faults[0].what,
                    testing::HasSubstr("Note 9 was left out: it has a " + std::string(name) + " of 500001 bytes"));
        EXPECT_TRUE(CheckNoteBook(to.folder.paths, to.world.context, to.faults).empty());
    }
}

TEST_F(ImportNotesTest, PlainRecordsLandWithTheSourcesThatTheSourcesNoteBrings) {
    for (const bool withSources : {false, true}) {
        SCOPED_TRACE(withSources);
        const std::vector<ArchiveNote> first(withSources ? 1 : 0, AllSources());
        PutArchive(PlainRecords(first, {FullNote(7), DayNote(8), SourceNote(9, {4711})}),
                   {File("0000001.png", "a picture")});
        ExchangeBook to;
        EXPECT_EQ(to.Import(archive_, chooser_).result, 3);
        EXPECT_EQ(to.book.sources.Count(), withSources ? 3u : 0u);
        EXPECT_EQ(to.book.notesWithoutSource.Count(), withSources ? 2u : 3u);
        EXPECT_EQ(to.AttachmentNames(), Names{"0000001.png"});
        ASSERT_EQ(to.faults.faults.size(), 1u);
        EXPECT_EQ(to.faults.faults[0].what,
                  std::string(withSources ? "1" : "2") + " notes of the archive come without sources that they name");
        for (const CNote& note : to.Notes()) {
            if (withSources && note.guid == FullNote(7).guid) {
                EXPECT_EQ(to.book.sources.FindSourceByID(note.sources[0])->SourceGUID, "{SOURCE 1011}");
            }
        }
    }
}

TEST_F(ImportNotesTest, ASourceThatManyPlainRecordsNameIsNotCopiedWithoutEnd) {
    CSource& source = *from_.book.sources.FindSourceByID(1011);
    for (size_t slot = 0; slot < 10; ++slot)
        source.FieldTexts[slot] = std::string(400'000, 'x');
    std::vector<CNote> notes;
    for (int32_t id = 1; id <= 40; ++id)
        notes.push_back(SourceNote(id, {1011}));
    PutArchive(PlainRecords({AllSources()}, notes));
    ImportArchive archive;
    ASSERT_TRUE(archive.Open(archive_, to_.faults).Ok());
    archive.ReadNotes(
        to_.world.context, to_.faults, [](int) {}, [] {});
    ASSERT_EQ(archive.notes.size(), 40u);
    EXPECT_EQ(archive.notes.front().sources.size(), 1u);
    EXPECT_TRUE(archive.notes.back().sources.empty());
    EXPECT_EQ(to_.faults.faults.size(), 1u);
}

TEST_F(ImportNotesTest, ItsOwnArchiveOffersNothingUnlessTheSameAreShown) {
    TestChooser same;
    same.change = [](ImportComparison& comparison) { EXPECT_TRUE(comparison.Shown().empty()); };
    EXPECT_EQ(from_.Import(archive_, same).result, 0);
    EXPECT_EQ(same.seen, (Lines{" 1. - EXISTS (same)  ", " 2. - EXISTS (same)  "}));
    EXPECT_EQ(from_.reloads, 0);
    const std::string before = BytesOf(from_.folder.paths.NoteFile("SRC0000001011.dat"));
    same.change = [](ImportComparison& comparison) {
        comparison.SetShowSame(true);
        const auto existing = comparison.Existing(1);
        ASSERT_TRUE(existing && existing->sources.size() == 2);
        EXPECT_EQ(existing->sources[0].EmbeddedAuthors.size(), 2u);
    };
    EXPECT_EQ(from_.Import(archive_, same).result, 2);
    EXPECT_EQ(from_.AttachmentNames(), (Names{"0000003.txt", "0000004.png"})) << "the old files went last";
    EXPECT_EQ(from_.Notes().size(), 2u);
    EXPECT_EQ(from_.Notes().back().id, 7);
    EXPECT_NE(BytesOf(from_.folder.paths.NoteFile("SRC0000001011.dat")), before) << "the name of its file is new";
    same.cancels = true;
    same.change = [&](ImportComparison& comparison) {
        std::filesystem::remove(from_.folder.paths.NoteFile("SRC0000001011.dat"));
        EXPECT_FALSE(comparison.Existing(1)) << "gone meanwhile";
    };
    EXPECT_EQ(from_.Import(archive_, same).result, 0);
}

TEST_F(ImportNotesTest, AReplacedNoteKeepsItsIdAndMovesWithItsFirstSource) {
    CNote moved = FullNote(7);
    moved.id = 99;
    moved.sources = {1012};
    moved.dateEdited = DateTime(2020, 2, 2);
    MakeArchive({moved}, {File("0000001.png", "a new picture")});
    const ImportOutcome outcome = from_.Import(archive_, chooser_);
    EXPECT_EQ(chooser_.seen, Lines{" 1. - EXISTS (newer)  "});
    EXPECT_EQ(outcome.ids, LongList{7});
    EXPECT_EQ(*from_.book.index.FindPath(7), from_.folder.paths.NoteFile("SRC0000001012.dat"));
    EXPECT_EQ(from_.book.TotalNoteCount(), 2u);
    EXPECT_TRUE(NotesOfFile(from_.folder.paths.NoteFile("SRC0000001011.dat"), from_.world.context).empty());
    EXPECT_EQ(from_.AttachmentNames(), (Names{"0000002.txt", "0000003.png"}));
    EXPECT_EQ(BytesOf(from_.Attachment("0000003.png")), "a new picture");
}

TEST_F(ImportNotesTest, AReplacedNoteLeavesWhatItSaysOfASourceThatTheOtherDoesntSpeakOf) {
    FillBook(to_);
    CNote existing = FullNote(7);
    existing.sourceInfo = {{"{SOURCE 1013}", "p. 9"}};
    to_.folder.Put("SRC0000001011.dat", {existing});
    to_.Load();
    chooser_.change = [](ImportComparison& comparison) { comparison.SetShowSame(true); };
    to_.Import(archive_, chooser_);
    for (const CNote& note : to_.Notes())
        EXPECT_TRUE(note.guid != existing.guid || note.sourceInfo.size() == 2) << note.sourceInfo.size();
}

TEST_F(ImportNotesTest, ACancelChangesNothing) {
    chooser_.cancels = true;
    const ImportOutcome outcome = to_.Import(archive_, chooser_);
    EXPECT_EQ(outcome.result, 0);
    EXPECT_EQ(to_.book.TotalNoteCount(), 0u);
    EXPECT_EQ(to_.reloads, 0);
    to_.Load();
    EXPECT_EQ(to_.book.sources.Count() + to_.book.authors.Count() + to_.book.types.Count(), 0u);
    TellImportResult(outcome, to_.prompts);
    EXPECT_TRUE(to_.prompts.seen.empty());
}

TEST_F(ImportNotesTest, RefusedArchivesSaySoAndChangeNothing) {
    struct Case {
        const char* what;
        std::function<void()> make;
        int result;
        std::string says;
    };
    const Case cases[] = {
        {"gone", [&] { std::filesystem::remove(archive_); }, -1, "No such file or directory"},
        {"no notes in it", [&] { PutBytes(archive_, RawZip({File("other.dat", "x")})); }, -1, "it holds no notes"},
        {"later version",
         [&] {
             PutArchive("0000000011.560001000" + Records(1, {{DayNote(1), {}}}).substr(20));
         },
         -2112, ""},
        {"records damaged",
         [&] {
             RawEntry records = File("_ExpNotes.dat", "x");
             records.wrongCrc = true;
             PutBytes(archive_, RawZip({records}));
         },
         -1, "CRC"},
        {"records too large",
         [&] {
             RawEntry records = File("_ExpNotes.dat", std::string(2'000'000, 'x'));
             records.method = 8;
             records.announced = int64_t{1} << 30;
             PutBytes(archive_, RawZip({records}));
         },
         -1, "a hundred times"},
    };
    to_.prompts.whileShown = [this] { EXPECT_EQ(to_.progress.shown, 0) << "after the message"; };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        c.make();
        to_.prompts.seen.clear();
        const ImportOutcome outcome = to_.Import(archive_, chooser_);
        EXPECT_EQ(outcome.result, c.result);
        EXPECT_TRUE(chooser_.seen.empty());
        EXPECT_EQ(to_.prompts.seen.size(), c.says.empty() ? 0u : 1u);
        if (!to_.prompts.seen.empty()) {
            const std::string& seen = to_.prompts.seen.front();
            EXPECT_EQ(seen.find("Archiving Error: The file " + archive_.string() + " can't be imported: "), 0u) << seen;
            EXPECT_NE(seen.find(c.says), std::string::npos) << seen;
        }
        EXPECT_EQ(to_.reloads, 0);
        EXPECT_FALSE(std::filesystem::exists(to_.folder.data.ImportTemp()));
        EXPECT_EQ(to_.progress.shown, 0);
    }
    to_.prompts.seen.clear();
    for (const auto& [result, reason] :
         {std::pair(-2112, ""), std::pair(-1, ""), std::pair(-1, "Why"), std::pair(12, "")})
        TellImportResult({result, {}, false, reason}, to_.prompts);
    EXPECT_EQ(
        to_.prompts.seen,
        (Lines{"Import Failed: The file you are trying to import was created in an updated version of Lorebinder, "
               "please go to \"Help->Check for program updates\" to download and install the latest version.",
               "Import Failed: The import has failed, the import file could be corrupt.",
               "Import Failed: The import has failed, the import file could be corrupt.\n\nWhy",
               "Finished!: All  *12*  of your notes have been successfully imported!"}));
}

TEST_F(ImportNotesTest, AttachmentsWithoutAWholeFileAreToldAndNameNothing) {
    RawEntry damaged = File("0000005.txt", "content");
    damaged.wrongCrc = true;
    MakeArchive({WithFile(1, "0000004.\xE9"), WithFile(2, "0000005.txt"), WithFile(3, "../../0000006.txt"),
                 WithFile(4, ""), WithFile(5, "0000007." + std::string(120, 'e'))},
                {damaged, File("gone/..", ""), File("..\\0000006.txt", "six"),
                 File("0000007." + std::string(120, 'e'), "seven")});
    EXPECT_EQ(to_.Import(archive_, chooser_).result, 5);
    const std::vector<CNote> notes = to_.Notes();
    Lines stored;
    for (const CNote& note : notes) {
        stored.push_back(note.attachments[0].storedFile);
        EXPECT_EQ(note.attachments[0].sourceFile, "") << "or the next save would take in a file of this machine";
        EXPECT_EQ(note.attachments[0].title, "The file");
    }
    EXPECT_EQ(stored, (Lines{"", "", "0000002.txt", "", "0000003."}));
    EXPECT_EQ(to_.AttachmentNames(), (Names{"0000002.txt", "0000003."}));
    ASSERT_EQ(to_.faults.faults.size(), 3u);
    EXPECT_EQ(to_.faults.faults[0].what, "The entry \"gone/..\" has no name that a file could have");
    EXPECT_EQ(to_.faults.faults[1].what, "The file of the attachment \"The file\" is missing in the archive");
    EXPECT_EQ(to_.faults.faults[1].path, "0000004.\xC3\xA9") << "in Unicode";
    EXPECT_NE(to_.faults.faults[2].reason.find("CRC"), std::string::npos) << to_.faults.faults[2].reason;
    EXPECT_EQ(to_.faults.faults[1].reason, "its note comes without it");
}

TEST_F(ImportNotesTest, AFileThatManyNotesNameIsNotUnpackedWithoutEnd) {
    std::vector<CNote> notes;
    for (int32_t id = 1; id <= 30; ++id)
        notes.push_back(WithFile(id, "0000001.txt"));
    MakeArchive(notes, {File("0000001.txt", std::string(1'000'000, 'x'))});
    EXPECT_EQ(to_.Import(archive_, chooser_).result, 30);
    const size_t copies = to_.AttachmentNames().size();
    EXPECT_GE(copies, 4u);
    EXPECT_LT(copies, 10u);
    EXPECT_EQ(to_.faults.faults.size(), 30 - copies);
}

TEST_F(ImportNotesTest, AFileThatTheArchiveLacksStaysWithTheExistingNote) {
    CNote note = from_.Notes().front();
    note.dateEdited = DateTime(2021, 1, 1);
    note.attachments.push_back(note.attachments[0]);
    note.attachments[1].title = "another file under its name";
    MakeArchive({note}, {});
    EXPECT_EQ(from_.Import(archive_, chooser_).result, 1);
    EXPECT_EQ(from_.Notes().front().attachments[1].storedFile, "");
    EXPECT_EQ(from_.Notes().front().attachments[0].storedFile, "0000002.txt");
    EXPECT_EQ(BytesOf(from_.Attachment("0000002.txt")).size(), 5000u);
}

TEST_F(ImportNotesTest, CategoriesAreMatchedByNameAndUnassignedOnesCount) {
    CNote lights = DayNote(1), unassigned = DayNote(2), nameless = DayNote(3);
    lights.categories[0] = PathOf({{900, "Lights"}, {901, "Towers"}});
    unassigned.categories[0] = PathOf({{kUnassignedID, "<UNASSIGNED>"}});
    unassigned.categories[1] = PathOf({{5, "<UNASSIGNED>"}, {6, "Below"}});
    nameless.categories[0] = PathOf({{4, ""}});
    MakeArchive({lights, unassigned, nameless}, {});
    const ImportOutcome outcome = from_.Import(archive_, chooser_);
    ASSERT_EQ(outcome.result, 3);
    const std::vector<CNote> notes = FindNotes(from_.book.index, outcome.ids, from_.world.context, from_.faults);
    EXPECT_EQ(notes[0].categories[0].id, 3);
    EXPECT_GT(notes[0].categories[0].children[0].id, 9);
    for (const CNote* note : {&notes[1], &notes[2]}) {
        for (const CProCategoryTree& path : note->categories)
            EXPECT_TRUE(path.IsEmptyPath());
    }
    CProCategoryList stored;
    stored.Load(from_.folder.paths.Categories());
    EXPECT_NE(stored.FindRootByName("Lights")->FindChildByName("Towers"), nullptr);
}

TEST_F(ImportNotesTest, ALinkedNoteBookAsksAndRecords) {
    SyncLog log;
    log.link.Linked = kStoredTrue;
    CSyncInfo known;
    known.NoteKey = FullNote(7).guid;
    known.OnlineNoteId = 77;
    known.Changed = false;
    log.Add(known);
    SaveSyncLogTo(from_.folder.paths.SyncLog(), log);
    from_.Load();
    chooser_.change = [](ImportComparison& comparison) { comparison.SetShowSame(true); };
    const std::string before = BytesOf(from_.folder.paths.SyncLog());
    EXPECT_EQ(from_.Import(archive_, chooser_).result, 2);
    EXPECT_EQ(from_.prompts.seen, Lines{kAskSync});
    EXPECT_EQ(BytesOf(from_.folder.paths.SyncLog()), before) << "the answer was No";
    from_.prompts.answers = {PromptAnswer::Yes};
    EXPECT_EQ(from_.Import(archive_, chooser_).result, 2);
    SyncLog after;
    LoadSyncLogFrom(from_.folder.paths.SyncLog(), after);
    ASSERT_EQ(after.Records().size(), 2u);
    for (const CSyncInfo& info : after.Records()) {
        const bool isFull = info.NoteKey == known.NoteKey;
        EXPECT_EQ(info.OnlineNoteId, isFull ? 77 : -1);
        EXPECT_EQ(info.NoteId, isFull ? 7 : 8);
        EXPECT_EQ(info.NoteFile, isFull ? "SRC0000001011.dat" : "DAY01012020.dat");
        EXPECT_EQ(info.SyncState, isFull ? -1 : kStoredTrue) << "what the user keeps out of sync stays there";
        EXPECT_TRUE(info.Changed);
        for (const DateTime& date :
             {info.Change1, info.Change2, info.SourcesChanged, info.KeyWordsChanged, info.CategoriesChanged})
            EXPECT_EQ(date, from_.world.context.nowUtc);
    }
}

TEST_F(ImportNotesTest, ListsThatCannotBeWrittenStopItBeforeAnyNote) {
    // A folder that isn't empty stands where the file should.
    for (const auto list : {&NoteBookPaths::Sources, &NoteBookPaths::Categories}) {
        ExchangeBook to;
        const std::filesystem::path path = (to.folder.paths.*list)();
        Block(path);
        to.faults.faults.clear();
        const ImportOutcome outcome = to.Import(archive_, chooser_);
        EXPECT_EQ(outcome.result, -1);
        EXPECT_THAT(outcome.reason, testing::HasSubstr("could not be written: " + path.string() + " ("));
        EXPECT_EQ(to.book.TotalNoteCount(), 0u);
        EXPECT_TRUE(to.AttachmentNames().empty());
        ASSERT_FALSE(to.faults.faults.empty());
        EXPECT_NE(to.faults.faults[0].what.find("could not be written"), std::string::npos);
    }
}

TEST_F(ImportNotesTest, NothingIsImportedUnlessAllNotesOfTheNoteBookCouldBeRead) {
    ASSERT_EQ(to_.Import(archive_, chooser_).result, 2);
    const std::filesystem::path file = *to_.book.index.FindPath(to_.Notes().back().id);
    struct Case {
        bool duringTheLoad, duringTheImport;
    };
    for (const Case& unread : {Case{false, true}, Case{true, true}, Case{true, false}}) {
        SCOPED_TRACE(testing::Message() << unread.duringTheLoad << unread.duringTheImport);
        Unreadable nobody(file);
        if (unread.duringTheLoad)
            to_.Load();
        if (!unread.duringTheImport)
            nobody.End();
        to_.faults.faults.clear();
        chooser_.seen.clear();
        const ImportOutcome outcome = to_.Import(archive_, chooser_);
        EXPECT_EQ(outcome.result, -1);
        EXPECT_THAT(outcome.reason, testing::HasSubstr("(not all notes of the NoteBook could be read"));
        EXPECT_TRUE(chooser_.seen.empty());
        EXPECT_TRUE(std::any_of(to_.faults.faults.begin(), to_.faults.faults.end(),
                                [](const Fault& fault) { return fault.what == "The notes could not be imported"; }));
        if (unread.duringTheImport)
            nobody.End();
        else
            EXPECT_EQ(to_.book.TotalNoteCount(), 2u) << "the next try knows them all";
        to_.Load();
        EXPECT_EQ(to_.book.TotalNoteCount(), 2u);
    }
    to_.faults.faults.clear();
    chooser_.change = [](ImportComparison& comparison) { comparison.SetShowSame(true); };
    EXPECT_EQ(to_.Import(archive_, chooser_).result, 2);
    EXPECT_EQ(to_.book.TotalNoteCount(), 2u);
    EXPECT_TRUE(to_.faults.faults.empty());
}

TEST_F(ImportNotesTest, FilesOfANoteThatFailsGoAndNoneGetsTheNumberOfAFileThatANoteNames) {
    CNote other = DayNote(30, 3);
    other.attachments.push_back({0, 1.0, "Lost", "0000001.txt", "", 2, false});
    for (const bool isNamed : {false, true}) {
        ExchangeBook to;
        // A folder stands where the first note belongs.
        std::filesystem::create_directories(to.folder.paths.NoteFile("DAY01012020.dat"));
        if (isNamed)
            to.folder.Put(GetNoteFileName(other), {other});
        to.Load();
        EXPECT_EQ(to.Import(archive_, chooser_).result, 1);
        EXPECT_EQ(to.AttachmentNames(), Names{isNamed ? "0000003.png" : "0000002.png"});
    }
}

TEST_F(ImportNotesTest, ASourceWithoutANumberIsLeftOut) {
    ArchiveNote entry = MakeArchiveNote(FullNote(7), from_.book.sources);
    entry.sources[0].SourceID = 0;
    PutArchive(Records(1, {entry}));
    EXPECT_EQ(to_.Import(archive_, chooser_).result, 1);
    EXPECT_EQ(to_.book.sources.Count(), 1u);
    EXPECT_EQ(to_.Notes()[0].sources.Count(), 1u);
}

TEST_F(ImportNotesTest, ARecordFileThatIsReadOnlyInPartIsTold) {
    const std::vector<ArchiveNote> both = {{DayNote(1), {}}, {DayNote(2), {}}};
    const std::vector<ArchiveNote> all = {AllSources(), both[0], both[1]};
    const size_t cut = Records(3, all).size() - Records(2, both).size() / 3;
    const std::string more = " notes; what stands after them was not taken: it holds more than it announces";
    const struct {
        const char* what;
        std::string bytes;
        int notes;
        std::string says;
    } cases[] = {
        {"whole", Records(2, both), 2, ""},
        {"whole with its sources note", Records(3, all), 2, ""},
        {"whole with records that are no notes", Records(3, {{DayNote(-1), {}}, both[0], {DayNote(0), {}}}), 1, ""},
        {"cut in the second note", Records(3, all).substr(0, cut), 1, "1 of 2 notes: it breaks off"},
        {"its last byte cut", Records(2, both).substr(0, Records(2, both).size() - 1), 1,
         "1 of 2 notes: it breaks off"},
        {"cut between the notes", Records(2, {both[0]}), 1, "1 of 2 notes: it breaks off"},
        {"an end mark", Records(2, {both[0]}) + "\x1a" + Records(2, {both[1]}), 1, "1 of 2 notes: it breaks off"},
        {"holds more", Records(1, both), 1, "The archive announces 1" + more},
        {"a byte more", Records(2, both) + "x", 2, "The archive announces 2" + more},
        {"nothing", "", 0, "0 of 0 notes: it breaks off"},
        {"cut in the head", Records(2, both).substr(0, 10), 0, "0 of 0 notes: it breaks off"},
        {"a count that no file holds", Records(2'000'000'000, {both[0]}), 1, "1 of 2000000000 notes: it breaks off"},
        {"a count below 0", Records(static_cast<size_t>(-5), both), 0, "The archive announces 0" + more},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        ExchangeBook to;
        PutArchive(c.bytes);
        EXPECT_EQ(to.Import(archive_, chooser_).result, c.notes);
        ASSERT_EQ(to.faults.faults.size(), c.says.empty() ? 0u : 1u);
        if (c.says.empty())
            continue;
        const Fault& fault = to.faults.faults[0];
        EXPECT_EQ(ReplaceAll(fault.what, " notes of the archive could be read", " notes") + ": " + fault.reason,
                  c.says);
        EXPECT_EQ(fault.path, archive_.string());
    }
}

TEST_F(ImportNotesTest, WhatWouldPackToNextToNothingComesBackFromOurArchives) {
    std::vector<CNote> notes;
    std::vector<ArchiveNote> entries;
    for (int32_t id = 1; id <= 90; ++id) {
        notes.push_back(DayNote(id));
        notes.back().rtfText = "{\\rtf1{\\pict " + std::string(480'000, 'f') + "} " + std::to_string(id) + "}";
        entries.push_back({notes.back(), {}});
    }
    // Packed as well as it can be, hundreds of times smaller than what it holds.
    RawEntry records = File("_ExpNotes.dat", Records(90, entries));
    records.deflated = true;
    ASSERT_GT(records.bytes.size(), Deflated(records.bytes).size() * 300);
    PutBytes(archive_, RawZip({records}));
    ExchangeBook first, second;
    EXPECT_EQ(first.Import(archive_, chooser_).result, -1) << "it may be made to fill the memory";
    EXPECT_EQ(first.Export(archive_, notes), 90);
    EXPECT_EQ(second.Import(archive_, chooser_).result, 90);
    EXPECT_EQ(second.Notes().front().rtfText, notes.front().rtfText);
    EXPECT_TRUE(second.prompts.seen.empty());
}

TEST_F(ImportNotesTest, ARecordThatAnotherHidesIsNotReplacedBySomeNote) {
    CNote shown = DayNote(5), hidden = DayNote(5), incoming = DayNote(1), behind = DayNote(6);
    shown.guid = "{SHOWN}";
    shown.rtfText = "{\\rtf1 shown}";
    hidden.guid = incoming.guid = "{HIDDEN}";
    shown.dateEdited = DateTime(2012, 1, 1);
    incoming.dateEdited = DateTime(2020, 1, 1);
    incoming.rtfText = "{\\rtf1 incoming}";
    behind.guid = "{BEHIND}";
    CNote newer = behind;
    newer.dateEdited = DateTime(2021, 1, 1);
    MakeArchive({incoming, newer}, {});
    for (const int year : {2011, 2013}) {
        hidden.dateEdited = DateTime(year, 1, 1);
        ExchangeBook to;
        to.folder.Put("DAY01012020.dat", {shown, hidden, behind});
        to.Load();
        CNote unknown = DayNote(99);  // another program has put it there
        unknown.guid = newer.guid;
        unknown.rtfText = "{\\rtf1 unknown}";
        to.folder.Put("DAY01012020.dat", {unknown, shown, hidden, behind});
        TestChooser chooser;
        EXPECT_EQ(to.Import(archive_, chooser).result, 2);
        EXPECT_EQ(chooser.seen, (Lines{" 1. - <NEW NOTE>    ", " 2. - EXISTS (newer)  "}));
        EXPECT_THAT(Each(to.Notes(), &CNote::rtfText),
                    testing::UnorderedElementsAre(unknown.rtfText, shown.rtfText, incoming.rtfText, newer.rtfText));
    }
}

TEST(AskForArchive, TakesOneFile) {
    ScriptedPrompts prompts;
    EXPECT_FALSE(AskForArchive(prompts));
    prompts.openPaths = {"/a.lbe"};
    EXPECT_EQ(AskForArchive(prompts), "/a.lbe");
    EXPECT_EQ(prompts.seen.back(), "Import Notes? open Lorebinder Export Files (*.lbe) |*.lbe|");
}

}  // namespace
}  // namespace lore
