#include "app/sample_notebook.h"

#include <algorithm>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <set>

#include "app/sample_builder.h"
#include "app/sample_files.h"
#include "app/sample_note.h"
#include "base/text.h"
#include "calendar/event_file.h"
#include "notes/note_file.h"
#include "notes/note_finder.h"
#include "notes/note_record.h"
#include "rtf/rtf.h"
#include "support/read_world.h"
#include "support/scripted_ports.h"

namespace lore {
namespace {

namespace fs = std::filesystem;

/// A data folder and what was loaded from it.
struct SampleWorld {
    SampleResult Make() { return MakeSampleNoteBook(data, "{LOCAL}", counters, world.context, faults); }
    NoteBookPaths Main() const { return {data, kMainNoteBookFolder}; }

    /// Loads a NoteBook as the program does, but changes nothing; `notes` are whole.
    void Load(const CDatabase& database) {
        book = OpenNoteBook::At(data, database);
        IdCounters loadCounters = counters;
        LoadOptions options;
        options.mode = LoadMode::ReadOnly;
        LoadNoteBook(book, loadCounters, world.context, faults, options);
        notes = FindNotes(book.index, book.index.AllIDs(), world.context, faults);
    }

    TempFolder folder;
    ReadWorld world;
    NotedFaults faults;
    DataPaths data{folder.Path()};
    IdCounters counters{1000, 1, 3};
    OpenNoteBook book;
    std::vector<CNote> notes;
};

/// Starts with an empty data folder.
class SampleNoteBook : public testing::Test, protected SampleWorld {};

/// The sample, made and loaded once for tests that only read.
class LoadedSample : public testing::Test {
protected:
    static void SetUpTestSuite() {
        made = std::make_unique<SampleWorld>();
        made->Load(made->Make().database);
    }
    static void TearDownTestSuite() { made.reset(); }

