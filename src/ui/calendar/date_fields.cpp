#include "ui/calendar/date_fields.h"

#include <QKeyEvent>
#include <QLocale>

#include "ui/typed_date_edit.h"

namespace lore {

namespace {

/// The widest text that a field shows, so that none is cut.
void MakeRoom(QDateTimeEdit* field, const QString& widest) {
    field->setMinimumWidth(field->fontMetrics().horizontalAdvance(widest) + field->fontMetrics().height() * 3);
}

/// Shows the day of the week, but not while a date is typed: no digit would go with the day that stands there.
class DayField : public TypedDateEdit {
public:
    explicit DayField(QWidget* parent) : TypedDateEdit(parent) {
        setLocale(QLocale::c());
        setDisplayFormat(kShown);
        connect(this, &QDateEdit::editingFinished, this, [this] { setDisplayFormat(kShown); });
    }

protected:
    void keyPressEvent(QKeyEvent* event) override {
        if (displayFormat() == kShown && ChangesText(*event)) {
            const bool isName = !event->text().isEmpty() && event->text()[0].isLetter();
            const Section section = isName ? MonthSection : currentSection();
            setDisplayFormat(kTyped);
            setSelectedSection(section);
        }
        TypedDateEdit::keyPressEvent(event);
    }

private:
    static constexpr char kShown[] = "dddd,  MMM dd,  yyyy";
    static constexpr char kTyped[] = "MMM dd,  yyyy";
};

/// Takes an A or a P, wherever the caret stands, for the half of the day.
class ClockField : public QTimeEdit {
public:
    using QTimeEdit::QTimeEdit;

protected:
    void keyPressEvent(QKeyEvent* event) override {
        const int key = event->key();
        if ((key != Qt::Key_A && key != Qt::Key_P) || !ChangesText(*event))
            return QTimeEdit::keyPressEvent(event);
        interpretText();
        setTime(QTime(time().hour() % 12 + (key == Qt::Key_P ? 12 : 0), time().minute(), time().second()));
        setSelectedSection(AmPmSection);
    }
};

}  // namespace

QDateEdit* MakeDateField(const QString& name, QWidget* parent) {
    auto* const field = new DayField(parent);
    field->setDateRange(QDate(1753, 1, 1), QDate(9999, 12, 31));
    field->setCalendarPopup(true);
    field->setKeyboardTracking(false);
    field->setAccessibleName(name);
    MakeRoom(field, "Wednesday,  Mar 00,  0000");
    return field;
}

QTimeEdit* MakeTimeField(const QString& name, QWidget* parent) {
    auto* const field = new ClockField(parent);
    field->setLocale(QLocale::c());
    field->setDisplayFormat("h:mm AP");
    field->setKeyboardTracking(false);
    field->setWrapping(true);
    field->setAccessibleName(name);
    MakeRoom(field, "12:00 AM");
    return field;
}

}  // namespace lore
