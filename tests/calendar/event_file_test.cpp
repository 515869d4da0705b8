#include "calendar/event_file.h"

#include <cerrno>
#include <functional>
#include <gtest/gtest.h>

#include "calendar/event_builder.h"
#include "calendar/reminder_file.h"
#include "support/raw_record.h"
#include "support/read_world.h"
#include "support/scripted_ports.h"

namespace lore {
namespace {

/// Tells the calls in their order, and counts the steps.
class StepCounter : public ScriptedProgress {
public:
    void SetRange(int low, int high) override { said += std::to_string(low) + ".." + std::to_string(high) + " "; }
    void SetMessage(const std::string& text) override { said += text + " "; }
    void StepIt() override { ++steps; }
    void Show() override { said += "shown "; }
    void Hide() override { said += "hidden"; }
    std::string said;
    int steps = 0;
};

const std::string kSampleBytes =
    RawRecord()
        .Add(11.56, 1, 7, 0, 1, 0, "2011-02-03-09-05-00", "2011-02-03-10-00-59", "2011-02-03-09-05-00")
        .Add("Invalid DateTime", 3, 1, 0, 2, 0, 1, -1, 0, "{E}", "{S}", "Class", "room\n101")
        .Bytes();

class EventFile : public testing::Test {
protected:
    TempFolder folder_;
    ReadWorld world_;
    std::filesystem::path path_ = folder_ / "Events.dat";
    int kept_ = 0;
    FileResult keeps_;
    const std::function<FileResult()> keep_ = [this] {
        ++kept_;
        return keeps_;
    };

