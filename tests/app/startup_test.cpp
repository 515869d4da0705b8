#include <gmock/gmock.h>

#include "app/app_world.h"
#include "support/scripted_agent.h"

namespace lore {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

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
    EXPECT_EQ(app.NotesPane(), "Notes:    0");
    EXPECT_TRUE(fs::exists(data.DataFiles() / "Notes" / "DAY01012020.dat"));
}

TEST_F(Startup, AgentRunsBesideTheProgramOnlyWhenItIsTo) {
    struct Case {
        const char* runAgent;
        bool running;
        int launches;
        size_t told;
    };
    for (const Case& c : {Case{"2112", false, 1, 1}, {"2112", true, 0, 1}, {"1", false, 0, 0}, {"0", false, 0, 0}}) {
        agent = ScriptedAgent();
        agent.running = c.running;
        store.Set("Options", "RunAgent", c.runAgent);
        Start("11.56");
        EXPECT_EQ(agent.launches, c.launches) << c.runAgent;
        app.ExitInstance();
        EXPECT_EQ(agent.told.size(), c.told) << c.runAgent;
    }
    agent = ScriptedAgent();
    agent.installed = false;
    store.Set("Options", "RunAgent", "2112");
    Start("11.56");
    EXPECT_EQ(agent.launches, 0);
}

TEST_F(Startup, OldVersionGetsItsNotesAsTheMainNoteBook) {
    MakeOldNotes();
    Start("9.5");
    EXPECT_EQ(app.NotesPane(), "Notes:    1");
    EXPECT_EQ(Stored("ProgVersion"), "11.56");
    EXPECT_EQ(Stored("SrchCtrlsWidth"), "nothing") << "it is stored with the others at the end";
    EXPECT_EQ(app.GetSettings().Int(Option::SrchCtrlsWidth), 377);
    EXPECT_TRUE(app.MayWrite());
    EXPECT_THAT(faults.faults, IsEmpty());
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
    EXPECT_FALSE(app.MayWrite());
    EXPECT_THAT(prompts.seen, ElementsAre(HasSubstr("could not be upgraded")));
    app.SwitchNoteBook(MainNoteBook("{LOCAL}"));
    EXPECT_FALSE(app.MayWrite()) << "no other way leads there";
    app.ExitInstance();
    EXPECT_EQ(Stored("ProgVersion"), "9.5");
    EXPECT_TRUE(fs::exists(data.DataFiles() / "Notes" / "DAY01012020.dat"));

    fs::remove(data.DataFiles() / "Databases");
    app.FinishStartup();
    EXPECT_TRUE(app.MayWrite());
    EXPECT_EQ(app.NotesPane(), "Notes:    1");
    EXPECT_EQ(Stored("ProgVersion"), "11.56");
}

}  // namespace
}  // namespace lore
