#include "calendar/event_file.h"

#include "calendar/record_list.h"

namespace lore {

namespace {

void ReadEvent(RecordReader& stream, CTmEvent& event, const ReadContext& context) {
    ResetEvent(event, context.now);
    VisitEventFields(event, FieldReader{stream});
    if (event.EventId.empty())
        NewEventId(event, *context.guids);
}

template <typename Keep>
FileResult LoadEvents(const std::filesystem::path& path, const ReadContext& context, EventList& list, Keep keep,
                      bool* isWhole = nullptr) {
    const auto read = [&](RecordReader& stream) {
        ReadRecordList(
            stream, list, [&](CTmEvent& event) { ReadEvent(stream, event, context); }, keep);
    };
    return ReadRecordFile(path, read, isWhole);
}

bool KeepAll(const CTmEvent&) {
    return true;
}

void BeginPass(Progress& progress, size_t count, const char* message) {
    progress.SetRange(0, static_cast<int>(count));
    progress.SetPosition(0);
    progress.SetMessage(message);
}

FileResult SaveWithProgress(const std::filesystem::path& path, const EventList& list, Progress& progress) {
    BeginPass(progress, list.size(), "Saving Events...");
    RecordWriter stream;
    WriteRecordList(stream, list, [&](const CTmEvent& event) {
        VisitEventFields(event, FieldWriter{stream});
        progress.StepIt();
    });
    return SaveRecordFile(path, stream);
}

}  // namespace

double ReadEvents(RecordReader& stream, EventList& list, const ReadContext& context) {
    return ReadRecordList(
        stream, list, [&](CTmEvent& event) { ReadEvent(stream, event, context); }, KeepAll);
}

void WriteEvents(RecordWriter& stream, const EventList& list) {
    WriteRecordList(stream, list, [&](const CTmEvent& event) { VisitEventFields(event, FieldWriter{stream}); });
}

FileResult LoadAllEvents(const std::filesystem::path& path, const ReadContext& context, EventList& list,
                         bool* isWhole) {
    return LoadEvents(path, context, list, KeepAll, isWhole);
}

FileResult LoadEventsInRange(const std::filesystem::path& path, const ReadContext& context, const DateTime& first,
                             const DateTime& last, EventList& list) {
    return LoadEvents(path, context, list, [&](const CTmEvent& event) {
        return first.IsEarlierOrEqual(event.Start) || event.End.IsEarlierOrEqual(last);
    });
}

FileResult WriteEvents(const std::filesystem::path& path, const EventList& list) {
    RecordWriter stream;
    WriteEvents(stream, list);
    return SaveRecordFile(path, stream);
}

FileResult MergeSaveEvents(const std::filesystem::path& path, const ReadContext& context, const EventList& list,
                           Progress& progress, const std::function<FileResult()>& keep) {
    BeginPass(progress, list.size(), "Updating Events...");
    progress.Show();
    EventList merged;
    bool isWhole = true;
    FileResult result = LoadAllEvents(path, context, merged, &isWhole);
    if (!isWhole)
        result = keep();
    if (result.Ok() || result.Missing()) {
        MergeEvents(merged, list, [&] { progress.StepIt(); });
        result = SaveWithProgress(path, merged, progress);
    }
    progress.Hide();
    return result;
}

}  // namespace lore
