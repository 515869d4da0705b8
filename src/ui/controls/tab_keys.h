#pragma once

class QTabWidget;

namespace lore {

/// The Alt key of a tab leads to the first control of its page, as that of a label does to its field.
void LeadTabKeys(QTabWidget& tabs);

}  // namespace lore
