#include "ui/calendar/date_fields.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QLocale>
#include <QSignalBlocker>
#include <utility>

#include "calendar/typed_time.h"
#include "ui/controls/typed_date_edit.h"

namespace lore {

namespace {

/// The widest text that a field shows, so that none is cut.
void MakeRoom(QDateTimeEdit* field, const QString& widest) {
    field->setMinimumWidth(field->fontMetrics().horizontalAdvance(widest) + field->fontMetrics().height() * 3);
}

/// Takes a time as it is written by hand, from its hour on; an A or a P, wherever the caret stands, is the half of the
/// day.
class ClockField : public QTimeEdit {
public:
    using QTimeEdit::QTimeEdit;
    void stepBy(int steps) override {
        EndTyping();
        QTimeEdit::stepBy(steps);
    }

protected:
    void keyPressEvent(QKeyEvent* event) override {
        if (IsModifier(*event))
            return QTimeEdit::keyPressEvent(event);
        if (!typed_.isEmpty() && Selected() != left_)
            EndTyping();  // the caret has gone elsewhere
        if (ChangesText(*event) && Type(*event))
            return;
        EndTyping();
        const int key = event->key();
        if ((key != Qt::Key_A && key != Qt::Key_P) || !ChangesText(*event))
            return QTimeEdit::keyPressEvent(event);
        interpretText();
        setTime(QTime(time().hour() % 12 + (key == Qt::Key_P ? 12 : 0), time().minute(), time().second()));
        setSelectedSection(AmPmSection);
    }
    void focusOutEvent(QFocusEvent* event) override {
        EndTyping();
        QTimeEdit::focusOutEvent(event);
    }
    bool focusNextPrevChild(bool next) override {
        EndTyping();
        return QTimeEdit::focusNextPrevChild(next);
    }

private:
    /// True for a key of a time that is being typed, or that begins one. What makes no time does nothing.
    bool Type(const QKeyEvent& key) {
        QString typed = typed_;
        if (key.key() == Qt::Key_Backspace && !typed.isEmpty())
            typed.chop(1);
        else if (!key.text().isEmpty() && key.text()[0].isPrint() && (!typed.isEmpty() || BeginsTime(key.text()[0])))
            typed += key.text();
        else
            return false;
        if (typed_.isEmpty())
            before_ = time();
        const auto read = ReadTypedTime(typed.toStdString(), {before_.hour(), before_.minute()});
        if (read)
            Show(typed, QTime(read->hour, read->minute, before_.second()));
        return true;
    }
    bool BeginsTime(QChar key) const {
        return key.isDigit() && (currentSection() == HourSection || lineEdit()->selectedText() == text());
    }
    /// The text alone: the time is told of once it is complete.
    void Show(const QString& typed, const QTime& time) {
        typed_ = typed;
        const QSignalBlocker quiet(lineEdit());
        lineEdit()->setText(locale().toString(time, displayFormat()));
        setSelectedSection(HasMinutes() ? MinuteSection : HourSection);
        left_ = Selected();
    }
    bool HasMinutes() const { return typed_.size() > 2 || typed_.contains(':'); }
    std::pair<int, int> Selected() const { return {lineEdit()->selectionStart(), lineEdit()->selectionLength()}; }
    void EndTyping() {
        if (typed_.isEmpty())
            return;
        const bool hasMinutes = HasMinutes() && Selected() == left_;
        typed_.clear();
        interpretText();
        if (hasMinutes)
            setSelectedSection(MinuteSection);
    }

    QString typed_;
    QTime before_;                     // when typing began
    std::pair<int, int> left_{-1, 0};  // what was selected after the last key
};

}  // namespace

QDateEdit* MakeDateField(const QString& name, QWidget* parent) {
    auto* const field = new TypedDateEdit(parent);
    field->setLocale(QLocale::c());
    field->setDisplayFormat("dddd,  MMM dd,  yyyy");
    field->setDateRange(QDate(100, 1, 1), QDate(9999, 12, 31));
    field->setCalendarPopup(true);
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
