#pragma once

#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "bibliography/source.h"
#include "edit/edit_world.h"
#include "edit/note_removal.h"
#include "edit/value_changes.h"
#include "exchange/import_undo.h"

namespace lore {

class CLorebinderApp;

/// What is undone next.
enum class NextUndo { None, Deletion, Import, Colors, KeyWords, Category, Sources };

/// Deletions from the open NoteBook, imports into it and what its panels have given to notes can be undone, the last
/// one first, until the program ends. What could not be written, told, can be tried again.
class UndoHistory {
public:
    /// Both outlive the history.
    UndoHistory(CLorebinderApp& app, EditWorld& world) : app_(app), world_(world) {}
    /// Attachment files of deleted notes go for good.
    ~UndoHistory();
    UndoHistory(const UndoHistory&) = delete;
    UndoHistory& operator=(const UndoHistory&) = delete;

    /// Notes have been deleted, and still stand in the current list.
    void NotesDeleted(DeletedNotes deleted);
    /// An import has come to its end. `former` is the list whose place the imported notes take, if they do.
    void ImportDone(ImportChanges changes, std::optional<LongList> former);
    /// Notes have got other values, outside the editor.
    void ValuesChanged(ReplacedValues replaced);

    NextUndo Next() const;
    void Undo();

private:
    struct Deletion {
        DeletedNotes deleted;
        std::vector<CSource> sources;  ///< that the notes name
        LongList listed;               ///< those of the current list, in its order
        LongList behind;               ///< their neighbours, 0 for none, in an order that the user made
    };
    struct Import {
        ImportChanges changes;
        std::optional<LongList> former;  ///< the list that gave way to the imported notes
    };
    struct Step {
        std::string noteBook;  ///< GUID
        std::variant<Deletion, Import, ReplacedValues> what;
    };

    void Add(std::variant<Deletion, Import, ReplacedValues> what);
    const Step* LastStep() const;
    void RememberKeptFiles();
    bool TakeBack(Deletion& deletion);
    bool TakeBack(Import& import);
    bool TakeBack(ReplacedValues& replaced);

    CLorebinderApp& app_;
    EditWorld& world_;
    std::vector<Step> steps_;
    std::vector<NoteBookPaths> withKeptFiles_;
};

}  // namespace lore
