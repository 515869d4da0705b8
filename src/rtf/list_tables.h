#pragma once

#include <array>
#include <cstdint>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "rtf/formats.h"
#include "rtf/tokenizer.h"

namespace lore {

/// The list tables of a file: which marks and first numbers the levels of its lists have.
class ListTables {
public:
    struct Level {
        ListKind kind = ListKind::Decimal;
        int16_t start = 1;
    };
    static constexpr size_t kLevels = 9;

    /// A control word within the table of lists, or within the table of overrides, that gives a list its number.
    void ReadListWord(const ControlWord& word, int32_t parameter);
    void ReadOverrideWord(const ControlWord& word, int32_t parameter);

    /// The level of the list that paragraphs name by `number` (\ls); null when the tables don't know it.
    const Level* Find(int32_t number, size_t level) const;

private:
    struct List {
        int32_t id = 0;
        size_t levelCount = 0;
        std::array<Level, kLevels> levels;
    };

    std::vector<List> lists_;
    std::unordered_map<int32_t, size_t> byId_;
    std::unordered_map<int32_t, int32_t> idByNumber_;
    int32_t overrideId_ = 0;
};

/// The level number of a list kind in the file (\levelnfc).
int LevelKindNumber(ListKind kind);

}  // namespace lore
