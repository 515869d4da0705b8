#include "classify/category_tree.h"

#include <gtest/gtest.h>
#include <limits>
#include <random>

#include "classify/forest_builder.h"

namespace lore {
namespace {

TEST(CategoryTree, SkipsANumberBehindEachChild) {
    CProCategoryTree node = Node(-1, "A", {Node(-1, "B"), Node(-1, "C")});
    EXPECT_EQ(node.Renumber(10), 15);
    EXPECT_EQ(Shape(node), "10:A(11:B,13:C)");
    CProCategoryTree chain = Chain({"A", "B", "C"});
    EXPECT_EQ(chain.Renumber(10), 15);
    EXPECT_EQ(Shape(chain), "10:A(11:B(12:C))");
    constexpr int32_t kHighest = std::numeric_limits<int32_t>::max();
    EXPECT_EQ(chain.Renumber(kHighest), kHighest);
}

TEST(CategoryTree, KeepsParentPointersTrueInCopiesAndMoves) {
    CProCategoryTree tree = Node(1, "A", {Node(2, "B", {Node(3, "C")})});
    for (int32_t id = 4; id < 40; ++id)
        tree.AddChild(Node(id, "more", {Node(id + 100, "below")}));
    EXPECT_TRUE(IsLinked(tree));
    CProCategoryTree copy = tree;
    EXPECT_TRUE(IsLinked(copy));
    CProCategoryTree moved = std::move(copy);
    moved.children.erase(moved.children.begin());
    EXPECT_TRUE(IsLinked(moved));
    EXPECT_EQ(moved.FindByID(139)->GetLevel(), 2);
    CProCategoryTree below = moved.children[3];
    EXPECT_EQ(below.parent, nullptr);
    moved = moved.children[3];  // a part of itself
    EXPECT_EQ(Shape(moved), Shape(below));
    EXPECT_TRUE(IsLinked(moved));
}

TEST(CategoryTree, FindsByPlaceTheFirstWithThatParentName) {
    const CProCategoryList forest =
        Forest({Node(1, "X", {Node(2, "B", {Node(3, "aaa"), Node(4, "AAA")})}),
                Node(5, "B", {Node(6, "AAA", {Node(7, "AAA")}), Node(8, "AAA")}), Node(9, "B", {Node(10, "AAA")})});
    struct Case {
        const char* name;
        const char* parent;
        int level;
        int32_t id;
    };
    const Case cases[] = {{"AAA", "B", 1, 6},  {"AAA", "B", 2, 4},   {"AAA", "AAA", 2, 7}, {"B", "", 0, 5},
                          {"B", "X", 1, 2},    {"B", "x", 1, -1},    {"b", "", 0, -1},     {"AAA", "", 1, -1},
                          {"AAA", "B", 3, -1}, {"AAA", "B", -1, -1}, {"X", "", 1, -1}};
    for (const Case& c : cases) {
        const CProCategoryTree* hit = forest.FindByPlace(c.name, c.parent, c.level);
        EXPECT_EQ(hit ? hit->id : -1, c.id) << c.name << " under " << c.parent << " at " << c.level;
    }
    EXPECT_EQ(forest.FindRootByName("x")->id, 1);
    EXPECT_EQ(forest.Roots()[0].children[0].FindChildByName("AaA")->id, 3);
    EXPECT_EQ(forest.Roots()[0].FindChildByName("aaa"), nullptr);
}

TEST(CategoryTree, WalksDownItsFirstChildren) {
    const CProCategoryTree tree =
        Node(1, "A", {Node(2, "B", {Node(3, "C")}), Node(4, "D", {Node(5, "E", {Node(6, "F")})})});
    EXPECT_EQ(tree.GetDeepestLevel(), 3);
    EXPECT_EQ(tree.NodeAtLevel(2)->id, 3);
    EXPECT_EQ(tree.NodeAtLevel(3), nullptr);
    EXPECT_EQ(tree.children[1].NodeAtLevel(0), nullptr);
    EXPECT_EQ(tree.children[1].NodeAtLevel(3)->GetPathText(), "L1: A\nL2: D\nL3: E\nL4: F\n");
    EXPECT_EQ(tree.children[1].GetDeepestLevel(), 3);
}

TEST(CategoryTree, OrdersPathsByTrimmedNamesWithoutCase) {
    struct Case {
        CProCategoryTree a, b;
        bool less, greater;
    };
    const Case cases[] = {
        {Chain({"  apple"}, 1), Chain({"Banana"}, 2), true, false},
        {Chain({"APPLE"}, 1), Chain({"apple "}, 2), false, false},
        {Chain({"Apple"}, 1), Chain({"apple", "Core"}, 5), true, false},
        {Chain({"Apple", "Core"}, 1), Chain({"Apple", "Seed"}, 5), true, false},
        {Chain({"Apple", "Core", "x"}, 1), Chain({"Apple", "core"}, 5), false, true},
        {Chain({"A", "B"}), Chain({"A", "C"}), false, false},           // no ids: the names below aren't compared
        {Chain({"A"}, 1), Node(2, "A", {Node(0, "B")}), false, false},  // an id of 0 is neither
        {Node(1, "A", {Node(0, "B")}), Chain({"A", "B"}, 3), false, false},
        {Chain({"\xC4pfel"}, 1), Chain({"\xE4pfel"}, 1), false, false},
        {Chain({""}), Chain({"a"}, 1), true, false},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(c.a.IsLess(c.b), c.less) << Shape(c.a) << " < " << Shape(c.b);
        EXPECT_EQ(c.b.IsLess(c.a), c.greater) << Shape(c.b) << " < " << Shape(c.a);
    }
}

TEST(CategoryTree, TellsTreesApartByStructureAlone) {
    CProCategoryTree tree = Node(1, "A", {Node(2, "B"), Node(3, "C")});
    CProCategoryTree other = tree;
    other.AddNote(7, kAllSets);
    EXPECT_TRUE(tree.IsSameTree(other));
    std::swap(other.children[0], other.children[1]);
    EXPECT_FALSE(tree.IsSameTree(other));
    other = tree;
    other.children[1].name = "c";
    EXPECT_FALSE(tree.IsSameTree(other));
    other = tree;
    other.children.pop_back();
    EXPECT_FALSE(tree.IsSameTree(other));
}

TEST(CategoryTree, CountsANoteAsUnassignedOnlyWhenItIsSoInEverySet) {
    CProCategoryTree node(kUnassignedID, kUnassignedName);
    node.AddNote(5, 1);
    node.AddNote(5, 2);
    node.AddNote(6, 3);
    EXPECT_TRUE(node.HasNote(5, 1) && node.HasNote(5, 2));
    EXPECT_FALSE(node.HasNote(5, 3) || node.HasNote(5, kAllSets));
    EXPECT_TRUE(node.HasNotes(3));
    EXPECT_FALSE(node.HasNotes(kAllSets));
    EXPECT_TRUE(node.GetNotesOnlyAtLevel(kAllSets).IsEmpty());
    node.AddNote(5, 3);
    EXPECT_TRUE(node.HasNotes(kAllSets));
    EXPECT_EQ(node.GetNotesOnlyAtLevel(kAllSets), (LongList{5}));
    node.id = 4;
    EXPECT_EQ(node.GetNotesOnlyAtLevel(kAllSets), (LongList{5, 6}));
    EXPECT_TRUE(node.HasNote(6, kAllSets));
}

TEST(CategoryTree, AddsAndRemovesUpwardAndDownward) {
    CProCategoryTree tree = Node(1, "A", {Node(2, "B", {Node(3, "C")}), Node(4, "D")});
    tree.FindByID(3)->AddNoteUpward(9, 2);
    tree.FindByID(2)->AddNote(8, kAllSets);
    tree.AddNote(0, kAllSets);
    tree.AddNoteUpward(-1, 1);
    tree.AddNote(7, -1);
    EXPECT_EQ(tree.notes, (SetLists{LongList{}, LongList{9}, LongList{}}));
    EXPECT_EQ(tree.FindByID(3)->notes, (SetLists{LongList{8}, LongList{9, 8}, LongList{8}}));
    EXPECT_TRUE(tree.HasNoteInTree(8, 3));
    EXPECT_FALSE(tree.HasNote(8, 3));
    EXPECT_FALSE(tree.HasNoteInTree(9, 3));
    EXPECT_FALSE(tree.HasNotes(1));
    EXPECT_TRUE(tree.HasNotesInTree(1));
    tree.FindByID(2)->RemoveNoteUpward(9, kAllSets);
    EXPECT_TRUE(tree.FindByID(3)->HasNote(9, 2));
    EXPECT_FALSE(tree.HasNotes(kAllSets));
}

TEST(CategoryTree, RemovesFromTheSetOfAllWhatASubcategoryHoldsInAnotherSet) {
    CProCategoryTree tree = Node(1, "A", {Node(2, "B")});
    tree.AddNoteUpward(5, 1);
    tree.children[0].AddNoteUpward(5, 2);
    tree.AddNoteUpward(6, 3);
    EXPECT_EQ(tree.GetNotesOnlyAtLevel(1), (LongList{5}));
    EXPECT_EQ(tree.GetNotesOnlyAtLevel(kAllSets), (LongList{6}));
}

/// A random tree whose notes are filed as an index files them: in one node and all above it, one node a set.
CProCategoryTree RandomTree(std::mt19937& random, int nodes, int notes) {
    CProCategoryTree tree = Node(1, "1");
    for (int32_t id = 2; id <= nodes; ++id)
        tree.FindByID(static_cast<int32_t>(random() % static_cast<unsigned>(id - 1)) + 1)
            ->AddChild(Node(id, std::to_string(id)));
    for (int32_t note = 1; note <= notes; ++note)
        for (int set = 1; set <= kSetCount; ++set)
            if (random() % 3 != 0)
                tree.FindByID(static_cast<int32_t>(random() % static_cast<unsigned>(nodes)) + 1)
                    ->AddNoteUpward(note, set);
    return tree;
}

void TakeAsTold(CProCategoryTree& node, SetLists& taken, int set, bool remove) {
    for (int s = 1; s <= kSetCount; ++s) {
        if (set != kAllSets && set != s)
            continue;
        LongList own = node.GetNotesOnlyAtLevel(s);
        for (CProCategoryTree& child : node.children) {
            SetLists below;
            TakeAsTold(child, below, s, false);
            own.Merge(below[static_cast<size_t>(s - 1)]);
        }
        if (remove)
            for (const int32_t note : own)
                node.RemoveNoteUpward(note, s);
        taken[static_cast<size_t>(s - 1)].Merge(own);
    }
}

TEST(CategoryTree, TakesTheNotesOfASubtreeAsAWalkWould) {
    std::mt19937 random(4);
    for (int round = 0; round < 60; ++round) {
        CProCategoryTree tree = RandomTree(random, 12, 30);
        CProCategoryTree other = tree;
        const int32_t id = static_cast<int32_t>(random() % 12) + 1;
        const int set = static_cast<int>(random() % 4);
        SetLists taken{LongList{1000}, {}, {}}, expected = taken;
        tree.FindByID(id)->TakeNotesOnlyAtLevels(taken, set, round % 2 == 0);
        TakeAsTold(*other.FindByID(id), expected, set, round % 2 == 0);
        EXPECT_EQ(taken, expected);
        for (int32_t node = 1; node <= 12; ++node)
            EXPECT_EQ(tree.FindByID(node)->notes, other.FindByID(node)->notes) << node;
    }
}

}  // namespace
}  // namespace lore
