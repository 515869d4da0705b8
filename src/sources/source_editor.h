#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "bibliography/source_types.h"
#include "sources/source_authors.h"
#include "sources/source_store.h"

namespace lore {

inline constexpr char kNoTitleText[] = "Source must have a title.";
inline constexpr int32_t kMostIndentSpaces = 10;
inline constexpr int32_t kLeastAuthors = 1;
inline constexpr int32_t kMostAuthors = 15;

/// One line of the choice of types.
struct TypeChoice {
    int32_t number = 0;
    std::string name;
    std::string GUID;  ///< of a user-defined type
};

/// The dialog that makes and changes one source: works on a copy, whose citation is there at any time. But for authors
/// and types nothing reaches the NoteBook before Save.
class SourceEditor {
public:
    /// `store` outlives the editor.
    static SourceEditor ForNew(SourceStore& store);
    static SourceEditor ForSource(SourceStore& store, const CSource& source);
    SourceEditor(const SourceEditor&) = delete;
    SourceEditor& operator=(const SourceEditor&) = delete;

    bool IsNew() const { return isNew_; }
    /// The copy, its citation made anew.
    const CSource& Formatted();
    const CSource& Working() const { return working_; }
    SourceAuthors& Authors() { return authors_; }

    /// The standard types, then the user-defined ones of the NoteBook, and at last the source's own one if the NoteBook
    /// has it no more.
    const std::vector<TypeChoice>& Types() const { return types_; }
    /// The type of the copy, by its GUID for a user-defined one; Types().size() for a type that is none.
    size_t TypeIndex() const;
    /// A user-defined type comes with the values that it had when it was left, else without any.
    void ChangeType(size_t index);
    bool IsCustom() const { return working_.SourceType >= kFirstCustomType; }
    /// New sources take this style from now on. A stored title stays as it is until it is typed again.
    void ChangeStyle(int32_t style);

    /// A text was typed into the field of a slot: it is stored trimmed, a title for the MLA style without doubled
    /// quotation marks.
    void SetField(size_t slot, std::string_view typed);
    std::string_view Field(size_t slot) const;
    /// The publications of the NoteBook's sources, to choose from.
    std::vector<std::string> Publications() const;

    /// The grid of a user-defined type: a row for each user field.
    size_t GridRows() const;
    const CCustomSourceField& GridRow(size_t row) const;
    void SetGridValue(size_t row, std::string_view typed);

    // Give the number that stands then: a value outside of the limits becomes the nearer one.
    int32_t SetIndentSpaces(int32_t typed);
    int32_t SetAuthorsBeforeEtAl(int32_t typed);

    /// Nothing takes the date away.
    void SetDate(const std::optional<DateTime>& date);
    std::optional<DateTime> Date() const;
    /// Without a date there is no year. A book's choice stays as it was.
    bool CanUseYearOnly() const { return canUseYearOnly_; }
    void SetYearOnly(bool on) { working_.YearOnly = on ? 1 : 0; }
    void SetUseDateText(bool on) { working_.UseDateText = on ? 1 : 0; }
    void SetDateText(std::string_view typed);

    /// The user-defined types of the NoteBook are other ones now: the copy takes the new definition of its type and
    /// keeps its values.
    void TypesReplaced();
    /// True if the copy differs from the source as it was opened.
    bool HasChanges() const;
    /// False if the source was refused or could not be written, which has been told: the dialog stays open then.
    bool Save();

private:
    SourceEditor(SourceStore& store, CSource source, bool isNew);
    void FillTypes();
    void TakeTypeNumber();
    void TakeDefinitions(const CustomTypeList& types);
    CCustomSourceType TypeWithValues(const std::string& guid) const;
    void CheckYearOnly();
    size_t UserField(size_t row) const;

    SourceStore& store_;
    bool isNew_;
    CSource record_;  ///< the record that is being edited
    CSource working_;
    CSource opened_;
    CCustomSourceType ownType_;                           ///< of a source whose type the NoteBook has no more
    std::map<std::string, CCustomSourceType> leftTypes_;  ///< with their values, by GUID
    std::vector<TypeChoice> types_;
    SourceAuthors authors_;
    bool canUseYearOnly_ = false;
};

}  // namespace lore
