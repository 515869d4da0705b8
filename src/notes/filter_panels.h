#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/id_marks.h"
#include "notes/panel_commands.h"
#include "notes/panel_entries.h"

namespace lore {

/// A command of a panel that the user has chosen, with the value and the notes that it works on.
struct PanelOrder {
    PanelAction action = PanelAction::Gather;
    PanelValue value = PanelValue::Category;
    int32_t id = -1;        ///< of a category or a source
    std::string name = {};  ///< of a key word
    Rgb color = 0;          ///< of a colour
    LongList notes = {};    ///< each once
    int noteBook = -1;      ///< for a copy, the position of the NoteBook among those that notes can be copied to
};

/// A filter panel without its window: the entries with their counts, narrowed by a filter text. Positions are those of
/// Entries(); they hold until the next SetEntries.
class FilterPanel {
public:
    /// Takes entries as the functions of panel_entries.h make them, and counts them against the list and the filter
    /// that were set before, or against another list.
    void SetEntries(std::vector<PanelEntry> entries, const LongList* listed = nullptr);
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
    /// A command of an entry, or of the panel where no entry stands (-1), as an order.
    PanelOrder OrderOf(int position, const PanelCommand& command) const;

private:
    LongList NotesOfAll() const;
    const PanelEntry& At(int position) const { return entries_[static_cast<size_t>(position)]; }
    void Mark(const LongList& listed);
    void Count();
    void Narrow();

    std::vector<PanelEntry> entries_;
    std::vector<std::string> folded_;  // lower-cased names in UTF-8, made by the first filter
    std::vector<int> shown_;
    std::string filter_;  // lower-cased, UTF-8
    IDMarks listed_;
};

}  // namespace lore
