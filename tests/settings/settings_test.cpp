#include "settings/settings.h"

#include <gtest/gtest.h>

#include "support/memory_store.h"

namespace lore {
namespace {

TEST(Settings, AFreshStoreGivesTheDefaults) {
    Settings settings;
    settings.LoadOptions(MemoryStore());
    EXPECT_EQ(settings.Int(Option::NoteSortID), 805);
    EXPECT_EQ(settings.ProgVersion(), -1.0);
    EXPECT_EQ(settings.Int(Option::ZoomLvl), 100);
    EXPECT_TRUE(settings.Rectangle(Option::FrameRect).IsEmpty());
    EXPECT_EQ(settings.Int(Option::Service), -1);
    EXPECT_TRUE(settings.Flag(Option::TrayIcon));
}

TEST(Settings, ComeBackAsTheyWereStored) {
    MemoryStore store;
    Settings settings;
    settings.Set(Option::FrameRect, Rect{-5, 10, 800, 600});
    settings.Set(Option::BackupPath, std::string("/keep/a,b.lbe"));
    settings.Set(Option::MaxNoteID, 4711);
    settings.Set(Option::ZoomLvl, 115);
    settings.SaveOptions(store);
    EXPECT_EQ(store.values.at({"Options", "ZoomLvl"}), "115");
    Settings again;
    again.LoadOptions(store);
    EXPECT_EQ(again.Rectangle(Option::FrameRect), (Rect{-5, 10, 800, 600}));
    EXPECT_EQ(again.Text(Option::BackupPath), "/keep/a,b.lbe");
    EXPECT_EQ(again.Int(Option::MaxNoteID), 4711);
    EXPECT_EQ(again.Int(Option::ZoomLvl), 115);
}

TEST(Settings, AValueThatCantBeReadHasItsDefault) {
    const std::tuple<const char*, const char*, Option, int32_t> cases[] = {
        {"NoteSortID", "abc", Option::NoteSortID, 805},
        {"NoteSortID", "", Option::NoteSortID, 805},
        {"NoteSortID", " 703 ", Option::NoteSortID, 703},
        {"ShowCats", "false", Option::ShowCats, 0},
        {"MaxNoteID", "99999999999", Option::MaxNoteID, INT32_MAX}};
    for (const auto& [key, stored, option, expected] : cases) {
        MemoryStore store;
        store.Set("Options", key, stored);
        Settings settings;
        settings.LoadOptions(store);
        EXPECT_EQ(settings.Int(option), expected) << key << "=" << stored;
    }
    for (const char* text : {"1,2,3", "1,2,3,4,5", "a,b,c,d", ""}) {
        MemoryStore store;
        store.Set("Options", "FrameRect", text);
        Settings settings;
        settings.LoadOptions(store);
        EXPECT_EQ(settings.Rectangle(Option::FrameRect), Rect{}) << text;
    }
}

}  // namespace
}  // namespace lore
