#include "notes/note_store.h"

#include <algorithm>
#include <iterator>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "base/file_copy.h"
#include "base/file_number.h"
#include "notes/file_faults.h"
#include "notes/note_file.h"
#include "notes/note_record.h"

namespace lore {

namespace {

const CNote* FindByID(const std::vector<CNote>& notes, int32_t id) {
    const auto found = std::find_if(notes.begin(), notes.end(), [id](const CNote& note) { return note.id == id; });
    return found == notes.end() ? nullptr : &*found;
}

/// Appends the notes in their order, those that stand in the list as well. Gives how many were not there.
size_t AppendNotes(std::vector<CNote>& notes, std::vector<CNote> incoming) {
    std::unordered_set<int32_t> there, arriving;
    for (const CNote& note : notes)
        there.insert(note.id);
    for (const CNote& note : incoming)
        arriving.insert(note.id);
    std::erase_if(notes, [&](const CNote& note) { return arriving.contains(note.id); });
    std::move(incoming.begin(), incoming.end(), std::back_inserter(notes));
    return static_cast<size_t>(
        std::count_if(arriving.begin(), arriving.end(), [&](int32_t id) { return !there.contains(id); }));
}

/// Replaces each note that stands in the list, at its first place, and appends the others in their order. Gives how
/// many were appended.
size_t PutNotes(std::vector<CNote>& notes, std::vector<CNote> incoming) {
    std::unordered_map<int32_t, size_t> places;
    for (size_t i = 0; i < notes.size(); ++i)
        places.emplace(notes[i].id, i);
    const size_t before = notes.size();
    for (CNote& note : incoming) {
        const auto [place, isNew] = places.emplace(note.id, notes.size());
        if (isNew)
            notes.push_back(std::move(note));
        else
            notes[place->second] = std::move(note);
    }
    return notes.size() - before;
}

}  // namespace

bool NoteStore::SaveNote(const CNote& note) {
    return SaveNotes({note}).IsEmpty();
}

LongList NoteStore::SaveNotes(std::vector<CNote> notes, Place place) {
    NotesByFile byFile;
    for (CNote& note : notes)
        byFile[book_.paths.NoteFile(GetNoteFileName(note)).string()].push_back(std::move(note));
    Saving saving{place, {}, {}};
    for (auto& [path, incoming] : byFile)
        PutIntoFile(path, std::move(incoming), saving);
    Flush();
    for (const auto& [path, ids] : saving.leaving) {
        std::vector<CNote> left;
        if (TakeFromFile(path, ids, left))
            continue;
        for (const int32_t id : ids)
            book_.index.AddHiddenCopy(path, id);
    }
    if (!saving.leaving.empty())
        Flush();
    return saving.failed;
}

/// What was written stands on the disk, its names too: between the new places of notes and the old ones, and at the
/// end.
void NoteStore::Flush() {
    const FileResult result = FlushFolder(book_.paths.Notes());
    TellFailedWrite(faults_, "The folder of the notes could not be flushed to the disk", book_.paths.Notes(), result);
}

void NoteStore::PutIntoFile(const std::string& path, std::vector<CNote> incoming, Saving& saving) {
    LongList ids;
    size_t expectedNew = 0;
    for (const CNote& note : incoming) {
        ids.AddTail(note.id);
        const std::string* const old = book_.index.FindPath(note.id);
        expectedNew += old && *old == path ? 0 : 1;
    }
    std::vector<CNote> notes;
    const bool isRead = ReadForRewrite(path, notes);
    const auto put = saving.place == Place::AtTheEnd ? AppendNotes : PutNotes;
    const size_t appended = isRead ? put(notes, std::move(incoming)) : 0;
    if (!isRead || !Write(path, notes)) {
        saving.failed.Merge(ids);
        return;
    }
    if (appended > expectedNew)
        faults_.Tell({"A note was no longer in its file and was added to it again", path, "the file was changed"});
    for (const int32_t id : ids) {
        const std::string* const old = book_.index.FindPath(id);
        if (old && *old == path)
            continue;
        if (old)
            saving.leaving[*old].insert(id);
        book_.index.RemoveFromIndex(id);
        book_.index.AddToIndex(path, id);
    }
}

NoteStore::IDsByFile NoteStore::GroupByFile(const LongList& ids) const {
    IDsByFile byFile;
    for (const int32_t id : ids) {
        if (const std::string* const path = book_.index.FindPath(id))
            byFile[*path].insert(id);
    }
    return byFile;
}

LongList NoteStore::ChangeNotes(const LongList& ids, const std::function<bool(CNote&)>& change) {
    LongList failed;
    for (const auto& [path, wanted] : GroupByFile(ids))
        failed.Merge(ChangeInFile(path, wanted, change));
    Flush();
    return failed;
}

LongList NoteStore::ChangeInFile(const std::string& path, const std::unordered_set<int32_t>& ids,
                                 const std::function<bool(CNote&)>& change) {
    std::vector<CNote> notes;
    if (!ReadForRewrite(path, notes))
        return LongList(std::vector<int32_t>(ids.begin(), ids.end()));
    LongList changed;
    for (CNote& note : notes) {
        if (ids.contains(note.id) && change(note))
            changed.AddTail(note.id);
    }
    return changed.IsEmpty() || Write(path, notes) ? LongList() : changed;
}

std::vector<CNote> NoteStore::DeleteNotes(const LongList& ids) {
    std::vector<CNote> deleted;
    for (const auto& [path, wanted] : GroupByFile(ids)) {
        std::vector<CNote> taken;
        if (!TakeFromFile(path, wanted, taken))
            continue;
        for (const int32_t id : wanted)
            book_.index.RemoveFromIndex(id);
        std::move(taken.begin(), taken.end(), std::back_inserter(deleted));
    }
    TakeHiddenCopies(deleted);
    Flush();
    return deleted;
}

bool NoteStore::TakeFromFile(const std::string& path, const std::unordered_set<int32_t>& ids,
                             std::vector<CNote>& taken) {
    std::vector<CNote> notes;
    if (!ReadForRewrite(path, notes))
        return false;
    std::vector<CNote> kept;
    for (CNote& note : notes)
        (ids.contains(note.id) ? taken : kept).push_back(std::move(note));
    return Write(path, kept);
}

/// A copy that doesn't show would come to light at the next load, once the copy that shows has gone.
void NoteStore::TakeHiddenCopies(const std::vector<CNote>& notes) {
    IDsByFile byFile;
    for (const CNote& note : notes) {
        for (const std::string& path : book_.index.TakeHiddenPaths(note.id))
            byFile[path].insert(note.id);
    }
    for (const auto& [path, ids] : byFile) {
        std::vector<CNote> held, kept;
        if (!ReadForRewrite(path, held))
            continue;
        for (CNote& note : held) {
            const CNote* const deleted = ids.contains(note.id) ? FindByID(notes, note.id) : nullptr;
            if (!deleted || deleted->guid != note.guid)
                kept.push_back(std::move(note));
        }
        Write(path, kept);
    }
}

/// False, and told, if writing the file anew would lose something: it can't be read, or it is damaged and no copy of it
/// could be kept.
bool NoteStore::ReadForRewrite(const std::string& path, std::vector<CNote>& notes) {
    NoteFileReader reader(context_);
    const FileResult result = reader.Open(path);
    if (result.Missing())
        return true;
    if (!result.Ok()) {
        faults_.Tell({kNoteFileUnread, path, result.Reason()});
        return false;
    }
    while (reader.Next())
        notes.push_back(reader.TakeNote());
    if (reader.IsDamaged()) {
        std::filesystem::path kept;
        const FileResult copied = KeepCopy(path, kept);
        faults_.Tell({"A note file is damaged; what it held is kept in " + kept.filename().string(), path,
                      copied.Ok() ? "it breaks off, or holds more than its notes" : copied.Reason()});
        if (!copied.Ok())
            return false;
    }
    DropHiddenCopies(path, notes);
    return true;
}

NoteStore::Mending NoteStore::MendFile(const std::string& path, const std::function<bool()>& keep) {
    std::vector<CNote> notes;
    NoteFileReader reader(context_);
    if (!reader.Open(path).Ok())
        return {};
    while (reader.Next())
        notes.push_back(reader.TakeNote());
    Mending mending;
    mending.wasDamaged = reader.IsDamaged();
    mending.copies = notes.size();
    DropHiddenCopies(path, notes);
    mending.notes = notes.size();
    mending.copies -= mending.notes;
    if ((!mending.wasDamaged && mending.copies == 0) || !keep() || !Write(path, notes))
        return {};
    Flush();
    return mending;
}

void NoteStore::DropHiddenCopies(const std::string& path, std::vector<CNote>& notes) {
    std::erase_if(notes, [&](const CNote& note) { return IsHiddenCopy(path, note); });
}

/// Another note that bears the same number is no copy, and stays.
bool NoteStore::IsHiddenCopy(const std::string& path, const CNote& note) {
    const std::string* const shown = book_.index.FindPath(note.id);
    if (!shown || *shown == path)
        return false;
    NoteFileReader reader(context_);
    if (!reader.Open(*shown).Ok())
        return false;
    while (reader.Next()) {
        if (reader.Head().id == note.id)
            return reader.Head().guid == note.guid;
    }
    return false;
}

bool NoteStore::Write(const std::string& path, const std::vector<CNote>& notes) {
    const FileResult result = ReplaceFile(path, NoteFileBytes(notes));
    TellFailedWrite(faults_, kNoteFileUnwritten, path, result);
    if (result.Ok() && texts_)
        texts_->UpdateFile(path, notes);
    return result.Ok();
}

}  // namespace lore
