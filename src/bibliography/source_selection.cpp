#include "bibliography/source_selection.h"

#include "bibliography/citation.h"
#include "bibliography/citation_order.h"
#include "bibliography/output_selection.h"

namespace lore {

namespace {

void Sort(SourceList& formatted) {
    SourceList sorted;
    for (const uint32_t position : CitationOrder(formatted))
        sorted.AddTail(std::move(formatted[position]));
    formatted = std::move(sorted);
}

}  // namespace

SourceSelection::SourceSelection(const SourceList& sources, const AuthorList& authors)
    : sources_(sources),
      authors_(authors),
      style_(CSource().FormatStyle),
      indentSpaces_(CSource().IndentSpaces),
      authorsBeforeEtAl_(CSource().AuthorsBeforeEtAl) {
    ClearAll();
}

CSource SourceSelection::Formatted(CSource source) const {
    FormatSource(source, authors_);
    return source;
}

/// A copy as the choice of formatting wants it.
CSource SourceSelection::Set(const CSource& source) const {
    CSource copy = source;
    if (!individual_) {
        copy.FormatStyle = style_;
        copy.IndentSpaces = indentSpaces_;
        copy.AuthorsBeforeEtAl = authorsBeforeEtAl_;
    }
    return copy;
}

bool SourceSelection::Select(int32_t id) {
    const CSource* const source = sources_.FindSourceByID(id);
    if (!source || !available_.RemoveSource(id))
        return false;
    selected_.AddTail(Formatted(Set(*source)));
    SortSelected();
    return true;
}

bool SourceSelection::Remove(int32_t id) {
    if (!selected_.RemoveSource(id))
        return false;
    if (const CSource* const source = sources_.FindSourceByID(id))
        available_.AddTail(Formatted(*source));
    Sort(available_);
    return true;
}

void SourceSelection::SelectAll() {
    available_.RemoveAll();
    selected_.RemoveAll();
    for (const CSource& source : sources_)
        selected_.AddTail(Formatted(Set(source)));
    SortSelected();
}

void SourceSelection::ClearAll() {
    selected_.RemoveAll();
    available_.RemoveAll();
    for (const CSource& source : sources_)
        available_.AddTail(Formatted(source));
    Sort(available_);
}

void SourceSelection::SetSorted(bool sorted) {
    sorted_ = sorted;
    SortSelected();
}

void SourceSelection::SetIndividual(bool individual) {
    individual_ = individual;
    RefreshSelected();
}

void SourceSelection::SetStyle(int32_t style) {
    style_ = style;
    RefreshSelected();
}

void SourceSelection::SetIndentSpaces(int32_t blanks) {
    indentSpaces_ = HeldIndentSpaces(blanks);
    RefreshSelected();
}

void SourceSelection::SetAuthorsBeforeEtAl(int32_t authors) {
    authorsBeforeEtAl_ = HeldAuthorsBeforeEtAl(authors);
    RefreshSelected();
}

/// The copies are made anew from the NoteBook's sources: a citation is the same whatever was chosen in between.
void SourceSelection::RefreshSelected() {
    SourceList refreshed;
    for (const CSource& source : Bibliography())
        refreshed.AddTail(Formatted(source));
    selected_ = std::move(refreshed);
    SortSelected();
}

void SourceSelection::SortSelected() {
    if (sorted_)
        Sort(selected_);
}

SourceList SourceSelection::Bibliography() const {
    SourceList chosen;
    for (const CSource& shown : selected_) {
        if (const CSource* const source = sources_.FindSourceByID(shown.SourceID))
            chosen.AddTail(Set(*source));
    }
    return chosen;
}

}  // namespace lore
