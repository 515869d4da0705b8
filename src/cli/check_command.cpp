#include <CLI/CLI.hpp>
#include <chrono>
#include <cstdio>

#include "base/text.h"
#include "calendar/calendar_check.h"
#include "cli/command.h"
#include "cli/json_records.h"
#include "cli/shown_text.h"
#include "edit/left_files.h"
#include "edit/repair_notebook.h"
#include "notes/check_notebook.h"
#include "notes/file_faults.h"

namespace lore {

namespace {

class CheckCommand : public Command {
public:
    const char* Name() const override { return "check"; }
    const char* Help() const override { return "Tells what is wrong in the data folder"; }
    void Declare(CLI::App& app) override {
        app.add_flag("--repair", repair_, "Mend what can be mended without losing anything; what is replaced is kept");
    }
    ExitStatus Run(Session& session) override {
        std::vector<Repair> repairs;
        ExitStatus status = ExitStatus::Done;
        if (repair_ && !MendAll(session, repairs, status))
            return status;
        std::vector<Finding> findings = CheckData(session.Data(), session.Context(), session.Faults());
        CheckCalendar(session, findings);
        if (session.Json())
            PrintAsJson(repairs, findings);
        else
            PrintLines(repairs, findings);
        return findings.empty() ? ExitStatus::Done : ExitStatus::NothingFound;
    }

private:
    static void CheckCalendar(Session& session, std::vector<Finding>& findings) {
        const auto check = [&](const std::filesystem::path& file, const char* unread, auto read) {
            RecordFileState state;
            session.Check(read(file, session.Context(), state), unread, file);
            AddFileFindings(file, state, findings);
        };
        check(session.Data().Events(), kEventsUnread, CheckEventFile);
        check(session.Data().Reminders(), kRemindersUnread, CheckReminderFile);
    }
    static bool MendAll(Session& session, std::vector<Repair>& repairs, ExitStatus& status) {
        if (!session.TakeLock(status))
            return false;
        std::vector<CDatabase> all = {session.Main()};
        all.insert(all.end(), session.NoteBooks().begin(), session.NoteBooks().end());
        IdCounters counters = session.Counters();
        std::vector<NoteBookPaths> places;
        for (const CDatabase& noteBook : all) {
            OpenNoteBook book = OpenNoteBook::At(session.Data(), noteBook);
            places.push_back(book.paths);
            for (Repair& repair : RepairNoteBook(book, counters, session.Context(), session.Faults()))
                repairs.push_back(std::move(repair));
        }
        session.StoreCounters(counters);
        const auto longAgo = std::filesystem::file_time_type::clock::now() - std::chrono::hours(1);
        for (Repair& removed : RemoveLeftFiles(FoldersOfWriters(session.Data(), places), longAgo, session.Faults()))
            repairs.push_back(std::move(removed));
        return true;
    }
    static void PrintLines(const std::vector<Repair>& repairs, const std::vector<Finding>& findings) {
        for (const Repair& repair : repairs)
            std::printf("%s: mended: %s\n", Shown(repair.file).c_str(), Shown(repair.text).c_str());
        for (const Finding& finding : findings)
            std::printf("%s: %s\n", Shown(finding.file).c_str(), Shown(finding.text).c_str());
    }
    static void PrintAsJson(const std::vector<Repair>& repairs, const std::vector<Finding>& findings) {
        Json list = Json::array();
        for (const Repair& repair : repairs)
            list.push_back({{"kind", "mended"}, {"file", JsonText(repair.file)}, {"text", JsonText(repair.text)}});
        for (const Finding& finding : findings)
            list.push_back({{"kind", FindingKindName(finding.kind)},
                            {"file", JsonText(finding.file)},
                            {"text", JsonText(finding.text)}});
        PrintJson(list);
    }

    bool repair_ = false;
};

}  // namespace

void AddCheckCommands(Commands& commands) {
    commands.push_back(std::make_unique<CheckCommand>());
}

}  // namespace lore
