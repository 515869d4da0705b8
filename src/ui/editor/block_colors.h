#pragma once

#include <QList>
#include <QTextLayout>

class QColor;
class QTextBlock;

namespace lore {

class NoteFormats;

/// What is to be laid over the text of a paragraph whose formats were made for another theme: the colours of the
/// present one, in positions of the paragraph. Text that has them already is left out. `ground` is what stands behind
/// it.
QList<QTextLayout::FormatRange> ColorsOver(const QTextBlock& block, const QColor& ground, const NoteFormats& formats);

}  // namespace lore
