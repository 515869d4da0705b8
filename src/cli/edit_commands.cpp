#include <CLI/CLI.hpp>
#include <utility>

#include "base/text.h"
#include "cli/command.h"
#include "cli/json_records.h"
#include "cli/note_changes.h"
#include "cli/print_records.h"
#include "edit/note_removal.h"
#include "edit/note_text_file.h"
#include "notes/file_faults.h"
#include "notes/note_finder.h"

namespace lore {

namespace {

ExitStatus StatusOf(SaveOutcome outcome) {
    switch (outcome) {
        case SaveOutcome::Saved:
            return ExitStatus::Done;
        case SaveOutcome::NoText:
        case SaveOutcome::TooLong:
            return ExitStatus::NothingFound;
        case SaveOutcome::NotWritten:
            return ExitStatus::Fault;
    }
    return ExitStatus::Fault;
}

/// The rich text of a file, or nothing, told.
std::optional<std::string> TextOfFile(Session& session, const std::string& file) {
    std::string rtf;
    const FileResult result = ReadNoteText(file, LookOfNewText(session.Store()), rtf);
    if (result.Ok())
        return rtf;
    session.Faults().Tell({kFileUnread, file, result.Reason()});
    return std::nullopt;
}

class AddCommand : public Command {
    static constexpr size_t kMostBytes = size_t{32} << 20;  // of texts that wait to be written

public:
    const char* Name() const override { return "add"; }
    const char* Help() const override { return "Makes a note from each file (.rtf, .txt, .md, .html)"; }
    void Declare(CLI::App& app) override {
        app.add_option("FILE", files_, "The files")->required();
        changes_.Declare(app);
    }
    ExitStatus Run(Session& session) override {
        ExitStatus status = ExitStatus::Done;
        EditRun run(session);
        if (!run.Open(status, {}, changes_.MayMakeCategories()))
            return status;
        run.CollectNotes();
        for (const std::string& file : files_) {
            const ExitStatus added = Add(session, run, file);
            // Wrong for one file, and so for the first one.
            if (added == ExitStatus::WrongUsage)
                return added;
            status = status == ExitStatus::Done ? added : status;
            if (bytes_ >= kMostBytes)
                Write(run, status);
        }
        Write(run, status);
        PrintIds(session, ids_);
        return status;
    }

private:
    /// The notes stand on the disk after Write.
    ExitStatus Add(Session& session, EditRun& run, const std::string& file) {
        const auto rtf = TextOfFile(session, file);
        if (!rtf)
            return ExitStatus::Fault;
        EditNoteSession edited = EditNoteSession::ForNewNote(run.World(), nullptr);
        ExitStatus status = ExitStatus::Done;
        if (!changes_.Apply(session, run.Book(), edited, status))
            return status;
        FixedNoteText text(*rtf);
        const SaveOutcome outcome = edited.SaveNote(text);
        if (outcome == SaveOutcome::Saved) {
            unwritten_.emplace_back(edited.note.id, file);
            bytes_ += edited.note.rtfText.size() + edited.note.plainText.size();
        } else {
            TellNone(file);
        }
        return StatusOf(outcome);
    }
    void Write(EditRun& run, ExitStatus& status) {
        bytes_ = 0;
        const LongList failed = run.Write();
        for (const auto& [id, file] : std::exchange(unwritten_, {})) {
            if (!failed.Contains(id)) {
                ids_.push_back(id);
                continue;
            }
            TellNone(file);
            status = ExitStatus::Fault;
        }
    }
    static void TellNone(const std::string& file) { PrintError("no note was made from " + file); }

