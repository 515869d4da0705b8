#pragma once

#include <QDate>
#include <QLocale>
#include <QStringList>
#include <optional>

namespace lore {

/// The parts of a day, in the order in which fields show them.
enum DayPart { kMonthPart, kDayPart, kYearPart };

/// What is typed for a day, part by part: "12/1/2026", "Dec 01,  2026", "Tuesday, 1 december 2026", "2026-12-01",
/// "3051848". Blanks, commas, slashes, dashes and dots stand between parts. What is no part stays as it is.
QStringList SplitTypedDay(const QString& typed, const QLocale& names);

/// The number of a month from its number or the start of its name; 0 if there is none, or none yet.
int MonthOf(const QString& part, const QLocale& names);

/// Whether these are parts from `first` on, or may become them.
bool AreDayParts(const QStringList& parts, int first, const QLocale& names);

/// The day of a month, a day and a year of three or four digits, or of a year alone, which `shown` completes.
std::optional<QDate> DayOf(const QStringList& parts, const QDate& shown, const QLocale& names);

/// The same day of another month, or its last one.
QDate WithMonth(const QDate& day, int year, int month);

}  // namespace lore
