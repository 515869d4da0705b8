#include "calendar/calendar_check.h"

#include <gtest/gtest.h>

#include "calendar/event_builder.h"
#include "calendar/event_file.h"
#include "calendar/reminder_file.h"
#include "support/read_world.h"

namespace lore {
namespace {

using Check = FileResult (*)(const std::filesystem::path&, const ReadContext&, RecordFileState&);

class CalendarCheckTest : public testing::Test {
protected:
    bool IsDamaged(Check check) {
        RecordFileState state;
        EXPECT_TRUE(check(path_, world_.context, state).Ok());
        return !state.isWhole;
    }

    TempFolder folder_;
    std::filesystem::path path_ = folder_ / "file.dat";
    ReadWorld world_;
};

TEST_F(CalendarCheckTest, EveryCutAndAByteTooManyAreFound) {
    CTmReminder reminder;
    reminder.ReminderId = "{R}";
    for (const Check check : {CheckEventFile, CheckReminderFile}) {
        EXPECT_TRUE((check == CheckEventFile
                         ? WriteEvents(path_, EventList{Event("{E}", "", Day(2011, 2, 3), Day(2011, 2, 3))})
                         : WriteReminders(path_, {reminder, reminder}))
                        .Ok());
        EXPECT_FALSE(IsDamaged(check));
        const std::string whole = BytesOf(path_);
        for (size_t length = 0; length < whole.size(); length += 5) {
            PutBytes(path_, whole.substr(0, length));
            EXPECT_TRUE(IsDamaged(check)) << length;
        }
        PutBytes(path_, whole + "x");
        EXPECT_TRUE(IsDamaged(check));
    }
}

TEST_F(CalendarCheckTest, AMissingFileIsNotDamaged) {
    RecordFileState state{.isWhole = false};
    EXPECT_TRUE(CheckEventFile(path_, world_.context, state).Missing());
    EXPECT_TRUE(state.isWhole);
}

}  // namespace
}  // namespace lore
