#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <iterator>
#include <set>
#include <unordered_set>

#include "base/text.h"
#include "cli/command.h"
#include "cli/json_records.h"
#include "cli/printed_prompts.h"
#include "cli/shown_text.h"
#include "exchange/export_notes.h"
#include "exchange/import_notes.h"
#include "notes/note_finder.h"
#include "ports/silent_progress.h"

namespace lore {

namespace {

class ExportCommand : public Command {
public:
    const char* Name() const override { return "export"; }
    const char* Help() const override { return "Writes notes with their sources and attachments into an archive"; }
    void Declare(CLI::App& app) override {
        app.add_option("--out", target_, "The archive, which ends in .lbe")->type_name("FILE")->required();
        app.add_option("ID", ids_, "The notes, all when none are given")->transform(DecimalNumber());
    }
    ExitStatus Run(Session& session) override {
        if (!session.MayWrite(target_))
            return ExitStatus::WrongUsage;
        ExitStatus status = ExitStatus::Done;
        if (!session.TakeLock(status))
            return status;
        OpenNoteBook book;
        if (!session.Load(book))
            return ExitStatus::NothingFound;
        LongList wanted;
        for (const int32_t id : ids_) {
            if (!book.index.Contains(id))
                return NoSuchNote(id);
            wanted.AddUnique(id);
        }
        const std::vector<CNote> notes = FindNotes(book.index, wanted, session.Context(), session.Faults());
        return Export(session, book,
                      ids_.empty() ? NotesOfNoteBook(book, session.Context(), session.Faults()) : NotesOfList(notes));
    }

private:
    ExitStatus Export(Session& session, const OpenNoteBook& book, const ExportedNotes& notes) const {
        PrintedPrompts prompts;
        SilentProgress progress;
        const ArchiveOutcome exported =
            ExportNotes(notes, target_, ExportedSources::OfNotes,
                        {.book = book,
                         .data = session.Data(),
                         .context = session.Context(),
                         .ports = {.prompts = prompts, .progress = progress, .faults = session.Faults()}});
        if (exported.Failed())
            return ExitStatus::Fault;
        if (exported.notes == 0) {
            PrintError("there are no notes in this NoteBook");
            return ExitStatus::NothingFound;
        }
        if (session.Json())
            PrintJson({{"notes", exported.notes}, {"file", JsonText(target_)}});
        else
            std::printf("%d notes are in %s\n", exported.notes, Shown(target_).c_str());
        return ExitStatus::Done;
    }

    std::string target_;
    std::vector<int32_t> ids_;
};

constexpr const char* kStatusNames[] = {"new", "older", "newer", "same"};
static_assert(std::size(kStatusNames) == static_cast<size_t>(ImportStatus::Same) + 1);

const char* NameOf(ImportStatus status) {
    return kStatusNames[static_cast<size_t>(status)];
}

/// Ticks what the options of the command say.
class OptionChooser : public ImportChooser {
public:
    std::unordered_set<std::string> statuses;  ///< names of those to take
    std::set<std::string> only;                ///< guids; empty for any

