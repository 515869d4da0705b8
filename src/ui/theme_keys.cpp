#include "ui/theme_keys.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QWidget>

namespace lore {

bool ThemeKeys::eventFilter(QObject* target, QEvent* event) {
    if (event->type() != QEvent::KeyPress || !target->isWidgetType())
        return false;
    const auto* const key = static_cast<QKeyEvent*>(event);
    if (key->key() != Qt::Key_F10 || key->modifiers() != Qt::ShiftModifier || QApplication::activePopupWidget())
        return false;
    auto* const control = static_cast<QWidget*>(target);
    const QPoint place = control->inputMethodQuery(Qt::ImCursorRectangle).toRect().center();
    QContextMenuEvent ask(QContextMenuEvent::Keyboard, place, control->mapToGlobal(place));
    QApplication::sendEvent(control, &ask);
    return true;
}

}  // namespace lore
