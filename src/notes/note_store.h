#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <span>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "base/long_list.h"
#include "notes/note.h"
#include "notes/open_notebook.h"
#include "notes/text_cache.h"
#include "ports/fault_notice.h"
#include "ports/read_context.h"

namespace lore {

/// Puts notes into the note files of the open NoteBook and takes them out. The note index and the text cache follow;
/// the other lists of the picture are filed by note_filing.h. Each file is read and written once for all notes of a
/// call.
///
/// A note that changes files is written to its new file before it leaves the old one, so that a crash can only leave it
/// twice; the copy that doesn't show goes when its file is written again. A note is known by its id and guid: of
/// several that bear one id, that which shows is meant, and the others stay. A file that can't be read whole, or
/// which a note of such an id is about to leave, is kept beside, as "NAME.kept", before it is written anew, and told.
/// Every failure is told.
class NoteStore {
public:
    /// `texts` may be null.
    NoteStore(OpenNoteBook& book, const ReadContext& context, FaultNotice& faults, TextCache* texts)
        : book_(book), context_(context), faults_(faults), texts_(texts) {}

    /// Writes a note to the file that its first source or creation day names. A note that the index holds is replaced
    /// where it stands, or moves; any other is appended. False if it isn't on the disk: it is then as it was before.
    bool SaveNote(const CNote& note);
    /// Where a note goes that its file holds already.
    enum class Place { WhereItStands, AtTheEnd };
    /// The same for many notes. Gives the ids of those that could not be written.
    LongList SaveNotes(std::vector<CNote> notes, Place place = Place::WhereItStands);

    /// Changes notes where they lie, each file in one pass. `change` gives true if it has changed the note, and leaves
    /// alone what names the note and its file: id, guid, first source, creation day. Gives the ids of the notes whose
    /// file could not be read or written; those are as they were.
    LongList ChangeNotes(const LongList& ids, const std::function<bool(CNote&)>& change);

    /// Takes notes out of all their files and the index. Gives them as the files held them; those of which a file could
    /// not be written aren't among them, and stay.
    std::vector<CNote> DeleteNotes(const LongList& ids);

    struct Mending {
        bool wasDamaged = false;
        size_t uncounted = 0;  ///< notes behind those that the file counted
        size_t copies = 0;     ///< of notes that another file or place shows, taken out
        size_t notes = 0;      ///< that the file holds now
    };
    /// Writes a file anew without what doesn't belong there, if it needs it and `keep` says that its old bytes are
    /// safe.
    Mending MendFile(const std::string& path, const std::function<bool()>& keep);

private:
    using NotesByFile = std::map<std::string, std::vector<CNote>>;
    using Ids = std::unordered_set<int32_t>;
    using IdsByFile = std::map<std::string, Ids>;
    using Guids = std::unordered_map<int32_t, std::string>;
    struct Arriving;
    struct HeldNotes;

    struct Saving {
        Place place;
        IdsByFile leaving;  ///< notes that have moved, by their old files
        LongList failed;
    };

    bool PutIntoFile(const std::string& path, std::vector<CNote> incoming, Saving& saving);
    void MoveInIndex(const std::string& path, const LongList& ids, Saving& saving);
    bool TakeFromFile(const std::string& path, const Ids& ids, std::vector<CNote>& taken);
    LongList ChangeInFile(const std::string& path, const Ids& ids, const std::function<bool(CNote&)>& change);
    IdsByFile GroupByFile(const LongList& ids) const;
    LongList DropCopies(const LongList& ids);
    bool ReadForRewrite(const std::string& path, const Ids& leaving, HeldNotes& held);
    bool Keep(const std::string& path, const std::string& what, const std::string& reason);
    void DropHiddenCopies(const std::string& path, std::vector<CNote>& notes);
    void FindShownGuids(const std::string& path, const Ids& ids, Guids& guids);
    bool Write(const std::string& path, const std::vector<CNote>& notes, const Guids& arriving = {});
    std::vector<bool> ShownIn(const std::string& path, const std::vector<CNote>& notes, const Guids& arriving) const;
    void Flush();

    OpenNoteBook& book_;
    const ReadContext& context_;
    FaultNotice& faults_;
    TextCache* texts_;
};

}  // namespace lore
