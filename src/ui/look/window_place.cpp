#include "ui/look/window_place.h"

#include <QGuiApplication>
#include <QScreen>
#include <QSplitter>
#include <QWidget>
#include <algorithm>

#include "ui/look/qt_text.h"

namespace lore {

namespace {

constexpr int kMostPixels = 100'000;

}  // namespace

std::optional<QRect> StoredWindowPlace(const SettingsStore& store, const std::string& key) {
    const QStringList parts = ToQString(store.Get(kWindowsSection, key).value_or("")).split(',');
    if (parts.size() != 4)
        return std::nullopt;
    const QRect frame(parts[0].toInt(), parts[1].toInt(), parts[2].toInt(), parts[3].toInt());
    const QScreen* const screen = QGuiApplication::screenAt(frame.center());
    if (!screen || frame.isEmpty())
        return std::nullopt;
    return QRect(frame.topLeft(), frame.size().boundedTo(screen->availableGeometry().size()));
}

std::optional<QRect> PlaceOnScreen(const Rect& frame) {
    const auto bounded = [](int32_t edge) { return std::clamp(edge, -kMostPixels, kMostPixels); };
    const QRect place(QPoint(bounded(frame.left), bounded(frame.top)),
                      QPoint(bounded(frame.right), bounded(frame.bottom)) - QPoint(1, 1));
    const QScreen* holding = nullptr;
    for (const QScreen* const screen : QGuiApplication::screens()) {
        const QRect area = screen->geometry();
        const QRect here = place.translated(-area.topLeft());
        const Rect from{here.left(), here.top(), here.right() + 1, here.bottom() + 1};
        if (!VisibleFrame(from, area.width(), area.height()).IsEmpty() && (!holding || area.contains(place.center())))
            holding = screen;
    }
    if (!holding)
        return std::nullopt;
    const QRect room = holding->availableGeometry();
    const QSize size = place.size().boundedTo(room.size());
    if (size == place.size())
        return place;
    return QRect(QPoint(std::clamp(place.left(), room.left(), room.right() + 1 - size.width()),
                        std::clamp(place.top(), room.top(), room.bottom() + 1 - size.height())),
                 size);
}

void StoreWindowPlace(SettingsStore& store, const std::string& key, const QWidget& window) {
    StoreSizes(store, key, {window.pos().x(), window.pos().y(), window.width(), window.height()});
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
