#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/id_marks.h"
#include "notes/panel_commands.h"
#include "notes/panel_entries.h"

namespace lore {

/// A filter panel without its window: the entries with their counts, narrowed by a filter text. Positions are those of
/// Entries(); they hold until the next SetEntries.
class FilterPanel {
public:
    /// Takes entries as the functions of panel_entries.h make them, and counts them against the list and the filter
    /// that were set before.
    void SetEntries(std::vector<PanelEntry> entries);
    /// Counts anew after a change of the current list.
    void CountNotes(const LongList& listed);
    /// Narrows to the entries whose name holds the text, ignoring case, and those above them. Blanks around the text
    /// don't count; an empty text shows all.
    void SetFilter(std::string_view text);

    const std::vector<PanelEntry>& Entries() const { return entries_; }
    /// The positions of the entries that the filter leaves, ascending.
    const std::vector<int>& Shown() const { return shown_; }
    /// True if the filter is set and the entry itself matches, not just one below it.
    bool Matches(int position) const;

    /// "Name (3/7)": the notes in the current list and all notes; of a colour the counts alone, "(3/7)".
    std::string Caption(int position) const;
    /// "3/7", for a window that draws counts apart.
    std::string Counts(int position) const;
    /// The ids that a command of an entry works on, each once, in the order of the entry's notes.
    LongList NotesOf(int position, PanelScope scope) const;

private:
    const PanelEntry& At(int position) const { return entries_[static_cast<size_t>(position)]; }
    void Count();
    void Narrow();

    std::vector<PanelEntry> entries_;
    std::vector<std::string> folded_;  // lower-cased names in UTF-8, made by the first filter
    std::vector<int> shown_;
    std::string filter_;  // lower-cased, UTF-8
    IDMarks listed_;
};

}  // namespace lore
