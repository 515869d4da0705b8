#pragma once

#include <QTextDocument>

namespace lore {

/// Makes tables that are wider than the text narrower, all columns of one by the same part, and pictures no larger than
/// the text of a page, those in tables no wider than their columns, all in their proportions. `room` is in pixels.
void FitToPage(const QTextDocument& document, const QSizeF& room);

}  // namespace lore
