#pragma once

#include <string>

#include "base/rgb.h"
#include "edit/note_changes.h"

namespace lore {

/// Gives notes a value, or takes it from them, outside the editor: what a save of the editor does for this part of a
/// note. Files, the lists of the NoteBook, the sync log and the notes of the current list follow; the order of the list
/// is the caller's matter. Notes that are so already stay untouched.
class ValueChanges {
public:
    /// Both outlive the changes.
    ValueChanges(EditWorld& world, CNoteList& list) : world_(world), list_(list) {}

    /// Gives notes a border colour, one after the other in their order; 0 takes it away.
    ChangedNotes SetNotesColor(const LongList& ids, Rgb color);
    ChangedNotes AttachKeyWord(const LongList& ids, const std::string& name);
    ChangedNotes RemoveKeyWord(const LongList& ids, const std::string& name);
    /// Files notes in a category of the forest in one set (1, 2 or 3), wherever they stood in it.
    ChangedNotes FileInCategory(const LongList& ids, int32_t category, int set);
    /// Puts a source behind the others of a note. The note moves to another file if it had none. The note of the list
    /// is left to the caller, who knows how to cite. False if nothing was changed.
    bool AddSource(int32_t id, int32_t source);

private:
    ChangedNotes ChangeKeyWords(const LongList& ids, const std::string& name,
                                std::string (*change)(std::string_view text, std::string_view name));

    EditWorld& world_;
    CNoteList& list_;
};

}  // namespace lore
