#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "bibliography/source_list.h"
#include "sources/source_store.h"

namespace lore {

/// The three choices above the list, in their order.
enum class SourceFilter { Title, Author, Publication };
inline constexpr size_t kSourceFilters = 3;

/// The sources of a NoteBook as a list that three choices narrow down, to look at, to edit, or to choose one. All
/// citations are made once, when it opens and after each change.
class SourceBrowser {
public:
    /// `store` outlives the browser. `selects`: the user is to choose a source.
    SourceBrowser(SourceStore& store, bool selects);

    bool Selects() const { return selects_; }
    const char* Title() const { return selects_ ? "Select Source" : "View Sources"; }

    /// The lines of a choice in order ignoring case, among them the one that stands for all.
    const std::vector<std::string>& Entries(SourceFilter filter) const { return Of(filter).entries; }
    size_t Chosen(SourceFilter filter) const { return Of(filter).chosen; }
    /// Chooses a line and narrows the list down. A selected source that isn't in it any more is forgotten.
    void Choose(SourceFilter filter, size_t line);

    bool ShowsFilters() const;
    void ToggleFilters();
    /// What the button says that shows and hides the choices.
    const char* FiltersText() const { return ShowsFilters() ? "Hide Filters" : "Show Filters"; }

    /// The sources that are shown, formatted, in the order of their citations.
    size_t Count() const { return shown_.size(); }
    const CSource& operator[](size_t row) const { return all_[shown_[row]]; }
    size_t CountOfAll() const { return all_.Count(); }
    std::optional<size_t> RowOf(int32_t sourceId) const;

    /// -1 without a selected source: what a dialog that was to choose returns then is no choice.
    int32_t SelectedID() const { return selected_; }
    std::optional<size_t> SelectedRow() const { return RowOf(selected_); }
    void Select(std::optional<size_t> row);

    /// The source to edit as the NoteBook has it. Without a selected one the user is told, and there is nothing.
    std::optional<CSource> SourceToEdit();
    /// Deletes the selected source after a question; one that has notes is refused. True if it has gone.
    bool Delete();
    /// An editor was closed. Takes the NoteBook's sources anew; `saved` is the source that was saved, -1 for none. It
    /// is shown and selected. The choices keep their lines where these still exist.
    void Refresh(int32_t saved);

private:
    struct Choice {
        std::vector<std::string> entries;
        size_t chosen = 0;
    };
    Choice& Of(SourceFilter filter) { return choices_[static_cast<size_t>(filter)]; }
    const Choice& Of(SourceFilter filter) const { return choices_[static_cast<size_t>(filter)]; }
    void Load();
    bool FillEntries();
    std::string_view Key(SourceFilter filter, uint32_t position) const;
    void Keep(SourceFilter filter);
    void FilterBy(SourceFilter changed);

    SourceStore& store_;
    bool selects_;
    SourceList all_;
    std::vector<uint32_t> order_;       // positions in all_ by citation
    std::vector<std::string> authors_;  // the author keys of all_
    std::vector<uint32_t> shown_;
    std::array<Choice, kSourceFilters> choices_;
    int32_t selected_ = -1;
};

}  // namespace lore
