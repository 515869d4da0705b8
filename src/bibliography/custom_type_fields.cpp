#include "bibliography/custom_type_fields.h"

#include <algorithm>
#include <string_view>
#include <unordered_map>

#include "base/text.h"

namespace lore {

namespace {

bool IsUserField(const CCustomSourceField& field) {
    return field.kind == CCustomSourceField::User;
}

CCustomSourceField MakeFieldOf(CCustomSourceField::Kind kind, std::string_view name, CCustomSourceField::End end) {
    CCustomSourceField field;
    field.kind = kind;
    field.end = end;
    field.name = name;
    return field;
}

/// The values of a source's user fields, to be found by name and by count.
class OldValues {
public:
    explicit OldValues(const CCustomSourceType& type) {
        for (const CCustomSourceField& field : type.fields) {
            if (!IsUserField(field))
                continue;
            byName_.try_emplace(ToLower(field.name), &field.value);
            byCount_.push_back(&field.value);
        }
    }

    std::string Find(const std::string& name, size_t count) const {
        if (const auto found = byName_.find(ToLower(name)); found != byName_.end())
            return *found->second;
        return count < byCount_.size() ? *byCount_[count] : std::string();
    }

private:
    std::unordered_map<std::string, const std::string*> byName_;  // the first of each name
    std::vector<const std::string*> byCount_;
};

}  // namespace

std::vector<CCustomSourceField> DefaultCustomFields() {
    using Field = CCustomSourceField;
    return {MakeFieldOf(Field::Authors, "[AUTHORS Placeholder]", Field::Semicolon),
            MakeFieldOf(Field::Date, "[DATE Placeholder]", Field::Period),
            MakeFieldOf(Field::Title, "[TITLE Placeholder]", Field::Period),
            MakeFieldOf(Field::User, "Your Field", Field::Period)};
}

CCustomSourceType MakeCustomType(const DateTime& nowUtc) {
    CCustomSourceType type;
    type.fields = DefaultCustomFields();
    type.date = nowUtc;
    return type;
}

size_t CountUserFields(const CCustomSourceType& type) {
    return static_cast<size_t>(std::count_if(type.fields.begin(), type.fields.end(), IsUserField));
}

void ClearValues(CCustomSourceType& type) {
    for (CCustomSourceField& field : type.fields) {
        if (IsUserField(field))
            field.value.clear();
    }
}

CCustomSourceType MergeCustomType(const CCustomSourceType& definition, const CCustomSourceType& oldCopy) {
    const OldValues old(oldCopy);
    CCustomSourceType merged = definition;
    size_t count = 0;
    for (CCustomSourceField& field : merged.fields) {
        if (IsUserField(field))
            field.value = old.Find(field.name, count++);
    }
    return merged;
}

}  // namespace lore
