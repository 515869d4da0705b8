#include "bibliography/source_list.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>

#include "base/text.h"
#include "bibliography/selection_order.h"
#include "bibliography/source_builder.h"
#include "bibliography/source_groups.h"

namespace lore {
namespace {

TEST(SourceList, NewIdsBeginAt1011AndAboveThoseThatAreReserved) {
    SourceList list;
    EXPECT_EQ(list.NewSourceID(), 1011);
    list.AddTail(FullSource(7));
    EXPECT_EQ(list.NewSourceID(), 1011);
    list.AddTail(FullSource(1500));
    EXPECT_EQ(list.NextSourceID(), 1500);
    EXPECT_EQ(list.NewSourceID(), 1501);
    EXPECT_TRUE(list.RemoveSource(1500));
    EXPECT_EQ(list.NewSourceID(), 1011);
    list.ReserveIDs(1600);
    EXPECT_EQ(list.NewSourceID(), 1601);
    list.AddTail(FullSource(1700));
    EXPECT_EQ(list.NewSourceID(), 1701);
    for (const int32_t lost : {1701, 1702})
        list.AddNoteID(lost, 5);
    EXPECT_EQ(list.NewSourceID(), 1703) << "a note names those before";
    list.RemoveAll();
    EXPECT_EQ(list.NewSourceID(), 1011);
}

TEST(SourceList, FindsTheFirstOfEqualKeysThroughEveryChange) {
    SourceList list;
    for (const int32_t id : {7, 8, 7})
        list.AddTail(FullSource(id));
    list[2].FieldTexts[0] = "second seven";
    EXPECT_EQ(list.FindSourceByID(7), &list[0]);
    EXPECT_EQ(list.FindSourceByGUID("{SOURCE 8}"), &list[1]);
    EXPECT_EQ(list.FindSourceByGUID("{source 8}"), nullptr);
    EXPECT_TRUE(list.RemoveSource(7));
    EXPECT_EQ(list.FindSourceByID(7)->FieldTexts[0], "second seven");
    EXPECT_TRUE(list.ReplaceSource(8, FullSource(9)));
    EXPECT_EQ(list.FindSourceByID(8), nullptr);
    EXPECT_EQ(list.FindSourceByGUID("{SOURCE 9}"), &list[0]);
    EXPECT_FALSE(list.ReplaceSource(8, FullSource(8)));
    EXPECT_FALSE(list.RemoveSource(8));
    const SourceList copy = list;
    EXPECT_EQ(copy.FindSourceByID(9), &copy[0]);
}

TEST(SourceList, SortAgreesWithTheSlowSelectionOnRandomCitations) {
    std::mt19937 random(11);
    const char* const letters[] = {"a", "A", "b", "B", "z", "Z", "{", " ", "9", "\xE9", "\xC3\xA9", "\xC3\x89"};
    for (int round = 0; round < 200; ++round) {
        SourceList list;
        std::vector<std::string> lowered;
        const unsigned count = random() % 40;
        for (unsigned i = 0; i < count; ++i) {
            std::string text(random() % 3 == 0 ? 29 + random() % 3 : random() % 3, 'z');
            if (random() % 3 != 0)
                text += letters[random() % std::size(letters)];
            lowered.push_back(ToLower(text));
            list.AddTail(CitationOnly(static_cast<int32_t>(i), text));
        }
        const auto expected = Each(SlowSelection(lowered, std::string(30, 'z'), true),
                                   [](size_t position) { return static_cast<int32_t>(position); });
        list.SortSources({});
        ASSERT_EQ(IdsOf(list), expected) << round;
        // As types of sources are sorted, by their names.
        const std::vector<uint32_t> first = SelectionOrder(lowered, std::string(30, 'z'), SelectionPick::FirstBelow);
        ASSERT_TRUE(std::ranges::equal(first, SlowSelection(lowered, std::string(30, 'z'), false))) << round;
        for (const CSource& source : list)
            ASSERT_EQ(list.FindSourceByID(source.SourceID), &source) << round;
    }
}

TEST(SourceList, TiesNotesToKnownSourcesOnly) {
    SourceList list;
    list.AddTail(FullSource(7));
    list.AddTail(FullSource(8));
    list.AddTail(FullSource(0));
    for (const int32_t source : {7, 7, 8, 0, -3, 99})
        list.AddNoteID(source, 5);
    list.AddNoteID(7, 6);
    EXPECT_EQ(list[0].NoteIDs, (LongList{5, 6}));
    EXPECT_EQ(list[1].NoteIDs, LongList{5});
    EXPECT_TRUE(list[2].NoteIDs.IsEmpty());
    list.RemoveNoteID(8, 5);
    EXPECT_TRUE(list[1].NoteIDs.IsEmpty());
    list.RemoveNoteID(99, 5);
    EXPECT_EQ(list[0].NoteIDs, (LongList{5, 6}));
}

TEST(SourceList, GroupsByExactKeysAndSumsTheNotes) {
    SourceList list;
    for (int32_t id = 1; id <= 4; ++id)
        list.AddTail(FullSource(id));
    list[0].FieldTexts = {"Lights", "Press"};
    list[1].FieldTexts = {"lights", "Press"};
    list[2].FieldTexts = {"Lights"};
    list[3].FieldTexts = {};
    list[2].AuthorText = "Smith J.";
    list[0].NoteIDs = {1, 2};
    list[1].NoteIDs = {2};
    using Groups = std::vector<std::tuple<std::string, std::vector<size_t>, size_t>>;
    const auto groups = [&](SourceGrouping grouping) {
        return Each(GroupSources(list, grouping),
                    [](const SourceGroup& group) { return std::tuple(group.key, group.positions, group.noteCount); });
    };
    EXPECT_EQ(groups(SourceGrouping::Publication), (Groups{{"Press", {0, 1}, 3}, {"", {2, 3}, 0}}));
    EXPECT_EQ(groups(SourceGrouping::Title), (Groups{{"Lights", {0, 2}, 2}, {"lights", {1}, 1}, {"", {3}, 0}}));
    EXPECT_EQ(groups(SourceGrouping::Author), (Groups{{"", {0, 1, 3}, 3}, {"Smith J.", {2}, 0}}));
}

TEST(SourceList, SavingFormatsTheListOnce) {
    TempFolder folder;
    ReadWorld world;
    SourceList list;
    list.AddTail(FullSource(7));
    list[0].AuthorIDs = {8, 9, 2};
    EXPECT_FALSE(list.SaveSources(folder.Path(), {}).Ok());
    list[0].AuthorIDs = {8, 9, 2};
    EXPECT_TRUE(list.SaveBibliography(folder / "Bib.dat", ThreeAuthors()).Ok());
    EXPECT_EQ(list[0].AuthorIDs, (LongList{8, 9, 2})) << "copies are formatted";
    ASSERT_TRUE(list.SaveSources(folder / "a", ThreeAuthors()).Ok());
    EXPECT_EQ(list[0].AuthorIDs, (LongList{9, 2}));
    ASSERT_TRUE(list.LoadSources(folder / "a", world.context).Ok());
    EXPECT_EQ(list[0].AuthorIDs, (LongList{9, 2}));
    EXPECT_EQ(list[0].AuthorText, "et al");
}

}  // namespace
}  // namespace lore
