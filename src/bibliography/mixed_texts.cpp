#include "bibliography/mixed_texts.h"

#include <algorithm>

#include "base/text.h"
#include "base/text_join.h"
#include "bibliography/wide_names.h"

namespace lore {

namespace {

bool HasWideAuthor(const LongList& ids, const AuthorList& authors) {
    return std::any_of(ids.begin(), ids.end(), [&](int32_t id) {
        const CAuthor* const author = authors.FindAuthorByID(id);
        return author != nullptr && HasWideName(*author);
    });
}

bool HasWideText(const CSource& source, const AuthorList& authors) {
    const std::vector<CCustomSourceField>& fields = source.CustomTypeCopy.fields;
    return IsWideText(source.DateText) || std::any_of(source.FieldTexts.begin(), source.FieldTexts.end(), IsWideText) ||
           std::any_of(fields.begin(), fields.end(), [](const auto& field) { return IsWideText(field.value); }) ||
           HasWideAuthor(source.AuthorIDs, authors);
}

}  // namespace

bool JoinsMixedTexts(const CSource& source, const AuthorList& authors) {
    return !(IsValidUtf8(source.FormattedText) && IsValidUtf8(source.AuthorText)) && HasWideText(source, authors);
}

bool JoinsMixedNames(std::string_view text, const LongList& ids, const AuthorList& authors) {
    return !IsValidUtf8(text) && HasWideAuthor(ids, authors);
}

CSource SourceInUtf8(const CSource& source) {
    CSource copy = source;
    copy.AuthorText = ToUtf8(source.AuthorText);
    copy.DateText = ToUtf8(source.DateText);
    for (std::string& text : copy.FieldTexts)
        text = ToUtf8(text);
    for (CCustomSourceField& field : copy.CustomTypeCopy.fields)
        field.value = ToUtf8(field.value);
    return copy;
}

AuthorList AuthorsInUtf8(const LongList& ids, const AuthorList& authors) {
    AuthorList copies;
    for (const int32_t id : ids) {
        if (const CAuthor* const author = authors.FindAuthorByID(id))
            copies.AddAuthor(AuthorInUtf8(*author));
    }
    return copies;
}

}  // namespace lore
