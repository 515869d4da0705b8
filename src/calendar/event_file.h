#pragma once

#include <filesystem>
#include <functional>

#include "base/loaded.h"
#include "base/record_file.h"
#include "calendar/event_list.h"
#include "ports/progress.h"

namespace lore {

// Events.dat: FixedDouble version, FixedInt count, then the records without a mark between them:
//
//   FixedInt BarColor, AllDay, Recurring, RecurrenceType
//   DateField Start, End, RecurrenceStart, RecurrenceEnd
//   LongList DailyPattern, WeeklyPattern, MonthlyPattern, YearlyPattern
//   CountedString EventId, SeriesId, Label, Description
//
// The version is written and never looked at. A date that doesn't parse is the moment of reading, an empty id is made.

/// Appends every record of a stream and returns its version.
double ReadEvents(RecordReader& stream, EventList& list, const ReadContext& context);
void WriteEvents(RecordWriter& stream, const EventList& list);

/// Every record of the file. One that doesn't open has none.
Loaded<EventList> LoadAllEvents(const std::filesystem::path& path, const ReadContext& context);
/// Those that start at or after `first` or end at or before `last`: all but those that cover the whole range.
Loaded<EventList> LoadEventsInRange(const std::filesystem::path& path, const ReadContext& context,
                                    const DateTime& first, const DateTime& last);
/// Rewrites the file. With a failure the old file stands.
FileResult WriteEvents(const std::filesystem::path& path, const EventList& list);
/// Puts each event over the file's record of the same id, or behind the records, and rewrites the file. A file that is
/// there and can't be read isn't written, for its other events would be lost; the result is then that of reading. A
/// damaged file is handed to `keep`, and isn't written where that fails.
FileResult MergeSaveEvents(const std::filesystem::path& path, const ReadContext& context, const EventList& list,
                           Progress& progress, const std::function<FileResult()>& keep);

}  // namespace lore
