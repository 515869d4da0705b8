#include "notebooks/data_upgrade.h"

#include "classify/category_list.h"
#include "notes/note_builder.h"
#include "support/each.h"
#include "support/matchers.h"
#include "support/note_reading.h"
#include "support/scripted_ports.h"

namespace lore {
namespace {

namespace fs = std::filesystem;

/// A data folder of a version that knew no NoteBooks.
class OldFolder : public testing::Test {
protected:
    OldFolder() {
        fs::create_directories(root / "Notes");
        fs::create_directories(root / "Attachments" / "Plans");
        PutBytes(root / "Notes" / "DAY07122011.dat", OldNotes(1, {"Lights", "Lenses"}));
        PutBytes(root / "Notes" / "SRC0000001011.dat", OldNotes(2, {"Lights"}));
        PutBytes(root / "Sources.dat", RawRecord().Real(9.5).Int(0).Bytes());
        PutBytes(root / "Authors.dat", RawRecord().Real(9.5).Int(0).Bytes());
        PutBytes(root / "Attachments" / "0000001.png", "picture");
        PutBytes(root / "Attachments" / "Plans" / "tower.pdf", "plan");
        PutBytes(root / "Events.dat", "events");
        PutBytes(root / "Lexicons" / "UserWords.txt", "Fresnel\n");
    }
    /// A file with one note of version 10.9, whose categories stand as a list.
    static std::string OldNotes(int32_t id, const std::vector<std::string>& path) {
        RawRecord raw;
        raw.Real(10.9).Int(1);
        AddOldNote(raw, id, {path, {}, {}});
        return raw.Bytes();
    }
    void PutBytes(const fs::path& file, const std::string& bytes) {
        fs::create_directories(file.parent_path());
        lore::PutBytes(file, bytes);
    }
    bool Upgrade() { return UpgradeDataFolder({data, maxCategoryID, world.context, progress, faults}); }
    static std::vector<std::string> Files(const fs::path& folder) {
        return Each(FilesBelow(folder), [](const auto& file) { return file.first; });
    }

