#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <variant>

#include "base/date_time.h"
#include "base/rgb.h"
#include "edit/note_changes.h"

namespace lore {

/// A border colour, or a line of key words.
using NoteValue = std::variant<Rgb, std::string>;

/// What a note had before a change, and what it was given.
struct ReplacedValue {
    std::string guid;
    NoteValue former, given;
    DateTime formerEdited, edited;
};
/// Values of one kind, by the ids of their notes, so that a change can be undone.
using ReplacedValues = std::map<int32_t, ReplacedValue>;
/// Whether they are colours; false for none.
bool AreColors(const ReplacedValues& values);

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

    /// The colours or key words that the last change of such has replaced.
    ReplacedValues TakeReplaced() { return std::exchange(replaced_, {}); }
    /// Undoes that change. A note that has another value since, or has gone, stays as it is; one that was changed in
    /// another way keeps that, and the date of that. What can't be written, told, is left in `replaced`, so that it can
    /// be tried again. Gives how many notes have another value.
    size_t PutBack(ReplacedValues& replaced);

private:
    ChangedNotes Give(const LongList& ids, bool areColors, const std::function<NoteValue(const CNote&)>& wanted);
    ChangedNotes ChangeValues(const LongList& ids, bool areColors, const std::function<bool(CNote&)>& make);
    void Refile(const LongList& ids, const std::function<const NoteValue&(int32_t)>& valueOf);

    EditWorld& world_;
    CNoteList& list_;
    ReplacedValues replaced_;
};

}  // namespace lore
