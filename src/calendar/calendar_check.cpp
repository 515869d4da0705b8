#include "calendar/calendar_check.h"

#include <memory>

#include "calendar/event_file.h"
#include "calendar/reminder_file.h"

namespace lore {

namespace {

template <typename Read>
FileResult CheckFile(const std::filesystem::path& path, RecordFileState& state, Read read) {
    state = {};
    std::unique_ptr<RecordReader> stream;
    const FileResult result = OpenRecordFile(path, stream);
    if (stream) {
        read(*stream);
        state = stream->State();
    }
    return result;
}

}  // namespace

FileResult CheckEventFile(const std::filesystem::path& path, const ReadContext& context, RecordFileState& state) {
    return CheckFile(path, state, [&](RecordReader& stream) {
        EventList events;
        ReadEvents(stream, events, context);
    });
}

FileResult CheckReminderFile(const std::filesystem::path& path, const ReadContext& context, RecordFileState& state) {
    return CheckFile(path, state, [&](RecordReader& stream) {
        ReminderList reminders;
        ReadReminders(stream, reminders, context);
    });
}

}  // namespace lore
