#include "edit/category_assignment.h"

#include "edit/edit_fixture.h"

namespace lore {
namespace {

using testing::ElementsAre;

class CategoryAssignmentTest : public EditFixture {
protected:
    std::vector<std::string> Offered(int set, size_t level) const {
        return Each(boxes.Choices(set, level), &CategoryChoice::name);
    }
    bool Create(int set, size_t level, const std::string& name) {
        prompts.texts.push_back(name);
        return boxes.CreateCategory(set, level);
    }
    CNote Written() const {
        CNote note;
        boxes.WriteBack(note);
        return note;
    }
    CategoryAssignment boxes{book.categories, 3, prompts};
};

TEST_F(CategoryAssignmentTest, OneBoxALevelAndAFreeOne) {
    CNote note;
    note.categories[1] = PathOf({{3, "Lights"}, {4, "Lenses"}});
    boxes.Fill(note);
    EXPECT_EQ(boxes.LevelCount(1), 0u);
    EXPECT_EQ(boxes.BoxText(1, 0), "Click To Assign New Level");
    EXPECT_EQ(boxes.BoxText(2, 0), "L1: Lights\n");
    EXPECT_EQ(boxes.BoxText(2, 1), "L2: Lenses\n");
    EXPECT_EQ(boxes.BoxText(2, 2), "Click To Assign New Level");
    EXPECT_THAT(Offered(1, 0), ElementsAre("Lights", "Places")) << "not <UNASSIGNED>";
    EXPECT_THAT(Offered(2, 1), ElementsAre("Lenses"));
    EXPECT_TRUE(Offered(2, 2).empty());
}

TEST_F(CategoryAssignmentTest, ChoosingAnotherTakesWhatStandsBehindAway) {
    CNote note;
    note.categories[0] = PathOf({{3, "Lights"}, {4, "Lenses"}});
    boxes.Fill(note);
    boxes.Choose(1, 0, 3);
    EXPECT_EQ(boxes.LevelCount(1), 2u) << "the same choice changes nothing";
    boxes.Choose(1, 0, 77);
    EXPECT_EQ(boxes.ChosenID(1, 0), 3) << "no such category";
    boxes.Choose(1, 0, 5);
    EXPECT_EQ(boxes.LevelCount(1), 1u);
    EXPECT_TRUE(Written().categories[0].IsSameTree(PathOf({{5, "Places"}})));
    boxes.ClearFrom(1, 0);
    EXPECT_TRUE(Written().categories[0].IsEmptyPath());
}

TEST_F(CategoryAssignmentTest, AnUnchangedPathGoesBackAsItWas) {
    CNote note;
    note.categories[0] = PathOf({{900, "Lost"}, {901, "Child"}});
    note.categories[2] = PathOf({{3, "Old name of Lights"}});
    boxes.Fill(note);
    EXPECT_TRUE(Written().categories[0].IsSameTree(note.categories[0]));
    EXPECT_TRUE(Written().categories[2].IsSameTree(note.categories[2]));
    EXPECT_FALSE(boxes.CanCreate(1, 1)) << "nothing can be made below a category that the forest doesn't know";
    EXPECT_TRUE(Offered(1, 1).empty());
}

TEST_F(CategoryAssignmentTest, NamesOfSiblingsAreRefusedWithoutRegardToCase) {
    boxes.Fill(CNote());
    EXPECT_FALSE(Create(1, 0, "PLACES"));
    EXPECT_FALSE(Create(1, 0, "<unassigned>"));
    EXPECT_FALSE(Create(1, 0, "   "));
    EXPECT_FALSE(boxes.CreateCategory(1, 0)) << "cancelled";
    EXPECT_THAT(prompts.seen,
                ElementsAre("Create New Level 1 Category? New Category Name: []",
                            "Invalid Category Name: There is already a category at this level with the same name.",
                            "Create New Level 1 Category? New Category Name: []",
                            "Invalid Category Name: There is already a category at this level with the same name.",
                            "Create New Level 1 Category? New Category Name: []",
                            "Create New Level 1 Category? New Category Name: []"));
    EXPECT_EQ(boxes.LevelCount(1), 0u);
    EXPECT_TRUE(Create(1, 0, " Lenses ")) << "the name of a cousin is free";
    EXPECT_EQ(boxes.BoxText(1, 0), "L1: Lenses\n");
}

TEST_F(CategoryAssignmentTest, NewCategoriesAreNumberedAndOfferedButStayOutOfTheForest) {
    boxes.Fill(CNote());
    ASSERT_TRUE(Create(1, 0, "Fog"));
    ASSERT_TRUE(Create(1, 1, "Bells"));
    EXPECT_EQ(prompts.seen.back(), "Create New Level 2 Category? New Category Name: []");
    EXPECT_EQ(boxes.ChosenID(1, 0), 6);
    EXPECT_EQ(boxes.ChosenID(1, 1), 7);
    EXPECT_THAT(Offered(3, 0), ElementsAre("Lights", "Places", "Fog"));
    EXPECT_FALSE(Create(3, 0, "fog"));
    EXPECT_EQ(book.categories.FindByID(6), nullptr);
    boxes.ClearFrom(1, 1);
    ASSERT_EQ(boxes.NewCategories().size(), 1u) << "what no path uses isn't kept";
    EXPECT_EQ(boxes.NewCategories()[0].name, "Fog");
}

TEST_F(CategoryAssignmentTest, IdsPassOverTheReservedOne) {
    CategoryAssignment late(book.categories, kUnassignedID - 1, prompts);
    late.Fill(CNote());
    prompts.texts = {"A", "B"};
    ASSERT_TRUE(late.CreateCategory(1, 0));
    ASSERT_TRUE(late.CreateCategory(1, 1));
    EXPECT_GT(late.ChosenID(1, 0), kUnassignedID);
    EXPECT_GT(late.ChosenID(1, 1), late.ChosenID(1, 0));
}

TEST_F(CategoryAssignmentTest, TheSaveMakesTheCategoriesThatTheNoteUses) {
    settings.Set(Option::MaxCategoryID, 3);
    EditNoteSession session = EditNoteSession::ForNewNote(world, nullptr);
    boxes.Fill(session.note);
    ASSERT_TRUE(Create(1, 0, "Fog"));
    ASSERT_TRUE(Create(1, 1, "Bells"));
    ASSERT_TRUE(Create(1, 1, "Horns"));
    boxes.WriteBack(session.note);
    session.newCategories = boxes.NewCategories();
    FixedNoteText none(Rtf(""));
    EXPECT_EQ(session.SaveNote(none), SaveOutcome::NoText);
    EXPECT_EQ(book.categories.FindByID(6), nullptr) << "a refused save makes nothing";
    FixedNoteText text(Rtf("Text"));
    ASSERT_EQ(session.SaveNote(text), SaveOutcome::Saved);
    EXPECT_EQ(settings.Int(Option::MaxCategoryID), 8);
    const OpenNoteBook fresh = Reloaded();
    ASSERT_NE(fresh.categories.FindByID(8), nullptr);
    EXPECT_EQ(fresh.categories.FindByID(8)->GetPathText(), "L1: Fog\nL2: Horns\n");
    EXPECT_EQ(fresh.categories.FindByID(7), nullptr);
    EXPECT_TRUE(fresh.categories.FindByID(8)->notes[0].Contains(session.note.id));
}

TEST_F(CategoryAssignmentTest, BehindTheHighestIdNewCategoriesGetFreeOnes) {
    book.categories.AddRoot({2147483647, "Last"});
    book.categories.LinkAll();
    settings.Set(Option::MaxCategoryID, 2147483647);
    EditNoteSession session = EditNoteSession::ForNewNote(world, nullptr);
    boxes.Fill(session.note);
    ASSERT_TRUE(Create(1, 0, "Fog"));
    ASSERT_TRUE(Create(1, 1, "Bells"));
    boxes.WriteBack(session.note);
    session.newCategories = boxes.NewCategories();
    FixedNoteText text(Rtf("Text"));
    ASSERT_EQ(session.SaveNote(text), SaveOutcome::Saved);
    const OpenNoteBook fresh = Reloaded();
    const CProCategoryTree* const bells = fresh.categories.FindByID(boxes.ChosenID(1, 1));
    ASSERT_NE(bells, nullptr);
    EXPECT_EQ(bells->GetPathText(), "L1: Fog\nL2: Bells\n");
    EXPECT_TRUE(bells->notes[0].Contains(session.note.id));
    EXPECT_TRUE(fresh.categories.FindByID(2147483647)->notes[0].IsEmpty());
    EXPECT_EQ(settings.Int(Option::MaxCategoryID), 2147483647);
}

TEST_F(CategoryAssignmentTest, ASaveIsRefusedWhoseCategoriesCantBeWritten) {
    EditNoteSession session = EditNoteSession::ForNewNote(world, nullptr);
    boxes.Fill(session.note);
    ASSERT_TRUE(Create(1, 0, "Fog"));
    boxes.WriteBack(session.note);
    session.newCategories = boxes.NewCategories();
    const int32_t fog = session.newCategories[0].id;
    FixedNoteText text(Rtf("Text"));
    Block(book.paths.Categories());
    EXPECT_EQ(session.SaveNote(text), SaveOutcome::NotWritten);
    EXPECT_EQ(book.categories.FindByID(fog), nullptr);
    EXPECT_TRUE(Reloaded().index.Entries().empty()) << "no note names what is missing";
    Unblock(book.paths.Categories());
    ASSERT_EQ(session.SaveNote(text), SaveOutcome::Saved) << "the new category was kept for this";
    EXPECT_TRUE(Reloaded().categories.FindByID(fog)->notes[0].Contains(session.note.id));
}

TEST_F(CategoryAssignmentTest, ADraftsNewCategoriesAreMadeAnewAndLostOnesStay) {
    CNote stored;
    stored.categories[2] = PathOf({{900, "Lost"}});
    CNote draft = stored;
    draft.categories[0] = PathOf({{3, "Lights"}, {5, "Fog"}});     // its number has gone to another category
    draft.categories[1] = PathOf({{70, "places"}, {71, "Reef"}});  // made since, under another number
    boxes.FillUnsaved(draft, stored);
    EXPECT_EQ(boxes.ChosenID(1, 0), 3);
    EXPECT_EQ(boxes.ChosenID(1, 1), 6);
    EXPECT_EQ(boxes.ChosenID(2, 0), 5);
    EXPECT_EQ(boxes.ChosenID(2, 1), 7);
    EXPECT_EQ(boxes.NewCategories().size(), 2u);
    EXPECT_TRUE(Written().categories[2].IsSameTree(stored.categories[2]));
}

}  // namespace
}  // namespace lore
