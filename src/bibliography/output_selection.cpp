#include "bibliography/output_selection.h"

#include <algorithm>

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

SourceList Chosen(const SourceList& sources, const LongList& ids) {
    if (ids.Count() == 0)
        return sources;
    SourceList chosen;
    for (const int32_t id : ids) {
        if (const CSource* const source = sources.FindSourceByID(id))
            chosen.AddTail(*source);
    }
    return chosen;
}

/// Sorting formats, and a source that is formatted twice may show other authors; so copies are sorted, which carry
/// their positions as ids.
SourceList Sorted(const SourceList& sources, const AuthorList& authors) {
    SourceList copies;
    for (size_t i = 0; i < sources.Count(); ++i) {
        CSource copy = sources[i];
        copy.SourceID = static_cast<int32_t>(i);
        copies.AddTail(std::move(copy));
    }
    copies.SortSources(authors);
    SourceList sorted;
    for (const CSource& copy : copies)
        sorted.AddTail(sources[static_cast<size_t>(copy.SourceID)]);
    return sorted;
}

}  // namespace

int32_t HeldIndentSpaces(int32_t blanks) {
    return std::clamp(blanks, 0, kMostBibliographyIndent);
}

int32_t HeldAuthorsBeforeEtAl(int32_t authors) {
    return std::clamp(authors, 1, kMostBibliographyAuthors);
}

SourceList SelectSources(const SourceList& sources, const AuthorList& authors, const BibliographySelection& selection) {
    SourceList chosen = Chosen(sources, selection.ids);
    for (size_t i = 0; i < chosen.Count(); ++i)
        Set(chosen[i], selection);
    return selection.sorted ? Sorted(chosen, authors) : chosen;
}

}  // namespace lore
