#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "bibliography/custom_type_list.h"
#include "bibliography/source.h"

namespace lore {

// The numbers of source types and styles stand in files. On disk; never change.

enum SourceTypeNumber : int32_t {
    kBook = 1,
    kJournalArticle = 2,
    kPeriodical = 3,
    kOnline = 4,
    kDissertation = 5,
    kMultimedia = 6,
    kLecture = 7
};
inline constexpr int32_t kTypeCount = 7;
inline constexpr int32_t kStyleCount = 14;

/// The order in which the choice of types and the choice of styles show their entries.
inline constexpr std::array<int32_t, kTypeCount> kTypeOrder = {1, 5, 2, 7, 6, 4, 3};
inline constexpr std::array<int32_t, kStyleCount> kStyleOrder = {1, 0, 2, 3, 5, 9, 4, 6, 10, 12, 11, 7, 8, 13};

/// "Book" and so on; empty for a number that is none of the seven.
std::string_view StandardTypeName(int32_t type);
/// The name of a source's type: a custom type's own name, otherwise that of the standard type.
std::string_view SourceTypeName(const CSource& source);
/// "APA Style" and so on; empty for a number that is no style.
std::string_view StyleName(int32_t style);
/// The label that the editor puts to a slot of a standard type, such as "Vol./No.:"; empty for a slot without a field.
std::string_view FieldLabel(int32_t type, size_t slot);
/// The slots of the further fields of a standard type, after title and publication, in the order of their places;
/// none for any other type.
std::span<const size_t> FieldOrder(int32_t type);
/// The slots from 3 to 8 that a standard type has no field for; none for any other type.
std::vector<size_t> UnusedSlots(int32_t type);

/// One line of a choice.
struct NumberedName {
    int32_t number = 0;
    std::string name;
};
/// The standard types in their order, then "CST: " and the name of every custom type. Numbers the custom types afresh.
std::vector<NumberedName> TypeChoices(CustomTypeList& types);
std::vector<NumberedName> StyleChoices();

}  // namespace lore
