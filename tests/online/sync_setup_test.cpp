#include "online/sync_setup.h"

#include "online/online_fixture.h"
#include "support/each.h"

namespace lore {
namespace {

constexpr char kContacting[] = "... Contacting Lorebinder Online Server....";
constexpr char kLinking[] = "... Linking with Lorebinder Online Account....";
constexpr char kInvalid[] =
    "Invalid Sync GUID: Invalid Sync GUID.\n\nThe GUID must be 38 characters long and begin with '{' and end with "
    "'}'.  Please see example.";

class SyncSetupFlow : public OnlineFixture {
protected:
    /// A NoteBook on the disk with a link and a record.
    std::filesystem::path LinkedFolder(const std::string& name) {
        const std::filesystem::path file = NoteBookPaths(data, name).SyncLog();
        std::filesystem::create_directories(file.parent_path());
        PutBytes(file,
                 "2112, 5, Online, Desktop, 07/12/2011 02:20:24 PM, {X},\n3, 2112, 2112, 4, {N3}, F.dat, , , , , ,\n");
        return file;
    }
};

TEST_F(SyncSetupFlow, SaysWhichAccountIsEngaged) {
    SyncSetup setup(World());
    EXPECT_EQ(setup.HeadLine(), "LINKED TO ONLINE ACCOUNT");
    settings.Set(Option::Nickname, std::string("bee"));
    EXPECT_EQ(setup.HeadLine(), "LINKED TO ACCOUNT:  bee");
    settings.Set(Option::SyncEngaged, 2112);
    EXPECT_EQ(setup.HeadLine(), "SYNC NOT ENGAGED");
}

TEST_F(SyncSetupFlow, RefusesATextThatIsNoGuidBeforeItAsksTheServer) {
    const std::string guid = kGuid;
    for (const std::string& text : {std::string(), guid.substr(0, 37), guid + "x", "x" + guid.substr(1),
                                    guid.substr(0, 37) + ")", guid.substr(0, 20) + "  " + guid.substr(20)}) {
        EXPECT_EQ(SyncSetup(World()).Engage(text), EngageOutcome::InvalidGuid) << text;
        EXPECT_THAT(Seen(), ElementsAre(kInvalid));
    }
    EXPECT_THAT(server.Requests(), IsEmpty());
}

TEST_F(SyncSetupFlow, EngagesAnAccountAndDropsAllLinks) {
    const auto open = LinkedFolder("DB000007"), other = LinkedFolder("DB000009");
    std::filesystem::create_directories(data.Databases() / "Without");
    LoadSyncLogFrom(open, book.syncLog);
    Answer("EngageSyncWithOnlineAccount", "<UserID>3</UserID><UserNickname>bee</UserNickname>");
    EXPECT_EQ(SyncSetup(World()).Engage(" \t" + std::string(kGuid) + " \r\n"), EngageOutcome::Engaged);
    EXPECT_THAT(Asked(), ElementsAre("<EngageSyncWithOnlineAccount><syncGUID>" + std::string(kGuid) +
                                     "</syncGUID><desktopGUID>{LOCAL}</desktopGUID></EngageSyncWithOnlineAccount>"));
    EXPECT_THAT(Seen(), ElementsAre(kContacting, kLinking,
                                    "Sync GUID Found!!: Your Sync GUID was found!\n\nYour now are successfully linked "
                                    "with your Lorebinder Online account!"));
    EXPECT_EQ(settings.Text(Option::SyncGUID), kGuid);
    EXPECT_EQ(settings.Text(Option::Nickname), "bee");
    EXPECT_EQ(settings.Int(Option::SyncEngaged), 1);
    EXPECT_EQ(stored, 1);
    EXPECT_EQ(BytesOf(open), BytesOf(other));
    EXPECT_FALSE(book.syncLog.link.IsLinked());
    EXPECT_THAT(book.syncLog.Records(), IsEmpty());
    SyncLog reset;
    LoadSyncLogFrom(other, reset);
    EXPECT_EQ(reset.link.OnlineNoteBookID, -1);
    EXPECT_EQ(reset.link.OnlineName + reset.link.DesktopName + reset.link.NoteBookGuid, "");
    EXPECT_TRUE(reset.Records().empty());
    EXPECT_FALSE(std::filesystem::exists(data.Databases() / "Without" / "Sync.dat"));
}

TEST_F(SyncSetupFlow, DropsTheOldAccountWhereTheNewOneIsUnknown) {
    const auto file = LinkedFolder("DB000007");
    for (const char* const fields : {"<UserID>0</UserID><UserNickname>x</UserNickname>", "<UserID>-1</UserID>", ""}) {
        settings.Set(Option::SyncGUID, std::string("{OLD}"));
        settings.Set(Option::SyncEngaged, 1);
        Answer("EngageSyncWithOnlineAccount", fields);
        EXPECT_EQ(SyncSetup(World()).Engage(kGuid), EngageOutcome::NotFound);
        EXPECT_THAT(Seen(), ElementsAre(kContacting, kLinking, kUnknownAccount));
        EXPECT_EQ(settings.Text(Option::SyncGUID), "");
        EXPECT_EQ(settings.Int(Option::SyncEngaged), 0);
    }
    EXPECT_EQ(stored, 3);
    EXPECT_TRUE(BytesOf(file).starts_with("-1, -1,")) << BytesOf(file);
}

TEST_F(SyncSetupFlow, ChangesNothingWhereTheCallFails) {
    const std::string before = BytesOf(LinkedFolder("DB000007"));
    settings.Set(Option::Nickname, std::string("bee"));
    server.Add(500,
               "<e:Envelope xmlns:e=\"http://schemas.xmlsoap.org/soap/envelope/\"><e:Body><e:Fault/></e:Body></"
               "e:Envelope>");
    server.Add(HttpAnswer{});
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(SyncSetup(World()).Engage(kGuid), EngageOutcome::Failed);
        EXPECT_THAT(Seen(), ElementsAre(kContacting, kConnectionError));
    }
    EXPECT_EQ(settings.Text(Option::SyncGUID), "{SYNC}");
    EXPECT_EQ(SyncSetup(World()).HeadLine(), "LINKED TO ACCOUNT:  bee");
    EXPECT_EQ(SyncFile(), before);
    EXPECT_EQ(stored, 0);
}

TEST_F(SyncSetupFlow, LeavesALogThatCannotBeReadAndTellsIt) {
    std::filesystem::create_directories(NoteBookPaths(data, "DB000009").SyncLog());  // a folder in its place
    Answer("EngageSyncWithOnlineAccount", "<UserID>3</UserID>");
    EXPECT_EQ(SyncSetup(World()).Engage(kGuid), EngageOutcome::Engaged);
    EXPECT_THAT(Each(faults.faults, &Fault::what), ElementsAre("The sync log could not be read"));
}

TEST_F(SyncSetupFlow, SaysSoWhereNoServiceIsSetUp) {
    service = nullptr;
    EXPECT_EQ(SyncSetup(World()).Engage(kGuid), EngageOutcome::Failed);
    EXPECT_THAT(Seen(), ElementsAre(StartsWith("Online Service Not Set Up: No online service is set up.")));
    EXPECT_EQ(settings.Text(Option::SyncGUID), "{SYNC}");
}

TEST_F(SyncSetupFlow, AsksBeforeAllNoteBooksAreSynced) {
    SyncSetup setup(World());
    const char* const question =
        "Continue?? Lorebinder must be closed inorder to run the sync, it will restart once the sync has "
        "finished.\n\nDo you wish to continue with the sync?";
    prompts.answers = {PromptAnswer::Yes, PromptAnswer::No};
    EXPECT_TRUE(setup.AskToSyncAll());
    EXPECT_FALSE(setup.AskToSyncAll());
    settings.Set(Option::SyncEngaged, 0);
    EXPECT_FALSE(setup.AskToSyncAll());
    EXPECT_THAT(Seen(), ElementsAre(question, question,
                                    "Sync NOT Engaged: The Sync feature has not been engaged to a Lorebinder Online "
                                    "Account."));
}

}  // namespace
}  // namespace lore
