#include "notebooks/manage_notebooks.h"

#include <algorithm>
#include <map>
#include <tuple>

#include "notes/note_finder.h"

namespace lore {

ManageNoteBooks::ManageNoteBooks(NoteBookManager& manager, DataPaths data, CDatabase main, std::string openGuid,
                                 const ReadContext& context, ManagerPorts ports)
    : manager_(manager),
      data_(std::move(data)),
      main_(std::move(main)),
      openGuid_(std::move(openGuid)),
      context_(context),
      ports_(std::move(ports)),
      rows_({main_}) {}

void ManageNoteBooks::Open() {
    ports_.progress.ShowStandBy("Gathering databases information....");
    manager_.Load(context_);
    Refill(FindByGuid(manager_.List(), main_.guid, openGuid_).value_or(main_));
    for (CDatabase& row : rows_)
        row.noteCount =
            static_cast<int32_t>(CountNotes(NoteBookPaths(data_, row.folder).Notes(), context_, ports_.faults));
    ports_.progress.HideStandBy();
}

/// The rows anew, with the counts of those that were there before.
void ManageNoteBooks::Refill(const CDatabase& selected) {
    std::map<std::tuple<int32_t, std::string, std::string>, int32_t> counts;
    for (const CDatabase& row : rows_)
        counts.emplace(std::tuple(row.id, row.guid, row.folder), row.noteCount);
    rows_ = {main_};
    rows_.insert(rows_.end(), manager_.List().begin(), manager_.List().end());
    selected_ = 0;
    for (size_t i = 0; i < rows_.size(); ++i) {
        const auto known = counts.find({rows_[i].id, rows_[i].guid, rows_[i].folder});
        rows_[i].noteCount = known == counts.end() ? 0 : known->second;
        if (IsSameNoteBook(rows_[i], selected))
            selected_ = i;
    }
}

std::string ManageNoteBooks::RowText(size_t row) const {
    return rows_[row].IsMain() ? kMainNoteBookListName : rows_[row].name;
}

void ManageNoteBooks::Select(size_t row) {
    selected_ = std::min(row, rows_.size() - 1);
}

NoteBookDetails ManageNoteBooks::Details() const {
    const CDatabase& row = rows_[selected_];
    NoteBookDetails details;
    details.notes = "# Notes:  " + std::to_string(row.noteCount);
    details.created = row.IsMain() ? "Created: " : "Created:  " + row.created.Format("%m/%d/%y");
    details.name = row.IsMain() ? std::string() : row.name;
    details.canChange = !row.IsMain();
    return details;
}

bool ManageNoteBooks::Create(const std::string& name) {
    const auto made = manager_.Create(name, context_);
    if (made)
        Refill(*made);
    return made.has_value();
}

bool ManageNoteBooks::ChangeName(const std::string& name) {
    const CDatabase changed = rows_[selected_];
    if (!manager_.ChangeName(changed, name))
        return false;
    Refill(changed);
    return true;
}

bool ManageNoteBooks::Delete() {
    const CDatabase row = rows_[selected_];
    if (manager_.Delete(row, static_cast<size_t>(row.noteCount)) != DeleteOutcome::Deleted)
        return false;
    deletedOpen_ = deletedOpen_ || row.guid == openGuid_;
    restoredOpen_ = restoredOpen_ && row.guid != openGuid_;
    Refill(main_);
    return true;
}

bool ManageNoteBooks::MayClose(bool hasTypedName, bool hasNewName) {
    if (!hasTypedName && !hasNewName)
        return true;
    const std::string typed =
        hasNewName ? "The NoteBook that you have named doesn't exist yet.  \"Create NoteBook\" makes it."
                   : "The NoteBook doesn't have the name that you have typed yet.  \"Change Name\" gives it.";
    return ports_.prompts.Ask(typed + "\n\nDo you wish to close this window without that?",
                              "Close Without the Name?") == PromptAnswer::Yes;
}

bool ManageNoteBooks::Restore() {
    const auto restored = manager_.Restore();
    if (!restored)
        return false;
    const bool isOpen = restored->guid == openGuid_;
    restoredOpen_ = restoredOpen_ || (isOpen && !deletedOpen_);
    deletedOpen_ = deletedOpen_ && !isOpen;
    Refill(*restored);
    rows_[selected_].noteCount =
        static_cast<int32_t>(CountNotes(NoteBookPaths(data_, restored->folder).Notes(), context_, ports_.faults));
    return true;
}

}  // namespace lore
