#include "edit/category_assignment.h"

#include <functional>
#include <set>

#include "classify/category_edit.h"
#include "edit/edit_fixture.h"

namespace lore {
namespace {

using Path = std::vector<std::string>;

class CategoryAssignmentTest : public EditFixture {
protected:
    /// Puts a path into a set, making what it lacks.
    void Make(CategoryAssignment& editor, int set, const Path& path) {
        for (size_t level = 0; level < path.size(); ++level) {
            const std::vector<CategoryChoice> choices = editor.Choices(set, level);
            const auto named = std::find_if(choices.begin(), choices.end(),
                                            [&](const CategoryChoice& choice) { return choice.name == path[level]; });
            prompts.texts = {path[level]};
            if (named != choices.end())
                editor.Choose(set, level, named->id);
            else
                EXPECT_TRUE(editor.CreateCategory(set, level)) << path[level];
        }
    }
    /// Saves a note with what stands in an editor.
    static SaveOutcome Save(EditNoteSession& session, const CategoryAssignment& editor) {
        editor.WriteBack(session.note);
        session.newCategories = editor.NewCategories();
        FixedNoteText text(Rtf("Text"));
        return session.SaveNote(text);
    }
    CNote SavedNew(const CategoryAssignment& editor) {
        EditNoteSession session = EditNoteSession::ForNewNote(world, nullptr);
        EXPECT_EQ(Save(session, editor), SaveOutcome::Saved);
        return session.note;
    }
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
    prompts.texts = {"PLACES", " <unassigned> ", "   "};
    EXPECT_FALSE(boxes.CreateCategory(1, 0));
    EXPECT_FALSE(boxes.CreateCategory(1, 0)) << "cancelled";
    EXPECT_THAT(prompts.seen,
                ElementsAre("Create New Level 1 Category? New Category Name: []",
                            "Invalid Category Name: There is already a category at this level with the same name.",
                            "Create New Level 1 Category? New Category Name: [PLACES]",
                            "Invalid Category Name: There is already a category at this level with the same name.",
                            "Create New Level 1 Category? New Category Name: [<unassigned>]",
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
    session.newCategories = boxes.NewCategories();
    FixedNoteText none(Rtf(""));
    EXPECT_EQ(session.SaveNote(none), SaveOutcome::NoText);
    EXPECT_EQ(book.categories.FindByID(6), nullptr) << "a refused save makes nothing";
    ASSERT_EQ(Save(session, boxes), SaveOutcome::Saved);
    EXPECT_EQ(settings.Int(Option::MaxCategoryID), 8);
    const OpenNoteBook fresh = Reloaded();
    ASSERT_NE(fresh.categories.FindByID(8), nullptr);
    EXPECT_EQ(fresh.categories.FindByID(8)->GetPathText(), "L1: Fog\nL2: Horns\n");
    EXPECT_EQ(fresh.categories.FindByID(7), nullptr);
    EXPECT_TRUE(fresh.categories.FindByID(8)->notes[0].Contains(session.note.id));
}

TEST_F(CategoryAssignmentTest, ASaveIsRefusedWhoseCategoriesCantBeWritten) {
    EditNoteSession session = EditNoteSession::ForNewNote(world, nullptr);
    boxes.Fill(session.note);
    ASSERT_TRUE(Create(1, 0, "Fog"));
    const int32_t fog = boxes.ChosenID(1, 0);
    Block(book.paths.Categories());
    EXPECT_EQ(Save(session, boxes), SaveOutcome::NotWritten);
    EXPECT_EQ(book.categories.FindByID(fog), nullptr);
    EXPECT_TRUE(Reloaded().index.Entries().empty()) << "no note names what is missing";
    Unblock(book.paths.Categories());
    FixedNoteText text(Rtf("Text"));
    ASSERT_EQ(session.SaveNote(text), SaveOutcome::Saved) << "the new category was kept for this";
    EXPECT_TRUE(Reloaded().categories.FindByID(fog)->notes[0].Contains(session.note.id));
}

TEST_F(CategoryAssignmentTest, WhatAnotherEditorHasSavedMeanwhileIsNeitherReplacedNorDoubled) {
    // What another editor and the own one hold, the own path after the save, and how many more categories there are.
    const std::tuple<Path, Path, const char*, size_t> cases[] = {
        {{"Fog"}, {"Reef"}, "L1: Reef\n", 2},
        {{"Fog", "Bells"}, {"Reef", "Horns"}, "L1: Reef\nL2: Horns\n", 4},
        {{"Fog", "Bells"}, {"Reef", "Bells", "Old"}, "L1: Reef\nL2: Bells\nL3: Old\n", 5},
        {{"Fog"}, {"fog"}, "L1: Fog\n", 1},
        {{"Fog", "Bells"}, {"Fog", "Horns"}, "L1: Fog\nL2: Horns\n", 3},
        {{"Fog", "Bells"}, {"Horns", "Bells"}, "L1: Horns\nL2: Bells\n", 4},
        {{"Fog", "Bells"}, {"Fog", "Bells"}, "L1: Fog\nL2: Bells\n", 2},
        {{"Lights", "Reef"}, {"Places", "Reef"}, "L1: Places\nL2: Reef\n", 2},
        {{"Lights", "Reef"}, {"Lights", "Lenses", "Reef"}, "L1: Lights\nL2: Lenses\nL3: Reef\n", 2},
    };
    const CProCategoryList before = book.categories;
    const std::function<size_t(const std::vector<CProCategoryTree>&)> count = [&](const auto& nodes) {
        size_t all = nodes.size();
        for (const CProCategoryTree& node : nodes)
            all += count(node.children);
        return all;
    };
    for (const auto& [others, own, saved, more] : cases) {
        SCOPED_TRACE(saved);
        book.categories = before;
        settings.Set(Option::MaxCategoryID, 3);
        CategoryAssignment other(book.categories, 3, prompts), editor(book.categories, 3, prompts);
        other.Fill(CNote());
        editor.Fill(CNote());
        Make(other, 1, others);
        Make(editor, 1, own);
        Make(editor, 3, own);
        std::string path;
        for (size_t level = 0; level < others.size(); ++level)
            path += "L" + std::to_string(level + 1) + ": " + others[level] + "\n";
        const CNote otherNote = SavedNew(other), note = SavedNew(editor);
        const OpenNoteBook fresh = Reloaded();
        EXPECT_EQ(NotePlaces(fresh.categories, 1).at(otherNote.id)->GetPathText(), path);
        for (const int set : {1, 3}) {
            const CProCategoryTree& place = *NotePlaces(fresh.categories, set).at(note.id);
            EXPECT_EQ(place.GetPathText(), saved);
            EXPECT_TRUE(note.categories[static_cast<size_t>(set - 1)].IsSameTree(PathTo(place)));
        }
        EXPECT_EQ(count(fresh.categories.Roots()), count(before.Roots()) + more);
        EXPECT_GE(settings.Int(Option::MaxCategoryID), fresh.categories.HighestID());
    }
}

TEST_F(CategoryAssignmentTest, ARepeatedSaveMakesNothingAnew) {
    boxes.Fill(CNote());
    Make(boxes, 1, {"Fog", "Bells"});
    EditNoteSession session = EditNoteSession::ForNewNote(world, nullptr);
    Block(book.paths.NoteFile("DAY03142026.dat"));
    for (const SaveOutcome expected : {SaveOutcome::NotWritten, SaveOutcome::NotWritten, SaveOutcome::Saved}) {
        if (expected == SaveOutcome::Saved)
            Unblock(book.paths.NoteFile("DAY03142026.dat"));
        EXPECT_EQ(Save(session, boxes), expected);
        std::set<std::string> offered;
        for (const CategoryChoice& choice : boxes.Choices(1, 0))
            EXPECT_TRUE(offered.insert(choice.name).second) << choice.name;
    }
    EXPECT_EQ(Reloaded().categories.Roots().size(), 4u) << "with <UNASSIGNED>";
    EXPECT_EQ(NotePlaces(Reloaded().categories, 1).at(session.note.id)->id, 7);
}

TEST_F(CategoryAssignmentTest, EditorsThatShareACounterGiveNoNumberTwice) {
    int32_t last = 3;
    const auto counter = [&](int32_t id) { return last = std::max(last, id); };
    CategoryAssignment first(book.categories, counter, prompts), second(book.categories, counter, prompts);
    first.Fill(CNote());
    second.Fill(CNote());
    Make(first, 1, {"Fog"});
    Make(second, 1, {"Reef"});
    SavedNew(first);
    Make(second, 2, {"Fog", "Bells"});
    const CNote note = SavedNew(second);
    const OpenNoteBook fresh = Reloaded();
    EXPECT_EQ(NotePlaces(fresh.categories, 1).at(note.id)->GetPathText(), "L1: Reef\n");
    EXPECT_EQ(NotePlaces(fresh.categories, 2).at(note.id)->GetPathText(), "L1: Fog\nL2: Bells\n");
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
