#include "trust/note_check.h"

#include <vector>

#include "notes/note_file.h"
#include "support/read_world.h"

namespace lore {

namespace {

/// The notes of a file, taken whole, or put together from heads and views of their texts.
std::vector<CNote> NotesOf(const std::string& bytes, bool whole) {
    ReadWorld world;
    NoteFileReader reader(world.context);
    reader.OpenBytes(bytes);
    std::vector<CNote> notes;
    while (reader.Next()) {
        if (whole) {
            notes.push_back(reader.TakeNote());
            continue;
        }
        CNote& note = notes.emplace_back(reader.Head());
        note.plainText = reader.PlainText();
        note.rtfText = reader.RtfText();
    }
    return notes;
}

std::string WrongNotes(const std::vector<CNote>& notes) {
    for (const CNote& note : notes) {
        if (note.id <= 0 || note.guid.empty())
            return "a note without an id or a guid";
    }
    return {};
}

}  // namespace

std::string CheckNoteReading(const std::string& bytes) {
    return WrongNotes(NotesOf(bytes, true));
}

std::string CheckNoteFile(const std::string& bytes) {
    const std::vector<CNote> notes = NotesOf(bytes, true);
    if (std::string wrong = WrongNotes(notes); !wrong.empty())
        return wrong;
    const std::string written = NoteFileBytes(notes);
    if (NoteFileBytes(NotesOf(bytes, false)) != written)
        return "heads and texts differ from whole notes";
    const std::string settled = NoteFileBytes(NotesOf(written, true));
    return NoteFileBytes(NotesOf(settled, true)) == settled ? "" : "a copy of the copy differs";
}

}  // namespace lore