    static inline std::unique_ptr<SampleWorld> made;
    OpenNoteBook& book = made->book;
    const std::vector<CNote>& notes = made->notes;
};

TEST_F(SampleNoteBook, FillsAnEmptyMainNoteBook) {
    const SampleResult result = Make();
    ASSERT_TRUE(result.made);
    EXPECT_TRUE(result.database.IsMain());
    EXPECT_FALSE(fs::exists(data.DatabasesFile()));
    Load(result.database);
    EXPECT_TRUE(faults.faults.empty());
    EXPECT_EQ(notes.size(), result.notes);
    EXPECT_EQ(book.TotalNoteCount(), result.notes);
    EXPECT_GE(result.notes, 60u);
    EXPECT_EQ(result.events, 24u);
    EXPECT_EQ(book.sources.Count(), 25u);
    EXPECT_EQ(result.sources, 25u);
    EXPECT_EQ(book.types.Count(), 2u);
    EXPECT_EQ(book.authors.Count(), result.authors);
    EXPECT_GE(book.colors.Entries().size(), 6u);
    LongList shown;
    LoadLongListFile(shown, book.paths.LastViewList());
    ASSERT_EQ(shown.Count(), result.notes);
    EXPECT_EQ(shown[0], 1001);
    EXPECT_EQ(counters.MaxNoteID, 1000 + static_cast<int>(result.notes));
}

TEST_F(LoadedSample, StoresEveryNoteWhereItBelongsWithBothTextsAlike) {
    std::set<std::string> guids;
    for (const CNote& note : notes) {
        EXPECT_TRUE(fs::exists(book.paths.NoteFile(GetNoteFileName(note)))) << note.id;
        EXPECT_EQ(note.plainText, FromUtf8(WithCrLf(PlainText(note.rtfText)))) << note.id;
        EXPECT_FALSE(note.plainText.empty() || note.plainText.ends_with('\n')) << note.id;
        EXPECT_LT(note.rtfText.size(), kMaxStringLength);
        EXPECT_TRUE(note.dateCreated.IsValid() && note.dateEdited.IsValid()) << note.id;
        EXPECT_GE(note.dateEdited.Seconds(), note.dateCreated.Seconds()) << note.plainText;
        EXPECT_NE(note.borderColor, 0u) << note.plainText;
        EXPECT_TRUE(guids.insert(note.guid).second) << note.id;
    }
}

TEST_F(LoadedSample, LosesNothingThatItsFilesName) {
    IdCounters counters;
    EXPECT_TRUE(BuildSampleContent(counters, made->world.context).bibliography.leftOut.empty());
    std::vector<SampleNote> written;
    for (const SampleFile& file : SampleFiles())
        if (file.name.ends_with(".note"))
            for (SampleNote& note : ParseSampleNotes(file.bytes))
                written.push_back(std::move(note));
    ASSERT_EQ(notes.size(), written.size());
    for (const SampleNote& want : written) {
        const auto got = std::ranges::find_if(
            notes, [&](const CNote& note) { return ToUtf8(note.plainText).starts_with(want.title + "\r\n"); });
        ASSERT_NE(got, notes.end()) << want.title;
        EXPECT_EQ(got->sources.Count(), want.sources.size()) << want.title;
        EXPECT_EQ(got->attachments.size(), want.attachments.size()) << want.title;
        for (int set = 0; set < kSetCount; ++set)
            EXPECT_EQ(got->categories[set].IsEmptyPath(), want.categories[set].empty()) << want.title;
        size_t pictures = 0;
        for (size_t at = want.text.find("!["); at != std::string::npos; at = want.text.find("![", at + 1))
            ++pictures;
        EXPECT_EQ(ReadRtf(got->rtfText).pictures.size(), pictures) << want.title;
    }
}

TEST_F(SampleNoteBook, GoesIntoNewNoteBooksWhileTheMainOneIsInUse) {
    Make();
    const auto before = FilesBelow(data.root);
    const SampleResult second = Make();
    const SampleResult third = Make();
    ASSERT_TRUE(second.made && third.made);
    EXPECT_EQ(second.database.name, "Lighthouses (sample)");
    EXPECT_EQ(second.database.folder, "DB000002");
    EXPECT_EQ(third.database.folder, "DB000003");
    EXPECT_NE(second.database.guid, third.database.guid);
    EXPECT_EQ(second.events + second.reminders, 0u);
    std::vector<CDatabase> list;
    LoadDatabases(data.DatabasesFile(), world.context, list);
    ASSERT_EQ(list.size(), 2u);
    EXPECT_EQ(list[1].guid, third.database.guid);
    const auto after = FilesBelow(data.root);
    for (const auto& [path, bytes] : before)
        EXPECT_TRUE(after.at(path) == bytes) << path;
    Load(third.database);
    EXPECT_EQ(notes.size(), third.notes);
    EXPECT_EQ(notes.size() * 3, static_cast<size_t>(counters.MaxNoteID - 1000));
}

TEST_F(SampleNoteBook, TakesANumberBehindAllFoldersWithThoseOfDeletedNoteBooks) {
    for (const char* const name : {"DB000007", "_DELETED_DB000009"})
        fs::create_directories(data.Databases() / name);
    fs::create_directories(Main().Notes());
    std::ofstream(Main().NoteFile("DAY01012024.dat")) << "x";
    EXPECT_EQ(Make().database.id, 10);
}

TEST_F(SampleNoteBook, LeavesAMainNoteBookAloneThatHoldsAnything) {
    const auto writeBytes = [](const fs::path& path) {
        fs::create_directories(path.parent_path());
        std::ofstream(path) << "something";
    };
    AuthorList authors;
    authors.AddAuthor({4, "A", "", "B", {}, {}});
    CProCategoryList forest;
    forest.AddRoot(CProCategoryTree(5, "kept"));
    const std::function<void()> kFillings[] = {
        [&] { writeBytes(Main().NoteFile("DAY01012024.dat")); },
        [&] { writeBytes(Main().Attachments() / "0000001.txt"); },
        [&] { writeBytes(Main().SyncLog()); },
        [&] { authors.SaveAuthors(Main().Authors()); },
        [&] { forest.Save(Main().Categories()); },
        [&] { fs::create_directories(Main().Sources()); },
        [&] { writeBytes(Main().Authors()); },
        [&] { writeBytes(Main().Categories()); },
    };
    for (const auto& fill : kFillings) {
        fs::remove_all(data.DataFiles());
        fs::create_directories(Main().Folder());
        EXPECT_TRUE(IsMainNoteBookEmpty(data, world.context));
        fill();
        EXPECT_FALSE(IsMainNoteBookEmpty(data, world.context)) << &fill - kFillings;
    }
    EXPECT_FALSE(Make().database.IsMain());
}

TEST_F(SampleNoteBook, KeepsACalendarThatHoldsSomething) {
    fs::create_directories(data.DataFiles());
    EventList events{NewEvent(world.context)};
    WriteEvents(data.Events(), events);
    const std::string before = BytesOf(data.Events());
    const SampleResult result = Make();
    EXPECT_TRUE(result.made);
    EXPECT_EQ(result.events, 0u);
    EXPECT_EQ(BytesOf(data.Events()), before);
    EXPECT_FALSE(fs::exists(data.Reminders()));
}

TEST_F(SampleNoteBook, TellsWhatItCannotWrite) {
    std::ofstream(data.DataFiles()) << "a file where the folder should be";
    EXPECT_FALSE(Make().made);
    EXPECT_FALSE(faults.faults.empty());
}

TEST_F(SampleNoteBook, ListsNothingBesideAListThatItCannotRead) {
    Make();
    fs::create_directories(data.DatabasesFile());
    EXPECT_FALSE(Make().made);
    EXPECT_EQ(faults.faults.size(), 1u);
    EXPECT_FALSE(fs::exists(data.Databases() / "DB000002"));
}

}  // namespace
}  // namespace lore