    std::vector<std::string> files_;
    NoteChanges changes_;
    std::vector<std::pair<int32_t, std::string>> unwritten_;  // ids with their files
    size_t bytes_ = 0;                                        // of their texts
    std::vector<int32_t> ids_;
};

class EditCommand : public Command {
public:
    const char* Name() const override { return "edit"; }
    const char* Help() const override { return "Changes a note as the editor does"; }
    void Declare(CLI::App& app) override {
        app.add_option("ID", id_, "The note's number")->required()->transform(DecimalNumber());
        app.add_option("--rtf", rtf_, "Its new text, a file as for \"add\"")->type_name("FILE");
        changes_.Declare(app);
        app.get_option("--source")->description("A source in place of all that it has (repeat for more)");
        app.add_flag("--no-sources", changes_.noSources, "Take all its sources away, those too that the list lacks");
        app.add_option("--attach", files_, "A file to attach (repeat for more)")
            ->type_name("FILE")
            ->allow_extra_args(false);
        app.add_option("--link", links_, "A web link to attach (repeat for more)")
            ->type_name("URL")
            ->allow_extra_args(false);
    }
    ExitStatus Run(Session& session) override {
        ExitStatus status = ExitStatus::Done;
        if (!TakeLinks())
            return ExitStatus::WrongUsage;
        EditRun run(session);
        if (!run.Open(status, {&id_, 1}, changes_.MayMakeCategories()))
            return status;
        const std::optional<CNote> note = FindNote(run.Book().index, id_, session.Context(), session.Faults());
        if (!note)
            return NoSuchNote(id_);
        std::string rtf = note->rtfText;
        if (rtf_) {
            auto read = TextOfFile(session, *rtf_);
            if (!read)
                return ExitStatus::Fault;
            rtf = std::move(*read);
        }
        EditNoteSession edited = EditNoteSession::ForNote(run.World(), *note);
        if (!Attach(edited))
            return ExitStatus::Fault;
        if (!changes_.Apply(session, run.Book(), edited, status))
            return status;
        FixedNoteText text(std::move(rtf));
        status = StatusOf(edited.SaveNote(text));
        if (status == ExitStatus::Done && session.Json())
            PrintJson({{"id", id_}});
        return status;
    }

private:
    /// The addresses without what doesn't count. False, told, if nothing is left of one.
    bool TakeLinks() {
        for (std::string& link : links_) {
            link = Trim(CleanText(FromUtf8(link)));
            if (link.empty()) {
                PrintError("--link takes an address, which can't be empty");
                return false;
            }
        }
        return true;
    }
    bool Attach(EditNoteSession& edited) const {
        for (const std::string& file : files_) {
            std::error_code error;
            if (!edited.attachments.AddFile(std::filesystem::absolute(file, error).string())) {
                PrintError(file + " was not attached; nothing was changed");
                return false;
            }
        }
        for (const std::string& link : links_)
            edited.attachments.AddLink(link);
        return true;
    }

    int32_t id_ = 0;
    std::optional<std::string> rtf_;
    std::vector<std::string> files_, links_;
    NoteChanges changes_;
};

class DeleteCommand : public Command {
public:
    const char* Name() const override { return "delete"; }
    const char* Help() const override { return "Deletes notes with their attachment files"; }
    void Declare(CLI::App& app) override {
        app.add_option("ID", ids_, "The notes' numbers")->required()->transform(DecimalNumber());
    }
    ExitStatus Run(Session& session) override {
        ExitStatus status = ExitStatus::Done;
        EditRun run(session);
        if (!run.Open(status, ids_))
            return status;
        LongList ids;
        for (const int32_t id : ids_) {
            if (run.Book().index.Contains(id))
                ids.AddUnique(id);
            else
                status = NoSuchNote(id);
        }
        const std::vector<CNote> deleted = NoteRemoval(run.Book(), session.Context(), session.Faults(), nullptr)
                                               .DeleteNotes(ids, GoneFiles::Deleted)
                                               .notes;
        LongList gone;  // a note may have stood twice in its file
        for (const CNote& note : deleted)
            gone.AddUnique(note.id);
        if (session.Json())
            PrintJson({{"deleted", JsonIds(gone)}});
        return gone.Count() < ids.Count() ? ExitStatus::Fault : status;
    }

private:
    std::vector<int32_t> ids_;
};

}  // namespace

void AddEditCommands(Commands& commands) {
    commands.push_back(std::make_unique<AddCommand>());
    commands.push_back(std::make_unique<EditCommand>());
    commands.push_back(std::make_unique<DeleteCommand>());
}

}  // namespace lore
