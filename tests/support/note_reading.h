#pragma once

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <utility>
#include <vector>

#include "notes/note_file.h"
#include "notes/note_file_walk.h"
#include "notes/print_preview.h"

namespace lore {

/// The notes of one file in file order; none if it doesn't open.
inline std::vector<CNote> NotesOfFile(const std::filesystem::path& path, const ReadContext& context) {
    NoteFileReader reader(context);
    reader.Open(path);
    std::vector<CNote> notes;
    while (reader.Next())
        notes.push_back(reader.TakeNote());
    return notes;
}

/// The notes of all files of a folder.
inline std::vector<CNote> NotesOfFolder(const std::filesystem::path& folder, const ReadContext& context,
                                        FaultNotice& faults) {
    std::vector<CNote> notes;
    for (const std::filesystem::path& file : NoteFilesOf(folder, faults))
        std::ranges::move(NotesOfFile(file, context), std::back_inserter(notes));
    return notes;
}

/// Writes notes with their sources as a hand-over file of the print program.
inline FileResult SavePrintPreview(const std::filesystem::path& path, const std::vector<PrintNote>& notes) {
    PrintPreviewWriter writer(notes.size());
    for (const PrintNote& entry : notes) {
        std::vector<const CSource*> sources;
        for (const CSource& source : entry.sources)
            sources.push_back(&source);
        writer.Add(entry.note, sources);
    }
    return writer.Save(path);
}

}  // namespace lore
