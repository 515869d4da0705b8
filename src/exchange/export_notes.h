#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "exchange/archive_result.h"
#include "notes/note_list.h"
#include "notes/open_notebook.h"
#include "ports/flow_ports.h"
#include "ports/read_context.h"

namespace lore {

inline constexpr char kArchivingError[] = "Archiving Error";

/// The notes of an export, in their order.
struct ExportedNotes {
    size_t count = 0;
    /// Hands over one note after the other until `take` gives false. The note lives during the call only.
    std::function<void(const std::function<bool(const CNote&)>& take)> each;
};

/// The lists outlive the result.
ExportedNotes NotesOfList(const CNoteList& list);
ExportedNotes NotesOfList(const std::vector<CNote>& notes);
/// All notes of a NoteBook in loading order, read file by file, so that few of them stand in memory. Each file of the
/// NoteBook that is damaged, or lacks a note that the index names, is told once, whether or not notes of it are left.
ExportedNotes NotesOfNoteBook(const OpenNoteBook& book, const ReadContext& context, FaultNotice& faults);

/// What an export works with.
struct ExportJob {
    const OpenNoteBook& book;  ///< whose sources, authors and attachment files go with the notes
    DataPaths data;
    const ReadContext& context;
    FlowPorts ports;
};

/// Why no archive can be made at a path: it belongs to the data, is a folder, has no name of a file, or nobody can say
/// what stands there. Empty if nothing speaks against it.
std::string WhyNoArchive(const std::filesystem::path& target, const DataPaths& data);

/// Which sources an archive carries: those that its notes have, or also all of the NoteBook, as in backups.
enum class ExportedSources { OfNotes, All };

/// Makes an archive of notes with their sources and attachment files; none for an empty list. What stood at the target
/// stays unless an archive was made. An attachment file that is missing is told, and the archive lacks it.
ArchiveOutcome ExportNotes(const ExportedNotes& notes, const std::filesystem::path& target, ExportedSources sources,
                           const ExportJob& job);

/// Whose notes a command exports, for its last message.
enum class ExportScope { CurrentList, Chosen };

/// The export command of the window: asks for the place and tells how it went.
void RunExportCommand(const ExportedNotes& notes, ExportScope scope, const ExportJob& job);

}  // namespace lore
