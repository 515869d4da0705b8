#include "bibliography/custom_citation.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "bibliography/author_text.h"
#include "bibliography/citation_field.h"
#include "bibliography/citation_spans.h"

namespace lore {

namespace {

constexpr std::string_view kDateFormat = "%Y, %B %d";
constexpr NameForm kNames = {.initialOnly = true, .spaceAfterFirst = false, .useMiddle = true};

std::string_view EndText(int32_t end) {
    constexpr std::array<std::string_view, 5> kEnds = {"", ".", ",", ":", ";"};
    return kEnds[end >= 0 && end < static_cast<int32_t>(kEnds.size()) ? static_cast<size_t>(end) : 0];
}

std::string_view TextOf(const CCustomSourceField& field, const CSource& source, std::string_view dateText) {
    switch (field.kind) {
        case CCustomSourceField::User:
            return field.value;
        case CCustomSourceField::Authors:
            return source.AuthorText;
        case CCustomSourceField::Title:
            return FieldText(source, 0);
        case CCustomSourceField::Date:
            return dateText;
        default:
            return {};
    }
}

bool IsAuthors(const CCustomSourceField& field) {
    return field.kind == CCustomSourceField::Authors;
}

}  // namespace

void FormatCustomSource(CSource& source, const AuthorList& authors) {
    const std::vector<CCustomSourceField>& fields = source.CustomTypeCopy.fields;
    if (std::any_of(fields.begin(), fields.end(), IsAuthors)) {
        source.AuthorText = AuthorsCompact(source.AuthorIDs, authors,
                                           {kNames, kConjunctionAmpersand, kSeparatorComma, source.AuthorsBeforeEtAl});
    }
    const std::string dateText = SourceDateText(source, kDateFormat);
    std::string& out = source.FormattedText;
    out.clear();
    // A citation that no record could hold takes no further fields.
    const auto last = std::find_if(fields.begin(), fields.end(), [&](const CCustomSourceField& field) {
        const std::string_view text = TextOf(field, source, dateText);
        if (!text.empty())
            out.append(text).append(EndText(field.end)).append(" ");
        return out.size() > kMaxStringLength;
    });
    CutToRecord(out);
    for (auto field = fields.begin(); field != last; ++field) {
        if (const EmphasisKind kind = FieldEmphasis(*field); kind != kEmphasisNone)
            MarkText(source, TextOf(*field, source, dateText), kind, out);
    }
}

}  // namespace lore
