#include "app/writing_commands.h"
#include "notes/note_finder.h"
#include "notes/note_list_citations.h"

namespace lore {

bool WritingCommands::ShowSourceChanges() {
    const SourceChanges changes = std::exchange(sourceChanges_, {});
    if (!changes.Any())
        return false;
    CNoteList& list = app_.List();
    if (changes.authors)
        app_.NoteBook().sources.FormatAll(app_.NoteBook().authors);
    LongList rewritten;
    for (const int32_t id : changes.rewritten) {
        if (list.Contains(id))
            rewritten.AddTail(id);
    }
    for (CNote& note : FindNotes(app_.NoteBook().index, rewritten, app_.Context(), world_.faults))
        list.ReplaceNote(std::move(note), nullptr);
    CitationTexts citations(app_.NoteBook().sources, app_.NoteBook().authors);
    for (const int32_t id : changes.authors ? list.GetNoteIDs() : changes.cited) {
        if (const int position = list.PositionOf(id); position >= 0)
            list.SetCitations(static_cast<size_t>(position), citations.For(list[static_cast<size_t>(position)]));
    }
    app_.SortList();
    return true;
}

}  // namespace lore
