#include "edit/shared_numbers.h"

#include <map>
#include <unordered_map>
#include <utility>

#include "base/free_ids.h"
#include "edit/draft_store.h"
#include "notes/file_faults.h"
#include "notes/note_copies.h"
#include "notes/note_file.h"
#include "notes/note_file_walk.h"
#include "notes/note_identity.h"
#include "notes/sync_stamp.h"

namespace lore {

namespace {

struct Record {
    int32_t id;
    NoteIdentity identity;
    NoteCopy copy;
};
/// The notes of one file, in its order.
struct FileRecords {
    bool isRead = false, isWhole = false;
    std::vector<Record> records;
};

FileRecords ReadRecords(const std::string& path, const ReadContext& context, FaultNotice& faults) {
    NoGuids none;
    const ReadContext reading{context.now, context.nowUtc, &none};
    NoteFileReader reader(reading);
    FileRecords file;
    if (const FileResult result = reader.Open(path); !result.Ok()) {
        faults.Tell({kNoteFileUnread, path, result.Reason()});
        return file;
    }
    while (reader.Next())
        file.records.push_back({reader.Head().id, NoteIdentity::Of(reader.Head()), CopyOf(reader, path)});
    file.isRead = true;
    file.isWhole = !reader.IsDamaged();
    return file;
}

class Renumbering {
public:
    using Keep = std::function<bool(const std::string&)>;

    Renumbering(const SharedNumbers& shared, OpenNoteBook& book, int& lastNoteID, const ReadContext& context,
                FaultNotice& faults, const Keep& keep)
        : shared_(shared), book_(book), lastNoteID_(lastNoteID), context_(context), faults_(faults), keep_(keep) {}

    std::vector<RenumberedNote> Run() {
        for (const std::string& path : shared_.files)
            GiveNumbers(path);
        for (const auto& [path, newIDs] : newIDsOf_)
            WriteFile(path, newIDs);
        if (!renumbered_.empty()) {
            RenumberInSyncLog();
            RenumberDrafts();
        }
        return std::move(renumbered_);
    }

private:
    using NewIDs = std::unordered_map<size_t, int32_t>;  // by the number of the note in its file

    void GiveNumbers(const std::string& path) {
        const FileRecords file = ReadRecords(path, context_, faults_);
        if (!file.isWhole)
            return;
        for (size_t i = 0; i < file.records.size(); ++i) {
            const Record& record = file.records[i];
            const auto shown = shared_.shown.find(record.id);
            if (shown == shared_.shown.end() || record.identity.IsSameNote(shown->second))
                continue;
            if (const int32_t id = NumberFor(record))
                newIDsOf_[path].emplace(i, id);
        }
    }

    int32_t NumberFor(const Record& record) {
        const auto [given, isNew] = given_.try_emplace({record.id, record.identity.Group()});
        if (!isNew)
            return given->second;
        given->second = book_.index.GiveID(lastNoteID_);
        if (given->second == 0)
            faults_.Tell({"A note could not get a number of its own", book_.paths.Notes().string(), kNoFreeID});
        return given->second;
    }

    void WriteFile(const std::string& path, const NewIDs& newIDs) {
        if (!keep_(path))
            return;
        NoteFileReader reader(context_);
        FileResult result = reader.Open(path);
        TellFailedRead(faults_, kNoteFileUnread, path, result);
        if (!result.Ok())
            return;
        std::vector<CNote> notes;
        std::vector<RenumberedNote> renumbered;
        while (reader.Next()) {
            CNote& note = notes.emplace_back(reader.TakeNote());
            const auto found = newIDs.find(reader.NoteNumber());
            if (found == newIDs.end())
                continue;
            // Copies of a note without a guid get the same one.
            note.guid = guids_.try_emplace(found->second, note.guid).first->second;
            renumbered.push_back({path, note.guid, note.id, found->second});
            note.id = found->second;
        }
        result = SaveNoteFile(path, notes);
        TellFailedWrite(faults_, kNoteFileUnwritten, path, result);
        if (!result.Ok())
            return;
        renumbered_.insert(renumbered_.end(), renumbered.begin(), renumbered.end());
        for (const RenumberedNote& note : renumbered)
            newIDs_.try_emplace({note.before, note.guid}, note.now);
    }

    /// 0 for a note that keeps its number.
    int32_t NewIDOf(int32_t before, const std::string& guid) const {
        const auto found = newIDs_.find({before, guid});
        return found == newIDs_.end() ? 0 : found->second;
    }

    void RenumberInSyncLog() {
        std::vector<CSyncInfo> changed;
        for (const CSyncInfo& info : book_.syncLog.Records()) {
            if (const int32_t id = NewIDOf(info.NoteId, info.NoteKey))
                changed.emplace_back(info).NoteId = id;
        }
        if (changed.empty() || !keep_(book_.paths.SyncLog().string()))
            return;
        for (const CSyncInfo& info : changed)
            book_.syncLog.ReplaceSyncInfo(info);
        WriteSyncLog(book_, faults_);
    }

    void RenumberDrafts() {
        const DraftStore drafts(book_.paths);
        for (const std::filesystem::path& path : drafts.ListDrafts()) {
            Loaded<Draft> loaded = DraftStore::ReadDraft(path, context_);
            TellFailedRead(faults_, "The draft of a note could not be read", path, loaded.file);
            if (!loaded.ReadWhole())
                continue;
            Draft& draft = loaded.value;
            const int32_t id = NewIDOf(draft.note.id, draft.note.guid);
            if (id == 0)
                continue;
            draft.note.id = id;
            TellFailedWrite(faults_, "The draft of a note could not be written", path, drafts.WriteDraft(draft));
        }
    }

    const SharedNumbers& shared_;
    OpenNoteBook& book_;
    int& lastNoteID_;
    const ReadContext& context_;
    FaultNotice& faults_;
    const Keep& keep_;
    std::map<std::string, NewIDs> newIDsOf_;                                   // by the file
    std::map<std::pair<int32_t, std::pair<size_t, int64_t>>, int32_t> given_;  // by the old number and the group
    std::unordered_map<int32_t, std::string> guids_;                           // by the new number
    std::vector<RenumberedNote> renumbered_;
    std::map<std::pair<int32_t, std::string>, int32_t> newIDs_;  // of renumbered_, by the old number and the guid
};

}  // namespace

SharedNumbers FindSharedNumbers(const OpenNoteBook& book, const ReadContext& context, FaultNotice& faults) {
    SharedNumbers shared;
    for (const int32_t id : book.index.AllIDs()) {
        if (!book.index.HasHiddenCopy(id))
            continue;
        shared.files.insert(*book.index.FindPath(id));
        for (const std::string& path : book.index.HiddenPaths(id))
            shared.files.insert(path);
    }
    CopyChoice<NoteIdentity> choice;
    for (const std::string& path : shared.files) {  // in the order of a load
        const FileRecords file = ReadRecords(path, context, faults);
        if (!file.isRead)
            return {};  // without a look at all files nobody knows which note shows
        for (const Record& record : file.records)
            choice.Add(record.copy, record.identity);
    }
    choice.TakeShown([&](int32_t id, const NoteIdentity& identity) { shared.shown.emplace(id, identity); });
    return shared;
}

std::vector<RenumberedNote> RenumberSharedNotes(const SharedNumbers& shared, OpenNoteBook& book, int& lastNoteID,
                                                const ReadContext& context, FaultNotice& faults,
                                                const std::function<bool(const std::string&)>& keep) {
    return Renumbering(shared, book, lastNoteID, context, faults, keep).Run();
}

}  // namespace lore
