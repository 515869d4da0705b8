#include "printsave/stored_paper.h"

#include <QStringList>
#include <algorithm>
#include <array>
#include <cmath>

#include "ui/look/qt_text.h"
#include "ui/look/window_place.h"

namespace lore {

namespace {

// In the section of the windows: the upright sheet, its direction and the margins from the left on clockwise, such as
// "210,297,portrait,20,20,20,20", in millimetres.
constexpr char kPaper[] = "PrintSavePaper";
constexpr char kPortrait[] = "portrait", kLandscape[] = "landscape";
constexpr qsizetype kParts = 7, kDirection = 2;
constexpr double kSmallestSheet = 30, kLargestSheet = 2000;

}  // namespace

std::optional<QPageLayout> StoredPaper(const SettingsStore& store) {
    QStringList parts = ToQString(store.Get(kWindowsSection, kPaper).value_or("")).split(',');
    if (parts.size() != kParts)
        return std::nullopt;
    const QString direction = parts.takeAt(kDirection);
    if (direction != QLatin1String(kPortrait) && direction != QLatin1String(kLandscape))
        return std::nullopt;
    std::array<double, kParts - 1> sizes{};
    for (size_t i = 0; i < sizes.size(); ++i) {
        bool isNumber = false;
        sizes[i] = parts[static_cast<qsizetype>(i)].toDouble(&isNumber);
        if (!isNumber || !std::isfinite(sizes[i]) || sizes[i] < (i < 2 ? kSmallestSheet : 0) ||
            sizes[i] > kLargestSheet)
            return std::nullopt;
    }
    QPageLayout paper(QPageSize(QSizeF(sizes[0], sizes[1]), QPageSize::Millimeter),
                      direction == QLatin1String(kPortrait) ? QPageLayout::Portrait : QPageLayout::Landscape,
                      QMarginsF(sizes[2], sizes[3], sizes[4], sizes[5]), QPageLayout::Millimeter);
    return HasRoom(paper) ? std::optional(paper) : std::nullopt;
}

bool HasRoom(const QPageLayout& paper) {
    const QSizeF room = paper.paintRect(QPageLayout::Millimeter).size();
    return paper.isValid() && std::min(room.width(), room.height()) >= kSmallestRoom;
}

void StorePaper(SettingsStore& store, const QPageLayout& paper) {
    const QSizeF sheet = paper.pageSize().size(QPageSize::Millimeter);
    const QMarginsF margins = paper.margins(QPageLayout::Millimeter);
    QStringList parts;
    for (const double size :
         {sheet.width(), sheet.height(), margins.left(), margins.top(), margins.right(), margins.bottom()})
        parts.append(QString::number(size, 'g', 6));
    parts.insert(kDirection, QLatin1String(paper.orientation() == QPageLayout::Landscape ? kLandscape : kPortrait));
    store.Set(kWindowsSection, kPaper, FromQString(parts.join(',')));
}

}  // namespace lore
