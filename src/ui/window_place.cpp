#include "ui/window_place.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

#include "ui/qt_text.h"

namespace lore {

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

void StoreWindowPlace(SettingsStore& store, const std::string& key, const QWidget& window) {
    const QString place = QStringLiteral("%1,%2,%3,%4")
                              .arg(window.pos().x())
                              .arg(window.pos().y())
                              .arg(window.width())
                              .arg(window.height());
    store.Set(kWindowsSection, key, FromQString(place));
}

}  // namespace lore
