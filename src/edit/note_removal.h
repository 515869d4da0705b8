#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "base/long_list.h"
#include "notes/note.h"
#include "notes/open_notebook.h"
#include "notes/text_cache.h"
#include "ports/background.h"
#include "ports/fault_notice.h"
#include "ports/read_context.h"

namespace lore {

/// Notes that were deleted, as their files held them, and where their attachment files have gone.
struct DeletedNotes {
    std::vector<CNote> notes;
    std::filesystem::path keptFiles;  ///< empty if the attachment files were deleted for good
};

/// Notes that could not be brought back whole, by id; each was told.
struct Unrestored {
    LongList unwritten;     ///< not in their files
    LongList withoutFiles;  ///< an attachment file could not be moved back
    bool Contains(int32_t id) const { return unwritten.Contains(id) || withoutFiles.Contains(id); }
};

/// What becomes of the attachment files of deleted notes. Kept: in a folder of the NoteBook, where RestoreNotes finds
/// them.
enum class GoneFiles { Deleted, Kept };

/// Deletes notes and restores them. Nothing here asks.
class NoteRemoval {
public:
    /// `texts` and `background` may be null.
    NoteRemoval(OpenNoteBook& book, const ReadContext& context, FaultNotice& faults, TextCache* texts,
                Background* background = nullptr)
        : book_(book), context_(context), faults_(faults), texts_(texts), background_(background) {}

    /// Takes the notes out of their files and all lists of the NoteBook, marks their records in the sync log, and
    /// deletes their attachment files or keeps them. A file that another note names too stays, and so do all of them,
    /// told, if not every other note could be looked at. A note whose file can't be written stays, with all that it
    /// has, and isn't among the result.
    DeletedNotes DeleteNotes(const LongList& ids, GoneFiles files);
    /// Puts notes back where they were: first the attachment files, then the notes. What fails can be tried again.
    Unrestored RestoreNotes(const DeletedNotes& deleted);
    /// Moves their attachment files back. Gives the ids of those that lack one still.
    LongList RestoreFiles(const DeletedNotes& deleted);
    /// Moves the files of attachments to where RestoreNotes finds them.
    static void KeepFilesOf(const CNote& note, const NoteBookPaths& paths, FaultNotice& faults);
    /// Deletes the attachment files that were moved for RestoreNotes; from then on nothing comes back.
    static void DiscardKeptFiles(const NoteBookPaths& paths, FaultNotice& faults);

private:
    void StampRecords(const std::vector<CNote>& notes);

    OpenNoteBook& book_;
    const ReadContext& context_;
    FaultNotice& faults_;
    TextCache* texts_;
    Background* background_;
};

/// The folder of a NoteBook that holds the attachment files of deleted notes until they are discarded.
std::filesystem::path KeptFilesFolder(const NoteBookPaths& paths);

}  // namespace lore
