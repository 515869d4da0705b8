#include "notes/note_book_loader.h"

#include <tuple>

#include "bibliography/source_builder.h"
#include "bibliography/source_record.h"
#include "notes/note_builder.h"
#include "notes/note_cleaner.h"
#include "notes/notebook_lists.h"
#include "support/each.h"
#include "support/matchers.h"

namespace lore {
namespace {

/// A NoteBook on disk that is loaded again and again.
class NoteBookLoader : public NoteBookTest {
protected:
    LoadReport Load(LoadOptions options = {}) { return LoadNoteBook(book, counters, world.context, faults, options); }
    static LoadOptions ReadOnly() {
        LoadOptions options;
        options.mode = LoadMode::ReadOnly;
        return options;
    }
    void PutSources(const std::vector<int32_t>& ids) {
        lore::PutSources(disk.paths,
                         Each(ids, [](int32_t id) { return TitledSource(id, "Title " + std::to_string(id)); }));
    }
    void PutCategories() {
        lore::PutCategories(disk.paths, {PathOf({{3, "Lights"}, {4, "Lenses"}}), PathOf({{9, "Places"}})});
    }
    std::map<std::string, std::string> AllBytes() const { return FilesBelow(disk.folder.Path()); }
    std::vector<std::string> KeyWords() const { return Each(book.keyWords.Entries(), &CKeyWord::name); }
    static std::vector<int32_t> Ids(const LoadReport& report) { return Each(report.shown, &ShownNote::id); }

