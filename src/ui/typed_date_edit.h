#pragma once

#include <QDateEdit>

namespace lore {

/// A date that can be typed as it is shown: a "/" behind a number that was complete, and moved the caret on by itself,
/// does nothing more, and a year may have three digits.
class TypedDateEdit : public QDateEdit {
public:
    using QDateEdit::QDateEdit;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void CompleteYear();

    bool hasMovedOn_ = false;
};

/// True for a key that changes a text.
bool ChangesText(const QKeyEvent& key);

}  // namespace lore
