#include "platform/ini_store.h"

#include <QDir>
#include <QFile>
#include <QSettings>
#include <QStringList>
#include <QTemporaryDir>
#include <algorithm>
#include <new>
#include <string_view>
#include <unistd.h>

#include "base/file_descriptor.h"
#include "base/file_io.h"
#include "base/text.h"

namespace lore {

namespace {

constexpr char kNoCopy[] = "a copy of the settings could not be written there";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr char kNoText[] = "it isn't UTF-8 text; store it as such, or put a copy of it back";
constexpr char kUnfit[] = "it isn't in the form of a settings file; put a copy of it back";

QString KeyOf(const std::string& section, const std::string& key) {
    return QString::fromStdString(section) + '/' + QString::fromStdString(key);
}

QString NameOf(const std::filesystem::path& path) {
    return QFile::decodeName(QByteArray::fromStdString(path.string()));
}

QString TemporaryFolderName() {
    return QDir::tempPath() + "/lorebinder-XXXXXX";
}

QString TextOf(const std::string& value) {
    return QString::fromStdString(ToUtf8(value));
}

/// A text with commas that someone wrote by hand without quotes comes as a list.
QString TextOf(const QVariant& value) {
    const bool isList = value.typeId() == QMetaType::QStringList;
    return isList ? value.toStringList().join(',') : value.toString();
}

std::string_view WithoutMark(std::string_view bytes) {
    return bytes.substr(bytes.starts_with(kByteOrderMark) ? kByteOrderMark.size() : 0);
}

/// Takes a line off the front of a text that isn't empty, with its end.
std::string_view TakeWholeLine(std::string_view& text) {
    const std::string_view line = text.substr(0, std::min(text.find('\n'), text.size() - 1) + 1);
    text.remove_prefix(line.size());
    return line;
}

bool IsRemark(std::string_view line) {
    return Trim(line).starts_with('#');
}

/// What the library reads whole: it would end a text at a byte that is no UTF-8, a byte order mark spoils what it
/// writes, and of remarks it knows only those after a ";".
std::string AsLibraryReads(std::string_view bytes) {
    bytes = WithoutMark(bytes);
    if (IsValidUtf8(bytes) && bytes.find('#') == bytes.npos)
        return std::string(bytes);
    std::string text;
    while (!bytes.empty())
        if (const std::string_view line = TakeWholeLine(bytes); !IsRemark(line))
            text += ToUtf8(line);
    return text;
}

/// Why the library can't read a text, by the first line that doesn't fit.
std::string ReasonOfUnfit(std::string_view bytes) {
    std::string_view text = WithoutMark(bytes);
    for (int number = 1; !text.empty(); ++number) {
        const std::string_view line = Trim(TakeWholeLine(text));
        const bool fits = line.empty() || line.starts_with(';') || IsRemark(line) ||
                          line.find(line.starts_with('[') ? ']' : '=') != line.npos;
        if (!fits)
            return "line " + std::to_string(number) +
                   " is neither \"[Section]\" nor \"Name=value\"; mend it or take it out";
    }
    return kUnfit;
}

}  // namespace

IniStore::IniStore(const std::filesystem::path& file) : file_(file) {
    std::string bytes;
    const QString name = NameOf(file);
    const FileResult read = ReadFile(file, bytes);
    if (QFile::encodeName(name).toStdString() != file.string())
        unread_ = StoreFailure{file.string(), "its path isn't valid UTF-8; give it another one"};
    else if (!read.Ok() && !read.Missing())
        unread_ = StoreFailure{PlaceOfFault(file, read).string(), read.Reason()};
    else
        Open(bytes);
    if (!settings_)
        return;
    settings_->allKeys();  // the library looks at the lines of a section only when it is asked for them
    if (bytes.find('\0') != bytes.npos)
        unread_ = StoreFailure{file.string(), kNoText};
    else if (settings_->status() == QSettings::FormatError)
        unread_ = StoreFailure{file.string(), ReasonOfUnfit(bytes)};
}

IniStore::~IniStore() = default;

/// Reads the settings anew, which the file holds as `bytes`. What the library would not read whole comes to it by a
/// copy, which it needs no longer then.
void IniStore::Open(const std::string& bytes) {
    if (const std::string text = AsLibraryReads(bytes); text != bytes) {
        const QTemporaryDir folder(TemporaryFolderName());
        const QString copy = folder.filePath("settings.ini");
        if (folder.isValid() && WriteFileAtomically(QFile::encodeName(copy).toStdString(), text).Ok()) {
            settings_ = std::make_unique<QSettings>(copy, QSettings::IniFormat);
            return;
        }
        // A text that ends at the first odd byte must not be stored again.
        unread_ = StoreFailure{file_.string(), "a copy of it could not be made in the temporary folder"};
    }
    settings_ = std::make_unique<QSettings>(NameOf(file_), QSettings::IniFormat);
}

std::optional<std::string> IniStore::Get(const std::string& section, const std::string& key) const {
    if (const auto changed = changes_.find({section, key}); changed != changes_.end())
        return changed->second;
    const QVariant value = settings_ ? settings_->value(KeyOf(section, key)) : QVariant();
    return value.isValid() ? std::optional(FromUtf8(TextOf(value).toStdString())) : std::nullopt;
}

void IniStore::Set(const std::string& section, const std::string& key, const std::string& value) {
    if (Get(section, key) != value)
        changes_[{section, key}] = value;
}

bool IniStore::Fail(const std::filesystem::path& path, const std::string& reason) {
    failure_ = {path.string(), reason};
    return false;
}

bool IniStore::Check(const std::filesystem::path& path, const FileResult& result) {
    return result.Ok() || Fail(PlaceOfFault(path, result), result.Reason());
}

/// Puts the changes into a copy of the settings, which hold `before`. The library doesn't tell of each write that
/// fails, so what it wrote is read again, under a name of which it remembers nothing.
bool IniStore::ChangeCopy(const std::filesystem::path& copy, std::string_view before) {
    const std::filesystem::path lock = copy.string() + ".lock", written = copy.string() + ".written";
    qsizetype keys = 0;
    {
        QSettings settings(NameOf(copy), QSettings::IniFormat);
        for (const auto& [place, value] : changes_)
            settings.setValue(KeyOf(place.first, place.second), TextOf(value));
        keys = settings.allKeys().size();
        try {
            settings.sync();
        } catch (const std::bad_alloc&) {
            // Its lock has been left behind, and its own end would wait for that without end.
            ::unlink(lock.c_str());
            throw;
        }
        if (settings.status() == QSettings::FormatError)
            return Fail(file_, ReasonOfUnfit(before));
        if (settings.status() != QSettings::NoError)
            return Fail(copy, kNoCopy);
    }
    std::error_code error;
    std::filesystem::rename(copy, written, error);
    const QSettings settings(NameOf(written), QSettings::IniFormat);
    bool isWhole = !error && settings.allKeys().size() == keys;
    for (const auto& [place, value] : changes_)
        isWhole = isWhole && TextOf(settings.value(KeyOf(place.first, place.second))) == TextOf(value);
    std::filesystem::rename(written, copy, error);
    return isWhole || Fail(copy, kNoCopy);
}

/// The form of the file is the library's own, so a copy elsewhere takes the changes: in a folder of that name, which
/// goes again.
bool IniStore::WithChanges(const QString& folderName, std::string& bytes) {
    const QTemporaryDir folder(folderName);
    if (!folder.isValid())
        return Fail(QFile::encodeName(folderName).toStdString(), folder.errorString().toStdString());
    const std::filesystem::path copy = QFile::encodeName(folder.filePath("settings.ini")).toStdString();
    const FileResult read = ReadFile(file_, bytes);
    return (read.Missing() || Check(file_, read)) &&
           (!read.Ok() || Check(copy, WriteFileAtomically(copy, AsLibraryReads(bytes)))) && ChangeCopy(copy, bytes) &&
           Check(copy, ReadFile(copy, bytes));
}

bool IniStore::Flush() {
    if (unread_)
        return Fail(unread_->path, unread_->reason);
    std::string bytes;
    if (changes_.empty()) {
        if (const FileResult read = ReadFile(file_, bytes); read.Ok() || read.Missing())
            Open(bytes);
        return true;
    }
    const std::filesystem::path folder = file_.parent_path();
    if (!Check(folder, MakeFolders(folder)))
        return false;
    // Beside the settings there may be room where the temporary files have none.
    if (!WithChanges(TemporaryFolderName(), bytes) && !WithChanges(NameOf(folder / ".lorebinder-XXXXXX"), bytes))
        return false;
    if (!Check(file_, WriteFileAtomically(file_, bytes)))
        return false;
    changes_.clear();
    Open(bytes);
    return true;
}

}  // namespace lore
