#pragma once

#include "app/lorebinder_app.h"
#include "notebooks/backup.h"
#include "notebooks/copy_notes.h"
#include "notebooks/manage_notebooks.h"

namespace lore {

/// What the dialog "Manage NoteBooks" works with, for the time that it is open.
class NoteBookManagement {
public:
    /// `trash` keeps deleted NoteBooks until the program ends.
    NoteBookManagement(CLorebinderApp& app, NoteBookTrash& trash);
    ManageNoteBooks& Model() { return model_; }
    /// After the dialog: the list is read again. `changeTo` says whether the user changes to the chosen NoteBook,
    /// which is opened then. True if another NoteBook, or none, is open now.
    bool Finish(bool changeTo);

private:
    CLorebinderApp& app_;
    ReadContext context_;
    ManagerPorts ports_;
    NoteBookManager manager_;
    ManageNoteBooks model_;
};

// The backups of the menu.
void BackupCurrentNoteBook(CLorebinderApp& app);
void BackupAllNoteBooks(CLorebinderApp& app);
void RunAutoBackup(CLorebinderApp& app);

/// The NoteBooks that a note can be copied to: all but the open one, the main one first.
std::vector<CDatabase> CopyTargets(const CLorebinderApp& app);
/// Copies a note of the open NoteBook to another one.
void CopyNoteToNoteBook(CLorebinderApp& app, int32_t noteId, int32_t targetId);
/// Copies notes of the open NoteBook to another one, and tells how many.
void CopyNotesOfNoteBook(CLorebinderApp& app, const CNoteList& notes, const CDatabase& target);

/// What the main window closes for.
enum class CloseReason { User, Sync, QuitOrder };

/// What happens before the main window closes: the auto-backup, if it is due, and the sync at close, unless a sync is
/// what the window closes for. With an order to quit nobody may be there to be asked.
void RunCloseSteps(CLorebinderApp& app, CloseReason reason);

}  // namespace lore
