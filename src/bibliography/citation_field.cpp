#include "bibliography/citation_field.h"

#include <array>

#include "base/record_file.h"
#include "base/text.h"
#include "base/utf8.h"

namespace lore {

namespace {

/// A text with one of these isn't a bare number.
constexpr std::string_view kNotBareNumber =
    "qwertyuioplkjhgfdsazxcvbnm,.;[]=-!@#$%^&*()_+QWERTYUIOP{}|ASDFGHJKL:ZXCVBNM<>?";

/// The ending for a last digit, unless the last two are in the teens.
std::string_view OrdinalEnding(std::string_view text) {
    constexpr std::array<std::string_view, 4> kEndings = {"th", "st", "nd", "rd"};
    constexpr int kTeens = 10;
    const int digit = ParseInt(text.substr(text.size() - 1));
    if (digit < 1 || digit > 3)
        return "th";
    const bool inTeens = text.size() > 1 && ParseInt(text.substr(text.size() - 2)) == kTeens + digit;
    return kEndings[inTeens ? 0 : static_cast<size_t>(digit)];
}

}  // namespace

void AppendField(std::string& out, std::string_view text, std::string_view before, std::string_view after,
                 bool ordinal) {
    if (text.empty())
        return;
    out.append(before).append(text);
    if (ordinal && text.find_first_of(kNotBareNumber) == std::string_view::npos)
        out += OrdinalEnding(text);
    out += after;
}

std::string_view FieldText(const CSource& source, size_t slot) {
    return slot < source.FieldTexts.size() ? std::string_view(source.FieldTexts[slot]) : std::string_view();
}

bool HasField(const CSource& source, size_t slot) {
    return !FieldText(source, slot).empty();
}

std::string SourceDateText(const CSource& source, std::string_view fullFormat) {
    if (source.UseDateText == 1)
        return source.DateText;
    if (!source.HasDate)
        return {};
    return source.SourceDate.Format(source.YearOnly == 1 ? "%Y" : fullFormat);
}

void CutToRecord(std::string& citation) {
    if (citation.size() <= kMaxStringLength)
        return;
    size_t end = kMaxStringLength;
    if (IsValidUtf8(citation)) {
        while (IsContinuation(citation[end]))
            --end;
    }
    citation.resize(end);
}

}  // namespace lore
