#include "ui/typed_date_edit.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QRegularExpression>
#include <utility>

namespace lore {

bool ChangesText(const QKeyEvent& key) {
    if (key.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier))
        return false;
    return key.key() == Qt::Key_Backspace || key.key() == Qt::Key_Delete ||
           (!key.text().isEmpty() && key.text()[0].isPrint());
}

void TypedDateEdit::keyPressEvent(QKeyEvent* event) {
    const QString text = event->text();
    const bool hadMovedOn = std::exchange(hasMovedOn_, false);
    if (hadMovedOn && text.size() == 1 && text[0].isPrint() && !text[0].isLetterOrNumber())
        return event->accept();
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        CompleteYear();
    const Section before = currentSection();
    QDateEdit::keyPressEvent(event);
    hasMovedOn_ = !text.isEmpty() && text[0].isDigit() && currentSection() != before;
}

void TypedDateEdit::focusOutEvent(QFocusEvent* event) {
    CompleteYear();
    QDateEdit::focusOutEvent(event);
}

void TypedDateEdit::CompleteYear() {
    static const QRegularExpression kThreeDigits("(?<![0-9])[0-9]{3}$");
    const QRegularExpressionMatch year = kThreeDigits.match(lineEdit()->text());
    if (displayFormat().endsWith("yyyy") && year.hasMatch())
        lineEdit()->setText(lineEdit()->text().insert(year.capturedStart(), '0'));
}

}  // namespace lore
