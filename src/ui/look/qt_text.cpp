#include "ui/look/qt_text.h"

#include <QFile>

#include "base/text.h"

namespace lore {

QString ToQString(std::string_view bytes) {
    const std::string utf8 = ToUtf8(bytes);
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

std::string FromQString(const QString& text) {
    return FromUtf8(text.toStdString());
}

QString PathToQString(const std::filesystem::path& path) {
    return QFile::decodeName(QByteArray::fromStdString(path.string()));
}

}  // namespace lore
