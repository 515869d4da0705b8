#pragma once

#include <string>

namespace lore {

/// Makes new GUID texts, 38 characters with braces. Safe to call from several threads.
class GuidSource {
public:
    virtual ~GuidSource() = default;
    virtual std::string NewGuid() = 0;
};

/// For readers that tell records apart by their guids: one that has none shows as such, and gets none made up.
class NoGuids : public GuidSource {
public:
    std::string NewGuid() override { return {}; }
};

}  // namespace lore
