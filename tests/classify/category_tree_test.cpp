#include "classify/category_tree.h"

#include <gtest/gtest.h>

#include "classify/forest_builder.h"

namespace lore {
namespace {

TEST(CategoryTree, SkipsANumberBehindEachChild) {
    CProCategoryTree node = Node(-1, "A", {Node(-1, "B"), Node(-1, "C")});
    CategoryIDs ids;
    EXPECT_EQ(node.Renumber(10, ids), 15);
    EXPECT_EQ(Shape(node), "10:A(11:B,13:C)");
    CProCategoryTree chain = Chain({"A", "B", "C"});
    CategoryIDs others;
    EXPECT_EQ(chain.Renumber(10, others), 15);
    EXPECT_EQ(Shape(chain), "10:A(11:B(12:C))");
}

TEST(CategoryTree, NeverGetsANumberThatItMustNotHave) {
    const std::pair<int64_t, const char*> cases[] = {
        {int64_t{kHighestID} - 1, "2147483646:A(2147483647:B(4:C),6:D)"},
        {int64_t{kHighestID} + 1, "4:A(6:B(7:C),9:D)"},
        {kUnassignedID - 1, "21122111:A(21122113:B(21122114:C),21122117:D)"},
        {8, "4:A(9:B(10:C),13:D)"},
        {-1, "4:A(6:B(1:C),7:D)"}};
    for (const auto& [first, numbered] : cases) {
        CategoryIDs ids;
        for (const int32_t used : {5, 8, 12})
            ids.MarkUsed(used);
        CProCategoryTree tree = Node(-1, "A", {Node(-1, "B", {Node(-1, "C")}), Node(-1, "D")});
        tree.Renumber(first, ids);
        EXPECT_EQ(Shape(tree), numbered);
        EXPECT_TRUE(IsLinked(tree));
    }
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

TEST(CategoryTree, FindsByNameWithoutCaseAmongItsChildren) {
    const CProCategoryList forest =
        Forest({Node(1, "X", {Node(2, "B", {Node(3, "aaa"), Node(4, "AAA")})}), Node(5, "aaa")});
    EXPECT_EQ(forest.FindRootByName("x")->id, 1);
    EXPECT_EQ(forest.Roots()[0].children[0].FindChildByName("AaA")->id, 3);
    EXPECT_EQ(forest.Roots()[0].FindChildByName("aaa"), nullptr);
}

TEST(CategoryTree, OrdersPathsByTrimmedNamesWithoutCase) {
    const std::tuple<CProCategoryTree, CProCategoryTree, bool, bool> cases[] = {
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
    for (const auto& [a, b, less, greater] : cases) {
        EXPECT_EQ(a.IsLess(b), less) << Shape(a) << " < " << Shape(b);
        EXPECT_EQ(b.IsLess(a), greater) << Shape(b) << " < " << Shape(a);
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
    EXPECT_EQ(node.GetNotes(2), (LongList{5}));
    EXPECT_EQ(node.GetNotes(3), (LongList{6}));
    EXPECT_TRUE(node.GetNotes(kAllSets).IsEmpty());
    node.AddNote(5, 3);
    EXPECT_EQ(node.GetNotes(kAllSets), (LongList{5}));
    node.id = 4;
    EXPECT_EQ(node.GetNotes(kAllSets), (LongList{5, 6}));
}

TEST(CategoryTree, AddsUpwardAndDownward) {
    CProCategoryTree tree = Node(1, "A", {Node(2, "B", {Node(3, "C")}), Node(4, "D")});
    tree.FindByID(3)->AddNoteUpward(9, 2);
    tree.FindByID(2)->AddNote(8, kAllSets);
    tree.AddNote(0, kAllSets);
    tree.AddNoteUpward(-1, 1);
    tree.AddNote(7, -1);
    EXPECT_EQ(tree.notes, (SetLists{LongList{}, LongList{9}, LongList{}}));
    EXPECT_EQ(tree.FindByID(3)->notes, (SetLists{LongList{8}, LongList{9, 8}, LongList{8}}));
    tree.FindByID(2)->RemoveNote(9, kAllSets);
    EXPECT_EQ(tree.notes[1], (LongList{9}));
    EXPECT_EQ(tree.FindByID(3)->notes[1], (LongList{8}));
}

}  // namespace
}  // namespace lore
