#include "bibliography/author_name.h"

#include "base/text.h"
#include "bibliography/wide_names.h"

namespace lore {

namespace {

void TrimRightFrom(std::string& out, size_t start) {
    out.resize(start + TrimRight(std::string_view(out).substr(start)).size());
}

/// The first name or its initial. A single character gets a period.
void AppendFirst(std::string& out, const CAuthor& author, bool initialOnly) {
    if (author.first.empty())
        return;
    const size_t initial = ByteOfCharacter(author.first, 1);
    const bool shorten = initialOnly && !author.last.empty();
    out.append(author.first, 0, shorten ? initial : author.first.size());
    if (shorten || initial == author.first.size())
        out += '.';
}

void AppendMiddle(std::string& out, const CAuthor& author) {
    if (!author.middle.empty())
        out.append(author.middle).append(".");
}

void AppendLast(std::string& out, const CAuthor& author) {
    if (!author.last.empty())
        out.append(" ").append(author.last);
}

template <typename Append>
std::string Formatted(Append append, const CAuthor& author, const NameForm& form) {
    std::string out;
    append(out, author, form);
    if (!IsValidUtf8(out) && HasWideName(author)) {
        out.clear();
        append(out, AuthorInUtf8(author), form);
    }
    return out;
}

}  // namespace

void AppendAuthorInverted(std::string& out, const CAuthor& author, const NameForm& form) {
    const size_t start = out.size();
    if (!author.last.empty())
        out.append(author.last).append(", ");
    AppendFirst(out, author, form.initialOnly);
    if (form.spaceAfterFirst && !author.first.empty())
        out += ' ';
    if (form.useMiddle)
        AppendMiddle(out, author);
    TrimRightFrom(out, start);
}

void AppendAuthorNatural(std::string& out, const CAuthor& author, const NameForm& form) {
    const size_t start = out.size();
    AppendFirst(out, author, form.initialOnly);
    if (form.useMiddle && !author.middle.empty()) {
        if (form.spaceAfterFirst)
            out += ' ';
        AppendMiddle(out, author);
    }
    AppendLast(out, author);
    TrimRightFrom(out, start);
}

std::string FormatAuthorInverted(const CAuthor& author, const NameForm& form) {
    return Formatted(AppendAuthorInverted, author, form);
}

std::string FormatAuthorNatural(const CAuthor& author, const NameForm& form) {
    return Formatted(AppendAuthorNatural, author, form);
}

std::string FormatAuthorBrief(const CAuthor& author) {
    return FormatAuthorNatural(author, {.initialOnly = true, .spaceAfterFirst = false, .useMiddle = true});
}

bool TrimAuthorName(CAuthor& author) {
    for (std::string* name : {&author.first, &author.middle, &author.last})
        *name = std::string(Trim(*name));
    return !author.first.empty() || !author.last.empty();
}

}  // namespace lore
