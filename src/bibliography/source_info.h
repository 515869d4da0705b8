#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace lore {

/// What a note alone knows of one of its sources.
struct CNoteSourceInfo {
    std::string key;   ///< SourceGUID of the source
    std::string text;  ///< a page, a remark
    bool operator==(const CNoteSourceInfo&) const = default;
};

/// The first entry whose key equals the GUID, ignoring case; null if there is none.
const CNoteSourceInfo* FindSourceInfo(const std::vector<CNoteSourceInfo>& entries, std::string_view guid);

/// What a note stores of the rows that the user edited, in row order: texts are trimmed, a row without a key or a text
/// stores nothing, and of rows with the same key, ignoring case, the last one counts at the place of the first.
std::vector<CNoteSourceInfo> CollectSourceInfo(const std::vector<CNoteSourceInfo>& rows);

}  // namespace lore
