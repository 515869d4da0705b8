#pragma once

#include <cstdint>
#include <cstdio>
#include <vector>

#include "cli/json_records.h"
#include "cli/session.h"
#include "cli/shown_text.h"

namespace lore {

/// Prints a list of records, as JSON or a line each.
template <typename List, typename ToJson, typename ToLine>
void PrintRecords(const Session& session, const List& list, ToJson toJson, ToLine toLine) {
    Json json = Json::array();
    for (const auto& record : list) {
        if (session.Json())
            json.push_back(toJson(record));
        else
            std::printf("%s\n", Shown(toLine(record)).c_str());
    }
    if (session.Json())
        PrintJson(json);
}

/// Prints ids, as JSON or one a line.
inline void PrintIds(const Session& session, const std::vector<int32_t>& ids) {
    if (session.Json())
        return PrintJson(Json(ids));
    for (const int32_t id : ids)
        std::printf("%d\n", id);
}

}  // namespace lore
