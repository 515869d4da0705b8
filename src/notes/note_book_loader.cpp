#include "notes/note_book_loader.h"

#include <algorithm>
#include <filesystem>
#include <utility>

#include "base/free_ids.h"
#include "notes/category_conversion.h"
#include "notes/file_faults.h"
#include "notes/note_brief.h"
#include "notes/note_copies.h"
#include "notes/note_file_walk.h"
#include "notes/notebook_lists.h"

namespace lore {

namespace {

/// The parts of a load before the note files, as the progress window counts them.
constexpr int kFirstRange = 21;

/// What the walk leaves of one note file.
struct FileNotes {
    std::vector<NoteBrief> briefs;
    std::vector<NoteCopy> copies;  // parallel to briefs
    std::vector<CNote> heads;      // the same, where heads are wanted
    std::vector<int32_t> others;   // ids of notes that aren't wanted
    bool countsTooFew = false;     // it counts no notes, but something stands after its count
    bool isDamaged = false;        // the notes aren't all that it holds
    int32_t highestID = 0;         // also of notes that aren't wanted
    int32_t highestSource = 0;     // the same: of the sources that they name
};

class Loader {
public:
    Loader(OpenNoteBook& book, IdCounters& counters, const ReadContext& context, FaultNotice& faults,
           const LoadOptions& options)
        : book_(book), counters_(counters), context_(context), faults_(faults), options_(options) {}

    LoadReport Run();

private:
    bool Writes() const { return options_.mode != LoadMode::ReadOnly; }
    bool IsWanted(int32_t id) const { return !options_.only || options_.only->contains(id); }
    void Step() {
        if (options_.progress)
            options_.progress->StepIt();
    }
    void BeginProgress();
    void ResetBook();
    void ReadLists();
    void ReadCategories();
    template <typename List>
    void TellOfList(const char* unread, const std::filesystem::path& file, const FileResult& result, const List& list);
    void ReadFiles();
    void TakeFile(size_t file, NoteFileReader& reader);
    void ShowFile(size_t file, const FileResult& result);
    void BuildForest();
    void ChooseCopies();
    void FileNotesIntoBook();
    void TakeHeads();
    void WriteBack();
    void MarkLost(ListFile& list, const std::filesystem::path& file);
    void KeepLostSources();
    void MoveCountersOn();

    OpenNoteBook& book_;
    IdCounters& counters_;
    const ReadContext& context_;
    FaultNotice& faults_;
    const LoadOptions& options_;

