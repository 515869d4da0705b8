#pragma once

#include <map>
#include <optional>

#include "rtf/document.h"
#include "rtf/rtf_output.h"

namespace lore {

/// The colours of a document, numbered from 1 as they come.
class ColorNumbers {
public:
    explicit ColorNumbers(const Document& document);
    /// 0 for the automatic colour.
    int32_t NumberOf(const std::optional<TextColor>& color) const;
    void Write(RtfOutput& out) const;

private:
    void Add(const std::optional<TextColor>& color);

    std::map<TextColor, int32_t> numbers_;
    std::vector<TextColor> colors_;
};

void WriteFonts(RtfOutput& out, const Document& document);
/// The lists that paragraphs name, with one override of the same number for each.
void WriteLists(RtfOutput& out, const Document& document);

}  // namespace lore
