#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "notes/note_book_loader.h"
#include "notes/note_list.h"
#include "notes/notebook_list.h"
#include "notes/open_notebook.h"
#include "notes/search_flow.h"
#include "notes/text_cache.h"
#include "ports/clock.h"
#include "ports/fault_notice.h"
#include "ports/guid_source.h"
#include "ports/progress.h"
#include "ports/prompts.h"
#include "settings/settings.h"

namespace lore {

/// What the application asks of the world. All of it outlives the application.
struct AppPorts {
    Prompts& prompts;
    Progress& progress;
    Clock& clock;
    GuidSource& guids;
    SettingsStore& store;
    FaultNotice& faults;
};

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
    /// What follows once a window stands: the settings that a newer version changes, the clean-up of note files, the
    /// load of the NoteBook and of its last list.
    void FinishStartup();
    /// Writes all settings and the ids of the current list.
    void SaveOptions();

    /// Leaves the open NoteBook, whose list is kept for the next time, and opens another one.
    void SwitchNoteBook(const CDatabase& noteBook);
    /// The NoteBooks to choose from: the main one, then the others by name ignoring case.
    std::vector<CDatabase> NoteBookChoices() const;

    SearchOutcome Search(std::string_view text, SearchScope scope);
    /// The active order of the current list; setting it sorts at once.
    int32_t SortOrder() const { return settings_.Int(Option::NoteSortID); }
    void SetSortOrder(int32_t id);
    /// Reads these notes into the current list by the active order. Gives how many were added.
    size_t Gather(const LongList& ids);
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
    TextCache& Texts() { return *texts_; }
    const AppPorts& Ports() const { return ports_; }
    ReadContext Context() const;

    // The texts of the status panes.
    std::string NoteBookPane() const;
    std::string LinkPane() const;
    std::string LastSyncPane() const;
    std::string NotesPane() const;
    std::string ListPane() const;
    /// The title of the main window.
    static std::string WindowTitle();

private:
    void UseNoteBook(const CDatabase& noteBook);
    void LoadNoteBook();
    void LoadLastList();
    void StoreCounters(const IdCounters& counters);
    void Flush();

    AppPorts ports_;
    DataPaths data_;
    Settings settings_;
    std::vector<CDatabase> noteBooks_;
    OpenNoteBook book_;
    CNoteList list_;
    std::unique_ptr<TextCache> texts_;
};

}  // namespace lore
