#include "notes/note_finder.h"

#include <algorithm>
#include <string>
#include <unordered_map>
#include <utility>

#include "notes/file_faults.h"
#include "notes/note_copies.h"
#include "notes/note_file_walk.h"

namespace lore {

namespace {

/// The note files that hold wanted notes, in the order of the first wanted note of each.
struct WantedNotes {
    std::vector<std::filesystem::path> files;
    std::unordered_map<int32_t, size_t> positions;  // in the list of results
    std::unordered_map<int32_t, size_t> fileOf;
    std::vector<size_t> counts;  // of the notes of each file
};

/// What the read of one note file has to tell.
struct FileFaults {
    const char* damage = nullptr;
    bool lacksNotes = false;
};

WantedNotes PlanReading(const NoteIndex& index, const LongList& ids) {
    WantedNotes wanted;
    std::unordered_map<std::string, size_t> files;
    for (const int32_t id : ids) {
        const std::string* path = index.FindPath(id);
        if (!path || !wanted.positions.try_emplace(id, wanted.positions.size()).second)
            continue;
        const auto [file, isNew] = files.try_emplace(*path, wanted.files.size());
        if (isNew) {
            wanted.files.emplace_back(*path);
            wanted.counts.push_back(0);
        }
        ++wanted.counts[file->second];
        wanted.fileOf.emplace(id, file->second);
    }
    return wanted;
}

/// The copies of notes that show, of those that `isWanted` takes.
template <typename IsWanted>
std::vector<CNote> ShownNotesOf(NoteFileReader& reader, const std::filesystem::path& file, IsWanted isWanted) {
    CopyChoice<CNote> choice;
    while (reader.Next()) {
        if (!isWanted(reader.Head().id))
            continue;
        const NoteCopy copy = CopyOf(reader, file);
        choice.Add(copy, reader.TakeNote());
    }
    std::vector<CNote> notes;
    choice.TakeShown([&](int32_t, CNote&& note) { notes.push_back(std::move(note)); });
    return notes;
}

}  // namespace

std::vector<CNote> FindNotes(const NoteIndex& index, const LongList& ids, const ReadContext& context,
                             FaultNotice& faults, const std::stop_token& stop) {
    const WantedNotes wanted = PlanReading(index, ids);
    std::vector<std::optional<CNote>> found(wanted.positions.size());
    std::vector<FileFaults> met(wanted.files.size());
    WalkNoteFiles(
        wanted.files, context, kReadThreads,
        [&](size_t file, NoteFileReader& reader) {
            const auto isWanted = [&](int32_t id) {
                const auto hit = wanted.fileOf.find(id);
                return hit != wanted.fileOf.end() && hit->second == file;
            };
            std::vector<CNote> notes = ShownNotesOf(reader, wanted.files[file], isWanted);
            met[file].lacksNotes = notes.size() < wanted.counts[file];
            if (reader.IsDamaged() && (met[file].lacksNotes || !index.IsKnownDamaged(wanted.files[file].string())))
                met[file].damage = reader.DamageText();
            for (CNote& note : notes)
                found[wanted.positions.at(note.id)] = std::move(note);
        },
        [&](size_t file, const FileResult& result) {
            TellOfNoteFile(faults, wanted.files[file], result, met[file].damage, met[file].lacksNotes);
        },
        stop);
    std::vector<CNote> notes;
    notes.reserve(found.size());
    for (std::optional<CNote>& note : found) {
        if (note)
            notes.push_back(std::move(*note));
    }
    return notes;
}

std::optional<CNote> FindNote(const NoteIndex& index, int32_t id, const ReadContext& context, FaultNotice& faults) {
    std::vector<CNote> notes = FindNotes(index, LongList{id}, context, faults);
    return notes.empty() ? std::nullopt : std::optional(std::move(notes.front()));
}

size_t CountNotes(const std::filesystem::path& notesFolder, const ReadContext& context, FaultNotice& faults) {
    const std::vector<std::filesystem::path> files = NoteFilesOf(notesFolder, faults);
    std::vector<std::vector<NoteCopy>> copiesIn(files.size());
    WalkNoteFiles(
        files, context, kReadThreads,
        [&](size_t file, NoteFileReader& reader) {
            while (reader.Next())
                copiesIn[file].push_back(CopyOf(reader, files[file]));
        },
        [&](size_t file, const FileResult& result) { TellFailedRead(faults, kNoteFileUnread, files[file], result); });
    std::vector<NoteCopy> copies;
    for (const std::vector<NoteCopy>& ofFile : copiesIn)
        copies.insert(copies.end(), ofFile.begin(), ofFile.end());
    const std::vector<bool> shown = ShownCopies(copies);
    return static_cast<size_t>(std::count(shown.begin(), shown.end(), true));
}

}  // namespace lore
