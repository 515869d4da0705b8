#include "classify/category_merge.h"

#include <filesystem>
#include <gtest/gtest.h>

#include "classify/forest_builder.h"
#include "support/read_world.h"

namespace lore {
namespace {

TEST(CategoryMerge, LeavesGapsWhereSubtreesAreNumbered) {
    CProCategoryList forest = Forest({Node(10, "A", {Node(11, "B")})});
    int stored = 3;
    CProCategoryTree tree = Node(-1, "A", {Chain({"X", "Y"}), Node(-1, "B", {Node(-1, "Z")}), Node(-1, "W")});
    CategoryMerger(forest, stored).MergePath(5, tree, 2);
    EXPECT_EQ(Shape(forest), "10:A(11:B(15:Z),12:X(13:Y),16:W)");
    EXPECT_EQ(Shape(tree), "10:A(12:X(13:Y),11:B(15:Z),16:W)");
    EXPECT_EQ(forest.FindByID(15)->notes[1], (LongList{5}));
    EXPECT_EQ(stored, 11);
}

TEST(CategoryMerge, FindsWhatThePathsBeforeHaveMade) {
    CProCategoryList forest = Forest({Node(10, "A", {Node(11, "B"), Node(12, "B")}), Node(13, "A")});
    int stored = 20;
    std::vector<std::string> merged;
    {
        CategoryMerger merger(forest, stored);
        int32_t note = 0;
        for (const std::vector<std::string>& names : std::vector<std::vector<std::string>>{{"A", "B"},
                                                                                           {"A", "B", "C"},
                                                                                           {"A", "D"},
                                                                                           {"A", "D", "E"},
                                                                                           {"a", "B"},
                                                                                           {"A", "B", "C", "D"},
                                                                                           {"<UNASSIGNED>", "B"},
                                                                                           {"", "B"},
                                                                                           {"a", "B"}}) {
            CProCategoryTree chain = Chain(names);
            merger.MergePath(++note, chain, 2);
            EXPECT_EQ(merger.HasAdded(), note > 1);
            merged.push_back(Shape(chain));
        }
    }
    EXPECT_EQ(Shape(forest), "10:A(11:B(21:C(26:D)),12:B,22:D(23:E)) 13:A 24:a(25:B)");
    EXPECT_EQ(merged, (std::vector<std::string>{"10:A(11:B)", "10:A(11:B(21:C))", "10:A(22:D)", "10:A(22:D(23:E))",
                                                "24:a(25:B)", "10:A(11:B(21:C(26:D)))", "-1:<UNASSIGNED>(-1:B)",
                                                "-1:(-1:B)", "24:a(25:B)"}));
    EXPECT_EQ(forest.FindByID(11)->notes[1], (LongList{1, 2, 6}));
    EXPECT_TRUE(forest.FindByID(12)->notes[1].IsEmpty() && forest.FindByID(13)->notes[1].IsEmpty());
    EXPECT_TRUE(IsLinked(forest.Roots()[0]));
}

using OldEntry = std::pair<int32_t, const char*>;  // its level and its name

void WriteOldPath(RecordWriter& writer, const std::vector<OldEntry>& entries) {
    WriteFixedInt(&writer, static_cast<int32_t>(entries.size()));
    for (const auto& [level, name] : entries) {
        WriteFixedInt(&writer, level);
        WriteCountedString(&writer, name);
        WriteCountedString(&writer, "parent");
    }
}

TEST(OldCategory, BecomesAChainByItsLevels) {
    const std::pair<std::vector<OldEntry>, std::vector<std::string>> cases[] = {
        {{{0, "A"}, {1, "B"}}, {"A", "B"}},
        {{{2, "C"}, {1, "B"}, {0, "A"}}, {"A", "B", "C"}},
        {{{0, "A"}, {0, "other"}, {2, "C"}}, {"A"}},
        {{{0, "A"}, {1, "<UNASSIGNED>"}, {2, "C"}}, {"A"}},
        {{{0, "A"}, {1, "<unassigned>"}}, {"A", "<unassigned>"}},
        {{{0, "<UNASSIGNED>"}}, {}},
        {{{1, "B"}}, {}},
        {{}, {}}};
    for (const auto& [entries, chain] : cases) {
        RecordWriter writer;
        WriteOldPath(writer, entries);
        WriteFixedInt(&writer, 4711);
        RecordReader reader(writer.DiskBytes());
        EXPECT_EQ(Shape(ReadOldPathAsChain(&reader)), Shape(Chain(chain)));
        EXPECT_EQ(ReadFixedInt(&reader), 4711);
    }
}

TEST(OldCategory, IsBoundedOnDamagedRecords) {
    RecordWriter deep, promised;
    std::vector<OldEntry> entries;
    for (int32_t level = 0; level < 100'000; ++level)
        entries.push_back({level, "n"});
    WriteOldPath(deep, entries);
    WriteFixedInt(&promised, 2'000'000'000);
    RecordReader deepReader(deep.DiskBytes()), promisedReader(promised.DiskBytes());
    EXPECT_EQ(LevelsBelow(ReadOldPathAsChain(&deepReader)), kMaxNesting - 1);
    CCategoryTree tree;
    ReadOldPathRecord(&promisedReader, tree);
    EXPECT_LE(tree.entries.size(), static_cast<size_t>(kMaxMadeUpEntries));
}

TEST(OldCategory, BringsEmptyCategoriesIntoTheForestWithoutNotes) {
    const TempFolder folder;
    const std::filesystem::path path = folder / "Empty1Cats.dat";
    RecordWriter writer;
    WriteFixedDouble(&writer, 11.2);
    WriteFixedInt(&writer, 3);
    WriteOldPath(writer, {{0, "A"}, {1, "New"}});
    WriteOldPath(writer, {{0, "<UNASSIGNED>"}});
    WriteOldPath(writer, {{0, "Root"}});
    ASSERT_TRUE(SaveRecordFile(path, writer).Ok());
    std::vector<CCategoryTree> trees;
    ASSERT_TRUE(LoadEmptyCategories(path, trees).Ok());
    CProCategoryList forest = Forest({Node(5, "A")});
    int stored = 3;
    CategoryMerger(forest, stored).MergeEmptyCategories(trees);
    EXPECT_EQ(Shape(forest), "5:A(6:New) 7:Root");
    for (const int32_t id : {5, 6, 7})
        EXPECT_TRUE(forest.FindByID(id)->GetNotes(kAllSets).IsEmpty());
    ASSERT_TRUE(RemoveFile(path).Ok());
    EXPECT_TRUE(LoadEmptyCategories(path, trees).Missing());
    EXPECT_TRUE(trees.empty());
}

}  // namespace
}  // namespace lore
