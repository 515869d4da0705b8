#pragma once

#include "bibliography/source.h"

namespace lore {

/// The figures of a list of sources, in pixels. Every source is a box with the mark of its type at the left and its
/// wrapped citation, in a font of fixed width, beside it; the boxes stand one below the other.
struct SourceBoxFigures {
    int characterHeight = 0;
    int textLeft = 0;      ///< left edge of the text, from the left edge of the list
    int sideRoom = 0;      ///< what a line leaves free of the width
    int verticalRoom = 0;  ///< what a box adds to the height of its lines
    int leastHeight = 0;
    int markSize = 0;  ///< width and height of the mark, which is centred in the height
    int markLeft = 0;  ///< left edge of the mark
};

/// The list of the source browser, and that of a bibliography's choice.
inline constexpr SourceBoxFigures kSourcesListBoxes = {18, 90, 107, 30, 70, 50, 15};
inline constexpr SourceBoxFigures kSourcesSelBoxes = {15, 45, 62, 12, 44, 28, 6};
/// The right edge of the text is this far from that of its box.
inline constexpr int kSourceTextRightRoom = 17;

/// How many characters a line holds, at least 1. `left` is the left edge of the list in a room of this width.
int CharactersALine(const SourceBoxFigures& figures, int width, int left, double characterWidth);
/// The height of the box of so many lines.
int SourceBoxHeight(const SourceBoxFigures& figures, int lines);
/// The height of a formatted source's box. One without a citation, or with an id of 0 or less, has no height.
int SourceBoxHeight(const SourceBoxFigures& figures, const CSource& source, int charactersALine);

}  // namespace lore
