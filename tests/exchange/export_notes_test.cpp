#include "exchange/export_notes.h"

#include <gmock/gmock.h>

#include "exchange/archive_notes.h"
#include "exchange/exchange_world.h"
#include "exchange/zip_reader.h"

namespace lore {
namespace {

using Lines = std::vector<std::string>;

class ExportNotesTest : public testing::Test {
protected:
    ExportNotesTest() { FillBook(made_); }
    std::string Unpacked(const std::string& name) {
        ZipReader reader;
        EXPECT_TRUE(reader.Open(target_).Ok());
        const ZipItem* const item = reader.Find(name);
        std::string bytes;
        return item && reader.Read(*item, bytes).Ok() ? bytes : "(not there)";
    }
    Lines Names() {
        ZipReader reader;
        EXPECT_TRUE(reader.Open(target_).Ok());
        return Each(reader.Items(), &ZipItem::rawName);
    }
    /// The record file as it must stand, note by note.
    std::string Expected(const std::vector<CNote>& notes, bool allSources) {
        RecordWriter stream;
        WriteArchiveHead(stream, made_.world.context.now, static_cast<int32_t>(notes.size()) + (allSources ? 1 : 0));
        if (allSources)
            WriteArchiveNote(stream, MakeSourcesNote(made_.book.sources, made_.world.context.now), made_.book.authors);
        for (const CNote& note : notes)
            WriteArchiveNote(stream, MakeArchiveNote(note, made_.book.sources), made_.book.authors);
        return stream.DiskBytes();
    }

