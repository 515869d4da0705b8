#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/app_ports.h"
#include "notes/note_book_loader.h"
#include "notes/note_list.h"
#include "notes/notebook_list.h"
#include "notes/open_notebook.h"
#include "notes/search_flow.h"
#include "notes/text_cache.h"
#include "ports/flow_ports.h"
#include "settings/settings.h"

namespace lore {

/// The application: settings, the list of NoteBooks, the open NoteBook and the current note list, and the commands that
/// work on all of them. It knows no window.
class CLorebinderApp {
public:
    CLorebinderApp(std::filesystem::path dataRoot, const AppPorts& ports);
    ~CLorebinderApp();

    /// Reads the settings. The first thing after the start.
    void LoadOptions();
    /// Chooses the NoteBook that the settings name and stores the choice at once.
    void SelectStartNoteBook();
    /// What follows once a window stands: the agent, the upgrade of a data folder of an older version, the settings
    /// that a newer version changes, the clean-up of note files, the load of the NoteBook and of its last list. Where
    /// older data can't be upgraded no NoteBook is open, nothing is written, and the next call tries again.
    void FinishStartup();
    /// The end: the options are saved, and the agent that runs only beside the program closes. What can't be written is
    /// told to `faults`, since the usual place may be closing too.
    void ExitInstance(FaultNotice& faults);
    void ExitInstance() { ExitInstance(ports_.faults); }
    /// Writes all settings and the ids of the current list, with those that the last load did not find if it met a
    /// failure. A file of the last list that couldn't be read stays as it is.
    void SaveOptions() { SaveOptions(ports_.faults); }

    /// Leaves the open NoteBook, whose list is kept for the next time, and opens another one.
    void SwitchNoteBook(const CDatabase& noteBook);
    /// Loads the open NoteBook anew, with these notes as the current list; after them stand those that were listed at
    /// the last load and could not be read.
    void ReloadNotes(const LongList& listed);
    /// Makes the current list of these notes, in their order, on the caller's thread or in a background.
    void ShowNotes(const LongList& ids, Background* background = nullptr);
    /// The NoteBooks to choose from: the main one, then the others by name ignoring case.
    std::vector<CDatabase> NoteBookChoices() const;
    /// All NoteBooks but the main one, in list order.
    const std::vector<CDatabase>& NoteBooks() const { return noteBooks_; }
    /// Reads the list again and refreshes the record of the open NoteBook, if it is still listed.
    void ReloadNoteBooks();
    /// The open NoteBook has been deleted: its notes leave the list, and until another NoteBook is opened nothing is
    /// written.
    void CloseDeletedNoteBook();
    /// Whether a NoteBook is open, and its last load met no failure.
    bool IsWhole() const { return closed_ == Closed::No && !isUnread_; }
    /// Whether something of the application itself failed, and was told, that TryAgain would do anew.
    bool CanTryAgain() const { return isUnstored_ || isUnread_ || closed_ == Closed::NotUpgraded; }
    /// Writes the settings, upgrades older data or reads the NoteBook, as far as that has failed. The current list is
    /// read again, as ReloadNotes does: its order stays, its selection and what marks its new notes go. True if the
    /// NoteBook was loaded anew.
    bool TryAgain();
    /// True if the open NoteBook takes no changes: the user has been told why and what to do. Each command that writes
    /// begins with this.
    bool TellIfClosed();

    /// `listChanged` is called before the message that tells the number of results.
    SearchOutcome Search(std::string_view text, SearchScope scope, const std::function<void()>& listChanged = {});
    /// The active order of the current list.
    int32_t SortOrder() const { return settings_.Int(Option::NoteSortID); }
    /// Sorts at once. Where the user stops it, the order stays as it was.
    void SetSortOrder(int32_t id);
    /// Sorts by the active order what has come into the current list.
    void SortList() { list_.SortNotes(SortOrder()); }
    /// Reads these notes into the current list by the active order. Gives how many were added.
    size_t Gather(const LongList& ids);
    /// Selects the first note of the list that is newly added, which it stays until the user goes to it. Gives its id;
    /// -1 if there is none, and then no note is selected.
    int32_t SelectFirstNew();
    /// Takes these notes out of the current list; nothing is deleted.
    void TakeOut(const LongList& ids);
    void ClearList();
    /// A note was dragged onto another one: it goes directly before it if it stood behind, otherwise directly after.
    void MoveNote(int32_t id, int32_t target);
    /// Reads a note of the NoteBook again and puts it in its place in the current list.
    void RefreshNote(int32_t id);

    Settings& GetSettings() { return settings_; }
    const Settings& GetSettings() const { return settings_; }
    SettingsStore& Store() { return ports_.store; }
    const DataPaths& Data() const { return data_; }
    OpenNoteBook& NoteBook() { return book_; }
    const OpenNoteBook& NoteBook() const { return book_; }
    CNoteList& List() { return list_; }
    const CNoteList& List() const { return list_; }
    TextCache& Texts() { return texts_; }
    const TextCache& Texts() const { return texts_; }
    const AppPorts& Ports() const { return ports_; }
    FlowPorts Flow() const { return {.prompts = ports_.prompts, .progress = ports_.progress, .faults = ports_.faults}; }
    ReadContext Context() const;
    /// The last ids given out, and how a command that gives out more stores them at once.
    IdCounters Counters() const;
    void StoreCounters(const IdCounters& counters);
    /// Stores all settings at once.
    void StoreSettings() { StoreSettings(ports_.faults); }
    /// Puts on disk what has been set in the store. False if it could not be written, which has been told.
    bool FlushStore() { return FlushStore(ports_.faults); }

private:
    bool FlushStore(FaultNotice& faults);
    void StoreSettings(FaultNotice& faults);
    void SaveOptions(FaultNotice& faults);
    void UseNoteBook(const CDatabase& noteBook);
    void StartAgent();
    bool UpgradeData();
    void LoadNoteBook();
    void TellDamaged(const std::vector<std::string>& files);
    LongList ReadLastViewList();
    void KeepViewList(FaultNotice& faults) const;

    AppPorts ports_;
    DataPaths data_;
    Settings settings_;
    std::vector<CDatabase> noteBooks_;
    OpenNoteBook book_;
    CNoteList list_;
    TextCache texts_;
    /// Why there is no NoteBook that takes changes.
    enum class Closed { No, Deleted, NotUpgraded } closed_ = Closed::No;
    bool isUnstored_ = false;           // settings wait to be written
    bool isUnread_ = false;             // something failed in the last load of the NoteBook
    LongList unfound_;                  // what was to be listed then, and was not found
    std::vector<std::string> damaged_;  // files of the NoteBook that were told to be damaged
    bool isListUnread_ = false;         // nobody can say what the file of the last list holds
};

}  // namespace lore
