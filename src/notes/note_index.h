#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "base/free_ids.h"
#include "base/id_marks.h"
#include "base/long_list.h"

namespace lore {

/// A note file and the notes in it.
struct CNoteIDsPath {
    std::string path;  ///< full path of the note file
    LongList ids;      ///< in file order
};

/// Where each note of the open NoteBook lies. An id stands in one file only; finding, adding and removing one takes
/// constant time.
class NoteIndex {
public:
    /// Puts the id behind the others of the file. An id that the index holds already stays where it is; one of 0 or
    /// less is no note.
    void AddToIndex(std::string_view path, int32_t id);
    /// The file of a note, or nothing.
    const std::string* FindPath(int32_t id) const;
    bool Contains(int32_t id) const { return FindPath(id) != nullptr; }
    /// A note that goes may come back: no new note gets its id.
    void RemoveFromIndex(int32_t id);

    /// The id for a new note: one above the last that was given out, which `lastGiven` is raised to. Where there is no
    /// such number, or a note has it, the lowest free one, or 0 if there is none. It isn't given again.
    int32_t GiveID(int& lastGiven);
    /// A note that isn't in the index has this id: no new note gets it.
    void MarkTaken(int32_t id) { taken_.Add(id); }

    /// A further copy of a note that the index holds stands in this file. It doesn't show.
    void AddHiddenCopy(std::string_view path, int32_t id);
    bool HasHiddenCopy(int32_t id) const { return hidden_.contains(id); }
    /// The files that hold further copies of a note.
    std::vector<std::string> HiddenPaths(int32_t id) const;
    void ForgetHiddenCopies(int32_t id) { hidden_.erase(id); }

    /// The report of the load names this file as damaged: it isn't told again at each reading.
    void MarkDamaged(const std::string& path) { damaged_.insert(path); }
    bool IsKnownDamaged(const std::string& path) const { return damaged_.contains(path); }
    /// The file was written anew.
    void ForgetDamage(const std::string& path) { damaged_.erase(path); }

    /// The number of notes.
    size_t Count() const { return places_.size(); }
    /// The files that hold notes, in the order in which they were first met.
    std::vector<CNoteIDsPath> Entries() const;
    /// The ids of all notes, file by file.
    LongList AllIDs() const;

private:
    struct Entry {
        std::string path;
        std::vector<int32_t> ids;  // 0 where a note was removed
        size_t removed = 0;
    };
    struct Place {
        uint32_t entry;
        uint32_t position;
    };
    void Compact(uint32_t entry);

    static constexpr int32_t kFirstID = 1001;

    std::vector<Entry> entries_;
    std::unordered_map<std::string, uint32_t> byPath_;
    std::unordered_map<int32_t, Place> places_;
    std::unordered_multimap<int32_t, std::string> hidden_;
    std::unordered_set<std::string> damaged_;
    IDMarks taken_;  // by notes that aren't in places_, or not yet
    FreeIDs free_{kFirstID};
};

}  // namespace lore