    ExchangeBook made_;
    TempFolder folder_;
    std::filesystem::path target_ = folder_ / "Lights.lbe";
};

TEST_F(ExportNotesTest, HoldsRecordsAndFilesFlatAndCleansUp) {
    const std::vector<CNote> notes = made_.Notes();
    ASSERT_EQ(notes.size(), 2u);
    EXPECT_EQ(made_.Export(target_, notes), 2);
    EXPECT_EQ(Names(), (Lines{"_ExpNotes.dat", "0000002.txt", "0000001.png"}));
    EXPECT_EQ(Unpacked("_ExpNotes.dat"), Expected(notes, false));
    EXPECT_EQ(Unpacked("0000001.png"), "a picture");
    EXPECT_EQ(made_.progress.messages, (Lines{"Exporting notes...", "Compressing export file..."}));
    EXPECT_EQ(made_.progress.shown, 0);
    EXPECT_TRUE(made_.prompts.seen.empty());
    EXPECT_TRUE(made_.faults.faults.empty());
    EXPECT_TRUE(std::filesystem::is_empty(made_.folder.data.ExportTemp()));
}

TEST_F(ExportNotesTest, CarriesAllSourcesOnlyWhenAsked) {
    const std::vector<CNote> notes = {made_.Notes().front()};
    EXPECT_EQ(made_.Export(target_, notes, ExportedSources::All), 1);
    EXPECT_EQ(Unpacked("_ExpNotes.dat"), Expected(notes, true));
    // More than is held of what was written before.
    for (const int32_t id : {1011, 1012})
        made_.book.sources.FindSourceByID(id)->FieldTexts[1] = std::string(9'000'000, 'x');
    const std::vector<CNote> large = {SourceNote(1, {1011, 1012}), SourceNote(2, {1012})};
    EXPECT_EQ(made_.Export(target_, large), 2);
    EXPECT_TRUE(Unpacked("_ExpNotes.dat") == Expected(large, false));
}

TEST_F(ExportNotesTest, StreamsAWholeNoteBookInLoadingOrder) {
    std::vector<CNote> many;
    for (int32_t id = 100; id < 900; ++id) {
        many.push_back(SourceNote(id, {1012, 1011}));
        many.back().rtfText = "{\\rtf1 note " + std::to_string(id) + std::string(2000, 'x') + "}";
    }
    made_.folder.Put("SRC0000001012.dat", many);
    made_.Load();
    const ExportedNotes notes = NotesOfNoteBook(made_.book, made_.world.context, made_.faults);
    EXPECT_EQ(notes.count, 802u);
    EXPECT_EQ(ExportNotes(notes, target_, ExportedSources::OfNotes, made_.ForExport()).notes, 802);
    EXPECT_EQ(Unpacked("_ExpNotes.dat"), Expected(made_.Notes(), false));
    CNoteList list;
    for (const CNote& note : made_.Notes())
        list.AddNote(note);
    const int steps = std::exchange(made_.progress.steps, 0);
    EXPECT_EQ(ExportNotes(NotesOfList(list), target_, ExportedSources::OfNotes, made_.ForExport()).notes, 802);
    EXPECT_EQ(steps, made_.progress.steps);
    EXPECT_GE(steps, 802);
    EXPECT_EQ(Unpacked("_ExpNotes.dat"), Expected(made_.Notes(), false));
}

TEST_F(ExportNotesTest, AFileOfNotesThatCantBeReadIsToldOnce) {
    const std::filesystem::path file = made_.folder.paths.NoteFile("DAY01012020.dat");
    const std::string whole = BytesOf(file);
    const std::tuple<std::function<void()>, int, const char*> cases[] = {
        {[&] { PutBytes(file, whole.substr(0, whole.size() / 2)); }, 2, "it is short or damaged"},
        {[&] { std::filesystem::remove(file); }, 1, "No such file or directory"},
        {[&] { Block(file); }, 1, "Is a directory"}};
    for (const auto& [spoil, count, says] : cases) {
        made_.faults.faults.clear();
        spoil();
        const ExportedNotes notes = NotesOfNoteBook(made_.book, made_.world.context, made_.faults);
        for (int i = 0; i < 2; ++i)
            EXPECT_EQ(ExportNotes(notes, target_, ExportedSources::OfNotes, made_.ForExport()).notes, count);
        ASSERT_EQ(made_.faults.faults.size(), 1u) << says;
        EXPECT_EQ(made_.faults.faults[0].path + made_.faults.faults[0].reason, file.string() + says);
    }
}

TEST_F(ExportNotesTest, TellsOfFilesThatAreMissingAndSharesThoseNamedTwice) {
    std::vector<CNote> notes = {DayNote(20), DayNote(21)};
    const char* const names[] = {"0000001.png",   "0000001.PNG",  "0000009.txt", "0000003.12:30", "../../secret.txt",
                                 "_expnotes.DAT", "0000004.x\ny", "c:4.txt",     "0000005.\xE9",  "0000005.\xC3\xA9"};
    for (CNote& note : notes) {
        for (const char* name : names)
            note.attachments.push_back({0, 1.0, "T", name, "", 1, true});
    }
    PutBytes(made_.Attachment("0000001.PNG"), "other");
    PutBytes(made_.Attachment("_expnotes.DAT"), "a trap");
    for (const char* name : {"0000003.12:30", "0000004.x\ny", "c:4.txt", "0000005.\xE9", "0000005.\xC3\xA9"})
        PutBytes(made_.Attachment(name), name);
    PutBytes(made_.folder.paths.Folder() / "secret.txt", "not an attachment");
    std::filesystem::create_directory(made_.Attachment("secret.txt"));
    EXPECT_EQ(made_.Export(target_, notes), 2);
    EXPECT_EQ(Names(), (Lines{"_ExpNotes.dat", "0000001.png", "0000001.PNG", "0000003.12:30", "0000005.\xC3\xA9"}));
    EXPECT_EQ(Unpacked("0000001.png"), "a picture");
    EXPECT_EQ(Unpacked("0000001.PNG"), "other");
    EXPECT_EQ(Unpacked("0000003.12:30"), "0000003.12:30");
    const auto text = [](const Fault& fault) {
        return std::filesystem::path(fault.path).filename().string() + ": " + fault.reason;
    };
    EXPECT_EQ(Each(made_.faults.faults, text),
              (Lines{"0000009.txt: No such file or directory", "secret.txt: No such file or directory",
                     "_expnotes.DAT: File exists", "0000004.x\ny: Invalid argument", "c:4.txt: Invalid argument",
                     "0000005.\xC3\xA9: File exists"}));
}

TEST_F(ExportNotesTest, GivesZeroForNothingAndAfterACancel) {
    PutBytes(target_, "old");
    EXPECT_EQ(made_.Export(target_, {}), 0);
    EXPECT_TRUE(made_.progress.messages.empty());
    struct Cancelling : ScriptedProgress {
        bool Cancelled() const override { return true; }
    } cancelling;
    const std::vector<CNote> notes = made_.Notes();
    const ExportJob job{made_.book, made_.folder.data, made_.world.context, {made_.prompts, cancelling, made_.faults}};
    for (const ExportedNotes& stopped :
         {NotesOfList(notes), NotesOfNoteBook(made_.book, made_.world.context, made_.faults)})
        EXPECT_EQ(ExportNotes(stopped, target_, ExportedSources::OfNotes, job).kind, ArchiveOutcome::Kind::Cancelled);
    made_.prompts.savePaths = {target_.string()};
    RunExportCommand(NotesOfList(notes), ExportScope::Chosen, job);
    EXPECT_EQ(BytesOf(target_), "old");
    EXPECT_EQ(made_.prompts.seen.size(), 1u) << "the question for the file";
    EXPECT_EQ(cancelling.shown, 0);
}

TEST_F(ExportNotesTest, ShowsTheReasonOfAFailureAndKeepsTheOldFile) {
    const std::filesystem::path nowhere = folder_ / "none" / "x.lbe";
    EXPECT_EQ(made_.Export(nowhere, made_.Notes()), -1);
    EXPECT_EQ(made_.prompts.seen, (Lines{"Archiving Error: " + nowhere.string() + ": No such file or directory"}));
    // What a crash has left doesn't stand in the way.
    PutBytes(made_.folder.data.ExportTemp(), "left");
    EXPECT_EQ(made_.Export(target_, made_.Notes()), 2);
    std::filesystem::remove_all(made_.folder.data.DataFiles());
    PutBytes(made_.folder.data.DataFiles(), "no folder");
    const std::string old = BytesOf(target_);
    EXPECT_EQ(made_.Export(target_, {DayNote(1)}), -1);
    EXPECT_EQ(BytesOf(target_), old);
    EXPECT_EQ(made_.prompts.seen.size(), 2u);
}

TEST_F(ExportNotesTest, NoNameOfATargetReachesAnythingElse) {
    std::filesystem::create_directories(folder_ / "held" / "in it");
    const auto all = [&] { return FilesBelow(made_.folder.data.root); };
    const auto before = all();
    const std::vector<CNote> notes = made_.Notes();
    // What is absolute takes the place of the folder.
    const std::string note = made_.folder.paths.NoteFile("DAY01012020.dat"), tooLong(300, 'n');
    for (const char* const name :
         {"", "..", "../..", "held", "held/.", "held/", "none/..", "none/.", "none/", note.c_str(), tooLong.c_str()}) {
        made_.prompts.seen.clear();
        EXPECT_EQ(made_.Export(folder_ / name, notes), -1) << name;
        EXPECT_EQ(made_.prompts.seen.size(), 1u) << name;
        EXPECT_TRUE(all() == before) << name;
    }
    for (const char* const name : {"...", "...lbe", "..lbe", ".lbe", "a..", "_LBMAIN_.lbe", "Databases"}) {
        EXPECT_EQ(made_.Export(folder_ / name, notes), 2) << name;
        EXPECT_TRUE(std::filesystem::is_regular_file(folder_ / name)) << name;
        EXPECT_TRUE(all() == before) << name;
    }
    EXPECT_EQ(made_.Export({}, notes), -1) << "no name at all";
    EXPECT_TRUE(std::filesystem::exists(folder_ / "held" / "in it"));
}

TEST_F(ExportNotesTest, TakesTheRecordThatShowsOfANoteThatStandsTwiceInItsFile) {
    CNote older = DayNote(8), newer = DayNote(8);
    newer.dateEdited = DateTime(2021, 1, 1);
    older.keyWords = "older";
    newer.keyWords = "newer";
    for (const auto& held :
         {std::vector<CNote>{older, DayNote(9), newer}, std::vector<CNote>{newer, older, DayNote(9)}}) {
        made_.folder.Put("DAY01012020.dat", held);
        made_.Load();
        const ExportedNotes notes = NotesOfNoteBook(made_.book, made_.world.context, made_.faults);
        EXPECT_EQ(ExportNotes(notes, target_, ExportedSources::OfNotes, made_.ForExport()).notes, 3);
        EXPECT_EQ(Unpacked("_ExpNotes.dat"), Expected(made_.Notes(), false));
        EXPECT_EQ(made_.Notes().front().keyWords, held.front().keyWords);
    }
    EXPECT_TRUE(made_.faults.faults.empty());
    std::filesystem::remove(made_.folder.paths.NoteFile("DAY01012020.dat"));
    const ExportedNotes left = NotesOfNoteBook(made_.book, made_.world.context, made_.faults);
    EXPECT_EQ(ExportNotes(left, target_, ExportedSources::OfNotes, made_.ForExport()).notes, 1);
}

TEST_F(ExportNotesTest, CommandsSpeakTheirTexts) {
    const std::string asked = "Export Notes? save Lorebinder Export Files (*.lbe) |*.lbe| []";
    const std::string place = folder_.Path().string();
    const std::string failed = "Export Failed: The export has failed, please contact support if problem persists.";
    const struct {
        size_t notes;
        std::string path;
        ExportScope scope;
        Lines seen;
    } cases[] = {{0, "", ExportScope::CurrentList, {"Invalid Notes: There are no notes in the current list."}},
                 {2, "", ExportScope::CurrentList, {asked}},
                 {2,
                  target_.string(),
                  ExportScope::CurrentList,
                  {asked, "Finished!: All  *2*  of your current notes have been successfully exported!"}},
                 {1,
                  target_.string(),
                  ExportScope::Chosen,
                  {asked, "Finished!: Your  *1*  notes have been successfully exported!"}},
                 {1, place, ExportScope::Chosen, {asked, "Archiving Error: " + place + ": Is a directory", failed}}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.seen.back());
        made_.prompts.seen.clear();
        if (!c.path.empty())
            made_.prompts.savePaths = {c.path};
        std::vector<CNote> notes = made_.Notes();
        notes.resize(c.notes);
        RunExportCommand(NotesOfList(notes), c.scope, made_.ForExport());
        EXPECT_EQ(made_.prompts.seen, c.seen);
        if (c.path == target_) {
            EXPECT_EQ(Unpacked("_ExpNotes.dat"), Expected(notes, false));
        }
    }
}

}  // namespace
}  // namespace lore
