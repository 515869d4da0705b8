#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "base/date_time.h"
#include "base/long_list.h"
#include "base/rgb.h"
#include "bibliography/source_info.h"
#include "classify/category_tree.h"
#include "edit/note_changes.h"

namespace lore {

/// Where a note is filed in one set (1, 2 or 3), as it stores that.
struct FiledPath {
    int set = 1;
    CProCategoryTree path;

    bool operator==(const FiledPath& other) const { return set == other.set && path.IsSameTree(other.path); }
};
/// The sources of a note, and what it says of them.
struct TiedSources {
    LongList sources;
    std::vector<CNoteSourceInfo> info;

    bool operator==(const TiedSources&) const = default;
};
/// A border colour, a line of key words, a category of one set, or the sources.
using NoteValue = std::variant<Rgb, std::string, FiledPath, TiedSources>;

/// What a note had before a change, and what it was given.
struct ReplacedValue {
    std::string guid;
    NoteValue former, given;
    DateTime formerEdited, edited;
};
/// Values of one type, by the ids of their notes, so that a change can be undone.
using ReplacedValues = std::map<int32_t, ReplacedValue>;

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

    /// What the last change has replaced.
    ReplacedValues TakeReplaced() { return std::exchange(replaced_, {}); }
    /// Undoes that change. A note that has another value since, or has gone, stays as it is; so does one whose former
    /// category has gone. One that was renamed or moved counts as the same, and notes get its present path. A note that
    /// was changed in another way keeps that, and the date of that. What can't be written, told, is left in `replaced`,
    /// so that it can be tried again. Gives how many notes stay. Sources put back are the caller's to show, as after
    /// AddSource.
    size_t PutBack(ReplacedValues& replaced);

private:
    template <typename Wanted>
    ChangedNotes Give(const LongList& ids, const Wanted& wanted);
    ChangedNotes ChangeValues(const LongList& ids, const NoteValue& like, const std::function<bool(CNote&)>& make);
    void Refile(const LongList& ids, const std::function<const NoteValue&(int32_t)>& valueOf);
    size_t DropGoneCategories(ReplacedValues& replaced) const;
    size_t PutBackEach(ReplacedValues& replaced);
    size_t PutBackSources(ReplacedValues& replaced);
    bool SaveWithSources(const CNote& before, const CNote& note);

    EditWorld& world_;
    CNoteList& list_;
    ReplacedValues replaced_;
};

}  // namespace lore
