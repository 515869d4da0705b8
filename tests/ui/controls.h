#pragma once

#include <QtTest>
#include <QtWidgets>

namespace lore {

/// A control of a window by its name.
template <typename Control>
Control* In(const QWidget& window, const char* name) {
    return window.findChild<Control*>(QString::fromLatin1(name));
}

/// Chooses an entry of a list as a user does.
inline void Choose(QComboBox* box, const QString& text) {
    const int index = box->findText(text);
    QVERIFY2(index >= 0, qPrintable(text));
    box->setFocus();
    box->setCurrentIndex(index);
    emit box->activated(index);
    QCoreApplication::processEvents();
}

/// Presses the button with these words.
inline void Press(const QWidget& window, const QString& text) {
    for (QAbstractButton* const button : window.findChildren<QAbstractButton*>())
        if (button->text().remove('&') == text)
            return button->click();
    QFAIL(qPrintable(text));
}

inline QStringList Lines(const QListWidget* list) {
    QStringList lines;
    for (int row = 0; row < list->count(); ++row)
        lines.append(list->item(row)->text());
    return lines;
}

/// The menu that a place of a widget opens at once; null if there is none.
inline QMenu* OpenMenuAt(QWidget& widget, const QPoint& place,
                         QContextMenuEvent::Reason reason = QContextMenuEvent::Mouse) {
    QContextMenuEvent event(reason, place, widget.mapToGlobal(place));
    QApplication::sendEvent(&widget, &event);
    return qobject_cast<QMenu*>(QApplication::activePopupWidget());
}

/// Presses the mouse at a place of a widget, which may move along, and goes to another one with the button held.
inline void DragOn(QWidget& widget, const QPoint& from, const QPoint& to) {
    const QPoint stops[] = {widget.mapToGlobal(from + (to - from) / 2), widget.mapToGlobal(to)};
    QTest::mousePress(&widget, Qt::LeftButton, {}, from);
    for (const QPoint& at : stops) {
        QMouseEvent move(QEvent::MouseMove, widget.mapFromGlobal(at), at, Qt::NoButton, Qt::LeftButton, {});
        QApplication::sendEvent(&widget, &move);
    }
}

/// A command by its words, in one menu of the menu bar or in any; null if there is none.
inline QAction* MenuEntry(const QMainWindow& window, const QString& entry, const QString& menu = {}) {
    for (QAction* const top : window.menuBar()->actions())
        for (QAction* const action : top->menu()->actions())
            if ((menu.isEmpty() || top->text().remove('&') == menu) && action->text().remove('&') == entry)
                return action;
    return nullptr;
}

}  // namespace lore
