#include "sources/custom_type_steps.h"

#include <algorithm>
#include <string>

namespace lore {

namespace {

using Definitions = std::vector<CCustomSourceType>;

const CCustomSourceField* FieldOf(const CCustomSourceType& type, int32_t listNumber) {
    const auto found = std::find_if(type.fields.begin(), type.fields.end(),
                                    [listNumber](const CCustomSourceField& f) { return f.listNumber == listNumber; });
    return found == type.fields.end() ? nullptr : &*found;
}

CCustomSourceType Numbered(CCustomSourceType type) {
    for (size_t i = 0; i < type.fields.size(); ++i)
        type.fields[i].listNumber = static_cast<int32_t>(i);
    return type;
}

/// The type without the fields that `edited` has no more.
CCustomSourceType WithoutRemoved(CCustomSourceType type, const CCustomSourceType& edited) {
    std::erase_if(type.fields, [&](const CCustomSourceField& field) { return !FieldOf(edited, field.listNumber); });
    return type;
}

/// The type with the names of `edited`, each field where it was.
CCustomSourceType Renamed(CCustomSourceType type, const CCustomSourceType& edited) {
    for (CCustomSourceField& field : type.fields) {
        if (const CCustomSourceField* const now = FieldOf(edited, field.listNumber))
            field.name = now->name;
    }
    return type;
}

/// For each field of `edited`, whether it keeps its value when a source takes the steps and then `edited`.
std::vector<bool> KeptValues(CCustomSourceType copy, const Definitions& steps, const CCustomSourceType& edited) {
    for (CCustomSourceField& field : copy.fields)
        field.value = std::to_string(field.listNumber);
    for (const CCustomSourceType& step : steps)
        copy = MergeCustomType(step, copy);
    std::vector<bool> kept;
    for (const CCustomSourceField& field : MergeCustomType(edited, copy).fields)
        kept.push_back(field.value == std::to_string(field.listNumber));
    return kept;
}

bool KeepsMore(const std::vector<bool>& kept, const std::vector<bool>& other) {
    return kept != other && std::equal(kept.begin(), kept.end(), other.begin(), [](bool a, bool b) { return a || !b; });
}

/// What is removed goes first, so that its name and its place are free; then the names change, and at last the places.
Definitions StepsBetween(const CCustomSourceType& stored, const CCustomSourceType& edited) {
    const CCustomSourceType before = Numbered(stored), without = WithoutRemoved(before, edited);
    Definitions steps = {Renamed(without, edited)};
    if (without.fields.size() < before.fields.size())
        steps.insert(steps.begin(), without);
    return KeepsMore(KeptValues(before, steps, edited), KeptValues(before, {}, edited)) ? steps : Definitions();
}

}  // namespace

std::vector<CustomTypeList> ListsBetween(const CustomTypeList& stored, const std::vector<CCustomSourceType>& edited) {
    std::vector<Definitions> definitions;
    size_t most = 1;
    for (const CCustomSourceType& type : stored) {
        const auto now = std::find_if(edited.begin(), edited.end(),
                                      [&](const CCustomSourceType& other) { return other.GUID == type.GUID; });
        Definitions& own = definitions.emplace_back(Definitions{type});
        for (CCustomSourceType& step : now == edited.end() ? Definitions() : StepsBetween(type, *now))
            own.push_back(std::move(step));
        most = std::max(most, own.size());
    }
    std::vector<CustomTypeList> lists;
    for (size_t step = 1; step < most; ++step) {
        // From the stored list, which knows whether its file was damaged.
        CustomTypeList& list = lists.emplace_back(stored);
        list.RemoveAll();
        for (const Definitions& own : definitions)
            list.AddType(own[std::min(step, own.size() - 1)]);
    }
    return lists;
}

}  // namespace lore
