
#include "app/app_world.h"
#include "app/status_panes.h"
#include "classify/category_list.h"
#include "notes/note_cleaner.h"
#include "support/matchers.h"
#include "support/scripted_agent.h"

namespace lore {
namespace {

namespace fs = std::filesystem;

/// The application from its first line to its last, without a window.
class Startup : public PortsWorld {
protected:
    Startup() { store.Set("Options", "LocalGUID", "{LOCAL}"); }
    void Start(const char* version) {
        if (*version)
            store.Set("Options", "ProgVersion", version);
        lore::Start(app);
    }
    std::string Stored(const char* key) const { return store.Get("Options", key).value_or("nothing"); }
    void MakeOldNotes() {
        fs::create_directories(data.DataFiles() / "Notes");
        PutBytes(data.DataFiles() / "Notes" / "DAY01012020.dat", NoteFileBytes(std::vector<CNote>{DayNote(5)}));
    }

    TempFolder folder;
    DataPaths data{folder.Path()};
    ScriptedAgent agent;
    CLorebinderApp app{folder.Path(), PortsWithAgent()};

private:
    AppPorts PortsWithAgent() {
        AppPorts ports = Ports();
        ports.agent = &agent;
        return ports;
    }
};

TEST_F(Startup, FirstRunSetsTheAgentUpAndUpgradesNothing) {
    MakeOldNotes();
    Start("");
    EXPECT_EQ(Stored("StartupAgent"), "2112");
    EXPECT_TRUE(agent.startsWithSession);
    EXPECT_EQ(agent.launches, 1);
    EXPECT_EQ(Stored("ProgVersion"), "11.56");
    EXPECT_EQ(PaneText(app, StatusPane::Notes), "Notes:    0");
    EXPECT_TRUE(fs::exists(data.DataFiles() / "Notes" / "DAY01012020.dat"));
}

TEST_F(Startup, ADataFolderThatCantBeMadeIsTold) {
    PutBytes(data.DataFiles(), "a file in its place");
    Start("");
    ASSERT_FALSE(faults.faults.empty());
    EXPECT_EQ(faults.faults[0].what, "The data folder could not be made");
    EXPECT_EQ(faults.faults[0].path, data.DataFiles().string());
    EXPECT_THAT(faults.faults[0].reason, Not(IsEmpty()));
    EXPECT_EQ(app.List().Count(), 0u);
}

TEST_F(Startup, DamagedFilesAreToldOnceByTheFirstNamesAndANumber) {
    const NoteBookPaths paths(data, kMainNoteBookFolder);
    CreateNoteBookFolders(paths);
    ASSERT_TRUE(CProCategoryList().Save(paths.Categories()).Ok());
    for (const char* const name : {"a.dat", "b.dat", "c.dat", "d.dat", "e.dat"})
        PutBytes(paths.NoteFile(name), NoteFileBytes(std::vector<CNote>{DayNote(name[0])}) + "more");
    Start("11.56");
    ASSERT_EQ(faults.faults.size(), 1u);
    EXPECT_EQ(faults.faults[0].what, "a.dat, b.dat, c.dat and 2 more are damaged or missing, and were not read whole");
    EXPECT_EQ(faults.faults[0].path, paths.Folder().string());
    EXPECT_TRUE(app.IsWhole());
    EXPECT_FALSE(app.CanTryAgain());
    app.ReloadNotes({});
    EXPECT_EQ(faults.faults.size(), 1u);
    for (const char* const name : {"a.dat", "b.dat", "c.dat", "d.dat"})
        PutBytes(paths.NoteFile(name), NoteFileBytes(std::vector<CNote>{DayNote(name[0])}));
    app.ReloadNotes({});
    ASSERT_EQ(faults.faults.size(), 2u);
    EXPECT_EQ(faults.faults[1].what, "e.dat is damaged or missing, and was not read whole");
}

TEST_F(Startup, AgentRunsBesideTheProgramOnlyWhenItIsTo) {
    for (const auto& [runAgent, running, launches, told] :
         {std::tuple("2112", false, 1, 1u), {"2112", true, 0, 1u}, {"1", false, 0, 0u}, {"0", false, 0, 0u}}) {
        SCOPED_TRACE(runAgent);
        agent = ScriptedAgent();
        agent.running = running;
        store.Set("Options", "RunAgent", runAgent);
        Start("11.56");
        EXPECT_EQ(agent.launches, launches);
        app.ExitInstance();
        EXPECT_EQ(agent.told.size(), told);
    }
    agent = ScriptedAgent();
    agent.installed = false;
    store.Set("Options", "RunAgent", "2112");
    Start("11.56");
    EXPECT_EQ(agent.launches, 0);
}

TEST_F(Startup, WhatTheEndCantWriteIsToldWithItsFilesWhereTheCallerLooks) {
    MemoryStore full;
    full.isFull = true;
    CLorebinderApp other(folder.Path(), AppPorts{prompts, progress, clock, guids, full, faults});
    lore::Start(other);
    ASSERT_FALSE(faults.faults.empty());
    EXPECT_EQ(faults.faults[0].path + ", " + faults.faults[0].reason, "/full/settings.ini, No space left on device");
    faults.faults.clear();
    const fs::path list = other.NoteBook().paths.LastViewList();
    Block(list);
    NotedFaults atTheEnd;
    other.ExitInstance(atTheEnd);
    EXPECT_THAT(faults.faults, IsEmpty()) << "nobody looks there any more";
    ASSERT_EQ(atTheEnd.faults.size(), 2u);
    EXPECT_EQ(atTheEnd.faults[0].path, "/full/settings.ini");
    EXPECT_EQ(atTheEnd.faults[1].path, list.string());
}

TEST_F(Startup, WhatFailedIsTriedAgainAndTheListStays) {
    MemoryStore full;
    full.isFull = true;
    CLorebinderApp other(folder.Path(), AppPorts{prompts, progress, clock, guids, full, faults});
    other.LoadOptions();
    other.SelectStartNoteBook();
    const NoteBookPaths paths = other.NoteBook().paths;
    fs::create_directories(paths.Sources() / "in the way");
    fs::create_directories(paths.Notes());
    PutBytes(paths.NoteFile("DAY01012020.dat"), NoteFileBytes(std::vector<CNote>{DayNote(5), DayNote(6)}));
    other.FinishStartup();
    other.Gather(LongList{6});
    ASSERT_TRUE(!other.IsWhole() && other.CanTryAgain());

    faults.faults.clear();
    EXPECT_TRUE(other.TryAgain());
    EXPECT_EQ(faults.faults.size(), 3u) << "the settings, twice since a load stores the counters, and the sources";
    EXPECT_TRUE(other.CanTryAgain());
    fs::remove_all(paths.Sources());
    EXPECT_TRUE(other.TryAgain());
    EXPECT_TRUE(other.IsWhole() && other.CanTryAgain()) << "the settings wait still";
    full.isFull = false;
    EXPECT_FALSE(other.TryAgain()) << "all has been read";
    EXPECT_FALSE(other.CanTryAgain());
    EXPECT_THAT(other.List().GetNoteIDs().Values(), ElementsAre(6));
}

TEST_F(Startup, WhatWasListedAndCantBeReadIsKeptAndComesBackWhenItIsTriedAgain) {
    Start("11.56");
    const NoteBookPaths paths = app.NoteBook().paths;
    fs::create_directories(paths.Notes());
    PutBytes(paths.NoteFile("DAY01012020.dat"), NoteFileBytes(std::vector<CNote>{DayNote(5)}));
    PutBytes(paths.NoteFile("DAY01022020.dat"), NoteFileBytes(std::vector<CNote>{DayNote(6, 2)}));
    const auto saved = [&] { return LoadLastViewList(paths, faults).Values(); };
    using Ids = std::vector<int32_t>;
    const std::tuple<fs::path, Ids, Ids, Ids> cases[] = {{paths.NoteFile("DAY01012020.dat"), {6}, {6, 5, 99}, {6, 5}},
                                                         {paths.Notes(), {}, {5, 6, 99}, {5, 6}},
                                                         {paths.LastViewList(), {}, {}, {5, 6}}};
    for (const auto& [blocked, atFirst, kept, again] : cases) {
        SCOPED_TRACE(blocked);
        faults.faults.clear();
        SaveLastViewList(paths, LongList{5, 6, 99}, faults);
        Unreadable unread(blocked);
        CLorebinderApp other(folder.Path(), Ports());
        lore::Start(other);
        EXPECT_EQ(other.List().GetNoteIDs().Values(), atFirst);
        EXPECT_FALSE(other.IsWhole());
        EXPECT_TRUE(other.TryAgain());
        EXPECT_FALSE(other.IsWhole()) << "nothing has changed";
        other.ExitInstance();
        if (blocked != paths.LastViewList()) {
            EXPECT_EQ(saved(), kept);
        }
        ASSERT_TRUE(fs::is_symlink(blocked)) << "it was written over";
        unread.End();
        EXPECT_TRUE(other.TryAgain());
        EXPECT_TRUE(other.IsWhole());
        EXPECT_EQ(other.List().GetNoteIDs().Values(), again);
        other.ExitInstance();
        EXPECT_EQ(saved(), again) << "a note that isn't there leaves the list";
    }
}

TEST_F(Startup, SearchControlsGetTheirWidthFromVersionsBeforeThatRoom) {
    for (const auto& [version, width] :
         {std::pair{"11.36", 377}, {"11.37035", 500}, {"11.370350", 500}, {"10.0", 377}}) {
        store.Set("Options", "SrchCtrlsWidth", "500");
        Start(version);
        EXPECT_EQ(app.GetSettings().Int(Option::SrchCtrlsWidth), width) << version;
    }
}

TEST_F(Startup, DataThatCantBeUpgradedAreNotWrittenOverAndCanBeTriedAgain) {
    MakeOldNotes();
    PutBytes(data.DataFiles() / "Databases", "a file where the folder should be");
    Start("9.5");
    EXPECT_EQ(Stored("ProgVersion"), "9.5") << "the next start tries again";
    EXPECT_FALSE(faults.faults.empty());
    EXPECT_TRUE(app.TellIfClosed());
    EXPECT_THAT(prompts.seen, ElementsAre(HasSubstr("could not be upgraded")));
    app.SwitchNoteBook(MainNoteBook("{LOCAL}"));
    EXPECT_TRUE(app.TellIfClosed()) << "no other way leads there";
    app.ExitInstance();
    EXPECT_EQ(Stored("ProgVersion"), "9.5");
    EXPECT_TRUE(fs::exists(data.DataFiles() / "Notes" / "DAY01012020.dat"));

    EXPECT_FALSE(app.IsWhole());
    EXPECT_TRUE(app.CanTryAgain());
    fs::remove(data.DataFiles() / "Databases");
    EXPECT_TRUE(app.TryAgain());
    EXPECT_FALSE(app.CanTryAgain());
    EXPECT_FALSE(app.TellIfClosed());
    EXPECT_EQ(PaneText(app, StatusPane::Notes), "Notes:    1");
    EXPECT_EQ(Stored("ProgVersion"), "11.56");
    EXPECT_EQ(app.GetSettings().Int(Option::SrchCtrlsWidth), 377);
}

}  // namespace
}  // namespace lore
