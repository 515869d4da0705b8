#pragma once

#include <QStringList>

class QWidget;

namespace lore {

/// What keeps people with a keyboard, a screen reader or large letters from a part of this window as it stands:
/// controls without role or name, buttons that only a mouse reaches, Alt keys that two controls share, texts that are
/// cut.
QStringList FaultsOfWindow(const QWidget& window);

}  // namespace lore
