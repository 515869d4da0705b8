#pragma once

#include <QColor>
#include <QString>
#include <filesystem>
#include <string>
#include <string_view>

#include "base/rgb.h"

namespace lore {

/// The core's bytes as a text for the screen, and back. Nothing is lost either way.
QString ToQString(std::string_view bytes);
std::string FromQString(const QString& text);

/// A path as the system gives it, for the screen and for Qt.
QString PathToQString(const std::filesystem::path& path);

/// A text that counts, "3 hit(s)", as one says it.
inline QString WithPlural(QString text, qsizetype count) {
    return text.replace(QStringLiteral("(s)"), count == 1 ? QString() : QStringLiteral("s"));
}

inline QColor ToQColor(Rgb color) {
    return QColor(static_cast<int>(RedOf(color)), static_cast<int>(GreenOf(color)), static_cast<int>(BlueOf(color)));
}

}  // namespace lore
