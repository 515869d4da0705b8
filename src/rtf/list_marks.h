#pragma once

#include <map>
#include <string>
#include <utility>

#include "rtf/formats.h"

namespace lore {

/// The mark of an item in UTF-8: "•", "3.", "c.", "iv."; empty for a paragraph that is none.
std::string MarkOf(const ParagraphFormat& format, int number);

/// Counts the items of the lists of one document.
class ListMarks {
public:
    /// The number of the next item; 0 for a paragraph that is none.
    int NextNumber(const ParagraphFormat& format);
    /// The mark in front of the next item.
    std::string NextMark(const ParagraphFormat& format) { return MarkOf(format, NextNumber(format)); }

private:
    std::map<std::pair<int32_t, int>, int> next_;  // by list and level
};

}  // namespace lore
