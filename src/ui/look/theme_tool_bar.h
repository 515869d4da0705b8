#pragma once

class QToolBar;

namespace lore {

class Theme;

/// Dresses the button at the end of a tool bar, which offers what doesn't fit: Qt makes it black on any ground, without
/// a name, and first in the order of the Tab key. To be called when the bar has its controls, and when the theme
/// changes.
void DressMoreButton(QToolBar& bar, const Theme& theme);

}  // namespace lore
