#pragma once

#include <optional>
#include <string>

namespace lore {

/// What could not be written, and why.
struct StoreFailure {
    std::string path;
    std::string reason;
};

/// Named values in sections, kept per user. A missing value is nothing; what was set stands on disk after Flush.
class SettingsStore {
public:
    virtual ~SettingsStore() = default;
    virtual std::optional<std::string> Get(const std::string& section, const std::string& key) const = 0;
    virtual void Set(const std::string& section, const std::string& key, const std::string& value) = 0;
    /// False if the store could not be written.
    virtual bool Flush() = 0;
    /// Of the last Flush that gave false.
    virtual StoreFailure Failure() const { return {}; }
};

}  // namespace lore
