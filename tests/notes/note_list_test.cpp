#include "notes/note_list.h"

#include "bibliography/source_builder.h"
#include "notes/note_book_loader.h"
#include "notes/note_builder.h"
#include "notes/note_list_add.h"
#include "notes/note_list_citations.h"
#include "notes/sort_order.h"
#include "support/each.h"
#include "support/matchers.h"

namespace lore {
namespace {

CNoteList ListOf(const std::vector<int32_t>& ids) {
    CNoteList list;
    for (const int32_t id : ids)
        list.AddNote(DayNote(id, id % 28 + 1));
    return list;
}

std::vector<int32_t> Ids(const CNoteList& list) {
    return Each(list.Notes(), &ListedNote::Id);
}

std::vector<int32_t> NewOnes(const CNoteList& list) {
    std::vector<int32_t> ids;
    for (const ListedNote& note : list.Notes()) {
        if (note.note->newlyAdded)
            ids.push_back(note.Id());
    }
    return ids;
}

TEST(NoteList, TakesNotesInByTheActiveOrder) {
    const struct {
        const char* what;
        int32_t order;
        std::vector<int32_t> present, incoming, result, flagged;
    } cases[] = {
        {"behind, none doubled or moved", kAddToBottom, {10, 12}, {13, 10}, {10, 12, 13}, {13}},
        {"behind, in the order of their dates", kAddToBottom, {1}, {9, 8, 7}, {1, 7, 8, 9}, {7, 8, 9}},
        {"in front, the oldest first", kAddToTop, {1, 2}, {9, 8}, {8, 9, 1, 2}, {8, 9}},
        {"in front, one that was there moves", kAddToTop, {1, 2, 3}, {5, 2}, {2, 5, 1, 3}, {2, 5}},
        {"sorted by date added", kDateAddedDown, {3, 1}, {2, 3}, {3, 2, 1}, {2}},
        {"by a number without a key", 710, {3, 1}, {2}, {3, 1, 2}, {2}},
        {"without any order", kNoSort, {3, 1}, {5, 2, 5}, {3, 1, 5, 2}, {}},
        {"up to 700 nothing is sorted", 700, {3, 1}, {2}, {3, 1, 2}, {2}},
    };
    for (const auto& c : cases) {
        CNoteList list = ListOf(c.present);
        list.MarkAsNew(0);
        EXPECT_EQ(AddNotes(list, ListOf(c.incoming), c.order), c.result.size() - c.present.size()) << c.what;
        EXPECT_EQ(Ids(list), c.result) << c.what;
        EXPECT_EQ(NewOnes(list), c.flagged) << c.what;
        for (const int32_t id : c.result)
            EXPECT_EQ(list[static_cast<size_t>(list.PositionOf(id))].id, id) << c.what;
    }
}

TEST(NoteList, TakesOneNewNoteInFrontBehindOrInItsPlace) {
    const auto after = [](int32_t order) {
        CNoteList list = ListOf({5, 1, 9});
        AddSingleNote(list, ListOf({4}).Notes()[0], order);
        EXPECT_THAT(NewOnes(list), ElementsAre(4));
        return Ids(list);
    };
    EXPECT_THAT(after(kAddToTop), ElementsAre(4, 5, 1, 9));
    EXPECT_THAT(after(kAddToBottom), ElementsAre(5, 1, 9, 4));
    EXPECT_THAT(after(kDateAddedUp), ElementsAre(1, 4, 5, 9));
}

TEST(NoteList, FindsNotesAfterEveryKindOfChange) {
    CNoteList list = ListOf({1, 2, 3, 4, 5, 6});
    EXPECT_TRUE(list.RemoveNote(2));
    EXPECT_FALSE(list.RemoveNote(2));
    list.MoveNote(0, 3);
    EXPECT_THAT(Ids(list), ElementsAre(3, 4, 5, 1, 6));
    list.MoveNote(4, 1);
    EXPECT_THAT(Ids(list), ElementsAre(3, 6, 4, 5, 1));
    EXPECT_EQ(list.PositionOf(5), 3);
    list.RemoveNotes({3, 5, 77});
    EXPECT_THAT(Ids(list), ElementsAre(6, 4, 1));
    EXPECT_EQ(list.PositionOf(4), 1);
    list.SortNotes(kDateAddedUp);
    EXPECT_EQ(list.PositionOf(1), 0);
    list.AddNote(DayNote(4));
    EXPECT_EQ(list.PositionOf(4), 1);
    EXPECT_THAT(list.GetNoteIDs().Values(), ElementsAre(1, 4, 6));
    list.SortNotes(kDateAddedDown);
    EXPECT_THAT(Ids(list), ElementsAre(6, 4, 1, 4));
    EXPECT_EQ(list.PositionOf(4), 1);
    list.search = {kOrOperator, "a OR b", {"a", "b"}};
    list.RemoveAll();
    EXPECT_TRUE(list.IsEmpty());
    EXPECT_EQ(list.PositionOf(1), -1);
    EXPECT_EQ(list.search.searchOperator, kNoOperator);
    EXPECT_EQ(list.search.searchText, "");
}

TEST(NoteList, HasOneFocusNoteWhichIsNoLongerNew) {
    CNoteList list = ListOf({1, 2, 3});
    for (size_t i = 0; i < 3; ++i)
        list.MarkAsNew(i);
    EXPECT_EQ(list.SetFocusNote(2), 2);
    EXPECT_EQ(list.SetFocusNote(3), 3);
    EXPECT_FALSE(list.IsSelected(1));
    EXPECT_TRUE(list.IsSelected(2));
    EXPECT_THAT(NewOnes(list), ElementsAre(1));
    EXPECT_EQ(list.SetFocusNote(77), -1);
    EXPECT_FALSE(list.IsSelected(2));
}

TEST(NoteList, ReplacesASavedNoteInItsPlaceWithItsFlagsButNotItsMarks) {
    CNoteList list = ListOf({1, 2});
    list.SetFocusNote(1);
    list.ChangeNote(1, [](CNote& note) { note.displayRtf = "marked"; });
    CNote saved = DayNote(1);
    saved.keyWords = "changed";
    EXPECT_TRUE(list.ReplaceNote(saved, nullptr));
    EXPECT_EQ(list[0].keyWords, "changed");
    EXPECT_TRUE(list.IsSelected(0));
    EXPECT_EQ(list[0].displayRtf, "");
    EXPECT_FALSE(list.ReplaceNote(DayNote(7), nullptr));
}

using LoadedNoteList = NoteBookTest;

TEST_F(LoadedNoteList, HasTheTextsOfTheSources) {
    disk.Put("DAY01012020.dat", {DayNote(1), DayNote(2)});
    disk.Put("SRC0000001011.dat", {SourceNote(3, {1011, 4444})});
    for (int32_t id = 1; id <= 3; ++id)
        book.index.AddToIndex(disk.paths.NoteFile(id < 3 ? "DAY01012020.dat" : "SRC0000001011.dat").string(), id);
    book.sources.AddTail(TitledSource(1011, "The Lamp"));

    CNoteList list;
    EXPECT_EQ(LoadNotesToList(book, {3, 9, 1}, kNoSort, world.context, faults, list), 2U);
    EXPECT_THAT(Ids(list), ElementsAre(3, 1));
    ASSERT_TRUE(list.Notes()[0].citations);
    EXPECT_THAT(*list.Notes()[0].citations, ElementsAre(testing::HasSubstr("Lamp"))) << "an unknown source has no text";
    EXPECT_FALSE(list.Notes()[1].citations);
    EXPECT_EQ(LoadNotesToList(book, {1, 2, 3}, kSourceUp, world.context, faults, list), 1U);
    EXPECT_THAT(Ids(list), ElementsAre(2, 1, 3));
    EXPECT_THAT(NewOnes(list), ElementsAre(2));
    EXPECT_THAT(faults.faults, IsEmpty());
}

TEST(NoteList, SourcesThatTheNoteBookDoesNotKnowTakeNoPartInTheSort) {
    SourceList sources;
    sources.AddTail(TitledSource(1011, "Beta"));
    sources.AddTail(TitledSource(1012, "Adams"));
    AuthorList authors;
    CitationTexts citations(sources, authors);
    CNoteList list;
    for (const LongList& ids : {LongList{777, 1011}, LongList{1012}, LongList{777}, LongList{}}) {
        CNote note = SourceNote(1001 + static_cast<int32_t>(list.Count()), ids);
        note.dateCreated = DateTime(note.id == 1003 ? 2010 : 2011, 1, 1);
        list.AddNote(citations.Listed(std::move(note)));
    }
    list.SortNotes(kSourceUp);
    EXPECT_THAT(Ids(list), ElementsAre(1003, 1004, 1002, 1001));
    list.SortNotes(kSourceDown);
    EXPECT_THAT(Ids(list), ElementsAre(1001, 1002, 1004, 1003));
}

TEST(NoteList, ANoteThatIsFiledElsewhereLeavesThePathOfTheOthers) {
    const SourceList sources;
    const AuthorList authors;
    CitationTexts citations(sources, authors);
    CNoteList list;
    for (const auto& [id, name] : {std::pair(1, "Beta"), {2, "Beta"}, {3, "Gamma"}, {4, ""}}) {
        CNote note;
        note.id = id;
        note.dateCreated = DateTime(2011, 1, id);
        if (*name)
            note.categories[1] = CProCategoryTree(10 + *name, name);
        list.AddNote(citations.Listed(std::move(note)));
    }
    const auto file = [&](int32_t id, const CProCategoryTree& path) {
        list.ChangeNote(id, [&](CNote& note) { note.categories[0] = path; });
        list.SortNotes(kCategoryUp);
    };
    file(1, CProCategoryTree(5, "Omega"));
    EXPECT_THAT(Ids(list), ElementsAre(4, 2, 3, 1));
    file(4, CProCategoryTree(6, "Alpha"));
    EXPECT_THAT(Ids(list), ElementsAre(4, 2, 3, 1));
    file(1, CProCategoryTree());
    EXPECT_THAT(Ids(list), ElementsAre(4, 1, 2, 3));
    file(99, CProCategoryTree(7, "nobody"));
    EXPECT_THAT(Ids(list), ElementsAre(4, 1, 2, 3));
    // A note that stays where it is filed keeps the path that it shares.
    const auto shared = list.Notes()[2].sortPath;
    list.ChangeNote(2, [](CNote& note) { note.keyWords = "changed"; });
    ASSERT_TRUE(list.ReplaceNote(list[2], nullptr));
    EXPECT_EQ(list.Notes()[2].sortPath, shared);
}

}  // namespace
}  // namespace lore
