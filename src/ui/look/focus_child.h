#pragma once

class QWidget;

namespace lore {

/// Tells screen readers that a child of a widget, such as a card of the board, has the focus; below 0 nothing is told.
void TellFocusChild(QWidget& widget, int child);

/// Tells that a child of a widget was selected or no longer is.
void TellSelected(QWidget& widget, int child, bool selected);

/// For focusInEvent: tells of the child that the widget says is its focus child, once Qt has told of the widget itself.
void TellFocusChildSoon(QWidget& widget);

/// Tells that the focus child of a widget was ticked or no longer is, if the widget has the focus.
void TellFocusChildTicked(QWidget& widget);

}  // namespace lore
