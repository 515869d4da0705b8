#include "sources/source_boxes.h"

#include <algorithm>
#include <cmath>

#include "bibliography/citation_spans.h"

namespace lore {

int CharactersALine(const SourceBoxFigures& figures, int width, int left, double characterWidth) {
    if (characterWidth <= 0)
        return 1;
    return std::max(1, static_cast<int>(std::lround((width - left - figures.sideRoom) / characterWidth)));
}

int SourceBoxHeight(const SourceBoxFigures& figures, int lines) {
    return std::max(lines * figures.characterHeight + figures.verticalRoom, figures.leastHeight);
}

int SourceBoxHeight(const SourceBoxFigures& figures, const CSource& source, int charactersALine) {
    if (source.FormattedText.empty() || source.SourceID <= 0)
        return 0;
    return SourceBoxHeight(figures, CountCitationLines(source, charactersALine));
}

}  // namespace lore
