#include "calendar/shown_popups.h"

#include <vector>

#include "calendar/record_list.h"

namespace lore {

namespace {

struct ShownRecord {
    std::string ReminderId;
    DateTime SendTime, Again;
};

template <typename Visitor, typename Record>
void VisitShownFields(Record& record, Visitor&& visit) {
    visit("ReminderId", record.ReminderId);
    visit("SendTime", record.SendTime);
    visit("Again", record.Again);
}

}  // namespace

PopupKey KeyOf(const CTmReminder& reminder, int32_t number) {
    return {reminder.ReminderId, reminder.SendTime.Seconds(), number};
}

FileResult LoadShownPopups(const std::filesystem::path& path, ShownPopups& shown) {
    shown.clear();
    const Loaded<std::vector<ShownRecord>> loaded = LoadRecordFile<ShownRecord>(
        path, [](RecordReader& stream, ShownRecord& record) { VisitShownFields(record, FieldReader{stream}); },
        [](const ShownRecord& record) { return record.SendTime.IsValid(); });
    for (const ShownRecord& record : loaded.value)
        shown.emplace(NextKey(shown, {record.ReminderId, record.SendTime.Seconds()}),
                      record.Again.IsValid() ? record.Again : DateTime());
    return loaded.file;
}

FileResult SaveShownPopups(const std::filesystem::path& path, const ShownPopups& shown) {
    std::vector<ShownRecord> records;
    records.reserve(shown.size());
    for (const auto& [key, again] : shown)
        records.push_back({key.reminderId, DateTime::FromSeconds(key.sendTime), again});
    RecordWriter stream;
    WriteRecordList(stream, records, [&](const ShownRecord& record) { VisitShownFields(record, FieldWriter{stream}); });
    return SaveRecordFile(path, stream);
}

}  // namespace lore
