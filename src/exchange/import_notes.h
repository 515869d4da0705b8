#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>

#include "base/long_list.h"
#include "exchange/import_archive.h"
#include "exchange/import_comparison.h"
#include "exchange/import_job.h"
#include "ports/prompts.h"

namespace lore {

/// Shows the notes of an archive and lets the user choose: the window of the import, or the options of a command.
class ImportChooser {
public:
    virtual ~ImportChooser() = default;
    /// False if the user cancels; otherwise the comparison holds the choice. The archive unpacks attachments to look
    /// at.
    virtual bool ChooseNotes(ImportComparison& comparison, ImportArchive& archive) = 0;
    /// Of what was chosen, the notes with these ids are stored now. Not called for an import that stores none.
    virtual void NotesLanded(const LongList&) {}
};

/// What an import has come to.
struct ImportOutcome {
    static constexpr int kNothing = 0;
    static constexpr int kUnreadable = -1;
    static constexpr int kLaterVersion = -2112;  ///< the archive was made by one

    int result = kUnreadable;   ///< the number of notes imported, or one of the above
    LongList ids;               ///< of the imported notes, in order
    bool displayAfter = false;  ///< the current list is to show these notes now, not those that it showed
    std::string reason = {};    ///< why an archive that could be read was not imported; empty for one that could not
};

/// Imports notes of an archive. What is chosen is brought in in one go: first attachment files, then authors, types,
/// sources and categories, then the note files, then the sync log; so a crash can leave things that no note names, and
/// never a note that names nothing. A note with a known guid replaces the one of the NoteBook and keeps its id. If not
/// every note file could be read, a damaged one as far as it goes, none is imported, and it is told.
ImportOutcome ImportNotes(const std::filesystem::path& path, ImportChooser& chooser, const ImportJob& job);

/// Asks for the archive of the import command; nothing if the user cancels.
std::optional<std::filesystem::path> AskForArchive(Prompts& prompts);

/// Opens an archive and reads its notes. For a file that can't be read the progress ends, and then it is told. Gives 0,
/// or one of the results below it.
int ReadArchive(const std::filesystem::path& path, ImportArchive& archive, const ImportJob& job);
/// Holds the notes of an archive, which it takes, against the NoteBook. Changes nothing. A note file that can't be read
/// is told, and the comparison doesn't know all then.
ImportComparison CompareArchive(ImportArchive& archive, const ImportJob& job);

/// The messages after an import; nothing for a cancelled one.
void TellImportResult(const ImportOutcome& outcome, Prompts& prompts);

}  // namespace lore
