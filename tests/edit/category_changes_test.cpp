#include "edit/category_changes.h"

#include "classify/category_edit.h"
#include "classify/forest_builder.h"
#include "edit/category_trees.h"
#include "edit/edit_fixture.h"

namespace lore {
namespace {

/// Lights (Lenses) and Places; notes 1 and 2 in Lenses in two files, 3 in Places, 4 nowhere that the forest knows.
class CategoryChangesTest : public EditFixture {
protected:
    CategoryChangesTest() {
        for (const int32_t id : {1, 2}) {
            CNote note = TextNote(id, "In lenses", {1010 + id});
            note.categories[0] = PathOf({{3, "Lights"}, {4, "Lenses"}});
            Stored(note);
        }
        CNote third = TextNote(3, "In places");
        third.categories[0] = PathOf({{5, "Places"}});
        third.categories[1] = PathOf({{4, "An old name"}});
        Stored(third);
        CNote fourth = TextNote(4, "Elsewhere");
        fourth.categories[0] = PathOf({{77, "Gone"}});
        fourth.categories[1] = PathOf({{5, "Places"}});
        Stored(fourth);
    }
    CategoryTrees Trees() { return CategoryTrees(book.categories, maxCategoryID, prompts); }
    CProCategoryList Without(int32_t category) {
        CategoryTrees trees = Trees();
        prompts.answers = {PromptAnswer::Yes};
        trees.DeleteCategory(category);
        return trees.Forest();
    }
    std::string Path(const std::string& file, int32_t id, size_t set = 0) {
        for (const CNote& note : NotesIn(file))
            if (note.id == id)
                return Shape(note.categories[set]);
        return "no note";
    }
    /// How many notes each category of the NoteBook has in set 1, from the disk.
    std::string Counts(const CProCategoryList& forest) {
        std::string text;
        const auto count = [&](const auto& self, const CProCategoryTree& node) -> void {
            text += node.name + "=" + std::to_string(node.notes[0].Count()) + " ";
            for (const CProCategoryTree& child : node.children)
                self(self, child);
        };
        for (const CProCategoryTree& root : forest.Roots())
            count(count, root);
        return text;
    }

    int maxCategoryID = 5;
    const std::string first = "SRC0000001011.dat", second = "SRC0000001012.dat", day = "DAY01012020.dat";
};

TEST_F(CategoryChangesTest, APathThatTheForestDoesntKnowStays) {
    EXPECT_EQ(SaveCategoryTrees(world, Without(5)).notes.changed, (LongList{3, 4}));
    EXPECT_EQ(Path(day, 4), "77:Gone");
    EXPECT_EQ(Path(day, 4, 1), "-1:") << "unassigned now";
    EXPECT_EQ(Path(day, 3), "-1:");
    EXPECT_EQ(Path(day, 3, 1), "3:Lights(4:Lenses)") << "all paths of a touched note become true";
}

TEST_F(CategoryChangesTest, NotesInSyncAreStampedInOneWrite) {
    Link();
    for (const int32_t id : {1, 2}) {
        const int32_t state = id == 1 ? kStoredTrue : -1;
        const std::string key = "{G" + std::to_string(id) + "}";
        book.syncLog.ReplaceSyncInfo({id, state, -1, false, key, "", {}, {}, {}, DateTime(2001, 1, 1), {}});
    }
    const DateTime edited = NotesIn(first)[0].dateEdited;
    CategoryTrees trees = Trees();
    trees.DropOn(4, 5);
    EXPECT_EQ(SaveCategoryTrees(world, trees.Forest()).notes.changed, (LongList{1, 2, 3}));
    EXPECT_EQ(NotesIn(first)[0].dateEdited, edited);
    EXPECT_EQ(Shape(book.categories), Shape(Reloaded().categories));
    const SyncLog read = StoredLog();
    EXPECT_EQ(read.FindSyncInfo("{G1}")->CategoriesChanged, clock.now);
    EXPECT_EQ(read.FindSyncInfo("{G1}")->KeyWordsChanged, DateTime(2001, 1, 1));
    EXPECT_TRUE(read.FindSyncInfo("{G1}")->Changed);
    EXPECT_FALSE(read.FindSyncInfo("{G2}")->Changed) << "it isn't in sync";
    EXPECT_EQ(Path(first, 1), "5:Places(4:Lenses)");
    EXPECT_EQ(Path(day, 3, 1), "5:Places(4:Lenses)");
}

TEST_F(CategoryChangesTest, NothingChangesWhereTheCategoriesCantBeWritten) {
    const CProCategoryList forest = Without(3);
    const std::string bytes = folder.Bytes(first), shape = Shape(book.categories);
    Block(book.paths.Categories());
    EXPECT_FALSE(SaveCategoryTrees(world, forest).saved);
    EXPECT_EQ(faults.faults.size(), 1u);
    EXPECT_EQ(folder.Bytes(first), bytes);
    EXPECT_EQ(Shape(book.categories), shape);
    Unblock(book.paths.Categories());
    EXPECT_TRUE(SaveCategoryTrees(world, forest).saved);
    EXPECT_EQ(Path(first, 1), "-1:");
}

TEST_F(CategoryChangesTest, ANoteThatCantBeWrittenKeepsItsCategory) {
    const CProCategoryList forest = Without(3);
    const std::string bytes = folder.Bytes(second);
    std::filesystem::rename(book.paths.NoteFile(second), book.paths.NoteFile("kept"));
    Block(book.paths.NoteFile(second));
    const SavedCategories result = SaveCategoryTrees(world, forest);
    EXPECT_EQ(result.notes.failed, LongList{2});
    EXPECT_FALSE(faults.faults.empty());
    Unblock(book.paths.NoteFile(second));
    std::filesystem::rename(book.paths.NoteFile("kept"), book.paths.NoteFile(second));
    EXPECT_EQ(folder.Bytes(second), bytes);
    // The category that it names is still there, and holds it alone.
    for (const OpenNoteBook& picture : {std::cref(book).get(), Reloaded()})
        EXPECT_EQ(Counts(picture.categories), "Places=1 <UNASSIGNED>=1 Lights=1 Lenses=1 ");
    faults.faults.clear();
    EXPECT_EQ(SaveCategoryTrees(world, Without(3)).notes.changed, LongList{2});
    EXPECT_EQ(Counts(Reloaded().categories), "Places=1 <UNASSIGNED>=2 ");
    EXPECT_THAT(faults.faults, IsEmpty());
}

}  // namespace
}  // namespace lore
