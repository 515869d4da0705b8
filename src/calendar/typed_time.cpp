#include "calendar/typed_time.h"

#include <algorithm>
#include <string>

#include "base/ascii.h"
#include "base/text.h"

namespace lore {

namespace {

constexpr int kHours = 24, kNoon = 12, kMinutes = 60;

/// The two numbers as typed; minutes may be missing.
struct Numbers {
    std::string hour, minute;
};

bool IsDigits(std::string_view text) {
    return std::all_of(text.begin(), text.end(), IsDigit);
}

bool AreATime(const Numbers& numbers) {
    return !numbers.hour.empty() && numbers.hour.size() <= 2 && numbers.minute.size() <= 2 && IsDigits(numbers.hour) &&
           IsDigits(numbers.minute) && ParseInt(numbers.hour) < kHours &&
           (numbers.minute.empty() || ParseInt(numbers.minute) < kMinutes);
}

/// "1430", "930" and "14:30" in two. An hour takes two digits where one leaves too many, or no time.
std::optional<Numbers> Split(const std::string& typed) {
    const size_t colon = typed.find_first_of(":.");
    if (colon != std::string::npos) {
        const Numbers numbers{typed.substr(0, colon), typed.substr(colon + 1)};
        return AreATime(numbers) ? std::optional(numbers) : std::nullopt;
    }
    const size_t first = typed.size() == 3 ? 1 : 2;
    for (const size_t length : {first, 3 - first}) {
        const Numbers numbers{typed.substr(0, length), typed.substr(std::min(length, typed.size()))};
        if (AreATime(numbers))
            return numbers;
    }
    return std::nullopt;
}

/// Takes "a", "p", "am" or "pm" off the end; 0 if there is none.
char TakeHalf(std::string& typed) {
    if (typed.size() > 1 && typed.back() == 'm' && (typed[typed.size() - 2] == 'a' || typed[typed.size() - 2] == 'p'))
        typed.pop_back();
    if (typed.empty() || (typed.back() != 'a' && typed.back() != 'p'))
        return 0;
    const char half = typed.back();
    typed.pop_back();
    return half;
}

}  // namespace

std::optional<TimeOfDay> ReadTypedTime(std::string_view typed, const TimeOfDay& shown) {
    std::string text = ToLower(std::string(typed));
    std::erase(text, ' ');
    if (text.empty())
        return shown;
    const char half = TakeHalf(text);
    const std::optional<Numbers> numbers = Split(text);
    if (!numbers)
        return std::nullopt;
    int hour = ParseInt(numbers->hour);
    if (half == 'a' && hour > kNoon)
        return std::nullopt;
    const bool isShort = hour >= 1 && hour < kNoon && numbers->hour[0] != '0';
    if (half != 0 && hour <= kNoon)
        hour = hour % kNoon + (half == 'p' ? kNoon : 0);
    else if (isShort && shown.hour >= kNoon)
        hour += kNoon;
    return TimeOfDay{hour, numbers->minute.empty() ? shown.minute : ParseInt(numbers->minute)};
}

}  // namespace lore
