#pragma once

#include <functional>

#include "base/long_list.h"
#include "edit/edit_world.h"
#include "notes/note.h"
#include "notes/note_list.h"
#include "notes/sync_log.h"

namespace lore {

/// One change made to many notes.
struct NoteChange {
    /// Makes it; false if the note is so already, and then nothing becomes of it. The first source, id, guid and
    /// creation day stay. It may be called again for a copy of the same note.
    std::function<bool(CNote&)> make;
    /// Puts the moment of the change into the note's record of the sync log.
    std::function<void(CSyncInfo&, const DateTime& nowUtc)> stamp;
};

/// What became of the notes.
struct ChangedNotes {
    LongList changed;  ///< they are on the disk, in the order given
    LongList failed;   ///< their file could not be read or written, which was told; they are as they were
};

/// Changes notes in their files, each file in one pass, and stamps their records in the sync log in one write. The
/// notes of `list`, the current one, follow at their places; it may be null. What the lists of the NoteBook hold of
/// them is the caller's matter.
ChangedNotes ChangeNotes(EditWorld& world, const LongList& ids, const NoteChange& change, CNoteList* list);

}  // namespace lore
