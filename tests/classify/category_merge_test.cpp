#include "classify/category_merge.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <random>
#include <set>

#include "classify/forest_builder.h"
#include "support/read_world.h"

namespace lore {
namespace {

CProCategoryTree* Named(std::vector<CProCategoryTree>& siblings, const std::string& name) {
    const auto hit = std::ranges::find(siblings, name, &CProCategoryTree::name);
    return hit == siblings.end() ? nullptr : &*hit;
}

/// The merge as it is told, with walks through the forest.
struct PlainMerge {
    CProCategoryList& forest;
    int& stored;
    CategoryIDs ids = forest.UsedIDs();

    int64_t Into(CProCategoryTree& hit, CProCategoryTree& node, int64_t next) {
        for (size_t i = 0; i < kSetCount; ++i)
            hit.notes[i].Merge(node.notes[i]);
        for (CProCategoryTree& child : node.children) {
            CProCategoryTree* found = Named(hit.children, child.name);
            if (!found) {
                next = child.Renumber(next, ids);
                hit.AddChild(child);
            } else {
                child.id = found->id;
                next = Into(*found, child, next);
            }
        }
        hit.LinkChildren();
        node.LinkChildren();
        return next;
    }

    void Path(int32_t note, CProCategoryTree& chain, int set) {
        chain.AddNote(note, set);
        chain.LinkChildren();
        if (chain.name.empty() || chain.name == kUnassignedName)
            return;
        if (CProCategoryTree* hit = Named(forest.EditRoots(), chain.name)) {
            chain.id = hit->id;
            Into(*hit, chain, forest.GetMaxCategoryID(stored) + 1);
        } else {
            chain.Renumber(forest.GetMaxCategoryID(stored) + 1, ids);
            forest.AddRoot(chain);
        }
    }
};

std::vector<std::string> RandomNames(std::mt19937& random) {
    static const char* const kNames[] = {"A", "B", "a", "C", "", "<UNASSIGNED>"};
    std::vector<std::string> names;
    for (size_t levels = 1 + random() % 4; levels > 0; --levels)
        names.push_back(kNames[random() % (names.empty() ? 6 : 5)]);
    return names;
}

bool HaveSameNotes(const CProCategoryTree& a, const CProCategoryTree& b) {
    return a.notes == b.notes &&
           std::equal(a.children.begin(), a.children.end(), b.children.begin(), b.children.end(), HaveSameNotes);
}

TEST(CategoryMerge, GivesWhatWalksThroughTheForestGive) {
    std::mt19937 random(9);
    for (int round = 0; round < 20; ++round) {
        CProCategoryList forest = Forest({Node(21122110, "A", {Node(7, "B"), Node(8, "B")}), Node(6, "A")}),
                         plain = forest;
        int stored = round % 2 == 0 ? 3 : 21122112, plainStored = stored;
        {
            CategoryMerger merger(forest, stored);
            PlainMerge reference{plain, plainStored};
            for (int32_t note = 0; note < 40; ++note) {
                CProCategoryTree chain = Chain(RandomNames(random)), other = chain;
                const int set = static_cast<int>(random() % 3) + 1;
                merger.MergePath(note, chain, set);
                reference.Path(note, other, set);
                ASSERT_EQ(Shape(chain), Shape(other));
                ASSERT_EQ(stored, plainStored);
            }
        }
        ASSERT_EQ(Shape(forest), Shape(plain));
        for (size_t i = 0; i < forest.Roots().size(); ++i) {
            EXPECT_TRUE(IsLinked(forest.Roots()[i]));
            EXPECT_TRUE(HaveSameNotes(forest.Roots()[i], plain.Roots()[i]));
        }
    }
}

TEST(CategoryMerge, LeavesGapsWhereSubtreesAreNumbered) {
    CProCategoryList forest = Forest({Node(10, "A", {Node(11, "B")})});
    int stored = 3;
    CProCategoryTree tree = Node(-1, "A", {Chain({"X", "Y"}), Node(-1, "B", {Node(-1, "Z")}), Node(-1, "W")});
    MergePath(5, tree, forest, 2, stored);
    EXPECT_EQ(Shape(forest), "10:A(11:B(15:Z),12:X(13:Y),16:W)");
    EXPECT_EQ(Shape(tree), "10:A(12:X(13:Y),11:B(15:Z),16:W)");
    EXPECT_EQ(forest.FindByID(15)->notes[1], (LongList{5}));
    EXPECT_EQ(stored, 11);
}

TEST(CategoryMerge, GoesOnWithFreeIdsBehindTheHighest) {
    struct Case {
        int32_t taken;
        int stored;
    };
    for (const Case& c : {Case{kHighestID, 3}, Case{7, kHighestID}, Case{kHighestID - 2, 3}}) {
        CProCategoryList forest = Forest({Node(c.taken, "A", {Node(5, "B")}), Node(kUnassignedID, kUnassignedName)});
        int stored = c.stored;
        CProCategoryTree below = Chain({"A", "B", "C", "D"}), beside = Chain({"X", "Y"}), known = Chain({"A", "B"});
        {
            CategoryMerger merger(forest, stored);
            merger.MergePath(1, known, 1);
            EXPECT_FALSE(merger.HasAdded());
            merger.MergePath(2, below, 1);
            merger.MergePath(3, beside, 1);
            EXPECT_TRUE(merger.HasAdded());
        }
        std::set<int32_t> ids = {c.taken, 5, kUnassignedID};
        const CProCategoryTree &third = below.children[0].children[0], &root = beside;
        for (const CProCategoryTree* made : {&third, &third.children[0], &root, &root.children[0]}) {
            EXPECT_GT(made->id, 0);
            EXPECT_TRUE(ids.insert(made->id).second) << Shape(forest);
            EXPECT_EQ(forest.FindByID(made->id)->name, made->name);
        }
        EXPECT_EQ(forest.FindByID(third.id)->notes[0], (LongList{2}));
        EXPECT_GE(stored, c.stored);
    }
}

TEST(CategoryMerge, MergesSubtreesIntoTheTarget) {
    CProCategoryTree target = Node(1, "T", {Node(2, "x")});
    target.AddNote(7, 1);
    CProCategoryTree moved = Node(5, "T", {Node(6, "x", {Node(7, "y")}), Node(8, "z")});
    moved.AddNote(9, 1);
    CategoryIDs ids;
    EXPECT_EQ(MergeInto(target, moved, 20, ids), 22);
    EXPECT_EQ(Shape(target), "1:T(2:x(20:y),21:z)");
    EXPECT_EQ(target.children[0].notes[0], (LongList{7, 9}));
    EXPECT_TRUE(IsLinked(target));
}

struct OldEntry {
    int32_t level;
    const char* name;
};

void WriteOldPath(RecordWriter& writer, const std::vector<OldEntry>& entries) {
    WriteFixedInt(&writer, static_cast<int32_t>(entries.size()));
    for (const OldEntry& entry : entries) {
        WriteFixedInt(&writer, entry.level);
        WriteCountedString(&writer, entry.name);
        WriteCountedString(&writer, "parent");
    }
}

TEST(OldCategory, BecomesAChainByItsLevels) {
    struct Case {
        std::vector<OldEntry> entries;
        std::vector<std::string> chain;
    };
    const Case cases[] = {{{{0, "A"}, {1, "B"}}, {"A", "B"}},
                          {{{2, "C"}, {1, "B"}, {0, "A"}}, {"A", "B", "C"}},
                          {{{0, "A"}, {0, "other"}, {2, "C"}}, {"A"}},
                          {{{0, "A"}, {1, "<UNASSIGNED>"}, {2, "C"}}, {"A"}},
                          {{{0, "A"}, {1, "<unassigned>"}}, {"A", "<unassigned>"}},
                          {{{0, "<UNASSIGNED>"}}, {}},
                          {{{1, "B"}}, {}},
                          {{}, {}}};
    for (const Case& c : cases) {
        RecordWriter writer;
        WriteOldPath(writer, c.entries);
        WriteFixedInt(&writer, 4711);
        RecordReader reader(writer.DiskBytes());
        EXPECT_EQ(Shape(ReadOldPathAsChain(&reader)), Shape(Chain(c.chain)));
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
