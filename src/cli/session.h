#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "cli/shown_text.h"
#include "notes/note_book_loader.h"
#include "notes/notebook_list.h"
#include "notes/notebook_paths.h"
#include "platform/data_lock.h"
#include "platform/exit_status.h"
#include "platform/ini_store.h"
#include "platform/printed_faults.h"
#include "platform/system_sources.h"
#include "settings/settings.h"

namespace lore {

/// The options that stand before the command.
struct GlobalOptions {
    std::string data;
    std::string settings;
    std::string noteBook;
    bool json = false;
};

/// The data folder, the settings and the NoteBook that one run works on. Opening reads; it changes nothing.
class Session {
public:
    explicit Session(const GlobalOptions& options);

    bool Json() const { return options_.json; }
    const DataPaths& Data() const { return data_; }
    Settings& GetSettings() { return settings_; }
    SettingsStore& Store() { return store_; }
    const SettingsStore& Store() const { return store_; }
    const ReadContext& Context() const { return context_; }
    Clock& GetClock() { return clock_; }
    GuidSource& Guids() { return guids_; }
    PrintedFaults& Faults() { return faults_; }
    const std::vector<CDatabase>& NoteBooks();
    CDatabase Main() const;

    /// The NoteBook that --notebook or the settings name. Nothing, told on standard error and in the status, if there
    /// is none or --notebook may mean several.
    std::optional<CDatabase> NoteBook(ExitStatus& status);
    /// The same once it is known that there is one.
    std::optional<CDatabase> NoteBook() {
        ExitStatus status = ExitStatus::Done;
        return NoteBook(status);
    }
    /// Reads that NoteBook without changing a byte. Nothing, told, if there is none or its notes can't be listed.
    /// The mode of `options` doesn't count.
    std::optional<LoadReport> Load(OpenNoteBook& book, LoadOptions options = {});

    /// The last ids given out, and how a command that gave out more stores them, with the identity of the installation.
    IdCounters Counters() const;
    void StoreCounters(const IdCounters& counters);
    /// Stores the counters as the settings hold them.
    void StoreOptions() { StoreCounters(Counters()); }

    /// Tells a read that failed; a file that just isn't there has no records and is no failure.
    void Check(const FileResult& result, const char* what, const std::filesystem::path& path);
    /// After a command that read data: tells if they still stand elsewhere, since they are of an older version or
    /// --data names another folder.
    void TellDataElsewhere() const;
    /// Whether a command may write a file there; not, and told, if it would be one of the data folder's own.
    bool MayWrite(const std::string& file) const;
    /// Creates the folder of the data; a failure is told.
    void MakeDataFolder();
    /// Opens the NoteBook as the desktop does, for a command that writes: takes the lock, gives the installation its
    /// identity, cleans up, loads and moves the counters on. False, told on standard error, if it can't.
    bool OpenForWriting(OpenNoteBook& book, ExitStatus& status, const LoadOptions& options = {});
    /// Takes the lock for a command that writes, and upgrades the data of an older version; false, told on standard
    /// error, if another process holds it, the data can't be upgraded or the settings could not be read.
    bool TakeLock(ExitStatus& status);

private:
    bool UpgradeData();

    GlobalOptions options_;
    DataPaths data_;
    bool usesData_ = false;
    IniStore store_;
    bool isStoreTold_ = false;  // that it could not be written
    Settings settings_;
    SystemClock clock_;
    SystemGuids guids_;
    ReadContext context_;
    PrintedFaults faults_{"lorebinder-cli", Shown};
    std::optional<std::vector<CDatabase>> noteBooks_;
    std::optional<DataLock> lock_;
};

/// Prints a line to standard error, in front of it the program's name.
void PrintError(const std::string& message);
/// The same for a message of the system, which may have several lines.
void PrintMessage(const std::string& text);
/// What a command ends with that was given a note which isn't there; prints it.
ExitStatus NoSuchNote(int32_t id);
/// Tells so that no NoteBook is called this.
void PrintNoNoteBook(const std::string& name);
/// The NoteBook that a name, a folder's name or a guid stands for, of this list and the main one. Nothing, told on
/// standard error and in the status, if none is called so or if several are: whoever deletes one means that one.
std::optional<CDatabase> ChooseNoteBook(const std::vector<CDatabase>& list, const std::string& localGUID,
                                        const std::string& text, ExitStatus& status);

}  // namespace lore
