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

/// A command by its words, in one menu of the menu bar or in any; null if there is none.
inline QAction* MenuEntry(const QMainWindow& window, const QString& entry, const QString& menu = {}) {
    for (QAction* const top : window.menuBar()->actions())
        for (QAction* const action : top->menu()->actions())
            if ((menu.isEmpty() || top->text().remove('&') == menu) && action->text().remove('&') == entry)
                return action;
    return nullptr;
}

}  // namespace lore
