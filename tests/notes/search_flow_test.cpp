#include "notes/search_flow.h"

#include "notes/note_list_add.h"
#include "notes/search_world.h"
#include "notes/sort_order.h"
#include "support/matchers.h"
#include "support/scripted_background.h"

namespace lore {
namespace {

std::string CountMessage(int count) {
    return "Finished Search!: Your search returned  *" + std::to_string(count) + "*  results.";
}

class SearchBoxTest : public NoteBookTest {
protected:
    SearchBoxTest() {
        Put("DAY01012020.dat", {TextNote(1, "lamp one"), TextNote(2, "mirror two")});
        Put("DAY01022020.dat", {TextNote(4, "lamp four", 2), TextNote(3, "lamp three", 2)});
        Put("DAY01032020.dat", {TextNote(5, "SHOWALL lamps", 3)});
    }
    void Put(const std::string& name, const std::vector<CNote>& notes) {
        disk.Put(name, notes);
        for (const CNote& note : notes)
            book.index.AddToIndex(disk.paths.NoteFile(name).string(), note.id);
    }
    void FillList(const LongList& ids) { LoadNotesToList(book, ids, kNoSort, world.context, faults, list); }
    SearchOutcome Run(const std::string& text, SearchScope scope, int32_t order = kAddToBottom) {
        return SearchBox({book, cache, list, prompts, progress, faults, world.context, background})
            .Run(text, scope, order);
    }
    std::vector<int32_t> Ids() const { return list.GetNoteIDs().Values(); }
    std::vector<int32_t> Where(bool CNote::*flag) const {
        std::vector<int32_t> ids;
        for (const ListedNote& note : list.Notes()) {
            if ((*note.note).*flag)
                ids.push_back(note.Id());
        }
        return ids;
    }
    /// The notes that show a marked text.
    std::vector<int32_t> Marked() {
        std::vector<int32_t> ids;
        for (size_t i = 0; i < list.Count(); ++i) {
            const CNote& note = list.ShownNote(i);
            if (!note.displayRtf.empty())
                ids.push_back(note.id);
        }
        return ids;
    }

