#include "calendar/reminder_file.h"

#include "calendar/record_list.h"

namespace lore {

namespace {

struct ReminderReader {
    const ReadContext& context;
    void operator()(RecordReader& stream, CTmReminder& reminder) const {
        ResetReminder(reminder, context);
        VisitReminderFields(reminder, FieldReader{stream});
        if (reminder.ReminderId.empty())
            reminder.ReminderId = context.guids->NewGuid();
    }
};

}  // namespace

double ReadReminders(RecordReader& stream, ReminderList& list, const ReadContext& context) {
    return ReadRecordList(stream, list, ReminderReader{context});
}

void WriteReminders(RecordWriter& stream, const ReminderList& list) {
    WriteRecordList(stream, list,
                    [&](const CTmReminder& reminder) { VisitReminderFields(reminder, FieldWriter{stream}); });
}

Loaded<ReminderList> LoadAllReminders(const std::filesystem::path& path, const ReadContext& context) {
    return LoadRecordFile<CTmReminder>(path, ReminderReader{context});
}

Loaded<ReminderList> LoadRemindersInRange(const std::filesystem::path& path, const ReadContext& context,
                                          const DateTime& first, const DateTime& last) {
    const auto isInRange = [&](const CTmReminder& reminder) {
        return first.IsEarlierOrEqual(reminder.SendTime) && reminder.SendTime.IsEarlierOrEqual(last);
    };
    return LoadRecordFile<CTmReminder>(path, ReminderReader{context}, isInRange);
}

FileResult WriteReminders(const std::filesystem::path& path, const ReminderList& list) {
    RecordWriter stream;
    WriteReminders(stream, list);
    return SaveRecordFile(path, stream);
}

}  // namespace lore
