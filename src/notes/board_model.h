#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "bibliography/source.h"
#include "notes/note.h"

namespace lore {

/// The ordered notes that the board shows. The board reads it while it paints, so that the answers have to be quick.
class BoardModel {
public:
    virtual ~BoardModel() = default;
    virtual int Count() const = 0;
    /// The id of the note at a position below Count(), quick also for all notes of a long list.
    virtual int32_t IDAt(int row) const = 0;
    /// The note at a position below Count(); valid until the list changes.
    virtual const CNote& NoteAt(int row) const = 0;
    /// The same, ready to be shown: search marks that wait are made now.
    virtual const CNote& ShownNoteAt(int row) const = 0;
    /// The position of a note, -1 if the list doesn't hold it.
    virtual int RowOf(int32_t noteId) const = 0;
    /// The formatted sources of a note, in its order, without those that the NoteBook doesn't know.
    virtual std::vector<const CSource*> SourcesOf(const CNote& note) const = 0;
    /// What the note itself says of a source (a page, a remark); empty for nothing.
    virtual std::string SourceRemark(const CNote& note, const CSource& source) const = 0;
    /// Where an attachment's file stands; empty for a web link.
    virtual std::filesystem::path AttachmentPath(const CAttachment& attachment) const = 0;
};

}  // namespace lore
