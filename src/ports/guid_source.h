#pragma once

#include <string>

namespace lore {

/// Makes new GUID texts, 38 characters with braces. Safe to call from several threads.
class GuidSource {
public:
    virtual ~GuidSource() = default;
    virtual std::string NewGuid() = 0;
};

}  // namespace lore
