#pragma once

class QString;
class QWidget;

namespace lore {

/// Has screen readers read a text at the end of this turn of the event loop, wherever the focus is; of several texts
/// about one widget the last. Nothing of it is seen, and nothing is said about a widget that isn't seen itself.
void Announce(QWidget& about, const QString& text);

}  // namespace lore
