#include "bibliography/source_limits.h"

#include "base/record_file.h"

namespace lore {

namespace {

/// Takes the first text over the limit of those that it is handed.
class LongTextFinder {
public:
    void Look(const std::string& text, const char* field) {
        if (!found && text.size() > kMaxStringLength)
            found = LongText{field, text.size()};
    }
    void Look(const CAuthor& author) {
        Look(author.first, "first");
        Look(author.middle, "middle");
        Look(author.last, "last");
        Look(author.reserved1, "reserved1");
        Look(author.reserved2, "reserved2");
    }
    void Look(const CCustomSourceType& type) {
        Look(type.GUID, "CustomTypeCopy.GUID");
        Look(type.name, "CustomTypeCopy.name");
        for (const CCustomSourceField& field : type.fields) {
            Look(field.name, "CustomTypeCopy.fields.name");
            Look(field.value, "CustomTypeCopy.fields.value");
        }
    }

    std::optional<LongText> found;
};

}  // namespace

std::optional<LongText> FindLongText(const CAuthor& author) {
    LongTextFinder finder;
    finder.Look(author);
    return finder.found;
}

std::optional<LongText> FindLongText(const CSource& source) {
    LongTextFinder finder;
    finder.Look(source.SourceGUID, "SourceGUID");
    finder.Look(source.AuthorText, "AuthorText");
    for (const std::string& text : source.FieldTexts)
        finder.Look(text, "FieldTexts");
    finder.Look(source.DateText, "DateText");
    finder.Look(source.CustomTypeCopy);
    for (const CAuthor& author : source.EmbeddedAuthors)
        finder.Look(author);
    return finder.found;
}

}  // namespace lore