    IdCounters counters;
};

TEST_F(NoteBookLoader, EmptyNoteBookHasNoNotesAndMovesEveryCounter) {
    counters = {10, 20, 30};
    Load();
    EXPECT_EQ(book.TotalNoteCount(), 0u);
    EXPECT_EQ(counters.MaxNoteID, 11);
    EXPECT_EQ(counters.MaxAuthorID, 21);
    EXPECT_EQ(counters.MaxCategoryID, 32) << "once for the new file of categories, once for the load";
    Load();
    EXPECT_EQ(counters.MaxNoteID, 12);
    EXPECT_TRUE(faults.faults.empty());
}

TEST_F(NoteBookLoader, BuildsThePictureFromTheNotes) {
    PutSources({1011, 1013});
    PutCategories();
    CNote full = FullNote(50);
    full.borderColor = MakeRgb(200, 0, 0);
    CNote near = DayNote(7);
    near.borderColor = MakeRgb(204, 3, 1);
    near.keyWords = "lamp";
    near.categories[1] = PathOf({{77, "Unknown"}});
    disk.Put("SRC0000001011.dat", {full});
    disk.Put("DAY01012020.dat", {near, DayNote(8)});
    disk.Put("SRC0000000099.dat", {SourceNote(9, {99})});
    PutBytes(disk.paths.NoteFile("backup.dat.old"), NoteFileBytes(std::vector<CNote>{DayNote(90)}));
    PutBytes(disk.paths.NoteFile("xdat"), NoteFileBytes(std::vector<CNote>{DayNote(91)}));

    const LoadReport report = Load();
    EXPECT_THAT(report.files, ElementsAre("DAY01012020.dat", "SRC0000000099.dat", "SRC0000001011.dat", "xdat"));
    EXPECT_THAT(Ids(report), ElementsAre(7, 8, 9, 50, 91));
    EXPECT_EQ(book.TotalNoteCount(), 5u);
    EXPECT_EQ(*book.index.FindPath(9), disk.paths.NoteFile("SRC0000000099.dat").string());
    EXPECT_THAT(book.notesWithoutSource.Values(), ElementsAre(7, 8, 9, 91));
    for (const int32_t id : {1011, 1013})
        EXPECT_THAT(book.sources.FindSourceByID(id)->NoteIDs.Values(), ElementsAre(50)) << id;
    for (const auto& [id, set] : {std::pair(3, 0u), {4, 0u}, {9, 2u}})
        EXPECT_THAT(book.categories.FindByID(id)->notes[set].Values(), ElementsAre(50)) << id;
    EXPECT_THAT(book.categories.FindByID(kUnassignedID)->notes[1].Values(), ElementsAre(8, 9, 50, 91));
    EXPECT_THAT(KeyWords(), ElementsAre("fog \xFC", "Fresnel", "lamp"));
    EXPECT_THAT(book.keyWords.FindByName("lamp")->notes.Values(), ElementsAre(7, 50));
    ASSERT_EQ(book.colors.Count(), 2u);
    EXPECT_EQ(book.colors.Entries()[0].color, MakeRgb(204, 3, 1));
    EXPECT_THAT(book.colors.Entries()[0].notes.Values(), ElementsAre(7, 50));
    EXPECT_EQ(counters.MaxNoteID, 92);
    EXPECT_EQ(counters.MaxCategoryID, 10);
}

TEST_F(NoteBookLoader, NoteThatStandsTwiceShowsFromItsHomeElseTheFirstMet) {
    disk.Put("a.dat", {WithKeyWords(SourceNote(1, {1011}), "stray"), WithKeyWords(DayNote(2), "first")});
    disk.Put("SRC0000001011.dat", {WithKeyWords(SourceNote(1, {1011}), "home"), SourceNote(1, {1011})});
    disk.Put("b.dat", {WithKeyWords(DayNote(2), "second"), DayNote(3), DayNote(3)});
    const LoadReport report = Load();
    EXPECT_THAT(Ids(report), ElementsAre(1, 2, 3));
    EXPECT_THAT(KeyWords(), ElementsAre("first", "home"));
    EXPECT_EQ(book.TotalNoteCount(), 3u);
    EXPECT_EQ(*book.index.FindPath(1), disk.paths.NoteFile("SRC0000001011.dat").string());
    EXPECT_EQ(*book.index.FindPath(2), disk.paths.NoteFile("a.dat").string());

    const std::vector<CNote> found = FindNotes(book.index, {2, 1}, world.context, faults);
    EXPECT_THAT(Each(found, &CNote::keyWords), ElementsAre("first", "home"));
    EXPECT_EQ(CountNotes(disk.paths.Notes(), world.context, faults), 3u);
}

TEST_F(NoteBookLoader, NoteThatCouldNotLeaveItsOldFileShowsAsItWasWrittenLast) {
    CNote before = SourceNote(1, {1011}), after = SourceNote(1, {2022});
    before.dateEdited = DateTime(2026, 3, 1, 10, 0, 0);
    after.dateEdited = DateTime(2026, 3, 1, 10, 0, 1);
    for (const bool moved : {true, false}) {  // to a file behind its old one, and back
        (moved ? before : after).sources = {1011};
        (moved ? after : before).sources = {2022};
        disk.Put("SRC0000001011.dat", {moved ? before : after});
        disk.Put("SRC0000002022.dat", {moved ? after : before});
        Load();
        EXPECT_EQ(*book.index.FindPath(1),
                  disk.paths.NoteFile(moved ? "SRC0000002022.dat" : "SRC0000001011.dat").string());
        EXPECT_THAT(Each(FindNotes(book.index, {1}, world.context, faults), &CNote::dateEdited),
                    ElementsAre(after.dateEdited));
    }
}

TEST_F(NoteBookLoader, LoadForOneNoteFindsItsCopiesAndWritesWhatAWholeLoadWrites) {
    const auto fill = [&] {
        std::filesystem::remove(disk.paths.Categories());
        PutSources({1011});
        disk.Put("a.dat", {SourceNote(1, {1011}), DayNote(2)});
        disk.Put("b.dat", {DayNote(2), DayNote(77)});
        disk.Put("SRC0000001011.dat", {SourceNote(1, {1011})});
        counters = {};
    };
    fill();
    Load();
    const auto bytes = AllBytes();
    const IdCounters moved = counters;
    for (const std::unordered_set<int32_t>& only : std::vector<std::unordered_set<int32_t>>{{}, {1}, {1, 2}, {99}}) {
        fill();
        LoadOptions options;
        options.only = only;
        const LoadReport report = Load(options);
        EXPECT_EQ(AllBytes(), bytes);
        EXPECT_EQ(std::tie(counters.MaxNoteID, counters.MaxAuthorID, counters.MaxCategoryID),
                  std::tie(moved.MaxNoteID, moved.MaxAuthorID, moved.MaxCategoryID));
        EXPECT_EQ(book.index.Count(), only.contains(99) ? 0 : only.size());
        EXPECT_EQ(report.shown.size(), book.index.Count());
        int last = 76;
        EXPECT_EQ(book.index.GiveID(last), 1001) << "77 is there, listed or not";
        if (only.contains(1)) {
            EXPECT_EQ(*book.index.FindPath(1), disk.paths.NoteFile("SRC0000001011.dat").string());
            EXPECT_THAT(book.index.HiddenPaths(1), ElementsAre(disk.paths.NoteFile("a.dat").string()));
        }
    }
}

TEST_F(NoteBookLoader, ReadOnlyLoadChangesNothingAndBuildsTheForestThatAFullLoadWrites) {
    CNote first = DayNote(4);
    first.categories[0] = PathOf({{-1, "Old"}, {-1, "Path"}});
    CNote second = DayNote(5);
    second.categories[1] = PathOf({{-1, "Old"}});
    disk.Put("DAY01012020.dat", {first, second});
    PutBytes(disk.paths.EmptyCategories(2),
             RawRecord().Real(11.0).Int(1).Int(1).Int(0).Text("Empty").Text("<UNASSIGNED>").Bytes());
    PutBytes(disk.paths.NoteFile("DAY02022020.dat"), RawRecord().Real(11.56).Int(0).Bytes());
    PutBytes(disk.paths.Sources(), RawRecord().Real(11.0).Int(0).Bytes());
    counters = {10, 20, 40};
    const auto before = AllBytes();
    EXPECT_TRUE(Load(ReadOnly()).converted);
    EXPECT_EQ(AllBytes(), before);
    EXPECT_EQ(counters.MaxNoteID + counters.MaxAuthorID + counters.MaxCategoryID, 70);
    RecordWriter readOnly;
    book.categories.Write(&readOnly);
    const LongList path = book.categories.FindRootByName("Old")->FindChildByName("Path")->notes[0];
    Load();
    RecordWriter full;
    book.categories.Write(&full);
    EXPECT_EQ(readOnly.Logical(), full.Logical());
    EXPECT_EQ(path, LongList({4}));
    EXPECT_EQ(book.categories.FindRootByName("Old")->FindChildByName("Path")->notes[0], LongList({4}));
    EXPECT_THAT(book.categories.FindRootByName("Old")->notes[1].Values(), ElementsAre(5));
    EXPECT_NE(book.categories.FindRootByName("Empty"), nullptr);
    const int after = counters.MaxCategoryID;
    EXPECT_EQ(book.categories.HighestID() + 2, after) << "once for the conversion, once for the load";
}

TEST_F(NoteBookLoader, SourcesAreWrittenBackOnlyIfNothingIsMissing) {
    PutSources({1011});
    SourceList sources;
    sources.LoadSources(disk.paths.Sources(), world.context);
    sources[0].AuthorIDs = {5};
    RecordWriter writer;
    WriteFixedDouble(&writer, kDataVersion);
    WriteFixedInt(&writer, 1);
    WriteSource(&writer, sources[0]);
    const std::string withAuthor = writer.DiskBytes();

    PutBytes(disk.paths.Sources(), withAuthor);
    PutBytes(disk.paths.Authors(), RawRecord().Real(11.56).Int(3).Bytes());
    Load();
    EXPECT_EQ(BytesOf(disk.paths.Sources()), withAuthor);
    // What is written later has to take them out: the file with the ids is kept beside, once, whatever is written
    // first.
    EXPECT_TRUE(WriteAuthors(book, faults) && WriteSources(book, faults) && WriteSources(book, faults));
    EXPECT_EQ(BytesOf(disk.paths.Sources().string() + ".kept"), withAuthor);
    EXPECT_FALSE(std::filesystem::exists(disk.paths.Sources().string() + ".2.kept"));
    std::filesystem::remove(disk.paths.Sources().string() + ".kept");
    PutBytes(disk.paths.Sources(), withAuthor);
    std::filesystem::remove(disk.paths.Authors());
    EXPECT_THAT(Load().damaged, ElementsAre("Authors.dat"));
    EXPECT_EQ(BytesOf(disk.paths.Sources()), withAuthor);
    EXPECT_TRUE(WriteAuthors(book, faults)) << "the next load finds authors that lack those of the source";
    EXPECT_EQ(BytesOf(disk.paths.Sources().string() + ".kept"), withAuthor);
    EXPECT_THAT(Load().damaged, IsEmpty());
    std::filesystem::remove(disk.paths.Sources());
    PutBytes(disk.paths.Authors(), RawRecord().Real(11.56).Int(3).Bytes());
    Load();
    EXPECT_TRUE(WriteSources(book, faults));
    std::filesystem::remove(disk.paths.Sources());
    disk.Put("SRC0000001011.dat", {SourceNote(1, {1011})});
    EXPECT_THAT(Load().damaged, ElementsAre("Authors.dat", "Sources.dat"));
    EXPECT_FALSE(book.sources.ReadWhole() || std::filesystem::exists(disk.paths.Sources()));
    EXPECT_EQ(book.sources.NewSourceID(), 1012);
    PutBytes(disk.paths.Sources(), withAuthor);
    PutBytes(disk.paths.Authors(), RawRecord().Real(11.56).Int(0).Bytes());
    Load();
    EXPECT_NE(BytesOf(disk.paths.Sources()), withAuthor);
    const std::string cut = withAuthor.substr(0, withAuthor.size() - 40);
    PutBytes(disk.paths.Sources(), cut);
    Load();
    EXPECT_EQ(BytesOf(disk.paths.Sources()), cut);
    EXPECT_THAT(Each(faults.faults, &Fault::what),
                ElementsAre("The list of authors is damaged; what it held is kept in Authors.dat.kept",
                            "The list of sources is damaged; what it held is kept in Sources.dat.kept",
                            "The list of sources is damaged; what it held is kept in Sources.dat.kept"))
        << "of what was written";
}

TEST_F(NoteBookLoader, DatesThatAreOnlyTextsAreKeptOnceBeforeTheSourcesAreWrittenBack) {
    const std::filesystem::path kept = disk.paths.Sources().string() + ".kept";
    for (const char* const date : {"1998", "Spring 1998"}) {
        const std::string old = RawRecord().Real(0.95).Int(1).Add(1011, "", date, "Title", "", "", "").Bytes();
        PutBytes(disk.paths.Sources(), old);
        EXPECT_THAT(Load().damaged, IsEmpty());
        EXPECT_NE(BytesOf(disk.paths.Sources()), old);
        EXPECT_EQ(BytesOf(kept), std::string_view(date) == "1998" ? "" : old) << date;
    }
    std::filesystem::remove(kept);
    EXPECT_TRUE(WriteSources(book, faults));
    Load();
    EXPECT_FALSE(std::filesystem::exists(kept));
}

TEST_F(NoteBookLoader, NamesTheFilesThatHoldMoreThanWasTaken) {
    PutSources({1011, 1013});
    PutCategories();
    ASSERT_TRUE(ThreeAuthors().SaveAuthors(disk.paths.Authors()).Ok());
    for (const char* const name : {"a.dat", "b.dat", "c.dat", "d.dat", "e.dat"})
        disk.Put(name, {FullNote(name[0]), FullNote(name[0] + 50)});
    for (const LoadOptions& options : {ReadOnly(), LoadOptions{}})
        EXPECT_THAT(Load(options).damaged, ElementsAre());
    const auto cut = [](const std::filesystem::path& file) {
        std::filesystem::resize_file(file, std::filesystem::file_size(file) * 2 / 3);
    };
    for (const std::filesystem::path& file :
         {disk.paths.Authors(), disk.paths.Sources(), disk.paths.Categories(), disk.paths.NoteFile("b.dat")})
        cut(file);
    PutBytes(disk.paths.NoteFile("c.dat"), disk.Bytes("c.dat") + "more");
    std::filesystem::remove(disk.paths.NoteFile("d.dat"));
    std::filesystem::create_symlink("d.dat", disk.paths.NoteFile("d.dat"));
    LoadOptions ofOne = ReadOnly();
    ofOne.only = std::unordered_set<int32_t>{'a'};
    for (const LoadOptions& options : {ReadOnly(), LoadOptions{}, ofOne}) {
        faults.faults.clear();
        EXPECT_THAT(Load(options).damaged,
                    ElementsAre("Authors.dat", "Sources.dat", "Categories.dat", "b.dat", "c.dat"));
        EXPECT_EQ(faults.faults.size(), 1u) << "of the file that can't be read at all";
    }
}

/// Keeps the texts as a cache would.
class KeptTexts : public NoteTextSink {
public:
    void Begin(size_t fileCount) override { files.assign(fileCount, {}); }
    void Take(NotePlace place, int32_t noteId, std::string_view rtfText) override {
        EXPECT_EQ(files[place.file].size(), place.record);
        files[place.file].emplace_back(noteId, rtfText);
    }
    void Finish(const std::vector<ShownNote>& notes) override { shown = notes; }

