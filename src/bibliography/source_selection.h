#pragma once

#include <cstdint>

#include "bibliography/source_list.h"

namespace lore {

/// What ends the dialog "Select Sources For Bibliography" with its choice taken; any other result does nothing.
inline constexpr int kSourcesSelected = 2112;

/// The dialog "Select Sources For Bibliography": two lists of citations between which sources move, and how the
/// selected ones are formatted. The NoteBook's sources stay as they are.
class SourceSelection {
public:
    /// Both lists outlive the model and stay as they are.
    SourceSelection(const SourceList& sources, const AuthorList& authors);

    /// The two lists as they are shown: formatted. The bibliography takes the selected ones as they stand.
    const SourceList& Available() const { return available_; }
    const SourceList& Selected() const { return selected_; }

    /// Moves a source to the selected ones, and back. False if it isn't where it is to be taken from.
    bool Select(int32_t id);
    bool Remove(int32_t id);
    void SelectAll();
    void ClearAll();

    /// "Sort Sources Alphabetically": on sorts the selected sources now and after every change; off leaves their order.
    bool Sorted() const { return sorted_; }
    void SetSorted(bool sorted);

    /// "Use Sources' Individual Formatting", or "Set ALL Sources Formatting" with the three values below.
    bool Individual() const { return individual_; }
    void SetIndividual(bool individual);
    int32_t Style() const { return format_.FormatStyle; }
    int32_t IndentSpaces() const { return format_.IndentSpaces; }
    int32_t AuthorsBeforeEtAl() const { return format_.AuthorsBeforeEtAl; }
    void SetStyle(int32_t style);
    /// Values outside of 0 to 10 and of 1 to 15 become the nearer limit.
    void SetIndentSpaces(int32_t blanks);
    void SetAuthorsBeforeEtAl(int32_t authors);

private:
    void RefreshSelected();
    void FormatSelected();

    const SourceList& sources_;
    const AuthorList& authors_;
    SourceList available_, selected_;
    bool sorted_ = true, individual_ = true;
    SourceFormat format_;
};

}  // namespace lore
