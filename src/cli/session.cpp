#include "cli/session.h"

#include <algorithm>
#include <cstdio>

#include "base/text.h"
#include "notebooks/data_upgrade.h"
#include "notes/data_files.h"
#include "notes/file_faults.h"
#include "notes/note_cleaner.h"
#include "platform/places.h"
#include "ports/silent_progress.h"
#include "settings/installation.h"

namespace lore {

namespace {

std::filesystem::path SettingsFile(const GlobalOptions& options) {
    if (!options.settings.empty())
        return options.settings;
    return options.data.empty() ? UserSettingsFile() : SettingsFileIn(options.data);
}

/// Each NoteBook once that a text may stand for; a list may hold one twice, and the main one, which it needn't.
std::vector<CDatabase> AllCalled(const std::vector<CDatabase>& all, std::string_view text) {
    std::vector<CDatabase> called;
    for (const CDatabase& entry : all) {
        const bool isKnown = std::ranges::any_of(called, [&](const CDatabase& other) {
            return other.folder == entry.folder && (other.guid == entry.guid || entry.IsMain());
        });
        if (!isKnown &&
            (IsSameText(entry.name, text) || IsSameText(entry.folder, text) || IsSameText(entry.guid, text)))
            called.push_back(entry);
    }
    return called;
}

/// What stands for this NoteBook alone: its folder, or its guid where a damaged list or a name has that folder too.
const std::string& ArgumentFor(const std::vector<CDatabase>& all, const CDatabase& noteBook) {
    const bool hasOwnFolder = !noteBook.folder.empty() && AllCalled(all, noteBook.folder).size() == 1;
    return hasOwnFolder ? noteBook.folder : noteBook.guid;
}

bool HasDataFolderAbove(const std::filesystem::path& root) {
    std::error_code unknown;
    for (std::filesystem::path place = root; place.has_relative_path(); place = place.parent_path())
        if (place.filename() == kDataFiles && std::filesystem::is_directory(place / "Databases", unknown))
            return true;
    return false;
}

/// Whether a new folder of data would come to stand within another one, by the path as it is given or behind its links.
bool IsWithinData(const DataPaths& data) {
    std::error_code unknown;
    const std::filesystem::path given = std::filesystem::absolute(data.root / ".", unknown).lexically_normal();
    const std::filesystem::path real = std::filesystem::weakly_canonical(data.root, unknown);
    return !std::filesystem::exists(data.DataFiles(), unknown) &&
           (HasDataFolderAbove(given.parent_path()) || HasDataFolderAbove(real));
}

}  // namespace

void PrintError(const std::string& message) {
    std::fprintf(stderr, "lorebinder-cli: %s\n", Shown(message).c_str());
}

void PrintMessage(const std::string& text) {
    std::fprintf(stderr, "lorebinder-cli: %s\n", ShownLines(text).c_str());
}

ExitStatus NoSuchNote(int32_t id) {
    PrintError("there is no note " + std::to_string(id) + " in this NoteBook");
    return ExitStatus::NothingFound;
}

void PrintNoNoteBook(const std::string& name) {
    PrintError("there is no NoteBook \"" + name + "\"; the command \"notebooks\" lists them all");
}

std::optional<CDatabase> ChooseNoteBook(const std::vector<CDatabase>& list, const std::string& localGUID,
                                        const std::string& text, ExitStatus& status) {
    const std::string typed = FromUtf8(text);
    auto found = FindNoteBook(list, localGUID, typed);
    if (!found) {
        PrintNoNoteBook(text);
        status = ExitStatus::NothingFound;
        return std::nullopt;
    }
    std::vector<CDatabase> all = {MainNoteBook(localGUID)};
    all.insert(all.end(), list.begin(), list.end());
    const std::vector<CDatabase> fitting = AllCalled(all, typed);
    if (fitting.size() == 1)
        return found;
    std::string choice;
    for (const CDatabase& entry : fitting)
        choice += (choice.empty() ? "" : ", ") + ToUtf8(ArgumentFor(all, entry)) + " (\"" + ToUtf8(entry.name) + "\")";
    PrintError("\"" + text + "\" may be any of " + std::to_string(fitting.size()) +
               " NoteBooks; say which one by its folder or GUID: " + choice);
    status = ExitStatus::WrongUsage;
    return std::nullopt;
}

Session::Session(const GlobalOptions& options)
    : options_(options),
      data_{options.data.empty() ? UserDataRoot() : std::filesystem::path(options.data)},
      store_(SettingsFile(options)),
      context_(MakeReadContext(clock_, guids_)) {
    settings_.LoadOptions(store_);
    if (const auto& unread = store_.Unread())
        faults_.Tell({kSettingsUnread, unread->path, unread->reason});
}

void Session::Check(const FileResult& result, const char* what, const std::filesystem::path& path) {
    usesData_ = true;
    TellFailedRead(faults_, what, path, result);
}

bool Session::MayWrite(const std::string& file) const {
    const bool isData = IsDataFile(data_, file);
    if (isData)
        PrintError("\"" + file + "\" belongs to the data folder; choose another file");
    return !isData;
}

void Session::MakeDataFolder() {
    TellFailedWrite(faults_, kDataFolderUnmade, data_.DataFiles(), ComputeFolders(data_.root));
}

const std::vector<CDatabase>& Session::NoteBooks() {
    if (!noteBooks_) {
        noteBooks_.emplace();
        Check(LoadDatabases(data_.DatabasesFile(), context_, *noteBooks_), kNoteBooksUnread, data_.DatabasesFile());
    }
    return *noteBooks_;
}

CDatabase Session::Main() const {
    return MainNoteBook(settings_.Text(Option::LocalGUID));
}

std::optional<CDatabase> Session::NoteBook(ExitStatus& status) {
    const std::string& local = settings_.Text(Option::LocalGUID);
    if (options_.noteBook.empty())
        return StartNoteBook(NoteBooks(), {local, settings_.Text(Option::Database)});
    return ChooseNoteBook(NoteBooks(), local, options_.noteBook, status);
}

std::optional<LoadReport> Session::Load(OpenNoteBook& book, LoadOptions options) {
    const auto database = NoteBook();
    if (!database)
        return std::nullopt;
    book = OpenNoteBook::At(data_, *database);
    IdCounters counters = Counters();
    options.mode = LoadMode::ReadOnly;
    LoadReport report = LoadNoteBook(book, counters, context_, faults_, options);
    return report.listed ? std::optional(std::move(report)) : std::nullopt;
}

IdCounters Session::Counters() const {
    return CountersOf(settings_);
}

void Session::StoreCounters(const IdCounters& counters) {
    PutCounters(counters, settings_, store_);
    settings_.Save(store_, Option::LocalGUID);
    // A command may store more than once; that it fails is told once.
    if (isStoreTold_)
        store_.Flush();
    else
        isStoreTold_ = !FlushTold(store_, faults_);
}

bool Session::OpenForWriting(OpenNoteBook& book, ExitStatus& status, const LoadOptions& options) {
    if (!TakeLock(status))
        return false;
    EnsureLocalGuid(settings_, guids_);
    MakeDataFolder();
    const auto database = NoteBook();
    if (!database) {
        status = ExitStatus::NothingFound;
        return false;
    }
    book = OpenNoteBook::At(data_, *database);
    CleanNoteFiles(book.paths, faults_, nullptr);
    IdCounters counters = Counters();
    if (!LoadNoteBook(book, counters, context_, faults_, options).listed) {
        status = ExitStatus::Fault;
        return false;
    }
    StoreCounters(counters);
    return true;
}

bool Session::UpgradeData() {
    // The version in the settings stays: the desktop program has more to do for it.
    if (!NeedsDataUpgrade(settings_.ProgVersion()))
        return true;
    IdCounters counters = Counters();
    SilentProgress progress;
    const bool done = UpgradeDataFolder({.data = data_,
                                         .maxCategoryID = counters.MaxCategoryID,
                                         .context = context_,
                                         .progress = progress,
                                         .faults = faults_});
    if (done && counters.MaxCategoryID != Counters().MaxCategoryID)
        StoreCounters(counters);
    return done;
}

void Session::TellDataElsewhere() const {
    std::error_code error;
    if (!usesData_)
        return;
    if (!options_.data.empty() && !std::filesystem::exists(data_.DataFiles(), error))
        PrintError("there is no folder \"" + std::string(kDataFiles) + "\" in " + data_.root.string() +
                   "; --data takes the folder that holds it");
    if (NeedsDataUpgrade(settings_.ProgVersion()) && HasOlderData(data_))
        PrintError(
            "the data of an older version stand outside of the NoteBooks; they are upgraded by the first command that "
            "writes, or when Lorebinder starts");
}

bool Session::TakeLock(ExitStatus& status) {
    // Without the settings, ids would be given out again, and another NoteBook might be meant.
    if (store_.Unread()) {
        status = ExitStatus::Fault;
        return false;
    }
    if (IsWithinData(data_)) {
        PrintError("--data takes the folder that holds \"" + std::string(kDataFiles) + "\", not that folder itself");
        status = ExitStatus::WrongUsage;
        return false;
    }
    LockAttempt attempt = DataLock::Take(data_.root);
    lock_ = std::move(attempt.lock);
    if (lock_) {
        const bool upgraded = UpgradeData();
        status = upgraded ? status : ExitStatus::Fault;
        return upgraded;
    }
    if (!attempt.failure.Ok()) {
        std::error_code unknown;
        const bool isThere = std::filesystem::is_directory(data_.root, unknown);
        faults_.Tell({"The data folder could not be locked", (isThere ? data_.root / kLockName : data_.root).string(),
                      attempt.failure.Reason()});
        status = ExitStatus::Fault;
    } else {
        PrintError("another process holds the data folder " + data_.root.string() +
                   "; close it (or wait until it is done) and try again");
        status = ExitStatus::Locked;
    }
    return false;
}

}  // namespace lore