    bool ChooseNotes(ImportComparison& comparison, ImportArchive&) override {
        comparison.SetShowSame(true);
        TellAbsent(comparison);
        for (size_t i = 0; i < comparison.Rows().size(); ++i) {
            ImportRow& row = comparison.Row(i);
            row.ticked = statuses.contains(NameOf(row.status)) && IsAsked(row);
        }
        return !comparison.Chosen().empty();
    }
    bool IsAsked(const ImportRow& row) const { return only.empty() || only.contains(row.entry.note.guid); }
    /// Tells which of the guids no note of the archive has.
    void TellAbsent(const ImportComparison& comparison) const {
        std::set<std::string> absent = only;
        for (const ImportRow& row : comparison.Rows())
            absent.erase(row.entry.note.guid);
        for (const std::string& guid : absent)
            PrintError("the archive holds no note with the guid " + ToUtf8(guid));
    }
};

class ImportCommand : public Command {
public:
    const char* Name() const override { return "import"; }
    const char* Help() const override { return "Brings the notes of an archive into the NoteBook"; }
    void Declare(CLI::App& app) override {
        app.add_option("FILE", file_, "The archive")->required();
        app.add_flag("--status", status_, "Only compare its notes with those of the NoteBook");
        app.add_option("--take", take_, "all, new, newer or changed, several with commas (new,newer when not given)")
            ->type_name("WHICH");
        app.add_option("--only", only_, "Only the notes with these guids")->type_name("GUID,GUID...");
    }
    ExitStatus Run(Session& session) override {
        OptionChooser chooser;
        if (!ReadChoice(chooser))
            return ExitStatus::WrongUsage;
        OpenNoteBook book;
        ExitStatus status = ExitStatus::Done;
        if (status_ ? !session.Load(book) : !session.OpenForWriting(book, status))
            return status == ExitStatus::Done ? ExitStatus::NothingFound : status;
        PrintedPrompts prompts;
        SilentProgress progress;
        IdCounters counters = session.Counters();
        const ImportJob job{.book = book,
                            .data = session.Data(),
                            .counters = counters,
                            .context = session.Context(),
                            .ports = {.prompts = prompts, .progress = progress, .faults = session.Faults()},
                            .reload = [&] {
                                MoveCountersOn(book, counters);
                                session.StoreCounters(counters);
                            }};
        return status_ ? Compare(session, job, chooser) : Import(session, job, chooser);
    }

private:
    bool ReadChoice(OptionChooser& chooser) const {
        std::vector<std::string> pieces = {"new", "newer"};
        if (take_)
            pieces = SplitAtCommas(*take_);
        for (const std::string& piece : pieces) {
            if (piece == "all")
                chooser.statuses.insert(std::begin(kStatusNames), std::end(kStatusNames));
            else if (piece == "changed")
                chooser.statuses.insert({"older", "newer"});
            else if (piece == "new" || piece == "newer")
                chooser.statuses.insert(piece);
            else {
                PrintError("--take is all, new, newer or changed, not \"" + piece + "\"");
                return false;
            }
        }
        if (only_) {
            for (const std::string& guid : SplitAtCommas(*only_))
                chooser.only.insert(FromUtf8(guid));
            chooser.only.erase("");
        }
        if (only_ && chooser.only.empty()) {
            PrintError("--only takes the guids of notes, separated by commas");
            return false;
        }
        return true;
    }

    ExitStatus Compare(Session& session, const ImportJob& job, const OptionChooser& chooser) const {
        ImportArchive archive;
        if (const int result = ReadArchive(file_, archive, job); result != ImportOutcome::kNothing) {
            TellImportResult({result, {}, false}, job.ports.prompts);
            return ExitStatus::Fault;
        }
        const ImportComparison comparison = CompareArchive(archive, job);
        chooser.TellAbsent(comparison);
        const bool isEmpty =
            std::ranges::none_of(comparison.Rows(), [&](const auto& row) { return chooser.IsAsked(row); });
        PrintRows(session, comparison, chooser);
        return isEmpty && !chooser.only.empty() ? ExitStatus::NothingFound : ExitStatus::Done;
    }
    static void PrintRows(const Session& session, const ImportComparison& comparison, const OptionChooser& chooser) {
        Json list = Json::array();
        for (const ImportRow& row : comparison.Rows()) {
            if (!chooser.IsAsked(row))
                continue;
            const std::string title = ImportComparison::MainSourceTitle(row);
            if (session.Json())
                list.push_back({{"row", row.number},
                                {"guid", JsonText(row.entry.note.guid)},
                                {"status", NameOf(row.status)},
                                {"title", JsonText(title)}});
            else
                std::printf("%6zu  %-5s  %s  %s\n", row.number, NameOf(row.status), Shown(row.entry.note.guid).c_str(),
                            Shown(title).c_str());
        }
        if (session.Json())
            PrintJson(list);
    }

    ExitStatus Import(Session& session, const ImportJob& job, OptionChooser& chooser) const {
        const ImportOutcome outcome = ImportNotes(file_, chooser, job);
        if (outcome.result < 0) {
            TellImportResult({outcome.result, {}, false}, job.ports.prompts);  // its reason has been told as a fault
            return ExitStatus::Fault;
        }
        if (session.Json())
            PrintJson({{"imported", outcome.result}, {"notes", JsonIds(outcome.ids)}});
        else
            std::printf("%d notes were imported\n", outcome.result);
        return outcome.result > 0 ? ExitStatus::Done : ExitStatus::NothingFound;
    }

    std::string file_;
    bool status_ = false;
    std::optional<std::string> take_, only_;
};

}  // namespace

void AddExchangeCommands(Commands& commands) {
    commands.push_back(std::make_unique<ExportCommand>());
    commands.push_back(std::make_unique<ImportCommand>());
}

}  // namespace lore
