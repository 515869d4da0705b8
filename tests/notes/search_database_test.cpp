#include "notes/search_database.h"

#include "notes/search_check.h"
#include "notes/search_world.h"
#include "support/data_files.h"
#include "support/each.h"
#include "support/matchers.h"

namespace lore {
namespace {

class SearchDatabaseTest : public NoteBookTest {
protected:
    std::vector<SearchResult> Search(const std::string& text, SearchOptions options = {}) {
        return SearchDatabase(disk.paths.Notes(), MatcherFor(text), options, world.context, faults);
    }
    std::vector<int32_t> Ids(const std::string& text, int threads = 2) {
        SearchOptions options;
        options.threads = threads;
        return Each(Search(text, options), &SearchResult::id);
    }
};

TEST_F(SearchDatabaseTest, GivesResultsByFileNameAndFileOrder) {
    disk.Put("DAY01022020.dat", {TextNote(3, "lamp", 2), TextNote(9, "no", 2), TextNote(2, "a Lamp", 2)});
    disk.Put("DAY01012020.dat", {TextNote(7, "lamps"), TextNote(1, "{\\b la}mp")});
    disk.Put("notes.txt", {TextNote(50, "lamp")});
    CNote sourced = TextNote(4, "lamp");
    sourced.sources = {5};
    disk.Put("SRC0000000005.dat", {sourced});
    for (const int threads : {1, 2, 8}) {
        EXPECT_THAT(Ids("lamp", threads), ElementsAre(7, 1, 3, 2, 4)) << threads;
        EXPECT_THAT(Ids("\"lamp\"", threads), ElementsAre(1, 3, 2, 4)) << threads;
        EXPECT_THAT(Ids("SHOWALL", threads), ElementsAre(7, 1, 3, 9, 2, 4)) << threads;
    }
    EXPECT_THAT(Ids("AND"), IsEmpty());
    EXPECT_THAT(Ids("nowhere"), IsEmpty());
    EXPECT_THAT(faults.faults, IsEmpty());
}

TEST_F(SearchDatabaseTest, GivesHitsInCharactersByTheirBeginAndMarkedText) {
    disk.Put("DAY01012020.dat", {TextNote(1, "\\'c4 dog\\par Cat dog"), TextNote(2, "cat")});
    SearchOptions options;
    options.marked = true;
    const std::vector<SearchResult> results = Search("cat OR dog", options);
    ASSERT_EQ(results.size(), 2U);
    EXPECT_THAT(results[0].hits, ElementsAre(TextRange{2, 5}, TextRange{6, 9}, TextRange{10, 13}));
    EXPECT_EQ(PlainText(results[0].displayRtf), "\xC3\x84 dog\nCat dog");
    const std::vector<SearchResult> all = Search("SHOWALL", options);
    ASSERT_EQ(all.size(), 2U);
    EXPECT_THAT(all[0].hits, IsEmpty());
    EXPECT_EQ(all[0].displayRtf, "");
}

TEST_F(SearchDatabaseTest, LooksOnlyAtTheCopyThatShowsOfANoteThatStandsTwice) {
    CNote moved = TextNote(1, "new words");
    moved.sources = {5};
    disk.Put("DAY01012020.dat", {TextNote(1, "old words"), TextNote(2, "old words")});
    disk.Put("SRC0000000005.dat", {moved});
    // The copy without a source is at home in its day's file too and comes first.
    EXPECT_THAT(Ids("words"), ElementsAre(1, 2));
    EXPECT_THAT(Ids("new"), IsEmpty());
    moved.dateEdited = DateTime(2021, 1, 1);
    disk.Put("SRC0000000005.dat", {moved});
    EXPECT_THAT(Ids("new"), ElementsAre(1)) << "it was written last";
    EXPECT_THAT(Ids("old"), ElementsAre(2));
    disk.Put("DAY01012020.dat", {});
    disk.Put("DAY05052020.dat", {TextNote(1, "old words"), TextNote(2, "old words")});
    EXPECT_THAT(Ids("old"), ElementsAre(2));
    EXPECT_THAT(Ids("new"), ElementsAre(1));
}

TEST_F(SearchDatabaseTest, TakesAWholeCopyBeforeABrokenOneThatStandsInItsFile) {
    const std::string broken = NoteFileBytes(std::vector<CNote>{TextNote(2, "lamp"), TextNote(1, "lamp broken")});
    PutBytes(disk.paths.NoteFile("DAY01012020.dat"), broken.substr(0, broken.size() - 40));
    disk.Put("DAY05052020.dat", {TextNote(7, "other"), TextNote(1, "lamp whole"), TextNote(1, "lamp again")});
    EXPECT_THAT(Ids("lamp"), ElementsAre(2, 1));
    EXPECT_THAT(Ids("broken"), IsEmpty());
    EXPECT_THAT(Ids("whole"), ElementsAre(1));
    EXPECT_THAT(Ids("again"), IsEmpty());
}

TEST_F(SearchDatabaseTest, GoesOnAfterFilesThatCannotBeRead) {
    std::filesystem::create_symlink("DAY01012020.dat", disk.paths.NoteFile("DAY01012020.dat"));  // leads to itself
    PutBytes(disk.paths.NoteFile("DAY01022020.dat"), "damaged");
    const std::string whole = NoteFileBytes(std::vector<CNote>{TextNote(2, "lamp", 3), TextNote(3, "lamp", 3)});
    PutBytes(disk.paths.NoteFile("DAY01032020.dat"), whole.substr(0, whole.size() * 3 / 4));
    EXPECT_THAT(Ids("lamp"), ElementsAre(2));
    EXPECT_EQ(faults.faults.size(), 1U);
}

TEST_F(SearchDatabaseTest, HasNoResultsInAFolderThatIsNotThere) {
    EXPECT_THAT(SearchDatabase(disk.folder / "none", MatcherFor("lamp"), {}, world.context, faults), IsEmpty());
}

TEST(SearchCorpus, HoldsForWhatFuzzingFound) {
    const TempFolder folder(MemoryFolder());
    for (const auto& path : CorpusFiles(LORE_TEST_DATA, "search"))
        EXPECT_EQ(CheckSearch(BytesOf(path), folder.Path()), "") << path;
}

}  // namespace
}  // namespace lore
