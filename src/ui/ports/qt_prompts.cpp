#include "ui/ports/qt_prompts.h"

#include <QApplication>
#include <QCheckBox>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QInputDialog>
#include <QMessageBox>
#include <QScreen>
#include <algorithm>

#include "ui/controls/main_button_keys.h"
#include "ui/controls/text_field.h"
#include "ui/look/qt_text.h"

namespace lore {

namespace {

/// Of a name or an address that is seen as a whole.
constexpr int kNameChars = 50;

/// A question may come up under the fingers of somebody who types: a blank or Enter changes nothing then. Where there
/// is a third answer, Yes is the one that keeps what there is.
constexpr QMessageBox::StandardButton kSafeAnswer = QMessageBox::No;

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

/// "Text (*.lbe) |*.lbe|" as Qt takes it: "Text (*.lbe);;...". Names without a point are files as well.
QString QtFilter(const std::string& filter) {
    const QStringList parts = ToQString(filter).split('|');
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2)
        filters.append(parts[i].section('(', 0, 0).trimmed() + " (" +
                       QString(parts[i + 1]).replace("*.*", "*").replace(';', ' ') + ")");
    return filters.join(";;");
}

std::string FromPath(const QString& path) {
    return QFile::encodeName(path).toStdString();
}

}  // namespace

/// Boxes stand over the dialog that is open, so that they aren't hidden by it.
QWidget* QtPrompts::Owner() const {
    QWidget* const dialog = QApplication::activeModalWidget();
    return dialog ? dialog : parent_;
}

void QtPrompts::Message(const std::string& text, const std::string& title, PromptIcon icon) {
    QMessageBox box(IconOf(icon), ToQString(title), ToQString(text), QMessageBox::Ok, Owner());
    box.setTextFormat(Qt::PlainText);
    box.exec();
}

PromptAnswer QtPrompts::Ask(const std::string& text, const std::string& title, bool withCancel) {
    QMessageBox::StandardButtons buttons = QMessageBox::Yes | QMessageBox::No;
    if (withCancel)
        buttons |= QMessageBox::Cancel;
    QMessageBox box(QMessageBox::Question, ToQString(title), ToQString(text), buttons, Owner());
    box.setTextFormat(Qt::PlainText);
    box.setEscapeButton(withCancel ? QMessageBox::Cancel : QMessageBox::No);
    box.setDefaultButton(withCancel ? QMessageBox::Yes : kSafeAnswer);
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
    QInputDialog dialog(Owner());
    dialog.setWindowTitle(ToQString(title));
    dialog.setLabelText(ToQString(label));
    dialog.setTextValue(ToQString(initial));
    if (auto* const field = dialog.findChild<QLineEdit*>()) {
        field->setMinimumWidth(std::min(field->fontMetrics().averageCharWidth() * kNameChars,
                                        dialog.screen()->availableSize().width() * 3 / 4));
        TakeLongText(*field);
        field->setText(ToQString(initial));
    }
    OnCtrlEnter(&dialog, [&dialog] { dialog.accept(); });
    return dialog.exec() == QDialog::Accepted ? std::optional(FromQString(dialog.textValue())) : std::nullopt;
}

PromptAnswer QtPrompts::AskWithBox(const std::string& text, const std::string& title, const std::string& box,
                                   bool& ticked) {
    QMessageBox window(QMessageBox::Question, ToQString(title), ToQString(text), QMessageBox::Yes | QMessageBox::No,
                       Owner());
    window.setTextFormat(Qt::PlainText);
    window.setEscapeButton(QMessageBox::No);
    window.setDefaultButton(kSafeAnswer);
    QCheckBox* const check = new QCheckBox(ToQString(box), &window);
    window.setCheckBox(check);
    const int answer = window.exec();
    ticked = check->isChecked();
    return answer == QMessageBox::Yes ? PromptAnswer::Yes : PromptAnswer::No;
}

std::vector<std::string> QtPrompts::AskOpenPaths(const std::string& title, const std::string& filter, PathCount count) {
    QStringList chosen;
    if (count == PathCount::Several)
        chosen = QFileDialog::getOpenFileNames(Owner(), ToQString(title), {}, QtFilter(filter));
    else if (const QString one = QFileDialog::getOpenFileName(Owner(), ToQString(title), {}, QtFilter(filter));
             !one.isEmpty())
        chosen.append(one);
    std::vector<std::string> paths;
    for (const QString& path : chosen)
        paths.push_back(FromPath(path));
    return paths;
}

std::optional<std::string> QtPrompts::AskSavePath(const std::string& title, const std::string& filter,
                                                  const std::string& proposed) {
    QFileDialog dialog(Owner(), ToQString(title), {}, QtFilter(filter));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    const QString pattern = ToQString(filter).section('|', 1, 1);
    if (pattern.startsWith("*.") && pattern != "*.*")
        dialog.setDefaultSuffix(pattern.mid(2));
    dialog.selectFile(ToQString(proposed));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return std::nullopt;
    return FromPath(dialog.selectedFiles().constFirst());
}

}  // namespace lore
