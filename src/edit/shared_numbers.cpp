#include "edit/shared_numbers.h"

#include <map>
#include <unordered_map>
#include <unordered_set>
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

class Renumbering {
public:
    using Keep = std::function<bool(const std::string&)>;

    Renumbering(OpenNoteBook& book, int& lastNoteID, const ReadContext& context, FaultNotice& faults, const Keep& keep)
        : book_(book), lastNoteID_(lastNoteID), context_(context), faults_(faults), keep_(keep) {}

    std::vector<RenumberedNote> Run() {
        FindFiles();
        for (auto& [path, file] : files_)
            ReadFile(path, file);
        ChooseShown();
        for (auto& [path, file] : files_)
            GiveNumbers(path, file);
        for (const auto& [path, file] : files_)
            WriteFile(path, file);
        if (!renumbered_.empty()) {
            RenumberInSyncLog();
            RenumberDrafts();
        }
        return std::move(renumbered_);
    }

private:
    struct Record {
        int32_t id;
        size_t number;  // among the notes of its file
        NoteIdentity identity;
        NoteCopy copy;
    };
    struct File {
        std::vector<Record> records;  // those of ids that stand several times
        bool isWhole = true;
        std::unordered_map<size_t, int32_t> newIDs;  // by the number of the record
    };
    struct Shown {
        std::string path;
        size_t number = 0;
        NoteIdentity identity;
    };

    void FindFiles() {
        for (const int32_t id : book_.index.AllIDs()) {
            if (!book_.index.HasHiddenCopy(id))
                continue;
            wanted_.insert(id);
            files_[*book_.index.FindPath(id)];
            for (const std::string& path : book_.index.HiddenPaths(id))
                files_[path];
        }
    }

    void ReadFile(const std::string& path, File& file) {
        NoGuids none;
        const ReadContext context{context_.now, context_.nowUtc, &none};
        NoteFileReader reader(context);
        if (const FileResult result = reader.Open(path); !result.Ok()) {
            faults_.Tell({kNoteFileUnread, path, result.Reason()});
            isUnread_ = true;
            return;
        }
        while (reader.Next()) {
            const CNote& head = reader.Head();
            if (wanted_.contains(head.id))
                file.records.push_back({head.id, reader.NoteNumber(), NoteIdentity::Of(head), CopyOf(reader, path)});
        }
        file.isWhole = !reader.IsDamaged();
    }

    /// As a load does: the files stand in its order.
    void ChooseShown() {
        CopyChoice<Shown> choice;
        for (const auto& [path, file] : files_) {
            for (const Record& record : file.records)
                choice.Add(record.copy, {path, record.number, record.identity});
        }
        choice.TakeShown([&](int32_t id, Shown&& shown) { shown_.emplace(id, std::move(shown)); });
    }

    /// Without a look at all files nobody knows which note shows.
    void GiveNumbers(const std::string& path, File& file) {
        if (isUnread_ || !file.isWhole)
            return;
        for (const Record& record : file.records) {
            const Shown& shown = shown_.at(record.id);
            if ((shown.path == path && shown.number == record.number) || record.identity.IsSameNote(shown.identity))
                continue;
            if (const int32_t id = NumberFor(record))
                file.newIDs.emplace(record.number, id);
        }
    }

    int32_t NumberFor(const Record& record) {
        std::vector<std::pair<NoteIdentity, int32_t>>& given = given_[record.id];
        for (const auto& [identity, id] : given) {
            if (identity == record.identity)
                return id;
        }
        const int32_t id = book_.index.GiveID(lastNoteID_);
        if (id == 0)
            faults_.Tell({"A note could not get a number of its own", book_.paths.Notes().string(), kNoFreeID});
        given.emplace_back(record.identity, id);
        return id;
    }

    void WriteFile(const std::string& path, const File& file) {
        if (file.newIDs.empty() || !keep_(path))
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
            const auto found = file.newIDs.find(reader.NoteNumber());
            if (found == file.newIDs.end())
                continue;
            // Copies of a note without a guid get the same one.
            note.guid = guids_.try_emplace(found->second, note.guid).first->second;
            renumbered.push_back({path, note.guid, note.id, found->second});
            note.id = found->second;
        }
        result = SaveNoteFile(path, notes);
        TellFailedWrite(faults_, kNoteFileUnwritten, path, result);
        if (result.Ok())
            renumbered_.insert(renumbered_.end(), renumbered.begin(), renumbered.end());
    }

    const RenumberedNote* Find(int32_t before, const std::string& guid) const {
        for (const RenumberedNote& note : renumbered_) {
            if (note.before == before && note.guid == guid)
                return &note;
        }
        return nullptr;
    }

    void RenumberInSyncLog() {
        std::vector<CSyncInfo> changed;
        for (const CSyncInfo& info : book_.syncLog.Records()) {
            if (const RenumberedNote* const note = Find(info.NoteId, info.NoteKey))
                changed.emplace_back(info).NoteId = note->now;
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
            Draft draft;
            bool isWhole = false;
            TellFailedRead(faults_, "The draft of a note could not be read", path,
                           DraftStore::ReadDraft(path, context_, draft, isWhole));
            if (!isWhole)
                continue;
            const RenumberedNote* const note = Find(draft.note.id, draft.note.guid);
            if (!note)
                continue;
            draft.note.id = note->now;
            TellFailedWrite(faults_, "The draft of a note could not be written", path, drafts.WriteDraft(draft));
        }
    }

    OpenNoteBook& book_;
    int& lastNoteID_;
    const ReadContext& context_;
    FaultNotice& faults_;
    const Keep& keep_;
    std::unordered_set<int32_t> wanted_;
    std::map<std::string, File> files_;
    bool isUnread_ = false;
    std::unordered_map<int32_t, Shown> shown_;
    std::unordered_map<int32_t, std::vector<std::pair<NoteIdentity, int32_t>>> given_;
    std::unordered_map<int32_t, std::string> guids_;  // by the new number
    std::vector<RenumberedNote> renumbered_;
};

}  // namespace

std::vector<RenumberedNote> RenumberSharedNotes(OpenNoteBook& book, int& lastNoteID, const ReadContext& context,
                                                FaultNotice& faults,
                                                const std::function<bool(const std::string&)>& keep) {
    return Renumbering(book, lastNoteID, context, faults, keep).Run();
}

}  // namespace lore
