#pragma once

#include <QStringList>

class QWidget;

namespace lore {

/// Commands of a window that only a mouse reaches: entries of its menus, tool bars and buttons without a way by keys,
/// entries without a letter of their own, keys that two commands share, and context menus that don't open with
/// Shift+F10 on the control that has the focus, or hold less then. A key of its own, a menu of the menu bar, a button
/// that Tab reaches or such a context menu is a way.
QStringList FaultsOfCommands(QWidget& window);

}  // namespace lore