    std::vector<std::vector<std::pair<int32_t, std::string>>> files;
    std::vector<ShownNote> shown;
};

/// Everything that a load gives, as text.
std::string Picture(const OpenNoteBook& book, const LoadReport& report, const KeptTexts& texts) {
    std::string text;
    const auto add = [&](const LongList& ids) {
        for (const int32_t id : ids)
            text += " " + std::to_string(id);
        text += "\n";
    };
    for (const CNoteIDsPath& entry : book.index.Entries())
        add((text += entry.path, entry.ids));
    for (const CKeyWord& word : book.keyWords.Entries())
        add((text += word.name, word.notes));
    for (const CSearchColor& color : book.colors.Entries())
        add((text += std::to_string(color.color), color.notes));
    for (const CSource& source : book.sources)
        add((text += source.SourceGUID, source.NoteIDs));
    for (const CProCategoryTree& root : book.categories.Roots()) {
        for (const LongList& notes : root.notes)
            add((text += root.name, notes));
    }
    add(book.notesWithoutSource);
    for (const CNote& head : report.heads)
        text += RecordOf(head);
    for (const ShownNote& note : texts.shown)
        text += texts.files[note.place.file][note.place.record].second;
    return text;
}

TEST_F(NoteBookLoader, GivesTheSameWithAnyNumberOfThreads) {
    PutSources({1, 2, 3, 4, 5});
    PutCategories();
    int32_t id = 0;
    for (int file = 0; file < 60; ++file) {
        std::vector<CNote> notes;
        for (int note = 0; note < file % 7; ++note) {
            CNote made = FullNote(++id % 170 + 1);
            made.sources = {1 + file % 5, 2};
            made.keyWords = "k" + std::to_string(id % 11) + ",K" + std::to_string(id % 3);
            made.borderColor = MakeRgb(static_cast<unsigned>(id % 50) * 3, 0, 0);
            made.rtfText += std::to_string(id);
            notes.push_back(made);
        }
        disk.Put("SRC" + std::to_string(1000000000 + file) + ".dat", notes);
    }
    std::string expected;
    for (const int threads : {1, 2, 5}) {
        KeptTexts texts;
        LoadOptions options = ReadOnly();
        options.threads = threads;
        options.texts = &texts;
        options.keepHeads = true;
        const LoadReport report = Load(options);
        const std::string picture = Picture(book, report, texts);
        EXPECT_EQ(report.heads.size(), book.TotalNoteCount());
        expected = expected.empty() ? picture : expected;
        EXPECT_TRUE(picture == expected) << threads;
    }
    EXPECT_GT(expected.size(), 10000u);
}

TEST_F(NoteBookLoader, ShowsItsProgressInOrder) {
    disk.Put("a.dat", {DayNote(1), DayNote(2)});
    disk.Put("b.dat", {DayNote(3)});
    ScriptedProgress progress;
    CleanNoteFiles(disk.paths, faults, &progress);
    LoadOptions options;
    options.progress = &progress;
    Load(options);
    EXPECT_THAT(progress.messages,
                ElementsAre("Cleaning up note files....", "Loading Notes Information...", "Setting Global Info...",
                            "Loading info:  *a.dat", "Loading info:  *b.dat"));
    EXPECT_THAT(progress.ranges, ElementsAre(21, 3, 2));
    EXPECT_EQ(progress.steps, 8);
    EXPECT_EQ(progress.shown, 0);
}

TEST_F(NoteBookLoader, HighestIdsStopAtTheLimit) {
    disk.Put("a.dat", {DayNote(2147483647)});
    counters = {5, 2147483647, 5};
    Load();
    EXPECT_EQ(counters.MaxNoteID, 2147483647);
    EXPECT_EQ(counters.MaxAuthorID, 2147483647);
}

TEST_F(NoteBookLoader, FindsNotesInTheOrderOfTheIdsAndEachOnce) {
    disk.Put("a.dat", {DayNote(1), DayNote(2), DayNote(3)});
    disk.Put("b.dat", {DayNote(4), DayNote(5)});
    Load(ReadOnly());
    const std::vector<CNote> found = FindNotes(book.index, {5, 2, 99, 4, 2, 0, -7, 1}, world.context, faults);
    EXPECT_THAT(Each(found, &CNote::id), ElementsAre(5, 2, 4, 1));
    EXPECT_TRUE(faults.faults.empty());
    const std::filesystem::path file = disk.paths.NoteFile("a.dat");
    const std::string whole = BytesOf(file), cut = whole.substr(0, whole.size() - 5);
    const struct {
        std::function<void()> change;
        const char* what;
        size_t found;
    } changes[] = {{[&] { std::filesystem::remove(file); }, "A note file could not be read", 1},
                   {[&] { PutBytes(file, cut); }, "A note file is damaged; what could be read of it was taken", 4},
                   {[&] {
                        disk.Put("a.dat", {DayNote(1), DayNote(2)});
                    },
                    "Notes are no longer in their file", 3}};
    for (const auto& [change, what, count] : changes) {
        change();
        EXPECT_EQ(FindNotes(book.index, {1, 2, 3, 4}, world.context, faults).size(), count);
        EXPECT_THAT(Each(std::exchange(faults.faults, {}), &Fault::what), ElementsAre(what));
    }
    PutBytes(file, cut);
    Load(ReadOnly());
    EXPECT_EQ(FindNotes(book.index, {3}, world.context, faults).size(), 1u);
    EXPECT_TRUE(faults.faults.empty()) << "who loads tells it";
}

TEST_F(NoteBookLoader, CleaningDeletesFilesWithoutNotesAndLeavesTheRest) {
    const std::string noNotes = RawRecord().Real(11.56).Int(0).Bytes();
    PutBytes(disk.paths.NoteFile("empty.dat"), noNotes);
    PutBytes(disk.paths.NoteFile("zero.dat"), "");
    PutBytes(disk.paths.NoteFile("behind.dat"), noNotes + "x");
    PutBytes(disk.paths.NoteFile("negative.dat"), RawRecord().Real(11.56).Int(-1).Bytes());
    PutBytes(disk.paths.NoteFile("empty.old"), noNotes);
    disk.Put("full.dat", {DayNote(1)});
    CleanNoteFiles(disk.paths, faults, nullptr);
    EXPECT_THAT(NamesIn(disk.paths.Notes()), ElementsAre("behind.dat", "empty.old", "full.dat", "negative.dat"));
    EXPECT_TRUE(faults.faults.empty());
    Load();
    EXPECT_THAT(Each(faults.faults, &Fault::path), testing::Each(disk.paths.NoteFile("behind.dat").string()));
    EXPECT_THAT(Each(faults.faults, &Fault::reason),
                ElementsAre("The file is damaged", "It counts no notes but holds more"));
}

TEST_F(NoteBookLoader, LastListKeepsItsOrderAndEachIdOnce) {
    SaveLastViewList(disk.paths, {5, 3, 5, 9}, faults);
    EXPECT_EQ(BytesOf(disk.paths.LastViewList()), RawRecord().Ints({3, 5, 3, 9}).Bytes());
    EXPECT_EQ(LoadLastViewList(disk.paths, faults), LongList({5, 3, 9}));
    std::filesystem::remove(disk.paths.LastViewList());
    EXPECT_TRUE(LoadLastViewList(disk.paths, faults).IsEmpty());
    EXPECT_TRUE(faults.faults.empty());
}

}  // namespace
}  // namespace lore
