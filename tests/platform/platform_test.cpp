#include <QCommandLineParser>
#include <csignal>
#include <gmock/gmock.h>
#include <pwd.h>
#include <set>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/data_lock.h"
#include "platform/ini_store.h"
#include "platform/places.h"
#include "platform/program_arguments.h"
#include "platform/system_sources.h"
#include "support/read_world.h"
#include "support/set_variable.h"

namespace lore {
namespace {

class Platform : public ::testing::Test {
protected:
    TempFolder folder_;
};

TEST_F(Platform, SettingsComeBackFromTheIniFile) {
    const std::filesystem::path file = folder_ / "sub/settings.ini";
    {
        IniStore store(file);
        EXPECT_FALSE(store.Get("Options", "Email"));
        store.Set("Options", "Email", "a,b; \"c\" \xE9");
        store.Set("Options", "FrameRect", "1,2,3,4");
        store.Set("Options", "LocalGUID", "{ABCDEF01-02FA-abcd-EFAA-BB06070809FF}");
        EXPECT_TRUE(store.Flush());
    }
    IniStore store(file);
    EXPECT_EQ(store.Get("Options", "Email"), "a,b; \"c\" \xE9");
    EXPECT_EQ(store.Get("Options", "FrameRect"), "1,2,3,4");
    EXPECT_EQ(store.Get("Options", "LocalGUID"), "{ABCDEF01-02FA-abcd-EFAA-BB06070809FF}");
}

TEST_F(Platform, SettingsOfAnotherProcessShowAfterAFlushAndStay) {
    IniStore store(folder_ / "s.ini");
    store.Set("Options", "ZoomLvl", "100");
    ASSERT_TRUE(store.Flush());
    PutBytes(folder_ / "s.ini", "[Options]\nZoomLvl=100\nRunAgent=2112\n");
    EXPECT_TRUE(store.Flush());
    EXPECT_EQ(store.Get("Options", "RunAgent"), "2112");
    store.Set("Options", "ZoomLvl", "90");
    PutBytes(folder_ / "s.ini", "[Options]\nZoomLvl=100\nRunAgent=0\nStartupAgent=2112\n");
    EXPECT_TRUE(store.Flush());
    EXPECT_EQ(store.Get("Options", "StartupAgent"), "2112");
    EXPECT_EQ(IniStore(folder_ / "s.ini").Get("Options", "ZoomLvl"), "90");
    EXPECT_EQ(store.Get("Options", "RunAgent"), "0");
}

TEST_F(Platform, AFailedFlushNamesTheFileAndTheReasonAndKeepsWhatWasSet) {
    const std::filesystem::path inTheWay = folder_ / "taken", asFolder = folder_ / "s.ini";
    IniStore blocked(inTheWay / "s.ini");
    PutBytes(inTheWay, "a file");
    blocked.Set("Options", "ZoomLvl", "90");
    EXPECT_FALSE(blocked.Flush());
    EXPECT_EQ(blocked.Failure().path, inTheWay.string());
    EXPECT_EQ(blocked.Failure().reason, FileResult{ENOTDIR}.Reason());
    std::filesystem::remove(inTheWay);
    EXPECT_TRUE(blocked.Flush()) << "tried again";
    EXPECT_EQ(IniStore(inTheWay / "s.ini").Get("Options", "ZoomLvl"), "90");

    std::filesystem::create_directories(asFolder);
    IniStore folder(asFolder);
    folder.Set("Options", "ZoomLvl", "90");
    EXPECT_FALSE(folder.Flush());
    EXPECT_EQ(folder.Failure().path, asFolder.string());
    EXPECT_EQ(folder.Failure().reason, FileResult{EISDIR}.Reason());
}

TEST_F(Platform, SettingsInOtherFormsOfTextKeepAllOfIt) {
    // A line as the file holds it, and the name as it is read.
    const std::tuple<const char*, std::string, std::string> kCases[] = {
        {"a byte that is no UTF-8", "Nickname=Ren\xC3\xA9 \xE9", "Ren\xC3\xA9 \xE9"},
        {"Windows-1252", "Nickname=J\xF6rg", "J\xF6rg"},
        {"UTF-8", "Nickname=J\xC3\xB6rg", "J\xF6rg"}};
    for (const auto& [what, line, name] : kCases) {
        for (const std::string& mark : {std::string(), std::string("\xEF\xBB\xBF")}) {
            SCOPED_TRACE(what + std::string(mark.empty() ? "" : " behind a byte order mark"));
            const std::string before = mark + "# a=remark\n[Options]\n# another\n" + line +
                                       "\nEmail=\xC5\x82\nZoomLvl=100\nFrameRect=1,2,3,4\n";
            PutBytes(folder_ / "s.ini", before);
            IniStore store(folder_ / "s.ini");
            EXPECT_EQ(store.Get("Options", "Nickname"), name);
            EXPECT_EQ(store.Get("Options", "ZoomLvl"), "100");
            EXPECT_EQ(store.Get("Options", "FrameRect"), "1,2,3,4");
            EXPECT_TRUE(store.Flush());
            EXPECT_EQ(BytesOf(folder_ / "s.ini"), before);
            store.Set("Options", "ZoomLvl", "90");
            ASSERT_TRUE(store.Flush()) << store.Failure().reason;
            EXPECT_EQ(store.Get("Options", "Nickname"), name);
            const IniStore again(folder_ / "s.ini");
            EXPECT_EQ(again.Get("Options", "Nickname"), name);
            EXPECT_EQ(again.Get("Options", "Email"), "\xC5\x82");
            EXPECT_EQ(again.Get("Options", "ZoomLvl"), "90");
        }
    }
}

TEST_F(Platform, SettingsThatCanNotBeReadAreToldAndStay) {
    std::filesystem::create_directory(folder_ / "folder.ini");
    ASSERT_EQ(::mkfifo((folder_ / "pipe.ini").c_str(), 0600), 0);
    std::filesystem::create_symlink("away", folder_ / "link.ini");
    PutBytes(folder_ / "bad.ini", "[Options\nZoomLvl=100\n");
    PutBytes(folder_ / "line.ini", "\xEF\xBB\xBF[Options]\n# junk\nZoomLvl=100\n\n junk\njunk\n");
    PutBytes(folder_ / "wide.ini", std::string("[\0O\0]\0\n\0Z\0=\0001\0\n\0", 16));
    PutBytes(folder_ / "\xff.ini", "[Options]\nZoomLvl=100\n");
    const auto entries = [this] { return std::distance(std::filesystem::directory_iterator(folder_.Path()), {}); };
    const auto before = entries();
    const std::pair<std::string, std::string> kCases[] = {
        {"folder.ini", "Is a directory"},
        {"pipe.ini", "Not a regular file"},
        {"link.ini", FileResult{FileResult::kDeadLink}.Reason()},
        {"bad.ini", "line 1 is neither \"[Section]\" nor \"Name=value\"; mend it or take it out"},
        {"line.ini", "line 5 is neither \"[Section]\" nor \"Name=value\"; mend it or take it out"},
        {"wide.ini", "it isn't UTF-8 text; store it as such, or put a copy of it back"},
        {"\xff.ini", "its path isn't valid UTF-8; give it another one"}};
    for (const auto& [name, reason] : kCases) {
        IniStore store(folder_ / name);
        ASSERT_TRUE(store.Unread()) << name;
        EXPECT_EQ(store.Unread()->reason, reason);
        EXPECT_EQ(store.Unread()->path, (folder_ / name).string());
        store.Set("Options", "ZoomLvl", "90");
        EXPECT_FALSE(store.Flush()) << name;
        EXPECT_EQ(store.Failure().reason, reason);
    }
    EXPECT_EQ(BytesOf(folder_ / "\xff.ini"), "[Options]\nZoomLvl=100\n");
    {
        IniStore none(folder_ / "none.ini");
        EXPECT_FALSE(none.Unread() || none.Get("Options", "Email"));
    }
    EXPECT_EQ(entries(), before);
}

TEST_F(Platform, SettingsAreStoredWithoutAFolderForTemporaryFiles) {
    const SetVariable temporary("TMPDIR", (folder_ / "none").string());
    IniStore store(folder_ / "s.ini");
    // Bytes of a text may have two forms; what comes back is compared with what it means.
    store.Set("Options", "Email", "\xC3\xA9, \"x\"");
    EXPECT_TRUE(store.Flush()) << store.Failure().reason;
    EXPECT_EQ(IniStore(folder_ / "s.ini").Get("Options", "Email"), "\xE9, \"x\"");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder_.Path()), {}), 1);
}

