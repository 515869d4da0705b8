#pragma once

#include <QSpinBox>

namespace lore {

/// A number that takes any digits: a value outside of the limits becomes the nearer one at once.
class ClampedSpinBox : public QSpinBox {
    Q_OBJECT

public:
    ClampedSpinBox(int least, int most, QWidget* parent);

protected:
    QValidator::State validate(QString& text, int& position) const override;
    int valueFromText(const QString& text) const override;
};

}  // namespace lore
