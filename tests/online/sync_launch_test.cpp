#include "online/sync_launch.h"

#include "support/matchers.h"
#include "support/noted_starts.h"

namespace lore {
namespace {

TEST(SyncLaunch, HandsOverAccountPlacesAndTheNextIds) {
    Settings settings;
    settings.Set(Option::SyncGUID, std::string("{SYNC}"));
    settings.Set(Option::LocalGUID, std::string("{LOCAL}"));
    settings.Set(Option::MaxNoteID, 1041);
    NotedStarts starts;
    const SyncPlace place{"/data/Data Files", "/opt/lore binder/bin", 12};
    EXPECT_EQ(LaunchSyncer(starts, kSyncCreate, settings, place), std::nullopt);
    EXPECT_THAT(starts.started, ElementsAre("syncer|SYNCCREATE|{SYNC}|{LOCAL}|/data/Data Files|/opt/lore binder/bin/"
                                            "|1042|12|11.56"));
    starts.failure = "No such file";
    EXPECT_EQ(LaunchSyncer(starts, kSync, settings, {"/d", "/bin/", 1}), "No such file");
    EXPECT_EQ(starts.started.back(), "syncer|SYNC|{SYNC}|{LOCAL}|/d|/bin/|1042|1|11.56");
    EXPECT_EQ(SyncArguments(kSync, settings, {"my data/Data Files", "/bin/", 1})[3],
              (std::filesystem::current_path() / "my data/Data Files").string());
}

TEST(SyncLaunch, CountsCategoriesBehindTheHighestInUseOrGivenOut) {
    Settings settings;
    CProCategoryList forest;
    settings.Set(Option::MaxCategoryID, 20);
    EXPECT_EQ(NextCategoryId(forest, settings), 21);
    forest.AddRoot({35, "Bees"});
    EXPECT_EQ(NextCategoryId(forest, settings), 36);
    EXPECT_EQ(settings.Int(Option::MaxCategoryID), 20);
}

TEST(SyncLaunch, RunsAtStartAndCloseByTheSettings) {
    Settings settings;
    for (const int32_t engaged : {0, 1, 2112}) {
        for (const int32_t on : {0, 1, 2112}) {
            settings.Set(Option::SyncEngaged, engaged);
            settings.Set(Option::SyncAtStart, on);
            settings.Set(Option::SyncAtClose, on);
            EXPECT_EQ(SyncsAtStart(settings, ""), engaged == 1 && on == 1);
            EXPECT_EQ(SyncsAtStart(settings, "/home/me/notes.lbe"), engaged == 1 && on == 1);
            EXPECT_EQ(SyncsAtClose(settings), engaged == 1 && on == 1);
            EXPECT_FALSE(SyncsAtStart(settings, "BYPASSSYNC"));
            EXPECT_FALSE(SyncsAtStart(settings, "x BypassSync.lbe"));
        }
    }
}

}  // namespace
}  // namespace lore
