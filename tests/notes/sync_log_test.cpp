#include "notes/sync_log.h"

#include <gtest/gtest.h>

#include "base/text.h"
#include "notes/note_builder.h"
#include "notes/sync_stamp.h"

namespace lore {
namespace {

SyncLog LogOf(const std::string& bytes, bool* hasHead = nullptr) {
    TempFolder folder;
    PutBytes(folder / "Sync.dat", bytes);
    SyncLog log;
    EXPECT_TRUE(LoadSyncLogFrom(folder / "Sync.dat", log, hasHead).Ok());
    return log;
}

std::string BytesOfLog(const SyncLog& log) {
    TempFolder folder;
    EXPECT_TRUE(SaveSyncLogTo(folder / "Sync.dat", log).Ok());
    return BytesOf(folder / "Sync.dat");
}

constexpr char kLinked[] =
    "2112, 17, My Online Book, LorebinderMain, 01/01/1900 12:00:00 AM, {GUID},\r\n"
    "5, 2112, 2112, -1, {N5}, DAY07122011.dat, 07/12/2011 02:20:24 PM, 07/12/2011 12:00:00 PM, , , 12/31/1999 11:59:59 "
    "AM,\r\n"
    "6, -1, -1, 44, {N6}, SRC0000000001.dat, , , , , ,\r\n";

TEST(SyncLog, IsWrittenAsItWasReadAndOddLinesInTheirPlainForm) {
    const std::string none = "-1, -1, , , , ,\r\n", ofFile = none + "1, 2112, 2112, 3, key, a, ";
    const std::pair<std::string, std::string> cases[] = {
        {kLinked, kLinked},
        {"-1, -1, , LorebinderMain, , {G},\r\n", "-1, -1, , LorebinderMain, , {G},\r\n"},
        {"", none},
        {none + "1, 2112,  2112 , 3, k, f, , , , , ,\n", none + "1, 2112, 2112, 3, k, f, , , , , ,\r\n"},
        {none + "1, 2112, 1, 3, k, f, , , , , ,\n", none + "1, 2112, -1, 3, k, f, , , , , ,\r\n"},
        {none + "1, 2112, , 3, k, f, , , , , ,\n", none + "1, 2112, -1, 3, k, f, , , , , ,\r\n"},
        // A comma in a file name puts the rest out of step.
        {none + "1, 2112, 2112, 3, key, a,b.dat, 07/12/2011 02:20:24 PM, , , , ,\n",
         ofFile + ", 07/12/2011 02:20:24 PM, , , ,\r\n"},
        {"2112, 5\n\n7, 2112, 2112,\n   \n8",
         "2112, 5, , , , ,\r\n7, 2112, 2112, -1, , , , , , , ,\r\n8, -1, -1, -1, , , , , , , ,\r\n"},
    };
    for (const auto& [read, written] : cases) {
        bool hasHead = read.empty();
        EXPECT_EQ(BytesOfLog(LogOf(read, &hasHead)), written);
        EXPECT_EQ(hasHead, !read.empty());
    }
    const SyncLog log = LogOf(kLinked);
    EXPECT_TRUE(log.link.IsLinked());
    EXPECT_EQ(log.link.LastSync, DateTime(1900, 1, 1));
    const CSyncInfo& info = log.Records().at(0);
    EXPECT_EQ(info.Change1, DateTime(2011, 7, 12, 14, 20, 24));
    EXPECT_EQ(info.Change2, DateTime(2011, 7, 12, 12, 0, 0));
    EXPECT_TRUE(info.SourcesChanged.IsNull());
    EXPECT_EQ(info.CategoriesChanged, DateTime(1999, 12, 31, 11, 59, 59));
    EXPECT_FALSE(log.Records().at(1).Changed);
}

TEST(SyncLog, MissingFileLeavesTheLogEmpty) {
    TempFolder folder;
    SyncLog log = LogOf(kLinked);
    bool hasHead = true;
    EXPECT_TRUE(LoadSyncLogFrom(folder / "Sync.dat", log, &hasHead).Missing());
    EXPECT_FALSE(hasHead);
    EXPECT_FALSE(log.link.IsLinked());
    EXPECT_TRUE(log.Records().empty());
    EXPECT_EQ(log.FindSyncInfo("{N5}"), nullptr);
}

TEST(SyncLog, NamesCanNotBreakTheirLine) {
    SyncLog log;
    log.link.OnlineName = "a,b\nc\rd";
    log.link.DesktopName = ",,";
    const SyncLog read = LogOf(BytesOfLog(log));
    EXPECT_EQ(read.link.OnlineName, "a b c d");
    EXPECT_EQ(read.link.DesktopName, "");
    EXPECT_TRUE(read.Records().empty());
}

TEST(SyncLog, KeysAndFilesKeepTheFieldsBehindThemInStep) {
    for (const char* const text : {"a,b", ",,", "a\nb", "a\r\n7, 2112, 2112, -1,"}) {
        const std::string odd = text;
        SyncLog log = LogOf(kLinked);
        CSyncInfo info = log.Records()[0];
        info.NoteId = 77;
        info.NoteKey = "{N77}" + odd + "x";
        info.NoteFile = odd + ".dat";
        log.ReplaceSyncInfo(info);
        CSyncInfo other = *log.FindSyncInfo("{N6}");
        other.Changed = true;
        log.ReplaceSyncInfo(other);
        const SyncLog read = LogOf(BytesOfLog(log));
        ASSERT_EQ(read.Records().size(), 3u) << odd;
        const CSyncInfo& back = read.Records()[2];
        EXPECT_EQ(back.NoteId, 77) << odd;
        EXPECT_TRUE(back.NoteKey.starts_with("{N77}") && back.NoteKey.ends_with("x")) << back.NoteKey;
        EXPECT_TRUE(back.NoteFile.ends_with(".dat")) << back.NoteFile;
        EXPECT_EQ(back.Change1, info.Change1) << odd;
        EXPECT_EQ(back.Change2, info.Change2) << odd;
        EXPECT_EQ(back.CategoriesChanged, info.CategoriesChanged) << odd;
    }
}

TEST(SyncLog, LongNamesLeaveTheirLineInOnePiece) {
    SyncLog log = LogOf(kLinked);
    for (const size_t shift : {0u, 1u, 2u}) {
        std::string name(shift, 'x');
        while (name.size() < 2000)
            name += "\u706f";
        log.link.OnlineName = log.link.DesktopName = log.link.NoteBookGuid = name;
        const std::string bytes = BytesOfLog(log);
        const SyncLog read = LogOf(bytes);
        EXPECT_EQ(read.Records().size(), 2u);
        EXPECT_TRUE(name.starts_with(read.link.DesktopName) && read.link.DesktopName.size() > 500);
        EXPECT_TRUE(IsValidUtf8(read.link.DesktopName)) << shift;
        EXPECT_EQ(BytesOfLog(read), bytes);
    }
}

TEST(SyncLog, ReplacesByKeyOrAdds) {
    SyncLog log = LogOf(kLinked);
    CSyncInfo info = *log.FindSyncInfo("{N6}");
    info.Changed = true;
    log.ReplaceSyncInfo(info);
    EXPECT_EQ(log.Records().size(), 2u);
    EXPECT_TRUE(log.FindSyncInfo("{N6}")->Changed);
    info.NoteKey = "{n6}";
    log.ReplaceSyncInfo(info);
    EXPECT_EQ(log.Records().size(), 3u);
    log.ResetLink();
    EXPECT_EQ(log.FindSyncInfo("{N6}"), nullptr);
    EXPECT_EQ(BytesOfLog(log), "-1, -1, , , , ,\r\n");
}

TEST(SyncLog, DatesThatDoNotReadAreNull) {
    for (const char* text : {"", "13/01/2011 01:00:00 AM", "02/30/2011 01:00:00 AM", "07/12/2011 00:10:00 AM",
                             "07/12/2011 13:10:00 PM", "07/12/2011 01:10:00", "07/12/2011 01:10:00 XM", "7-12-2011",
                             "07/12/2011 01:10:60 PM", "-7/12/2011 01:10:00 PM", "07/12/2011", "x"})
        EXPECT_TRUE(ParseSyncDate(text).IsNull()) << text;
    EXPECT_EQ(ParseSyncDate("7/2/2011 1:02:03 pm"), DateTime(2011, 7, 2, 13, 2, 3));
    EXPECT_EQ(ParseSyncDate("07/12/2011 12:00:00 AM"), DateTime(2011, 7, 12));
}

TEST(SyncLog, OnlyNotesInSyncOfALinkedNoteBookAreStamped) {
    for (const bool linked : {true, false}) {
        for (const int32_t state : {kStoredTrue, 0}) {
            SyncLog log;
            log.link.Linked = linked ? kStoredTrue : 0;
            log.Add({-1, state, -1, false, "{N}", "", {}, {}, {}, {}, {}});
            const auto change = [](CSyncInfo& record) { record.NoteId = 9; };
            EXPECT_FALSE(StampSyncRecord(log, "{other}", change));
            const bool stamped = StampSyncRecord(log, "{N}", change);
            EXPECT_EQ(stamped, linked && state == kStoredTrue);
            EXPECT_EQ(log.Records()[0].Changed, stamped);
            EXPECT_EQ(log.Records()[0].NoteId == 9, stamped);
        }
    }
}

TEST(SyncLog, ALogThatWasNotReadWholeIsKeptBesideBeforeItIsWritten) {
    const std::string log = kLinked;
    std::string ended = log, cut = log.substr(0, log.size() - 9), zero = log;
    ended[ended.find("{N5}")] = '\x1A';
    zero[zero.find("{N5}")] = '\0';
    for (const std::string& bytes : {log, ended, cut, zero}) {
        NoteBookFolder folder;
        OpenNoteBook book;
        NotedFaults faults;
        book.paths = folder.paths;
        PutBytes(book.paths.SyncLog(), bytes);
        LoadSyncLogFrom(book.paths.SyncLog(), book.syncLog);
        const bool isWhole = bytes == log;
        for (int time = 0; time < 2; ++time) {
            EXPECT_TRUE(WriteSyncLog(book, faults));
            EXPECT_EQ(BytesOf(book.paths.SyncLog().string() + ".kept"), isWhole ? "" : bytes);
            EXPECT_EQ(faults.faults.size(), isWhole ? 0u : 1u);
        }
    }
    NoteBookFolder folder;
    OpenNoteBook book;
    NotedFaults faults;
    book.paths = folder.paths;
    std::filesystem::create_directories(book.paths.SyncLog());
    LoadSyncLogFrom(book.paths.SyncLog(), book.syncLog);
    std::filesystem::remove(book.paths.SyncLog());
    EXPECT_TRUE(WriteSyncLog(book, faults)) << "nothing is there to be kept";
    EXPECT_TRUE(faults.faults.empty());
}

}  // namespace
}  // namespace lore
