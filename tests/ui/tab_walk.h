#pragma once

#include <QStringList>
#include <functional>

class QWidget;

namespace lore {

/// What a walk by Tab through a window meets that it shouldn't: a control that keeps the key, that comes twice or not
/// at all, or that stands before the one where the walk came from; a way back by Shift+Tab that is another one; and
/// one that gets the focus, or whose item gets it, without a screen reader being told its role and name. Where text is
/// written, Ctrl+Tab has to leave. The window becomes the active one; the focus is where it was afterwards. A window
/// behind a modal one has no faults, since no key reaches it.
QStringList FaultsOfTabWalk(QWidget& window);

/// Whether a screen reader hears of the current item of a control at last when Tab reaches the control.
bool TellsOfFocusChild(QWidget& control);

/// What a screen reader is told of the focus and of boxes while steps run and until no event waits: "focus NAME", and
/// "ticked NAME" or "unticked NAME", "selected NAME" or "unselected NAME" for what the program draws itself, and "said
/// TEXT" for what it has read at once.
QStringList ToldDuring(const std::function<void()>& steps);

/// The controls that the Tab key reaches, in their order.
QList<QWidget*> TabStopsOf(const QWidget& window);
/// Whether keys reach this window at all: it isn't behind a modal one, and no popup that comes and goes.
bool TakesKeys(const QWidget& window);

}  // namespace lore
