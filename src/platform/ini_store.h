#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "ports/settings_store.h"

class QSettings;

namespace lore {

/// The settings store as an INI file. Reading never creates or changes the file.
class IniStore : public SettingsStore {
public:
    explicit IniStore(const std::filesystem::path& file);
    ~IniStore() override;

    std::optional<std::string> Get(const std::string& section, const std::string& key) const override;
    void Set(const std::string& section, const std::string& key, const std::string& value) override;
    bool Flush() override;

private:
    std::unique_ptr<QSettings> settings_;
};

}  // namespace lore
