#include "sources/source_store.h"

#include <algorithm>

#include "base/free_ids.h"
#include "base/text.h"
#include "notes/note_finder.h"
#include "notes/note_store.h"
#include "notes/notebook_lists.h"
#include "notes/sync_stamp.h"

namespace lore {

namespace {

/// What the notes know of a source goes from one identity to another in two steps, so that whichever of the two the
/// list of sources holds after a crash finds it: first under both keys, then under the new one alone.
class NewIdentity {
public:
    NewIdentity(std::vector<CNote> notes, std::string oldGuid, std::string newGuid)
        : before_(std::move(notes)), old_(std::move(oldGuid)), new_(std::move(newGuid)) {}

    const std::vector<CNote>& Before() const { return before_; }
    std::vector<CNote> UnderBoth(const DateTime& now) const {
        std::vector<CNote> notes = before_;
        for (CNote& note : notes) {
            note.dateEdited = now;
            if (const CNoteSourceInfo* const info = FindSourceInfo(note.sourceInfo, old_))
                note.sourceInfo.push_back({new_, info->text});
        }
        return notes;
    }
    /// Those notes that know something of the source.
    std::vector<CNote> UnderNew(const DateTime& now) const {
        std::vector<CNote> notes;
        for (CNote note : before_) {
            bool found = false;
            note.dateEdited = now;
            for (CNoteSourceInfo& info : note.sourceInfo) {
                if (EqualNoCase(info.key, old_)) {
                    info.key = new_;
                    found = true;
                }
            }
            if (found)
                notes.push_back(std::move(note));
        }
        return notes;
    }

private:
    std::vector<CNote> before_;
    std::string old_, new_;
};

}  // namespace

bool SourceStore::Add(CSource source) {
    OpenNoteBook& book = world_.book;
    const int32_t id = source.SourceID;
    if (id == 0) {
        world_.faults.Tell({"The source could not be added", book.paths.Sources().string(), kNoFreeID});
        return false;
    }
    book.sources.AddTail(std::move(source));
    if (!WriteSources(book, world_.faults)) {
        book.sources.RemoveSource(id);
        return false;
    }
    changes_.sources = true;
    return true;
}

bool SourceStore::Replace(CSource source) {
    OpenNoteBook& book = world_.book;
    const CSource* const live = book.sources.FindSourceByID(source.SourceID);
    if (!live)
        return Add(std::move(source));
    const CSource before = *live;
    source.NoteIDs = before.NoteIDs;
    const bool isRenamed = before.SourceGUID != source.SourceGUID;
    const DateTime now = world_.clock.Now();
    const NewIdentity identity(isRenamed ? NotesOf(before.NoteIDs) : std::vector<CNote>(), before.SourceGUID,
                               source.SourceGUID);
    // A note that can't be read would lose what it knows; its file has been told.
    if (isRenamed && identity.Before().size() < before.NoteIDs.Count())
        return false;
    if (!WriteNotes(identity.UnderBoth(now))) {
        WriteNotes(identity.Before());
        return false;
    }
    const std::string newGuid = source.SourceGUID;
    book.sources.ReplaceSource(before.SourceID, std::move(source));
    if (!WriteSources(book, world_.faults)) {
        book.sources.ReplaceSource(before.SourceID, before);
        // While the new list stands on the disk, the notes keep both keys.
        if (!isRenamed || !MayStandOnDisk(newGuid) || WriteSources(book, world_.faults))
            WriteNotes(identity.Before());
        return false;
    }
    WriteNotes(identity.UnderNew(now));
    for (const CNote& note : identity.Before())
        changes_.rewritten.AddUnique(note.id);
    Changed(before.NoteIDs);
    return true;
}

bool SourceStore::Remove(int32_t id) {
    OpenNoteBook& book = world_.book;
    const SourceList before = book.sources;
    if (!book.sources.RemoveSource(id))
        return false;
    if (!WriteSources(book, world_.faults)) {
        book.sources = before;
        return false;
    }
    changes_.sources = true;
    return true;
}

bool SourceStore::TakeTypes(const CustomTypeList& types) {
    world_.book.types = types;
    const bool isWritten = WriteSourceTypes(world_.book, world_.faults);
    if (isWritten)
        world_.book.sources.LinkCustomTypes(types);
    return isWritten;
}

bool SourceStore::ReplaceTypes(const CustomTypeList& types, const std::vector<CustomTypeList>& between) {
    OpenNoteBook& book = world_.book;
    const CustomTypeList typesBefore = book.types;
    const SourceList before = book.sources;
    size_t typesTaken = 0, sourcesTaken = 0;
    // Each stands on the disk with its sources before the next one, so that a load between two writes loses no value.
    for (const CustomTypeList& list : between) {
        if (sourcesTaken < typesTaken || !TakeTypes(list))
            break;
        ++typesTaken;
        sourcesTaken += WriteSources(book, world_.faults) ? 1 : 0;
    }
    if (sourcesTaken < between.size() || !TakeTypes(types)) {
        book.sources = before;
        const bool areBack = sourcesTaken == 0 || WriteSources(book, world_.faults);
        // Beside sources that stay as they are on the disk stand the types that these have taken.
        book.types = areBack ? typesBefore : between[sourcesTaken - 1];
        if (typesTaken > 0)
            WriteSourceTypes(book, world_.faults);
        book.types = typesBefore;
        return false;
    }
    between_ = between;
    LongList notes;
    bool any = false;
    for (size_t i = 0; i < before.Count(); ++i) {
        if (!IsSameCustomType(before[i].CustomTypeCopy, book.sources[i].CustomTypeCopy)) {
            any = true;
            notes.Merge(book.sources[i].NoteIDs);
        }
    }
    // Each load takes the definitions into the sources anew: a list that can't be written now loses nothing.
    if (any)
        WriteSources(book, world_.faults);
    Changed(notes);
    return true;
}

bool SourceStore::WriteNotes(const std::vector<CNote>& notes) {
    const ReadContext context = world_.Context();
    return notes.empty() || NoteStore(world_.book, context, world_.faults, world_.texts).SaveNotes(notes).IsEmpty();
}

/// A write can fail after the moment in which its file takes its place. A list that can't be read may hold the source.
bool SourceStore::MayStandOnDisk(const std::string& guid) {
    SourceList stored;
    const FileResult read = stored.LoadSources(world_.book.paths.Sources(), world_.Context());
    return (!read.Ok() && !read.Missing()) || stored.FindSourceByGUID(guid) != nullptr;
}

std::vector<CNote> SourceStore::NotesOf(const LongList& ids) {
    return FindNotes(world_.book.index, ids, world_.Context(), world_.faults);
}

void SourceStore::Changed(const LongList& notes) {
    changes_.sources = true;
    changes_.cited.Merge(notes);
    Stamp(notes);
}

void SourceStore::Stamp(const LongList& notes) {
    OpenNoteBook& book = world_.book;
    if (!book.syncLog.link.IsLinked() || notes.IsEmpty())
        return;
    bool any = false;
    const DateTime nowUtc = world_.clock.NowUtc();
    for (const CNote& note : NotesOf(notes))
        any = StampSyncRecord(book.syncLog, note.guid, [&](CSyncInfo& info) { info.SourcesChanged = nowUtc; }) || any;
    if (any)
        WriteSyncLog(book, world_.faults);
}

}  // namespace lore
