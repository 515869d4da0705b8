#include "bibliography/source_info.h"

#include <algorithm>
#include <unordered_map>

#include "base/text.h"

namespace lore {

const CNoteSourceInfo* FindSourceInfo(const std::vector<CNoteSourceInfo>& entries, std::string_view guid) {
    const auto found = std::find_if(entries.begin(), entries.end(),
                                    [&](const CNoteSourceInfo& entry) { return EqualNoCase(entry.key, guid); });
    return found == entries.end() ? nullptr : &*found;
}

std::vector<CNoteSourceInfo> CollectSourceInfo(const std::vector<CNoteSourceInfo>& rows) {
    std::vector<CNoteSourceInfo> entries;
    std::unordered_map<std::string, size_t> byKey;
    for (const CNoteSourceInfo& row : rows) {
        CNoteSourceInfo entry = {row.key, std::string(Trim(row.text))};
        if (entry.key.empty() || entry.text.empty())
            continue;
        const auto [place, isNew] = byKey.try_emplace(ToLower(entry.key), entries.size());
        if (isNew)
            entries.push_back(std::move(entry));
        else
            entries[place->second] = std::move(entry);
    }
    return entries;
}

}  // namespace lore
