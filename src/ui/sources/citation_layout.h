#pragma once

#include <QFont>
#include <QTextLayout>

#include "sources/source_boxes.h"

class QPainter;

namespace lore {

/// The font of fixed width of lists of sources, in which a line is so many pixels high.
QFont SourceListFont(int characterHeight);
/// How many characters a line of a list holds in a window of this width.
int CharactersALine(const SourceBoxFigures& figures, int width);

/// One citation, wrapped for a number of characters a line, with its hanging indent and its emphasis.
class CitationLayout {
public:
    /// `source` is formatted.
    CitationLayout(const CSource& source, const SourceBoxFigures& figures, int charactersALine);

    int Lines() const { return lines_; }
    int Height() const { return lines_ * lineHeight_; }
    /// Draws the lines in the painter's colour from the top left corner of a place. Characters that are wider than the
    /// font's own, such as Chinese ones, are narrowed down so that nothing is cut at the right.
    void Paint(QPainter& painter, const QRect& place) const;

private:
    void LayOut(double ascent);

    QTextLayout layout_;
    int lines_ = 0;
    int lineHeight_;
};

/// The icon that marks the type of a source.
QString SourceMarkIcon(int32_t sourceType);

}  // namespace lore
