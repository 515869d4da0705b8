#include "calendar/calendar_check.h"

#include <memory>

#include "calendar/event_file.h"
#include "calendar/reminder_file.h"

namespace lore {

namespace {

template <typename Read>
FileResult CheckFile(const std::filesystem::path& path, bool& isDamaged, Read read) {
    isDamaged = false;
    std::unique_ptr<RecordReader> stream;
    const FileResult result = OpenRecordFile(path, stream);
    if (stream) {
        read(*stream);
        isDamaged = stream->RanOut() || !stream->AtEnd();
    }
    return result;
}

}  // namespace

FileResult CheckEventFile(const std::filesystem::path& path, const ReadContext& context, bool& isDamaged) {
    return CheckFile(path, isDamaged, [&](RecordReader& stream) {
        EventList events;
        ReadEvents(stream, events, context);
    });
}

FileResult CheckReminderFile(const std::filesystem::path& path, const ReadContext& context, bool& isDamaged) {
    return CheckFile(path, isDamaged, [&](RecordReader& stream) {
        ReminderList reminders;
        ReadReminders(stream, reminders, context);
    });
}

}  // namespace lore
