#include "ui/look/window_place.h"

#include <QGuiApplication>
#include <QScreen>
#include <QSplitter>
#include <QWidget>
#include <algorithm>

#include "ui/look/qt_text.h"
#include "ui/look/theme_look.h"

namespace lore {

namespace {

constexpr int kMostPixels = 100'000;

QRect ToQRect(const Rect& place) {
    const auto bounded = [](int32_t edge) { return std::clamp(edge, -kMostPixels, kMostPixels); };
    return {QPoint(bounded(place.left), bounded(place.top)),
            QPoint(bounded(place.right), bounded(place.bottom)) - QPoint(1, 1)};
}

/// Whether a screen shows enough of a window to take hold of it.
bool Shows(const QRect& area, const QRect& place) {
    constexpr int kLeast = 10;
    const QRect seen = area & place;
    return place.isValid() && seen.width() >= kLeast && seen.height() >= kLeast;
}

/// The screen that shows enough of a window, the one with its middle before others.
const QScreen* ScreenOf(const QRect& place) {
    const QScreen* holding = nullptr;
    for (const QScreen* const screen : QGuiApplication::screens()) {
        const QRect area = screen->geometry();
        if (Shows(area, place) && (!holding || area.contains(place.center())))
            holding = screen;
    }
    return holding;
}

QRect MovedInto(const QRect& room, const QRect& place) {
    const QSize size = place.size().boundedTo(room.size());
    return {QPoint(std::clamp(place.left(), room.left(), room.right() + 1 - size.width()),
                   std::clamp(place.top(), room.top(), room.bottom() + 1 - size.height())),
            size};
}

QRect RoomOn(const QScreen& screen, const QWidget& window) {
    // A line of text with room around it stands in for a frame that isn't known.
    const QMargins likely(kSpace, window.fontMetrics().height() + kSpace * 2, kSpace, kSpace * 2);
    const QRect frame = window.frameGeometry(), inside = window.geometry();
    const QMargins known(inside.left() - frame.left(), inside.top() - frame.top(), frame.right() - inside.right(),
                         frame.bottom() - inside.bottom());
    return screen.availableGeometry().marginsRemoved(window.isVisible() ? known | likely : likely);
}

void PutInto(QWidget& window, const QRect& room, const QRect& place) {
    if (const QRect fitting = MovedInto(room, place); fitting != window.geometry())
        window.setGeometry(fitting);
}

}  // namespace

Rect PlaceToKeep(const QWidget& window) {
    const QRect place = window.normalGeometry();
    return {place.left(), place.top(), place.left() + place.width(), place.top() + place.height()};
}

std::optional<QRect> PlaceOnScreen(const Rect& frame) {
    const QRect place = ToQRect(frame);
    const QScreen* const screen = ScreenOf(place);
    if (!screen)
        return std::nullopt;
    const QRect room = screen->availableGeometry();
    return place.size().boundedTo(room.size()) == place.size() ? place : MovedInto(room, place);
}

QRect RoomForWindow(const QWidget& window) {
    // The window itself learns later which screen it has been put on.
    const QScreen* const screen = window.testAttribute(Qt::WA_Moved) ? ScreenOf(window.geometry()) : nullptr;
    return RoomOn(screen ? *screen : *window.screen(), window);
}

bool PutWindow(QWidget& window, const Rect& place) {
    const QRect wanted = ToQRect(place);
    const QScreen* const screen = ScreenOf(wanted);
    if (screen)
        PutInto(window, RoomOn(*screen, window), wanted);
    return screen != nullptr;
}

void FitWindow(QWidget& window) {
    if (!window.isMaximized())
        PutInto(window, RoomForWindow(window), window.geometry());
}

bool RestoreWindowPlace(QWidget& window, const SettingsStore& store, const std::string& key) {
    const QStringList parts = ToQString(store.Get(kWindowsSection, key).value_or("")).split(',');
    if (parts.size() != 4)
        return false;
    const auto part = [&parts](int index) { return std::clamp(parts[index].toInt(), -kMostPixels, kMostPixels); };
    return PutWindow(window, {part(0), part(1), part(0) + part(2), part(1) + part(3)});
}

void StoreWindowPlace(SettingsStore& store, const std::string& key, const QWidget& window) {
    const Rect place = PlaceToKeep(window);
    StoreSizes(store, key, {place.left, place.top, place.right - place.left, place.bottom - place.top});
}

std::optional<QList<int>> StoredSizes(const SettingsStore& store, const std::string& key, int count) {
    const QStringList parts = ToQString(store.Get(kWindowsSection, key).value_or("")).split(',');
    if (parts.size() != count)
        return std::nullopt;
    QList<int> sizes;
    for (const QString& part : parts) {
        sizes.append(part.toInt());
        if (sizes.last() <= 0 || sizes.last() > kMostPixels)
            return std::nullopt;
    }
    return sizes;
}

void StoreSizes(SettingsStore& store, const std::string& key, const QList<int>& sizes) {
    QStringList parts;
    for (const int size : sizes)
        parts.append(QString::number(size));
    store.Set(kWindowsSection, key, FromQString(parts.join(',')));
}

bool KeepSplit(QSplitter& split, SettingsStore& store, const std::string& key) {
    const std::optional<QList<int>> sizes = StoredSizes(store, key, split.count());
    if (sizes)
        split.setSizes(*sizes);
    QObject::connect(&split, &QSplitter::splitterMoved, &split,
                     [&split, &store, key] { StoreSizes(store, key, split.sizes()); });
    return sizes.has_value();
}

}  // namespace lore
