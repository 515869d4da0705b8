#pragma once

#include <QAbstractButton>
#include <QAccessible>
#include <QLabel>
#include <QSet>
#include <QTabBar>
#include <QTest>

namespace lore {

/// No two controls in sight share an Alt key.
inline void CheckAltKeys(const QWidget& window) {
    QSet<QChar> seen;
    const auto take = [&](const QString& text) {
        const auto at = text.indexOf('&');
        if (at < 0 || at + 1 >= text.size())
            return;
        const QChar key = text[at + 1].toUpper();
        QVERIFY2(!seen.contains(key), qPrintable(window.windowTitle() + ": " + text));
        seen.insert(key);
    };
    for (const QAbstractButton* const button : window.findChildren<QAbstractButton*>()) {
        if (button->isVisible())
            take(button->text());
    }
    for (const QLabel* const label : window.findChildren<QLabel*>()) {
        if (label->isVisible() && label->buddy())
            take(label->text());
    }
}

/// Every control that takes the focus has a name for those who can't see it.
inline void CheckNames(const QWidget& window) {
    for (QWidget* const control : window.findChildren<QWidget*>()) {
        if (control->isVisible() && control->focusPolicy() != Qt::NoFocus && !qobject_cast<const QTabBar*>(control) &&
            control->objectName() != "qt_spinbox_lineedit" && !control->inherits("QComboBoxListView"))
            QVERIFY2(!QAccessible::queryAccessibleInterface(control)->text(QAccessible::Name).isEmpty(),
                     qPrintable(window.windowTitle() + ": " + control->metaObject()->className() + " " +
                                control->objectName()));
    }
}

}  // namespace lore
