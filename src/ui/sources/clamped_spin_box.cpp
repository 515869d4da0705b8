#include "ui/sources/clamped_spin_box.h"

#include <QLineEdit>
#include <algorithm>

namespace lore {

ClampedSpinBox::ClampedSpinBox(int least, int most, QWidget* parent) : QSpinBox(parent) {
    setRange(least, most);
    connect(lineEdit(), &QLineEdit::textEdited, this, [this](const QString& text) {
        bool isNumber = false;
        const int typed = text.trimmed().toInt(&isNumber);
        if (isNumber && (typed < minimum() || typed > maximum())) {
            setValue(std::clamp(typed, minimum(), maximum()));
            lineEdit()->setText(QString::number(value()));
        }
    });
}

QValidator::State ClampedSpinBox::validate(QString& text, int&) const {
    bool isNumber = false;
    const int typed = text.trimmed().toInt(&isNumber);
    if (!isNumber)
        return text.trimmed().isEmpty() ? QValidator::Intermediate : QValidator::Invalid;
    return typed < minimum() || typed > maximum() ? QValidator::Intermediate : QValidator::Acceptable;
}

int ClampedSpinBox::valueFromText(const QString& text) const {
    return std::clamp(text.trimmed().toInt(), minimum(), maximum());
}

}  // namespace lore
