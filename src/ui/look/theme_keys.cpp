#include "ui/look/theme_keys.h"

#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QTabBar>
#include <QWidget>

namespace lore {

namespace {

bool ChoosesByWheel(const QWidget& control) {
    return qobject_cast<const QComboBox*>(&control) || qobject_cast<const QAbstractSpinBox*>(&control) ||
           qobject_cast<const QTabBar*>(&control);
}

}  // namespace

bool ThemeKeys::eventFilter(QObject* target, QEvent* event) {
    if (!target->isWidgetType())
        return false;
    auto& control = static_cast<QWidget&>(*target);
    switch (event->type()) {
        case QEvent::KeyPress:
            return OpenMenu(control, static_cast<QKeyEvent&>(*event));
        case QEvent::Polish:
            // The wheel doesn't give the focus either.
            if (control.focusPolicy() == Qt::WheelFocus && ChoosesByWheel(control))
                control.setFocusPolicy(Qt::StrongFocus);
            return false;
        case QEvent::Wheel:
            if (control.hasFocus() || !ChoosesByWheel(control))
                return false;
            event->ignore();
            return true;
        default:
            return false;
    }
}

bool ThemeKeys::OpenMenu(QWidget& control, const QKeyEvent& key) {
    if (key.key() != Qt::Key_F10 || key.modifiers() != Qt::ShiftModifier || QApplication::activePopupWidget())
        return false;
    const QPoint place = control.inputMethodQuery(Qt::ImCursorRectangle).toRect().center();
    QContextMenuEvent ask(QContextMenuEvent::Keyboard, place, control.mapToGlobal(place));
    QApplication::sendEvent(&control, &ask);
    return true;
}

}  // namespace lore
