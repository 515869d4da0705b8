#include "ui/command_reach.h"

#include <QtTest>
#include <QtWidgets>

#include "ui/tab_walk.h"
#include "ui/window_rules.h"

namespace lore {
namespace {

QString WordsOf(const QAction& action) {
    return action.text().section('\t', 0, 0).remove('&');
}

/// The ways to commands that need no mouse.
struct Reached {
    QSet<const QAction*> actions;
    QSet<QString> words;

    void Add(const QAction* action) {
        if (!action || actions.contains(action))
            return;
        actions.insert(action);
        words.insert(WordsOf(*action));
        if (action->menu())
            Add(action->menu());
    }
    void Add(const QMenu* menu) {
        if (menu)
            for (const QAction* const action : menu->actions())
                Add(action);
    }
};

/// What stands in the menu that an event opens, also below its entries.
QSet<QString> WordsOfMenuBy(QWidget& target, QEvent& event) {
    Reached opened;
    const auto close = [&opened] {
        while (QWidget* const popup = QApplication::activePopupWidget()) {
            if (const auto* const menu = qobject_cast<const QMenu*>(popup))
                opened.Add(menu);
            popup->close();
        }
    };
    QTimer closer;  // some menus come back only when they are closed
    QObject::connect(&closer, &QTimer::timeout, close);
    closer.start(0);
    QApplication::sendEvent(&target, &event);
    close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    opened.words.remove(QString());
    return opened.words;
}

QSet<QString> WordsOfMenuByKey(QWidget& control) {
    control.setFocus(Qt::ShortcutFocusReason);
    QKeyEvent press(QEvent::KeyPress, Qt::Key_F10, Qt::ShiftModifier);
    return WordsOfMenuBy(control, press);
}

/// In the middle, or at the current item of a list, and at the lower edge, where lists are empty.
QSet<QString> WordsOfMenuByMouse(QWidget& widget) {
    const auto* const area = qobject_cast<const QAbstractScrollArea*>(&widget);
    QWidget& target = area ? *area->viewport() : widget;
    QPoint middle = target.rect().center();
    if (const auto* const view = qobject_cast<const QAbstractItemView*>(area); view && view->currentIndex().isValid())
        middle = view->visualRect(view->currentIndex()).center();
    QSet<QString> words;
    for (const QPoint place : {middle, target.rect().bottomLeft() + QPoint(3, -3)}) {
        QTest::mouseClick(&target, Qt::RightButton, {}, place);
        QContextMenuEvent ask(QContextMenuEvent::Mouse, place, target.mapToGlobal(place));
        words += WordsOfMenuBy(target, ask);
    }
    return words;
}

/// Each entry of a menu has a letter of its own.
void CheckLetters(const QList<QAction*>& entries, QStringList& faults) {
    QSet<QString> taken;
    for (const QAction* const entry : entries) {
        const QString letter = QKeySequence::mnemonic(entry->text()).toString();
        if (!entry->isSeparator() && letter.isEmpty())
            faults.append("a menu entry without a letter: " + entry->text());
        if (!letter.isEmpty() && taken.contains(letter))
            faults.append("a letter of two entries: " + entry->text());
        taken.insert(letter);
        if (entry->menu())
            CheckLetters(entry->menu()->actions(), faults);
    }
}

/// Of two commands with one key in one window neither would run.
void CheckShortcuts(const QWidget& window, QStringList& faults) {
    QMap<QString, const QAction*> taken;
    for (const QAction* const action : window.findChildren<QAction*>()) {
        if (action->shortcutContext() != Qt::WindowShortcut || action->associatedObjects().isEmpty())
            continue;
        for (const QKeySequence& keys : action->shortcuts()) {
            if (taken.contains(keys.toString()))
                faults.append(QStringLiteral("%1 stands for %2 and for %3")
                                  .arg(keys.toString(), taken[keys.toString()]->text(), action->text()));
            taken[keys.toString()] = action;
        }
    }
}

void AddMenuBars(const QWidget& window, Reached& reached, QStringList& faults) {
    for (const QMenuBar* const bar : window.findChildren<QMenuBar*>()) {
        CheckLetters(bar->actions(), faults);
        for (const QAction* const menu : bar->actions())
            reached.Add(menu);
    }
}

void AddButtons(const QWidget& window, Reached& reached) {
    for (const QWidget* const widget : ShownIn(window)) {
        const auto* const button = qobject_cast<const QAbstractButton*>(widget);
        if (!button || !KeyboardReaches(*button))
            continue;
        if (const auto* const push = qobject_cast<const QPushButton*>(button))
            reached.Add(push->menu());
        const auto* const tool = qobject_cast<const QToolButton*>(button);
        // Keys press the button itself; they don't open the menu at its side.
        if (tool && tool->popupMode() != QToolButton::MenuButtonPopup)
            reached.Add(tool->menu());
        if (tool)
            reached.Add(tool->defaultAction());
        if (button->objectName() == "qt_toolbar_ext_button")  // it unfolds the bar
            for (const QAction* const action : button->parentWidget()->actions())
                reached.Add(action);
    }
}

bool HasKey(const QAction& action) {
    return !action.shortcuts().isEmpty() && !action.associatedObjects().isEmpty();
}

/// Whether it stands somewhere in the window as it is seen, be it in a menu. What Qt's own fields have counts not.
bool IsOffered(const QAction& action, const QWidget& window) {
    const auto places = action.associatedObjects();
    return std::any_of(places.begin(), places.end(), [&](const QObject* place) {
        if (const auto* const menu = qobject_cast<const QMenu*>(place))
            return IsOffered(*menu->menuAction(), window);
        const auto* const widget = qobject_cast<const QWidget*>(place);
        return widget && widget->isVisibleTo(&window) && !widget->inherits("QLineEdit") && !IsInsideOfControl(*widget);
    });
}

QList<QPointer<QAction>> CommandsOf(const QWidget& window) {
    QList<QPointer<QAction>> commands;
    for (QAction* const action : window.findChildren<QAction*>())
        if (!action->isSeparator() && action->isVisible() && !WordsOf(*action).isEmpty() && IsOffered(*action, window))
            commands.append(action);
    return commands;
}

}  // namespace

QStringList FaultsOfCommands(QWidget& window) {
    QStringList faults;
    if (!TakesKeys(window))
        return faults;
    const QPointer<QWidget> before = window.focusWidget();
    Reached reached;
    AddMenuBars(window, reached, faults);
    CheckShortcuts(window, faults);
    AddButtons(window, reached);
    const QList<QPointer<QAction>> commands = CommandsOf(window);
    for (QWidget* const stop : TabStopsOf(window)) {
        if (stop->contextMenuPolicy() == Qt::ActionsContextMenu)
            for (const QAction* const action : stop->actions())
                reached.Add(action);
        reached.words += WordsOfMenuByKey(*stop);
    }
    for (const QPointer<QAction>& action : commands)
        if (action && !HasKey(*action) && !reached.actions.contains(action) &&
            !reached.words.contains(WordsOf(*action)))
            faults.append("a command without a key: " + action->text());
    for (QWidget* const widget : ShownIn(window)) {
        QSet<QString> byMouse = WordsOfMenuByMouse(*widget) - reached.words;
        if (!byMouse.isEmpty() && (widget->focusPolicy() & Qt::TabFocus) != 0)
            byMouse -= WordsOfMenuByKey(*widget);  // the click has made another item the current one
        for (const QString& words : byMouse)
            faults.append(QStringLiteral("\"%1\" only in a mouse's menu on %2").arg(words, Described(*widget)));
    }
    if (before)
        before->setFocus(Qt::OtherFocusReason);
    return faults;
}

}  // namespace lore