    TempFolder folder;
    DataPaths data{folder.Path()};
    fs::path root = data.DataFiles();
    NoteBookPaths main{data, "_LBMAIN_"};
    int maxCategoryID = 3;
    ReadWorld world;
    ScriptedProgress progress;
    NotedFaults faults;
};

TEST(DataUpgrade, RunsForVersionsBeforeNoteBooksOnly) {
    for (const double version : {0.98, 9.0, 9.999})
        EXPECT_TRUE(NeedsDataUpgrade(version)) << version;
    for (const double version : {-1.0, 0.0, 10.0, 11.37, 11.56})
        EXPECT_FALSE(NeedsDataUpgrade(version)) << version;
}

TEST_F(OldFolder, BecomesTheMainNoteBookWithItsCategories) {
    PutBytes(root / "Empty1Cats.dat", RawRecord().Real(10.9).Int(1).Int(1).Int(0).Text("Unused").Text("").Bytes());
    ASSERT_TRUE(HasOlderData(data));
    ASSERT_TRUE(Upgrade());
    EXPECT_THAT(faults.faults, IsEmpty());
    EXPECT_THAT(progress.messages, ElementsAre("Running File Upgrade...(may take a few moments)"));
    EXPECT_THAT(Files(main.Folder()),
                ElementsAre("Attachments/0000001.png", "Attachments/Plans/tower.pdf", "Authors.dat", "Categories.dat",
                            "Empty1Cats.dat", "Notes/DAY07122011.dat", "Notes/SRC0000001011.dat", "Sources.dat"));
    EXPECT_THAT(Files(root / "Databases"), testing::Each(testing::StartsWith("_LBMAIN_/")));
    EXPECT_EQ(BytesOf(main.Attachments() / "Plans" / "tower.pdf"), "plan");
    EXPECT_TRUE(fs::exists(root / "Events.dat") && fs::exists(root / "Lexicons" / "UserWords.txt")) << "shared by all";
    EXPECT_FALSE(fs::exists(root / "Notes") || fs::exists(root / "Attachments") || fs::exists(root / "Sources.dat"));
    EXPECT_FALSE(HasOlderData(data));

    CProCategoryList forest;
    ASSERT_TRUE(forest.Load(main.Categories()).Ok());
    EXPECT_NE(forest.FindRootByName("Unused"), nullptr);
    const CProCategoryTree* const lights = forest.FindRootByName("Lights");
    ASSERT_NE(lights, nullptr);
    const CProCategoryTree* const lenses = lights->FindChildByName("Lenses");
    ASSERT_NE(lenses, nullptr);
    EXPECT_GE(maxCategoryID, lenses->id);
    const std::vector<CNote> notes = NotesOfFile(main.NoteFile("DAY07122011.dat"), world.context);
    ASSERT_EQ(notes.size(), 1u);
    EXPECT_EQ(DeepestCategoryID(notes[0].categories[0]), lenses->id);

    const auto before = Files(root);
    EXPECT_TRUE(Upgrade()) << "nothing is left to do";
    EXPECT_EQ(Files(root), before);
}

TEST_F(OldFolder, NoteFilesBetweenTheListsComeAlongUnderFreeNames) {
    PutBytes(root / "DAY07122011.dat", OldNotes(7, {}));
    PutBytes(root / "SRC0000000005.dat", OldNotes(8, {}));
    ASSERT_TRUE(Upgrade());
    EXPECT_THAT(Files(main.Notes()),
                ElementsAre("DAY07122011-2.dat", "DAY07122011.dat", "SRC0000000005.dat", "SRC0000001011.dat"));
    EXPECT_FALSE(fs::exists(root / "SRC0000000005.dat"));
}

TEST_F(OldFolder, DamagedNoteFileKeepsItsBytesAndIsTold) {
    const std::string cut = OldNotes(1, {"Lights"}).substr(0, 120);
    PutBytes(root / "Notes" / "DAY07122011.dat", cut);
    EXPECT_TRUE(Upgrade());
    EXPECT_EQ(BytesOf(main.NoteFile("DAY07122011.dat")), cut);
    EXPECT_THAT(Each(faults.faults, &Fault::path), ElementsAre(EndsWith("DAY07122011.dat")));
}

TEST_F(OldFolder, CategoriesThatStandAreNotBuiltAnew) {
    const std::string bytes = RawRecord().Real(9.5).Int(0).Bytes();
    PutBytes(root / "Categories.dat", bytes);
    ASSERT_TRUE(Upgrade());
    EXPECT_EQ(BytesOf(main.Categories()), bytes);
    EXPECT_EQ(BytesOf(main.NoteFile("DAY07122011.dat")), OldNotes(1, {"Lights", "Lenses"}));
}

TEST_F(OldFolder, MainNoteBookWithNotesOfItsOwnIsNeverTouched) {
    CreateNoteBookFolders(main);
    CProCategoryList forest;
    forest.AddRoot({5, "My own"});
    const fs::path categories = folder.Path() / "own.dat";
    ASSERT_TRUE(forest.Save(categories).Ok());
    const std::pair<fs::path, std::string> cases[] = {{main.NoteFile("DAY01012020.dat"), "a note"},
                                                      {main.Attachments() / "a.png", "x"},
                                                      {main.Folder() / "Drafts" / "1.draft", "unsaved"},
                                                      {main.Sources(), RawRecord().Real(11.56).Int(1).Int(1).Bytes()},
                                                      {main.Categories(), BytesOf(categories)}};
    for (const auto& [file, bytes] : cases) {
        PutBytes(file, bytes);
        const auto before = Files(root);
        faults.faults.clear();
        EXPECT_FALSE(Upgrade()) << file;
        EXPECT_EQ(Files(root), before);
        EXPECT_THAT(Each(faults.faults, &Fault::what),
                    ElementsAre(HasSubstr("the main NoteBook has notes of its own")));
        fs::remove(file);
    }
    PutBytes(main.LastViewList(), RawRecord().Int(0).Bytes());
    PutBytes(main.Sources(), RawRecord().Real(11.56).Int(0).Bytes());
    EXPECT_TRUE(Upgrade()) << "opening it has left only this";
    EXPECT_FALSE(fs::exists(main.LastViewList()));
}

TEST_F(OldFolder, ListOfUpgradedFilesRemovesNothingElsewhere) {
    PutBytes(folder.Path() / "outside.txt", "mine");
    CreateNoteBookFolders(main);
    PutBytes(main.Folder() / "Upgrade.done", "../outside.txt\n/etc/hostname\nEvents.dat\nNotes/../Rem.dat\n");
    PutBytes(root / "Rem.dat", "reminders");
    EXPECT_TRUE(Upgrade());
    EXPECT_EQ(BytesOf(folder.Path() / "outside.txt"), "mine");
    EXPECT_EQ(BytesOf(root / "Events.dat"), "events");
    EXPECT_EQ(BytesOf(root / "Rem.dat"), "reminders");
}

TEST_F(OldFolder, LinkedFilesComeWithTheirContentAndStayWhereTheyAre) {
    PutBytes(folder.Path() / "elsewhere.pdf", "far");
    fs::create_symlink(folder.Path() / "elsewhere.pdf", root / "Attachments" / "linked.pdf");
    ASSERT_TRUE(Upgrade());
    EXPECT_FALSE(fs::is_symlink(main.Attachments() / "linked.pdf"));
    EXPECT_EQ(BytesOf(main.Attachments() / "linked.pdf"), "far");
    EXPECT_EQ(BytesOf(folder.Path() / "elsewhere.pdf"), "far");
}

}  // namespace
}  // namespace lore
