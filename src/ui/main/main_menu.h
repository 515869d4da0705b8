#pragma once

#include <QKeySequence>
#include <QList>
#include <QString>
#include <functional>
#include <vector>

class QMenu;
class QMenuBar;
class QObject;

namespace lore {

/// The menus, in the order of the menu bar. One without an entry isn't shown.
enum class MainMenu { File, Options, Notes, Sources, Categories, View, Sync, Tools, Help };

// The keys of commands that the tool bar has too.

inline constexpr QKeyCombination kCalendarKeys = Qt::CTRL | Qt::SHIFT | Qt::Key_E;
inline constexpr QKeyCombination kSyncKeys = Qt::CTRL | Qt::SHIFT | Qt::Key_Y;

/// One entry of the menu bar.
struct MenuCommand {
    MainMenu menu;
    QString text;                    ///< with its Alt key; empty for a line
    QList<QKeySequence> keys = {};   ///< the first is shown
    std::function<void()> run = {};  ///< without it, the entry of this text in a menu before stands here too
    /// For an entry of another kind, such as a menu below: makes it in place of the plain one.
    std::function<void(QMenu&)> make = {};
};

/// Fills a menu bar with commands in their order. `owner` receives what the actions trigger.
void BuildMenuBar(QMenuBar& bar, QObject* owner, const std::vector<MenuCommand>& commands);

}  // namespace lore
