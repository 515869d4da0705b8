#include "bibliography/source_selection.h"

#include <utility>

#include "bibliography/output_selection.h"

namespace lore {

SourceSelection::SourceSelection(const SourceList& sources, const AuthorList& authors)
    : sources_(sources),
      authors_(authors),
      style_(CSource().FormatStyle),
      indentSpaces_(CSource().IndentSpaces),
      authorsBeforeEtAl_(CSource().AuthorsBeforeEtAl) {
    ClearAll();
}

void SourceSelection::Set(CSource& source) const {
    source.FormatStyle = style_;
    source.IndentSpaces = indentSpaces_;
    source.AuthorsBeforeEtAl = authorsBeforeEtAl_;
}

bool SourceSelection::Select(int32_t id) {
    const CSource* const shown = available_.FindSourceByID(id);
    if (!shown)
        return false;
    CSource chosen = *shown;
    available_.RemoveSource(id);
    if (!individual_)
        Set(chosen);
    selected_.AddTail(std::move(chosen));
    FormatSelected();
    return true;
}

bool SourceSelection::Remove(int32_t id) {
    if (!selected_.RemoveSource(id))
        return false;
    if (const CSource* const source = sources_.FindSourceByID(id))
        available_.AddTail(*source);
    available_.SortSources(authors_);
    return true;
}

void SourceSelection::SelectAll() {
    available_.RemoveAll();
    selected_ = sources_;
    for (size_t i = 0; i < selected_.Count() && !individual_; ++i)
        Set(selected_[i]);
    FormatSelected();
}

void SourceSelection::ClearAll() {
    selected_.RemoveAll();
    available_ = sources_;
    available_.SortSources(authors_);
}

void SourceSelection::SetSorted(bool sorted) {
    sorted_ = sorted;
    if (sorted)
        FormatSelected();
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

void SourceSelection::RefreshSelected() {
    for (size_t i = 0; i < selected_.Count(); ++i) {
        CSource& chosen = selected_[i];
        if (!individual_) {
            Set(chosen);
        } else if (const CSource* const own = sources_.FindSourceByID(chosen.SourceID)) {
            chosen.FormatStyle = own->FormatStyle;
            chosen.IndentSpaces = own->IndentSpaces;
            chosen.AuthorsBeforeEtAl = own->AuthorsBeforeEtAl;
        }
    }
    FormatSelected();
}

/// In place: a citation that is formatted again has lost one more of the deleted authors beside each other.
void SourceSelection::FormatSelected() {
    if (sorted_)
        selected_.SortSources(authors_);
    else
        selected_.FormatAll(authors_);
}

}  // namespace lore
