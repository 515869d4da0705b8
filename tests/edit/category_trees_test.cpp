#include "edit/category_trees.h"

#include <algorithm>

#include "classify/category_edit.h"
#include "classify/forest_builder.h"
#include "support/matchers.h"
#include "support/scripted_ports.h"

namespace lore {
namespace {

constexpr PromptAnswer kYes = PromptAnswer::Yes, kNo = PromptAnswer::No;

/// History (Ships, Lights (Lenses)), Law (Lights (Lenses, Oil)), <UNASSIGNED>, with notes 1 to 7.
CProCategoryList SmallForest() {
    CProCategoryList forest;
    forest.AddRoot(Node(1, "History", {Node(2, "Ships"), Node(3, "Lights", {Node(4, "Lenses")})}));
    forest.AddRoot(Node(5, "Law", {Node(6, "lights", {Node(7, "Lenses"), Node(8, "Oil")})}));
    forest.AddRoot(Node(kUnassignedID, kUnassignedName));
    forest.LinkAll();
    const int32_t filed[][3] = {{1, 0, 0}, {2, 3, 0}, {4, 0, 5}, {7, 4, 0}, {0, 0, 0}, {8, 1, 0}, {0, 2, 0}};
    for (int32_t note = 1; note <= 7; ++note)
        for (int set = 1; set <= 3; ++set)
            forest.IndexNote(note, CProCategoryTree(filed[note - 1][set - 1], ""), set);
    return forest;
}

class CategoryTreesTest : public testing::Test {
protected:
    std::string Shape() const { return lore::Shape(trees.Forest()); }
    std::vector<int32_t> NotesOf(int32_t id, int set) const {
        std::vector<int32_t> notes = trees.Forest().FindByID(id)->notes[static_cast<size_t>(set - 1)].Values();
        std::sort(notes.begin(), notes.end());
        return notes;
    }
    /// Where each note is filed: "1: 1 - -" with `<UNASSIGNED>` as "-" and nowhere as "?".
    std::string Filed(const CProCategoryList& forest) const {
        std::string text;
        for (int32_t note = 1; note <= 7; ++note) {
            text += (note > 1 ? "|" : "");
            for (int set = 1; set <= 3; ++set) {
                const auto places = NotePlaces(forest, set);
                const auto place = places.find(note);
                const int32_t id = place == places.end() ? -1 : place->second->id;
                text += id == -1 ? "?" : id == kUnassignedID ? "-" : std::to_string(id);
            }
        }
        return text;
    }
    std::string Filed() const { return Filed(trees.Forest()); }

