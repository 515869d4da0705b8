#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "exchange/archive_result.h"
#include "notes/notebook_list.h"
#include "notes/notebook_paths.h"
#include "ports/flow_ports.h"
#include "ports/read_context.h"
#include "settings/settings.h"

namespace lore {

/// What backups work on. Paths in settings and records are text; those given here are the file
/// system's.
struct BackupJob {
    DataPaths data;
    Settings& settings;
    const ReadContext& context;
    FlowPorts ports;
    std::function<void()> storeSettings;  ///< stores the settings at once
};

/// How a backup of all NoteBooks is made.
struct BackupAllOptions {
    std::string dateText;         ///< stands in the files' names
    bool keepRecord = false;      ///< the new paths are remembered as those of the last auto-backup
    bool deletePrevious = false;  ///< the files of the last auto-backup go
};

/// Backs up one NoteBook.
ArchiveOutcome BackUpNoteBook(const CDatabase& noteBook, const std::filesystem::path& target, const BackupJob& job);

/// What backups of several NoteBooks have made.
struct BackedUp {
    static constexpr int kFailed = -1;  ///< what a NoteBook whose backup has failed adds

    int notes = 0;                             ///< the sum of what each NoteBook gave, less one for each failure
    std::vector<std::filesystem::path> files;  ///< in the order of the NoteBooks

    void Add(const ArchiveOutcome& outcome, const std::filesystem::path& file);
};

/// Backs up all NoteBooks, the main one last, each into a file of its own: where the file's name, whatever the case of
/// its letters, is that of an earlier one, the NoteBook's folder stands in it too. The file of last time goes only once
/// the new one stands, was compared, and is remembered, if the NoteBook was read whole, if it has no named attachment
/// that the new one lacks, and if no other NoteBook has it as its backup.
BackedUp RunBackupAll(const std::filesystem::path& path, const BackupAllOptions& options, const BackupJob& job);

// The commands of the menu.
void BackupCurrentNoteBook(const CDatabase& open, const BackupJob& job);
void BackupAllNoteBooks(const BackupJob& job);
/// "Run Auto-Backup...": asks first.
void RunAutoBackup(const BackupJob& job);

/// The auto-backup when the program closes, every so many times. Asks first, and says nothing when it is done. Where
/// nobody may be there to answer, it stays due.
void AutoBackupAtClose(const BackupJob& job, bool mayAsk);

}  // namespace lore
