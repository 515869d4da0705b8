#include "ui/controls/typed_date_edit.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QRegularExpression>
#include <QSignalBlocker>
#include <algorithm>
#include <utility>
#include <vector>

#include "ui/controls/typed_day.h"

namespace lore {

namespace {

/// Where the parts of a date stand in its text.
struct Place {
    qsizetype from, to;
};

/// The places of the last parts.
std::vector<Place> PlacesOf(const QString& text, size_t count) {
    static const QRegularExpression kPart("[^ ,/.-]+");
    std::vector<Place> places;
    for (const QRegularExpressionMatch& part : kPart.globalMatch(text))
        places.push_back({part.capturedStart(), part.capturedEnd()});
    places.erase(places.begin(), places.end() - static_cast<std::ptrdiff_t>(std::min(count, places.size())));
    return places;
}

bool IsEnter(const QKeyEvent& key) {
    return key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
}

}  // namespace

bool ChangesText(const QKeyEvent& key) {
    if (key.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier))
        return false;
    return key.key() == Qt::Key_Backspace || key.key() == Qt::Key_Delete ||
           (!key.text().isEmpty() && key.text()[0].isPrint());
}

bool IsModifier(const QKeyEvent& key) {
    return (key.key() >= Qt::Key_Shift && key.key() <= Qt::Key_ScrollLock) || key.key() == Qt::Key_AltGr ||
           key.key() == Qt::Key_Super_L || key.key() == Qt::Key_Super_R;
}

TypedDateEdit::TypedDateEdit(QWidget* parent) : QDateEdit(parent) {
    setKeyboardTracking(false);
    installEventFilter(this);
    lineEdit()->installEventFilter(this);
}

std::optional<QDate> TypedDateEdit::Read(const QString& text) const {
    const QStringList parts = SplitTypedDay(text, locale());
    const bool isWhole = parts.size() == static_cast<qsizetype>(Parts());
    const std::optional<QDate> day = isWhole ? DayOf(parts, date(), locale()) : std::nullopt;
    return day && *day >= minimumDate() && *day <= maximumDate() ? day : std::nullopt;
}

QValidator::State TypedDateEdit::validate(QString& text, int& /*position*/) const {
    return Read(text) ? QValidator::Acceptable : QValidator::Invalid;
}

QDateTime TypedDateEdit::dateTimeFromText(const QString& text) const {
    return Read(text).value_or(date()).startOfDay(timeSpec());
}

int TypedDateEdit::FirstPart() const {
    return displayFormat().contains('M') ? kMonthPart : kYearPart;
}

/// Where the parts go that are typed; -1 for parts that make no date.
int TypedDateEdit::FirstOf(const QStringList& parts) const {
    const bool isAlone = parts.isEmpty() || (parts.size() == 1 && parts[0][0].isDigit());
    for (const int first : {isAlone ? start_ : FirstPart(), start_})
        if (AreDayParts(parts, first, locale()))
            return first;
    return -1;
}

void TypedDateEdit::keyPressEvent(QKeyEvent* event) {
    if (!ChangesText(*event))
        return QDateEdit::keyPressEvent(event);
    const bool takesAway = event->key() == Qt::Key_Backspace || event->key() == Qt::Key_Delete;
    const bool isFresh = !typed_ || lineEdit()->text() != shown_ || typed_->isEmpty();
    if (isFresh && !takesAway && SplitTypedDay(event->text(), locale()).isEmpty())
        return;  // nothing to stand between
    if (!typed_ || lineEdit()->text() != shown_)
        BeginTyping(takesAway);
    if (event->key() == Qt::Key_Backspace)
        typed_->chop(1);
    else if (!takesAway)
        *typed_ += event->text();
    ShowTyped();
}

