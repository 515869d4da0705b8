#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>

#include "base/text.h"
#include "cli/command.h"
#include "cli/json_records.h"
#include "cli/printed_prompts.h"
#include "cli/shown_text.h"
#include "notebooks/backup.h"
#include "notebooks/backup_file.h"
#include "notebooks/copy_notes.h"
#include "notes/note_finder.h"
#include "ports/silent_progress.h"
#include "settings/installation.h"

namespace lore {

namespace {

class CopyCommand : public Command {
public:
    const char* Name() const override { return "copy"; }
    const char* Help() const override { return "Copies notes to another NoteBook"; }
    void Declare(CLI::App& app) override {
        app.add_option("--to", target_, "The NoteBook to copy to")->type_name("NOTEBOOK")->required();
        app.add_option("ID", ids_, "The notes")->required()->transform(DecimalNumber());
    }
    ExitStatus Run(Session& session) override {
        ExitStatus status = ExitStatus::Done;
        OpenNoteBook book;
        if (!session.TakeLock(status))
            return status;
        if (!session.Load(book))
            return ExitStatus::NothingFound;
        CNoteList list;
        const auto target = Target(session, book, status);
        if (status != ExitStatus::Done)
            return status;
        LongList wanted;
        wanted.Merge(LongList(ids_));
        for (CNote& note : FindNotes(book.index, wanted, session.Context(), session.Faults()))
            list.AddNote(std::move(note));
        return Print(session, *target, Copy(session, book, list, *target));
    }

private:
    std::optional<CDatabase> Target(Session& session, const OpenNoteBook& book, ExitStatus& status) const {
        for (const int32_t id : ids_) {
            if (!book.index.Contains(id)) {
                status = NoSuchNote(id);
                return std::nullopt;
            }
        }
        auto target = ChooseNoteBook(session.NoteBooks(), session.Main().guid, target_, status);
        if (target)
            status = Check(book, *target);
        return target;
    }
    ExitStatus Check(const OpenNoteBook& book, const CDatabase& target) const {
        if (target.folder == book.database.folder) {
            PrintError("the notes stand in the NoteBook \"" + target_ + "\" already; name another one");
            return ExitStatus::WrongUsage;
        }
        if (target.id <= 0) {
            PrintError("the list of NoteBooks has no valid number for \"" + target_ +
                       "\"; no note can be copied there");
            return ExitStatus::Fault;
        }
        return ExitStatus::Done;
    }
    static CopyResult Copy(Session& session, const OpenNoteBook& book, const CNoteList& list, const CDatabase& target) {
        PrintedPrompts prompts;
        SilentProgress progress;
        Settings& settings = session.GetSettings();
        EnsureLocalGuid(settings, session.Guids());
        IdCounters counters = session.Counters();
        // The counter may be lower than the ids of the first NoteBook, which is opened for reading alone.
        for (const int32_t id : book.index.AllIDs())
            counters.MaxNoteID = std::max(counters.MaxNoteID, id);
        const CopyJob job{.from = book,
                          .data = session.Data(),
                          .counters = counters,
                          .context = session.Context(),
                          .ports = {.prompts = prompts, .progress = progress, .faults = session.Faults()},
                          .syncEngaged = settings.IsSyncEngaged(),
                          .storeCounters = [&] { session.StoreCounters(counters); }};
        return CopyNotesToNoteBook(list, target, job);
    }
    static ExitStatus Print(const Session& session, const CDatabase& target, const CopyResult& result) {
        if (result.copied == CopyResult::kNothingDone || (result.copied == 0 && result.newer == 0))
            return ExitStatus::Fault;
        if (session.Json())
            PrintJson({{"copied", result.copied}, {"ids", JsonIds(result.ids)}, {"notebook", JsonText(target.name)}});
        else
            std::printf("%d notes copied to \"%s\"\n", result.copied, Shown(target.name).c_str());
        return result.copied > 0 ? ExitStatus::Done : ExitStatus::NothingFound;
    }

    std::string target_;
    std::vector<int32_t> ids_;
};

class BackupCommand : public Command {
public:
    const char* Name() const override { return "backup"; }
    const char* Help() const override { return "Backs up the NoteBook, or all of them, into archives"; }
    void Declare(CLI::App& app) override {
        app.add_option("--out", target_, "The archive, which ends in .lbe")->type_name("FILE")->required();
        app.add_flag("--all", all_, "All NoteBooks, each in a file with its name in brackets before the ending");
    }
    ExitStatus Run(Session& session) override {
        ExitStatus status = ExitStatus::Done;
        const std::string archive = all_ ? BackupFileName(target_, kMainNoteBookName, "") : target_;
        if (all_ && archive == target_) {
            PrintError("\"" + target_ + "\" needs an ending such as .lbe, before which the names of the NoteBooks go");
            return ExitStatus::WrongUsage;
        }
        if (!session.MayWrite(archive))
            return ExitStatus::WrongUsage;
        if (!session.TakeLock(status))
            return status;
        const auto noteBook = session.NoteBook();
        if (!noteBook)
            return ExitStatus::NothingFound;
        PrintedPrompts prompts;
        SilentProgress progress;
        const BackupJob job{.data = session.Data(),
                            .settings = session.GetSettings(),
                            .context = session.Context(),
                            .ports = {.prompts = prompts, .progress = progress, .faults = session.Faults()},
                            .storeSettings = [] {}};
        BackedUp done;
        if (all_)
            done = RunBackupAll(target_, {}, job);
        else
            done.Add(BackUpNoteBook(*noteBook, target_, job), target_);
        const int notes = done.notes;
        if (notes == 0)
            PrintError("there are no notes to back up");
        if (notes <= 0 || prompts.HasWarned())
            return notes == 0 && !prompts.HasWarned() ? ExitStatus::NothingFound : ExitStatus::Fault;
        Print(session, done);
        return ExitStatus::Done;
    }

private:
    static void Print(const Session& session, const BackedUp& done) {
        if (session.Json()) {
            Json files = Json::array();
            for (const std::filesystem::path& file : done.files)
                files.push_back(JsonText(file.string()));
            return PrintJson({{"notes", done.notes}, {"files", std::move(files)}});
        }
        for (const std::filesystem::path& file : done.files)
            std::printf("%s\n", Shown(file.string()).c_str());
        std::printf("%d notes backed up\n", done.notes);
    }

    std::string target_;
    bool all_ = false;
};

}  // namespace

void AddCopyCommands(Commands& commands) {
    commands.push_back(std::make_unique<CopyCommand>());
    commands.push_back(std::make_unique<BackupCommand>());
}

}  // namespace lore