    CProCategoryList master = SmallForest();
    const std::string before = lore::Shape(master);
    int maxCategoryID = 3;
    ScriptedPrompts prompts;
    CategoryTrees trees{master, maxCategoryID, prompts};
};

TEST_F(CategoryTreesTest, NamesAreRefusedThatASiblingHolds) {
    prompts.texts = {"LIGHTS", "Vessels"};
    EXPECT_EQ(trees.RenameCategory(2), 2);
    EXPECT_THAT(prompts.seen,
                ElementsAre("Rename Category? New Name: [Ships]",
                            "Invalid Category Name: There is already a category at this level with the same name.",
                            "Rename Category? New Name: [LIGHTS]"));
    EXPECT_EQ(Shape(), "1:History(2:Vessels,3:Lights(4:Lenses)) 5:Law(6:lights(7:Lenses,8:Oil)) 21122112:<UNASSIGNED>");
    for (const char* const name : {"history", "law", "<Unassigned>"}) {
        prompts.texts = {name};
        EXPECT_EQ(trees.CreateRoot(), std::nullopt) << name;
    }
    prompts.texts = {"vessels"};
    EXPECT_EQ(trees.RenameCategory(2), 2) << "its own name in other letters";
    for (const char* const name : {"", "  ", "vessels"}) {
        prompts.texts = {name};
        EXPECT_EQ(trees.RenameCategory(2), std::nullopt) << "nothing changes: " << name;
    }
    prompts.seen.clear();
    EXPECT_EQ(trees.RenameCategory(kUnassignedID), std::nullopt);
    EXPECT_EQ(trees.CreateSubcategory(kUnassignedID), std::nullopt);
    EXPECT_EQ(trees.DeleteCategory(kUnassignedID), std::nullopt);
    EXPECT_THAT(prompts.seen, IsEmpty());
    EXPECT_EQ(lore::Shape(master), before) << "all of it is a copy";
}

TEST_F(CategoryTreesTest, NewCategoriesAreNumberedOnTheCopy) {
    prompts.texts = {"Sails", "Fog", "Horns"};
    EXPECT_EQ(trees.CreateSubcategory(2), 9);
    EXPECT_EQ(trees.CreateRoot(), 10);
    EXPECT_EQ(trees.CreateSubcategory(10), 11);
    EXPECT_THAT(prompts.seen, ElementsAre("New Level 3 Category? New Name: []", "New Level 1 Category? New Name: []",
                                          "New Level 2 Category? New Name: []"));
    EXPECT_EQ(maxCategoryID, 11);
    EXPECT_EQ(trees.Forest().FindByID(11)->parentID, 10);
    maxCategoryID = kUnassignedID;
    prompts.texts = {"Far"};
    EXPECT_EQ(trees.CreateRoot(), 21122118) << "the reserved number is stepped over";
}

TEST_F(CategoryTreesTest, ADeletedCategoryLeavesItsNotesUnassigned) {
    EXPECT_EQ(trees.DeleteCategory(3), std::nullopt);
    prompts.answers = {kYes};
    EXPECT_EQ(trees.DeleteCategory(3), 1);
    EXPECT_EQ(prompts.seen.back(),
              "Delete Category?? Do you wish to delete the Level 2 category \"Lights\", and all its subcategories?");
    EXPECT_EQ(Filed(), "1--|2--|--5|7--|---|81-|-2-");
    EXPECT_THAT(NotesOf(1, 1), ElementsAre(1, 2));
    EXPECT_THAT(NotesOf(1, 2), ElementsAre(6, 7)) << "the ancestors hold them no longer";
    EXPECT_THAT(NotesOf(kUnassignedID, 2), ElementsAre(1, 2, 3, 4, 5));
    EXPECT_EQ(NotesWithOtherPaths(master, trees.Forest()), (LongList{2, 3, 4}));
}

TEST_F(CategoryTreesTest, ADragMovesTheNotesOfAllSets) {
    EXPECT_EQ(trees.DropOn(2, 7), 2);
    EXPECT_EQ(Shape(), "1:History(3:Lights(4:Lenses)) 5:Law(6:lights(7:Lenses(2:Ships),8:Oil)) 21122112:<UNASSIGNED>");
    EXPECT_TRUE(IsLinked(trees.Forest().Roots()[1]));
    EXPECT_THAT(NotesOf(5, 1), ElementsAre(2, 4, 6));
    EXPECT_THAT(NotesOf(5, 2), ElementsAre(7));
    EXPECT_THAT(NotesOf(1, 1), ElementsAre(1, 3));
    EXPECT_EQ(NotesWithOtherPaths(master, trees.Forest()), (LongList{2, 7}));
    EXPECT_EQ(trees.DropOnEmptyArea(6), 6);
    EXPECT_THAT(NotesOf(5, 1), IsEmpty());
    EXPECT_EQ(trees.Forest().FindByID(6)->parentID, -1);
    EXPECT_THAT(prompts.seen, IsEmpty());
    const std::string shape = Shape();
    for (const auto& [id, target] : {std::pair{3, 3}, {3, 4}, {1, 4}, {3, 1}, {99, 1}, {1, 99}})
        EXPECT_EQ(trees.DropOn(id, target), std::nullopt) << id << " on " << target;
    EXPECT_EQ(trees.DropOnEmptyArea(1), std::nullopt);
    EXPECT_EQ(Shape(), shape);
}

TEST_F(CategoryTreesTest, CategoriesOfTheSameNameMergeIntoTheTarget) {
    prompts.answers = {kNo, kYes};
    EXPECT_EQ(trees.DropOn(6, 1), std::nullopt);
    EXPECT_EQ(Shape(), before);
    EXPECT_EQ(trees.DropOn(6, 1), 3);
    EXPECT_EQ(prompts.seen.back(),
              "Merge Level 2 Categories With Same Name?? There is already a Level 2 Category under History that is "
              "named \"Lights\".\n\nDo you wish to merge the \"lights\" Category that is being moved with the existing "
              "\"Lights\" Category?");
    // What the target lacks is numbered after every id that was given out.
    EXPECT_EQ(Shape(), "1:History(2:Ships,3:Lights(4:Lenses,9:Oil)) 5:Law 21122112:<UNASSIGNED>");
    EXPECT_EQ(Filed(), "1--|23-|4-5|44-|---|91-|-2-");
    EXPECT_THAT(NotesOf(1, 1), ElementsAre(1, 2, 3, 4, 6));
    EXPECT_EQ(NotesWithOtherPaths(master, trees.Forest()), (LongList{4, 6}));
    const auto [both, hasVanished] = WithVanished(master, trees.Forest());
    EXPECT_TRUE(hasVanished);
    EXPECT_EQ(lore::Shape(both),
              "1:History(2:Ships,3:Lights(4:Lenses,9:Oil)) 5:Law(6:lights(7:Lenses,8:Oil)) 21122112:<UNASSIGNED>");
}

TEST_F(CategoryTreesTest, RootsMergeToo) {
    prompts.texts = {"LAW"};
    const auto made = trees.CreateSubcategory(1);
    prompts.answers = {kYes};
    EXPECT_EQ(trees.DropOnEmptyArea(*made), 5);
    EXPECT_EQ(prompts.seen.back(),
              "Merge Level 1 Categories With Same Name?? There is already a Level 1 Category named \"Law\".\n\nDo you "
              "wish to merge the \"LAW\" Category that is being moved with the existing \"Law\" Category?");
    EXPECT_EQ(Shape(), before);
}

TEST_F(CategoryTreesTest, UnassignedNotesAreFiledInACategoryTree) {
    prompts.answers = {kNo, kYes, kYes};
    EXPECT_EQ(trees.DropOn(kUnassignedID, 4), std::nullopt);
    EXPECT_EQ(trees.DropOn(kUnassignedID, 4), 4);
    EXPECT_EQ(prompts.seen.back(),
              "Moving All Unassigned Categories?? Do you wish to assign all of the notes that are currently unassigned "
              "to the category tree:\n\nCategory Set 1\nL1: History\nL2: Lights\nL3: Lenses\n");
    EXPECT_EQ(Filed(), "1--|23-|4-5|74-|4--|81-|-2-") << "only what is unassigned in every set";
    trees.SetView(3);
    EXPECT_EQ(trees.DropOn(kUnassignedID, 2), 2);
    EXPECT_EQ(prompts.seen.back(),
              "Moving All Unassigned Category Set 3 Categories?? Do you wish to assign all of the notes that are "
              "currently unassigned for Category Set 3 to the category tree:\n\nCategory Set 3\nL1: History\nL2: "
              "Ships\n");
    EXPECT_EQ(Filed(), "1-2|232|4-5|742|4-2|812|-22");
    EXPECT_EQ(trees.DropOn(kUnassignedID, 2), std::nullopt) << "there are none left";
    EXPECT_THAT(prompts.seen, SizeIs(3));
}

TEST_F(CategoryTreesTest, UnassignedNotesBecomeANewRoot) {
    trees.SetView(2);
    prompts.texts = {"Law", "Later"};
    prompts.answers = {kYes};
    EXPECT_EQ(trees.DropOnEmptyArea(kUnassignedID), 9);
    EXPECT_THAT(prompts.seen, SizeIs(4)) << "a name that is taken is refused";
    EXPECT_EQ(prompts.seen.back(),
              "Create New Level 1 Category?? Do you wish to create a new Level 1 Category called \"Later\",\n and move "
              "all its attached notes into it?");
    EXPECT_EQ(Filed(), "19-|23-|495|74-|-9-|81-|-2-");
    trees.Undo();
    EXPECT_EQ(Shape(), before) << "root and notes are one step";
    EXPECT_FALSE(trees.IsChanged());
}

TEST_F(CategoryTreesTest, ACategoryOnUnassignedFreesItsNotes) {
    trees.SetView(2);
    prompts.answers = {kYes, kYes};
    EXPECT_EQ(trees.DropOn(1, kUnassignedID), 1);
    EXPECT_EQ(prompts.seen.back(),
              "Unassign Notes Category Set?? Do you wish to unassign the Category Set 2 of all the notes that have "
              "their Category Set 2 - Level 1 Category assigned to: \"History\"?");
    EXPECT_EQ(Filed(), "1--|2--|4-5|7--|---|8--|---");
    trees.SetView(kAllSets);
    EXPECT_EQ(trees.DropOn(3, kUnassignedID), 3);
    EXPECT_EQ(prompts.seen.back(),
              "Unassign Notes Category Set?? Do you wish to unassign the Category Sets of all the notes that have a "
              "Category Set with its Level 2 Category assigned to: \"Lights\"?");
    EXPECT_EQ(Filed(), "1--|2--|--5|7--|---|8--|---");
    EXPECT_EQ(Shape(), before) << "the categories stay";
    EXPECT_EQ(trees.DropOn(3, kUnassignedID), std::nullopt) << "no note is left there";
}

TEST_F(CategoryTreesTest, ACategoryThatGoesDuringAQuestionIsLeft) {
    const std::function<CategoryTrees::Changed()> commands[] = {
        [this] { return trees.DeleteCategory(6); }, [this] { return trees.RenameCategory(6); },
        [this] { return trees.CreateSubcategory(6); }, [this] { return trees.DropOn(6, 1); },
        [this] { return trees.DropOn(kUnassignedID, 6); }};
    for (const auto& command : commands) {
        prompts.seen.clear();
        prompts.whileShown = [this] {
            if (prompts.seen.size() == 1)
                trees.DeleteCategory(5);
        };
        prompts.texts = {"Name"};
        prompts.answers = {kYes, kYes};
        EXPECT_EQ(command(), std::nullopt);
        trees.Undo();
        EXPECT_EQ(Shape(), before);
    }
}

TEST_F(CategoryTreesTest, StepsGoBackAndForth) {
    prompts.texts = {"Sails", "Sea"};
    prompts.answers = {kYes};
    trees.RenameCategory(2);
    trees.DropOn(3, 5);
    trees.Undo();
    EXPECT_EQ(Shape(), "1:History(2:Sails,3:Lights(4:Lenses)) 5:Law(6:lights(7:Lenses,8:Oil)) 21122112:<UNASSIGNED>");
    trees.Redo();
    EXPECT_FALSE(trees.CanRedo());
    trees.Undo();
    trees.Undo();
    EXPECT_EQ(Shape(), before);
    EXPECT_FALSE(trees.CanUndo());
    trees.RenameCategory(5);
    EXPECT_FALSE(trees.CanRedo()) << "another way was taken";
}

}  // namespace
}  // namespace lore