TEST_F(Platform, OneProcessHoldsTheDataFolder) {
    const mode_t before = ::umask(0002);
    LockAttempt attempt = DataLock::Take(folder_.Path());
    ::umask(before);
    ASSERT_TRUE(attempt.lock);
    EXPECT_EQ(std::filesystem::status(folder_ / kLockName).permissions(), std::filesystem::perms(0664)) << "shared";
    EXPECT_TRUE(DataLock::Take(folder_.Path()).IsHeldByOther());
    attempt.lock.reset();
    EXPECT_TRUE(DataLock::Take(folder_.Path()).lock);
}

TEST_F(Platform, AKilledProcessGivesTheLockBack) {
    int ready[2];
    ASSERT_EQ(::pipe(ready), 0);
    const pid_t child = ::fork();
    ASSERT_NE(child, -1);
    if (child == 0) {
        const LockAttempt attempt = DataLock::Take(folder_.Path());
        [[maybe_unused]] const auto told = ::write(ready[1], attempt.lock ? "y" : "n", 1);
        ::pause();
        ::_exit(0);
    }
    ::close(ready[1]);
    char answer = 0;
    EXPECT_EQ(::read(ready[0], &answer, 1), 1);
    EXPECT_EQ(answer, 'y');
    EXPECT_TRUE(DataLock::Take(folder_.Path()).IsHeldByOther());
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
    EXPECT_TRUE(DataLock::Take(folder_.Path()).lock);
    ::close(ready[0]);
}

