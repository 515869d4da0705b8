#include "bibliography/author_text.h"

#include <algorithm>

#include "base/text.h"
#include "bibliography/mixed_texts.h"

namespace lore {

namespace {

constexpr int32_t kFilterLimit = 6;
constexpr std::string_view kOthers = "et al";
/// A record holds the list with a period after it.
constexpr size_t kLongestList = kMaxStringLength - 1;

using AppendName = void (*)(std::string& out, const CAuthor& author, const NameForm& form);

void AppendAuthorCompact(std::string& out, const CAuthor& author, const NameForm& form) {
    const size_t start = out.size();
    AppendAuthorInverted(out, author, form);
    const auto isMark = [](char c) { return c == ',' || c == '.'; };
    out.erase(std::remove_if(out.begin() + static_cast<ptrdiff_t>(start), out.end(), isMark), out.end());
}

std::string_view ConjunctionText(int conjunction) {
    return conjunction == kConjunctionAnd ? "and " : conjunction == kConjunctionAmpersand ? "& " : "";
}

std::string_view SeparatorText(int separator) {
    constexpr std::string_view kTexts[] = {" ", ", ", "; ", ". "};
    return kTexts[separator >= kSeparatorComma && separator <= kSeparatorPeriod ? separator : 0];
}

void TrimList(std::string& text) {
    text.resize(TrimRight(text).size());
    text.resize(text.find_last_not_of('.') + 1);
}

std::string JoinAuthors(const LongList& ids, const AuthorList& authors, const AuthorListForm& form, AppendName first,
                        AppendName later) {
    std::string text;
    size_t lastEnd = 0;  // the last name after which the list may end with the others
    for (size_t i = 0; i < ids.Count(); ++i) {
        const auto position = static_cast<int64_t>(i);
        if (i > 0) {
            text += SeparatorText(form.separator);
            if (i + 1 == ids.Count() && position != form.limit)
                text += ConjunctionText(form.conjunction);
        }
        const CAuthor* author = authors.FindAuthorByID(ids[i]);
        if (text.size() + kOthers.size() <= kLongestList)
            lastEnd = text.size();
        const bool isNamed = author != nullptr && position < form.limit;
        if (isNamed) {
            const AppendName append = i == 0 ? first : later;
            append(text, *author, form.name);
        }
        // A text that no record could hold ends like any list that is too long.
        if (!isNamed || text.size() > kLongestList) {
            text.resize(lastEnd);
            text += kOthers;
            break;
        }
    }
    TrimList(text);
    return text;
}

}  // namespace

std::string AuthorsFirstInverted(const LongList& ids, const AuthorList& authors, const AuthorListForm& form) {
    return JoinAuthors(ids, authors, form, AppendAuthorInverted, AppendAuthorNatural);
}

std::string AuthorsAllInverted(const LongList& ids, const AuthorList& authors, const AuthorListForm& form) {
    return JoinAuthors(ids, authors, form, AppendAuthorInverted, AppendAuthorInverted);
}

std::string AuthorsCompact(const LongList& ids, const AuthorList& authors, const AuthorListForm& form) {
    return JoinAuthors(ids, authors, form, AppendAuthorCompact, AppendAuthorCompact);
}

std::string AuthorsForFilter(const LongList& ids, const AuthorList& authors) {
    const AuthorListForm form = {{true, false, true}, kConjunctionAmpersand, kSeparatorComma, kFilterLimit};
    std::string text = AuthorsCompact(ids, authors, form);
    return JoinsMixedNames(text, ids, authors) ? AuthorsCompact(ids, AuthorsInUtf8(ids, authors), form) : text;
}

}  // namespace lore
