#include "platform/ini_store.h"

#include <QSettings>
#include <QStringList>
#include <QTemporaryDir>
#include <new>
#include <unistd.h>

#include "base/file_io.h"
#include "base/text.h"

namespace lore {

namespace {

QString KeyOf(const std::string& section, const std::string& key) {
    return QString::fromStdString(section) + '/' + QString::fromStdString(key);
}

}  // namespace

IniStore::IniStore(const std::filesystem::path& file)
    : file_(file),
      settings_(std::make_unique<QSettings>(QString::fromStdString(file.string()), QSettings::IniFormat)) {}

IniStore::~IniStore() = default;

std::optional<std::string> IniStore::Get(const std::string& section, const std::string& key) const {
    if (const auto changed = changes_.find({section, key}); changed != changes_.end())
        return changed->second;
    const QVariant value = settings_->value(KeyOf(section, key));
    if (!value.isValid())
        return std::nullopt;
    // A text with commas that someone wrote by hand without quotes comes as a list.
    const QString text = value.typeId() == QMetaType::QStringList ? value.toStringList().join(',') : value.toString();
    return FromUtf8(text.toStdString());
}

void IniStore::Set(const std::string& section, const std::string& key, const std::string& value) {
    if (Get(section, key) != value)
        changes_[{section, key}] = value;
}

/// The form of the file is the library's own, so a copy elsewhere takes the changes.
bool IniStore::WithChanges(std::string& bytes) const {
    const QTemporaryDir folder;
    const QString copy = folder.filePath("settings.ini");
    const std::string path = copy.toStdString(), lock = path + ".lock";
    const FileResult read = ReadFile(file_, bytes);
    if (!folder.isValid() || (!read.Ok() && !read.Missing()) || (read.Ok() && !WriteFileAtomically(path, bytes).Ok()))
        return false;
    {
        QSettings settings(copy, QSettings::IniFormat);
        for (const auto& [place, value] : changes_)
            settings.setValue(KeyOf(place.first, place.second), QString::fromStdString(ToUtf8(value)));
        try {
            settings.sync();
        } catch (const std::bad_alloc&) {
            // Its lock has been left behind, and its own end would wait for that without end.
            ::unlink(lock.c_str());
            throw;
        }
        if (settings.status() != QSettings::NoError)
            return false;
    }
    return ReadFile(path, bytes).Ok();
}

bool IniStore::Flush() {
    if (changes_.empty()) {
        settings_->sync();
        return true;
    }
    std::error_code ignored;
    std::filesystem::create_directories(file_.parent_path(), ignored);
    std::string bytes;
    if (!WithChanges(bytes) || !WriteFileAtomically(file_, bytes).Ok())
        return false;
    changes_.clear();
    settings_->sync();
    return true;
}

}  // namespace lore
