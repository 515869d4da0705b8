#include <chrono>
#include <gtest/gtest.h>
#include <random>
#include <vector>

#include "calendar/event_builder.h"
#include "calendar/series.h"

// Series against a plain model that asks of each day of a year or two whether it belongs to the series.

namespace lore {
namespace {

using std::chrono::day;
using std::chrono::days;
using std::chrono::month;
using std::chrono::sys_days;
using std::chrono::weekday;
using std::chrono::year;
using std::chrono::year_month;
using std::chrono::year_month_day;

struct Model {
    sys_days first, last;
    LongList pattern;
    std::vector<sys_days> dates = {};

    int32_t At(size_t position) const { return pattern[position]; }
    bool Add(sys_days date) {
        if (date >= first && date <= last)
            dates.push_back(date);
        return date <= last;
    }
};

void Daily(Model& model) {
    for (sys_days d = model.first; d <= model.last; d += days(1)) {
        const bool rhythm = (d - model.first).count() % model.At(2) == 0;
        const bool isWeekday = weekday(d).c_encoding() % 6 != 0;
        if (model.At(0) == 1 ? rhythm : isWeekday)
            model.Add(d);
    }
}

void Weekly(Model& model) {
    const sys_days sunday = model.first - days(weekday(model.first).c_encoding());
    for (sys_days d = model.first; d <= model.last; d += days(1)) {
        if ((d - sunday).count() / 7 % model.At(0) == 0 && model.At(1 + weekday(d).c_encoding()) == 1)
            model.Add(d);
    }
}

/// The days of one month that have a weekday, in order.
std::vector<sys_days> WeekdaysOf(year_month ym, int32_t wanted) {
    std::vector<sys_days> found;
    for (sys_days d = ym / day(1); year_month_day(d).month() == ym.month(); d += days(1)) {
        if (weekday(d).c_encoding() == static_cast<unsigned>(wanted))
            found.push_back(d);
    }
    return found;
}

/// The date that a pattern names in a month, if that month has it.
bool DateIn(year_month ym, const Model& model, bool onDay, size_t ordinalSlot, sys_days& date) {
    if (onDay) {
        const year_month_day ymd = ym / day(static_cast<unsigned>(model.At(2)));
        date = ymd;
        return ymd.ok();
    }
    const std::vector<sys_days> all = WeekdaysOf(ym, model.At(ordinalSlot + 1));
    const int32_t ordinal = model.At(ordinalSlot);
    date = ordinal == kLastOrdinal ? all.back() : all[static_cast<size_t>(ordinal)];
    return true;
}

void Monthly(Model& model) {
    const bool onDay = model.At(0) == 1;
    const int32_t step = model.At(onDay ? kMonthlyDayN : kMonthlyWeekdayN);
    const year_month_day from = model.first;
    year_month ym = from.year() / from.month();
    sys_days date;
    while (!DateIn(ym, model, onDay, kMonthlyOrdinal, date) || date < model.first)
        ym += std::chrono::months(1);
    while (DateIn(ym, model, onDay, kMonthlyOrdinal, date) && model.Add(date))
        ym += std::chrono::months(step);
}

void Yearly(Model& model) {
    const bool onDate = model.At(0) == 1;
    const month wanted(static_cast<unsigned>(model.At(onDate ? kYearlyMonth : kYearlyWeekdayMonth) + 1));
    const year_month_day from = model.first;
    const day firstDay = from.month() == wanted ? from.day() : day(1);
    for (year y = from.year(); y < year(2100); ++y) {
        sys_days date;
        if (onDate) {
            const year_month_day ymd = y / wanted / firstDay;
            if (y > from.year() && !ymd.ok())
                return;
            date = ymd;
            // After its month, the series begins on the first of the month of the next year.
            if (date < model.first) {
                model.first = (y + std::chrono::years(1)) / wanted / day(1);
                return Yearly(model);
            }
        } else {
            DateIn(y / wanted, model, false, kYearlyOrdinal, date);
        }
        if (!model.Add(date))
            return;
    }
}

class RandomSeries {
public:
    explicit RandomSeries(unsigned seed) : random_(seed) {}

    CTmEvent Next() {
        const auto type = static_cast<int32_t>(Upto(3));
        const DateTime first = Day(2010 + Upto(2), 1, 1, Upto(23), Upto(59)).PlusDays(Upto(364));
        const DateTime last = first.PlusDays(Upto(type == kYearly ? 2000 : 400)).PlusSeconds(Upto(7200) - 3600);
        return Series(type, PatternOf(type), first, last);
    }

private:
    int Upto(int most) { return std::uniform_int_distribution<int>(0, most)(random_); }
    LongList PatternOf(int32_t type) {
        const int form = Upto(1);
        switch (type) {
            case kDaily:
                return {form, 1 - form, 1 + Upto(40)};
            case kWeekly:
                return {1 + Upto(4), Upto(1), Upto(1), Upto(1), Upto(1), Upto(1), Upto(1), Upto(1)};
            case kMonthly:
                return {form, 1 - form, 1 + Upto(30), 1 + Upto(6), Upto(4), Upto(6), 1 + Upto(6)};
            default:
                return {form, 1 - form, Upto(11), 1 + Upto(27), Upto(4), Upto(6), Upto(11)};
        }
    }

    std::mt19937 random_;
};

sys_days ToDays(const DateTime& date) {
    return sys_days(days(date.Midnight().Seconds() / 86400));
}

std::vector<sys_days> ModelDates(const CTmEvent& event) {
    // A last date whose time of day comes before that of the series isn't reached.
    const bool fits = event.RecurrenceStart.Seconds() % 86400 <= event.RecurrenceEnd.Seconds() % 86400;
    Model model{ToDays(event.RecurrenceStart), ToDays(event.RecurrenceEnd) - days(fits ? 0 : 1),
                event.*kPatternLists[static_cast<size_t>(event.RecurrenceType)].list};
    constexpr void (*kModels[])(Model&) = {Daily, Weekly, Monthly, Yearly};
    kModels[event.RecurrenceType](model);
    return model.dates;
}

TEST(SeriesModel, AgreesOnFourThousandRandomSeries) {
    RandomSeries random(20110103);
    size_t total = 0;
    for (int i = 0; i < 4000; ++i) {
        const CTmEvent event = random.Next();
        std::vector<sys_days> dates;
        for (const Occurrence& date : SeriesDates(event).dates) {
            dates.push_back(ToDays(date.start));
            EXPECT_EQ(date.end.Seconds() - date.start.Seconds(), 55 * 60 + 59);
        }
        total += dates.size();
        ASSERT_EQ(dates, ModelDates(event))
            << "series " << i << ", type " << event.RecurrenceType << " from " << DateFieldText(event.RecurrenceStart)
            << " to " << DateFieldText(event.RecurrenceEnd);
    }
    EXPECT_GT(total, 100000u);
}

}  // namespace
}  // namespace lore
