#pragma once

#include <QObject>

class QKeyEvent;
class QWidget;

namespace lore {

/// What keys and the wheel do alike in all windows: Shift+F10 opens the context menu of the control that has the focus,
/// as the Menu key does, and the wheel over a box of choices, a number, a date or tabs that haven't the focus scrolls
/// what is around them.
class ThemeKeys : public QObject {
public:
    using QObject::QObject;

    bool eventFilter(QObject* target, QEvent* event) override;

private:
    static bool OpenMenu(QWidget& control, const QKeyEvent& key);
};

}  // namespace lore
