#pragma once

#include <QtTest>
#include <QtWidgets>

// As the program runs: Qt's own has styles take the screen for one of 96 dots an inch, however large the letters are.
#undef QTEST_MAIN
#define QTEST_MAIN(Test) QTEST_MAIN_WRAPPER(Test, QApplication app(argc, argv);)

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

/// Types a text in place of the one that a field holds.
template <typename Field>
void Retype(Field* field, const QString& text) {
    field->setFocus();
    field->selectAll();
    QTest::keyClicks(field, text);
}

/// Presses keys one after the other, each with its modifiers: "Ctrl+Return".
inline void PressKeys(QWidget* widget, std::initializer_list<const char*> keys) {
    for (const char* const key : keys) {
        const QKeyCombination pressed = QKeySequence(QLatin1String(key))[0];
        QTest::keyClick(widget, pressed.key(), pressed.keyboardModifiers());
    }
}

/// Presses keys in a window; whether it is still there after them.
inline bool StaysOpen(QWidget& window, const char* keys) {
    PressKeys(&window, {keys});
    return window.isVisible();
}

/// The button that stops the work that goes on in a window; null while nothing can be stopped.
inline QPushButton* StopButton(const QWidget& window) {
    const auto* const panel = In<QFrame>(window, "progressPanel");
    auto* const button = panel ? panel->findChild<QPushButton*>() : nullptr;
    return button && button->isVisible() ? button : nullptr;
}

/// Makes a window the one that gets the keys.
inline void BringUp(QWidget& window) {
    window.activateWindow();
    QTRY_VERIFY(window.isActiveWindow());
}

inline void DoubleClick(QAbstractItemView* list, const QModelIndex& entry) {
    const QPoint place = list->visualRect(entry).center();
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, place);
}

/// Turns the wheel over the middle of a widget; 120 is a notch.
inline void TurnWheel(QWidget* widget, int delta) {
    const QPointF at = widget->rect().center();
    QWheelEvent event(at, widget->mapToGlobal(at), QPoint(), QPoint(0, delta), Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(widget, &event);
}

/// Drops what comes from elsewhere; whether it is taken.
inline bool DropOn(QWidget* target, const QMimeData& data, const QPoint& place = QPoint(5, 5)) {
    QDragEnterEvent enter(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(target, &enter);
    QDragMoveEvent move(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(target, &move);
    QDropEvent drop(QPointF(place), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(target, &drop);
    return enter.isAccepted() && drop.isAccepted();
}

/// The words of the labels, or of the buttons, that are seen in a part of a window.
template <typename Control>
QStringList SeenTexts(const QWidget& part) {
    QStringList texts;
    for (const Control* const control : part.findChildren<Control*>())
        if (control->isVisible() && !control->text().isEmpty())
            texts.append(control->text());
    return texts;
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

/// The words of a menu's entries, and "-" between its parts; none where there is no menu.
inline QStringList TextsOf(const QMenu* menu) {
    QStringList texts;
    for (const QAction* const action : menu ? menu->actions() : QList<QAction*>())
        texts.append(action->isSeparator() ? "-" : action->text().remove('&'));
    return texts;
}

/// An entry by its words; null if there is none.
inline QAction* EntryOf(const QMenu& menu, const QString& text) {
    const qsizetype place = TextsOf(&menu).indexOf(text);
    return place < 0 ? nullptr : menu.actions().at(place);
}

/// A command by its words, in one menu of the menu bar or in any; null if there is none.
inline QAction* MenuEntry(const QMainWindow& window, const QString& entry, const QString& menu = {}) {
    for (const QAction* const top : window.menuBar()->actions())
        if (QAction* const found = EntryOf(*top->menu(), entry))
            if (menu.isEmpty() || top->text().remove('&') == menu)
                return found;
    return nullptr;
}

}  // namespace lore
