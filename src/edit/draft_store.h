#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "base/loaded.h"
#include "notes/note.h"
#include "notes/notebook_paths.h"
#include "ports/read_context.h"

namespace lore {

/// A note as it stood in an editor, with the version that the editing began from.
struct Draft {
    CNote note;           ///< whole; a note that was never saved has the id -1
    DateTime baseEdited;  ///< dateEdited of the note as it was opened; null for a new one
    DateTime written;     ///< local time
    bool syncTicked = false;
};

/// A file of drafts, one for each note that is being edited, in the folder "Drafts" of a NoteBook:
///
///   "LoreDraft 1\n" baseEdited '\n' written '\n' flags ' ' recordSize ' ' plainSize ' ' rtfSize '\n'
///   record, a note file whose one note has no texts; then the plain text and the rich text as they are
///
/// Flags: 1 for a ticked sync box, 2 for a note that was never saved. The sizes have to fill the file exactly. Texts
/// may be larger than those that a note file can hold.
class DraftStore {
public:
    explicit DraftStore(const NoteBookPaths& paths) : folder_(FolderOf(paths)) {}
    static std::filesystem::path FolderOf(const NoteBookPaths& paths) { return paths.Folder() / "Drafts"; }

    /// Writes the draft whole, over the one that stands there for the same note. May be called on any thread, for one
    /// note by one thread at a time.
    FileResult WriteDraft(const Draft& draft) const;
    /// Keeps a file with the draft of a note, such as a picture that has left the text, and gives its path. It goes
    /// with the draft.
    FileResult KeepFile(std::string_view guid, std::string_view name, std::string_view bytes,
                        std::filesystem::path& path) const;
    /// Removes the draft of a note and the files kept with it.
    FileResult RemoveDraft(std::string_view guid) const;

    /// The file in which the draft of a note stands, if there is one. Odd GUIDs may share a file.
    std::filesystem::path FileOf(std::string_view guid) const;
    /// The files of all drafts, by name; what was set aside isn't among them.
    std::vector<std::filesystem::path> ListDrafts() const;
    /// A blank draft if the file can't be read, or was read and is damaged.
    static Loaded<Draft> ReadDraft(const std::filesystem::path& path, const ReadContext& context);

    const std::filesystem::path& Folder() const { return folder_; }

private:
    std::filesystem::path folder_;
};

/// True if saving the draft would change the note as it is stored, or if there is none.
bool DraftDiffers(const Draft& draft, const CNote* stored);

}  // namespace lore