    LoadReport report_;
    std::vector<std::filesystem::path> files_;
    std::vector<FileNotes> notes_;  // one a file
    bool keepHeads_ = false;
};

LoadReport Loader::Run() {
    BeginProgress();
    if (Writes())
        TellFailedWrite(faults_, kNoteBookFoldersUnmade, book_.paths.Folder(), CreateNoteBookFolders(book_.paths));
    ResetBook();
    report_.listed = ListNoteFiles(book_.paths.Notes(), faults_, files_);
    for (const std::filesystem::path& file : files_)
        report_.files.push_back(file.filename().string());
    ReadLists();
    ReadFiles();
    KeepLostSources();
    if (report_.converted && !Writes())
        BuildForest();
    ChooseCopies();
    FileNotesIntoBook();
    book_.keyWords.SortKeyWords();
    book_.sources.LinkCustomTypes(book_.types);
    if (options_.keepHeads)
        TakeHeads();
    if (options_.texts)
        options_.texts->Finish(report_.shown);
    if (Writes() && report_.listed) {
        WriteBack();
        MoveCountersOn();
    }
    if (options_.progress)
        options_.progress->Hide();
    return std::move(report_);
}

void Loader::BeginProgress() {
    if (!options_.progress)
        return;
    options_.progress->SetRange(0, kFirstRange);
    options_.progress->SetPosition(0);
    options_.progress->SetMessage("Loading Notes Information...");
    options_.progress->Show();
}

void Loader::ResetBook() {
    OpenNoteBook empty;
    empty.database = std::move(book_.database);
    empty.paths = std::move(book_.paths);
    book_ = std::move(empty);
}

/// `list` is what the file was read into.
template <typename List>
void Loader::TellOfList(const char* unread, const std::filesystem::path& file, const FileResult& result,
                        const List& list) {
    TellFailedRead(faults_, unread, file, result);
    if (result.Ok() && !list.ReadWhole())
        report_.damaged.push_back(file.filename().string());
}

void Loader::ReadLists() {
    const NoteBookPaths& paths = book_.paths;
    Step();
    TellOfList(kAuthorsUnread, paths.Authors(), book_.authors.LoadAuthors(paths.Authors()), book_.authors);
    Step();
    TellOfList(kSourceTypesUnread, paths.SourceTypes(), book_.types.LoadTypes(paths.SourceTypes(), context_),
               book_.types);
    Step();
    TellOfList(kSourcesUnread, paths.Sources(), book_.sources.LoadSources(paths.Sources(), context_), book_.sources);
    if (book_.sources.NameAuthors())
        MarkLost(book_.authors, paths.Authors());
    // Formatting takes out the ids of authors that the list lacks: such sources aren't written back, and are kept
    // beside before they are written later.
    if (!book_.authors.ReadWhole())
        book_.sources.MarkIncomplete();
    Step();
    ReadCategories();
    Step();
    TellOfList(kSyncLogUnread, paths.SyncLog(), LoadSyncLogFrom(paths.SyncLog(), book_.syncLog), book_.syncLog);
}

/// What is named stood in the file of a list that is missing: on a disk that is away, or not synced yet.
void Loader::MarkLost(ListFile& list, const std::filesystem::path& file) {
    if (!list.IsMissing())
        return;
    list.MarkIncomplete();
    report_.damaged.push_back(file.filename().string());
}

void Loader::ReadCategories() {
    report_.converted = NeedsCategoryConversion(book_.paths);
    if (report_.converted && Writes() && report_.listed)
        ConvertCategories(book_.paths, counters_.MaxCategoryID, context_, faults_);
    if (report_.converted && !Writes())
        return;  // the forest comes with the notes
    TellOfList(kCategoriesUnread, book_.paths.Categories(), book_.categories.Load(book_.paths.Categories()),
               book_.categories);
}

void Loader::ReadFiles() {
    if (options_.progress)
        options_.progress->SetMessage("Setting Global Info...");
    if (options_.texts)
        options_.texts->Begin(files_.size());
    keepHeads_ = options_.keepHeads || (report_.converted && !Writes());
    notes_.resize(files_.size());
    WalkNoteFiles(
        files_, context_, options_.threads, [this](size_t file, NoteFileReader& reader) { TakeFile(file, reader); },
        [this](size_t file, const FileResult& result) { ShowFile(file, result); }, {},
        options_.only ? HeadParts::Place : HeadParts::All);
}

void Loader::TakeFile(size_t file, NoteFileReader& reader) {
    FileNotes& notes = notes_[file];
    // A count may be wrong; beyond this many notes the lists grow by themselves.
    constexpr int32_t kExpectedNotes = 64;
    const auto expected = static_cast<size_t>(std::clamp(reader.Count(), 0, kExpectedNotes));
    notes.briefs.reserve(expected);
    notes.copies.reserve(expected);
    if (keepHeads_)
        notes.heads.reserve(expected);
    while (reader.Next()) {
        CNote& head = reader.Head();
        notes.highestID = std::max(notes.highestID, head.id);
        for (const int32_t source : head.sources)
            notes.highestSource = std::max(notes.highestSource, source);
        if (!IsWanted(head.id)) {
            notes.others.push_back(head.id);
            continue;
        }
        notes.briefs.push_back(MakeNoteBrief(head));
        notes.copies.push_back(CopyOf(reader, files_[file]));
        if (options_.texts) {
            const NotePlace place{static_cast<uint32_t>(file), static_cast<uint32_t>(reader.NoteNumber())};
            options_.texts->Take(place, head.id, reader.RtfText());
        }
        if (keepHeads_)
            notes.heads.push_back(std::move(head));
    }
    notes.countsTooFew = reader.Count() == 0 && reader.HoldsMore();
    notes.isDamaged = reader.IsDamaged();
    if (options_.texts)
        options_.texts->EndFile(file);
}

void Loader::ShowFile(size_t file, const FileResult& result) {
    TellFailedRead(faults_, kNoteFileUnread, files_[file], result);
    if (options_.mode == LoadMode::Full && notes_[file].countsTooFew) {
        faults_.Tell({"A note file is damaged and was left as it is", files_[file].string(),
                      "It counts no notes but holds more"});
    } else if (result.Ok() && notes_[file].isDamaged) {
        report_.damaged.push_back(report_.files[file]);
        book_.index.MarkDamaged(files_[file].string());
    }
    if (!options_.progress)
        return;
    const size_t count = notes_[file].briefs.size();
    options_.progress->SetRange(0, static_cast<int>(count) + 1);
    options_.progress->SetMessage("Loading info:  *" + report_.files[file]);
    for (size_t note = 0; note < count; ++note)
        options_.progress->StepIt();
}

/// What the conversion would write and the load would then read, without writing.
void Loader::BuildForest() {
    int maxCategoryID = counters_.MaxCategoryID;
    CategoryConversion conversion(maxCategoryID);
    for (FileNotes& file : notes_) {
        for (size_t note = 0; note < file.heads.size(); ++note) {
            conversion.MergeNote(file.heads[note]);
            file.briefs[note].categories = CategoryPlaces(file.heads[note]);
        }
    }
    conversion.MergeEmptyCategories(book_.paths, faults_);
    RecordWriter writer;
    conversion.Finish().Write(&writer);
    RecordReader reader(writer.DiskBytes());
    book_.categories.Read(&reader);
}

void Loader::ChooseCopies() {
    std::vector<NoteCopy> copies;
    std::vector<ShownNote> all;
    for (size_t file = 0; file < notes_.size(); ++file) {
        const std::vector<NoteCopy>& here = notes_[file].copies;
        copies.insert(copies.end(), here.begin(), here.end());
        for (size_t note = 0; note < here.size(); ++note)
            all.push_back({here[note].id, {static_cast<uint32_t>(file), static_cast<uint32_t>(note)}});
    }
    const std::vector<bool> shown = ShownCopies(copies);
    for (size_t i = 0; i < all.size(); ++i) {
        if (shown[i])
            report_.shown.push_back(all[i]);
        else
            book_.index.AddHiddenCopy(files_[all[i].place.file].string(), all[i].id);
    }
}

void Loader::FileNotesIntoBook() {
    std::vector<std::string> paths;
    for (const std::filesystem::path& file : files_)
        paths.push_back(file.string());
    for (const FileNotes& file : notes_) {
        for (const int32_t id : file.others)
            book_.index.MarkTaken(id);
    }
    for (const ShownNote& note : report_.shown) {
        if (!options_.only)
            FileBrief(book_, notes_[note.place.file].briefs[note.place.record]);
        book_.index.AddToIndex(paths[note.place.file], note.id);
    }
}

void Loader::TakeHeads() {
    report_.heads.reserve(report_.shown.size());
    for (const ShownNote& note : report_.shown)
        report_.heads.push_back(std::move(notes_[note.place.file].heads[note.place.record]));
}

void Loader::WriteBack() {
    if (book_.sources.ReadWhole())
        WriteSources(book_, faults_);
}

/// A new source under the id of one that the list has lost would become the source of its notes.
void Loader::KeepLostSources() {
    int32_t highest = 0;
    for (const FileNotes& file : notes_)
        highest = std::max(highest, file.highestSource);
    if (highest > 0)
        MarkLost(book_.sources, book_.paths.Sources());
    if (!book_.sources.ReadWhole())
        book_.sources.ReserveIDs(highest);
}

void Loader::MoveCountersOn() {
    int32_t highest = 0;
    for (const FileNotes& file : notes_)
        highest = std::max(highest, file.highestID);
    counters_.MaxNoteID = std::max(counters_.MaxNoteID, highest);
    lore::MoveCountersOn(book_, counters_);
}

}  // namespace

LoadReport LoadNoteBook(OpenNoteBook& book, IdCounters& counters, const ReadContext& context, FaultNotice& faults,
                        const LoadOptions& options) {
    return Loader(book, counters, context, faults, options).Run();
}

void MoveCountersOn(const OpenNoteBook& book, IdCounters& counters) {
    counters.MaxNoteID = CounterAfter(counters.MaxNoteID);
    counters.MaxAuthorID = CounterAfter(std::max(counters.MaxAuthorID, book.authors.NextAuthorID()));
    book.categories.RaiseMaxCategoryID(counters.MaxCategoryID);
}

}  // namespace lore
