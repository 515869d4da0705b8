#include "calendar/event_file.h"

#include "calendar/record_list.h"

namespace lore {

namespace {

struct EventReader {
    const ReadContext& context;
    void operator()(RecordReader& stream, CTmEvent& event) const {
        ResetEvent(event, context.now);
        VisitEventFields(event, FieldReader{stream});
        if (event.EventId.empty())
            NewEventId(event, *context.guids);
    }
};

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
    return ReadRecordList(stream, list, EventReader{context});
}

void WriteEvents(RecordWriter& stream, const EventList& list) {
    WriteRecordList(stream, list, [&](const CTmEvent& event) { VisitEventFields(event, FieldWriter{stream}); });
}

Loaded<EventList> LoadAllEvents(const std::filesystem::path& path, const ReadContext& context) {
    return LoadRecordFile<CTmEvent>(path, EventReader{context});
}

Loaded<EventList> LoadEventsInRange(const std::filesystem::path& path, const ReadContext& context,
                                    const DateTime& first, const DateTime& last) {
    const auto isInRange = [&](const CTmEvent& event) {
        return first.IsEarlierOrEqual(event.Start) || event.End.IsEarlierOrEqual(last);
    };
    return LoadRecordFile<CTmEvent>(path, EventReader{context}, isInRange);
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
    Loaded<EventList> stored = LoadAllEvents(path, context);
    FileResult result = stored.isWhole ? stored.file : keep();
    if (result.Ok() || result.Missing()) {
        MergeEvents(stored.value, list, [&] { progress.StepIt(); });
        result = SaveWithProgress(path, stored.value, progress);
    }
    progress.Hide();
    return result;
}

}  // namespace lore
