#include "notebooks/backup.h"

#include "exchange/archive_notes.h"
#include "exchange/zip_reader.h"
#include "notebooks/backup_comparison.h"
#include "notebooks/backup_file.h"
#include "notebooks/notebooks_world.h"
#include "support/matchers.h"

namespace lore {
namespace {

constexpr char kQuestion[] = "< Auto-Backup >? Do you wish to perform the auto-backup now?";
constexpr char kFailed[] = "Backup Failed: The backup has failed, please contact support if problem persists.";

/// A world with three NoteBooks: "The sis" with two notes and an attachment, an empty one, and the main one with one.
struct BackupTest : NoteBooksWorld, testing::Test {
    Settings settings;
    int saves = 0;
    CDatabase thesis, empty;

    BackupTest() {
        CNote note = DayNote(1);
        note.plainText = "One\r\nline";
        note.attachments.push_back({0, 1.0, "A lamp", "0000001.png", "", 1, true});
        CNote withoutGuid = DayNote(2, 5);
        withoutGuid.guid.clear();
        thesis = Add("The sis", 7, {note, withoutGuid});
        PutBytes(PathsOf(thesis).Attachments() / "0000001.png", "picture");
        empty = Add("Empty one", 9);
        PutNotes(main, {DayNote(3)});
        settings.Set(Option::LocalGUID, main.guid);
        settings.Set(Option::EnableBackup, 1);
        settings.Set(Option::BackupPath, (folder / "notes.lbe").string());
        context.now = DateTime(2011, 7, 12, 10, 0, 0);
    }
    BackupJob Job() {
        return {data, settings, context, {prompts, progress, faults}, [this] { ++saves; }};
    }
    std::set<std::string> Files() const {
        std::set<std::string> names = NamesIn(folder.Path());
        std::erase_if(names, [this](const std::string& name) { return std::filesystem::is_directory(folder / name); });
        return names;
    }
    void RunAuto(bool fromMenu, PromptAnswer answer = PromptAnswer::Yes) {
        prompts.seen.clear();
        prompts.answers = {answer};
        fromMenu ? RunAutoBackup(Job()) : AutoBackupAtClose(Job(), true);
    }
    void RunAutoOn(int day) {
        context.now = DateTime(2011, 7, day, 10, 0, 0);
        RunAuto(true);
    }
};

TEST(BackupFileName, GetsNameAndDateBeforeTheLastPoint) {
    const std::tuple<std::string, std::string, std::string, std::string> cases[] = {
        {"/Keep/notes.lbe", "The sis", "_(07-12-11)", "/Keep/notes[Thesis]_(07-12-11).lbe"},
        {"/Keep/notes.lbe", " a  b ", "", "/Keep/notes[ab].lbe"},
        {"/Ke.ep/notes", "Thesis", "_(07-12-11)", "/Ke.ep/notes"},
        {"notes.2011.lbe", "Thesis", "", "notes.2011[Thesis].lbe"},
        {"/Keep/notes.lbe", "in/out", "", "/Keep/notes[in_out].lbe"},
        {"/Keep/.lbe", "Thesis", "", "/Keep/[Thesis].lbe"}};
    for (const auto& [path, name, date, file] : cases)
        EXPECT_EQ(BackupFileName(path, name, date), file);
    EXPECT_EQ(BackupFileName("/Keep/notes.lbe", "The sis", "_(07-12-11)", "DB000008"),
              "/Keep/notes[Thesis DB000008]_(07-12-11).lbe");
    EXPECT_EQ(BackupFileName("/Ke.ep/notes", "a/b", "", "D/8"), "/Ke.ep/notes[a_b D_8]");
}

TEST_F(BackupTest, PathTestLeavesWhatStandsThere) {
    PutBytes(folder / "real", "a backup");
    PutBytes(folder / "void", "");
    for (const auto& path : {folder / "real", folder / "void", folder / "new.lbe"})
        EXPECT_TRUE(IsWritablePath(path)) << path;
    for (const std::filesystem::path& path : {folder / "none" / "new.lbe", folder.Path(), {}, {"/dev/null"}})
        EXPECT_FALSE(IsWritablePath(path)) << path;
    std::filesystem::create_symlink("behind", folder / "link");
    EXPECT_TRUE(IsWritablePath(folder / "link"));
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "link"));
    std::filesystem::remove(folder / "link");
    EXPECT_THAT(Files(), ElementsAre("real"));
    EXPECT_EQ(BytesOf(folder / "real"), "a backup");
}

