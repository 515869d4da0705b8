#pragma once

#include <QStringList>

class QWidget;

namespace lore {

/// What a walk by Tab through a window meets that it shouldn't: a control that keeps the key, that comes twice or not
/// at all, or that stands before the one where the walk came from, and a way back by Shift+Tab that is another one.
/// Where text is written, Ctrl+Tab has to leave. The window has to be the active one; the focus is where it was
/// afterwards.
QStringList FaultsOfTabWalk(QWidget& window);
/// The same as a check.
void WalkByTab(QWidget& window);

}  // namespace lore
