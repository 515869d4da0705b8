#include "edit/repair_notebook.h"

#include <filesystem>
#include <set>
#include <utility>

#include "base/file_copy.h"
#include "classify/category_merge.h"
#include "edit/shared_numbers.h"
#include "notes/file_faults.h"
#include "notes/note_file.h"
#include "notes/note_file_walk.h"
#include "notes/note_finder.h"
#include "notes/note_record.h"
#include "notes/note_store.h"
#include "notes/notebook_lists.h"

namespace lore {

namespace {

/// What a file that broke off seems to hold after its end has neither an id nor a name.
void DropMadeUp(std::vector<CProCategoryTree>& nodes) {
    for (CProCategoryTree& node : nodes)
        DropMadeUp(node.children);
    std::erase_if(
        nodes, [](const CProCategoryTree& node) { return node.id < 1 && node.name.empty() && node.children.empty(); });
}

class Repairer {
public:
    Repairer(OpenNoteBook& book, IdCounters& counters, const ReadContext& context, FaultNotice& faults)
        : book_(book), counters_(counters), context_(context), faults_(faults) {}

    std::vector<Repair> Run();

private:
    LoadReport Load();
    bool MendFiles();
    bool RenumberNotes(const SharedNumbers& shared);
    void MoveNotesHome(const LoadReport& report);
    struct NoteRepair {
        int32_t note;
        Repair what;
    };
    void RestoreCategories(const LoadReport& report);
    bool IsLost(const CProCategoryTree& path) const;
    std::vector<NoteRepair> MergeLost(std::vector<CNote>& notes);
    void Save(std::vector<CNote> notes, const std::vector<NoteRepair>& mended);
    bool KeepOnce(const std::string& path);
    bool KeepFilesOf(const CNote& note);
    std::string FileOf(int32_t id) const;
    static std::string Name(const std::string& path) { return std::filesystem::path(path).filename().string(); }

