#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "base/file_result.h"
#include "ports/settings_store.h"

class QSettings;
class QString;

namespace lore {

/// The settings store as an INI file. Reading never creates or changes the file. What was set waits for Flush, which
/// puts it into what the file holds by then and replaces the file as a whole. What other processes wrote shows after a
/// Flush. A line that isn't UTF-8 is Windows-1252; a byte order mark, and lines that begin with "#" or ";", are passed
/// over, and go with the next write. A file that could not be read, or isn't one of settings, is never written.
class IniStore : public SettingsStore {
public:
    explicit IniStore(const std::filesystem::path& file);
    ~IniStore() override;

    std::optional<std::string> Get(const std::string& section, const std::string& key) const override;
    void Set(const std::string& section, const std::string& key, const std::string& value) override;
    bool Flush() override;
    StoreFailure Failure() const override { return failure_; }
    /// Why the file could not be read, if it is there and could not, or why no file can have that path.
    const std::optional<StoreFailure>& Unread() const { return unread_; }

private:
    void Open(const std::string& bytes);
    bool WithChanges(const QString& folderName, std::string& bytes);
    bool ChangeCopy(const std::filesystem::path& copy, std::string_view before);
    bool Fail(const std::filesystem::path& path, const std::string& reason);
    bool Check(const std::filesystem::path& path, const FileResult& result);

    std::filesystem::path file_;
    std::unique_ptr<QSettings> settings_;                                 // none if the file can't be read
    std::map<std::pair<std::string, std::string>, std::string> changes_;  // by section and key, since the last Flush
    StoreFailure failure_;
    std::optional<StoreFailure> unread_;
};

}  // namespace lore
