#pragma once

#include <optional>
#include <string>
#include <vector>

#include "notebooks/notebook_manager.h"

namespace lore {

/// What the dialog "Manage NoteBooks" shows of the chosen NoteBook.
struct NoteBookDetails {
    std::string name;        ///< for the field; empty for the main NoteBook
    std::string notes;       ///< "# Notes:  12"
    std::string created;     ///< "Created:  07/12/11", "Created: " for the main NoteBook
    bool canChange = false;  ///< whether the name field, "Change Name" and "Delete NoteBook" are for this NoteBook
};

/// The dialog "Manage NoteBooks" without its controls. Row 0 is the main NoteBook, the others follow in list order.
class ManageNoteBooks {
public:
    /// `openGuid` names the NoteBook that is open. The manager and the context outlive this.
    ManageNoteBooks(NoteBookManager& manager, DataPaths data, CDatabase main, std::string openGuid,
                    const ReadContext& context, ManagerPorts ports);

    /// Reads the list and counts the notes of all NoteBooks; the open one is chosen.
    void Open();

    size_t Count() const { return rows_.size(); }
    const CDatabase& Row(size_t row) const { return rows_[row]; }
    /// "<LOREBINDER MAIN>", or the name.
    std::string RowText(size_t row) const;
    size_t Selected() const { return selected_; }
    void Select(size_t row);
    NoteBookDetails Details() const;

    /// True if a NoteBook was made, which is chosen then: the field with its name is emptied.
    bool Create(const std::string& name);
    bool ChangeName(const std::string& name);
    /// True if the list has changed: the main NoteBook is chosen then.
    bool Delete();
    bool CanRestore() const { return manager_.CanRestore(); }
    /// Brings the NoteBook back that was deleted last, and chooses it. True if the list has changed.
    bool Restore();
    /// Whether the dialog may close. Asks where a name would be lost that was typed for the chosen NoteBook, or for a
    /// new one.
    bool MayClose(bool hasTypedName, bool hasNewName);
    /// True once the open NoteBook has been deleted.
    bool HasDeletedOpen() const { return deletedOpen_; }
    /// True once the open NoteBook, which had been deleted before this was opened, is back.
    bool HasRestoredOpen() const { return restoredOpen_; }
    /// The NoteBook to change to.
    const CDatabase& Chosen() const { return rows_[selected_]; }

private:
    void Refill(const CDatabase& selected);

    NoteBookManager& manager_;
    DataPaths data_;
    CDatabase main_;
    std::string openGuid_;
    const ReadContext& context_;
    ManagerPorts ports_;
    std::vector<CDatabase> rows_;
    size_t selected_ = 0;
    bool deletedOpen_ = false, restoredOpen_ = false;
};

}  // namespace lore
