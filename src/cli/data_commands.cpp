#include <CLI/CLI.hpp>
#include <cstdio>

#include "app/sample_notebook.h"
#include "base/text.h"
#include "cli/command.h"
#include "cli/json_records.h"
#include "cli/shown_text.h"
#include "settings/installation.h"

namespace lore {

namespace {

class SampleCommand : public Command {
public:
    const char* Name() const override { return "sample"; }
    const char* Help() const override { return "Makes the sample NoteBook"; }
    void Declare(CLI::App&) override {}
    ExitStatus Run(Session& session) override {
        ExitStatus status = ExitStatus::Done;
        if (!session.TakeLock(status))
            return status;
        Settings& settings = session.GetSettings();
        IdCounters counters = session.Counters();
        EnsureLocalGuid(settings, session.Guids());
        const SampleResult made = MakeSampleNoteBook(session.Data(), settings.Text(Option::LocalGUID), counters,
                                                     session.Context(), session.Faults());
        session.StoreCounters(counters);
        Print(session, made);
        return made.made ? ExitStatus::Done : ExitStatus::Fault;
    }

private:
    static void Print(const Session& session, const SampleResult& made) {
        if (session.Json()) {
            Json json = JsonNoteBook(made.database);
            const std::pair<const char*, size_t> counts[] = {
                {"notes", made.notes},   {"sources", made.sources},       {"authors", made.authors},
                {"types", made.types},   {"categories", made.categories}, {"attachments", made.attachments},
                {"events", made.events}, {"reminders", made.reminders}};
            for (const auto& [name, count] : counts)
                json[name] = count;
            return PrintJson(json);
        }
        std::printf("NoteBook \"%s\" with %zu notes, %zu sources, %zu categories, %zu attachments and %zu events\n",
                    Shown(made.database.name).c_str(), made.notes, made.sources, made.categories, made.attachments,
                    made.events);
    }
};

}  // namespace

void AddDataCommands(Commands& commands) {
    commands.push_back(std::make_unique<SampleCommand>());
}

}  // namespace lore
