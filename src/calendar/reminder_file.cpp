#include "calendar/reminder_file.h"

#include "calendar/record_list.h"

namespace lore {

namespace {

void ReadReminder(RecordReader& stream, CTmReminder& reminder, const ReadContext& context) {
    ResetReminder(reminder, context);
    VisitReminderFields(reminder, FieldReader{stream});
    if (reminder.ReminderId.empty())
        reminder.ReminderId = context.guids->NewGuid();
}

template <typename Keep>
FileResult LoadReminders(const std::filesystem::path& path, const ReadContext& context, ReminderList& list, Keep keep,
                         bool* isWhole = nullptr) {
    list.clear();
    const auto read = [&](RecordReader& stream) {
        ReadRecordList(
            stream, list, [&](CTmReminder& reminder) { ReadReminder(stream, reminder, context); }, keep);
    };
    return ReadRecordFile(path, read, isWhole);
}

bool KeepAll(const CTmReminder&) {
    return true;
}

}  // namespace

double ReadReminders(RecordReader& stream, ReminderList& list, const ReadContext& context) {
    return ReadRecordList(
        stream, list, [&](CTmReminder& reminder) { ReadReminder(stream, reminder, context); }, KeepAll);
}

void WriteReminders(RecordWriter& stream, const ReminderList& list) {
    WriteRecordList(stream, list,
                    [&](const CTmReminder& reminder) { VisitReminderFields(reminder, FieldWriter{stream}); });
}

FileResult LoadAllReminders(const std::filesystem::path& path, const ReadContext& context, ReminderList& list,
                            bool* isWhole) {
    return LoadReminders(path, context, list, KeepAll, isWhole);
}

FileResult LoadRemindersInRange(const std::filesystem::path& path, const ReadContext& context, const DateTime& first,
                                const DateTime& last, ReminderList& list) {
    return LoadReminders(path, context, list, [&](const CTmReminder& reminder) {
        return first.IsEarlierOrEqual(reminder.SendTime) && reminder.SendTime.IsEarlierOrEqual(last);
    });
}

FileResult SaveReminders(const std::filesystem::path& path, const ReminderList& list) {
    RecordWriter stream;
    WriteReminders(stream, list);
    return SaveRecordFile(path, stream);
}

}  // namespace lore
