#include "notes/note_store.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "base/file_copy.h"
#include "base/file_descriptor.h"
#include "notes/file_faults.h"
#include "notes/note_copies.h"
#include "notes/note_file.h"
#include "notes/note_file_walk.h"
#include "notes/note_record.h"

namespace lore {

namespace {

/// The guid of the note that shows, for each id that notes of several guids share. Only the first `whole` notes stand
/// whole in the file.
std::unordered_map<int32_t, std::string> ShownOfShared(const std::vector<CNote>& notes, size_t whole,
                                                       const std::filesystem::path& file) {
    std::vector<std::pair<int32_t, size_t>> places;
    places.reserve(notes.size());
    for (size_t i = 0; i < notes.size(); ++i)
        places.emplace_back(notes[i].id, i);
    std::sort(places.begin(), places.end());
    std::unordered_set<int32_t> shared;
    for (size_t i = 1; i < places.size(); ++i) {
        if (places[i].first == places[i - 1].first && notes[places[i].second].guid != notes[places[i - 1].second].guid)
            shared.insert(places[i].first);
    }
    std::unordered_map<int32_t, std::string> guids;
    if (shared.empty())
        return guids;
    CopyChoice<std::string> choice;
    for (size_t i = 0; i < notes.size(); ++i) {
        const CNote& note = notes[i];
        if (shared.contains(note.id))
            choice.Add({note.id, IsAtHome(note, file), i < whole, note.dateEdited.Seconds()}, note.guid);
    }
    choice.TakeShown([&](int32_t id, std::string&& guid) { guids.emplace(id, std::move(guid)); });
    return guids;
}

/// Of several notes of one id the last one counts.
void DropAllButLast(std::vector<CNote>& notes) {
    std::unordered_map<int32_t, size_t> last;
    for (size_t i = 0; i < notes.size(); ++i)
        last[notes[i].id] = i;
    if (last.size() == notes.size())
        return;
    std::vector<CNote> kept;
    for (size_t i = 0; i < notes.size(); ++i) {
        if (last.at(notes[i].id) == i)
            kept.push_back(std::move(notes[i]));
    }
    notes = std::move(kept);
}

/// Takes out the copies of the notes that one file shows. `copies` is parallel to `notes`.
void DropCopiesWithin(std::vector<CNote>& notes, const std::vector<NoteCopy>& copies) {
    const std::vector<bool> isShown = ShownCopies(copies);
    std::unordered_map<int32_t, std::string> guids;
    for (size_t i = 0; i < notes.size(); ++i) {
        if (isShown[i])
            guids.emplace(notes[i].id, notes[i].guid);
    }
    std::vector<CNote> kept;
    for (size_t i = 0; i < notes.size(); ++i) {
        if (isShown[i] || guids.at(notes[i].id) != notes[i].guid)
            kept.push_back(std::move(notes[i]));
    }
    notes = std::move(kept);
}

constexpr size_t kNone = static_cast<size_t>(-1);

/// Appends the notes in their order, those that stand in the list as well.
void AppendNotes(std::vector<CNote>& notes, std::vector<CNote> incoming, const std::vector<size_t>& successors) {
    size_t kept = 0;
    for (size_t i = 0; i < notes.size(); ++i) {
        if (successors[i] != kNone)
            continue;
        if (kept != i)
            notes[kept] = std::move(notes[i]);
        ++kept;
    }
    notes.erase(notes.begin() + static_cast<std::ptrdiff_t>(kept), notes.end());
    std::move(incoming.begin(), incoming.end(), std::back_inserter(notes));
}

/// Replaces each note that stands in the list, at its first place, and appends the others in their order.
void PutNotes(std::vector<CNote>& notes, std::vector<CNote> incoming, const std::vector<size_t>& successors) {
    std::vector<bool> isPut(incoming.size(), false);
    for (size_t i = 0; i < successors.size(); ++i) {
        if (const size_t next = successors[i]; next != kNone && !isPut[next]) {
            notes[i] = std::move(incoming[next]);
            isPut[next] = true;
        }
    }
    for (size_t i = 0; i < incoming.size(); ++i) {
        if (!isPut[i])
            notes.push_back(std::move(incoming[i]));
    }
}

/// Of notes of a file that share a number the first one shows: each of those that were put there, by id and guid.
void PutBeforeOthers(std::vector<CNote>& notes, const std::unordered_map<int32_t, std::string>& put) {
    std::unordered_map<int32_t, size_t> first;
    for (size_t i = 0; i < notes.size(); ++i) {
        const auto hit = put.find(notes[i].id);
        if (hit == put.end())
            continue;
        const auto [place, isFirst] = first.try_emplace(notes[i].id, i);
        if (!isFirst && notes[i].guid == hit->second && notes[place->second].guid != hit->second)
            std::swap(notes[i], notes[place->second]);
    }
}

/// Whole notes behind those that the file counts: their number is what was damaged.
std::vector<CNote> TakeUncounted(NoteFileReader& reader) {
    std::vector<CNote> notes;
    while (reader.NextUncounted())
        notes.push_back(reader.TakeNote());
    return notes;
}

}  // namespace

/// What is known of notes that a file is about to get.
struct NoteStore::Arriving {
    LongList ids;  // in their order
    Guids guids;
    Ids here;  // those that the file holds, as far as the index knows

