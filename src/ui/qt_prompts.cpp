#include "ui/qt_prompts.h"

#include <QInputDialog>
#include <QMessageBox>

#include "ui/qt_text.h"

namespace lore {

namespace {

QMessageBox::Icon IconOf(PromptIcon icon) {
    switch (icon) {
        case PromptIcon::Information:
            return QMessageBox::Information;
        case PromptIcon::Warning:
            return QMessageBox::Warning;
        case PromptIcon::Question:
            return QMessageBox::Question;
        case PromptIcon::Error:
            return QMessageBox::Critical;
        case PromptIcon::None:
            break;
    }
    return QMessageBox::NoIcon;
}

}  // namespace

void QtPrompts::Message(const std::string& text, const std::string& title, PromptIcon icon) {
    QMessageBox box(IconOf(icon), ToQString(title), ToQString(text), QMessageBox::Ok, parent_);
    box.setTextFormat(Qt::PlainText);
    box.exec();
}

PromptAnswer QtPrompts::Ask(const std::string& text, const std::string& title, bool withCancel) {
    QMessageBox::StandardButtons buttons = QMessageBox::Yes | QMessageBox::No;
    if (withCancel)
        buttons |= QMessageBox::Cancel;
    QMessageBox box(QMessageBox::Question, ToQString(title), ToQString(text), buttons, parent_);
    box.setTextFormat(Qt::PlainText);
    box.setEscapeButton(withCancel ? QMessageBox::Cancel : QMessageBox::No);
    switch (box.exec()) {
        case QMessageBox::Yes:
            return PromptAnswer::Yes;
        case QMessageBox::No:
            return PromptAnswer::No;
        default:
            return PromptAnswer::Cancel;
    }
}

std::optional<std::string> QtPrompts::AskText(const std::string& label, const std::string& title,
                                              const std::string& initial) {
    bool accepted = false;
    const QString text = QInputDialog::getText(parent_, ToQString(title), ToQString(label), QLineEdit::Normal,
                                               ToQString(initial), &accepted);
    return accepted ? std::optional(FromQString(text)) : std::nullopt;
}

}  // namespace lore
