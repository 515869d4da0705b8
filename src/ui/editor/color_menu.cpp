#include "ui/editor/color_menu.h"

#include <QColorDialog>
#include <QPainter>
#include <QPixmap>
#include <limits>
#include <span>

#include "calendar/bar_colors.h"
#include "ui/look/qt_text.h"

namespace lore {
namespace {

struct NamedColor {
    const char* name;
    QRgb color;
};
constexpr NamedColor kTextColors[] = {
    {QT_TRANSLATE_NOOP("lore::ColorMenu", "Black"), 0x000000},
    {QT_TRANSLATE_NOOP("lore::ColorMenu", "Gray"), 0x606060},
    {QT_TRANSLATE_NOOP("lore::ColorMenu", "Dark red"), 0x8b1a1a},
    {QT_TRANSLATE_NOOP("lore::ColorMenu", "Red"), 0xd02020},
    {QT_TRANSLATE_NOOP("lore::ColorMenu", "Orange"), 0xb85c00},
    {QT_TRANSLATE_NOOP("lore::ColorMenu", "Green"), 0x1f7a1f},
    {QT_TRANSLATE_NOOP("lore::ColorMenu", "Teal"), 0x0f766e},
    {QT_TRANSLATE_NOOP("lore::ColorMenu", "Blue"), 0x1d4ed8},
    {QT_TRANSLATE_NOOP("lore::ColorMenu", "Navy"), 0x1e2a6e},
    {QT_TRANSLATE_NOOP("lore::ColorMenu", "Purple"), 0x6d28d9},
};
constexpr NamedColor kPenColors[] = {
    {QT_TRANSLATE_NOOP("lore::ColorMenu", "Yellow"), 0xfff176},
    {QT_TRANSLATE_NOOP("lore::ColorMenu", "Green"), 0xa7f3a0},
    {QT_TRANSLATE_NOOP("lore::ColorMenu", "Blue"), 0xa5d8ff},
    {QT_TRANSLATE_NOOP("lore::ColorMenu", "Pink"), 0xffb3c7},
    {QT_TRANSLATE_NOOP("lore::ColorMenu", "Orange"), 0xffcf99},
    {QT_TRANSLATE_NOOP("lore::ColorMenu", "Violet"), 0xd9c2ff},
    {QT_TRANSLATE_NOOP("lore::ColorMenu", "Gray"), 0xd9d9d9},
};
constexpr int kSwatch = 64;  // pixels, drawn large for sharp screens

QIcon Swatch(const QColor& color) {
    QPixmap picture(kSwatch, kSwatch);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(128, 128, 128), kSwatch / 16.0));
    painter.setBrush(color);
    painter.drawEllipse(QRectF(picture.rect()).adjusted(6, 6, -6, -6));
    return QIcon(picture);
}

int Distance(const QColor& a, const QColor& b) {
    const int red = a.red() - b.red(), green = a.green() - b.green(), blue = a.blue() - b.blue();
    return red * red + green * green + blue * blue;
}

}  // namespace

QString NearestColorName(const QColor& color) {
    int nearest = std::numeric_limits<int>::max();
    QString name;
    const auto compare = [&](const QColor& known, const char* words) {
        const int distance = Distance(color, known);
        if (distance >= nearest)
            return;
        nearest = distance;
        name = ColorMenu::tr(words);
    };
    for (const NamedColor& each : kTextColors)
        compare(QColor(each.color), each.name);
    for (const NamedColor& each : kPenColors)
        compare(QColor(each.color), each.name);
    for (const BarColor& bar : BarColors())
        compare(ToQColor(bar.color), bar.name);
    return name;
}

ColorMenu::ColorMenu(const QString& title, bool forText, QWidget* parent) : QMenu(title, parent) {
    addAction(forText ? tr("&Automatic") : tr("&No highlight"), this, [this] { emit ColorChosen(QColor()); });
    addSeparator();
    const std::span<const NamedColor> colors =
        forText ? std::span<const NamedColor>(kTextColors) : std::span<const NamedColor>(kPenColors);
    for (const NamedColor& each : colors)
        AddColor(tr(each.name), QColor(each.color));
    addSeparator();
    addAction(tr("&Other..."), this, [this, title] {
        const QColor color = QColorDialog::getColor(Qt::black, parentWidget(), title);
        if (color.isValid())
            emit ColorChosen(color);
    });
}

void ColorMenu::AddColor(const QString& name, const QColor& color) {
    addAction(Swatch(color), name, this, [this, color] { emit ColorChosen(color); });
}

}  // namespace lore
