#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "app/lorebinder_app.h"
#include "edit/draft_store.h"
#include "edit/edit_note_session.h"
#include "edit/note_removal.h"
#include "edit/note_text_file.h"
#include "edit/value_changes.h"
#include "exchange/import_undo.h"
#include "ports/spell_checker.h"
#include "sources/source_store.h"

namespace lore {

/// What a clipboard offers of one text; forms that it doesn't have are empty.
struct ClipboardText {
    std::string rtf, html, plain;
};

/// A text that a crash kept from being saved.
struct UnsavedNote {
    Draft draft;
    std::optional<CNote> stored;  ///< the note of the NoteBook that it continues
};

/// The note that stands at a position of a list, or the last one if the list has become shorter; -1 for an empty list
/// and for no position, -1.
int32_t NoteInPlace(const CNoteList& list, int position);

/// The commands that write notes of the open NoteBook, and what the application remembers between them. Windows show
/// the sessions that it opens, and hand saved notes back.
class WritingCommands {
public:
    /// `app` has its options loaded, and outlives the commands.
    explicit WritingCommands(CLorebinderApp& app);
    /// Attachment files of deleted notes go for good.
    ~WritingCommands();
    WritingCommands(const WritingCommands&) = delete;
    WritingCommands& operator=(const WritingCommands&) = delete;

    EditNoteSession NewNote();
    /// Nothing for a note that the NoteBook doesn't hold.
    std::optional<EditNoteSession> EditNote(int32_t id);
    /// Brings a saved note into the current list: in its place, or by the active order, newly added.
    void NoteSaved(const CNote& note);

    /// Asks, and deletes a note. True if it has gone.
    bool DeleteNote(int32_t id);
    /// Asks twice, and deletes all notes of the current list. True if any has gone.
    bool DeleteCurrentNotes();
    /// Asks, for several notes twice, and deletes notes of the NoteBook. True if any has gone.
    bool DeleteNotes(const LongList& ids);
    /// Deletions from the open NoteBook, imports into it and what its panels have given to notes can be undone, the
    /// last one first, until the program ends. What could not be written, told, can be tried again.
    enum class NextUndo { None, Deletion, Import, Colors, KeyWords, Category, Sources };
    NextUndo WhatToUndo() const;
    void Undo();
    /// An import has come to its end. `listed` are the notes of the current list before it.
    void ImportDone(ImportChanges changes, const LongList& listed);
    /// Notes have got other values, outside the editor.
    void ValuesChanged(ReplacedValues replaced);

    DraftStore Drafts() const { return DraftStore(app_.NoteBook().paths); }
    /// The texts of the open NoteBook that were not saved, each with a question. Those that the user goes on with are
    /// returned, those that are discarded are removed. A damaged one is set aside and told; one that can't be read now,
    /// or whose note may stand in a file that can't, waits and is told; one that the note holds already goes without a
    /// word.
    std::vector<UnsavedNote> AskForUnsavedNotes();
    /// The same for the text of one note, before it is edited. `wanted` is set if the user goes on with it; false if it
    /// waits on, so that an editor would write over it.
    bool OfferUnsavedNote(int32_t id, std::optional<UnsavedNote>& wanted);
    EditNoteSession ContinueNote(const UnsavedNote& unsaved);

    /// Font and size of new texts.
    NewTextLook TextLook() const { return LookOfNewText(app_.Ports().store); }
    /// Where dialogs on sources write.
    SourceStore& Sources() { return sources_; }
    /// Brings what was changed there into the current list, which is then in its order again. False if nothing was.
    bool ShowSourceChanges();

    /// What a clipboard holds as a note's rich text, the richest form first; empty if there is no text.
    std::string CapturedText(const ClipboardText& clipboard) const;

    /// Who checks the spelling in editors; not owned, may be null.
    void SetSpelling(SpellChecker* checker) { spelling_ = checker; }
    SpellChecker* Spelling() const { return spelling_; }
    EditWorld& World() { return world_; }
    /// Failed reads and writes are told there while a window is open, notices in the application's own place all the
    /// same; null for that place. Gives the place that it was before.
    FaultNotice* ShowFaultsIn(FaultNotice* place) { return std::exchange(faults_.place, place); }

private:
    struct Undoable {
        std::string noteBook;  // GUID
        std::variant<DeletedNotes, ImportChanges, ReplacedValues> what;
        LongList listed = {};
        std::vector<CSource> sources = {};  // of deleted notes
        LongList behind = {};  // the neighbours before the `listed`, 0 for none, in an order that the user made
    };
    /// Hands faults on to where the user looks, and notices to where they stay when the window of a command closes.
    struct FaultRelay : FaultNotice {
        explicit FaultRelay(FaultNotice& usual) : place(nullptr), usual_(usual) {}
        void Tell(const Fault& fault) override { (place && !fault.isNotice ? *place : usual_).Tell(fault); }
        void Mended(const std::string& what, const std::string& path) override {
            usual_.Mended(what, path);
            if (place)
                place->Mended(what, path);
        }
        FaultNotice* place;

    private:
        FaultNotice& usual_;
    };
    bool Delete(const LongList& ids);
    bool AskTwiceAndDelete(const LongList& ids);
    bool UndoDeletion(Undoable& undoable);
    bool UndoImportOf(Undoable& undoable);
    bool UndoValues(ReplacedValues& replaced);
    void KeepsFiles();
    const Undoable* LastUndoable() const;
    bool ReadDraft(const std::filesystem::path& file, Draft& draft);
    bool AskForUnsavedNote(const std::filesystem::path& file, UnsavedNote& unsaved);

    CLorebinderApp& app_;
    FaultRelay faults_;
    EditWorld world_;
    SourceChanges sourceChanges_;
    SourceStore sources_{world_, sourceChanges_};
    SpellChecker* spelling_ = nullptr;
    int32_t lastSaved_ = -1;
    std::vector<Undoable> undoables_;
    std::vector<NoteBookPaths> withKeptFiles_;
};

}  // namespace lore