    Arriving(const std::vector<CNote>& notes, const std::string& path, const NoteIndex& index) {
        for (const CNote& note : notes) {
            ids.AddTail(note.id);
            guids.emplace(note.id, note.guid);
            if (const std::string* const old = index.FindPath(note.id); old && *old == path)
                here.insert(note.id);
        }
    }
};

/// The notes of a file that is about to be written anew.
struct NoteStore::HeldNotes {
    std::vector<CNote> notes;
    Guids shownGuids;  // of the ids that notes of several guids share

    bool IsShown(const CNote& note) const {
        const auto shown = shownGuids.find(note.id);
        return shown == shownGuids.end() || shown->second == note.guid;
    }
    bool SharesOneOf(const Ids& ids) const {
        return std::any_of(shownGuids.begin(), shownGuids.end(),
                           [&](const auto& shown) { return ids.contains(shown.first); });
    }

    /// For each note the position of the incoming one that takes its place, otherwise kNone: the note of the same id
    /// and guid, or without one, for an id of `here`, the one that shows. Another note that bears the same number
    /// stays.
    std::vector<size_t> Successors(const std::vector<CNote>& incoming, const Ids& here) const {
        std::unordered_map<int32_t, size_t> byId;
        for (size_t i = 0; i < incoming.size(); ++i)
            byId[incoming[i].id] = i;
        std::vector<size_t> successors(notes.size(), kNone);
        Ids met;
        for (size_t i = 0; i < notes.size(); ++i) {
            const auto hit = byId.find(notes[i].id);
            if (hit == byId.end() || incoming[hit->second].guid != notes[i].guid)
                continue;
            successors[i] = hit->second;
            met.insert(notes[i].id);
        }
        for (size_t i = 0; i < notes.size(); ++i) {
            const int32_t id = notes[i].id;
            if (const auto hit = byId.find(id);
                hit != byId.end() && !met.contains(id) && here.contains(id) && IsShown(notes[i]))
                successors[i] = hit->second;
        }
        return successors;
    }
    /// How many of some ids have a note that makes place.
    size_t CountReplaced(const std::vector<size_t>& successors, const Ids& ids) const {
        Ids replaced;
        for (size_t i = 0; i < notes.size(); ++i) {
            if (successors[i] != kNone && ids.contains(notes[i].id))
                replaced.insert(notes[i].id);
        }
        return replaced.size();
    }
    /// Gives how many of those that should stand here didn't.
    size_t Put(std::vector<CNote> incoming, const Arriving& arriving, Place place) {
        const std::vector<size_t> successors = Successors(incoming, arriving.here);
        const size_t missing = arriving.here.size() - CountReplaced(successors, arriving.here);
        const auto put = place == Place::AtTheEnd ? AppendNotes : PutNotes;
        put(notes, std::move(incoming), successors);
        PutBeforeOthers(notes, arriving.guids);
        return missing;
    }
};

bool NoteStore::SaveNote(const CNote& note) {
    return SaveNotes({note}).IsEmpty();
}

LongList NoteStore::SaveNotes(std::vector<CNote> notes, Place place) {
    NotesByFile byFile;
    for (CNote& note : notes)
        byFile[book_.paths.NoteFile(GetNoteFileName(note)).string()].push_back(std::move(note));
    Saving saving{place, {}, {}};
    bool isAnyWritten = false;
    for (auto& [path, incoming] : byFile)
        isAnyWritten = PutIntoFile(path, std::move(incoming), saving) || isAnyWritten;
    if (isAnyWritten)
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

/// False, and told, if nothing was written.
bool NoteStore::PutIntoFile(const std::string& path, std::vector<CNote> incoming, Saving& saving) {
    DropAllButLast(incoming);
    const Arriving arriving(incoming, path, book_.index);
    HeldNotes held;
    const bool isRead = ReadForRewrite(path, {}, held);
    const size_t missing = isRead ? held.Put(std::move(incoming), arriving, saving.place) : 0;
    if (!isRead || !Write(path, held.notes, arriving.guids)) {
        saving.failed.Merge(arriving.ids);
        return false;
    }
    if (missing > 0)
        faults_.Tell(
            {"A note was no longer in its file and was added to it again", path, "the file was changed", true});
    MoveInIndex(path, arriving.ids, saving);
    return true;
}

void NoteStore::MoveInIndex(const std::string& path, const LongList& ids, Saving& saving) {
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

NoteStore::IdsByFile NoteStore::GroupByFile(const LongList& ids) const {
    IdsByFile byFile;
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

LongList NoteStore::ChangeInFile(const std::string& path, const Ids& ids, const std::function<bool(CNote&)>& change) {
    HeldNotes held;
    if (!ReadForRewrite(path, {}, held))
        return LongList(std::vector<int32_t>(ids.begin(), ids.end()));
    LongList changed;
    for (CNote& note : held.notes) {
        if (ids.contains(note.id) && held.IsShown(note) && change(note))
            changed.AddTail(note.id);
    }
    return changed.IsEmpty() || Write(path, held.notes) ? LongList() : changed;
}

std::vector<CNote> NoteStore::DeleteNotes(const LongList& ids) {
    std::vector<CNote> deleted;
    for (const auto& [path, wanted] : GroupByFile(DropCopies(ids))) {
        std::vector<CNote> taken;
        if (!TakeFromFile(path, wanted, taken))
            continue;
        for (const int32_t id : wanted) {
            book_.index.RemoveFromIndex(id);
            book_.index.ForgetHiddenCopies(id);
        }
        std::move(taken.begin(), taken.end(), std::back_inserter(deleted));
    }
    Flush();
    return deleted;
}

/// Another note that bears one of the numbers stays.
bool NoteStore::TakeFromFile(const std::string& path, const Ids& ids, std::vector<CNote>& taken) {
    HeldNotes held;
    if (!ReadForRewrite(path, ids, held))
        return false;
    std::vector<CNote> kept;
    for (CNote& note : held.notes)
        (ids.contains(note.id) && held.IsShown(note) ? taken : kept).push_back(std::move(note));
    return Write(path, kept);
}

/// Takes the copies that don't show out of the other files: they would come to light at the next load, once the one
/// that shows has gone. Gives the notes that have none any more.
LongList NoteStore::DropCopies(const LongList& ids) {
    IdsByFile byFile;
    for (const int32_t id : ids) {
        const std::string* const shown = book_.index.FindPath(id);
        for (const std::string& path : book_.index.HiddenPaths(id)) {
            if (shown && *shown != path)
                byFile[path].insert(id);
        }
    }
    Ids left;
    for (const auto& [path, here] : byFile) {
        HeldNotes held;
        if (!ReadForRewrite(path, {}, held) || !Write(path, held.notes))
            left.insert(here.begin(), here.end());
    }
    LongList without;
    for (const int32_t id : ids) {
        if (!left.contains(id))
            without.AddTail(id);
    }
    return without;
}

/// False, and told, if writing the file anew would lose something: it can't be read, or no copy of it could be kept
/// where one is needed. That is for a damaged file, and where one of the ids that are about to leave the file stands
/// for several notes.
bool NoteStore::ReadForRewrite(const std::string& path, const Ids& leaving, HeldNotes& held) {
    NoteFileReader reader(context_);
    const FileResult result = reader.Open(path);
    if (result.Missing())
        return true;
    if (!result.Ok()) {
        faults_.Tell({kNoteFileUnread, path, result.Reason()});
        return false;
    }
    size_t whole = 0;
    while (reader.Next()) {
        held.notes.push_back(reader.TakeNote());
        whole += reader.IsNoteWhole() ? 1 : 0;
    }
    held.shownGuids = ShownOfShared(held.notes, whole, path);
    DropHiddenCopies(path, held.notes);
    if (reader.IsDamaged())
        return Keep(path, "A note file is damaged", std::string("it ") + reader.DamageText());
    return !held.SharesOneOf(leaving) || Keep(path, "Notes of a file have one number", "only one of them shows");
}

/// Keeps what a file holds, and tells it. False, told as well, if it couldn't be kept: the caller doesn't write then.
bool NoteStore::Keep(const std::string& path, const std::string& what, const std::string& reason) {
    std::filesystem::path kept;
    const FileResult copied = KeepCopy(path, kept);
    if (copied.Ok())
        faults_.Tell({what + "; what it held is kept in " + kept.filename().string(), path, reason, true});
    else
        faults_.Tell(
            {what + "; what it holds could not be kept, so the file was left as it is", path, copied.Reason()});
    return copied.Ok();
}

NoteStore::Mending NoteStore::MendFile(const std::string& path, const std::function<bool()>& keep) {
    std::vector<CNote> notes;
    std::vector<NoteCopy> copies;
    NoteFileReader reader(context_);
    if (!reader.Open(path).Ok())
        return {};
    while (reader.Next()) {
        copies.push_back(CopyOf(reader, path));
        notes.push_back(reader.TakeNote());
    }
    Mending mending;
    mending.wasDamaged = reader.IsDamaged();
    mending.copies = notes.size();
    DropCopiesWithin(notes, copies);
    DropHiddenCopies(path, notes);
    mending.copies -= notes.size();
    std::vector<CNote> uncounted = TakeUncounted(reader);  // the index doesn't know yet which copy of these shows
    mending.uncounted = uncounted.size();
    std::move(uncounted.begin(), uncounted.end(), std::back_inserter(notes));
    mending.notes = notes.size();
    if ((!mending.wasDamaged && mending.copies == 0) || !keep() || !Write(path, notes))
        return {};
    Flush();
    return mending;
}

/// Takes out the copies of notes that other files show. Another note that bears the same number is no copy, and stays.
void NoteStore::DropHiddenCopies(const std::string& path, std::vector<CNote>& notes) {
    IdsByFile elsewhere;
    for (const CNote& note : notes) {
        if (const std::string* const shown = book_.index.FindPath(note.id); shown && *shown != path)
            elsewhere[*shown].insert(note.id);
    }
    Guids guids;
    for (const auto& [file, ids] : elsewhere)
        FindShownGuids(file, ids, guids);
    std::erase_if(notes, [&](const CNote& note) {
        const auto shown = guids.find(note.id);
        return shown != guids.end() && shown->second == note.guid;
    });
}

void NoteStore::FindShownGuids(const std::string& path, const Ids& ids, Guids& guids) {
    NoteFileReader reader(context_);
    if (!reader.Open(path).Ok())
        return;
    CopyChoice<std::string> choice;
    while (reader.Next()) {
        if (ids.contains(reader.Head().id))
            choice.Add(CopyOf(reader, path), reader.Head().guid);
    }
    choice.TakeShown([&](int32_t id, std::string&& guid) { guids.emplace(id, std::move(guid)); });
}

bool NoteStore::Write(const std::string& path, const std::vector<CNote>& notes, const Guids& arriving) {
    const FileResult result = ReplaceFile(path, NoteFileBytes(notes));
    TellFailedWrite(faults_, kNoteFileUnwritten, path, result);
    if (result.Ok())
        book_.index.ForgetDamage(path);
    if (result.Ok() && texts_)
        texts_->UpdateFile(path, notes, ShownIn(path, notes, arriving));
    return result.Ok();
}

/// Which notes of a file show, as a load would have it: of those that share a number one, and none that another file
/// shows, but for those that arrive here from there.
std::vector<bool> NoteStore::ShownIn(const std::string& path, const std::vector<CNote>& notes,
                                     const Guids& arriving) const {
    const std::filesystem::path file(path);
    std::vector<NoteCopy> copies;
    copies.reserve(notes.size());
    for (const CNote& note : notes)
        copies.push_back({note.id, IsAtHome(note, file), true, note.dateEdited.Seconds()});
    std::vector<bool> shown = ShownCopies(copies);
    for (size_t i = 0; i < notes.size(); ++i) {
        const std::string* const place = book_.index.FindPath(notes[i].id);
        if (place && *place != path && !arriving.contains(notes[i].id))
            shown[i] = false;
    }
    return shown;
}

}  // namespace lore
