#include <CLI/CLI.hpp>
#include <cstdio>

#include "base/text.h"
#include "cli/command.h"
#include "cli/json_records.h"
#include "cli/printed_prompts.h"
#include "cli/shown_text.h"
#include "notebooks/notebook_manager.h"
#include "notes/note_finder.h"
#include "platform/system_sources.h"
#include "ports/silent_progress.h"
#include "settings/installation.h"

namespace lore {

namespace {

class NoteBookCommand : public Command {
public:
    const char* Name() const override { return "notebook"; }
    const char* Help() const override { return "Creates, renames, deletes or chooses a NoteBook"; }
    void Declare(CLI::App& app) override {
        app.require_subcommand(1);
        for (const Action& action : Actions()) {
            CLI::App* const sub = app.add_subcommand(action.name, action.help);
            sub->add_option(action.argument, name_, "A NoteBook")->required();
            if (action.takesNewName)
                sub->add_option("NEW", newName_, "Its new name")->required();
            sub->callback([this, &action] { chosen_ = &action; });
        }
    }
    ExitStatus Run(Session& session) override {
        ExitStatus status = ExitStatus::Done;
        if (!session.TakeLock(status))
            return status;
        if (EnsureLocalGuid(session.GetSettings(), session.Guids()))
            session.StoreOptions();
        NoteBookManager manager(session.Data(), session.GetSettings().Text(Option::LocalGUID), Ports(session));
        manager.Load(session.Context());
        return (this->*chosen_->run)(session, manager);
    }

private:
    struct Action {
        const char *name, *help, *argument;
        bool takesNewName;
        ExitStatus (NoteBookCommand::*run)(Session&, NoteBookManager&);
    };
    static const std::vector<Action>& Actions() {
        static const std::vector<Action> actions = {
            {"create", "Makes a new NoteBook", "NAME", false, &NoteBookCommand::Create},
            {"rename", "Gives a NoteBook another name", "NOTEBOOK", true, &NoteBookCommand::Rename},
            {"delete", "Deletes a NoteBook with all its notes", "NOTEBOOK", false, &NoteBookCommand::Delete},
            {"switch", "Makes a NoteBook the one that opens", "NOTEBOOK", false, &NoteBookCommand::Switch}};
        return actions;
    }

    ManagerPorts Ports(Session& session) {
        return {prompts_, progress_, session.Faults(), [](int) {}, RandomUpTo, TellLeftLink};
    }

    static void TellLeftLink(const CDatabase& noteBook, const SyncLink& link) {
        PrintError("the online account still counts \"" + ToUtf8(link.OnlineName) + "\" as linked to NoteBook \"" +
                   ToUtf8(noteBook.name) + "\"; the program without a window doesn't reach it");
    }

    ExitStatus Create(Session& session, NoteBookManager& manager) {
        const auto made = manager.Create(FromUtf8(name_), session.Context());
        if (!made)
            return prompts_.HasWarned() ? ExitStatus::WrongUsage : ExitStatus::Fault;
        return Print(session, *made, 0, "created");
    }
    ExitStatus Rename(Session& session, NoteBookManager& manager) {
        ExitStatus status = ExitStatus::Done;
        auto noteBook = Find(session, manager, status);
        if (!noteBook)
            return status;
        if (noteBook->IsMain()) {
            PrintError("the main NoteBook keeps its name");
            return ExitStatus::WrongUsage;
        }
        const std::string name = CleanText(FromUtf8(newName_));
        if (Trim(name).empty()) {
            PrintError("a NoteBook can't have an empty name");
            return ExitStatus::WrongUsage;
        }
        if (!manager.ChangeName(*noteBook, name))
            return ExitStatus::Fault;
        noteBook->name = name;
        return Print(session, *noteBook, NotesOf(session, *noteBook), "renamed");
    }
    ExitStatus Delete(Session& session, NoteBookManager& manager) {
        ExitStatus status = ExitStatus::Done;
        const auto noteBook = Find(session, manager, status);
        if (!noteBook)
            return status;
        const size_t notes = NotesOf(session, *noteBook);
        switch (manager.Delete(*noteBook, notes)) {
            case DeleteOutcome::Refused:
                return ExitStatus::WrongUsage;
            case DeleteOutcome::Deleted:
                return Print(session, *noteBook, notes, "deleted");
            default:
                return ExitStatus::Fault;
        }
    }
    ExitStatus Switch(Session& session, NoteBookManager& manager) {
        ExitStatus status = ExitStatus::Done;
        const auto noteBook = Find(session, manager, status);
        if (!noteBook)
            return status;
        session.GetSettings().Set(Option::Database, noteBook->guid);
        session.GetSettings().Save(session.Store(), Option::Database);
        session.StoreCounters(session.Counters());
        return Print(session, *noteBook, NotesOf(session, *noteBook), "chosen");
    }

    std::optional<CDatabase> Find(const Session& session, const NoteBookManager& manager, ExitStatus& status) const {
        return ChooseNoteBook(manager.List(), session.Main().guid, name_, status);
    }
    static size_t NotesOf(Session& session, const CDatabase& noteBook) {
        return CountNotes(NoteBookPaths(session.Data(), noteBook.folder).Notes(), session.Context(), session.Faults());
    }
    static ExitStatus Print(const Session& session, const CDatabase& noteBook, size_t notes, const char* done) {
        if (session.Json())
            PrintJson(JsonListedNoteBook(noteBook, notes));
        else
            std::printf("NoteBook \"%s\" (%s, %zu notes) %s\n", Shown(noteBook.name).c_str(),
                        Shown(noteBook.folder).c_str(), notes, done);
        return ExitStatus::Done;
    }

    PrintedPrompts prompts_;
    SilentProgress progress_;
    std::string name_, newName_;
    const Action* chosen_ = nullptr;
};

}  // namespace

void AddNoteBookCommands(Commands& commands) {
    commands.push_back(std::make_unique<NoteBookCommand>());
}

}  // namespace lore
