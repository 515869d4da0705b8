#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>

#include "app/lorebinder_app.h"
#include "app/undo_history.h"
#include "app/unsaved_notes.h"
#include "edit/edit_note_session.h"
#include "edit/note_text_file.h"
#include "ports/spell_checker.h"
#include "sources/source_store.h"

namespace lore {

/// What a clipboard offers of one text; forms that it doesn't have are empty.
struct ClipboardText {
    std::string rtf, html, plain;
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
    UndoHistory& History() { return history_; }
    const UndoHistory& History() const { return history_; }
    const UnsavedNotes& Unsaved() const { return unsaved_; }

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

    CLorebinderApp& app_;
    FaultRelay faults_;
    EditWorld world_;
    UndoHistory history_{app_, world_};
    UnsavedNotes unsaved_{app_, world_};
    SourceChanges sourceChanges_;
    SourceStore sources_{world_, sourceChanges_};
    SpellChecker* spelling_ = nullptr;
    int32_t lastSaved_ = -1;
};

}  // namespace lore
