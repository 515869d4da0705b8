#include "exchange/import_notes.h"

#include <algorithm>
#include <cstdio>
#include <limits>
#include <system_error>
#include <unordered_set>
#include <utility>
#include <vector>

#include "exchange/export_notes.h"
#include "exchange/import_integration.h"
#include "notes/file_faults.h"
#include "notes/note_file.h"
#include "notes/note_file_walk.h"
#include "notes/note_finder.h"

namespace lore {

namespace {

/// A folder for what is unpacked to be looked at; it goes with the import.
class ImportTemp {
public:
    explicit ImportTemp(std::filesystem::path path) : path_(std::move(path)) {
        Remove();
        std::error_code ignored;
        std::filesystem::create_directories(path_, ignored);
    }
    ~ImportTemp() { Remove(); }
    ImportTemp(const ImportTemp&) = delete;
    ImportTemp& operator=(const ImportTemp&) = delete;

private:
    void Remove() const {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    std::filesystem::path path_;
};

/// The notes of the NoteBook whose guid the archive has too. A record that another one hides is none of them.
NoteHeads FindExisting(const std::vector<ArchiveNote>& notes, const ImportWorld& world) {
    std::unordered_set<std::string_view> wanted;
    for (const ArchiveNote& entry : notes)
        wanted.insert(entry.note.guid);
    NoteHeads heads;
    NoteFileReader reader(world.context);
    for (const CNoteIDsPath& file : world.book.index.Entries()) {
        TellFailedRead(world.faults, kNoteFileUnread, file.path, reader.Open(file.path));
        const std::unordered_set<int32_t> shown(file.ids.begin(), file.ids.end());
        CopyChoice<std::optional<CNote>> choice;
        while (reader.Next()) {
            if (!shown.contains(reader.Head().id))
                continue;
            const NoteCopy copy = CopyOf(reader, file.path);
            const bool isWanted = wanted.contains(reader.Head().guid);
            choice.Add(copy, isWanted ? std::optional(std::move(reader.Head())) : std::nullopt);
        }
        choice.TakeShown([&](int32_t, std::optional<CNote>&& head) {
            if (head)
                heads.emplace(std::string(head->guid), std::move(*head));
        });
    }
    return heads;
}

std::optional<ArchiveNote> LoadExisting(int32_t id, const ImportWorld& world) {
    const std::vector<CNote> found = FindNotes(world.book.index, {id}, world.context, world.faults);
    if (found.empty())
        return std::nullopt;
    ArchiveNote entry = MakeArchiveNote(found.front(), world.book.sources);
    for (CSource& source : entry.sources)
        EmbedAuthors(source, world.book.authors);
    return entry;
}

class Import {
public:
    Import(const std::filesystem::path& path, ImportChooser& chooser, const ImportWorld& world)
        : path_(path), chooser_(chooser), world_(world) {}

    ImportOutcome Run() {
        const ImportTemp temp(world_.data.ImportTemp());
        ImportOutcome outcome;
        outcome.result = ReadArchive(path_, archive_, world_);
        if (outcome.result == ImportOutcome::kNothing)
            Take(outcome);
        world_.progress.SetMessage("Cleaning up temp files...");
        world_.progress.Hide();
        return outcome;
    }

private:
    void Take(ImportOutcome& outcome) {
        ImportComparison comparison = CompareArchive(archive_, world_);
        if (!chooser_.ChooseNotes(comparison, archive_) || comparison.Chosen().empty() || !MayReplace(comparison))
            return;
        const bool sync = world_.book.syncLog.link.IsLinked() && AskToSync();
        world_.progress.SetRange(0, static_cast<int>(comparison.Chosen().size()));
        world_.progress.SetMessage("Integrating notes into database...");
        outcome.ids = IntegrateNotes(comparison, archive_, sync, world_);
        if (!outcome.ids.IsEmpty())
            chooser_.NotesLanded(outcome.ids);
        outcome.displayAfter = comparison.displayAfter;
        outcome.result = outcome.ids.IsEmpty() ? ImportOutcome::kUnreadable : static_cast<int>(outcome.ids.Count());
        world_.reload();
    }

