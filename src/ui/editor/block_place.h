#pragma once

#include <QAbstractTextDocumentLayout>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextEdit>
#include <QTextLayout>

namespace lore {

/// The point of an editor's viewport from which the lines of a paragraph count.
inline QPointF BlockOrigin(const QTextEdit& edit, const QTextBlock& block) {
    const QRectF whole = edit.document()->documentLayout()->blockBoundingRect(block);
    return whole.topLeft() - QPointF(edit.horizontalScrollBar()->value(), edit.verticalScrollBar()->value());
}

}  // namespace lore
