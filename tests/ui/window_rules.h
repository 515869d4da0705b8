#pragma once

#include <QList>
#include <QStringList>

class QAbstractButton;
class QMenuBar;
class QWidget;

namespace lore {

/// What keeps people with a keyboard, a screen reader or large letters from a part of this window as it stands:
/// controls without role or name, buttons that only a mouse reaches, Alt keys that two controls share, texts that are
/// cut, buttons beyond an edge, a window that no screen of this size holds.
QStringList FaultsOfWindow(const QWidget& window);

/// The commands of a menu bar that show no keys, with those of the menus below. The ways that a choice can go need
/// none.
QStringList CommandsWithoutKeys(const QMenuBar& bar);

/// The widgets that are seen in a window, without the parts that Qt makes inside its own controls: the control around
/// them speaks for them.
QList<QWidget*> ShownIn(const QWidget& window);
bool IsInsideOfControl(const QWidget& widget);
/// Whether somebody can do something with it.
bool IsControl(const QWidget& widget);
/// Of buttons that exclude each other Tab reaches one; the arrows do the rest.
bool IsReachedByArrows(const QWidget& widget);
/// Without a mouse a button is reached by Tab, by a key of its own, or by the key of the command behind it.
bool KeyboardReaches(const QAbstractButton& button);
/// What screen readers say.
QString NameOf(const QWidget& widget);
/// For a message.
QString Described(const QWidget& widget);

}  // namespace lore
