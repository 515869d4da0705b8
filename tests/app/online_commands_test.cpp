#include "app/online_commands.h"

#include <utility>

#include "app/app_world.h"
#include "app/notebook_commands.h"
#include "app/status_panes.h"
#include "notes/sync_log.h"
#include "online/http_client.h"
#include "support/each.h"
#include "support/http_server.h"
#include "support/matchers.h"
#include "support/noted_starts.h"

namespace lore {
namespace {

class OnlineCommandsTest : public AppWorld {
protected:
    OnlineCommandsTest() {
        store.Set("Online", "Endpoint", server.Url());
        store.Set("Online", "Namespace", "urn:test/");
        Start(app);
        prompts.seen.clear();
    }
    void Engage(int atClose) {
        app.GetSettings().Set(Option::SyncEngaged, 1);
        app.GetSettings().Set(Option::SyncAtClose, atClose);
    }

    HttpServer server;
    HttpClient client;
    NotedStarts syncs;
    CLorebinderApp app{folder.folder.Path(), [this] {
                           AppPorts ports = Ports();
                           ports.companions = &syncs;
                           ports.http = &client;
                           return ports;
                       }()};
};

TEST_F(OnlineCommandsTest, DeletingALinkedNoteBookFreesTheOnlineOne) {
    prompts.answers = {PromptAnswer::Yes, PromptAnswer::Yes};
    NoteBookTrash trash(faults);
    NoteBookManagement management(app, trash);
    ASSERT_TRUE(management.Model().Create("Beekeeping"));
    const CDatabase made = management.Model().Chosen();
    SyncLog log;
    log.link.Linked = 2112;
    log.link.OnlineNoteBookID = 77;
    ASSERT_TRUE(SaveSyncLogTo(NoteBookPaths(app.Data(), made.folder).SyncLog(), log).Ok());
    EXPECT_TRUE(management.Model().Delete()) << "though the server only closes the connection";
    EXPECT_EQ(progress.messages.back(), "Attempting to Update Online NoteBook Link....");
    ASSERT_EQ(server.Requests().size(), 1u);
    EXPECT_THAT(server.Requests()[0],
                HasSubstr("<ClearLinkWithOnlineNoteBook xmlns=\"urn:test/\"><onlineNoteBookID>77</onlineNoteBookID>"
                          "<desktopNoteBookGUID>" +
                          made.guid + "</desktopNoteBookGUID>"));
}

TEST_F(OnlineCommandsTest, RunSyncNeedsAnAccountAndAnAnswer) {
    EXPECT_FALSE(RunSync(app));
    EXPECT_THAT(prompts.seen.back(), HasSubstr("Sync NOT Engaged"));
    Engage(0);
    prompts.answers = {PromptAnswer::Cancel, PromptAnswer::Yes, PromptAnswer::No};
    EXPECT_FALSE(RunSync(app));
    EXPECT_EQ(prompts.seen.back(),
              "Restart After Sync?? Lorebinder must be closed inorder to run the sync.\n\nDo you wish to have "
              "Lorebinder restart after the sync?");
    EXPECT_TRUE(RunSync(app));
    EXPECT_TRUE(RunSync(app));
    EXPECT_THAT(syncs.started, ElementsAre(StartsWith("syncer|SYNCOPEN|"), StartsWith("syncer|SYNC|")));
    EXPECT_THAT(faults.faults, IsEmpty());
}

TEST_F(OnlineCommandsTest, StaysWhereTheSyncProgramIsMissing) {
    Engage(1);
    prompts.answers = {PromptAnswer::Yes};
    syncs.failure = "No such file or directory";
    EXPECT_FALSE(RunSync(app));
    EXPECT_THAT(Each(faults.faults, &Fault::what), ElementsAre("The sync program could not be started"));
    EXPECT_EQ(faults.faults[0].reason, "No such file or directory");
    RunCloseSteps(app, CloseReason::User);
    EXPECT_EQ(faults.faults.size(), 1u) << "at the close nobody is there to be told";
}

TEST_F(OnlineCommandsTest, ACloseSyncsOnceAtMostAndAnOrderToQuitAsksNothing) {
    Engage(1);
    app.GetSettings().Set(Option::EnableBackup, 1);
    app.GetSettings().Set(Option::BkUseTimes, 1);
    RunCloseSteps(app, CloseReason::QuitOrder);
    EXPECT_THAT(prompts.seen, IsEmpty());
    EXPECT_THAT(std::exchange(syncs.started, {}), ElementsAre(StartsWith("syncer|SYNC|")));
    app.GetSettings().Set(Option::EnableBackup, 0);
    RunCloseSteps(app, CloseReason::Sync);
    EXPECT_THAT(syncs.started, IsEmpty());
    RunCloseSteps(app, CloseReason::User);
    EXPECT_THAT(syncs.started, ElementsAre(StartsWith("syncer|SYNC|")));
    Engage(0);
    RunCloseSteps(app, CloseReason::User);
    EXPECT_EQ(syncs.started.size(), 1u);
}

TEST_F(OnlineCommandsTest, ThePanesTellOfTheLinkAndTheWholeDaysSinceTheLastSync) {
    EXPECT_EQ(PaneText(app, StatusPane::Link), "Not Linked");
    EXPECT_EQ(PaneText(app, StatusPane::LastSync), "");
    SyncLink& link = app.NoteBook().syncLog.link;
    link.Linked = 2112;
    link.OnlineName = "Bees";
    EXPECT_EQ(PaneText(app, StatusPane::Link), "Linked With:   < Bees >");
    const std::pair<DateTime, const char*> cases[] = {{DateTime(), "Never Synced"},
                                                      {DateTime::Invalid(), "Never Synced"},
                                                      {DateTime(1900, 1, 1), "Never Synced"},
                                                      {clock.now, "Last Sync:  0 days"},
                                                      {clock.now.PlusSeconds(-86399), "Last Sync:  0 days"},
                                                      {clock.now.PlusSeconds(-86400), "Last Sync:  1 days"},
                                                      {clock.now.PlusDays(-400), "Last Sync:  400 days"}};
    for (const auto& [last, text] : cases) {
        link.LastSync = last;
        EXPECT_EQ(PaneText(app, StatusPane::LastSync), text);
    }
}

TEST_F(OnlineCommandsTest, ChecksTheLinkOfTheOpenNoteBook) {
    EXPECT_FALSE(CheckLinkAtStart(app));
    app.NoteBook().syncLog.link.OnlineNoteBookID = 5;
    EXPECT_TRUE(CheckLinkAtStart(app));
    EXPECT_EQ(server.Requests().size(), 1u);
    store.Set("Online", "Namespace", "");
    EXPECT_FALSE(CheckLinkAtStart(app)) << "no service is set up";
}

}  // namespace
}  // namespace lore
