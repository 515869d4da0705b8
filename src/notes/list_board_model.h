#pragma once

#include "notes/board_model.h"
#include "notes/note_list.h"
#include "notes/open_notebook.h"

namespace lore {

/// The board's view of the current note list of the open NoteBook.
class ListBoardModel : public BoardModel {
public:
    /// Both live longer.
    ListBoardModel(CNoteList& list, const OpenNoteBook& book) : list_(list), book_(book) {}

    int Count() const override { return static_cast<int>(list_.Count()); }
    int32_t IDAt(int row) const override { return list_.Notes()[static_cast<size_t>(row)].Id(); }
    const CNote& NoteAt(int row) const override { return list_[static_cast<size_t>(row)]; }
    const CNote& ShownNoteAt(int row) const override { return list_.ShownNote(static_cast<size_t>(row)); }
    int RowOf(int32_t noteId) const override { return list_.PositionOf(noteId); }
    std::vector<const CSource*> SourcesOf(const CNote& note) const override;
    std::string SourceRemark(const CNote& note, const CSource& source) const override;
    std::filesystem::path AttachmentPath(const CAttachment& attachment) const override;

private:
    CNoteList& list_;
    const OpenNoteBook& book_;
};

}  // namespace lore
