#include "ui/note_editor/note_actions.h"

#include <QMimeData>
#include <QWidget>

#include "notes/note_finder.h"
#include "rtf/rtf.h"
#include "ui/controls/run_when_free.h"
#include "ui/editor/note_clipboard.h"
#include "ui/editor/note_formats.h"
#include "ui/look/qt_text.h"
#include "ui/note_editor/note_editor_window.h"
#include "ui/sources/source_dialogs.h"

namespace lore {

namespace {

/// RTF as programs put it on a clipboard, by the names that desktops use.
std::string RtfOf(const QMimeData& clipboard) {
    for (const char* const form : {"text/rtf", "application/rtf", "text/richtext", "Rich Text Format"}) {
        if (clipboard.hasFormat(QString::fromLatin1(form)))
            return clipboard.data(QString::fromLatin1(form)).toStdString();
    }
    return {};
}

}  // namespace

NoteActions::NoteActions(CLorebinderApp& app, Theme& theme, QWidget& window)
    : QObject(&window), app_(app), theme_(theme), window_(window), commands_(app) {}

void NoteActions::RunEditor(EditNoteSession session, const std::string& unsaved) {
    const bool isNew = session.IsNew();
    NoteEditorWindow editor(std::move(session), commands_, app_, theme_, &window_);
    connect(&editor, &NoteEditorWindow::OptionsRequested, this, &NoteActions::SpellOptionsRequested);
    if (!unsaved.empty())
        editor.SetUnsavedText(unsaved);
    const bool saved = editor.exec() == QDialog::Accepted;
    const bool sourcesChanged = commands_.ShowSourceChanges();
    if (saved)
        commands_.NoteSaved(editor.Note());
    if (saved && !isNew && !sourcesChanged)
        emit NoteSaved(editor.Note().id);
    else if (saved && isNew)
        emit NotesAdded();
    else if (saved || sourcesChanged)
        emit NotesChanged(saved ? editor.Note().id : -1);
}

void NoteActions::ViewSources() {
    if (app_.TellIfClosed())
        return;
    SourceDialogs(commands_, app_.Store(), theme_).ViewSources(&window_);
    if (commands_.ShowSourceChanges())
        emit NotesChanged(-1);
}

void NoteActions::EditSourceTypes() {
    if (app_.TellIfClosed())
        return;
    SourceDialogs(commands_, app_.Store(), theme_).EditTypes(&window_);
    if (commands_.ShowSourceChanges())
        emit NotesChanged(-1);
}

void NoteActions::AddNote() {
    if (!app_.TellIfClosed())
        RunEditor(commands_.NewNote(), {});
}

void NoteActions::EditNote(int32_t id) {
    if (app_.TellIfClosed())
        return;
    const UnsavedOffer offer = commands_.Unsaved().Offer(id);
    if (offer.answer == UnsavedOffer::Answer::Waits)
        return;
    if (offer.answer == UnsavedOffer::Answer::GoOn)
        return RunEditor(commands_.Unsaved().Continue(offer.note), offer.note.draft.note.rtfText);
    if (std::optional<EditNoteSession> session = commands_.EditNote(id))
        RunEditor(std::move(*session), {});
}

void NoteActions::DeleteNote(int32_t id) {
    const int place = app_.List().PositionOf(id);
    if (commands_.DeleteNote(id))
        emit NotesChanged(NoteInPlace(app_.List(), place));
}

void NoteActions::DeleteCurrentNotes() {
    if (commands_.DeleteCurrentNotes())
        emit NotesChanged(-1);
}

void NoteActions::Undo() {
    const NextUndo next = WhatToUndo();
    if (next == NextUndo::None || app_.TellIfClosed())
        return;
    commands_.History().Undo();
    if (next == NextUndo::Deletion || next == NextUndo::Import)
        emit NotesAdded();
    else
        emit NotesChanged(-1);
}

QString NoteActions::UndoText() const {
    switch (WhatToUndo()) {
        case NextUndo::Import:
            return tr("Undo &Import");
        case NextUndo::Colors:
            return tr("Undo &Border Color");
        case NextUndo::KeyWords:
            return tr("Undo &Key Word");
        case NextUndo::Category:
            return tr("Undo Cate&gory");
        case NextUndo::Sources:
            return tr("Undo Sou&rce");
        case NextUndo::None:
        case NextUndo::Deletion:
            break;
    }
    return tr("Undo De&lete");
}

void NoteActions::OfferUnsavedNotes() {
    if (commands_.Unsaved().Drafts().ListDrafts().empty() || app_.TellIfClosed())
        return;
    for (const UnsavedNote& unsaved : commands_.Unsaved().AskForAll())
        RunEditor(commands_.Unsaved().Continue(unsaved), unsaved.draft.note.rtfText);
}

void NoteActions::OfferWaitingNotes() {
    // Not within a command that begins meanwhile: that could not end before the question is answered.
    RunWhenFree(*this, [this] {
        if (app_.IsWhole())
            OfferUnsavedNotes();
    });
}

void NoteActions::CaptureNote(const QMimeData* clipboard) {
    std::string rtf;
    if (clipboard)
        rtf = commands_.CapturedText(
            {RtfOf(*clipboard), FromQString(clipboard->html()), clipboard->text().toStdString()});
    if (rtf.empty()) {
        app_.Ports().prompts.Message("The clipboard holds no text for a note.", "Nothing To Capture",
                                     PromptIcon::Information);
        return;
    }
    if (!app_.TellIfClosed())
        RunEditor(commands_.NewNote(), rtf);
}

std::unique_ptr<QMimeData> NoteActions::CopyNote(int32_t id) {
    const std::optional<CNote> note = FindNote(app_.NoteBook().index, id, app_.Context(), app_.Ports().faults);
    return note ? CopyOf(ReadRtf(note->rtfText), NoteFormats(theme_)) : nullptr;
}

}  // namespace lore
