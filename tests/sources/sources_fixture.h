#pragma once

#include <string>
#include <vector>

#include "edit/edit_fixture.h"
#include "sources/source_store.h"
#include "support/note_reading.h"

namespace lore {

/// A NoteBook with sources, notes and authors on the disk, and the store that dialogs on sources write through.
class SourcesFixture : public EditFixture {
protected:
    static CSource Source(int32_t id, const std::string& title, int32_t type = 1) {
        CSource source = TitledSource(id, title, type);
        source.CustomTypeCopy.fields = DefaultCustomFields();
        return source;
    }
    static CCustomSourceType Type(const std::string& guid, const std::string& name,
                                  const std::vector<std::string>& userFields) {
        CCustomSourceType type;
        type.GUID = guid;
        type.name = name;
        type.fields = {{CCustomSourceField::Title, CCustomSourceField::Period, "[TITLE Placeholder]", ""}};
        for (const std::string& field : userFields)
            type.fields.push_back({CCustomSourceField::User, CCustomSourceField::Period, field, ""});
        return type;
    }
    /// A note of a source, with a remark on it, in its file and in the log of a linked NoteBook.
    CNote NoteOf(int32_t id, int32_t source, const std::string& remark = {}) {
        CNote note = TextNote(id, "A body", {source});
        if (!remark.empty())
            note.sourceInfo = {{"{source-" + std::to_string(source) + "}", remark}, {"{Other}", "kept"}};
        note = Stored(note);
        CSyncInfo info = NewSyncRecord(note, DateTime(2010, 1, 1));
        info.Changed = false;
        book.syncLog.Add(info);
        return note;
    }
    CNote OnDisk(int32_t id) {
        for (const CNoteIDsPath& entry : book.index.Entries()) {
            for (const CNote& note : NotesOfFile(entry.path, world.Context())) {
                if (note.id == id)
                    return note;
            }
        }
        return {};
    }
    bool IsStamped(const CNote& note) {
        const CSyncInfo* const info = book.syncLog.FindSyncInfo(note.guid);
        return info->Changed && info->SourcesChanged == clock.NowUtc() && info->Change1 == DateTime(2010, 1, 1);
    }

    SourceChanges changes;
    SourceStore store{world, changes};
};

}  // namespace lore
