#include "ui/board/card_block.h"

#include <QPaintDevice>
#include <algorithm>
#include <cmath>

#include "ui/look/theme.h"

namespace lore {

QFont CardContext::Font(const QString& face, double pixels) const {
    QFont font(face);
    const int dotsPerInch = device ? device->logicalDpiY() : 96;
    font.setPointSizeF(std::max(1.0, pixels * 72.0 / dotsPerInch));
    return font;
}

QFont CardContext::SmallFont() const {
    QFont font = theme.Font(TextSize::Small);
    if (font.pointSizeF() > 0)
        font.setPointSizeF(font.pointSizeF() * Zoom());
    else
        font.setPixelSize(std::max(1, static_cast<int>(std::lround(font.pixelSize() * Zoom()))));
    return font;
}

}  // namespace lore
