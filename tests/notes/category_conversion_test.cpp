#include "notes/category_conversion.h"

#include <gtest/gtest.h>

#include "notes/note_builder.h"

namespace lore {
namespace {

/// A record of version 10.9, whose three paths stand in the old form.
void AddOldNote(RawRecord& raw, int32_t id, const std::vector<std::vector<std::string>>& paths) {
    raw.Int(id).Int(0).Text("2011-07-12-14-20-24").Text("2011-07-13-01-02-03").Text("{N}").Text("").Text("");
    raw.Int(2112).Int(0).Text("plain").Text("rich");
    for (const std::vector<std::string>& path : paths) {
        raw.Int(static_cast<int32_t>(path.size()));
        for (size_t level = 0; level < path.size(); ++level)
            raw.Int(static_cast<int32_t>(level)).Text(path[level]).Text("");
    }
}

TEST(CategoryConversion, WritesTheForestAndTheIdsIntoTheNotes) {
    NoteBookFolder disk;
    RawRecord raw;
    raw.Real(10.9).Int(2);
    AddOldNote(raw, 1, {{"A", "B"}, {}, {"<UNASSIGNED>"}});
    AddOldNote(raw, 2, {{"A", "C"}, {"A"}, {}});
    PutBytes(disk.paths.NoteFile("DAY07122011.dat"), raw.Bytes());
    PutBytes(disk.paths.EmptyCategories(1),
             RawRecord().Real(10.9).Int(2).Int(0).Int(2).Int(0).Text("A").Text("").Int(1).Text("D").Text("A").Bytes());

    ReadWorld world;
    KeptFaults faults;
    int maxCategoryID = 100;
    ASSERT_TRUE(NeedsCategoryConversion(disk.paths));
    ConvertCategories(disk.paths, maxCategoryID, world.context, faults);
    EXPECT_FALSE(NeedsCategoryConversion(disk.paths));
    EXPECT_TRUE(faults.told.empty());

    CProCategoryList forest;
    ASSERT_TRUE(forest.Load(disk.paths.Categories()).Ok());
    const CProCategoryTree* a = forest.FindByPlace("A", "", 0);
    ASSERT_NE(a, nullptr);
    EXPECT_EQ(a->id, 101);
    ASSERT_EQ(a->children.size(), 3u);
    EXPECT_EQ(a->children[2].name, "D");

    std::vector<CNote> notes;
    LoadNoteFile(disk.paths.NoteFile("DAY07122011.dat"), world.context, notes);
    ASSERT_EQ(notes.size(), 2u);
    EXPECT_EQ(DeepestCategoryID(notes[0].categories[0]), forest.FindByPlace("B", "A", 1)->id);
    EXPECT_EQ(DeepestCategoryID(notes[1].categories[0]), forest.FindByPlace("C", "A", 1)->id);
    EXPECT_EQ(notes[1].categories[1].id, a->id);
    EXPECT_TRUE(notes[0].categories[2].IsEmptyPath());
    EXPECT_TRUE(BytesOf(disk.paths.NoteFile("DAY07122011.dat")).starts_with("0000000011.56"));
    EXPECT_TRUE(std::filesystem::exists(disk.paths.EmptyCategories(1)));
}

TEST(CategoryConversion, DamagedNoteFileStaysAndIsReported) {
    NoteBookFolder disk;
    RawRecord raw;
    raw.Real(10.9).Int(2);
    AddOldNote(raw, 1, {{"A"}, {}, {}});
    const std::string bytes = raw.Bytes();
    PutBytes(disk.paths.NoteFile("DAY07122011.dat"), bytes);
    ReadWorld world;
    KeptFaults faults;
    int maxCategoryID = 0;
    ConvertCategories(disk.paths, maxCategoryID, world.context, faults);
    EXPECT_EQ(BytesOf(disk.paths.NoteFile("DAY07122011.dat")), bytes);
    ASSERT_EQ(faults.told.size(), 1u);
    CProCategoryList forest;
    forest.Load(disk.paths.Categories());
    EXPECT_NE(forest.FindRootByName("A"), nullptr);
}

TEST(CategoryConversion, FileThatIsThereIsNeverBuiltAnew) {
    NoteBookFolder disk;
    PutBytes(disk.paths.Categories(), "");
    EXPECT_FALSE(NeedsCategoryConversion(disk.paths));
    std::filesystem::remove(disk.paths.Categories());
    std::filesystem::create_symlink("nowhere", disk.paths.Categories());
    EXPECT_FALSE(NeedsCategoryConversion(disk.paths));
}

}  // namespace
}  // namespace lore
