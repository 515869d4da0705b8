#include "ui/editor/block_colors.h"

#include <QTextBlock>

#include "ui/editor/note_formats.h"
#include "ui/look/theme.h"

namespace lore {

QList<QTextLayout::FormatRange> ColorsOver(const QTextBlock& block, const QColor& ground, const NoteFormats& formats) {
    QList<QTextLayout::FormatRange> ranges;
    for (auto it = block.begin(); !it.atEnd(); ++it) {
        const QTextFragment fragment = it.fragment();
        const QTextCharFormat stored = fragment.charFormat();
        const QTextCharFormat wanted = formats.Screen().Characters(formats.Characters(stored), ground);
        if (wanted.foreground() == stored.foreground() && wanted.background() == stored.background())
            continue;
        QTextCharFormat over;
        over.setForeground(wanted.hasProperty(QTextFormat::ForegroundBrush)
                               ? wanted.foreground()
                               : QBrush(formats.GetTheme().Color(ColorRole::Text)));
        if (wanted.hasProperty(QTextFormat::BackgroundBrush))
            over.setBackground(wanted.background());
        ranges.append({fragment.position() - block.position(), fragment.length(), over});
    }
    return ranges;
}

}  // namespace lore
