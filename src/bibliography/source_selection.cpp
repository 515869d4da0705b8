#include "bibliography/source_selection.h"

#include <utility>

#include "bibliography/output_selection.h"

namespace lore {

SourceSelection::SourceSelection(const SourceList& sources, const AuthorList& authors)
    : sources_(sources), authors_(authors) {
    ClearAll();
}

bool SourceSelection::Select(int32_t id) {
    const CSource* const shown = available_.FindSourceByID(id);
    if (!shown)
        return false;
    CSource chosen = *shown;
    available_.RemoveSource(id);
    if (!individual_)
        static_cast<SourceFormat&>(chosen) = format_;
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
        static_cast<SourceFormat&>(selected_[i]) = format_;
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
    format_.FormatStyle = style;
    RefreshSelected();
}

void SourceSelection::SetIndentSpaces(int32_t blanks) {
    format_.IndentSpaces = HeldIndentSpaces(blanks);
    RefreshSelected();
}

void SourceSelection::SetAuthorsBeforeEtAl(int32_t authors) {
    format_.AuthorsBeforeEtAl = HeldAuthorsBeforeEtAl(authors);
    RefreshSelected();
}

void SourceSelection::RefreshSelected() {
    for (size_t i = 0; i < selected_.Count(); ++i) {
        SourceFormat& format = selected_[i];
        if (!individual_)
            format = format_;
        else if (const CSource* const own = sources_.FindSourceByID(selected_[i].SourceID))
            format = *own;
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