TEST_F(BackupTest, AllNoteBooksGetAFileEachTheMainOneLastAndEmptyOnesNone) {
    prompts.savePaths = {(folder / "notes.lbe").string()};
    BackupAllNoteBooks(Job());
    EXPECT_THAT(
        progress.messages,
        ElementsAre("Loading *The sis* NoteBook for backup.....", "Exporting notes...", "Compressing export file...",
                    "Loading *Empty one* NoteBook for backup.....", "Loading *LorebinderMain* NoteBook for backup.....",
                    "Exporting notes...", "Compressing export file..."));
    EXPECT_THAT(prompts.seen,
                ElementsAre("Backup All NoteBooks? save Lorebinder Export Files (*.lbe) |*.lbe| []",
                            "Finished!: All  3  NoteBooks and  all  *3*  of your notes have been successfully backed "
                            "up!"));
    EXPECT_THAT(Files(), ElementsAre("notes[LorebinderMain].lbe", "notes[Thesis].lbe"));
    EXPECT_EQ(Stored()[0].extra, "");
    EXPECT_EQ(saves, 0);
}

TEST_F(BackupTest, CurrentNoteBookIsBackedUpWholeWithItsSources) {
    prompts.savePaths = {(folder / "one.lbe").string()};
    CSource source;
    source.SourceID = 1001;
    source.SourceGUID = "{S1}";
    PutSources(PathsOf(thesis), {source});
    BackupCurrentNoteBook(thesis, Job());
    EXPECT_THAT(progress.messages.front(), "Loading notes...(may take a few moments)");
    EXPECT_EQ(prompts.seen.back(), "Finished!: All  *2*  of your notes have been successfully backed up!");
    ZipReader zip;
    ASSERT_TRUE(zip.Open(folder / "one.lbe").Ok());
    std::string bytes;
    ASSERT_TRUE(zip.Read(*zip.Find("_ExpNotes.dat"), bytes).Ok());
    ArchiveNoteReader reader(context);
    reader.OpenBytes(bytes);
    for (ArchiveNote entry; reader.Next(entry);)
        EXPECT_TRUE(entry.note.id == 1 || entry.note.id == 2);
    EXPECT_EQ(reader.Count(), 3);
    ASSERT_TRUE(reader.SourcesNote()) << "sources without notes come back too";
    EXPECT_EQ(reader.SourcesNote()->sources.at(0).SourceGUID, "{S1}");
}

TEST_F(BackupTest, EmptyNoteBookAndACancelledDialogSayNothing) {
    BackupCurrentNoteBook(thesis, Job());
    BackupAllNoteBooks(Job());
    prompts.savePaths = {(folder / "one.lbe").string()};
    prompts.seen.clear();
    BackupCurrentNoteBook(empty, Job());
    EXPECT_EQ(prompts.seen.size(), 1u);
    EXPECT_THAT(Files(), IsEmpty());
}

TEST_F(BackupTest, AutoBackupComesAtEachNthClose) {
    settings.Set(Option::BkUseTimes, 3);
    std::vector<size_t> asked;
    for (int close = 1; close <= 7; ++close) {
        RunAuto(false, close == 3 ? PromptAnswer::No : PromptAnswer::Yes);
        asked.push_back(prompts.seen.size());
        if (close == 4) {
            RunAuto(true);
            EXPECT_THAT(prompts.seen, ElementsAre(kQuestion,
                                                  "Finished!: All  3  NoteBooks and  all  *3*  of your notes have been "
                                                  "successfully backed up!"));
        }
    }
    EXPECT_THAT(asked, ElementsAre(0, 0, 1, 0, 0, 1, 0)) << "a closing backup says nothing when done";
    EXPECT_EQ(settings.Int(Option::BkUseCount), 1);
}

TEST_F(BackupTest, AnAutoBackupStaysDueWhereNobodyCanBeAsked) {
    settings.Set(Option::BkUseTimes, 2);
    prompts.seen.clear();
    for (int close = 1; close <= 3; ++close)
        AutoBackupAtClose(Job(), false);
    EXPECT_THAT(prompts.seen, IsEmpty());
    RunAuto(false);
    EXPECT_THAT(prompts.seen, ElementsAre(kQuestion));
    EXPECT_EQ(settings.Int(Option::BkUseCount), 0);
}

TEST_F(BackupTest, AutoBackupRemembersItsFilesAndDeletesThoseOfLastTime) {
    RunAuto(true);
    EXPECT_THAT(Files(), ElementsAre("notes[LorebinderMain]_(07-12-11).lbe", "notes[Thesis]_(07-12-11).lbe"));
    EXPECT_EQ(Stored()[0].extra, (folder / "notes[Thesis]_(07-12-11).lbe").string());
    EXPECT_EQ(Stored()[1].extra, "");
    EXPECT_EQ(settings.Text(Option::PrevBackupPath), (folder / "notes[LorebinderMain]_(07-12-11).lbe").string());
    EXPECT_EQ(saves, 1);
    RunAuto(true);
    EXPECT_EQ(Files().size(), 2u) << "the same day's files are replaced, not deleted";
    // A NoteBook that has lost its notes keeps its backup.
    std::filesystem::remove_all(PathsOf(thesis).Notes());
    RunAutoOn(13);
    EXPECT_THAT(Files(), ElementsAre("notes[LorebinderMain]_(07-13-11).lbe", "notes[Thesis]_(07-12-11).lbe"));
    settings.Set(Option::OverwriteBkup, 0);
    RunAutoOn(14);
    EXPECT_THAT(Files(), Contains("notes[LorebinderMain]_(07-13-11).lbe"));
}

