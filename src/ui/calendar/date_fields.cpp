#include "ui/calendar/date_fields.h"

#include <QLocale>

namespace lore {

namespace {

/// The widest text that a field shows, so that none is cut.
void MakeRoom(QDateTimeEdit* field, const QString& widest) {
    field->setMinimumWidth(field->fontMetrics().horizontalAdvance(widest) + field->fontMetrics().height() * 3);
}

}  // namespace

QDateEdit* MakeDateField(const QString& name, QWidget* parent) {
    auto* const field = new QDateEdit(parent);
    field->setLocale(QLocale::c());
    field->setDisplayFormat("dddd,  MMM dd,  yyyy");
    field->setDateRange(QDate(1753, 1, 1), QDate(9999, 12, 31));
    field->setCalendarPopup(true);
    field->setKeyboardTracking(false);
    field->setAccessibleName(name);
    MakeRoom(field, "Wednesday,  Mar 00,  0000");
    return field;
}

QTimeEdit* MakeTimeField(const QString& name, QWidget* parent) {
    auto* const field = new QTimeEdit(parent);
    field->setLocale(QLocale::c());
    field->setDisplayFormat("h:mm AP");
    field->setKeyboardTracking(false);
    field->setWrapping(true);
    field->setAccessibleName(name);
    MakeRoom(field, "12:00 AM");
    return field;
}

}  // namespace lore