    TextCache cache;
    CNoteList list;
    Background* background = nullptr;
    ScriptedPrompts prompts;
    KeptProgress progress;
};

TEST_F(SearchBoxTest, BringsResultsOfTheDatabaseInByTheActiveOrder) {
    const std::pair<int32_t, std::vector<int32_t>> cases[] = {
        {kAddToBottom, {4, 2, 1, 3, 5}},  // appended as found
        {kAddToTop, {1, 3, 5, 4, 2}},     // in front, the oldest first
        {kDateAddedDown, {5, 3, 4, 1, 2}},
    };
    for (const auto& [order, ids] : cases) {
        list.RemoveAll();
        FillList({4, 2});
        list.MarkAsNew(1);
        list.SetFocusNote(4);
        EXPECT_EQ(Run(" lamp ", SearchScope::Database, order), SearchOutcome::Done);
        EXPECT_EQ(Ids(), ids) << order;
        EXPECT_THAT(Where(&CNote::newlyAdded), testing::UnorderedElementsAre(1, 3, 5)) << order;
        for (size_t i = 0; i < list.Count(); ++i)
            EXPECT_FALSE(list.IsSelected(i));
        EXPECT_THAT(Marked(), testing::UnorderedElementsAre(1, 3, 4, 5)) << order;
    }
    EXPECT_THAT(prompts.seen, ElementsAre(CountMessage(4), CountMessage(4), CountMessage(4)));
    EXPECT_THAT(prompts.icons, testing::Each(PromptIcon::Information));
    EXPECT_THAT(progress.standBy,
                ElementsAre("Searching Notes....", "", "Searching Notes....", "", "Searching Notes....", ""));
}

TEST_F(SearchBoxTest, MarksAndFlagsTheHitsAmongTheCurrentNotesAndKeepsTheOthers) {
    FillList({1, 2, 3});
    EXPECT_EQ(Run("lamp", SearchScope::CurrentNotes), SearchOutcome::Done);
    EXPECT_THAT(Ids(), ElementsAre(1, 2, 3));
    EXPECT_THAT(Where(&CNote::newlyAdded), ElementsAre(1, 3));
    EXPECT_THAT(Marked(), ElementsAre(1, 3));
    EXPECT_EQ(Run("mirror", SearchScope::CurrentNotes), SearchOutcome::Done);
    EXPECT_THAT(Where(&CNote::newlyAdded), ElementsAre(2));
    EXPECT_THAT(Marked(), ElementsAre(2));
    EXPECT_EQ(Run("AND", SearchScope::CurrentNotes), SearchOutcome::Done);
    EXPECT_THAT(Marked(), IsEmpty());
    EXPECT_THAT(prompts.seen, ElementsAre(CountMessage(2), CountMessage(1), CountMessage(3)));
    EXPECT_EQ(list.search.searchText, "");
}

TEST_F(SearchBoxTest, TakesShowAllAsEveryNoteOfTheDatabaseAndAsAWordAmongTheCurrentNotes) {
    FillList({5, 2});
    EXPECT_EQ(Run("SHOWALL", SearchScope::CurrentNotes), SearchOutcome::Done);
    EXPECT_THAT(Marked(), ElementsAre(5));
    EXPECT_EQ(Run("SHOWALL", SearchScope::Database), SearchOutcome::Done);
    EXPECT_THAT(Ids(), ElementsAre(5, 2, 1, 4, 3));
    EXPECT_THAT(Marked(), IsEmpty());
    EXPECT_EQ(Run("showall", SearchScope::Database), SearchOutcome::Done);
    EXPECT_THAT(Marked(), ElementsAre(5));
    EXPECT_EQ(Run("AND", SearchScope::Database), SearchOutcome::Done);
    EXPECT_THAT(prompts.seen, ElementsAre(CountMessage(1), CountMessage(5), CountMessage(1), CountMessage(0)));
}

TEST_F(SearchBoxTest, GivesTheSameBesideTheThreadOfTheCaller) {
    OtherThread thread;
    for (const SearchScope scope : {SearchScope::Database, SearchScope::CurrentNotes}) {
        for (const int32_t order : {kAddToBottom, kAddToTop, kDateAddedDown}) {
            std::vector<std::vector<int32_t>> seen[2];
            for (Background* const where : {static_cast<Background*>(nullptr), static_cast<Background*>(&thread)}) {
                background = where;
                list.RemoveAll();
                FillList({4, 2});
                EXPECT_EQ(Run("lamp", scope, order), SearchOutcome::Done);
                seen[where ? 1 : 0] = {Ids(), Where(&CNote::newlyAdded), Marked()};
            }
            EXPECT_EQ(seen[0], seen[1]) << order;
        }
    }
}

TEST_F(SearchBoxTest, LeavesTheListAsItWasWhenStopped) {
    OtherThread thread;
    thread.isStopped = true;
    background = &thread;
    FillList({4, 2});
    EXPECT_EQ(Run("lamp", SearchScope::Database, kDateAddedDown), SearchOutcome::Cancelled);
    EXPECT_THAT(Ids(), ElementsAre(4, 2));
    EXPECT_THAT(Where(&CNote::newlyAdded), IsEmpty());
    EXPECT_THAT(prompts.seen, IsEmpty());
    EXPECT_THAT(progress.standBy, ElementsAre("Searching Notes....", ""));
}

TEST_F(SearchBoxTest, DoesNothingForAnEmptyBoxAndOnlyClearsForAnInvalidText) {
    FillList({1});
    Run("lamp", SearchScope::CurrentNotes);
    EXPECT_EQ(Run(" \t ", SearchScope::Database), SearchOutcome::Empty);
    EXPECT_THAT(Marked(), ElementsAre(1));
    EXPECT_EQ(Run("ORLAND", SearchScope::Database), SearchOutcome::Invalid);
    EXPECT_THAT(Marked(), IsEmpty());
    EXPECT_THAT(Where(&CNote::newlyAdded), IsEmpty());
    EXPECT_EQ(prompts.seen.size(), 2U);
    EXPECT_EQ(progress.standBy.size(), 2U);
}

TEST_F(SearchBoxTest, FindsTheSameWithTextsInMemoryAndOnDisk) {
    const auto find = [&](const std::string& text) {
        NoteSearch search;
        ParseSearchString(text, nullptr, search);
        return FindInNoteBook(book, cache, search, world.context, faults);
    };
    const auto everything = [&] {
        return std::vector{find("lamp"), find("\"lamps\""), find("lamp AND three"), find("two OR five"), find("AND")};
    };
    const auto cold = everything();
    EXPECT_THAT(cold[0], ElementsAre(1, 4, 3, 5));
    cache.UpdateFile(disk.paths.NoteFile("DAY01022020.dat").string(),
                     {TextNote(4, "lamp four", 2), TextNote(77, "lamp of an old copy"), TextNote(3, "lamp three", 2)});
    EXPECT_EQ(everything(), cold);
    cache.UpdateFile(disk.paths.NoteFile("DAY01012020.dat").string(), {TextNote(1, "lamp one"), TextNote(2, "two")});
    cache.UpdateFile(disk.paths.NoteFile("DAY01032020.dat").string(), {TextNote(5, "SHOWALL lamps", 3)});
    EXPECT_EQ(everything(), cold);
    EXPECT_TRUE(faults.faults.empty());
    cache.Clear();
    std::filesystem::remove(disk.paths.NoteFile("DAY01032020.dat"));
    EXPECT_THAT(find("lamp"), ElementsAre(1, 4, 3));
    EXPECT_EQ(faults.faults.size(), 1U);
}

}  // namespace
}  // namespace lore
