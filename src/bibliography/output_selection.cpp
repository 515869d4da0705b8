#include "bibliography/output_selection.h"

#include <algorithm>
#include <utility>

namespace lore {

namespace {

void Set(CSource& source, const BibliographySelection& selection) {
    if (selection.style)
        source.FormatStyle = *selection.style;
    if (selection.indentSpaces)
        source.IndentSpaces = HeldIndentSpaces(*selection.indentSpaces);
    if (selection.authorsBeforeEtAl)
        source.AuthorsBeforeEtAl = HeldAuthorsBeforeEtAl(*selection.authorsBeforeEtAl);
}

SourceList Chosen(SourceList sources, const LongList& ids) {
    if (ids.Count() == 0)
        return sources;
    SourceList chosen;
    for (const int32_t id : ids) {
        if (const CSource* const source = sources.FindSourceByID(id))
            chosen.AddTail(*source);
    }
    return chosen;
}

}  // namespace

int32_t HeldIndentSpaces(int32_t blanks) {
    return std::clamp(blanks, 0, kMostBibliographyIndent);
}

int32_t HeldAuthorsBeforeEtAl(int32_t authors) {
    return std::clamp(authors, 1, kMostBibliographyAuthors);
}

SourceList SelectSources(SourceList sources, const AuthorList& authors, const BibliographySelection& selection) {
    SourceList chosen = Chosen(std::move(sources), selection.ids);
    for (size_t i = 0; i < chosen.Count(); ++i)
        Set(chosen[i], selection);
    if (selection.sorted)
        chosen.SortSources(authors);
    return chosen;
}

}  // namespace lore
