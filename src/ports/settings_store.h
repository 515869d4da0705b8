#pragma once

#include <optional>
#include <string>

namespace lore {

/// Named values in sections, kept per user. A missing value is nothing; what was set stands on disk after Flush.
class SettingsStore {
public:
    virtual ~SettingsStore() = default;
    virtual std::optional<std::string> Get(const std::string& section, const std::string& key) const = 0;
    virtual void Set(const std::string& section, const std::string& key, const std::string& value) = 0;
    /// False if the store could not be written.
    virtual bool Flush() = 0;
};

}  // namespace lore
