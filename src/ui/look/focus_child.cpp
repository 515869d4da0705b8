#include "ui/look/focus_child.h"

#include <QAccessible>
#include <QTimer>
#include <QWidget>

namespace lore {
namespace {

/// The number of the child that a widget with the focus says is its focus child; below 0 for none.
int FocusChildOf(QWidget& widget) {
    const QAccessibleInterface* const face = QAccessible::queryAccessibleInterface(&widget);
    const QAccessibleInterface* const child = face && widget.hasFocus() ? face->focusChild() : nullptr;
    return child ? face->indexOfChild(child) : -1;
}

}  // namespace

void TellFocusChild(QWidget& widget, int child) {
    if (child < 0)
        return;
    QAccessibleEvent focus(&widget, QAccessible::Focus);
    focus.setChild(child);
    QAccessible::updateAccessibility(&focus);
}

void TellSelected(QWidget& widget, int child, bool selected) {
    QAccessibleEvent change(&widget, selected ? QAccessible::SelectionAdd : QAccessible::SelectionRemove);
    change.setChild(child);
    QAccessible::updateAccessibility(&change);
}

void TellFocusChildSoon(QWidget& widget) {
    if (!QAccessible::isActive())
        return;
    QTimer::singleShot(0, &widget, [&widget] { TellFocusChild(widget, FocusChildOf(widget)); });
}

void TellFocusChildTicked(QWidget& widget) {
    const int child = QAccessible::isActive() ? FocusChildOf(widget) : -1;
    if (child < 0)
        return;
    QAccessible::State changed;
    changed.checked = true;
    QAccessibleStateChangeEvent ticked(&widget, changed);
    ticked.setChild(child);
    QAccessible::updateAccessibility(&ticked);
}

}  // namespace lore
