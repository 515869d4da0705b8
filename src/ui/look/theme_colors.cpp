#include <algorithm>
#include <cmath>

#include "ui/look/theme.h"

namespace lore {
namespace {

// In the order of ColorRole.
constexpr QRgb kLight[] = {0xfff6f7f9, 0xffffffff, 0xffe6e9ed, 0xffffffff, 0xffeef1f4, 0xffe2e7ec,
                           0xff1b1f24, 0xff545d67, 0xff0b6bcb, 0xffffffff, 0xff0a5cad, 0xffd3e6fa,
                           0xff0b2540, 0xff7b838c, 0xffd0d6dd, 0xfffff1c9, 0xff5c4400};
constexpr QRgb kDark[] = {0xff202327, 0xff17191c, 0xff131517, 0xff24282d, 0xff2f353c, 0xff39414a,
                          0xffe6e9ec, 0xffb0b8c1, 0xff6cb2f7, 0xff0b1a2a, 0xff86bff7, 0xff234a70,
                          0xffffffff, 0xff87919c, 0xff3c434c, 0xff4a3b10, 0xfffbe7b0};

ThemeColors FromTable(const QRgb (&table)[static_cast<size_t>(ColorRole::Count_)]) {
    ThemeColors colors;
    std::transform(std::begin(table), std::end(table), colors.begin(), [](QRgb rgb) { return QColor(rgb); });
    return colors;
}

double Linear(double channel) {
    return channel <= 0.03928 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double Luminance(const QColor& color) {
    return 0.2126 * Linear(color.redF()) + 0.7152 * Linear(color.greenF()) + 0.0722 * Linear(color.blueF());
}

QColor Mix(const QColor& from, const QColor& to, double share) {
    const auto part = [share](double a, double b) { return static_cast<float>(a + (b - a) * share); };
    return QColor::fromRgbF(part(from.redF(), to.redF()), part(from.greenF(), to.greenF()),
                            part(from.blueF(), to.blueF()));
}

}  // namespace

const ThemeColors& LightColors() {
    static const ThemeColors colors = FromTable(kLight);
    return colors;
}

const ThemeColors& DarkColors() {
    static const ThemeColors colors = FromTable(kDark);
    return colors;
}

double ContrastOf(const QColor& a, const QColor& b) {
    const double first = Luminance(a), second = Luminance(b);
    return (std::max(first, second) + 0.05) / (std::min(first, second) + 0.05);
}

QColor Legible(const QColor& text, const QColor& ground, double contrast) {
    if (ContrastOf(text, ground) >= contrast)
        return text;
    const QColor black(Qt::black), white(Qt::white);
    const QColor goal = ContrastOf(black, ground) > ContrastOf(white, ground) ? black : white;
    for (int step = 1; step < 20; ++step) {
        const QColor mixed = Mix(text, goal, step / 20.0);
        if (ContrastOf(mixed, ground) >= contrast)
            return mixed;
    }
    return goal;
}

}  // namespace lore
