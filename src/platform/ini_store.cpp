#include "platform/ini_store.h"

#include <QSettings>
#include <QStringList>

#include "base/text.h"

namespace lore {

namespace {

QString KeyOf(const std::string& section, const std::string& key) {
    return QString::fromStdString(section) + '/' + QString::fromStdString(key);
}

}  // namespace

IniStore::IniStore(const std::filesystem::path& file)
    : settings_(std::make_unique<QSettings>(QString::fromStdString(file.string()), QSettings::IniFormat)) {}

IniStore::~IniStore() = default;

std::optional<std::string> IniStore::Get(const std::string& section, const std::string& key) const {
    const QVariant value = settings_->value(KeyOf(section, key));
    if (!value.isValid())
        return std::nullopt;
    // A text with commas that someone wrote by hand without quotes comes as a list.
    const QString text = value.typeId() == QMetaType::QStringList ? value.toStringList().join(',') : value.toString();
    return FromUtf8(text.toStdString());
}

void IniStore::Set(const std::string& section, const std::string& key, const std::string& value) {
    settings_->setValue(KeyOf(section, key), QString::fromStdString(ToUtf8(value)));
}

bool IniStore::Flush() {
    settings_->sync();
    return settings_->status() == QSettings::NoError;
}

}  // namespace lore
