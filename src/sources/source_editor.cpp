#include "sources/source_editor.h"

#include <algorithm>

#include "base/text.h"
#include "bibliography/citation.h"
#include "bibliography/citation_field.h"
#include "bibliography/source_record.h"
#include "sources/distinct_texts.h"

namespace lore {

namespace {

constexpr char kNoTitleTitle[] = "No Title";
constexpr int32_t kMlaStyle = 8;

std::string TrimmedText(std::string_view typed) {
    return std::string(Trim(CleanText(typed)));
}

std::string StoredBytes(const CSource& source) {
    RecordWriter writer;
    WriteSource(&writer, source);
    return writer.Logical();
}

/// What formatting makes of a source is no change of it.
std::string StoredBytes(CSource source, const AuthorList& authors) {
    FormatSource(source, authors);
    return StoredBytes(source);
}

}  // namespace

SourceEditor SourceEditor::ForNew(SourceStore& store) {
    EditWorld& world = store.World();
    CSource source = MakeSource(world.Context());
    source.FormatStyle = world.settings.Int(Option::SourceFormat);
    source.SourceID = world.book.sources.NewSourceID();
    source.SourceGUID = world.guids.NewGuid();
    return SourceEditor(store, std::move(source), true);
}

SourceEditor SourceEditor::ForSource(SourceStore& store, const CSource& source) {
    return SourceEditor(store, source, false);
}

SourceEditor::SourceEditor(SourceStore& store, CSource source, bool isNew)
    : store_(store),
      isNew_(isNew),
      record_(std::move(source)),
      working_(record_),
      ownType_(record_.CustomTypeCopy),
      authors_(store, working_.AuthorIDs) {
    working_.FieldTexts.resize(std::max(working_.FieldTexts.size(), kFieldSlots));
    FillTypes();
    TakeTypeNumber();
    canUseYearOnly_ = working_.HasDate;
    SetIndentSpaces(working_.IndentSpaces);
    SetAuthorsBeforeEtAl(working_.AuthorsBeforeEtAl);
    opened_ = working_;
}

const CSource& SourceEditor::Formatted() {
    FormatSource(working_, store_.World().book.authors);
    return working_;
}

void SourceEditor::FillTypes() {
    CustomTypeList& types = store_.World().book.types;
    types_.clear();
    for (NumberedName& choice : TypeChoices(types)) {
        const CCustomSourceType* const type = types.FindTypeByNumber(choice.number);
        types_.push_back({choice.number, std::move(choice.name), type ? type->GUID : std::string()});
    }
    if (record_.SourceType >= kFirstCustomType && !types.FindTypeByGUID(ownType_.GUID))
        types_.push_back({record_.SourceType, "CST: " + ownType_.name, ownType_.GUID});
}

/// The numbers of user-defined types were given out afresh: the type of a source is the one of its GUID.
void SourceEditor::TakeTypeNumber() {
    const CustomTypeList& types = store_.World().book.types;
    for (CSource* const source : {&record_, &working_}) {
        const CCustomSourceType* const type = types.FindTypeByGUID(source->CustomTypeCopy.GUID);
        if (type && source->SourceType >= kFirstCustomType)
            source->SourceType = type->number;
    }
}

size_t SourceEditor::TypeIndex() const {
    const auto found = std::find_if(types_.begin(), types_.end(), [this](const TypeChoice& choice) {
        return IsCustom() ? choice.number >= kFirstCustomType && choice.GUID == working_.CustomTypeCopy.GUID
                          : choice.number == working_.SourceType;
    });
    return static_cast<size_t>(found - types_.begin());
}

void SourceEditor::ChangeType(size_t index) {
    const TypeChoice& choice = types_[index];
    working_.SourceType = choice.number;
    if (IsCustom()) {
        // The record that is being edited takes the number here already, so that the save finds no other type and the
        // source keeps its identity.
        if (!isNew_)
            record_.SourceType = choice.number;
        if (working_.CustomTypeCopy.GUID != choice.GUID) {
            leftTypes_[working_.CustomTypeCopy.GUID] = std::move(working_.CustomTypeCopy);
            working_.CustomTypeCopy = TypeWithValues(choice.GUID);
        }
    }
    CheckYearOnly();
}

CCustomSourceType SourceEditor::TypeWithValues(const std::string& guid) const {
    if (const auto left = leftTypes_.find(guid); left != leftTypes_.end())
        return left->second;
    const CCustomSourceType* const type = store_.World().book.types.FindTypeByGUID(guid);
    if (!type)
        return ownType_;
    CCustomSourceType fresh = *type;
    ClearValues(fresh);
    return fresh;
}

void SourceEditor::ChangeStyle(int32_t style) {
    working_.FormatStyle = style;
    store_.World().settings.Set(Option::SourceFormat, style);
}

void SourceEditor::SetField(size_t slot, std::string_view typed) {
    std::string text = TrimmedText(typed);
    // This style quotes the title, so that one of two quotation marks in it is enough.
    if (slot == 0 && working_.FormatStyle == kMlaStyle)
        text = ReplaceAll(text, "\"\"", "\"");
    working_.FieldTexts[slot] = std::move(text);
}

std::string_view SourceEditor::Field(size_t slot) const {
    return FieldText(working_, slot);
}

std::vector<std::string> SourceEditor::Publications() const {
    return DistinctFieldTexts(store_.World().book.sources, 1);
}

size_t SourceEditor::GridRows() const {
    return CountUserFields(working_.CustomTypeCopy);
}

size_t SourceEditor::UserField(size_t row) const {
    const std::vector<CCustomSourceField>& fields = working_.CustomTypeCopy.fields;
    size_t at = 0;
    for (;; ++at) {
        if (fields[at].kind == CCustomSourceField::User && row-- == 0)
            return at;
    }
}

const CCustomSourceField& SourceEditor::GridRow(size_t row) const {
    return working_.CustomTypeCopy.fields[UserField(row)];
}

void SourceEditor::SetGridValue(size_t row, std::string_view typed) {
    working_.CustomTypeCopy.fields[UserField(row)].value = TrimmedText(typed);
}

int32_t SourceEditor::SetIndentSpaces(int32_t typed) {
    return working_.IndentSpaces = std::clamp(typed, 0, kMostIndentSpaces);
}

int32_t SourceEditor::SetAuthorsBeforeEtAl(int32_t typed) {
    return working_.AuthorsBeforeEtAl = std::clamp(typed, kLeastAuthors, kMostAuthors);
}

void SourceEditor::SetDate(const std::optional<DateTime>& date) {
    working_.HasDate = date.has_value();
    if (date)
        working_.SourceDate = *date;
    CheckYearOnly();
}

std::optional<DateTime> SourceEditor::Date() const {
    return working_.HasDate ? std::optional(working_.SourceDate) : std::nullopt;
}

void SourceEditor::CheckYearOnly() {
    if (!working_.HasDate)
        canUseYearOnly_ = false;
    else if (working_.SourceType != kBook)
        canUseYearOnly_ = true;
}

void SourceEditor::SetDateText(std::string_view typed) {
    working_.DateText = TrimmedText(typed);
}

void SourceEditor::TakeDefinitions(const CustomTypeList& types) {
    for (CSource* const source : {&record_, &working_}) {
        const CCustomSourceType* const type = types.FindTypeByGUID(source->CustomTypeCopy.GUID);
        if (type && source->SourceType >= kFirstCustomType)
            source->CustomTypeCopy = MergeCustomType(*type, source->CustomTypeCopy);
    }
    for (auto& [guid, left] : leftTypes_)
        if (const CCustomSourceType* const type = types.FindTypeByGUID(guid))
            left = MergeCustomType(*type, left);
}

void SourceEditor::TypesReplaced() {
    // A type chosen for the copy gave the record its number, not its definition.
    const bool keepsIdentity = record_.SourceType == working_.SourceType;
    for (const CustomTypeList& between : store_.TypesBetween())
        TakeDefinitions(between);
    TakeDefinitions(store_.World().book.types);
    FillTypes();
    TakeTypeNumber();
    if (keepsIdentity)
        record_.SourceType = working_.SourceType;
}

bool SourceEditor::HasChanges() const {
    const AuthorList& authors = store_.World().book.authors;
    return StoredBytes(working_, authors) != StoredBytes(opened_, authors);
}

bool SourceEditor::Save() {
    EditWorld& world = store_.World();
    if (Field(0).empty()) {
        world.prompts.Message(kNoTitleText, kNoTitleTitle, PromptIcon::Warning);
        return false;
    }
    CSource saved = working_;
    for (const size_t slot : UnusedSlots(saved.SourceType))
        saved.FieldTexts[slot].clear();
    if (saved.SourceType != record_.SourceType)
        saved.SourceGUID = world.guids.NewGuid();
    saved.ModifiedDate = world.clock.NowUtc();
    FormatSource(saved, world.book.authors);
    if (!(isNew_ ? store_.Add(saved) : store_.Replace(saved)))
        return false;
    working_ = record_ = std::move(saved);
    return true;
}

}  // namespace lore
