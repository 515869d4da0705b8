#include "rtf/list_tables.h"

#include <algorithm>
#include <limits>

namespace lore {

namespace {

struct KindNumber {
    ListKind kind;
    int number;
};
constexpr KindNumber kKindNumbers[] = {
    {ListKind::kDecimal, 0},     {ListKind::kUpperRoman, 1}, {ListKind::kLowerRoman, 2}, {ListKind::kUpperLetter, 3},
    {ListKind::kLowerLetter, 4}, {ListKind::kBullet, 23},    {ListKind::kNone, 255},
};

ListKind KindOf(int number) {
    for (const KindNumber& entry : kKindNumbers) {
        if (entry.number == number)
            return entry.kind;
    }
    return ListKind::kDecimal;
}

}  // namespace

int LevelKindNumber(ListKind kind) {
    for (const KindNumber& entry : kKindNumbers) {
        if (entry.kind == kind)
            return entry.number;
    }
    return 0;
}

void ListTables::ReadListWord(const ControlWord& word, int32_t parameter) {
    if (word.word == Word::kListEntry) {
        lists_.emplace_back();
        return;
    }
    if (lists_.empty())
        return;
    List& list = lists_.back();
    if (word.word == Word::kListId) {
        list.id = parameter;
        by_id_[parameter] = lists_.size() - 1;
        return;
    }
    if (word.word == Word::kLevelEntry) {
        ++list.level_count;
        return;
    }
    if (list.level_count == 0 || list.level_count > kLevels)
        return;
    Level& level = list.levels[list.level_count - 1];
    if (word.word == Word::kLevelKind)
        level.kind = KindOf(parameter);
    else if (word.word == Word::kLevelStart)
        level.start = static_cast<int16_t>(std::clamp(parameter, 0, int32_t{std::numeric_limits<int16_t>::max()}));
}

void ListTables::ReadOverrideWord(const ControlWord& word, int32_t parameter) {
    if (word.word == Word::kListId)
        override_id_ = parameter;
    else if (word.word == Word::kListOverride)
        id_by_number_[parameter] = override_id_;
}

const ListTables::Level* ListTables::Find(int32_t number, size_t level) const {
    const auto id = id_by_number_.find(number);
    if (id == id_by_number_.end())
        return nullptr;
    const auto list = by_id_.find(id->second);
    return list == by_id_.end() ? nullptr : &lists_[list->second].levels[std::min(level, kLevels - 1)];
}

}  // namespace lore
