#include "bibliography/old_text_date.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <vector>

#include "base/text.h"
#include "bibliography/citation_field.h"

namespace lore {

namespace {

constexpr std::array<std::string_view, 12> kMonths = {"january",   "february", "march",    "april",
                                                      "may",       "june",     "july",     "august",
                                                      "september", "october",  "november", "december"};
constexpr size_t kShortestMonthName = 3;
constexpr size_t kMostParts = 3;
constexpr int kFirstShortYear = 30;  // of the century before; the ones below are of this one

/// The number of a month by its name or the beginning of its name, 0 for any other word.
int MonthByName(std::string_view word) {
    const std::string lower = ToLower(word);
    for (size_t i = 0; lower.size() >= kShortestMonthName && i < kMonths.size(); ++i) {
        if (kMonths[i].starts_with(lower))
            return static_cast<int>(i) + 1;
    }
    return 0;
}

bool IsNumber(std::string_view word) {
    return std::all_of(word.begin(), word.end(), [](char c) { return c >= '0' && c <= '9'; });
}

/// The words between the given marks, nothing if there are more than a date has.
std::vector<std::string_view> SplitDate(std::string_view text, std::string_view marks) {
    std::vector<std::string_view> parts;
    size_t at = 0;
    while ((at = text.find_first_not_of(marks, at)) != std::string_view::npos) {
        if (parts.size() == kMostParts)
            return {};
        const size_t end = std::min(text.find_first_of(marks, at), text.size());
        parts.push_back(Trim(text.substr(at, end - at)));
        at = end;
    }
    return parts;
}

/// A year of four digits, a day of one or two; 0 for any other word.
int NumberOfDigits(std::string_view word, size_t least, size_t most) {
    return IsNumber(word) && word.size() >= least && word.size() <= most ? ParseInt(word) : 0;
}

/// Day and year from the parts that aren't the month: the year stands last, or alone.
DateTime DateOf(int month, const std::vector<std::string_view>& rest) {
    if (month == 0 || rest.empty())
        return DateTime::Invalid();
    const int year = NumberOfDigits(rest.back(), 4, 4);
    const int day = rest.size() == 1 ? 1 : NumberOfDigits(rest.front(), 1, 2);
    return year == 0 || day == 0 ? DateTime::Invalid() : DateTime(year, month, day);
}

DateTime ParseNamedMonth(std::string_view text) {
    std::vector<std::string_view> parts = SplitDate(text, " ,./-");
    const auto name = std::find_if(parts.begin(), parts.end(), [](std::string_view part) { return !IsNumber(part); });
    if (name == parts.end())
        return DateTime::Invalid();
    const int month = MonthByName(*name);
    parts.erase(name);
    return DateOf(month, parts);
}

DateTime ParseNumbers(std::string_view text) {
    std::vector<std::string_view> parts = SplitDate(text, "/-");
    if (parts.empty())
        return DateTime::Invalid();
    const int month = NumberOfDigits(parts.front(), 1, 2);
    parts.erase(parts.begin());
    std::string year;
    if (parts.size() == 2 && parts.back().size() == 2 && IsNumber(parts.back())) {
        year = (ParseInt(parts.back()) < kFirstShortYear ? "20" : "19") + std::string(parts.back());
        parts.back() = year;
    }
    return DateOf(month, parts);
}

bool IsTime(std::string_view word) {
    const std::vector<std::string_view> parts = SplitDate(word, ":");
    return parts.size() > 1 && std::all_of(parts.begin(), parts.end(), [](std::string_view part) {
               return IsNumber(part) && part.size() <= 2 && ParseInt(part) < 60;
           });
}

std::string_view LastWord(std::string_view text) {
    return text.substr(text.rfind(' ') + 1);
}

/// Takes a time of day off the end, such as "10:11" or "9:05:00 PM".
std::string_view WithoutTime(std::string_view text) {
    std::string_view rest = text;
    if (const std::string half = ToLower(LastWord(rest)); half == "am" || half == "pm")
        rest = Trim(rest.substr(0, rest.size() - half.size()));
    const std::string_view time = LastWord(rest);
    return IsTime(time) ? Trim(rest.substr(0, rest.size() - time.size())) : text;
}

}  // namespace

bool ParseOldTextDate(std::string_view text, DateTime& date) {
    const std::string_view trimmed = WithoutTime(Trim(text));
    DateTime read = ParseNumbers(trimmed);
    if (!read.IsValid())
        read = ParseNamedMonth(trimmed);
    if (read.IsValid())
        date = read;
    return read.IsValid();
}

void TakeOldTextDate(CSource& source) {
    std::string text(FieldText(source, kDateSlot));
    const int number = ParseInt(text);
    if (number > 1000 && number < 3000) {
        text.insert(0, "1/1/");
        source.YearOnly = 1;
    }
    source.HasDate = ParseOldTextDate(text, source.SourceDate);
}

bool HoldsUnreadDate(const CSource& source) {
    return !source.HasDate && !Trim(FieldText(source, kDateSlot)).empty();
}

}  // namespace lore