    OpenNoteBook& book_;
    IdCounters& counters_;
    const ReadContext& context_;
    FaultNotice& faults_;
    std::set<std::string> kept_;
    std::vector<Repair> repairs_;
};

LoadReport Repairer::Load() {
    LoadOptions options;
    options.mode = LoadMode::Mending;
    options.keepHeads = true;
    return LoadNoteBook(book_, counters_, context_, faults_, options);
}

std::vector<Repair> Repairer::Run() {
    LoadReport report = Load();
    if (!report.listed)
        return {};
    SharedNumbers shared = FindSharedNumbers(book_, context_, faults_);  // a mended note might show instead
    if (MendFiles()) {
        report = Load();
        if (!report.listed)
            return std::move(repairs_);
        shared = FindSharedNumbers(book_, context_, faults_);
        MendFiles();  // of a note that has come back, copies may stand in several files
    }
    if (RenumberNotes(shared)) {
        report = Load();
        if (!report.listed)
            return std::move(repairs_);
        MendFiles();  // of a note that was hidden, copies may stand in several files
    }
    MoveNotesHome(report);
    RestoreCategories(report);
    return std::move(repairs_);
}

std::string Repairer::FileOf(int32_t id) const {
    const std::string* const path = book_.index.FindPath(id);
    return path ? *path : std::string();
}

/// Keeps a file as it was before the first change to it.
bool Repairer::KeepOnce(const std::string& path) {
    if (kept_.contains(path))
        return true;
    std::error_code error;
    if (std::filesystem::status(path, error).type() == std::filesystem::file_type::not_found) {
        kept_.insert(path);  // what the repair makes there is no more to be kept
        return true;
    }
    std::filesystem::path kept;
    const FileResult result = KeepCopy(path, kept);
    TellFailedWrite(faults_, "A copy could not be kept, so the file was left as it is", path, result);
    if (result.Ok())
        kept_.insert(path);
    return result.Ok();
}

/// The file that holds the note and the one that it goes to.
bool Repairer::KeepFilesOf(const CNote& note) {
    return KeepOnce(FileOf(note.id)) && KeepOnce(book_.paths.NoteFile(GetNoteFileName(note)).string());
}

/// Files that break off or count too few notes, and files with copies of notes that another file or place shows. True
/// if notes have come back that weren't counted: what was loaded doesn't show them yet.
bool Repairer::MendFiles() {
    bool cameBack = false;
    for (const std::filesystem::path& file : NoteFilesOf(book_.paths.Notes(), faults_)) {
        const NoteStore::Mending mending = NoteStore(book_, context_, faults_, nullptr).MendFile(file.string(), [&] {
            return KeepOnce(file.string());
        });
        if (mending.wasDamaged)
            repairs_.push_back({file.string(), "was written anew with the " + std::to_string(mending.notes) +
                                                   " notes that could be read; the former file is kept beside it"});
        if (mending.copies > 0)
            repairs_.push_back({file.string(), std::to_string(mending.copies) +
                                                   " copies of notes that stand in the files where they belong were "
                                                   "taken out; the former file is kept beside it"});
        cameBack = cameBack || mending.uncounted > 0;
    }
    return cameBack;
}

/// True if a note has got another number: what was loaded doesn't show it yet.
bool Repairer::RenumberNotes(const SharedNumbers& shared) {
    const std::vector<RenumberedNote> notes =
        RenumberSharedNotes(shared, book_, counters_.MaxNoteID, context_, faults_,
                            [this](const std::string& path) { return KeepOnce(path); });
    for (const RenumberedNote& note : notes)
        repairs_.push_back({note.file, "note " + std::to_string(note.before) +
                                           ", hidden by another note of this number, has the number " +
                                           std::to_string(note.now) + " now"});
    return !notes.empty();
}

void Repairer::MoveNotesHome(const LoadReport& report) {
    LongList strays;
    for (const CNote& head : report.heads) {
        const std::string path = FileOf(head.id);
        if (!IsAtHome(head, path) && KeepFilesOf(head))
            strays.AddTail(head.id);
    }
    std::vector<CNote> notes = FindNotes(book_.index, strays, context_, faults_);
    std::vector<NoteRepair> moves;
    moves.reserve(notes.size());
    for (const CNote& note : notes)
        moves.push_back(
            {note.id, {FileOf(note.id), "note " + std::to_string(note.id) + " was moved to " + GetNoteFileName(note)}});
    Save(std::move(notes), moves);
}

/// Only what has reached the files is told as mended.
void Repairer::Save(std::vector<CNote> notes, const std::vector<NoteRepair>& mended) {
    const LongList failed = NoteStore(book_, context_, faults_, nullptr).SaveNotes(std::move(notes));
    for (const NoteRepair& repair : mended) {
        if (!failed.Contains(repair.note))
            repairs_.push_back(repair.what);
    }
}

/// A note carries the names of its paths, so that a forest which has lost a category gets it back. A damaged file is
/// written anew.
void Repairer::RestoreCategories(const LoadReport& report) {
    LongList lost;
    for (const CNote& head : report.heads) {
        for (const CProCategoryTree& path : head.categories) {
            if (IsLost(path))
                lost.AddUnique(head.id);
        }
    }
    const bool wasWhole = book_.categories.ReadWhole();
    const std::string categories = book_.paths.Categories().string();
    if ((lost.IsEmpty() && wasWhole) || !KeepOnce(categories))
        return;
    std::vector<CNote> notes = FindNotes(book_.index, lost, context_, faults_);
    for (const CNote& note : notes) {
        if (!KeepFilesOf(note))
            return;
    }
    const std::vector<NoteRepair> mended = MergeLost(notes);
    if (!wasWhole) {
        DropMadeUp(book_.categories.EditRoots());
        book_.categories.LinkAll();
    }
    book_.categories.MarkWhole();
    if (!WriteCategories(book_, book_.categories, faults_))
        return;
    if (!wasWhole)
        repairs_.push_back({categories, "was written anew with what could be read; the former file is kept beside it"});
    Save(std::move(notes), mended);
}

bool Repairer::IsLost(const CProCategoryTree& path) const {
    return !path.IsEmptyPath() && !path.name.empty() &&
           !std::as_const(book_.categories).FindByID(DeepestCategoryID(path));
}

std::vector<Repairer::NoteRepair> Repairer::MergeLost(std::vector<CNote>& notes) {
    std::vector<std::pair<CNote*, size_t>> lost;  // while the forest is as it was
    for (CNote& note : notes) {
        for (size_t set = 0; set < kSetCount; ++set) {
            if (IsLost(note.categories[set]))
                lost.emplace_back(&note, set);
        }
    }
    std::vector<NoteRepair> mended;
    CategoryMerger merger(book_.categories, counters_.MaxCategoryID);
    for (const auto& [note, set] : lost) {
        merger.MergePath(note->id, note->categories[set], static_cast<int>(set) + 1);
        mended.push_back({note->id,
                          {FileOf(note->id), "note " + std::to_string(note->id) + " has its category of set " +
                                                 std::to_string(set + 1) + " again"}});
    }
    return mended;
}

}  // namespace

std::vector<Repair> RepairNoteBook(OpenNoteBook& book, IdCounters& counters, const ReadContext& context,
                                   FaultNotice& faults) {
    return Repairer(book, counters, context, faults).Run();
}

}  // namespace lore
