#include "calendar/ten_minutes.h"

#include "calendar/date_arithmetic.h"

namespace lore {

namespace {

constexpr int kStep = 10, kHalf = 5;

DateTime WithoutSeconds(const DateTime& time) {
    return time.PlusSeconds(-time.Second());
}

}  // namespace

DateTime RoundedToTenMinutes(const DateTime& time) {
    const int over = time.Minute() % kStep;
    return WithoutSeconds(time).PlusSeconds(kMinute * (over < kHalf ? -over : kStep - over));
}

DateTime NextTenMinutes(const DateTime& time) {
    const int over = time.Minute() % kStep;
    return WithoutSeconds(time).PlusSeconds(over == 0 ? 0 : kMinute * (kStep - over));
}

DateTime SteppedTime(const DateTime& before, const DateTime& after) {
    const bool sameDay = before.Midnight() == after.Midnight(), sameHour = before.Hour() == after.Hour();
    const int change = after.Minute() - before.Minute();
    if (sameHour && change == 0)
        return WithoutSeconds(after);
    if (!sameDay || !sameHour || (change != 1 && change != -1 && change != 59 && change != -59))
        return RoundedToTenMinutes(after);
    const bool up = change == 1 || change == -59;
    return RoundedToTenMinutes(before).PlusSeconds(kMinute * (up ? kStep : -kStep));
}

}  // namespace lore
