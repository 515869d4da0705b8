#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "base/text.h"
#include "bibliography/source_info.h"

namespace lore {

/// The first entry of each key, by the lower-cased key: for a note with many sources, where FindSourceInfo for each
/// would take as long as their square.
inline std::unordered_map<std::string, const CNoteSourceInfo*> InfoByKey(const std::vector<CNoteSourceInfo>& entries) {
    std::unordered_map<std::string, const CNoteSourceInfo*> byKey;
    for (const CNoteSourceInfo& entry : entries)
        byKey.emplace(ToLower(entry.key), &entry);
    return byKey;
}

}  // namespace lore
