#pragma once

#include <QMenu>

namespace lore {

/// A menu for one use, empty yet. It goes when its owner opens the next one: its commands run while it still works on
/// the key or the click that chose them, and may let other events through, its own end among them.
inline QMenu* NewPopupMenu(QWidget* owner) {
    const QString name = QStringLiteral("popupMenu");
    delete owner->findChild<QMenu*>(name, Qt::FindDirectChildrenOnly);
    auto* const menu = new QMenu(owner);
    menu->setObjectName(name);
    return menu;
}

}  // namespace lore
