#pragma once

#include <string>
#include <vector>

#include "online/online_world.h"

namespace lore {

/// The dialog "Select Online NoteBook": the NoteBooks of the account, one of which may be selected.
class OnlineNoteBookChoice {
public:
    /// `selectedID` names the one to begin with; an id that isn't there selects none.
    OnlineNoteBookChoice(OnlineWorld world, std::vector<NoteBookInfo> noteBooks, int32_t selectedID,
                         bool onlyUnlinkedNoteBooks)
        : world_(std::move(world)), noteBooks_(std::move(noteBooks)), onlyUnlinked_(onlyUnlinkedNoteBooks) {
        SelectId(selectedID);
    }

    const std::vector<NoteBookInfo>& NoteBooks() const { return noteBooks_; }
    /// The row that is selected, -1 for none.
    int Selected() const { return selected_; }
    void Select(int row) { selected_ = row; }
    /// Asks for the name of a new online NoteBook until it fits or the user cancels, and makes it. True if the list is
    /// another one now, with the new NoteBook selected.
    bool Create();
    /// "OK": true if a NoteBook is selected; otherwise the user is told.
    bool Accept();
    /// The id of the selected NoteBook.
    int32_t Chosen() const { return noteBooks_[static_cast<size_t>(selected_)].databaseID; }

private:
    void SelectId(int32_t id);
    std::optional<std::string> AskName();
    bool IsTaken(const std::string& name) const;

    OnlineWorld world_;
    std::vector<NoteBookInfo> noteBooks_;
    bool onlyUnlinked_ = false;
    int selected_ = -1;
};

}  // namespace lore
