#pragma once

#include <vector>

#include "edit/edit_world.h"

namespace lore {

/// What has changed in the NoteBook while sources were worked on, for those who show its notes.
struct SourceChanges {
    bool sources = false;  ///< a source came, went or changed
    bool authors = false;  ///< a name changed, and with it perhaps every citation
    LongList cited;        ///< notes of sources whose citations may have changed
    LongList rewritten;    ///< notes whose own records were written anew

    bool Any() const { return sources || authors; }
};

/// Brings changes of sources into the open NoteBook and onto the disk at once. What can't be written is told, and then
/// nothing has changed. The notes of a changed source take its stamp in the log of a linked NoteBook.
class SourceStore {
public:
    /// Both outlive the store.
    SourceStore(EditWorld& world, SourceChanges& changes) : world_(world), changes_(changes) {}

    bool Add(CSource source);
    /// Replaces the source with the same SourceID; its notes stay tied to it. With another SourceGUID than before the
    /// notes count as changed now, and what they alone know of the source goes on to the new one.
    bool Replace(CSource source);
    bool Remove(int32_t id);
    /// Replaces the user-defined types. Their sources take the new definitions and keep their values; first they take
    /// those of the lists between, one after the other, which are there for that alone.
    bool ReplaceTypes(const CustomTypeList& types, const std::vector<CustomTypeList>& between = {});
    /// The lists between of the last replacement, for copies of sources.
    const std::vector<CustomTypeList>& TypesBetween() const { return between_; }

    EditWorld& World() { return world_; }
    SourceChanges& Changes() { return changes_; }

private:
    bool TakeTypes(const CustomTypeList& types);
    bool WriteNotes(const std::vector<CNote>& notes);
    bool MayStandOnDisk(const std::string& guid);
    std::vector<CNote> NotesOf(const LongList& ids);
    void Changed(const LongList& notes);
    void Stamp(const LongList& notes);

    EditWorld& world_;
    SourceChanges& changes_;
    std::vector<CustomTypeList> between_;
};

}  // namespace lore
