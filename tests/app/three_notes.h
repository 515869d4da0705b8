#pragma once

#include "app/app_world.h"
#include "app/writing_commands.h"
#include "notes/note_file.h"

namespace lore {

/// The main NoteBook with three notes, all of them in the list.
class ThreeNotes : public AppWorld {
protected:
    ThreeNotes() {
        for (const int32_t id : {1, 2, 3}) {
            CNote note = DayNote(id, id);
            note.plainText = "Note " + std::to_string(id);
            note.rtfText = "{\\rtf1\\ansi " + note.plainText + "}";
            note.keyWords = "key " + std::to_string(id);
            folder.Put("DAY010" + std::to_string(id) + "2020.dat", {note});
        }
        Start(app);
        app.Gather(LongList{1, 2, 3});
    }
    std::vector<int32_t> Listed() const { return app.List().GetNoteIDs().Values(); }

    CLorebinderApp app{folder.folder.Path(), Ports()};
    WritingCommands commands{app};
};

}  // namespace lore
