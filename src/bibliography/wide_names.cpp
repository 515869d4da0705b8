#include "bibliography/wide_names.h"

#include "base/text.h"
#include "base/text_join.h"

namespace lore {

bool HasWideName(const CAuthor& author) {
    return IsWideText(author.first) || IsWideText(author.middle) || IsWideText(author.last);
}

CAuthor AuthorInUtf8(const CAuthor& author) {
    return {author.AuthorID, ToUtf8(author.first), ToUtf8(author.middle), ToUtf8(author.last), "", ""};
}

}  // namespace lore
