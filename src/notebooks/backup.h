#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "notes/notebook_list.h"
#include "notes/notebook_paths.h"
#include "ports/fault_notice.h"
#include "ports/progress.h"
#include "ports/prompts.h"
#include "ports/read_context.h"
#include "settings/settings.h"

namespace lore {

/// What backups work on and ask of the world. Paths in settings and records are text; those given here are the file
/// system's.
struct BackupWorld {
    DataPaths data;
    Settings& settings;
    const ReadContext& context;
    Prompts& prompts;
    Progress& progress;
    FaultNotice& faults;
    std::function<void()> storeSettings;  ///< stores the settings at once
};

/// How a backup of all NoteBooks is made.
struct BackupAllOptions {
    std::string dateText;         ///< stands in the files' names
    bool keepRecord = false;      ///< the new paths are remembered as those of the last auto-backup
    bool deletePrevious = false;  ///< the files of the last auto-backup go
};

/// Backs up one NoteBook. Gives the number of notes, 0 for none, -1 after a failure, which is told.
int BackUpNoteBook(const CDatabase& noteBook, const std::filesystem::path& target, const BackupWorld& world);

/// What a backup of all NoteBooks has made.
struct BackedUp {
    int notes = 0;                             ///< the sum of what each NoteBook gave
    std::vector<std::filesystem::path> files;  ///< in the order of the NoteBooks
};

/// Backs up all NoteBooks, the main one last, each into a file of its own: where the file's name, whatever the case of
/// its letters, is that of an earlier one, the NoteBook's folder stands in it too. The file of last time goes only once
/// the new one stands, was compared, and is remembered, if the NoteBook was read whole, if it has no named attachment
/// that the new one lacks, and if no other NoteBook has it as its backup.
BackedUp RunBackupAll(const std::filesystem::path& path, const BackupAllOptions& options, const BackupWorld& world);

// The commands of the menu.
void BackupCurrentNoteBook(const CDatabase& open, const BackupWorld& world);
void BackupAllNoteBooks(const BackupWorld& world);
/// "Run Auto-Backup...": asks first.
void RunAutoBackup(const BackupWorld& world);

/// The auto-backup when the program closes, every so many times. Asks first, and says nothing when it is done.
void AutoBackupAtClose(const BackupWorld& world);

}  // namespace lore