TEST_F(BackupTest, NoteBooksWhoseNamesGiveOneFileGetOneEach) {
    Add("tHes is", 8, {DayNote(4)});
    Add("LorebinderMain", 10, {DayNote(5)});
    Add("Empty One", 11, {DayNote(6)});
    const auto files = [](const std::string& date) {
        return testing::ElementsAre("notes[EmptyOne Folder11]" + date, "notes[LorebinderMain _LBMAIN_]" + date,
                                    "notes[LorebinderMain]" + date, "notes[Thesis]" + date,
                                    "notes[tHesis Folder8]" + date);
    };
    RunAuto(true);
    EXPECT_THAT(Files(), files("_(07-12-11).lbe")) << "an empty NoteBook holds its name";
    EXPECT_EQ(settings.Text(Option::PrevBackupPath),
              (folder / "notes[LorebinderMain _LBMAIN_]_(07-12-11).lbe").string());
    RunAuto(true);
    EXPECT_THAT(Files(), files("_(07-12-11).lbe"));
    RunAutoOn(13);
    EXPECT_THAT(Files(), files("_(07-13-11).lbe"));
}

TEST_F(BackupTest, FileThatIsTheBackupOfAnotherNoteBookStays) {
    RunAuto(true);
    auto list = Stored();
    list[1].extra = list[0].extra;
    SaveDatabases(data.DatabasesFile(), list);
    std::filesystem::remove_all(PathsOf(thesis).Notes());
    PutNotes(empty, {DayNote(4)});
    RunAutoOn(13);
    EXPECT_THAT(Files(), ElementsAre("notes[Emptyone]_(07-13-11).lbe", "notes[LorebinderMain]_(07-13-11).lbe",
                                     "notes[Thesis]_(07-12-11).lbe"));
}

TEST_F(BackupTest, FileThatIsNoBackupIsNeverDeleted) {
    PutBytes(folder / "thesis.odt", "years of work");
    auto list = Stored();
    list[0].extra = (folder / "thesis.odt").string();
    SaveDatabases(data.DatabasesFile(), list);
    RunAuto(true);
    EXPECT_THAT(Files(), Contains("thesis.odt"));
}

TEST_F(BackupTest, AnAutoBackupThatIsOffOrHasAnInvalidPathIsSaidAndNothingIsBackedUp) {
    settings.Set(Option::EnableBackup, 0);
    RunAuto(true);
    EXPECT_THAT(prompts.seen, ElementsAre("Auto-Backup Disabled: Your auto-backup is not enabled, please go to "
                                          "Options->Auto-Backup to set it up."));
    settings.Set(Option::BackupPath, (folder / "none" / "notes.lbe").string());
    RunAuto(false, PromptAnswer::Yes);
    EXPECT_THAT(prompts.seen, ElementsAre(kQuestion,
                                          "Backup Failed: The backup file path is invalid.  Please go to "
                                          "Options and set a new Auto-Backup file path."));
}

TEST_F(BackupTest, FailedBackupsKeepWhatThereWas) {
    RunAuto(true);
    const std::string before = BytesOf(folder / "notes[Thesis]_(07-12-11).lbe");
    // Folders in the places of the new files.
    for (const char* name : {"notes[Thesis]_(07-13-11).lbe", "notes[LorebinderMain]_(07-13-11).lbe"})
        std::filesystem::create_directories(folder / name / "held");
    RunAutoOn(13);
    EXPECT_EQ(prompts.seen.size(), 4u);
    EXPECT_TRUE(prompts.seen[1].starts_with("Archiving Error: "));
    EXPECT_EQ(prompts.seen.back(), kFailed);
    EXPECT_EQ(BytesOf(folder / "notes[Thesis]_(07-12-11).lbe"), before);
    EXPECT_EQ(Stored()[0].extra, (folder / "notes[Thesis]_(07-12-11).lbe").string());
    EXPECT_EQ(Files().size(), 2u) << "nothing unfinished is left";
}

