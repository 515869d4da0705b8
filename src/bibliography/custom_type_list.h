#pragma once

#include <cstdint>
#include <filesystem>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "base/record_file.h"
#include "bibliography/custom_type.h"
#include "bibliography/custom_type_fields.h"
#include "bibliography/list_file.h"
#include "ports/read_context.h"

namespace lore {

/// The user-defined source types of a NoteBook, in order. Numbers are those of AssignNumbers.
class CustomTypeList : public ListFile {
public:
    /// The first type with the number (exactly the GUID), or null. The pointer lives until the list changes.
    const CCustomSourceType* FindTypeByNumber(int32_t number) const;
    const CCustomSourceType* FindTypeByGUID(std::string_view guid) const;

    /// Appends a copy.
    void AddType(CCustomSourceType type);
    void RemoveAll();
    /// By name ignoring case; equal names keep their order. Names that stand after 33 letters z follow in list order.
    void SortTypes();
    /// Numbers the types 1101, 1102, ... in list order.
    void AssignNumbers();
    /// Gives every type with an empty GUID a new one.
    void FillGuids(GuidSource& guids);

    size_t Count() const { return types_.size(); }
    const CCustomSourceType& operator[](size_t position) const { return types_[position]; }
    auto begin() const { return types_.begin(); }
    auto end() const { return types_.end(); }

    /// Empties the list, reads a file, sorts and numbers it. A file that can't be opened leaves the list empty.
    FileResult LoadTypes(const std::filesystem::path& path, const ReadContext& context);
    /// The types in the order of the file, neither sorted nor numbered; otherwise as LoadTypes.
    FileResult LoadTypesUnsorted(const std::filesystem::path& path, const ReadContext& context);
    FileResult SaveTypes(const std::filesystem::path& path, double version = kDataVersion) const;

private:
    void Reindex();

    std::vector<CCustomSourceType> types_;
    std::unordered_map<std::string, uint32_t> byGuid_;  // first position of each GUID
};

/// One type as it stands in its file and at the end of every source record. Reading replaces all but the number; a date
/// that can't be read becomes the context's UTC time.
void ReadCustomTypeBlock(RecordReader* stream, const ReadContext& context, CCustomSourceType& type);
void WriteCustomTypeBlock(RecordWriter* stream, const CCustomSourceType& type);
/// True if both stand in a file as the same bytes.
bool IsSameCustomType(const CCustomSourceType& a, const CCustomSourceType& b);

}  // namespace lore