TEST_F(Platform, GuidsAreUniqueAndHaveTheForm) {
    SystemGuids guids;
    std::set<std::string> seen;
    for (int i = 0; i < 1000; ++i) {
        const std::string guid = guids.NewGuid();
        EXPECT_THAT(guid,
                    testing::MatchesRegex("\\{[0-9A-F]{8}-[0-9A-F]{4}-4[0-9a-f]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}\\}"));
        EXPECT_TRUE(seen.insert(guid).second);
    }
}

TEST_F(Platform, PlacesFollowTheDesktopsVariables) {
    const SetVariable data("XDG_DATA_HOME", "/d"), config("XDG_CONFIG_HOME", "relative"), home("HOME", "/h");
    EXPECT_EQ(UserDataRoot(), "/d/Tanner Quay Rigging/Lorebinder");
    EXPECT_EQ(UserSettingsFile(), "/h/.config/TannerQuayRig/Lorebinder.ini");
    EXPECT_TRUE(std::filesystem::exists(ProgramFolder()));
    const SetVariable noData("XDG_DATA_HOME");
    for (const std::optional<std::string>& unusable : {std::optional<std::string>(), {""}, {"relative"}}) {
        const SetVariable odd("HOME", unusable);
        EXPECT_EQ(UserDataRoot().string().find(::getpwuid(::getuid())->pw_dir), 0u);
    }
}

TEST_F(Platform, WhatTheCommandLineDoesNotNameHasItsDefaultPlace) {
    const SetVariable dataHome("XDG_DATA_HOME", "/d"), configHome("XDG_CONFIG_HOME", "/c");
    const SetVariable parent(kDataVariable, "/parent"), noSettings(kSettingsVariable);
    const std::string userRoot = UserDataRoot().string(), userSettings = UserSettingsFile().string();
    const std::tuple<DefaultPlaces, QStringList, std::string, std::string> kCases[] = {
        {DefaultPlaces::User, {}, userRoot, userSettings},
        {DefaultPlaces::Companion, {}, "/parent", "/parent/settings.ini"},
        {DefaultPlaces::User, {"--data", "/\u00e4"}, "/\xc3\xa4", "/\xc3\xa4/settings.ini"},
        {DefaultPlaces::Companion, {"--data", "/x"}, "/x", "/x/settings.ini"},
        {DefaultPlaces::User, {"--settings", "/s"}, userRoot, "/s"},
        {DefaultPlaces::Companion, {"--settings", "/s"}, "/parent", "/s"},
        {DefaultPlaces::User, {"--data", "/x", "--settings", ""}, "/x", "/x/settings.ini"}};
    for (const auto& [defaults, options, data, settings] : kCases) {
        QCommandLineParser parser;
        const PlaceOptions places(parser, defaults);
        EXPECT_TRUE(parser.parse(QStringList("program") + options));
        EXPECT_EQ(places.Places().dataRoot, data);
        EXPECT_EQ(places.Places().settingsFile, settings);
    }
}

}  // namespace
}  // namespace lore
