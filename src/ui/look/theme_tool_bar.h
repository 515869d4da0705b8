#pragma once

class QToolBar;

namespace lore {

/// Dresses the button at the end of a tool bar, which offers what doesn't fit: Qt makes it without a name, and first in
/// the order of the Tab key. To be called once, when the bar has its controls.
void DressMoreButton(QToolBar& bar);

}  // namespace lore
