#include "notes/notebook_list.h"

#include <gtest/gtest.h>

#include "notes/note_builder.h"
#include "settings/settings.h"

namespace lore {
namespace {

CDatabase Entry(int32_t id, const std::string& name, const std::string& folder, const std::string& guid) {
    return {id, 0, name, folder, "backup of " + name, DateTime(2020, 2, 29, 1, 2, 3), guid};
}

const std::vector<CDatabase>& List() {
    static const std::vector<CDatabase> list = {Entry(7, "Lamps", "DB000007", "{L}"),
                                                Entry(9, "Lamps", "DB000009", "{M}"),
                                                Entry(2112, "Impostor", "DB002112", "{MAIN}")};
    return list;
}

TEST(NoteBookList, IsReadAndWrittenUnchangedByteForByte) {
    TempFolder folder;
    ASSERT_TRUE(SaveDatabases(folder / "Databases.dat", List()).Ok());
    const std::string bytes = BytesOf(folder / "Databases.dat");
    EXPECT_TRUE(bytes.starts_with(
        RawRecord().Add(11.56, 3, 7, "{L}", "Lamps", "DB000007", "backup of Lamps", "2020-02-29-01-02-03", 9).Bytes()));
    ReadWorld world;
    std::vector<CDatabase> read(5);
    ASSERT_TRUE(LoadDatabases(folder / "Databases.dat", world.context, read).Ok());
    ASSERT_TRUE(SaveDatabases(folder / "again.dat", read).Ok());
    EXPECT_EQ(BytesOf(folder / "again.dat"), bytes);
    EXPECT_EQ(world.guids.Count(), 0);
}

TEST(NoteBookList, FileOfAnOlderVersionHasNoExtraField) {
    TempFolder folder;
    for (const auto& [version, hasExtra] : {std::pair{10.9, false}, {10.98005, false}, {10.98006, true}}) {
        RawRecord raw;
        raw.Real(version).Int(1).Int(7).Text("").Text("Lamps").Text("DB000007");
        if (hasExtra)
            raw.Text("extra");
        raw.Text("2020-02-29-01-02-03");
        PutBytes(folder / "Databases.dat", raw.Bytes());
        ReadWorld world;
        std::vector<CDatabase> read;
        double readVersion = 0;
        LoadDatabases(folder / "Databases.dat", world.context, read, readVersion);
        EXPECT_EQ(readVersion, version);
        ASSERT_EQ(read.size(), 1u);
        EXPECT_EQ(read[0].extra, hasExtra ? "extra" : "");
        EXPECT_EQ(read[0].guid, "{GUID 1}");
        EXPECT_EQ(read[0].created, DateTime(2020, 2, 29, 1, 2, 3));
    }
}

TEST(NoteBookList, UnreadableFileGivesAnEmptyListAndHugeCountsFewEntries) {
    TempFolder folder;
    ReadWorld world;
    std::vector<CDatabase> read = List();
    EXPECT_TRUE(LoadDatabases(folder / "none", world.context, read).Missing());
    EXPECT_TRUE(read.empty());
    PutBytes(folder / "Databases.dat", RawRecord().Real(11.56).Int(2000000000).Int(7).Bytes());
    LoadDatabases(folder / "Databases.dat", world.context, read);
    EXPECT_LE(read.size(), 1001u);
}

TEST(NoteBookList, FindsTheMainNoteBookBeforeTheListed) {
    EXPECT_EQ(FindById(List(), "{MAIN}", 2112)->name, "LorebinderMain");
    EXPECT_EQ(FindById(List(), "{MAIN}", 9)->folder, "DB000009");
    EXPECT_FALSE(FindById(List(), "{MAIN}", 8));
    EXPECT_EQ(FindByGuid(List(), "{MAIN}", "{MAIN}")->folder, "_LBMAIN_");
    EXPECT_EQ(FindByGuid(List(), "{MAIN}", "{M}")->id, 9);
    EXPECT_FALSE(FindByGuid(List(), "{MAIN}", "{m}"));
}

TEST(NoteBookList, FindsWhatAUserTypes) {
    for (const auto& [text, folder] : {std::pair{"Lamps", "DB000007"},
                                       {"DB000009", "DB000009"},
                                       {"{M}", "DB000009"},
                                       {"LorebinderMain", "_LBMAIN_"},
                                       {"_LBMAIN_", "_LBMAIN_"},
                                       {"{MAIN}", "_LBMAIN_"}}) {
        const auto found = FindNoteBook(List(), "{MAIN}", text);
        ASSERT_TRUE(found) << text;
        EXPECT_EQ(found->folder, folder);
    }
    EXPECT_FALSE(FindNoteBook(List(), "{MAIN}", "lamps"));
    EXPECT_FALSE(FindNoteBook(List(), "", ""));
}

TEST(NoteBookList, StartTakesTheNoteBookThatTheSettingsNameAndMakesTheGuidOfTheInstallation) {
    TempFolder folder;
    SaveDatabases(folder / "Databases.dat", List());
    const char* const cases[][4] = {{"Databases.dat", "{MAIN}", "{M}", "{M}"},
                                    {"Databases.dat", "{MAIN}", "{GONE}", "{MAIN}"},
                                    {"Databases.dat", "{MAIN}", "", "{MAIN}"},
                                    {"none", "", "", "{GUID 1}"}};
    for (const auto& [file, local, database, expected] : cases) {
        ReadWorld world;
        Settings settings;
        settings.Set(Option::LocalGUID, std::string(local));
        settings.Set(Option::Database, std::string(database));
        std::vector<CDatabase> list;
        FileResult result;
        const CDatabase chosen = SelectStartNoteBook(folder / file, world.context, settings, list, result);
        EXPECT_EQ(chosen.guid, expected);
        EXPECT_EQ(settings.Text(Option::Database), expected);
        EXPECT_EQ(settings.Text(Option::LocalGUID), *local ? local : expected);
        EXPECT_EQ(list.size(), result.Missing() ? 0u : 3u);
        EXPECT_EQ(result.Missing(), *local == '\0');
    }
}

TEST(NoteBookPaths, FolderNamesCanNotLeadOutOfTheirPlace) {
    const DataPaths data{"/root"};
    EXPECT_EQ(NoteBookPaths(data, "DB000007").Notes(), "/root/Data Files/Databases/DB000007/Notes");
    EXPECT_EQ(NoteBookPaths(data, "../../etc").Folder(), "/root/Data Files/Databases/etc");
    EXPECT_EQ(NoteBookPaths(data, "C:\\x\\DB1").Folder(), "/root/Data Files/Databases/DB1");
    for (const char* folder : {"", ".", "..", "a/..", "a\\"})
        EXPECT_EQ(NoteBookPaths(data, folder).Folder(), "/root/Data Files/Databases/_INVALID_") << folder;
}

}  // namespace
}  // namespace lore
