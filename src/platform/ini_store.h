#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <utility>

#include "ports/settings_store.h"

class QSettings;

namespace lore {

/// The settings store as an INI file. Reading never creates or changes the file. What was set waits for Flush, which
/// puts it into what the file holds by then and replaces the file as a whole. What other processes wrote shows behind a
/// Flush.
class IniStore : public SettingsStore {
public:
    explicit IniStore(const std::filesystem::path& file);
    ~IniStore() override;

    std::optional<std::string> Get(const std::string& section, const std::string& key) const override;
    void Set(const std::string& section, const std::string& key, const std::string& value) override;
    bool Flush() override;

private:
    bool WithChanges(std::string& bytes) const;

    std::filesystem::path file_;
    std::unique_ptr<QSettings> settings_;
    std::map<std::pair<std::string, std::string>, std::string> changes_;  // by section and key, since the last Flush
};

}  // namespace lore
