#include "exchange/import_notes.h"

#include <algorithm>
#include <limits>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

#include "base/text_join.h"
#include "exchange/export_notes.h"
#include "exchange/import_integration.h"
#include "exchange/scratch_folder.h"
#include "notes/file_faults.h"
#include "notes/note_file.h"
#include "notes/note_file_walk.h"
#include "notes/note_finder.h"

namespace lore {

namespace {

/// A file that the load could not read is in no index, nor are its notes: it is read again, and told if it holds some.
void TellUnknownNotes(const std::unordered_set<std::string>& known, const ImportJob& job, FaultNotice& faults) {
    NoteFileReader reader(job.context);
    for (const std::filesystem::path& file : NoteFilesOf(job.book.paths.Notes(), faults)) {
        if (known.contains(file.string()))
            continue;
        TellFailedRead(faults, kNoteFileUnread, file, reader.Open(file));
        bool isKnown = true;
        while (isKnown && reader.Next())
            isKnown = job.book.index.Contains(reader.Head().id);
        if (!isKnown)
            faults.Tell(
                {"A note file was not read with the others", file.string(), "the NoteBook must be loaded once more"});
    }
}

/// The notes of the NoteBook whose guid the archive has too. A record that another one hides is none of them. It is
/// told if there may be more of them.
NoteHeads FindExisting(const std::vector<ArchiveNote>& notes, const ImportJob& job, FaultNotice& faults) {
    std::unordered_set<std::string_view> wanted;
    for (const ArchiveNote& entry : notes)
        wanted.insert(entry.note.guid);
    NoteHeads heads;
    std::unordered_set<std::string> known;
    NoteFileReader reader(job.context);
    for (const CNoteIDsPath& file : job.book.index.Entries()) {
        known.insert(file.path);
        TellFailedRead(faults, kNoteFileUnread, file.path, reader.Open(file.path));
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
    TellUnknownNotes(known, job, faults);
    return heads;
}

std::optional<ArchiveNote> LoadExisting(int32_t id, const ImportJob& job) {
    const std::optional<CNote> found = FindNote(job.book.index, id, job.context, job.ports.faults);
    if (!found)
        return std::nullopt;
    return MakeArchiveNote(*found, job.book.sources, job.book.authors);
}

/// Hands faults on, and keeps the words of the last one.
class LastFault : public FaultNotice {
public:
    explicit LastFault(FaultNotice& next) : next_(next) {}
    void Tell(const Fault& fault) override {
        text_ = JoinTexts(JoinTexts(fault.what, ": " + fault.path), " (" + fault.reason + ")");
        next_.Tell(fault);
    }
    void Mended(const std::string& what, const std::string& path) override { next_.Mended(what, path); }
    const std::string& Text() const { return text_; }

private:
    FaultNotice& next_;
    std::string text_;
};

class Import {
public:
    Import(const std::filesystem::path& path, ImportChooser& chooser, const ImportJob& job)
        : path_(path), chooser_(chooser), job_(job) {}

    ImportOutcome Run() {
        const ScratchFolder temp(job_.data.ImportTemp(), job_.data.ImportTemp());
        ImportOutcome outcome;
        outcome.result = ReadArchive(path_, archive_, job_);
        if (outcome.result == ImportOutcome::kUnreadable)
            return outcome;  // the progress has ended
        if (outcome.result == ImportOutcome::kNothing)
            Take(outcome);
        job_.ports.progress.SetMessage("Cleaning up temp files...");
        job_.ports.progress.Hide();
        return outcome;
    }

private:
    void Take(ImportOutcome& outcome) {
        ImportComparison comparison = CompareArchive(archive_, job_);
        if (!comparison.knowsAll)
            return Refuse(outcome);
        if (!chooser_.ChooseNotes(comparison, archive_) || comparison.Chosen().empty() || !MayReplace(comparison))
            return;
        const bool sync = job_.book.syncLog.link.IsLinked() && AskToSync();
        job_.ports.progress.SetRange(0, static_cast<int>(comparison.Chosen().size()));
        job_.ports.progress.SetMessage("Integrating notes into database...");
        LastFault faults(job_.ports.faults);
        outcome.ids = IntegrateNotes(comparison, archive_, sync, JobTelling(faults));
        if (!outcome.ids.IsEmpty())
            chooser_.NotesLanded(outcome.ids);
        outcome.displayAfter = comparison.displayAfter;
        outcome.result = outcome.ids.IsEmpty() ? ImportOutcome::kUnreadable : static_cast<int>(outcome.ids.Count());
        if (outcome.ids.IsEmpty())
            outcome.reason = faults.Text();
        job_.reload();
    }

    /// A note that the NoteBook has would come in beside itself. What can be read by now is seen by the next try.
    void Refuse(ImportOutcome& outcome) {
        LastFault faults(job_.ports.faults);
        faults.Tell({kNotesNotImported, job_.book.paths.Notes().string(),
                     "not all notes of the NoteBook could be read, and some would have come in twice"});
        outcome.reason = faults.Text();
        outcome.result = ImportOutcome::kUnreadable;
        job_.reload();
    }

    ImportJob JobTelling(FaultNotice& faults) const {
        return {.book = job_.book,
                .data = job_.data,
                .counters = job_.counters,
                .context = job_.context,
                .ports = job_.ports.Telling(faults),
                .listedNotes = job_.listedNotes,
                .reload = job_.reload,
                .changes = job_.changes};
    }

    /// Asks before many notes give way to earlier forms of themselves.
    bool MayReplace(const ImportComparison& comparison) {
        const std::vector<size_t> chosen = comparison.Chosen();
        const auto older = static_cast<size_t>(std::count_if(chosen.begin(), chosen.end(), [&](size_t position) {
            return comparison.Rows()[position].status == ImportStatus::Older;
        }));
        const size_t all = job_.book.TotalNoteCount();
        return !IsLargeShare(older, all) ||
               job_.ports.prompts.Ask("This import replaces  *" + std::to_string(older) + "*  of the  *" +
                                          std::to_string(all) +
                                          "*  notes of this NoteBook with older forms from the archive.\n\n"
                                          "Do you wish to continue?",
                                      "Replace Notes?") == PromptAnswer::Yes;
    }

    bool AskToSync() {
        return job_.ports.prompts.Ask(
                   "The current NoteBook is linked to an Online NoteBook, do you wish sync these import notes with the "
                   "Online NoteBook?",
                   "Sync Import Notes?") == PromptAnswer::Yes;
    }

    const std::filesystem::path& path_;
    ImportChooser& chooser_;
    const ImportJob& job_;
    ImportArchive archive_;
};

}  // namespace

std::optional<std::filesystem::path> AskForArchive(Prompts& prompts) {
    const std::vector<std::string> paths = prompts.AskOpenPaths("Import Notes", kArchiveFilter, PathCount::One);
    return paths.empty() ? std::nullopt : std::optional<std::filesystem::path>(paths.front());
}

int ReadArchive(const std::filesystem::path& path, ImportArchive& archive, const ImportJob& job) {
    Progress& progress = job.ports.progress;
    progress.SetRange(0, static_cast<int>(job.listedNotes) + 2);
    progress.Show();
    progress.SetMessage("Decompressing export file...");
    if (const ArchiveResult opened = archive.Open(path, job.ports.faults); !opened.Ok()) {
        progress.Hide();
        job.ports.prompts.Message("The file " + path.string() + " can't be imported: " + opened.reason +
                                      ". Nothing was changed; get the file again from where it came from.",
                                  kArchivingError, PromptIcon::Error);
        return ImportOutcome::kUnreadable;
    }
    progress.SetMessage("Reading in notes...");
    const auto version = archive.ReadNotes(
        job.context, job.ports.faults, [&](int count) { progress.SetRange(0, std::max(count, 0)); },
        [&] { progress.StepIt(); });
    return version == ImportArchive::Version::Known ? ImportOutcome::kNothing : ImportOutcome::kLaterVersion;
}

ImportComparison CompareArchive(ImportArchive& archive, const ImportJob& job) {
    job.ports.progress.SetMessage("Loading existing notes...(may take a few moments)");
    HeardFaults faults(job.ports.faults);
    NoteHeads existing = FindExisting(archive.notes, job, faults);
    ImportComparison comparison(std::move(archive.notes), std::move(existing), *job.context.guids,
                                [&job](int32_t id) { return LoadExisting(id, job); });
    comparison.knowsAll = !faults.Any();
    return comparison;
}

ImportOutcome ImportNotes(const std::filesystem::path& path, ImportChooser& chooser, const ImportJob& job) {
    return Import(path, chooser, job).Run();
}

void TellImportResult(const ImportOutcome& outcome, Prompts& prompts) {
    if (outcome.result > 0) {
        prompts.Message("All  *" + std::to_string(outcome.result) + "*  of your notes have been successfully imported!",
                        "Finished!", PromptIcon::Information);
    } else if (outcome.result == ImportOutcome::kLaterVersion) {
        prompts.Message(
            "The file you are trying to import was created in an updated version of Lorebinder, please go to "
            "\"Help->Check for program updates\" to download and install the latest version.",
            "Import Failed", PromptIcon::Error);
    } else if (outcome.result < 0) {
        prompts.Message(JoinTexts("The import has failed, the import file could be corrupt.",
                                  outcome.reason.empty() ? "" : "\n\n" + outcome.reason),
                        "Import Failed", PromptIcon::Error);
    }
}

}  // namespace lore
