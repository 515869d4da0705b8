#include <CLI/CLI.hpp>

#include "base/text.h"
#include "cli/command.h"
#include "cli/json_records.h"
#include "cli/note_changes.h"
#include "cli/print_records.h"
#include "edit/note_removal.h"
#include "edit/note_text_file.h"
#include "notes/note_finder.h"

namespace lore {

namespace {

/// Heights are pixels of the board, which are three quarters of a point.
NewTextLook LookOfNewText(const Session& session) {
    const FontSetting font = LoadFontSetting(session.Store(), kEditTextFont, DefaultEditTextFont());
    return {ToUtf8(font.faceName), font.height * 3 / 2};
}

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

ExitStatus NoSuchNote(int32_t id) {
    PrintError("there is no note " + std::to_string(id) + " in this NoteBook");
    return ExitStatus::NothingFound;
}

/// The rich text of a file, or nothing, told.
std::optional<std::string> TextOfFile(Session& session, const std::string& file) {
    std::string rtf;
    const FileResult result = ReadNoteText(file, LookOfNewText(session), rtf);
    if (result.Ok())
        return rtf;
    session.Faults().Tell({"The file could not be read", file, result.Reason()});
    return std::nullopt;
}

class AddCommand : public Command {
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
        if (!run.Open(status))
            return status;
        std::vector<int32_t> ids;
        for (const std::string& file : files_) {
            const ExitStatus added = Add(session, run, file, ids);
            if (added == ExitStatus::WrongUsage)
                return added;
            status = status == ExitStatus::Done ? added : status;
        }
        PrintIds(session, ids);
        return status;
    }

private:
    ExitStatus Add(Session& session, EditRun& run, const std::string& file, std::vector<int32_t>& ids) const {
        const auto rtf = TextOfFile(session, file);
        if (!rtf)
            return ExitStatus::Fault;
        EditNoteSession edited = EditNoteSession::ForNewNote(run.World(), nullptr);
        ExitStatus status = ExitStatus::Done;
        if (!changes_.Apply(session, run.Book(), edited, status))
            return status;
        FixedNoteText text(*rtf);
        const SaveOutcome outcome = edited.SaveNote(text);
        if (outcome == SaveOutcome::Saved)
            ids.push_back(edited.note.id);
        else
            PrintError("no note was made from " + file);
        return StatusOf(outcome);
    }

    std::vector<std::string> files_;
    NoteChanges changes_;
};

class EditCommand : public Command {
public:
    const char* Name() const override { return "edit"; }
    const char* Help() const override { return "Changes a note as the editor does"; }
    void Declare(CLI::App& app) override {
        app.add_option("ID", id_, "The note's number")->required();
        app.add_option("--rtf", rtf_, "Its new text, a file as for \"add\"")->type_name("FILE");
        changes_.Declare(app);
        app.add_flag("--no-sources", changes_.noSources, "Take its sources away");
        app.add_option("--attach", files_, "A file to attach (repeat for more)")
            ->type_name("FILE")
            ->allow_extra_args(false);
        app.add_option("--link", links_, "A web link to attach (repeat for more)")
            ->type_name("URL")
            ->allow_extra_args(false);
    }
    ExitStatus Run(Session& session) override {
        ExitStatus status = ExitStatus::Done;
        EditRun run(session);
        if (!run.Open(status, {&id_, 1}))
            return status;
        const auto notes = FindNotes(run.Book().index, LongList{id_}, session.Context(), session.Faults());
        if (notes.empty())
            return NoSuchNote(id_);
        std::string rtf = notes.front().rtfText;
        if (rtf_) {
            auto read = TextOfFile(session, *rtf_);
            if (!read)
                return ExitStatus::Fault;
            rtf = std::move(*read);
        }
        EditNoteSession edited = EditNoteSession::ForNote(run.World(), notes.front());
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
    bool Attach(EditNoteSession& edited) const {
        for (const std::string& file : files_) {
            std::error_code error;
            if (!edited.attachments.AddFile(std::filesystem::absolute(file, error).string())) {
                PrintError(file + " was not attached; nothing was changed");
                return false;
            }
        }
        for (const std::string& link : links_)
            edited.attachments.AddLink(FromUtf8(link));
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
    void Declare(CLI::App& app) override { app.add_option("ID", ids_, "The notes' numbers")->required(); }
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
        const std::vector<CNote> deleted =
            NoteRemoval(run.Book(), session.Context(), session.Faults(), nullptr).DeleteNotes(ids, false).notes;
        if (session.Json()) {
            Json gone = Json::array();
            for (const CNote& note : deleted)
                gone.push_back(note.id);
            PrintJson({{"deleted", std::move(gone)}});
        }
        return deleted.size() < ids.Count() ? ExitStatus::Fault : status;
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
