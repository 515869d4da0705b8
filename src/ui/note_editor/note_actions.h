#pragma once

#include <QObject>
#include <functional>
#include <memory>

#include "app/writing_commands.h"

class QMimeData;
class QWidget;

namespace lore {

class NoteEditorWindow;
class Theme;

/// The commands on notes as a window runs them: each opens the editor or asks, and tells what has become of the list.
class NoteActions : public QObject {
    Q_OBJECT

public:
    /// All outlive the actions. `window` is what editors open above.
    NoteActions(CLorebinderApp& app, Theme& theme, QWidget& window);

    void AddNote();
    void EditNote(int32_t id);
    void DeleteNote(int32_t id);
    void DeleteCurrentNotes();
    void Undo();
    /// The browser of the sources, and the user-defined types of sources.
    void ViewSources();
    void EditSourceTypes();
    NextUndo WhatToUndo() const { return commands_.History().Next(); }
    /// What an entry for it says, of a deletion while there is nothing to undo.
    QString UndoText() const;
    /// Asks for each text that a crash kept from being saved, and opens those that the user goes on with. None where
    /// the NoteBook takes no changes.
    void OfferUnsavedNotes();
    /// The same once no command is at work, for a NoteBook that was just loaded; texts wait on while not all of it
    /// could be read.
    void OfferWaitingNotes();
    /// A new note with what a clipboard holds, in an editor. Null is an empty clipboard.
    void CaptureNote(const QMimeData* clipboard);
    /// A note's text with its formats, as it stands in its file. Null if the NoteBook doesn't know the note.
    std::unique_ptr<QMimeData> CopyNote(int32_t id);
    WritingCommands& Commands() { return commands_; }

signals:
    /// The NoteBook and the list have changed. `focus` is the note to go to, -1 for none.
    void NotesChanged(int32_t focus);
    /// They have changed, and notes have just come into the list.
    void NotesAdded();
    /// One note has another content, and nothing else has changed but perhaps its place in the list.
    void NoteSaved(int32_t id);
    /// The options of the spell checker are to be shown over a window, until they are closed.
    void SpellOptionsRequested(QWidget* over);

private:
    /// Shows the editor until the note is saved or cancelled. `unsaved` is a text to begin with, empty for the note's.
    void RunEditor(EditNoteSession session, const std::string& unsaved);

    CLorebinderApp& app_;
    Theme& theme_;
    QWidget& window_;
    WritingCommands commands_;
};

}  // namespace lore
