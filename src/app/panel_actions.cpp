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
            return PanelOutcome::Nothing;
        case PanelAction::Print:
            if (!order.notes.IsEmpty())
                PrintNotes(app_, order.notes);
            return PanelOutcome::Nothing;
        case PanelAction::Export:
            Export(order.notes);
            return PanelOutcome::Nothing;
        case PanelAction::Delete:
            return commands_.DeleteNotes(order.notes) ? PanelOutcome::NotesChanged : PanelOutcome::Nothing;
        default:
            return app_.MayWrite() ? ChangeValues(order, focusNote) : PanelOutcome::Nothing;
    }
}

LongList PanelActions::ListedWith(Rgb color) const {
    LongList ids;
    for (const ListedNote& entry : app_.List().Notes())
        if (IsSameColor(entry.note->borderColor, color))
            ids.AddTail(entry.Id());
    return ids;
}

PanelOutcome PanelActions::ChangeValues(const PanelOrder& order, int32_t focusNote) {
    if (order.action == PanelAction::AddNote && order.value == PanelValue::Source)
        return AddToSource(focusNote, order.id);
    std::optional<Rgb> color = order.color;
    if (order.action == PanelAction::SetColor)
        color = order.notes.IsEmpty() ? std::nullopt : pickColor_();
    if (!color)
        return PanelOutcome::Nothing;
    Progress& progress = app_.Ports().progress;
    progress.ShowStandBy("Updating notes.....");
    ValueChanges changes(commands_.World(), app_.List());
    ChangedNotes result;
    if (order.action == PanelAction::SetColor)
        result = changes.SetNotesColor(order.notes, *color);
    else if (order.action == PanelAction::SetListColor)
        result = changes.SetNotesColor(app_.List().GetNoteIDs(), *color);
    else if (order.action == PanelAction::RemoveListColor)
        result = changes.SetNotesColor(ListedWith(*color), 0);
    else if (order.action == PanelAction::AttachKeyWord)
        result = changes.AttachKeyWord(app_.List().GetNoteIDs(), order.name);
    else if (order.action == PanelAction::RemoveKeyWord)
        result = changes.RemoveKeyWord(app_.List().GetNoteIDs(), order.name);
    else
        result = AddNote(changes, order, focusNote);
    progress.HideStandBy();
    if (result.changed.IsEmpty())
        return PanelOutcome::Nothing;
    commands_.ValuesChanged(changes.TakeReplaced());
    app_.SortList();
    return PanelOutcome::NotesChanged;
}

ChangedNotes PanelActions::AddNote(ValueChanges& changes, const PanelOrder& order, int32_t focusNote) {
    const LongList note = focusNote > 0 ? LongList{focusNote} : LongList();
    switch (order.value) {
        case PanelValue::Category: {
            const int set = CategorySetOf(app_.GetSettings().Int(Option::CtrlBarCatSet));
            return changes.FileInCategory(note, order.id, set == kAllSets ? 1 : set);
        }
        case PanelValue::KeyWord:
            return changes.AttachKeyWord(note, order.name);
        case PanelValue::Color:
            return changes.SetNotesColor(note, order.color);
        default:
            return {};
    }
}

PanelOutcome PanelActions::AddToSource(int32_t note, int32_t source) {
    ValueChanges changes(commands_.World(), app_.List());
    if (!changes.AddSource(note, source))
        return PanelOutcome::Nothing;
    commands_.ValuesChanged(changes.TakeReplaced());
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
    if (noteBook < 0 || noteBook >= static_cast<int>(targets.size()) || ids.IsEmpty() || !app_.MayWrite())
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
    const AppPorts& ports = app_.Ports();
    const std::vector<CNote> notes = Find(ids, "Loading Notes...");
    RunExportCommand(NotesOfList(notes), ExportScope::Chosen,
                     {app_.NoteBook(), app_.Data(), context, ports.prompts, ports.progress, ports.faults});
}

}  // namespace lore
