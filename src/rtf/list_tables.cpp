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
    {ListKind::Decimal, 0},     {ListKind::UpperRoman, 1}, {ListKind::LowerRoman, 2}, {ListKind::UpperLetter, 3},
    {ListKind::LowerLetter, 4}, {ListKind::Bullet, 23},    {ListKind::None, 255},
};

ListKind KindOf(int number) {
    for (const KindNumber& entry : kKindNumbers) {
        if (entry.number == number)
            return entry.kind;
    }
    return ListKind::Decimal;
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
    if (word.word == Word::ListEntry) {
        lists_.emplace_back();
        return;
    }
    if (lists_.empty())
        return;
    List& list = lists_.back();
    if (word.word == Word::ListId) {
        list.id = parameter;
        byId_[parameter] = lists_.size() - 1;
        return;
    }
    if (word.word == Word::LevelEntry) {
        ++list.levelCount;
        return;
    }
    if (list.levelCount == 0 || list.levelCount > kLevels)
        return;
    Level& level = list.levels[list.levelCount - 1];
    if (word.word == Word::LevelKind)
        level.kind = KindOf(parameter);
    else if (word.word == Word::LevelStart)
        level.start = static_cast<int16_t>(std::clamp(parameter, 0, int32_t{std::numeric_limits<int16_t>::max()}));
}

void ListTables::ReadOverrideWord(const ControlWord& word, int32_t parameter) {
    if (word.word == Word::ListId)
        overrideId_ = parameter;
    else if (word.word == Word::ListOverride)
        idByNumber_[parameter] = overrideId_;
}

const ListTables::Level* ListTables::Find(int32_t number, size_t level) const {
    const auto id = idByNumber_.find(number);
    if (id == idByNumber_.end())
        return nullptr;
    const auto list = byId_.find(id->second);
    return list == byId_.end() ? nullptr : &lists_[list->second].levels[std::min(level, kLevels - 1)];
}

}  // namespace lore
