#include "edit/note_changes.h"

#include <string>
#include <unordered_map>

#include "notes/note_store.h"
#include "notes/sync_stamp.h"

namespace lore {

ChangedNotes ChangeNotes(EditWorld& world, const LongList& ids, const NoteChange& change, CNoteList* list) {
    const ReadContext context = world.Context();
    std::unordered_map<int32_t, std::string> guids;  // of the notes that the change was made in
    ChangedNotes result;
    result.failed = NoteStore(world.book, context, world.faults, world.texts).ChangeNotes(ids, [&](CNote& note) {
        if (!change.make(note))
            return false;
        guids.emplace(note.id, note.guid);
        return true;
    });
    bool stamped = false;
    for (const int32_t id : ids) {
        const auto found = guids.find(id);
        if (found == guids.end() || result.failed.Contains(id) || !result.changed.AddUnique(id))
            continue;
        stamped |= StampSyncRecord(world.book.syncLog, found->second,
                                   [&](CSyncInfo& info) { change.stamp(info, context.nowUtc); });
        if (list)
            list->ChangeNote(id, change.make);
    }
    if (stamped)
        WriteSyncLog(world.book, world.faults);
    return result;
}

}  // namespace lore
