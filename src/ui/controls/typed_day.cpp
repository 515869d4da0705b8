#include "ui/controls/typed_day.h"

#include <QRegularExpression>
#include <algorithm>

namespace lore {

namespace {

constexpr int kMonths = 12, kWeekdays = 7, kLongestDay = 31;
constexpr qsizetype kYearDigits = 4;

bool IsNumber(const QString& part) {
    return !part.isEmpty() && part[0].isDigit();
}

/// How many of the names begin with a text, and the number of the last one of them.
template <typename Name>
std::pair<int, int> Find(const QString& start, int names, Name name) {
    int found = 0, last = 0;
    for (int i = 1; i <= names; ++i) {
        if (name(i, QLocale::LongFormat).startsWith(start, Qt::CaseInsensitive) ||
            name(i, QLocale::ShortFormat).compare(start, Qt::CaseInsensitive) == 0) {
            ++found;
            last = i;
        }
    }
    return {found, last};
}

std::pair<int, int> FindMonth(const QString& start, const QLocale& names) {
    return Find(start, kMonths, [&](int month, auto form) { return names.monthName(month, form); });
}

bool IsWeekday(const QString& part, const QLocale& names) {
    return !IsNumber(part) && FindMonth(part, names).first == 0 &&
           Find(part, kWeekdays, [&](int day, auto form) { return names.dayName(day, form); }).first == 1;
}

/// Digits without anything between them have a year of four at their end, and a day of two before it.
void SplitDigits(QStringList& parts) {
    if (parts.isEmpty() || !IsNumber(parts.last()) || parts.last().size() <= kYearDigits)
        return;
    const QString digits = parts.takeLast(), rest = digits.chopped(kYearDigits);
    if (rest.size() > 2)
        parts.append(rest.chopped(2));
    parts += {rest.last(std::min<qsizetype>(rest.size(), 2)), digits.last(kYearDigits)};
}

}  // namespace

QStringList SplitTypedDay(const QString& typed, const QLocale& names) {
    static const QRegularExpression kPart("[0-9]+|[^0-9 ,/.-]+");
    QString text = typed;
    for (QChar& c : text)
        if (c.isDigit())
            c = QChar('0' + c.digitValue());
    QStringList parts;
    for (const QRegularExpressionMatch& part : kPart.globalMatch(text))
        parts.append(part.captured());
    if (parts.size() > 1 && IsWeekday(parts[0], names))
        parts.removeFirst();
    SplitDigits(parts);
    if (parts.size() > 1 && IsNumber(parts[0]) && !IsNumber(parts[1]))
        parts.swapItemsAt(0, 1);  // "1 Dec"
    if (parts.size() == 3 && IsNumber(parts[0]) && parts[0].size() == kYearDigits)
        parts.move(0, 2);  // "2026-12-01"
    return parts;
}

int MonthOf(const QString& part, const QLocale& names) {
    if (IsNumber(part))
        return part.size() <= 2 && part.toInt() <= kMonths ? part.toInt() : 0;
    const auto [found, month] = FindMonth(part, names);
    return found == 1 ? month : 0;
}

bool AreDayParts(const QStringList& parts, int first, const QLocale& names) {
    for (const QString& part : parts) {
        const int at = first++;
        if (!IsNumber(part)) {
            if (at != kMonthPart || FindMonth(part, names).first == 0)
                return false;
        } else if (at > kYearPart || part.size() > (at == kYearPart ? kYearDigits : 2) ||
                   (at != kYearPart && part.toInt() > (at == kMonthPart ? kMonths : kLongestDay))) {
            return false;
        }
    }
    return true;
}

std::optional<QDate> DayOf(const QStringList& parts, const QDate& shown, const QLocale& names) {
    const int first = parts.size() == 1 ? kYearPart : kMonthPart;
    if (first + parts.size() != kYearPart + 1 || !AreDayParts(parts, first, names) ||
        parts.last().size() < kYearDigits - 1)
        return std::nullopt;
    const int year = parts.last().toInt();
    const QDate day = first == kYearPart ? WithMonth(shown, year, shown.month())
                                         : QDate(year, MonthOf(parts[0], names), parts[1].toInt());
    return day.isValid() ? std::optional(day) : std::nullopt;
}

QDate WithMonth(const QDate& day, int year, int month) {
    return QDate(year, month, std::min(day.day(), QDate(year, month, 1).daysInMonth()));
}

}  // namespace lore