    /// Asks before many notes give way to earlier forms of themselves.
    bool MayReplace(const ImportComparison& comparison) {
        const std::vector<size_t> chosen = comparison.Chosen();
        const auto older = static_cast<size_t>(std::count_if(chosen.begin(), chosen.end(), [&](size_t position) {
            return comparison.Rows()[position].status == ImportStatus::Older;
        }));
        const size_t all = world_.book.TotalNoteCount();
        return !IsLargeShare(older, all) ||
               world_.prompts.Ask("This import replaces  *" + std::to_string(older) + "*  of the  *" +
                                      std::to_string(all) +
                                      "*  notes of this NoteBook by older forms from the archive.\n\nDo you wish to "
                                      "continue?",
                                  "Replace Notes?") == PromptAnswer::Yes;
    }

    bool AskToSync() {
        return world_.prompts.Ask(
                   "The current NoteBook is linked to an Online NoteBook, do you wish sync these import notes with the "
                   "Online NoteBook?",
                   "Sync Import Notes?") == PromptAnswer::Yes;
    }

    const std::filesystem::path& path_;
    ImportChooser& chooser_;
    const ImportWorld& world_;
    ImportArchive archive_;
};

}  // namespace

std::optional<std::filesystem::path> AskForArchive(Prompts& prompts) {
    const std::vector<std::string> paths = prompts.AskOpenPaths("Import Notes", kArchiveFilter, false);
    return paths.empty() ? std::nullopt : std::optional<std::filesystem::path>(paths.front());
}

int ReadArchive(const std::filesystem::path& path, ImportArchive& archive, const ImportWorld& world) {
    Progress& progress = world.progress;
    progress.SetRange(0, static_cast<int>(world.listedNotes) + 2);
    progress.Show();
    progress.SetMessage("Decompressing export file...");
    if (const ArchiveResult opened = archive.Open(path, world.faults); !opened.Ok()) {
        world.prompts.Message("The file " + path.string() + " can't be imported: " + opened.reason +
                                  ". Nothing was changed; get the file anew from where it came from.",
                              kArchivingError, PromptIcon::Error);
        return ImportOutcome::kUnreadable;
    }
    progress.SetMessage("Reading in notes...");
    const auto version = archive.ReadNotes(
        world.context, world.faults, [&](int count) { progress.SetRange(0, std::max(count, 0)); },
        [&] { progress.StepIt(); });
    return version == ImportArchive::Version::Known ? ImportOutcome::kNothing : ImportOutcome::kLaterVersion;
}

ImportComparison CompareArchive(ImportArchive& archive, const ImportWorld& world) {
    world.progress.SetMessage("Loading existing notes...(may take a few moments)");
    NoteHeads existing = FindExisting(archive.notes, world);
    return {std::move(archive.notes), std::move(existing), *world.context.guids,
            [&world](int32_t id) { return LoadExisting(id, world); }};
}

ImportOutcome ImportNotes(const std::filesystem::path& path, ImportChooser& chooser, const ImportWorld& world) {
    return Import(path, chooser, world).Run();
}

void TellImportResult(const ImportOutcome& outcome, Prompts& prompts) {
    if (outcome.result > 0) {
        char text[100];
        std::snprintf(text, sizeof text, "All  *%d*  of your notes have been successfully imported!", outcome.result);
        prompts.Message(text, "Finished!", PromptIcon::Information);
    } else if (outcome.result == ImportOutcome::kLaterVersion) {
        prompts.Message(
            "The file you are trying to import was created in an updated version of Lorebinder, please go to "
            "\"Help->Check for program updates\" to download and install the latest version.",
            "Import Failed", PromptIcon::Error);
    } else if (outcome.result < 0) {
        prompts.Message("The import has failed, the import file could be corrupt.", "Import Failed", PromptIcon::Error);
    }
}

}  // namespace lore