/// Replaces the part that is selected or has the caret; or goes on with what stands before the caret in it.
void TypedDateEdit::BeginTyping(bool goesOn) {
    const QLineEdit& edit = *lineEdit();
    const bool isSelected = edit.hasSelectedText();
    const qsizetype from = isSelected ? edit.selectionStart() : edit.cursorPosition();
    const qsizetype to = isSelected ? edit.selectionEnd() : from;
    typed_ = QString();
    start_ = displayFormat().contains("MMM") ? kDayPart : FirstPart();
    int part = FirstPart();
    for (const Place& place : PlacesOf(edit.text(), Parts())) {
        if (place.from <= from && to <= place.to) {
            start_ = part;
            if (goesOn && !isSelected)
                typed_ = edit.text().mid(place.from, from - place.from);
        }
        ++part;
    }
}

/// Puts what is typed in the place of its parts.
void TypedDateEdit::ShowTyped() {
    const QStringList parts = SplitTypedDay(*typed_, locale());
    const QString was = textFromDateTime(Under(parts).startOfDay(timeSpec()));
    const std::vector<Place> places = PlacesOf(was, Parts());
    const auto margin = std::find_if(was.begin(), was.end(), [](QChar c) { return c != ' '; }) - was.begin();
    QString before = was.left(margin), behind;
    qsizetype next = 0;  // the length of the part that comes next
    if (const int first = FirstOf(parts); first >= 0) {
        const size_t at = static_cast<size_t>(first - FirstPart());
        const size_t end = at + std::max<size_t>(1, static_cast<size_t>(parts.size()));
        before += was.mid(places[0].from, places[at].from - places[0].from);
        const bool isOver = !typed_->isEmpty() && SplitTypedDay(typed_->last(1), locale()).isEmpty();
        if (!isOver)
            behind = was.mid(places[end - 1].to);
        else if (end < places.size()) {
            behind = was.mid(places[end].from);
            next = places[end].to - places[end].from;
        }
        last_ = FirstPart() + static_cast<int>(end) - 1;
    }
    const QSignalBlocker quiet(lineEdit());
    shown_ = before + *typed_ + behind;
    lineEdit()->setText(shown_);
    lineEdit()->setSelection(static_cast<int>(before.size() + typed_->size()), static_cast<int>(next));
}

/// The date that holds what isn't typed: a month or a year that is typed alone may have fewer days.
QDate TypedDateEdit::Under(const QStringList& parts) const {
    const int first = FirstOf(parts);
    if (parts.size() != 1 || first == kDayPart || first < 0)
        return date();
    const int month = first == kMonthPart ? MonthOf(parts[0], locale()) : date().month();
    const QDate moved = WithMonth(date(), first == kYearPart ? parts[0].toInt() : date().year(), month);
    return moved.isValid() ? moved : date();
}

bool TypedDateEdit::IsUnread() const {
    return typed_ && lineEdit()->text() == shown_ && !Read(shown_);
}

void TypedDateEdit::EndTyping() {
    if (!std::exchange(typed_, std::nullopt) || lineEdit()->text() != shown_)
        return;
    interpretText();
    setCurrentSectionIndex(sectionCount() - 1 - kYearPart + last_);
    setSelectedSection(currentSection());
}

/// Each key is seen here before the shortcuts of the window and the order of its fields.
bool TypedDateEdit::event(QEvent* event) {
    const bool isPress = event->type() == QEvent::KeyPress;
    if (isPress || event->type() == QEvent::ShortcutOverride) {
        const auto& key = static_cast<const QKeyEvent&>(*event);
        if (IsEnter(key) && IsUnread()) {
            event->accept();
            if (isPress)
                QApplication::beep();
            return true;
        }
        if (!ChangesText(key) && !IsModifier(key))
            EndTyping();
    }
    return QDateEdit::event(event);
}

bool TypedDateEdit::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::Wheel ||
        event->type() == QEvent::FocusOut)
        EndTyping();
    return QDateEdit::eventFilter(watched, event);
}

}  // namespace lore
