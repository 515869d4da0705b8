#pragma once

#include <array>
#include <filesystem>
#include <map>
#include <optional>
#include <set>
#include <string>

#include "edit/category_assignment.h"
#include "edit/edit_note_session.h"
#include "exchange/import_archive.h"
#include "exchange/import_comparison.h"
#include "notes/note_book_loader.h"

namespace lore {

/// Lets the user change notes of an archive before they land. Editors work on a NoteBook of its own: the lists of the
/// open one with what the edited notes bring, and below the folder of the import the files of the note that is open.
/// The open NoteBook sees nothing of it before the import, but it keeps a draft of each note that is saved here: one
/// that doesn't land is offered at the next start.
class ImportEditing {
public:
    /// `folder` goes with the import. All but the counters outlive the editing.
    ImportEditing(ImportComparison& comparison, ImportArchive& archive, const EditWorld& open,
                  const IdCounters& counters, const std::filesystem::path& folder);
    ImportEditing(const ImportEditing&) = delete;
    ImportEditing& operator=(const ImportEditing&) = delete;

    /// The note of a row, ready for an editor. Its files are unpacked; one that can't be is told and shows as missing.
    EditNoteSession Open(size_t position);
    /// What a saved editor has made of the note of a row. A draft of it stays until all is done.
    void Take(size_t position, const EditNoteSession& saved);
    /// The editor of a row was left without a save: its draft goes, or is again what was saved before.
    void Leave(size_t position);
    /// The chosen notes with these ids are in the NoteBook: their drafts go. Those of all others stay.
    void Landed(const LongList& ids);
    /// The user gives up the changes made here: all drafts go.
    void DropDrafts();

    /// The paths that all ticked notes are to get, empty at first.
    CategoryAssignment MakeAssignment();
    void Assign(const CategoryAssignment& assignment);

private:
    OpenNoteBook& Book();
    int32_t BringSource(int32_t openID);
    void MapToBook(ArchiveNote& entry);
    void Unpack(const CNote& note);
    std::string& DraftOf(size_t position);
    void MakeDraft(CNote& note) const;
    void KeepFiles(CNote& note) const;
    void WriteDraft(size_t position);
    CSource RecordOf(const CSource& source, const std::vector<CSource>& brought);

    ImportComparison& comparison_;
    ImportArchive& archive_;
    const OpenNoteBook& open_;
    IdCounters counters_;
    DataPaths data_;
    std::optional<OpenNoteBook> book_;
    std::optional<EditWorld> world_;
    const EditWorld& outside_;
    std::map<size_t, std::string> drafts_;  // by row, the guid that the note has there
    std::set<size_t> taken_;                // rows whose drafts hold what was saved
};

}  // namespace lore
