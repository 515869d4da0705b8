#pragma once

#include <QTextDocument>

namespace lore {

/// Makes tables that are wider than the text narrower, all columns of one by the same part, and pictures in them no
/// wider than their columns.
void FitTables(const QTextDocument& document, qreal room);

}  // namespace lore
