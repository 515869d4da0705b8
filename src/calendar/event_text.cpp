#include "calendar/event_text.h"

#include "base/text.h"
#include "base/utf8.h"
#include "calendar/date_arithmetic.h"

namespace lore {

namespace {

constexpr char kShortDate[] = "%m/%d/%y";
constexpr int kWrapColumn = 50;
constexpr int kMostBreaks = 10;

/// Turns the first blank after column 50 of each line into a line feed and returns the position of the last line
/// break, looking no further than the tenth. Columns are characters.
size_t WrapLines(std::string& text) {
    const bool utf8 = IsValidUtf8(text);
    size_t lastBreak = 0;
    int breaks = 0, column = 0;
    for (size_t i = 0; i < text.size() && breaks < kMostBreaks; ++i) {
        char& c = text[i];
        if (!utf8 || !IsContinuation(c))
            ++column;
        if (column > kWrapColumn && (c == ' ' || c == '\t'))
            c = '\n';
        if (c == '\n' || c == '\r') {
            ++breaks;
            column = 0;
            lastBreak = i;
        }
    }
    return lastBreak;
}

}  // namespace

std::string BarText(const CTmEvent& event) {
    return event.AllDay == 1 ? event.Label : ClockTime(event.Start) + " - " + event.Label;
}

std::string ClockTime(const DateTime& time) {
    std::string text = time.Format("%I:%M%p");
    if (text.size() > 1 && text.front() == '0')
        text.erase(0, 1);
    return text;
}

std::string ShortTime(const DateTime& time) {
    return ToLower(ClockTime(time));
}

std::string ShortLine(const CTmEvent& event) {
    const std::string startDate = event.Start.Format(kShortDate), endDate = event.End.Format(kShortDate);
    const std::string startTime = ShortTime(event.Start), endTime = ShortTime(event.End);
    const bool allDay = event.AllDay == 1;
    std::string when;
    if (IsSameDay(event.Start, event.End))
        when = allDay ? startDate : startDate + " (" + startTime + " - " + endTime + ")";
    else if (allDay)
        when = "(" + startDate + " - " + endDate + ")";
    else
        when = "(" + startDate + " " + startTime + " - " + endDate + " " + endTime + ")";
    return when + " - " + event.Label;
}

std::string HoverText(const CTmEvent& event) {
    if (event.Description.empty())
        return ShortLine(event);
    std::string text = event.Description;
    if (const size_t lastBreak = WrapLines(text); lastBreak > 0)
        text.replace(lastBreak, std::string::npos, "...");
    return ReplaceAll(text, "\t", "   ");
}

}  // namespace lore
