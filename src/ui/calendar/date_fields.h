#pragma once

#include <QDateEdit>
#include <QTimeEdit>

#include "base/date_time.h"

namespace lore {

inline QDate ToQDate(const DateTime& date) {
    return QDate(date.Year(), date.Month(), date.Day());
}

inline QTime ToQTime(const DateTime& date) {
    return QTime(date.Hour(), date.Minute(), date.Second());
}

/// The date of one field at the time of another.
inline DateTime FromFields(const QDateEdit& date, const QTimeEdit& time) {
    const QDate d = date.date();
    const QTime t = time.time();
    return DateTime(d.year(), d.month(), d.day(), t.hour(), t.minute(), t.second());
}

inline DateTime FromQDate(const QDate& date) {
    return DateTime(date.year(), date.month(), date.day());
}

/// A field with a calendar that drops down. It tells of a typed date once it is complete.
QDateEdit* MakeDateField(const QString& name, QWidget* parent);
/// Takes 2:30p, 14:30 and 1430 as well as the form that it shows.
QTimeEdit* MakeTimeField(const QString& name, QWidget* parent);

}  // namespace lore
