#include "app/panel_actions.h"

#include "app/notebook_commands.h"
#include "app/print_commands.h"
#include "exchange/export_notes.h"
#include "notes/note_finder.h"

namespace lore {

PanelActions::PanelActions(CLorebinderApp& app, WritingCommands& commands, ColorPicker pickColor)
    : app_(app), commands_(commands), pickColor_(std::move(pickColor)) {}

PanelOutcome PanelActions::Run(const PanelOrder& order, int32_t focusNote) {
    switch (order.action) {
        case PanelAction::Gather:
        case PanelAction::SelectAll:
            return app_.Gather(order.notes) > 0 ? PanelOutcome::Gathered : PanelOutcome::ListChanged;
        case PanelAction::TakeOut:
        case PanelAction::ClearTree:
        case PanelAction::ClearAll:
            app_.TakeOut(order.notes);
            return PanelOutcome::ListChanged;
        case PanelAction::Copy:
            Copy(order.notes, order.noteBook);
            break;
        case PanelAction::Print:
            if (!order.notes.IsEmpty())
                PrintNotes(app_, order.notes);
            break;
        case PanelAction::Export:
            Export(order.notes);
            break;
        case PanelAction::Delete:
            return commands_.DeleteNotes(order.notes) ? PanelOutcome::NotesChanged : PanelOutcome::Nothing;
        case PanelAction::SetColor:
            return SetPickedColor(order.notes);
        case PanelAction::SetListColor:
            return ChangeValues(&ValueChanges::SetNotesColor, app_.List().GetNoteIDs(), order.color);
        case PanelAction::RemoveListColor:
            return ChangeValues(&ValueChanges::SetNotesColor, ListedWith(order.color), Rgb{0});
        case PanelAction::AttachKeyWord:
            return ChangeValues(&ValueChanges::AttachKeyWord, app_.List().GetNoteIDs(), order.name);
        case PanelAction::RemoveKeyWord:
            return ChangeValues(&ValueChanges::RemoveKeyWord, app_.List().GetNoteIDs(), order.name);
        case PanelAction::AddNote:
            return AddNote(order, focusNote);
    }
    return PanelOutcome::Nothing;
}

LongList PanelActions::ListedWith(Rgb color) const {
    LongList ids;
    for (const ListedNote& entry : app_.List().Notes())
        if (IsSameColor(entry.note->borderColor, color))
            ids.AddTail(entry.Id());
    return ids;
}

template <typename Change, typename... Value>
PanelOutcome PanelActions::ChangeValues(Change change, const LongList& ids, const Value&... value) {
    if (app_.TellIfClosed())
        return PanelOutcome::Nothing;
    Progress& progress = app_.Ports().progress;
    progress.ShowStandBy("Updating notes.....");
    ValueChanges values(commands_.World(), app_.List());
    const ChangedNotes result = (values.*change)(ids, value...);
    progress.HideStandBy();
    if (result.changed.IsEmpty())
        return PanelOutcome::Nothing;
    commands_.History().ValuesChanged(values.TakeReplaced());
    app_.SortList();
    return PanelOutcome::NotesChanged;
}

PanelOutcome PanelActions::SetPickedColor(const LongList& ids) {
    if (app_.TellIfClosed() || ids.IsEmpty())
        return PanelOutcome::Nothing;
    const std::optional<Rgb> color = pickColor_();
    return color ? ChangeValues(&ValueChanges::SetNotesColor, ids, *color) : PanelOutcome::Nothing;
}

PanelOutcome PanelActions::AddNote(const PanelOrder& order, int32_t focusNote) {
    const LongList note = focusNote > 0 ? LongList{focusNote} : LongList();
    switch (order.value) {
        case PanelValue::Category: {
            const int set = CategorySetOf(app_.GetSettings().Int(Option::CtrlBarCatSet));
            return ChangeValues(&ValueChanges::FileInCategory, note, order.id, set == kAllSets ? 1 : set);
        }
        case PanelValue::KeyWord:
            return ChangeValues(&ValueChanges::AttachKeyWord, note, order.name);
        case PanelValue::Color:
            return ChangeValues(&ValueChanges::SetNotesColor, note, order.color);
        case PanelValue::Source:
            return AddToSource(focusNote, order.id);
        case PanelValue::SourceGroup:
        case PanelValue::NoSource:
            break;
    }
    return PanelOutcome::Nothing;
}

PanelOutcome PanelActions::AddToSource(int32_t note, int32_t source) {
    ValueChanges values(commands_.World(), app_.List());
    if (app_.TellIfClosed() || !values.AddSource(note, source))
        return PanelOutcome::Nothing;
    commands_.History().ValuesChanged(values.TakeReplaced());
    app_.RefreshNote(note);
    app_.SortList();
    return PanelOutcome::NotesChanged;
}

std::vector<CNote> PanelActions::Find(const LongList& ids, const char* waitText) {
    Progress& progress = app_.Ports().progress;
    progress.ShowStandBy(waitText);
    std::vector<CNote> notes = FindNotes(app_.NoteBook().index, ids, app_.Context(), app_.Ports().faults);
    progress.HideStandBy();
    return notes;
}

void PanelActions::Copy(const LongList& ids, int noteBook) {
    const std::vector<CDatabase> targets = CopyTargets(app_);
    if (noteBook < 0 || noteBook >= static_cast<int>(targets.size()) || ids.IsEmpty() || app_.TellIfClosed())
        return;
    CNoteList notes;
    for (CNote& note : Find(ids, "Loading notes to copy....."))
        notes.AddNote(std::move(note));
    CopyNotesOfNoteBook(app_, notes, targets[static_cast<size_t>(noteBook)]);
}

void PanelActions::Export(const LongList& ids) {
    if (ids.IsEmpty())
        return;
    const ReadContext context = app_.Context();
    const std::vector<CNote> notes = Find(ids, "Loading Notes...");
    RunExportCommand(NotesOfList(notes), ExportScope::Chosen,
                     {.book = app_.NoteBook(), .data = app_.Data(), .context = context, .ports = app_.Flow()});
}

}  // namespace lore
