#include "ui/editor/editor_dialogs.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSpinBox>

#include "base/text.h"
#include "ui/controls/main_button_keys.h"
#include "ui/controls/text_field.h"
#include "ui/look/theme_look.h"

namespace lore {
namespace {

constexpr int kWidestPicture = 4000;

/// A form with "OK" and "Cancel".
class FormDialog : public QDialog {
public:
    FormDialog(const QString& title, QWidget* parent) : QDialog(parent), form_(new QFormLayout(this)) {
        setWindowTitle(title);
        form_->setContentsMargins(kSpace * 4, kSpace * 4, kSpace * 4, kSpace * 4);
        form_->setSpacing(kSpace * 2);
    }
    QLineEdit* AddText(const QString& label, const QString& value) {
        auto* const field = NewTextField(this, value);
        field->setMinimumWidth(fontMetrics().averageCharWidth() * 44);
        form_->addRow(label, field);
        return field;
    }
    /// What is typed at once takes the place of the first number, also where the window comes to the front late.
    QSpinBox* AddNumber(const QString& label, int lowest, int highest, int value) {
        auto* const field = new QSpinBox(this);
        field->setRange(lowest, highest);
        field->setValue(value);
        if (form_->rowCount() == 0)
            field->selectAll();
        form_->addRow(label, field);
        return field;
    }
    QDialogButtonBox* AddButtons() {
        auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
        connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
        connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
        PressByCtrlEnter(buttons->button(QDialogButtonBox::Ok));
        form_->addRow(buttons);
        return buttons;
    }

private:
    QFormLayout* form_;
};

// What a person types as an address: a bare host is one of the web.
QString Completed(const QString& typed) {
    const QString target = QString::fromStdString(CleanText(typed.trimmed().toStdString()));
    const bool bare = !target.isEmpty() && !target.contains(u':') && !target.startsWith(u'/') &&
                      !target.startsWith(u'#') && target.contains(u'.');
    return bare ? QStringLiteral("https://") + target : target;
}

}  // namespace

std::optional<LinkChoice> AskLink(QWidget* parent, const LinkChoice& now, bool textNeeded) {
    FormDialog dialog(now.target.isEmpty() ? FormDialog::tr("Insert link") : FormDialog::tr("Edit link"), parent);
    dialog.setObjectName("linkDialog");
    QLineEdit* const text = textNeeded ? dialog.AddText(FormDialog::tr("&Text:"), now.text) : nullptr;
    QLineEdit* const target = dialog.AddText(FormDialog::tr("&Address:"), now.target);
    target->setPlaceholderText(QStringLiteral("https://"));
    QDialogButtonBox* const buttons = dialog.AddButtons();
    bool removed = false;
    if (!now.target.isEmpty()) {
        QPushButton* const remove = buttons->addButton(FormDialog::tr("&Remove link"), QDialogButtonBox::ResetRole);
        QObject::connect(remove, &QPushButton::clicked, &dialog, [&] {
            removed = true;
            dialog.accept();
        });
    }
    if (dialog.exec() != QDialog::Accepted)
        return std::nullopt;
    return LinkChoice{removed ? QString() : Completed(target->text()), text ? text->text() : now.text};
}

std::optional<TableChoice> AskTable(QWidget* parent) {
    FormDialog dialog(FormDialog::tr("Insert table"), parent);
    dialog.setObjectName("tableDialog");
    QSpinBox* const columns = dialog.AddNumber(FormDialog::tr("&Columns:"), 1, 30, TableChoice().columns);
    QSpinBox* const rows = dialog.AddNumber(FormDialog::tr("&Rows:"), 1, 100, TableChoice().rows);
    dialog.AddButtons();
    if (dialog.exec() != QDialog::Accepted)
        return std::nullopt;
    return TableChoice{rows->value(), columns->value()};
}

std::optional<QSizeF> AskPictureSize(QWidget* parent, const QSizeF& now, int widest) {
    FormDialog dialog(FormDialog::tr("Size of the picture"), parent);
    dialog.setObjectName("pictureDialog");
    const double shape = now.width() > 0 ? now.height() / now.width() : 1.0;
    QSpinBox* const width = dialog.AddNumber(FormDialog::tr("&Width in pixels:"), 1,
                                             std::max(widest, qRound(now.width())), qRound(now.width()));
    QSpinBox* const height =
        dialog.AddNumber(FormDialog::tr("&Height in pixels:"), 1, kWidestPicture, qRound(now.height()));
    QObject::connect(width, &QSpinBox::valueChanged, &dialog, [&](int value) {
        const QSignalBlocker quiet(height);
        height->setValue(qRound(value * shape));
    });
    QObject::connect(height, &QSpinBox::valueChanged, &dialog, [&](int value) {
        const QSignalBlocker quiet(width);
        width->setValue(qRound(value / std::max(shape, 0.001)));
    });
    dialog.AddButtons();
    if (dialog.exec() != QDialog::Accepted)
        return std::nullopt;
    const bool sameWidth = width->value() == qRound(now.width());
    if (sameWidth && height->value() == qRound(now.height()))
        return std::nullopt;
    // A picture that is much taller than wide may change in height alone.
    return sameWidth ? QSizeF(height->value() / std::max(shape, 0.001), height->value())
                     : QSizeF(width->value(), width->value() * shape);
}

}  // namespace lore
