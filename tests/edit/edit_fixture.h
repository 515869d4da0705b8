#pragma once

#include <string>
#include <vector>

#include "bibliography/source_builder.h"
#include "edit/edit_note_session.h"
#include "edit/sync_record.h"
#include "notes/note_book_loader.h"
#include "notes/note_builder.h"
#include "notes/note_filing.h"
#include "notes/note_store.h"
#include "support/each.h"
#include "support/matchers.h"
#include "support/note_reading.h"
#include "support/scripted_ports.h"

namespace lore {

/// A NoteBook on the disk with two sources and a small forest, and the world of an editor around it.
class EditFixture : public testing::Test, protected ScriptedPorts {
protected:
    EditFixture() {
        book.paths = folder.paths;
        for (const int32_t id : {1011, 1012})
            book.sources.AddTail(TitledSource(id, "Title " + std::to_string(id)));
        book.categories.AddRoot(PathOf({{3, "Lights"}, {4, "Lenses"}}));
        book.categories.AddRoot({5, "Places"});
        book.categories.AddRoot({kUnassignedID, kUnassignedName});
        EXPECT_TRUE(book.sources.SaveSources(book.paths.Sources(), book.authors).Ok());
        EXPECT_TRUE(book.categories.Save(book.paths.Categories()).Ok());
    }

    /// Puts a note into its file and all lists, as a load would.
    CNote Stored(CNote note) {
        const ReadContext context = world.Context();
        EXPECT_TRUE(NoteStore(book, context, faults, nullptr).SaveNote(note));
        FileNote(book, note);
        return note;
    }

    /// The notes of a file as they stand on the disk.
    std::vector<CNote> NotesIn(const std::string& name) {
        return NotesOfFile(book.paths.NoteFile(name), world.Context());
    }
    std::vector<int32_t> IDsIn(const std::string& name) { return Each(NotesIn(name), &CNote::id); }
    /// The picture that a start from the disk gives.
    OpenNoteBook Reloaded() {
        OpenNoteBook fresh;
        fresh.database = book.database;
        fresh.paths = book.paths;
        IdCounters counters;
        NotedFaults ignored;
        LoadNoteBook(fresh, counters, world.Context(), ignored, {});
        return fresh;
    }
    const LongList& NotesOf(int32_t category, int set = 1) {
        return book.categories.FindByID(category)->notes[static_cast<size_t>(set - 1)];
    }
    SyncLog StoredLog() const {
        SyncLog log;
        LoadSyncLogFrom(book.paths.SyncLog(), log);
        return log;
    }
    void Link() {
        book.syncLog.link.Linked = kStoredTrue;
        book.syncLog.link.OnlineName = "Online";
    }
    void Unblock(const std::filesystem::path& path) { std::filesystem::remove_all(path); }

    NoteBookFolder folder;
    OpenNoteBook book;
    Settings settings;
    int optionsSaved = 0;
    EditWorld world{book, settings, prompts, progress, clock, guids, faults, nullptr, [this] { ++optionsSaved; }};
};

/// "A body." as a note's rich text.
inline std::string Rtf(const std::string& body) {
    return "{\\rtf1\\ansi\\ansicpg1252 " + body + "}";
}

inline CNote TextNote(int32_t id, const std::string& body, LongList sources = {}) {
    CNote note = SourceNote(id, std::move(sources));
    note.rtfText = Rtf(body);
    note.plainText = body;
    return note;
}

}  // namespace lore