    EventList Load() {
        Loaded<EventList> loaded = LoadAllEvents(path_, world_.context);
        EXPECT_TRUE(loaded.file.Ok());
        return std::move(loaded.value);
    }
    FileResult Merge(const EventList& list) {
        StepCounter progress;
        return MergeSaveEvents(path_, world_.context, list, progress, keep_);
    }
};

TEST_F(EventFile, ReadsEveryFieldAndWritesTheSameBytes) {
    PutBytes(path_, kSampleBytes);
    const EventList list = Load();
    ASSERT_EQ(list.size(), 1u);
    EXPECT_EQ(list[0].BarColor, 7);
    EXPECT_EQ(list[0].AllDay, 0);
    EXPECT_EQ(list[0].Recurring, 1);
    EXPECT_EQ(list[0].RecurrenceType, kDaily);
    EXPECT_EQ(list[0].End, Day(2011, 2, 3, 10, 0, 59));
    EXPECT_EQ(list[0].RecurrenceEnd, world_.context.now) << "a date that doesn't parse is the moment of reading";
    EXPECT_EQ(list[0].DailyPattern, (LongList{1, 0, 2}));
    EXPECT_EQ(list[0].MonthlyPattern, LongList{-1});
    EXPECT_EQ(list[0].Description, "room\n101");
    EventList written = list;
    written[0].RecurrenceEnd = DateTime::Invalid();
    EXPECT_TRUE(WriteEvents(path_, written).Ok());
    EXPECT_EQ(BytesOf(path_), kSampleBytes);
}

TEST_F(EventFile, MakesUpTheRecordThatTheCountPromises) {
    std::string bytes = kSampleBytes;
    bytes[35] = '2';
    PutBytes(path_, bytes);
    const EventList list = Load();
    ASSERT_EQ(list.size(), 2u);
    EXPECT_EQ(list[1].BarColor, 0);
    EXPECT_EQ(list[1].Start, world_.context.now);
    EXPECT_TRUE(list[1].DailyPattern.IsEmpty());
    EXPECT_EQ(list[1].EventId, "{GUID 1}");
    PutBytes(path_, "0000000011.5600000000000000000000000");
    EXPECT_TRUE(Load().empty());
}

TEST_F(EventFile, LeavesOutOnlyWhatCoversTheWholeRange) {
    EXPECT_TRUE(
        WriteEvents(path_, {Event("covers", "", Day(2011, 1, 1), Day(2011, 12, 31)),
                            Event("later", "", Day(2013, 1, 1), Day(2013, 1, 1)),
                            Event("earlier", "", Day(2009, 1, 1), Day(2009, 1, 1)),
                            Event("starts", "", Day(2011, 5, 1), Day(2012, 1, 1)),
                            Event("ends", "", Day(2010, 5, 1), Day(2011, 5, 31)),
                            Event("a second late", "", Day(2011, 4, 30, 23, 59, 59), Day(2011, 5, 31, 0, 0, 1))})
            .Ok());
    const auto loaded = LoadEventsInRange(path_, world_.context, Day(2011, 5, 1), Day(2011, 5, 31));
    EXPECT_TRUE(loaded.ReadWhole());
    EXPECT_EQ(Ids(loaded.value), "later earlier starts ends");
}

TEST_F(EventFile, MergesOverTheRecordsOfTheFile) {
    EXPECT_TRUE(WriteEvents(path_, {Event("a", "", Day(2011, 1, 1), Day(2011, 1, 1)),
                                    Event("b", "", Day(2011, 1, 2), Day(2011, 1, 2)),
                                    Event("b", "twice", Day(2011, 1, 2), Day(2011, 1, 2))})
                    .Ok());
    StepCounter progress;
    const CTmEvent b = Event("b", "new", Day(2011, 2, 2), Day(2011, 2, 2)), c = Event("c", "", b.Start, b.End);
    EXPECT_TRUE(MergeSaveEvents(path_, world_.context, {b, c, c}, progress, keep_).Ok());
    const EventList list = Load();
    EXPECT_EQ(Ids(list), "a b b c");
    EXPECT_EQ(list[1].SeriesId, "new");
    EXPECT_EQ(list[2].SeriesId, "twice") << "only the first record of an id is meant";
    EXPECT_EQ(progress.said, "0..3 Updating Events... shown 0..4 Saving Events... hidden");
    EXPECT_EQ(progress.steps, 3 + 4);
}

TEST_F(EventFile, KeepsAFileThatItCannotRead) {
    std::filesystem::create_directory(path_);
    StepCounter progress;
    const FileResult result = MergeSaveEvents(path_, world_.context, {CTmEvent()}, progress, keep_);
    EXPECT_FALSE(result.Ok());
    EXPECT_TRUE(std::filesystem::is_directory(path_));
    EXPECT_TRUE(progress.said.ends_with("hidden"));
    EXPECT_EQ(kept_, 0) << "it isn't damaged";
}

TEST_F(EventFile, MergesIntoADamagedFileOnlyOnceItIsKept) {
    const CTmEvent more = Event("more", "", Day(2012, 1, 1), Day(2012, 1, 1));
    for (const std::string& damaged : {kSampleBytes + "junk", kSampleBytes.substr(0, kSampleBytes.size() - 5)}) {
        PutBytes(path_, damaged);
        kept_ = 0;
        keeps_ = {ENOSPC};
        EXPECT_EQ(Merge({more}).error, ENOSPC);
        EXPECT_EQ(BytesOf(path_), damaged);
        keeps_ = {};
        EXPECT_TRUE(Merge({more}).Ok());
        EXPECT_EQ(Ids(Load()), "{E} more");
        EXPECT_TRUE(Merge({more}).Ok());
        EXPECT_EQ(kept_, 2) << "it is whole now";
    }
}

TEST_F(EventFile, MergesALargeListWithoutWalkingTheFileForEachEvent) {
    EventList file;
    for (int i = 0; i < 50000; ++i)
        file.push_back(Event("{00000000-0000-0000-0000-0000000" + std::to_string(10000 + i) + "}", "{S}",
                             Day(2011, 1, 1).PlusDays(i % 3000), Day(2011, 1, 1, 1).PlusDays(i % 3000)));
    EXPECT_TRUE(WriteEvents(path_, file).Ok());
    for (size_t i = 0; i < file.size(); ++i) {
        file[i].EventId += i % 5 == 4 ? "new" : "";
        file[i].Label = "changed";
    }
    const std::clock_t start = std::clock();
    EXPECT_TRUE(Merge(file).Ok());
    const double seconds = static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
    RecordProperty("processor_milliseconds", static_cast<int>(seconds * 1000));
    EXPECT_LT(seconds, 12.0) << "walking took 30 s";
    EXPECT_EQ(Load().size(), 60000u);
}

TEST(ReminderFile, ReadsEveryFieldAndWritesTheSameBytes) {
    const TempFolder folder;
    ReadWorld world;
    const std::filesystem::path path = folder / "Rem.dat";
    const std::string bytes =
        RawRecord()
            .Add(11.56, 2, 2, -1, 42, 38, 2112, "2011-02-03-09-05-00", "", "2011-02-03-09-15-00", "{R}", "to", "@")
            .Add("1-234-56", "{E}", "a\nb", "Class", "", 0, 10, -1, -1, 0, "2011-02-03-09-05-00")
            .Add("2011-02-03-09-05-00", "2011-02-03-09-15-00", "{Q}", "", "", "", "", "", "", "")
            .Bytes();
    PutBytes(path, bytes);
    Loaded<ReminderList> loaded = LoadAllReminders(path, world.context);
    ASSERT_TRUE(loaded.ReadWhole());
    ReminderList& list = loaded.value;
    ASSERT_EQ(list.size(), 2u);
    EXPECT_EQ(list[0].ProviderIndex, 38);
    EXPECT_TRUE(list[0].ServerDone);
    EXPECT_EQ(list[0].SendTime, world.context.now);
    EXPECT_EQ(list[0].PhoneNumber, "1-234-56");
    EXPECT_EQ(list[0].Message, "a\nb");
    list[0].SendTime = DateTime();
    EXPECT_TRUE(WriteReminders(path, list).Ok());
    EXPECT_EQ(BytesOf(path), bytes);
    const DateTime sent(2011, 2, 3, 9, 5);
    loaded = LoadRemindersInRange(path, world.context, sent, sent);
    EXPECT_TRUE(loaded.ReadWhole());
    ASSERT_EQ(list.size(), 1u);
    EXPECT_EQ(list[0].ReminderId, "{Q}");
    loaded = LoadAllReminders(folder / "none", world.context);
    EXPECT_TRUE(loaded.file.Missing());
    EXPECT_TRUE(list.empty());
}

TEST(ReminderFile, GivesARecordWithoutAnIdANewOne) {
    ReadWorld world;
    RecordReader stream("0000000011.5600000000000000000000001");
    ReminderList list;
    EXPECT_EQ(ReadReminders(stream, list, world.context), 11.56);
    ASSERT_EQ(list.size(), 1u);
    EXPECT_EQ(list[0].ReminderId, "{GUID 1}");
    EXPECT_EQ(list[0].ServerId, 0);
    EXPECT_EQ(list[0].EventStart, world.context.now);
}

}  // namespace
}  // namespace lore
