#include "calendar/event.h"

#include <algorithm>
#include <tuple>

#include "calendar/date_arithmetic.h"
#include "calendar/reminder_list.h"

namespace lore {

LongList UnsetPattern(size_t slots) {
    return LongList(std::vector<int32_t>(slots, -1));
}

int32_t PatternAt(const LongList& pattern, size_t position) {
    return position < pattern.Count() ? pattern[position] : -1;
}

void ResetEvent(CTmEvent& event, const DateTime& now) {
    event = CTmEvent();
    event.Start = event.End = event.RecurrenceStart = event.RecurrenceEnd = now;
}

void ResetRecurrence(CTmEvent& event, int32_t keep) {
    if (keep < 0) {
        event.RecurrenceStart = event.RecurrenceEnd = event.Start;
        event.Recurring = 0;
        event.RecurrenceType = kNoSeries;
        event.SeriesId.clear();
    }
    for (int32_t type = 0; type < kSeriesTypes; ++type) {
        if (type != keep)
            event.*kPatternLists[type].list = UnsetPattern(kPatternLists[type].slotCount);
    }
}

void NewEventId(CTmEvent& event, GuidSource& guids) {
    event.EventId = guids.NewGuid();
}

CTmEvent NewEvent(const ReadContext& context) {
    CTmEvent event;
    ResetEvent(event, context.now);
    NewEventId(event, *context.guids);
    return event;
}

bool EventsDiffer(const CTmEvent& a, const CTmEvent& b) {
    const auto compared = [](const CTmEvent& e) {
        return std::tie(e.Recurring, e.SeriesId, e.RecurrenceType, e.RecurrenceStart, e.RecurrenceEnd);
    };
    if (!(compared(a) == compared(b)) || !(SpanBetween(a.Start, a.End) == SpanBetween(b.Start, b.End)))
        return true;
    return std::any_of(kPatternLists.begin(), kPatternLists.end(), [&](const PatternList& pattern) {
        for (size_t i = 0; i < pattern.slotCount; ++i) {
            if (PatternAt(a.*pattern.list, i) != PatternAt(b.*pattern.list, i))
                return true;
        }
        return false;
    });
}

bool EventInfoDiffers(const CTmEvent& a, const CTmEvent& b) {
    return a.Label != b.Label || a.Description != b.Description || a.BarColor != b.BarColor ||
           RemindersDiffer(a.Reminders, b.Reminders);
}

bool IsSeriesMember(const CTmEvent& event) {
    return event.Recurring == 1 && event.RecurrenceType >= 0 && event.RecurrenceType < kSeriesTypes &&
           !event.SeriesId.empty();
}

}  // namespace lore
