#pragma once

#include <map>
#include <optional>
#include <string>
#include <utility>

#include "ports/settings_store.h"

namespace lore {

/// A settings store that lives in memory.
class MemoryStore : public SettingsStore {
public:
    std::optional<std::string> Get(const std::string& section, const std::string& key) const override {
        const auto found = values.find({section, key});
        return found == values.end() ? std::nullopt : std::optional(found->second);
    }
    void Set(const std::string& section, const std::string& key, const std::string& value) override {
        values[{section, key}] = value;
    }
    bool Flush() override { return !isFull; }
    StoreFailure Failure() const override { return {"/full/settings.ini", "No space left on device"}; }

    bool isFull = false;  ///< it can't be written
    std::map<std::pair<std::string, std::string>, std::string> values;
};

}  // namespace lore
