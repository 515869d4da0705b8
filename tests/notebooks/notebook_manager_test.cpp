#include "notebooks/notebook_manager.h"

#include "notebooks/notebooks_world.h"
#include "support/matchers.h"

namespace lore {
namespace {

constexpr char kInvalidName[] = "Invalid Name: Database name must be between 5 and 30 characters.";

struct NoteBookManagerTest : NoteBooksWorld, testing::Test {
    std::optional<CDatabase> CreateWith(const std::string& name, PromptAnswer answer = PromptAnswer::Yes) {
        prompts.answers = {answer};
        NoteBookManager manager = Manager();
        return manager.Create(name, context);
    }
    DeleteOutcome DeleteWith(const CDatabase& noteBook, PromptAnswer answer = PromptAnswer::Yes) {
        prompts.answers = {answer};
        NoteBookManager manager = Manager();
        return manager.Delete(noteBook, 3);
    }
};

TEST_F(NoteBookManagerTest, CreateAsksAndMakesFoldersAndARecord) {
    EXPECT_FALSE(CreateWith("Light houses", PromptAnswer::No));
    EXPECT_THAT(Folders(), ElementsAre("_LBMAIN_"));
    prompts.seen.clear();
    random = 8;
    const auto made = CreateWith("  Light houses ");
    ASSERT_TRUE(made);
    EXPECT_THAT(prompts.seen, ElementsAre("Create Database?? Do you wish to create the database *Light houses*?"));
    EXPECT_THAT(progress.messages, ElementsAre("Creating new notes database...."));
    EXPECT_THAT(waits, ElementsAre(200));
    EXPECT_EQ(made->folder, "DB000010");
    EXPECT_TRUE(std::filesystem::is_directory(PathsOf(*made).Notes()));
    EXPECT_TRUE(std::filesystem::is_directory(PathsOf(*made).Attachments()));
    EXPECT_THAT(Stored(),
                ElementsAre(testing::FieldsAre(10, 0, "Light houses", "DB000010", "", context.now, "{GUID 1}")));
}

TEST_F(NoteBookManagerTest, NameHasFiveToThirtyCharactersWithoutBlanksAround) {
    const std::string thirty(30, 'x'), wide = Repeated("\u0436", 30);  // 30 letters that take two bytes each
    const std::pair<std::string, bool> names[] = {{"1234", false},       {"  1234  ", false},
                                                  {"12345", true},       {" 12345\t", true},
                                                  {thirty, true},        {"   " + thirty + "  ", true},
                                                  {thirty + "y", false}, {wide, true},
                                                  {wide + "a", false},   {"", false}};
    for (const auto& [name, isTaken] : names) {
        prompts.seen.clear();
        EXPECT_EQ(CreateWith(name).has_value(), isTaken) << name;
        EXPECT_EQ(prompts.seen.front() == kInvalidName, !isTaken) << name;
    }
    EXPECT_EQ(CreateWith(thirty)->name, thirty) << "two NoteBooks may have the same name";
}

TEST_F(NoteBookManagerTest, NewNumberLiesAboveAllFoldersThatBeginSo) {
    const std::tuple<std::vector<std::string>, int, int32_t> cases[] = {
        {{}, 0, 2},
        {{"DB"}, 0, 2},
        {{"DBx"}, 3, 5},
        {{"DB000007", "DB000012 copy", "db000099"}, 0, 13},
        {{"DB2111"}, 0, 2114},
        {{"DB2103"}, 8, 2114},
        {{"DB2110"}, 0, 2111},
        {{"DB777776"}, 0, 777778},
        {{"DB1000000"}, 5, 1000006},
        {{"DB99999999999999999999", "DB5"}, 0, 6}};
    for (const auto& [folders, highest, id] : cases) {
        NoteBooksWorld world;
        world.random = highest;
        world.prompts.answers = {PromptAnswer::Yes};
        for (const std::string& name : folders)
            std::filesystem::create_directories(world.data.Databases() / name);
        PutBytes(world.data.Databases() / "DB777777", "a file is no folder");
        NoteBookManager manager = world.Manager();
        const auto made = manager.Create("Light houses", world.context);
        ASSERT_TRUE(made);
        EXPECT_EQ(made->id, id) << folders.size();
    }
}

TEST_F(NoteBookManagerTest, NumberOfAListedNoteBookWhoseFolderIsGoneIsNotGivenTwice) {
    CDatabase lost = Add("Lost one", 2);
    lost.folder = "DB000003";
    SaveDatabases(data.DatabasesFile(), {lost});
    EXPECT_EQ(CreateWith("Light houses")->id, 4);
}

TEST_F(NoteBookManagerTest, ChangeNameTakesAnyNameButNotForTheMainNoteBook) {
    const CDatabase first = Add("Lamps", 7), second = Add("Lamps", 9);
    NoteBookManager manager = Manager();
    EXPECT_TRUE(manager.ChangeName(second, "x"));
    EXPECT_FALSE(manager.ChangeName(main, "Other"));
    EXPECT_EQ(Stored()[0].name, "Lamps");
    EXPECT_EQ(Stored()[1].name, "x");
    EXPECT_THAT(prompts.seen, IsEmpty());
}

TEST_F(NoteBookManagerTest, DeleteAsksWithTheNumberAndTakesFolderAndRecord) {
    const CDatabase lamps = Add("Lamps", 7, {DayNote(1)}), fog = Add("Fog signals", 9);
    PutBytes(PathsOf(lamps).SyncLog(), "-1, -1, , Lamps, , {NB7},\n");
    EXPECT_EQ(DeleteWith(lamps, PromptAnswer::No), DeleteOutcome::Declined);
    EXPECT_EQ(DeleteWith(lamps), DeleteOutcome::Deleted);
    const std::string question =
        "Delete Database?? Do you wish to delete the database *Lamps*?\n\nWARNING: THIS WILL DELETE ALL  3  NOTES "
        "WITHIN THAT DATABASE!!\n\nDo you still wish to delete this database?";
    EXPECT_THAT(prompts.seen, ElementsAre(question, question));
    EXPECT_THAT(progress.messages, ElementsAre("Deleting notes database...."));
    EXPECT_THAT(waits, ElementsAre(200));
    EXPECT_THAT(Folders(), ElementsAre("Databases.dat", "Folder9", "_LBMAIN_"));
    EXPECT_THAT(Each(Stored(), &CDatabase::guid), ElementsAre(fog.guid));
    EXPECT_THAT(cleared, IsEmpty());
    EXPECT_THAT(faults.faults, IsEmpty());
}

TEST_F(NoteBookManagerTest, MainNoteBookIsNeverDeleted) {
    EXPECT_EQ(DeleteWith(main), DeleteOutcome::Refused);
    EXPECT_THAT(prompts.seen, ElementsAre("Unable to Delete: You can't delete the main database."));
    EXPECT_TRUE(std::filesystem::is_directory(PathsOf(main).Notes()));
}

TEST_F(NoteBookManagerTest, FolderThatOthersNameStays) {
    for (const std::string name : {"_LBMAIN_", "Folder9", "../Databases/_LBMAIN_", ".."}) {
        NoteBooksWorld world;
        CDatabase impostor = world.Add("Impostor", 7);
        world.Add("Fog signals", 9, {DayNote(1)});
        world.PutNotes(world.main, {DayNote(2)});
        auto list = world.Stored();
        list[0].folder = impostor.folder = name;
        SaveDatabases(world.data.DatabasesFile(), list);
        world.prompts.answers = {PromptAnswer::Yes};
        NoteBookManager manager = world.Manager();
        EXPECT_EQ(manager.Delete(impostor, 0), DeleteOutcome::Deleted);
        EXPECT_EQ(world.Stored().size(), 1u);
        EXPECT_THAT(world.Folders(), ElementsAre("Databases.dat", "Folder7", "Folder9", "_LBMAIN_")) << name;
        EXPECT_NE(BytesOf(world.PathsOf(world.main).NoteFile("DAY01012020.dat")), "");
    }
}

TEST_F(NoteBookManagerTest, DeletedNoteBooksComeBackUntilTheProgramEnds) {
    const CDatabase lamps = Add("Lamps", 7, {DayNote(1)}), fog = Add("Fog signals", 9, {DayNote(2)});
    const std::string before = BytesOf(data.DatabasesFile()),
                      notes = BytesOf(PathsOf(lamps).NoteFile("DAY01012020.dat"));
    {
        NoteBookTrash trash(faults);
        ManagerPorts ports = Ports();
        ports.trash = &trash;
        const auto delete_ = [&](const CDatabase& noteBook) {
            NoteBookManager manager(data, main.guid, ports);
            manager.Load(context);
            prompts.answers = {PromptAnswer::Yes};
            return manager.Delete(noteBook, 1);
        };
        EXPECT_EQ(delete_(lamps), DeleteOutcome::Deleted);
        EXPECT_EQ(delete_(fog), DeleteOutcome::Deleted);
        EXPECT_TRUE(Stored().empty());
        EXPECT_THAT(Folders(), ElementsAre("Databases.dat", "_DELETED_Folder7", "_DELETED_Folder9", "_LBMAIN_"));
        NoteBookManager manager(data, main.guid, ports);
        manager.Load(context);
        EXPECT_EQ(manager.Restore()->guid, fog.guid) << "the last one first";
        std::filesystem::create_directories(PathsOf(lamps).Folder());
        EXPECT_FALSE(manager.Restore().has_value()) << "another folder stands in its place";
        EXPECT_EQ(faults.faults.size(), 1u);
        std::filesystem::remove(PathsOf(lamps).Folder());
        EXPECT_EQ(manager.Restore()->guid, lamps.guid);
        EXPECT_FALSE(manager.CanRestore());
        EXPECT_EQ(BytesOf(data.DatabasesFile()), before) << "in their places";
        EXPECT_EQ(BytesOf(PathsOf(lamps).NoteFile("DAY01012020.dat")), notes);
        EXPECT_EQ(delete_(lamps), DeleteOutcome::Deleted);
    }
    EXPECT_THAT(Folders(), ElementsAre("Databases.dat", "Folder9", "_LBMAIN_")) << "gone with the program";
}

TEST_F(NoteBookManagerTest, ANewNoteBookLeavesTheFolderOfADeletedOneFree) {
    NoteBookTrash trash(faults);
    ManagerPorts ports = Ports();
    ports.trash = &trash;
    NoteBookManager manager(data, main.guid, ports);
    manager.Load(context);
    prompts.answers = {PromptAnswer::Yes, PromptAnswer::Yes, PromptAnswer::Yes};
    const auto first = manager.Create("Light houses", context);
    ASSERT_TRUE(first);
    EXPECT_EQ(manager.Delete(*first, 0), DeleteOutcome::Deleted);
    const auto second = manager.Create("Fog signals", context);
    ASSERT_TRUE(second);
    EXPECT_NE(second->folder, first->folder);
    EXPECT_TRUE(manager.Restore().has_value());
    EXPECT_THAT(faults.faults, IsEmpty());
}

TEST_F(NoteBookManagerTest, WhatAKilledDeletionLeftGoesWithTheNextChange) {
    std::filesystem::create_directories(data.Databases() / "_DELETED_DB000050" / "Notes");
    EXPECT_EQ(CreateWith("Light houses")->id, 2) << "it counts for no number";
    EXPECT_THAT(Folders(), ElementsAre("DB000002", "Databases.dat", "_LBMAIN_"));
}

TEST_F(NoteBookManagerTest, NamesInADamagedListLetNothingElseBeDeleted) {
    CDatabase trash = Add("Lamps", 7), list = Add("Fog signals", 9);
    trash.folder = "_DELETED_DB000007";
    list.folder = "Databases.dat";
    CreateNoteBookFolders(PathsOf(trash));
    PutNotes(trash, {DayNote(1)});
    SaveDatabases(data.DatabasesFile(), {trash, list});
    ASSERT_TRUE(CreateWith("Light houses"));
    DeleteWith(list);
    EXPECT_THAT(Folders(), Contains("_DELETED_DB000007"));
    EXPECT_EQ(Stored().size(), 2u);
}

TEST_F(NoteBookManagerTest, ListThatCannotBeWrittenDeletesAndCreatesNothing) {
    const CDatabase lamps = Add("Lamps", 7, {DayNote(1)});
    // A folder in the place of the file can be neither read nor replaced.
    Block(data.DatabasesFile());
    EXPECT_EQ(DeleteWith(lamps), DeleteOutcome::Failed);
    EXPECT_FALSE(CreateWith("Light houses"));
    EXPECT_FALSE(Manager().ChangeName(lamps, "x"));
    EXPECT_THAT(Folders(), Contains("Folder7"));
    EXPECT_FALSE(faults.faults.empty());
    EXPECT_EQ(faults.faults.back().what, "The list of NoteBooks could not be read");
}

TEST_F(NoteBookManagerTest, DamagedListIsKeptBesideBeforeItIsWrittenAnew) {
    Add("Lamps", 7);
    Add("Fog signals", 9);
    const std::string bytes = BytesOf(data.DatabasesFile());
    const std::string damaged = bytes.substr(0, bytes.size() - 30);
    PutBytes(data.DatabasesFile(), damaged);
    const auto made = CreateWith("Light houses");
    ASSERT_TRUE(made);
    EXPECT_EQ(BytesOf(data.Databases() / "Databases.dat.kept"), damaged);
    EXPECT_THAT(Folders(), Not(Contains("Databases.dat.2.kept")));
    EXPECT_EQ(Stored().back().guid, made->guid);
}

}  // namespace
}  // namespace lore
