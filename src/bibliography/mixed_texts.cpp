#include "bibliography/mixed_texts.h"

#include <algorithm>

#include "base/text.h"

namespace lore {

namespace {

/// UTF-8 with at least one character that Windows-1252 would write in another way.
bool IsWideText(const std::string& text) {
    const auto isPlain = [](char c) { return static_cast<unsigned char>(c) < 0x80u; };
    return !std::all_of(text.begin(), text.end(), isPlain) && IsValidUtf8(text);
}

bool HasWideName(const CAuthor& author) {
    return IsWideText(author.first) || IsWideText(author.middle) || IsWideText(author.last);
}

bool HasWideText(const CSource& source, const AuthorList& authors) {
    const std::vector<CCustomSourceField>& fields = source.CustomTypeCopy.fields;
    return IsWideText(source.DateText) || std::any_of(source.FieldTexts.begin(), source.FieldTexts.end(), IsWideText) ||
           std::any_of(fields.begin(), fields.end(), [](const auto& field) { return IsWideText(field.value); }) ||
           std::any_of(source.AuthorIDs.begin(), source.AuthorIDs.end(), [&](int32_t id) {
               const CAuthor* const author = authors.FindAuthorByID(id);
               return author != nullptr && HasWideName(*author);
           });
}

}  // namespace

bool JoinsMixedTexts(const CSource& source, const AuthorList& authors) {
    return !(IsValidUtf8(source.FormattedText) && IsValidUtf8(source.AuthorText)) && HasWideText(source, authors);
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

AuthorList AuthorsInUtf8(const CSource& source, const AuthorList& authors) {
    AuthorList copies;
    for (const int32_t id : source.AuthorIDs) {
        const CAuthor* const author = authors.FindAuthorByID(id);
        if (author == nullptr)
            continue;
        copies.AddAuthor({id, ToUtf8(author->first), ToUtf8(author->middle), ToUtf8(author->last), "", ""});
    }
    return copies;
}

}  // namespace lore
