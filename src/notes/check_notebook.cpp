#include "notes/check_notebook.h"

#include <array>
#include <map>
#include <memory>
#include <system_error>
#include <unordered_map>

#include "base/long_list.h"
#include "base/text.h"
#include "bibliography/author_list.h"
#include "bibliography/custom_type_list.h"
#include "notes/attachment_path.h"
#include "notes/check_note.h"
#include "notes/file_faults.h"
#include "notes/note_copies.h"
#include "notes/note_file_walk.h"
#include "notes/note_identity.h"
#include "notes/notebook_list.h"
#include "notes/sync_log.h"

namespace lore {

namespace {

constexpr char kDamaged[] = "is short or damaged";

constexpr std::array<std::string_view, 11> kKindNames = {"note-twice",        "number-shared",    "note-in-wrong-file",
                                                         "source-missing",    "category-missing", "attachment-missing",
                                                         "attachment-unused", "damaged-file",     "text-too-long",
                                                         "notebook-unlisted", "notebook-twice"};
static_assert(kKindNames.size() == static_cast<size_t>(FindingKind::NoteBookTwice) + 1);

/// What the walk leaves of one note file.
struct CheckedFile {
    std::vector<NoteCopy> copies;
    std::vector<NoteIdentity> identities;  // parallel to copies
    std::vector<Finding> findings;
    std::set<std::string> attachments;  // names that its notes name
};

class NoteBookCheck {
public:
    NoteBookCheck(const NoteBookPaths& paths, const ReadContext& context, FaultNotice& faults)
        : paths_(paths), context_(context), faults_(faults) {}

    std::vector<Finding> Run();

private:
    void ReadKnownThings();
    void ReadCategories();
    void CheckLastViewList();
    void CheckSyncLog();
    void CheckNoteFile(size_t number, NoteFileReader& reader);
    void AddCopies();
    void CheckAttachmentFolder();
    template <typename Read>
    void CheckRecordFile(const std::filesystem::path& file, const char* unread, Read read);

