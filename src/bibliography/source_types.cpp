#include "bibliography/source_types.h"

#include <algorithm>

namespace lore {

namespace {

constexpr std::array<std::string_view, kTypeCount> kTypeNames = {
    "Book", "Journal Article", "Periodical", "Online", "Dissertation/Thesis", "Multimedia", "Lecture/Speech"};

constexpr std::array<std::string_view, kStyleCount> kStyleNames = {"Generic by Title",
                                                                   "Generic by Author",
                                                                   "ACM Style",
                                                                   "ACS Style",
                                                                   "APSA Style",
                                                                   "AMA Style",
                                                                   "ASA Style",
                                                                   "Harvard Style",
                                                                   "MLA Style",
                                                                   "APA Style",
                                                                   "CSE/CBE Style",
                                                                   "Chicago Style (Humanities)",
                                                                   "Chicago Style (Author-Date)",
                                                                   "Oxford Style"};

constexpr std::string_view kPublisher = "Publication/Publisher:";

/// The labels of the slots 0 to 8 for the types from 1; slot 2 is the date and has none.
constexpr std::string_view kLabels[kTypeCount][9] = {
    {"Title:", kPublisher, "", "Vol./No.:", "Page #s:", "Edition/Series:", "City Published:", "Chapter:", "Editors:"},
    {"Title:", kPublisher, "", "Vol./No.:", "Page #s:", "Date Accessed:", "", "URL:", ""},
    {"Title:", kPublisher, "", "Section:", "Page #s:", "", "", "", ""},
    {"Title:", kPublisher, "", "Vol./No.:", "Date Accessed:", "", "", "URL:", ""},
    {"Title:", kPublisher, "", "", "Page #s:", "", "City Published:", "School:", "Degree:"},
    {"Title:", kPublisher, "", "", "Medium:", "", "City Published:", "Series:", ""},
    {"Title:", "Organization:", "", "", "", "", "City/State:", "Event:", "Place:"},
};

/// Slots by the places of their fields, for the types from 1; 0 ends a row.
constexpr size_t kFieldOrder[kTypeCount][7] = {{7, 8, 6, 3, 5, 4}, {7, 5, 3, 4}, {3, 4},   {3, 7, 4},
                                               {7, 8, 6, 4},       {7, 6, 4},    {7, 8, 6}};

bool IsStandard(int32_t type) {
    return type >= 1 && type <= kTypeCount;
}

}  // namespace

std::string_view StandardTypeName(int32_t type) {
    return IsStandard(type) ? kTypeNames[static_cast<size_t>(type - 1)] : std::string_view();
}

std::string_view SourceTypeName(const CSource& source) {
    return source.SourceType >= kFirstCustomType ? std::string_view(source.CustomTypeCopy.name)
                                                 : StandardTypeName(source.SourceType);
}

std::string_view StyleName(int32_t style) {
    return style >= 0 && style < kStyleCount ? kStyleNames[static_cast<size_t>(style)] : std::string_view();
}

std::string_view FieldLabel(int32_t type, size_t slot) {
    return IsStandard(type) && slot < std::size(kLabels[0]) ? kLabels[type - 1][slot] : std::string_view();
}

std::span<const size_t> FieldOrder(int32_t type) {
    if (!IsStandard(type))
        return {};
    const auto& row = kFieldOrder[type - 1];
    return {std::begin(row), std::find(std::begin(row), std::end(row), size_t{0})};
}

std::vector<size_t> UnusedSlots(int32_t type) {
    std::vector<size_t> slots;
    for (size_t slot = kDateSlot + 1; IsStandard(type) && slot < std::size(kLabels[0]); ++slot) {
        if (FieldLabel(type, slot).empty())
            slots.push_back(slot);
    }
    return slots;
}

std::vector<NumberedName> TypeChoices(CustomTypeList& types) {
    std::vector<NumberedName> choices;
    choices.reserve(kTypeOrder.size());
    for (const int32_t type : kTypeOrder)
        choices.push_back({type, std::string(StandardTypeName(type))});
    types.AssignNumbers();
    for (const CCustomSourceType& type : types)
        choices.push_back({type.number, "CST: " + type.name});
    return choices;
}

std::vector<NumberedName> StyleChoices() {
    std::vector<NumberedName> choices;
    choices.reserve(kStyleOrder.size());
    for (const int32_t style : kStyleOrder)
        choices.push_back({style, std::string(StyleName(style))});
    return choices;
}

}  // namespace lore
