#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "bibliography/custom_type.h"
#include "sources/source_store.h"

namespace lore {

/// The dialog of the user-defined source types: works on a copy of the list until Save.
class CustomTypesEditor {
public:
    /// `store` outlives the editor.
    explicit CustomTypesEditor(SourceStore& store);

    const std::vector<CCustomSourceType>& Types() const { return types_; }
    /// The selected type and the selected one of its fields; nothing without.
    std::optional<size_t> SelectedType() const { return type_; }
    std::optional<size_t> SelectedField() const { return field_; }
    const CCustomSourceType* Type() const { return type_ ? &types_[*type_] : nullptr; }
    const CCustomSourceField* Field() const;
    void SelectType(std::optional<size_t> row);
    void SelectField(std::optional<size_t> row);

    /// Adds a type with the default fields and selects it.
    void NewType();
    /// Removes the selected type, without a question; sources keep their copies.
    void DeleteType();
    /// What stands in the field of the name now.
    void SetTypeName(std::string_view typed);

    void AddField();
    void DeleteField();
    /// The name can be changed only of a user field; the places of authors, date and title keep theirs.
    bool CanNameField() const;
    void SetFieldName(std::string_view typed);
    void SetFlag(bool CCustomSourceField::*flag, bool on);
    void SetEnd(int32_t end);
    /// Takes a field out and puts it in again so that it stands at `to`.
    void MoveField(size_t from, size_t to);

    /// True if something differs from the list of the NoteBook.
    bool HasChanges() const;
    /// Sorts the types, gives new ones their identity and stores them; the sources follow, and a value stays with its
    /// field also where that is renamed and moved. False, and nothing has changed, if they can't be written, which has
    /// been told.
    bool Save();

private:
    CCustomSourceField* EditedField();
    void NumberFields();
    void StampDate();
    CustomTypeList ListOf() const;

    SourceStore& store_;
    std::vector<CCustomSourceType> types_;
    std::optional<size_t> type_, field_;
};

/// "None", "Period" and so on, by their numbers.
std::string_view EndMarkName(int32_t end);
inline constexpr int32_t kEndMarks = 5;

}  // namespace lore
