#include "notebooks/notebook_manager.h"

#include <algorithm>
#include <cstdio>

#include "base/file_descriptor.h"
#include "base/text.h"
#include "notes/file_faults.h"

namespace lore {

namespace {

constexpr size_t kShortestName = 5;
constexpr size_t kLongestName = 30;
constexpr int kPause = 200;  // milliseconds
constexpr int kWidestGap = 8;
/// The id that a new NoteBook gets in place of the main one's.
constexpr int32_t kInPlaceOfMainID = 2114;
/// Folder numbers from here on were not given out by a program, and leave no room for the next one.
constexpr int64_t kHighestNumber = 2'000'000'000;
constexpr char kFolderStart[] = "DB";

/// The digits behind "DB" as a number, 0 without digits or for a number that nobody gave out.
int32_t NumberOfFolder(std::string_view name) {
    int64_t number = 0;
    for (const char c : name.substr(sizeof kFolderStart - 1)) {
        if (c < '0' || c > '9')
            break;
        number = number * 10 + (c - '0');
        if (number >= kHighestNumber)
            return 0;
    }
    return static_cast<int32_t>(number);
}

/// The names of the folders in a folder that begin so.
std::vector<std::string> FoldersBeginning(const std::filesystem::path& parent, std::string_view start) {
    std::vector<std::string> names;
    std::error_code error;
    for (std::filesystem::directory_iterator it(parent, error), end; !error && it != end; it.increment(error)) {
        std::error_code ignored;
        std::string name = it->path().filename().string();
        if (name.starts_with(start) && it->is_directory(ignored))
            names.push_back(std::move(name));
    }
    return names;
}

std::string FolderOfId(int32_t id) {
    char folder[24];
    std::snprintf(folder, sizeof folder, "%s%.6d", kFolderStart, id);
    return folder;
}

/// An id so far above the numbers of all folders that nothing in the list or on the disk has it.
int32_t NewId(const DataPaths& data, const std::vector<CDatabase>& list, int32_t gap) {
    int32_t highest = 1;
    for (const std::string& name : FoldersBeginning(data.Databases(), kFolderStart))
        highest = std::max(highest, NumberOfFolder(name));
    // A NoteBook that may come back needs its own folder then.
    for (const std::string& name : FoldersBeginning(data.Databases(), kTrashStart)) {
        const std::string original = name.substr(sizeof kTrashStart - 1);
        if (original.starts_with(kFolderStart))
            highest = std::max(highest, NumberOfFolder(original));
    }
    const auto isTaken = [&](int32_t number) {
        const std::string folder = FolderOfId(number);
        std::error_code error;
        return std::filesystem::exists(data.Databases() / folder, error) ||
               std::ranges::any_of(
                   list, [&](const CDatabase& entry) { return entry.id == number || entry.folder == folder; });
    };
    int32_t id = highest + gap + 1;
    if (id == kMainNoteBookID)
        id = kInPlaceOfMainID;
    while (isTaken(id))
        id = id + 1 == kMainNoteBookID ? kInPlaceOfMainID : id + 1;
    return id;
}

FileResult ResultOf(const std::error_code& error) {
    return {error.value()};
}

}  // namespace

bool IsSameNoteBook(const CDatabase& a, const CDatabase& b) {
    return a.id == b.id && a.guid == b.guid && a.folder == b.folder;
}

CDatabase NewNoteBook(const DataPaths& data, const std::vector<CDatabase>& list, int32_t gap, std::string name,
                      const ReadContext& context) {
    CDatabase made;
    made.id = NewId(data, list, gap);
    made.name = std::move(name);
    made.folder = FolderOfId(made.id);
    made.created = context.now;
    made.guid = context.guids->NewGuid();
    return made;
}

NoteBookManager::NoteBookManager(DataPaths data, std::string localGUID, ManagerPorts ports)
    : data_(std::move(data)),
      localGUID_(std::move(localGUID)),
      ports_(std::move(ports)),
      file_(data_.DatabasesFile(), ports_.faults) {}

std::optional<CDatabase> NoteBookManager::Create(std::string_view name, const ReadContext& context) {
    const std::string clean = CleanText(name);
    const std::string trimmed(Trim(clean));
    const size_t length = CharacterCount(trimmed);
    if (length < kShortestName || length > kLongestName) {
        ports_.prompts.Message("Database name must be between 5 and 30 characters.", "Invalid Name",
                               PromptIcon::Warning);
        return std::nullopt;
    }
    if (ports_.prompts.Ask("Do you wish to create the database *" + trimmed + "*?", "Create Database?") !=
        PromptAnswer::Yes)
        return std::nullopt;
    ports_.progress.ShowStandBy("Creating new notes database....");
    ports_.wait(kPause);
    ClearTrash();
    const CDatabase made = NewNoteBook(data_, List(), ports_.random(kWidestGap), trimmed, context);
    // Folders first: a crash leaves empty folders that nothing names, never a NoteBook without folders.
    const NoteBookPaths paths(data_, made.folder);
    TellFailedWrite(ports_.faults, "The folder of the NoteBook could not be made", paths.Folder(),
                    CreateNoteBookFolders(paths));
    std::vector<CDatabase> list = file_.List();
    list.push_back(made);
    const bool isListed = file_.Save(std::move(list));
    ports_.progress.HideStandBy();
    return isListed ? std::optional(made) : std::nullopt;
}

bool NoteBookManager::IsListed(const CDatabase& noteBook) const {
    return std::any_of(List().begin(), List().end(),
                       [&](const CDatabase& entry) { return IsSameNoteBook(entry, noteBook); });
}

bool NoteBookManager::ChangeName(const CDatabase& noteBook, std::string_view name) {
    if (noteBook.IsMain() || !IsListed(noteBook))
        return false;
    std::vector<CDatabase> list = file_.List();
    for (CDatabase& entry : list) {
        if (IsSameNoteBook(entry, noteBook))
            entry.name = CleanText(name);
    }
    return file_.Save(std::move(list));
}

DeleteOutcome NoteBookManager::Delete(const CDatabase& noteBook, size_t noteCount) {
    if (noteBook.IsMain()) {
        ports_.prompts.Message("You can't delete the main database.", "Unable to Delete", PromptIcon::Warning);
        return DeleteOutcome::Refused;
    }
    const std::string question = "Do you wish to delete the database *" + noteBook.name +
                                 "*?\n\nWARNING: THIS WILL DELETE ALL  " + std::to_string(noteCount) +
                                 "  NOTES WITHIN THAT DATABASE!!\n\nDo you still wish to delete this database?";
    if (ports_.prompts.Ask(question, "Delete Database?") != PromptAnswer::Yes)
        return DeleteOutcome::Declined;
    ports_.progress.ShowStandBy("Deleting notes database....");
    ports_.wait(kPause);
    ClearOnlineLink(noteBook);
    // The list lets go of the NoteBook before its folder is touched. Killed before that, everything is there; killed
    // after it, the list opens without the NoteBook, and its folder is whole or bears a name that no reader picks up.
    std::vector<CDatabase> list = file_.List();
    const auto place =
        std::find_if(list.begin(), list.end(), [&](const CDatabase& entry) { return IsSameNoteBook(entry, noteBook); });
    const auto position = static_cast<size_t>(place - list.begin());
    std::erase_if(list, [&](const CDatabase& entry) { return IsSameNoteBook(entry, noteBook); });
    const bool isTaken = file_.Save(std::move(list));
    if (isTaken)
        DeleteFolder(noteBook, position);
    ports_.progress.HideStandBy();
    return isTaken ? DeleteOutcome::Deleted : DeleteOutcome::Failed;
}

void NoteBookManager::ClearOnlineLink(const CDatabase& noteBook) {
    SyncLog log;
    LoadSyncLogFrom(NoteBookPaths(data_, noteBook.folder).SyncLog(), log);
    if (!log.link.IsLinked() || !ports_.clearOnlineLink)
        return;
    ports_.progress.ShowStandBy("Attempting to Update Online NoteBook Link....");
    ports_.clearOnlineLink(noteBook, log.link);
}

/// A damaged list may name one folder twice, or that of the main NoteBook: then it belongs to those who are left.
void NoteBookManager::DeleteFolder(const CDatabase& noteBook, size_t position) {
    const std::filesystem::path folder = NoteBookPaths(data_, noteBook.folder).Folder();
    const auto isThere = [&](const CDatabase& entry) { return NoteBookPaths(data_, entry.folder).Folder() == folder; };
    if (isThere(MainNoteBook(localGUID_)) || std::any_of(List().begin(), List().end(), isThere))
        return ThrowAway(noteBook, position, folder, {});
    ClearTrash();
    std::error_code error;
    if (!std::filesystem::is_directory(folder, error))  // a damaged list may name a file
        return ThrowAway(noteBook, position, folder, {});
    const std::filesystem::path trash = data_.Databases() / (kTrashStart + folder.filename().string());
    std::filesystem::rename(folder, trash, error);
    const FileResult result = error ? ResultOf(error) : FlushFolder(data_.Databases());
    TellFailedWrite(ports_.faults, "The folder of the NoteBook could not be deleted", folder, result);
    ThrowAway(noteBook, position, folder, error ? std::filesystem::path() : trash);
    ClearTrash();
}

/// `trash` is empty if the folder has kept its name.
void NoteBookManager::ThrowAway(const CDatabase& noteBook, size_t position, const std::filesystem::path& folder,
                                const std::filesystem::path& trash) {
    if (ports_.trash)
        ports_.trash->Add({noteBook, position, folder, trash});
}

std::optional<CDatabase> NoteBookManager::Restore() {
    if (!CanRestore())
        return std::nullopt;
    const NoteBookTrash::Entry entry = *ports_.trash->Last();
    // The folder first: a crash leaves a whole folder that no list names, which nothing deletes.
    std::error_code error;
    if (!entry.folder.empty() && std::filesystem::exists(entry.original, error))
        error = std::make_error_code(std::errc::file_exists);
    else if (!entry.folder.empty())
        std::filesystem::rename(entry.folder, entry.original, error);
    const FileResult result = error ? ResultOf(error) : FlushFolder(data_.Databases());
    TellFailedWrite(ports_.faults, "The folder of the NoteBook could not be brought back", entry.original, result);
    if (error)
        return std::nullopt;
    std::vector<CDatabase> list = file_.List();
    list.insert(list.begin() + static_cast<std::ptrdiff_t>(std::min(entry.position, list.size())), entry.noteBook);
    if (!file_.Save(std::move(list))) {
        if (!entry.folder.empty())
            std::filesystem::rename(entry.original, entry.folder, error);
        return std::nullopt;
    }
    ports_.trash->ForgetLast();
    return entry.noteBook;
}

/// Deletes what a deletion has left, this one or one that was killed, and nothing that the list names.
void NoteBookManager::ClearTrash() {
    for (const std::string& name : FoldersBeginning(data_.Databases(), kTrashStart)) {
        std::error_code error;
        const bool isListed = std::any_of(List().begin(), List().end(), [&](const CDatabase& entry) {
            return NoteBookPaths(data_, entry.folder).Folder() == data_.Databases() / name;
        });
        if (isListed || (ports_.trash && ports_.trash->Holds(data_.Databases() / name)))
            continue;
        std::filesystem::remove_all(data_.Databases() / name, error);
        TellFailedWrite(ports_.faults, kTrashStays, data_.Databases() / name, ResultOf(error));
    }
}

}  // namespace lore
