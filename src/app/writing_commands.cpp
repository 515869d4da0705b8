#include "app/writing_commands.h"

#include <algorithm>

#include "base/text.h"
#include "notes/note_finder.h"
#include "notes/note_list_add.h"
#include "notes/note_list_citations.h"
#include "notes/sort_order.h"
#include "rtf/html_reader.h"
#include "rtf/rtf.h"

namespace lore {

int32_t NoteInPlace(const CNoteList& list, int position) {
    if (list.IsEmpty() || position < 0)
        return -1;
    return list[std::min(static_cast<size_t>(position), list.Count() - 1)].id;
}

WritingCommands::WritingCommands(CLorebinderApp& app)
    : app_(app),
      faults_(app.Ports().faults),
      world_{app.NoteBook(),    app.GetSettings(), app.Ports().prompts, app.Ports().progress,         app.Ports().clock,
             app.Ports().guids, faults_,           &app.Texts(),        [&app] { app.SaveOptions(); }} {}

EditNoteSession WritingCommands::NewNote() {
    const CNoteList& list = app_.List();
    const int last = list.PositionOf(lastSaved_);
    if (last < 0)
        lastSaved_ = -1;
    const CNote* const saved = last < 0 ? nullptr : &list[static_cast<size_t>(last)];
    const CNote* const lastOfList = list.IsEmpty() ? nullptr : &list[list.Count() - 1];
    return EditNoteSession::ForNewNote(world_, FillSource(app_.GetSettings(), saved, lastOfList));
}

std::optional<EditNoteSession> WritingCommands::EditNote(int32_t id) {
    const std::optional<CNote> note = FindNote(app_.NoteBook().index, id, app_.Context(), world_.faults);
    return note ? std::optional(EditNoteSession::ForNote(world_, *note)) : std::nullopt;
}

void WritingCommands::NoteSaved(const CNote& note) {
    lastSaved_ = note.id;
    CNoteList& list = app_.List();
    CitationTexts citations(app_.NoteBook().sources, app_.NoteBook().authors);
    if (!list.ReplaceNote(note, citations.For(note)))
        AddSingleNote(list, citations.Listed(note), IsSortingId(app_.SortOrder()) ? kNoSort : app_.SortOrder());
    app_.SortList();
}

bool WritingCommands::DeleteNote(int32_t id) {
    if (!app_.NoteBook().index.Contains(id) || app_.TellIfClosed() ||
        world_.prompts.Ask("Do you wish to permanently delete this note?", "Delete Note?") != PromptAnswer::Yes)
        return false;
    return Delete(LongList{id});
}

bool WritingCommands::DeleteCurrentNotes() {
    return AskTwiceAndDelete(app_.List().GetNoteIDs());
}

bool WritingCommands::DeleteNotes(const LongList& ids) {
    return ids.Count() == 1 ? DeleteNote(ids[0]) : AskTwiceAndDelete(ids);
}

bool WritingCommands::AskTwiceAndDelete(const LongList& ids) {
    if (ids.IsEmpty() || app_.TellIfClosed())
        return false;
    const bool one = ids.Count() == 1;
    const std::string first =
        one ? "Do you wish to permanently delete the current note?"
            : "Do you wish to permanently delete all " + std::to_string(ids.Count()) + " current notes?";
    const char* const second = one ? "Are you sure you wish to delete the note?\n"
                                     "This will permanently remove it from your Lorebinder database!"
                                   : "Are you sure you wish to delete these notes?\n"
                                     "This will permanently remove them from your Lorebinder database!";
    if (world_.prompts.Ask(first, "Delete Current Notes?") != PromptAnswer::Yes ||
        world_.prompts.Ask(second, "Delete Notes?") != PromptAnswer::Yes)
        return false;
    world_.progress.ShowStandBy("Deleting current notes....");
    const bool deleted = Delete(ids);
    world_.progress.HideStandBy();
    return deleted;
}

bool WritingCommands::Delete(const LongList& ids) {
    const ReadContext context = app_.Context();
    OpenNoteBook& book = app_.NoteBook();
    NoteRemoval removal(book, context, world_.faults, &app_.Texts(), app_.Ports().background);
    DeletedNotes deleted = removal.DeleteNotes(ids, GoneFiles::Kept);
    if (deleted.notes.empty())
        return false;
    LongList gone;
    for (const CNote& note : deleted.notes)
        gone.AddTail(note.id);
    history_.NotesDeleted(std::move(deleted));
    app_.TakeOut(gone);
    return true;
}

std::string WritingCommands::CapturedText(const ClipboardText& clipboard) const {
    const NewTextLook look = TextLook();
    std::string rtf = CleanRtf(clipboard.rtf);
    if (!PlainText(rtf).empty())
        return rtf;
    if (!Trim(clipboard.html).empty())
        return WriteRtf(ReadHtml(clipboard.html, {look.font, look.halfPoints}));
    return Trim(clipboard.plain).empty() ? std::string() : RtfFromText(clipboard.plain, look);
}

}  // namespace lore
