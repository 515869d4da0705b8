#include "bibliography/custom_type_list.h"

#include <algorithm>

#include "base/text.h"
#include "bibliography/selection_order.h"
#include "bibliography/source.h"

namespace lore {

// SourceTypes.dat
//
//   FixedDouble    version
//   FixedInt       number of types
//   type *
//
// type
//   CountedString  GUID, name
//   DateField      date
//   FixedInt       number of fields
//   field *
//
// field
//   FixedInt       kind, end
//   CountedString  name, value
//   FixedInt       underline, italics, bold: 2112 or 0

namespace {

/// The first number of a custom type while the program runs.
constexpr int32_t kFirstGivenNumber = 1101;
/// Names after this one aren't sorted.
constexpr std::string_view kCeiling = "zzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzz";
static_assert(kCeiling.size() == 33);

constexpr bool CCustomSourceField::*kFlags[] = {&CCustomSourceField::underline, &CCustomSourceField::italics,
                                                &CCustomSourceField::bold};

CCustomSourceField ReadField(RecordReader* stream) {
    CCustomSourceField field;
    ReadFixedInt(stream, field.kind);
    ReadFixedInt(stream, field.end);
    ReadCountedString(stream, field.name);
    ReadCountedString(stream, field.value);
    for (const auto flag : kFlags)
        field.*flag = ReadStoredBool(stream);
    return field;
}

void WriteField(RecordWriter* stream, const CCustomSourceField& field) {
    WriteFixedInt(stream, field.kind);
    WriteFixedInt(stream, field.end);
    WriteCountedString(stream, field.name);
    WriteCountedString(stream, field.value);
    for (const auto flag : kFlags)
        WriteStoredBool(stream, field.*flag);
}

}  // namespace

void ReadCustomTypeBlock(RecordReader* stream, const ReadContext& context, CCustomSourceType& type) {
    ReadCountedString(stream, type.GUID);
    ReadCountedString(stream, type.name);
    type.date = context.nowUtc;
    ReadDateField(stream, type.date);
    type.fields.clear();
    ReadCounted(stream, [&] { type.fields.push_back(ReadField(stream)); });
}

void WriteCustomTypeBlock(RecordWriter* stream, const CCustomSourceType& type) {
    WriteCountedString(stream, type.GUID);
    WriteCountedString(stream, type.name);
    WriteDateField(stream, type.date);
    WriteFixedInt(stream, static_cast<int32_t>(type.fields.size()));
    for (const CCustomSourceField& field : type.fields)
        WriteField(stream, field);
}

bool IsSameCustomType(const CCustomSourceType& a, const CCustomSourceType& b) {
    RecordWriter first, second;
    WriteCustomTypeBlock(&first, a);
    WriteCustomTypeBlock(&second, b);
    return first.Logical() == second.Logical();
}

FileResult CustomTypeList::LoadTypesUnsorted(const std::filesystem::path& path, const ReadContext& context) {
    RemoveAll();
    const FileResult result = LoadFile(path, [&](RecordReader* stream) {
        ReadCounted(stream, [&] { ReadCustomTypeBlock(stream, context, types_.emplace_back()); });
    });
    Reindex();
    return result;
}

FileResult CustomTypeList::LoadTypes(const std::filesystem::path& path, const ReadContext& context) {
    const FileResult result = LoadTypesUnsorted(path, context);
    SortTypes();
    AssignNumbers();
    return result;
}

FileResult CustomTypeList::SaveTypes(const std::filesystem::path& path, double version) const {
    RecordWriter stream;
    WriteFixedDouble(&stream, version);
    WriteFixedInt(&stream, static_cast<int32_t>(types_.size()));
    for (const CCustomSourceType& type : types_)
        WriteCustomTypeBlock(&stream, type);
    return SaveRecordFile(path, stream);
}

const CCustomSourceType* CustomTypeList::FindTypeByNumber(int32_t number) const {
    const auto found = std::find_if(types_.begin(), types_.end(),
                                    [number](const CCustomSourceType& type) { return type.number == number; });
    return found == types_.end() ? nullptr : &*found;
}

const CCustomSourceType* CustomTypeList::FindTypeByGUID(std::string_view guid) const {
    const auto found = byGuid_.find(std::string(guid));
    return found == byGuid_.end() ? nullptr : &types_[found->second];
}

void CustomTypeList::AddType(CCustomSourceType type) {
    types_.push_back(std::move(type));
    byGuid_.try_emplace(types_.back().GUID, static_cast<uint32_t>(types_.size() - 1));
}

void CustomTypeList::RemoveAll() {
    types_.clear();
    Reindex();
}

void CustomTypeList::SortTypes() {
    std::vector<std::string> keys;
    keys.reserve(types_.size());
    for (const CCustomSourceType& type : types_)
        keys.push_back(ToLower(type.name));
    Reorder(types_, SelectionOrder(keys, kCeiling, SelectionPick::FirstBelow));
    Reindex();
}

void CustomTypeList::AssignNumbers() {
    int32_t number = kFirstGivenNumber;
    for (CCustomSourceType& type : types_)
        type.number = number++;
}

void CustomTypeList::FillGuids(GuidSource& guids) {
    for (CCustomSourceType& type : types_) {
        if (type.GUID.empty())
            type.GUID = guids.NewGuid();
    }
    Reindex();
}

void CustomTypeList::Reindex() {
    byGuid_.clear();
    for (size_t i = 0; i < types_.size(); ++i)
        byGuid_.try_emplace(types_[i].GUID, static_cast<uint32_t>(i));
}

}  // namespace lore
