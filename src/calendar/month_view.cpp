#include "calendar/month_view.h"

#include <algorithm>

#include "calendar/date_arithmetic.h"
#include "calendar/event_text.h"

namespace lore {

namespace {

std::string Counted(int count, const char* what) {
    return ", " + std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

}  // namespace

MonthView::MonthView(const CalendarWorld& world) : world_(world), today_(world.clock.Now().Midnight()), grid_(today_) {
    SelectToday();
}

void MonthView::Reload() {
    today_ = world_.clock.Now().Midnight();
    const DateTime first = grid_.FirstMoment(), last = grid_.LastMoment();
    LoadEventsInRange(world_, first, last, events_);
    ReminderList list;
    LoadRemindersInRange(world_, first, last, list);
    reminders_.assign(static_cast<size_t>(grid_.Cells()), 0);
    for (const CTmReminder& reminder : list)
        ++reminders_[static_cast<size_t>(grid_.CellOf(reminder.SendTime))];
    bars_ = LayOutBars(grid_, events_);
}

void MonthView::ShowMonth(const DateTime& month) {
    if (month.Year() < kFirstYear || month.Year() > kLastYear)
        return;
    grid_ = MonthGrid(month);
    Reload();
    Select(grid_.CellOf(grid_.Month()));
}

void MonthView::TurnMonths(int months) {
    ShowMonth(PlusMonths(grid_.Month(), months, 1));
}

void MonthView::Select(int cell) {
    if (cell >= 0 && cell < grid_.Cells())
        anchor_ = end_ = cell;
}

void MonthView::ExtendTo(int cell) {
    if (cell >= 0 && cell < grid_.Cells())
        end_ = cell;
}

void MonthView::MoveBy(int days, bool extend) {
    const int cell = end_ + days;
    if (extend)
        ExtendTo(cell);
    else if (cell >= 0 && cell < grid_.Cells())
        Select(cell);
    else
        SelectDay(grid_.DayOf(cell));
}

void MonthView::SelectDay(const DateTime& day) {
    if (!day.IsValid())
        return;
    if (day.Year() != grid_.Month().Year() || day.Month() != grid_.Month().Month())
        ShowMonth(day);
    Select(grid_.CellOf(day));
}

void MonthView::SelectToday() {
    Reload();
    SelectDay(today_);
}

bool MonthView::IsSelected(int cell) const {
    return cell >= std::min(anchor_, end_) && cell <= std::max(anchor_, end_);
}

std::pair<DateTime, DateTime> MonthView::SelectedDays() const {
    return {grid_.DayOf(std::min(anchor_, end_)), grid_.DayOf(std::max(anchor_, end_))};
}

std::vector<size_t> MonthView::EventsOn(int cell) const {
    const int row = cell / MonthGrid::kColumns, column = cell % MonthGrid::kColumns;
    std::vector<const BarPiece*> pieces;
    for (const BarPiece& piece : bars_) {
        if (piece.row == row && piece.firstColumn <= column && column <= piece.lastColumn)
            pieces.push_back(&piece);
    }
    std::sort(pieces.begin(), pieces.end(), [](const BarPiece* a, const BarPiece* b) { return a->lane < b->lane; });
    std::vector<size_t> events;
    events.reserve(pieces.size());
    for (const BarPiece* const piece : pieces)
        events.push_back(piece->event);
    return events;
}

int MonthView::RemindersOn(int cell) const {
    return reminders_[static_cast<size_t>(cell)];
}

std::string MonthView::CellText(int cell) const {
    const DateTime day = grid_.DayOf(cell);
    const std::vector<size_t> events = EventsOn(cell);
    std::string text = day.Format("%A, %B %d %Y");
    if (day == today_)
        text += ", today";
    if (!grid_.IsInMonth(cell))
        text += ", other month";
    text += events.empty() ? ", no events" : Counted(static_cast<int>(events.size()), "event");
    if (RemindersOn(cell) > 0)
        text += Counted(RemindersOn(cell), "reminder");
    const char* separator = ": ";
    for (const size_t event : events)
        text += std::exchange(separator, "; ") + BarText(events_[event]);
    return text;
}

}  // namespace lore