    const NoteBookPaths& paths_;
    const ReadContext& context_;
    FaultNotice& faults_;
    NoGuids noGuids_;
    const ReadContext ofNotes_{context_.now, context_.nowUtc, &noGuids_};
    KnownThings known_;
    std::vector<std::filesystem::path> files_;
    std::vector<CheckedFile> checked_;  // one a note file
    std::vector<Finding> lists_;        // of the files beside the notes
    std::vector<Finding> findings_;
};

/// Opens a file, lets `read` take what it knows of it, and looks whether that was all.
template <typename Read>
void NoteBookCheck::CheckRecordFile(const std::filesystem::path& file, const char* unread, Read read) {
    std::unique_ptr<RecordReader> stream;
    TellFailedRead(faults_, unread, file, OpenRecordFile(file, stream));
    if (!stream)
        return;
    read(stream.get());
    AddFileFindings(file, stream->State(), lists_);
}

void NoteBookCheck::ReadKnownThings() {
    AuthorList authors;
    TellFailedRead(faults_, kAuthorsUnread, paths_.Authors(), authors.LoadAuthors(paths_.Authors()));
    AddFileFindings(paths_.Authors(), authors.State(), lists_);
    CustomTypeList types;
    TellFailedRead(faults_, kSourceTypesUnread, paths_.SourceTypes(), types.LoadTypes(paths_.SourceTypes(), context_));
    AddFileFindings(paths_.SourceTypes(), types.State(), lists_);
    TellFailedRead(faults_, kSourcesUnread, paths_.Sources(), known_.sources.LoadSources(paths_.Sources(), context_));
    AddFileFindings(paths_.Sources(), known_.sources.State(), lists_);
    if (authors.IsMissing() && known_.sources.NameAuthors())
        lists_.push_back({FindingKind::DamagedFile, paths_.Authors().string(),
                          "the file is missing, and sources name authors that it held"});
    ReadCategories();
    CheckLastViewList();
    CheckSyncLog();
    std::error_code error;
    std::filesystem::directory_iterator entry(paths_.Attachments(), error);
    for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
        std::error_code unknown;
        if (!entry->is_directory(unknown))
            known_.attachments.insert(entry->path().filename().string());
    }
    TellFailedRead(faults_, "The folder of the attachments could not be read", paths_.Attachments(), {error.value()});
}

void NoteBookCheck::ReadCategories() {
    CheckRecordFile(paths_.Categories(), kCategoriesUnread, [this](RecordReader* stream) {
        known_.categories.Read(stream);
        known_.hasCategories = true;
    });
}

void NoteBookCheck::CheckLastViewList() {
    CheckRecordFile(paths_.LastViewList(), kLastListUnread, [](RecordReader* stream) {
        LongList ids;
        ReadLongList(stream, ids);
    });
}

void NoteBookCheck::CheckSyncLog() {
    SyncLog log;
    const FileResult result = LoadSyncLogFrom(paths_.SyncLog(), log);
    TellFailedRead(faults_, kSyncLogUnread, paths_.SyncLog(), result);
    AddFileFindings(paths_.SyncLog(), {.isWhole = !result.Ok() || log.ReadWhole()}, lists_);
}

void NoteBookCheck::CheckNoteFile(size_t number, NoteFileReader& reader) {
    const std::filesystem::path& file = files_[number];
    CheckedFile& checked = checked_[number];
    while (reader.Next()) {
        const CNote& head = reader.Head();
        checked.copies.push_back(CopyOf(reader, file));
        checked.identities.push_back(NoteIdentity::Of(head));
        CheckNote(head, {reader.PlainText(), reader.RtfText()}, file, known_, checked.findings);
        for (const CAttachment& attachment : head.attachments)
            checked.attachments.insert(StoredName(attachment));
    }
    if (reader.IsDamaged())
        checked.findings.push_back(
            {FindingKind::DamagedFile, file.string(), std::string("the file ") + reader.DamageText()});
}

/// Adds, after what was found in each file, the copies of notes that another place shows, and notes that another one
/// of their number hides.
void NoteBookCheck::AddCopies() {
    std::vector<NoteCopy> copies;
    std::vector<NoteIdentity> identities;
    std::vector<size_t> fileOf;
    for (size_t file = 0; file < checked_.size(); ++file) {
        const CheckedFile& checked = checked_[file];
        copies.insert(copies.end(), checked.copies.begin(), checked.copies.end());
        identities.insert(identities.end(), checked.identities.begin(), checked.identities.end());
        fileOf.resize(copies.size(), file);
    }
    const std::vector<bool> isShown = ShownCopies(copies);
    std::unordered_map<int32_t, size_t> shown;
    for (size_t i = 0; i < copies.size(); ++i) {
        if (isShown[i])
            shown[copies[i].id] = i;
    }
    for (size_t i = 0; i < copies.size(); ++i) {
        if (isShown[i])
            continue;
        const size_t other = shown[copies[i].id];
        const std::string file = files_[fileOf[other]].filename().string();
        std::string note = "note " + std::to_string(copies[i].id);
        const bool isCopy = identities[i].IsSameNote(identities[other]);
        checked_[fileOf[i]].findings.push_back(
            {isCopy ? FindingKind::NoteTwice : FindingKind::NumberShared, files_[fileOf[i]].string(),
             note.append(isCopy ? " stands twice; the copy in "
                                : " is hidden by another note of this number, the one in ")
                 .append(file)
                 .append(isCopy ? " shows" : "")});
    }
}

void NoteBookCheck::CheckAttachmentFolder() {
    for (const CheckedFile& file : checked_) {
        for (const std::string& name : file.attachments)
            known_.attachments.erase(name);
    }
    for (const std::string& name : known_.attachments)
        findings_.push_back(
            {FindingKind::AttachmentUnused, (paths_.Attachments() / name).string(), "no note names the file"});
}

std::vector<Finding> NoteBookCheck::Run() {
    ReadKnownThings();
    files_ = NoteFilesOf(paths_.Notes(), faults_);
    checked_.resize(files_.size());
    WalkNoteFiles(
        files_, ofNotes_, kReadThreads, [this](size_t file, NoteFileReader& reader) { CheckNoteFile(file, reader); },
        [this](size_t file, const FileResult& result) {
            TellFailedRead(faults_, kNoteFileUnread, files_[file], result);
        });
    AddCopies();
    for (CheckedFile& file : checked_)
        findings_.insert(findings_.end(), file.findings.begin(), file.findings.end());
    findings_.insert(findings_.end(), lists_.begin(), lists_.end());
    CheckAttachmentFolder();
    return std::move(findings_);
}

}  // namespace