TEST_F(BackupTest, AMissingAttachmentFileIsToldEachTimeAndTheEarlierBackupThatHasItStays) {
    RunAuto(true);
    const auto first = folder / "notes[Thesis]_(07-12-11).lbe", one = folder / "one.lbe";
    std::filesystem::copy_file(first, one);
    std::filesystem::remove(PathsOf(thesis).Attachments() / "0000001.png");
    for (const int day : {13, 14, 14}) {
        faults.faults.clear();
        RunAutoOn(day);
        const std::string date = "_(07-" + std::to_string(day) + "-11).lbe";
        EXPECT_THAT(Files(), ElementsAre("notes[LorebinderMain]" + date, first.filename().string(),
                                         "notes[Thesis]" + date, "one.lbe"));
        EXPECT_EQ(faults.faults.size(), 1u);
    }
    for (int run = 0; run < 2; ++run)
        EXPECT_EQ(BackUpNoteBook(thesis, one, Job()).notes, 2);
    EXPECT_EQ(BytesOf(one.string() + ".kept"), BytesOf(first)) << "once, when there was something to keep";
    EXPECT_FALSE(std::filesystem::exists(one.string() + ".2.kept"));
}

TEST_F(BackupTest, BackupOfADamagedNoteBookIsToldAndKeepsTheEarlierOne) {
    ASSERT_EQ(BackUpNoteBook(thesis, folder / "one.lbe", Job()).notes, 2);
    EXPECT_THAT(faults.faults, IsEmpty());
    const std::string good = BytesOf(folder / "one.lbe");
    const std::filesystem::path file = PathsOf(thesis).NoteFile("DAY01052020.dat"),
                                first = PathsOf(thesis).NoteFile("DAY01012020.dat");
    const std::string whole = BytesOf(file);
    std::string counted = whole, ended = whole, numberless = whole;
    counted[35] = '0';
    ended[40] = '\x1A';
    numberless[36] = '-';
    const std::string damages[] = {
        whole.substr(0, 300), "", std::string(whole.size(), '\0'), counted, ended, numberless};
    for (const std::string& damaged : damages) {
        PutBytes(folder / "one.lbe", good);
        std::filesystem::remove(folder / "one.lbe.kept");
        PutBytes(file, damaged);
        faults.faults.clear();
        EXPECT_GE(BackUpNoteBook(thesis, folder / "one.lbe", Job()).notes, 1) << damaged;
        EXPECT_EQ(faults.faults.size(), 2u) << damaged;
        EXPECT_TRUE(BytesOf(folder / "one.lbe.kept") == good) << damaged;
        EXPECT_TRUE(IsExportArchive(folder / "one.lbe")) << damaged;
    }
    PutBytes(folder / "one.lbe", good);
    PutBytes(first, "");
    faults.faults.clear();
    EXPECT_EQ(BackUpNoteBook(thesis, folder / "one.lbe", Job()).notes, 0) << "none is left";
    EXPECT_EQ(faults.faults.size(), 2u);
    EXPECT_TRUE(BytesOf(folder / "one.lbe") == good);
}

TEST_F(BackupTest, AutoBackupOfADamagedNoteBookLeavesTheOneOfLastTime) {
    RunAuto(true);
    PutBytes(PathsOf(thesis).NoteFile("DAY01052020.dat"), "");
    RunAutoOn(13);
    EXPECT_THAT(Files(), ElementsAre("notes[LorebinderMain]_(07-13-11).lbe", "notes[Thesis]_(07-12-11).lbe",
                                     "notes[Thesis]_(07-13-11).lbe"));
}

TEST_F(BackupTest, ComparisonFindsEachKindOfDifference) {
    PutNotes(thesis, {DayNote(2, 5)});
    const OpenNoteBook book = Open(thesis);
    const ExportJob job{book, data, context, {prompts, progress, faults}};
    const ExportedNotes notes = NotesOfNoteBook(book, context, faults);
    ASSERT_EQ(ExportNotes(notes, folder / "good.lbe", ExportedSources::All, job).notes, 2);
    std::vector<std::string> lacking;
    const auto compares = [&](const std::string& name) {
        return CompareBackup(folder / name, notes, 2, job, lacking).Ok();
    };
    EXPECT_TRUE(compares("good.lbe"));
    EXPECT_FALSE(compares("none.lbe"));
    const std::string good = BytesOf(folder / "good.lbe");
    for (size_t position = 40; position < good.size() / 2; position += 61) {
        std::string bad = good;
        bad[position] = static_cast<char>(bad[position] ^ 4);
        PutBytes(folder / "bad.lbe", bad);
        EXPECT_FALSE(compares("bad.lbe")) << position;
    }
    const auto picture = PathsOf(thesis).Attachments() / "0000001.png";
    for (const char* other : {"pictura", "picture and more", "pict"}) {
        PutBytes(picture, other);
        EXPECT_FALSE(compares("good.lbe")) << other;
    }
    PutBytes(picture, "picture");
    EXPECT_TRUE(compares("good.lbe"));
    PutNotes(thesis, {WithKeyWords(DayNote(2, 5), "fog")});
    EXPECT_FALSE(compares("good.lbe"));
}

}  // namespace
}  // namespace lore
