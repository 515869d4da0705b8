#pragma once

#include <filesystem>

#include "base/loaded.h"
#include "base/record_file.h"
#include "calendar/reminder_list.h"

namespace lore {

// Rem.dat: FixedDouble version, FixedInt count, then the records without a mark between them:
//
//   FixedInt Type, PriorMinutes, ServerId, ProviderIndex
//   FixedInt ServerDone (2112 or 0)
//   DateField ServerSendTime, SendTime, EventStart
//   CountedString ReminderId, SendTo, EmailAddress, PhoneNumber, EventId, Message, EventLabel, EventDescription
//
// The version is written and never looked at. A date that doesn't parse is the moment of reading, an empty id is made.

/// Appends every record of a stream and returns its version.
double ReadReminders(RecordReader& stream, ReminderList& list, const ReadContext& context);
void WriteReminders(RecordWriter& stream, const ReminderList& list);

// A file that doesn't open has no records; if it is there all the same, saving the list would lose what it holds.

Loaded<ReminderList> LoadAllReminders(const std::filesystem::path& path, const ReadContext& context);
/// Those whose SendTime is at or after `first` and at or before `last`, by full date and time.
Loaded<ReminderList> LoadRemindersInRange(const std::filesystem::path& path, const ReadContext& context,
                                          const DateTime& first, const DateTime& last);
/// Rewrites the file. With a failure the old file stands.
FileResult WriteReminders(const std::filesystem::path& path, const ReminderList& list);

}  // namespace lore
