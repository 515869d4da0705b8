#include "ui/focus_child.h"

#include <QAccessible>
#include <QTimer>
#include <QWidget>

namespace lore {

void TellFocusChild(QWidget& widget, int child) {
    if (child < 0)
        return;
    QAccessibleEvent focus(&widget, QAccessible::Focus);
    focus.setChild(child);
    QAccessible::updateAccessibility(&focus);
}

void TellFocusChildSoon(QWidget& widget) {
    if (!QAccessible::isActive())
        return;
    QTimer::singleShot(0, &widget, [&widget] {
        const QAccessibleInterface* const face = QAccessible::queryAccessibleInterface(&widget);
        const QAccessibleInterface* const child = face && widget.hasFocus() ? face->focusChild() : nullptr;
        if (child)
            TellFocusChild(widget, face->indexOfChild(child));
    });
}

}  // namespace lore
