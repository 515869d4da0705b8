#include "sources/custom_types_editor.h"

#include <algorithm>
#include <array>

#include "base/text.h"
#include "bibliography/custom_type_fields.h"
#include "sources/custom_type_steps.h"

namespace lore {

CustomTypesEditor::CustomTypesEditor(SourceStore& store) : store_(store) {
    types_.assign(store.World().book.types.begin(), store.World().book.types.end());
    NumberFields();
    if (!types_.empty())
        SelectType(0);
}

void CustomTypesEditor::NumberFields() {
    for (CCustomSourceType& type : types_) {
        int32_t number = 0;
        for (CCustomSourceField& field : type.fields)
            field.listNumber = number++;
    }
}

const CCustomSourceField* CustomTypesEditor::Field() const {
    return type_ && field_ ? &types_[*type_].fields[*field_] : nullptr;
}

CCustomSourceField* CustomTypesEditor::EditedField() {
    return type_ && field_ ? &types_[*type_].fields[*field_] : nullptr;
}

void CustomTypesEditor::StampDate() {
    types_[*type_].date = store_.World().clock.NowUtc();
}

void CustomTypesEditor::SelectType(std::optional<size_t> row) {
    type_ = row;
    field_.reset();
    if (type_ && !types_[*type_].fields.empty())
        field_ = 0;
}

void CustomTypesEditor::SelectField(std::optional<size_t> row) {
    field_ = row;
}

void CustomTypesEditor::NewType() {
    CCustomSourceType type = MakeCustomType(store_.World().clock.NowUtc());
    type.name = "Untitled";
    types_.push_back(std::move(type));
    SelectType(types_.size() - 1);
}

void CustomTypesEditor::DeleteType() {
    if (!type_)
        return;
    const size_t row = *type_;
    types_.erase(types_.begin() + static_cast<std::ptrdiff_t>(row));
    SelectType(types_.empty() ? std::nullopt : std::optional(std::min(row, types_.size() - 1)));
}

void CustomTypesEditor::SetTypeName(std::string_view typed) {
    if (!type_)
        return;
    types_[*type_].name = Trim(CleanText(typed));
    StampDate();
}

// The date follows the type's name, the order and the look of its fields, and what is taken out: a new field, a field's
// name and an end mark don't stamp it.

void CustomTypesEditor::AddField() {
    if (!type_)
        return;
    CCustomSourceField field;
    field.name = "Your Field";
    types_[*type_].fields.push_back(std::move(field));
    field_ = types_[*type_].fields.size() - 1;
}

void CustomTypesEditor::DeleteField() {
    if (!Field())
        return;
    std::vector<CCustomSourceField>& fields = types_[*type_].fields;
    fields.erase(fields.begin() + static_cast<std::ptrdiff_t>(*field_));
    field_ = fields.empty() ? std::nullopt : std::optional(std::min(*field_, fields.size() - 1));
    StampDate();
}

bool CustomTypesEditor::CanNameField() const {
    return Field() && Field()->kind == CCustomSourceField::User;
}

void CustomTypesEditor::SetFieldName(std::string_view typed) {
    if (CanNameField())
        EditedField()->name = CleanText(typed);
}

void CustomTypesEditor::SetFlag(bool CCustomSourceField::*flag, bool on) {
    if (CCustomSourceField* const field = EditedField()) {
        field->*flag = on;
        StampDate();
    }
}

void CustomTypesEditor::SetEnd(int32_t end) {
    CCustomSourceField* const field = EditedField();
    if (field && end >= 0 && end < kEndMarks)
        field->end = end;
}

void CustomTypesEditor::MoveField(size_t from, size_t to) {
    std::vector<CCustomSourceField>* const fields = type_ ? &types_[*type_].fields : nullptr;
    if (!fields || from >= fields->size() || to >= fields->size())
        return;
    CCustomSourceField moved = std::move((*fields)[from]);
    fields->erase(fields->begin() + static_cast<std::ptrdiff_t>(from));
    fields->insert(fields->begin() + static_cast<std::ptrdiff_t>(to), std::move(moved));
    field_ = to;
    StampDate();
}

CustomTypeList CustomTypesEditor::ListOf() const {
    // From the NoteBook's own list, which knows whether its file was damaged.
    CustomTypeList list = store_.World().book.types;
    list.RemoveAll();
    for (const CCustomSourceType& type : types_)
        list.AddType(type);
    return list;
}

bool CustomTypesEditor::HasChanges() const {
    const CustomTypeList& stored = store_.World().book.types;
    return !std::equal(types_.begin(), types_.end(), stored.begin(), stored.end(), IsSameCustomType);
}

bool CustomTypesEditor::Save() {
    CustomTypeList list = ListOf();
    list.SortTypes();
    list.FillGuids(store_.World().guids);
    list.AssignNumbers();
    if (!store_.ReplaceTypes(list, ListsBetween(store_.World().book.types, types_)))
        return false;
    NumberFields();
    return true;
}

std::string_view EndMarkName(int32_t end) {
    constexpr std::array<std::string_view, kEndMarks> kNames = {"None", "Period", "Comma", "Colon", "Semicolon"};
    return end >= 0 && end < kEndMarks ? kNames[static_cast<size_t>(end)] : std::string_view();
}

}  // namespace lore