std::string_view FindingKindName(FindingKind kind) {
    return kKindNames[static_cast<size_t>(kind)];
}

std::string OverLimit(size_t bytes) {
    if (bytes <= kMaxStringLength)
        return {};
    return " of " + std::to_string(bytes) + " bytes, over the limit of " + std::to_string(kMaxStringLength);
}

void AddFileFindings(const std::filesystem::path& file, const RecordFileState& state, std::vector<Finding>& findings) {
    if (!state.isWhole)
        findings.push_back({FindingKind::DamagedFile, file.string(),
                            std::string("the file ") + (state.lacksID ? kRecordWithoutNumber : kDamaged)});
    if (const std::string over = OverLimit(state.longestText); !over.empty())
        findings.push_back({FindingKind::TextTooLong, file.string(), "the file holds a text" + over});
}

std::vector<Finding> CheckNoteBook(const NoteBookPaths& paths, const ReadContext& context, FaultNotice& faults) {
    return NoteBookCheck(paths, context, faults).Run();
}

namespace {

std::string Quoted(const std::string& bytes) {
    return "\"" + ToUtf8(bytes) + "\"";
}

/// Notes in a folder that the list of NoteBooks has lost are on the disk, and no window shows them.
void AddUnlisted(const DataPaths& data, const std::map<std::filesystem::path, std::string>& listed, FaultNotice& faults,
                 std::vector<Finding>& findings) {
    std::error_code error;
    std::set<std::filesystem::path> folders;
    std::filesystem::directory_iterator entry(data.Databases(), error);
    for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
        std::error_code unknown;
        if (entry->is_directory(unknown) && !listed.contains(entry->path()))
            folders.insert(entry->path());
    }
    TellFailedRead(faults, "The folder of the NoteBooks could not be read", data.Databases(), {error.value()});
    for (const std::filesystem::path& folder : folders) {
        const NoteBookPaths paths(data, folder.filename().string());
        if (!NoteFilesOf(paths.Notes(), faults).empty())
            findings.push_back({FindingKind::NoteBookUnlisted, folder.string(),
                                "the folder holds notes, and no NoteBook of the list names it"});
    }
}

}  // namespace

std::vector<Finding> CheckData(const DataPaths& data, const ReadContext& context, FaultNotice& faults) {
    std::vector<CDatabase> list;
    double version = 0.0;
    RecordFileState state;
    TellFailedRead(faults, kNoteBooksUnread, data.DatabasesFile(),
                   LoadDatabases(data.DatabasesFile(), context, list, version, &state));
    std::vector<Finding> findings;
    AddFileFindings(data.DatabasesFile(), state, findings);
    list.insert(list.begin(), MainNoteBook({}));
    std::map<std::filesystem::path, std::string> done;
    for (const CDatabase& entry : list) {
        const NoteBookPaths paths(data, entry.folder);
        const auto [first, isNew] = done.emplace(paths.Folder(), entry.name);
        if (!isNew && !entry.IsMain())
            findings.push_back(
                {FindingKind::NoteBookTwice, paths.Folder().string(),
                 "two NoteBooks of the list have the folder, " + Quoted(first->second) + " and " + Quoted(entry.name)});
        if (!isNew)
            continue;
        const std::vector<Finding> found = CheckNoteBook(paths, context, faults);
        findings.insert(findings.end(), found.begin(), found.end());
    }
    AddUnlisted(data, done, faults, findings);
    return findings;
}

}  // namespace lore
